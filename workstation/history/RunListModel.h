// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "DateLanguage.h"

#include <RpaRunHistory/RpaRunRecord.h>

#include <QAbstractTableModel>

// Kept runs, one to a row, in the order given.
class RunListModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column
    {
        StartColumn,
        ProcessColumn,
        ResultColumn,
        DurationColumn,
        VersionColumn,
        ColumnCount,
    };

    explicit RunListModel(DateLanguage language, QObject* parent = nullptr);

    void SetRuns(const QVector<RpaRunRecord>& value);
    const QVector<RpaRunRecord>& GetRuns() const { return runs; }
    // id 0 when there is no such row.
    RpaRunRecord GetRun(int row) const { return runs.value(row); }
    // -1 when it is not among them.
    int RowOf(qint64 id) const;

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    const DateLanguage dateLanguage;
    QVector<RpaRunRecord> runs;
};
