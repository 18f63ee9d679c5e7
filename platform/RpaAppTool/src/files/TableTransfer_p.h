// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "TableModel_p.h"

#include <QObject>
#include <QTimer>

#include <memory>

class QThread;

// What came from a file, made to fit a table's columns.
struct TableImport
{
    QVector<QVariantList> rows;
    TableMisfits misfits;
    QString sheet;   // of a workbook with several sheets: the one that was read
    QString problem; // why there is nothing, in the user's words
};

// Reads and writes files of a table away from the GUI thread, one at a time, and can be ended.
class TableTransfer : public QObject
{
    Q_OBJECT

public:
    explicit TableTransfer(QObject* parent = nullptr);
    // Ends what is under way and waits for it.
    ~TableTransfer() override;

    bool IsBusy() const { return thread != nullptr; }
    bool IsImporting() const { return IsBusy() && imported != nullptr; }

    // Nothing may be under way.
    void Import(const QString& path, const QVector<RpaTableColumn>& columns);
    void Export(const QString& path, const RpaTableData::Content& content);
    // Each of the two is then answered as cancelled.
    void Cancel();

signals:
    void SigProgress(int permille);
    // Exactly one of these for each, unless the transfer goes away.
    void SigImported(const TableImport& result);
    void SigExported(int rows, const QString& problem);
    void SigCancelled();

private:
    struct Job;
    void Start(const std::function<void(Job&)>& work);
    void Finish();

    QTimer reportTimer;
    std::unique_ptr<QThread> thread;
    std::shared_ptr<Job> job;
    std::shared_ptr<TableImport> imported;
};
