// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "TableModel_p.h"

#include <QSortFilterProxyModel>
#include <QTimer>

class QCheckBox;
class QTableView;
class WbFindBar;

// Rows with a cell that contains a text; case does not count.
class TableRowFilter : public QSortFilterProxyModel
{
    Q_OBJECT

public:
    explicit TableRowFilter(QObject* parent) : QSortFilterProxyModel(parent) {}

    void SetText(const QString& searched);

protected:
    bool filterAcceptsRow(int row, const QModelIndex& parent) const override;

private:
    QString text;
};

// Finds cells of the table and, where the user wants it, leaves only the rows that hold the text. The view
// shows the table's model itself while nothing is filtered, which costs a run nothing.
class TableFind : public QObject
{
    Q_OBJECT

public:
    TableFind(TableModel& model, QTableView& view, WbFindBar& bar, QObject* parent);

    void Open();
    void FindNext(bool backward);
    bool IsFiltered() const;
    // Shows all rows again.
    void ShowAll();

    // From cells of the view to those of the table, and the rows that the view shows from one on.
    QModelIndex ToTable(const QModelIndex& cell) const;
    QModelIndex ToView(const QModelIndex& cell) const;
    QVector<int> RowsFrom(int viewRow, int count) const;

signals:
    // The view has another model, and so another selection.
    void SigModelChanged();

private:
    void Search();
    void CountMore();
    void StartCounting();
    void ApplyFilter();
    bool Holds(int row, int column) const;

    TableModel& model;
    QTableView& view;
    WbFindBar& bar;
    QCheckBox* const onlyMatching;
    TableRowFilter* const filter;
    QTimer searchTimer; // while the user types
    QTimer countTimer;  // a part of the table at a time
    int countedRows = 0;
    int places = 0;
};
