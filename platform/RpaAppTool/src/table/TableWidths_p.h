// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QObject>
#include <QVector>

class QTableView;
class TableModel;

// Keeps the widths of a table's columns: the author's, or the usual one, or what the user has dragged. Columns
// that would stick out by a little share what is missing; only for more there is a scroll bar.
class TableWidths : public QObject
{
    Q_OBJECT

public:
    // Both outlive it. The view may show the model through another one that has the same columns.
    TableWidths(QTableView* view, TableModel* model);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    int GivenWidth(int column) const;
    void TakeAll();
    void TakeNew(int first, int last);
    void TakeDragged(int column, int width);
    void Fit();

    QTableView* const view;
    TableModel* const model;
    QVector<int> wanted; // scaled, per column
    bool isFitting = false;
};
