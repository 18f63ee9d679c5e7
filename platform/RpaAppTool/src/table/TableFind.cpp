// SPDX-License-Identifier: Apache-2.0

#include "TableFind_p.h"

#include <WbBaseUI/WbFindBar.h>

#include <QCheckBox>
#include <QHeaderView>
#include <QTableView>

namespace
{
constexpr int typingMilliseconds = 150;
constexpr int cellsPerTurn = 20000;
constexpr int placesToldAtMost = 9999;
} // namespace

void TableRowFilter::SetText(const QString& searched)
{
    text = searched;
    invalidateFilter();
}

bool TableRowFilter::filterAcceptsRow(int row, const QModelIndex& parent) const
{
    const auto* table = static_cast<const TableModel*>(sourceModel());
    for (int column = 0; column < table->columnCount(parent); ++column)
        if (table->GetText(row, column).contains(text, Qt::CaseInsensitive))
            return true;
    return false;
}

TableFind::TableFind(TableModel& searched, QTableView& shown, WbFindBar& findBar, QObject* parent)
    : QObject(parent), model(searched), view(shown), bar(findBar),
      onlyMatching(new QCheckBox(QStringLiteral("筛选"))), filter(new TableRowFilter(this))
{
    onlyMatching->setObjectName(QStringLiteral("tableFilter"));
    onlyMatching->setToolTip(QStringLiteral("只显示符合的行"));
    onlyMatching->setAccessibleDescription(onlyMatching->toolTip());
    bar.AddOption(onlyMatching);
    searchTimer.setSingleShot(true);
    searchTimer.setInterval(typingMilliseconds);
    connect(&bar, &WbFindBar::SigTextChanged, &searchTimer, qOverload<>(&QTimer::start));
    connect(&searchTimer, &QTimer::timeout, this, &TableFind::Search);
    connect(&countTimer, &QTimer::timeout, this, &TableFind::CountMore);
    connect(onlyMatching, &QCheckBox::toggled, this, &TableFind::ApplyFilter);
    connect(&bar, &WbFindBar::SigFind, this, &TableFind::FindNext);
    connect(&bar, &WbFindBar::SigClosed, this, [this] {
        ShowAll();
        view.setFocus();
    });
    connect(&model, &QAbstractItemModel::modelReset, this, &TableFind::StartCounting);
}

void TableFind::Open()
{
    const QModelIndex current = ToTable(view.currentIndex());
    bar.Open(bar.GetText().isEmpty() && current.isValid() ? model.GetText(current.row(), current.column())
                                                          : QString());
    StartCounting();
}

bool TableFind::IsFiltered() const
{
    return view.model() == filter;
}

void TableFind::ShowAll()
{
    onlyMatching->setChecked(false);
}

void TableFind::Search()
{
    ApplyFilter();
    StartCounting();
}

void TableFind::ApplyFilter()
{
    const QModelIndex current = ToTable(view.currentIndex());
    const bool isWanted = onlyMatching->isChecked() && !bar.GetText().isEmpty();
    if (isWanted)
        filter->SetText(bar.GetText());
    if (isWanted == IsFiltered())
        return;
    QAbstractItemModel* const shown = isWanted ? static_cast<QAbstractItemModel*>(filter) : &model;
    if (isWanted)
        filter->setSourceModel(&model);
    const QByteArray widths = view.horizontalHeader()->saveState();
    QItemSelectionModel* const formerSelection = view.selectionModel();
    view.setModel(shown);
    view.horizontalHeader()->restoreState(widths);
    formerSelection->deleteLater();
    // Nobody looks at it: what a run adds is not filtered for nothing.
    if (!isWanted)
        filter->setSourceModel(nullptr);
    emit SigModelChanged();
    view.setCurrentIndex(ToView(current));
}

bool TableFind::Holds(int row, int column) const
{
    return model.GetText(row, column).contains(bar.GetText(), Qt::CaseInsensitive);
}

// Cell by cell, row by row, from the one behind the cursor once around the table.
void TableFind::FindNext(bool backward)
{
    const int columns = view.model()->columnCount();
    const int cells = view.model()->rowCount() * columns;
    if (cells == 0 || bar.GetText().isEmpty())
        return;
    const QModelIndex current = view.currentIndex();
    int place = current.isValid() ? current.row() * columns + current.column() : (backward ? 0 : cells - 1);
    for (int i = 0; i < cells; ++i) {
        place = (place + (backward ? cells - 1 : 1)) % cells;
        const QModelIndex cell = view.model()->index(place / columns, place % columns);
        const QModelIndex inTable = ToTable(cell);
        if (Holds(inTable.row(), inTable.column())) {
            view.setCurrentIndex(cell);
            view.scrollTo(cell);
            return;
        }
    }
}

void TableFind::StartCounting()
{
    countedRows = 0;
    places = 0;
    if (bar.isVisible())
        countTimer.start(0);
}

// A long table is counted while the user goes on typing.
void TableFind::CountMore()
{
    const int columns = model.columnCount();
    const int lastRow = qMin(model.rowCount(), countedRows + cellsPerTurn / qMax(1, columns) + 1);
    for (; countedRows < lastRow && places <= placesToldAtMost; ++countedRows)
        for (int column = 0; column < columns; ++column)
            places += Holds(countedRows, column) ? 1 : 0;
    const bool isMore = places > placesToldAtMost;
    if (countedRows < model.rowCount() && !isMore)
        return;
    countTimer.stop();
    bar.ShowCount(qMin(places, placesToldAtMost), isMore);
}

QModelIndex TableFind::ToTable(const QModelIndex& cell) const
{
    return IsFiltered() ? filter->mapToSource(cell) : cell;
}

QModelIndex TableFind::ToView(const QModelIndex& cell) const
{
    return IsFiltered() ? filter->mapFromSource(cell) : cell;
}

QVector<int> TableFind::RowsFrom(int viewRow, int count) const
{
    QVector<int> rows;
    for (int row = viewRow; row < qMin(view.model()->rowCount(), viewRow + count); ++row)
        rows << ToTable(view.model()->index(row, 0)).row();
    return rows;
}
