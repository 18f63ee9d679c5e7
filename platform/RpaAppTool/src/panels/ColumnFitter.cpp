// SPDX-License-Identifier: Apache-2.0

#include "ColumnFitter_p.h"
#include "RecordModel_p.h"

#include <OxBase/DpiTool.h>

#include <QEvent>
#include <QHeaderView>
#include <QTableView>

ColumnFitter::ColumnFitter(QTableView* tableView) : QObject(tableView), view(tableView)
{
    view->viewport()->installEventFilter(this);
    Fit();
}

bool ColumnFitter::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Resize)
        Fit();
    return QObject::eventFilter(watched, event);
}

void ColumnFitter::Fit()
{
    const auto* model = qobject_cast<const RecordModel*>(view->model());
    int spare = view->viewport()->width();
    int sharers = 0;
    for (int column = 0; column < model->columnCount(); ++column) {
        spare -= DpiTool::ScaleDefault(model->GetWidths(column).least);
        sharers += model->GetWidths(column).isNarrow ? 0 : 1;
    }
    // What stands first tells the records apart, so the last columns give way first.
    for (int column = model->columnCount() - 1; column >= 0; --column) {
        const RecordModel::Widths widths = model->GetWidths(column);
        const int least = DpiTool::ScaleDefault(widths.least);
        int change = 0;
        if (spare < 0)
            change = qMax(spare, DpiTool::ScaleDefault(widths.tight) - least);
        else if (!widths.isNarrow)
            change = spare / sharers--;
        spare -= change;
        view->horizontalHeader()->resizeSection(column, least + change);
    }
}
