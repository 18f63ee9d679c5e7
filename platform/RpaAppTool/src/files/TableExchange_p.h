// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "TableTransfer_p.h"

#include <QPointer>

class TransferBar;

// The user's acts with files of the table: choose one, watch the progress, be told what came of it.
class TableExchange : public QObject
{
    Q_OBJECT

public:
    // owner: the widget that dialogs stand over; it owns this object too.
    TableExchange(TableModel& model, TransferBar& bar, QWidget* owner);

    bool IsBusy() const { return transfer.IsBusy(); }

    void Import();
    void Export();
    // Rows may no longer be added: ends an import and says why.
    void EndImport(const QString& why);

signals:
    void SigBusyChanged();

private:
    void TakeImport(const TableImport& result);
    void TellExport(int rows, const QString& problem);
    void Close();

    TableModel& model;
    TransferBar& bar;
    QWidget* const owner;
    TableTransfer transfer;
    QPointer<RpaTableData> asked;
    QVector<RpaTableColumn> askedColumns;
};
