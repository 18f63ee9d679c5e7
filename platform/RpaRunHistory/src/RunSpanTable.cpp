// SPDX-License-Identifier: Apache-2.0

#include "RunSpanTable_p.h"
#include "RunSql_p.h"
#include "SpanBlock_p.h"

#include <QVariant>

QStringList RunSpanTable::Schema()
{
    const QString run = QStringLiteral("run INTEGER NOT NULL REFERENCES run(id) ON DELETE CASCADE");
    return {
        QStringLiteral(
            "CREATE TABLE IF NOT EXISTS span_block(%1, number INTEGER NOT NULL, data BLOB NOT NULL, "
            "PRIMARY KEY(run, number))")
            .arg(run),
        QStringLiteral("CREATE TABLE IF NOT EXISTS span_sum(%1 PRIMARY KEY, data BLOB NOT NULL)").arg(run),
        QStringLiteral("CREATE TABLE IF NOT EXISTS failure(%1 PRIMARY KEY, data BLOB NOT NULL, picture BLOB)")
            .arg(run),
    };
}

bool RunSpanTable::Add(qint64 run, const RpaRunSpans& news, QString* problem)
{
    if (run != current) {
        current = run;
        number = first = 0;
        tail.clear();
        sums = SpanSums();
    }
    return sql->Together([&] { return Write(news, problem); }, problem);
}

bool RunSpanTable::Write(const RpaRunSpans& news, QString* problem)
{
    for (const RpaRunSpan& span : news.spans) {
        tail.append(span);
        if (tail.size() < limits.spansOfABlock)
            continue;
        if (!WriteTail(problem))
            return false;
        tail.clear();
        ++number;
    }
    if (!tail.isEmpty() && !WriteTail(problem))
        return false;
    for (const RpaRunSpanSum& sum : news.sums)
        sums.Add(sum);
    bool summed = !news.sums.isEmpty();
    for (; number - first > limits.blocksOfARun; ++first, summed = true)
        if (!FoldOldest(problem))
            return false;
    return !summed || sql->Run(QStringLiteral("INSERT OR REPLACE INTO span_sum VALUES(?, ?)"),
                               {current, SpanBlock::PackSums(sums.Get())}, problem);
}

bool RunSpanTable::WriteTail(QString* problem)
{
    return sql->Run(QStringLiteral("INSERT OR REPLACE INTO span_block VALUES(?, ?, ?)"),
                    {current, number, SpanBlock::Pack(tail)}, problem);
}

bool RunSpanTable::FoldOldest(QString* problem)
{
    QSqlQuery block = sql->Query(QStringLiteral("SELECT data FROM span_block WHERE run=? AND number=?"),
                                 {current, first}, problem);
    if (block.next())
        for (const RpaRunSpan& span : SpanBlock::Unpack(block.value(0).toByteArray()))
            sums.Add(span);
    block.finish();
    return sql->Run(QStringLiteral("DELETE FROM span_block WHERE run=? AND number=?"), {current, first},
                    problem);
}

bool RunSpanTable::SetFailure(qint64 run, const RpaRunFailure& failure, const QByteArray& picture,
                              QString* problem)
{
    return sql->Run(QStringLiteral("INSERT OR REPLACE INTO failure VALUES(?, ?, ?)"),
                    {run, SpanBlock::PackFailure(failure), picture}, problem);
}

RpaRunDetails RunSpanTable::Read(qint64 run, QString* problem)
{
    RpaRunDetails details;
    QSqlQuery blocks =
        sql->Query(QStringLiteral("SELECT data FROM span_block WHERE run=? ORDER BY number"), {run}, problem);
    while (blocks.next())
        details.spans.spans += SpanBlock::Unpack(blocks.value(0).toByteArray());
    QSqlQuery summed = sql->Query(QStringLiteral("SELECT data FROM span_sum WHERE run=?"), {run}, problem);
    if (summed.next())
        details.spans.sums = SpanBlock::UnpackSums(summed.value(0).toByteArray());
    QSqlQuery failed =
        sql->Query(QStringLiteral("SELECT data, picture FROM failure WHERE run=?"), {run}, problem);
    if (failed.next()) {
        details.failure = SpanBlock::UnpackFailure(failed.value(0).toByteArray());
        details.picture = failed.value(1).toByteArray();
    }
    return details;
}
