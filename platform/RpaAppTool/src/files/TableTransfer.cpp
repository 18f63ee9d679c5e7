// SPDX-License-Identifier: Apache-2.0

#include "TableFile_p.h"
#include "TableTransfer_p.h"

#include <WbFoundation/ContentLimits.h>

#include <QThread>

#include <atomic>

namespace
{
constexpr int reportMilliseconds = 50;
constexpr int writtenRowsPerReport = 1000;
constexpr int permilleWhenRead = 900;

// A first line that repeats the column names is their header, not a row.
bool IsHeader(const QVector<QVariant>& row, const QVector<RpaTableColumn>& columns)
{
    if (row.size() != columns.size())
        return false;
    for (int i = 0; i < row.size(); ++i)
        if (row.at(i).toString() != columns.at(i).name)
            return false;
    return true;
}

QVariantList Fitted(const QVector<QVariant>& row, const QVector<RpaTableColumn>& columns,
                    TableMisfits& misfits)
{
    QVariantList cells;
    cells.reserve(qMin(row.size(), columns.size()));
    for (int i = 0; i < row.size(); ++i) {
        QVariant cell = row.at(i);
        if (i >= columns.size()) {
            misfits.beyond += cell.toString().isEmpty() ? 0 : 1;
            continue;
        }
        if (!columns.at(i).Fit(cell)) {
            ++(ContentLimits::Fits(cell.toString()) ? misfits.ofAnotherType : misfits.tooLong);
            cell = QVariant();
        }
        cells << cell;
    }
    return cells;
}

void FitRows(const TableFile::Content& content, const QVector<RpaTableColumn>& columns, TableImport& result,
             const TableFile::Progress& progress)
{
    const int first = !content.rows.isEmpty() && IsHeader(content.rows.first(), columns) ? 1 : 0;
    result.rows.reserve(content.rows.size());
    for (int row = first; row < content.rows.size(); ++row) {
        result.rows << Fitted(content.rows.at(row), columns, result.misfits);
        const qint64 done = qint64(row) * (1000 - permilleWhenRead) / content.rows.size();
        if (row % writtenRowsPerReport == 0 && !progress(permilleWhenRead + int(done)))
            return;
    }
}
} // namespace

struct TableTransfer::Job
{
    std::atomic<bool> isCancelled{false};
    std::atomic<int> permille{0};
    int rows = 0;
    QString problem;

    bool Report(int done)
    {
        permille = done;
        return !isCancelled;
    }
};

TableTransfer::TableTransfer(QObject* parent) : QObject(parent)
{
    reportTimer.setInterval(reportMilliseconds);
    connect(&reportTimer, &QTimer::timeout, this, [this] { emit SigProgress(job->permille); });
}

TableTransfer::~TableTransfer()
{
    if (!thread)
        return;
    job->isCancelled = true;
    thread->wait();
}

void TableTransfer::Import(const QString& path, const QVector<RpaTableColumn>& columns)
{
    imported = std::make_shared<TableImport>();
    Start([path, columns, result = imported](Job& started) {
        const TableFile::Progress progress = [&started](int done) { return started.Report(done); };
        const TableFile::Content content = TableFile::Read(path, progress);
        result->sheet = content.sheet;
        result->problem = content.problem;
        FitRows(content, columns, *result, progress);
    });
}

void TableTransfer::Export(const QString& path, const RpaTableData::Content& content)
{
    Start([path, content](Job& started) {
        started.rows = content.rows.size();
        started.problem =
            TableFile::Write(path, content, [&started](int done) { return started.Report(done); });
    });
}

void TableTransfer::Start(const std::function<void(Job&)>& work)
{
    job = std::make_shared<Job>();
    thread.reset(QThread::create([work, started = job] { work(*started); }));
    connect(thread.get(), &QThread::finished, this, &TableTransfer::Finish);
    thread->start();
    reportTimer.start();
}

void TableTransfer::Cancel()
{
    if (job)
        job->isCancelled = true;
}

void TableTransfer::Finish()
{
    reportTimer.stop();
    thread->wait();
    thread.release()->deleteLater();
    const std::shared_ptr<Job> done = std::move(job);
    const std::shared_ptr<TableImport> result = std::move(imported);
    if (done->isCancelled)
        emit SigCancelled();
    else if (result)
        emit SigImported(*result);
    else
        emit SigExported(done->rows, done->problem);
}
