// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QObject>

class QTableView;

// Shares the width of a view of records among its columns: each gets what it needs to be read, less where
// that keeps all of them in sight, and the view scrolls sideways where even that is too much.
class ColumnFitter : public QObject
{
    Q_OBJECT

public:
    // The view has its model, a RecordModel; the fitter belongs to it.
    explicit ColumnFitter(QTableView* view);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Fit();

    QTableView* view;
};
