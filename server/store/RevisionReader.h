// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "../sql/SqlConnection.h"
#include "../sql/Tables.h"

namespace server
{
// Reads a table by its key, some rows at a time, so that no statement lasts for long.
class PagedRows
{
public:
    using Row = std::vector<QVariant>;

    // `columns` begin with those of the key.
    PagedRows(const Table& table, const QStringList& columns, int rowsOfAPage);

    std::vector<Row> Next(SqlConnection& connection); // empty: that was all

private:
    const int keySize;
    const int columnCount;
    const QString first;
    const QString further;
    Row last; // key of the last row
};

// One revision with its app data.
struct RevisionReader
{
    struct Revision
    {
        QString name;           // for people
        PagedRows::Row row;     // the columns of the table and the body
        bool isDamaged = false; // the body is not what was saved
    };

    static const Table& GetTable();
    static Revision Read(SqlConnection& connection, const PagedRows::Row& key);
};
} // namespace server
