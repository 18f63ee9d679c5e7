// SPDX-License-Identifier: Apache-2.0

#include "StoreCopy.h"

#include "../sql/Schema.h"
#include "../sql/SqlConnection.h"
#include "../sql/Tables.h"
#include "RevisionReader.h"

#include <chrono>

namespace server
{
namespace
{
using Clock = std::chrono::steady_clock;
constexpr int pageRows = 500;
constexpr std::chrono::milliseconds turn{100}; // that saves wait at most

QString Marks(int count)
{
    QStringList marks;
    for (int i = 0; i < count; ++i)
        marks << QStringLiteral("?");
    return marks.join(QStringLiteral(", "));
}

QString InsertOf(const Table& table, const QStringList& columns)
{
    return QStringLiteral("INSERT INTO %1 (%2) VALUES (%3)")
        .arg(table.name, columns.join(QStringLiteral(", ")), Marks(columns.size()));
}

qint64 Count(SqlConnection& connection, const QString& table)
{
    auto rows = connection.Select(QStringLiteral("SELECT COUNT(*) FROM ") + table, {});
    return rows.Next() ? rows.Number(0) : 0;
}

int WrittenSchema(SqlConnection& connection)
{
    try {
        auto rows = connection.Select(QStringLiteral("SELECT version FROM schema_info"), {});
        return rows.Next() ? static_cast<int>(rows.Number(0)) : 0;
    } catch (const StoreError& error) {
        if (error.Fault() == StoreFault::Internal) // there is no such table
            return 0;
        throw;
    }
}

class Copy
{
public:
    Copy(std::shared_ptr<const IDialect> theFrom, std::shared_ptr<const IDialect> theTo)
        : fromDialect(std::move(theFrom)), toDialect(std::move(theTo)), from(fromDialect), to(toDialect)
    {
    }

    CopyResult Run()
    {
        RequireFit();
        to.Execute(toDialect->BeginWrite());
        try {
            // In SQLite the rows that app data refers to may come after it.
            if (to.TryExecute(QStringLiteral("PRAGMA defer_foreign_keys=ON")))
                CopyBeforehand();
            else
                RestartTarget();
            CopySnapshot();
            for (const QString& statement : toDialect->ContinuePositions())
                to.Execute(statement);
            to.Execute(QStringLiteral("COMMIT"));
        } catch (...) {
            to.TryExecute(QStringLiteral("ROLLBACK"));
            throw;
        }
        return std::move(result);
    }

private:
    void RequireFit()
    {
        const int schema = WrittenSchema(from);
        if (schema != CurrentSchema())
            throw StoreError(StoreFault::Internal,
                             QStringLiteral("the source has schema %1, this program needs %2")
                                 .arg(schema)
                                 .arg(CurrentSchema()));
        MigrateSchema(to, *toDialect);
        if (Count(to, QStringLiteral("account")) + Count(to, QStringLiteral("app")) > 0)
            throw StoreError(StoreFault::Conflict,
                             QStringLiteral("the target is not empty; nothing was changed"));
    }

    // PostgreSQL ends a transaction with the first statement it does not know.
    void RestartTarget()
    {
        to.Execute(QStringLiteral("ROLLBACK"));
        to.Execute(toDialect->BeginWrite());
    }

    void CopySnapshot()
    {
        from.Execute(fromDialect->BeginSnapshot());
        for (const Table& table : Tables())
            if (table.name == RevisionTable())
                CopyRevisions();
            else
                CopyRows(table);
        for (const Table& table : Tables()) {
            if (Count(from, table.name) != Count(to, table.name))
                throw StoreError(StoreFault::Internal,
                                 QStringLiteral("the copy of %1 is not complete").arg(table.name));
        }
        from.Execute(QStringLiteral("COMMIT"));
    }

    void CopyRows(const Table& table)
    {
        const QString insert = InsertOf(table, table.columns);
        PagedRows pages(table, table.columns, pageRows);
        for (auto page = pages.Next(from); !page.empty(); page = pages.Next(from)) {
            for (const auto& row : page)
                to.Change(insert, row);
            result.rows += static_cast<qint64>(page.size());
        }
    }

    // Keeps the final snapshot short, which no save can pass. Reads of their own would each wait for their
    // turn among the saves; and those that come meanwhile may be more than can be copied.
    void CopyBeforehand()
    {
        qint64 most = Count(from, RevisionTable());
        PagedRows pages(RevisionReader::GetTable(), RevisionReader::GetTable().key, pageRows);
        for (auto page = pages.Next(from); !page.empty() && most > 0; page = pages.Next(from)) {
            for (auto key = page.cbegin(); key != page.cend();) {
                from.Execute(fromDialect->BeginSnapshot());
                const auto end = Clock::now() + turn;
                for (; key != page.cend() && Clock::now() < end; ++key, --most)
                    CopyRevision(*key);
                from.Execute(QStringLiteral("COMMIT"));
            }
        }
    }

    // Those that the target does not have yet.
    void CopyRevisions()
    {
        PagedRows pages(RevisionReader::GetTable(), RevisionReader::GetTable().key, pageRows);
        for (auto page = pages.Next(from); !page.empty(); page = pages.Next(from))
            for (const auto& key : page)
                CopyRevision(key);
    }

    void CopyRevision(const std::vector<QVariant>& key)
    {
        static const QString insert =
            InsertOf(RevisionReader::GetTable(),
                     RevisionReader::GetTable().columns + QStringList(QStringLiteral("body")));
        if (to.Select(QStringLiteral("SELECT 1 FROM revision WHERE version_id = ? AND revision = ?"), key)
                .Next())
            return;
        const auto revision = RevisionReader::Read(from, key);
        if (revision.isDamaged)
            result.damaged << revision.name;
        to.Change(insert, revision.row);
        ++result.revisions;
    }

    const std::shared_ptr<const IDialect> fromDialect;
    const std::shared_ptr<const IDialect> toDialect;
    SqlConnection from;
    SqlConnection to;
    CopyResult result;
};
} // namespace

CopyResult CopyStore(const std::shared_ptr<const IDialect>& from, const std::shared_ptr<const IDialect>& to)
{
    return Copy(from, to).Run();
}

int SchemaOf(const std::shared_ptr<const IDialect>& store)
{
    SqlConnection connection(store);
    return WrittenSchema(connection);
}
} // namespace server
