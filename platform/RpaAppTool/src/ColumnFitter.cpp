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
        spare -= DpiTool::ScaleDefault(model->GetLeastWidth(column));
        sharers += model->IsNarrow(column) ? 0 : 1;
    }
    for (int column = 0; column < model->columnCount(); ++column) {
        int width = DpiTool::ScaleDefault(model->GetLeastWidth(column));
        if (spare > 0 && !model->IsNarrow(column)) {
            const int share = spare / sharers--;
            width += share;
            spare -= share;
        }
        view->horizontalHeader()->resizeSection(column, width);
    }
}
