// SPDX-License-Identifier: Apache-2.0

#include "TableModel_p.h"
#include "TableWidths_p.h"

#include <OxBase/DpiTool.h>

#include <QEvent>
#include <QHeaderView>
#include <QScopedValueRollback>
#include <QTableView>

#include <numeric>

namespace
{
constexpr int leastWidth = 40;
constexpr int usualWidth = 140;
constexpr int mostWidth = 1200;
constexpr int sharedPart = 10; // a tenth of all widths, at most
} // namespace

TableWidths::TableWidths(QTableView* tableView, TableModel* tableModel)
    : QObject(tableView), view(tableView), model(tableModel)
{
    QHeaderView* const header = view->horizontalHeader();
    header->setDefaultSectionSize(DpiTool::ScaleDefault(usualWidth));
    header->setMinimumSectionSize(DpiTool::ScaleDefault(leastWidth));
    header->setStretchLastSection(true);
    view->viewport()->installEventFilter(this);
    connect(model, &QAbstractItemModel::modelReset, this, &TableWidths::TakeAll);
    connect(model, &QAbstractItemModel::columnsRemoved, this,
            [this](const QModelIndex&, int first, int last) { wanted.remove(first, last - first + 1); });
    connect(model, &QAbstractItemModel::columnsInserted, this,
            [this](const QModelIndex&, int first, int last) { TakeNew(first, last); });
    connect(header, &QHeaderView::sectionResized, this,
            [this](int column, int, int width) { TakeDragged(column, width); });
}

int TableWidths::GivenWidth(int column) const
{
    const int given = model->GetData()->GetColumn(column).width;
    return DpiTool::ScaleDefault(given > 0 ? qBound(leastWidth, given, mostWidth) : usualWidth);
}

void TableWidths::TakeAll()
{
    wanted.clear();
    TakeNew(0, model->columnCount() - 1);
}

void TableWidths::TakeNew(int first, int last)
{
    for (int column = first; column <= last; ++column)
        wanted.insert(column, GivenWidth(column));
    Fit();
}

// The last column follows the view by itself.
void TableWidths::TakeDragged(int column, int width)
{
    if (!isFitting && column < wanted.size() - 1)
        wanted[column] = width;
}

bool TableWidths::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Resize)
        Fit();
    return QObject::eventFilter(watched, event);
}

void TableWidths::Fit()
{
    QHeaderView* const header = view->horizontalHeader();
    if (isFitting || wanted.isEmpty() || header->count() != wanted.size())
        return;
    const QScopedValueRollback<bool> guard(isFitting, true);
    const int all = std::accumulate(wanted.cbegin(), wanted.cend(), 0);
    const int room = view->viewport()->width();
    const bool areShared = all > room && (all - room) * sharedPart <= all;
    header->setStretchLastSection(all <= room || areShared);
    for (int column = 0; column < wanted.size(); ++column)
        header->resizeSection(column, areShared ? wanted.at(column) * room / all : wanted.at(column));
}
