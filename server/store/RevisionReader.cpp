// SPDX-License-Identifier: Apache-2.0

#include "RevisionReader.h"

#include "../base/Digest.h"

#include <algorithm>

namespace server
{
namespace
{
const QString comma = QStringLiteral(", ");

QString PageOf(const Table& table, const QStringList& columns, int rows, bool isFirst)
{
    const QString key = table.key.join(comma);
    const QString marks = table.key.size() == 1 ? QStringLiteral("?") : QStringLiteral("?, ?");
    return QStringLiteral("SELECT %1 FROM %2 ").arg(columns.join(comma), table.name) +
           (isFirst ? QString() : QStringLiteral("WHERE (%1) > (%2) ").arg(key, marks)) +
           QStringLiteral("ORDER BY %1 LIMIT %2").arg(key, QString::number(rows));
}
} // namespace

PagedRows::PagedRows(const Table& table, const QStringList& columns, int rows)
    : keySize(table.key.size()), columnCount(columns.size()), first(PageOf(table, columns, rows, true)),
      further(PageOf(table, columns, rows, false))
{
}

std::vector<PagedRows::Row> PagedRows::Next(SqlConnection& connection)
{
    std::vector<Row> page;
    auto rows = connection.Select(last.empty() ? first : further, last);
    while (rows.Next()) {
        Row row;
        for (int i = 0; i < columnCount; ++i)
            row.push_back(rows.Value(i));
        page.push_back(std::move(row));
    }
    if (!page.empty())
        last.assign(page.back().begin(), page.back().begin() + keySize);
    return page;
}

const Table& RevisionReader::GetTable()
{
    static const Table& table = *std::find_if(Tables().begin(), Tables().end(),
                                              [](const Table& one) { return one.name == RevisionTable(); });
    return table;
}

RevisionReader::Revision RevisionReader::Read(SqlConnection& connection, const PagedRows::Row& key)
{
    static const QString select =
        QStringLiteral("SELECT %1, body FROM revision WHERE version_id = ? AND revision = ?")
            .arg(GetTable().columns.join(comma));
    static const int bodyAt = GetTable().columns.size();
    static const int sha256At = GetTable().columns.indexOf(QStringLiteral("sha256"));
    static const int sizeAt = GetTable().columns.indexOf(QStringLiteral("size"));
    auto rows = connection.Select(select, key);
    if (!rows.Next())
        throw StoreError(StoreFault::Corrupt, QStringLiteral("a revision went while it was read"));
    Revision revision;
    revision.name = key.at(0).toString() + QLatin1Char('/') + key.at(1).toString();
    for (int i = 0; i <= bodyAt; ++i)
        revision.row.push_back(rows.Value(i));
    const QByteArray body = rows.Bytes(bodyAt);
    revision.isDamaged = body.size() != rows.Number(sizeAt) || Sha256(body) != rows.Bytes(sha256At);
    return revision;
}
} // namespace server
