// SPDX-License-Identifier: Apache-2.0

#include "StoreCheck.h"

#include "RevisionReader.h"

namespace server
{
namespace
{
struct Question
{
    const char* fault;
    const char* select; // ids of what has it
};

const Question questions[] = {
    {"version %1 is not its newest revision",
     "SELECT version.id FROM version LEFT JOIN revision ON revision.version_id = version.id "
     "AND revision.revision = version.revision WHERE revision.version_id IS NULL "
     "OR revision.sha256 <> version.sha256 OR revision.size <> version.size"},
    {"version %1 lacks revisions of its history",
     "SELECT version.id FROM version WHERE version.revision <> "
     "(SELECT COUNT(*) FROM revision WHERE revision.version_id = version.id)"},
    {"version %1 is released without an entry of it",
     "SELECT version.id FROM version WHERE version.state <> 1 AND NOT EXISTS (SELECT 1 FROM release_entry "
     "WHERE release_entry.version_id = version.id AND release_entry.to_state = version.state)"},
};

void CheckStructure(SqlConnection& connection, CheckResult& result)
{
    auto pages = connection.Select(QStringLiteral("PRAGMA integrity_check"), {});
    while (pages.Next())
        if (pages.Text(0) != QLatin1String("ok"))
            result.faults << QStringLiteral("the file: ") + pages.Text(0);
    auto references = connection.Select(QStringLiteral("PRAGMA foreign_key_check"), {});
    while (references.Next())
        result.faults << QStringLiteral("a row of %1 refers to nothing").arg(references.Text(0));
}

void CheckRevisions(SqlConnection& connection, CheckResult& result)
{
    constexpr int pageRows = 500;
    PagedRows pages(RevisionReader::GetTable(), RevisionReader::GetTable().key, pageRows);
    for (auto page = pages.Next(connection); !page.empty(); page = pages.Next(connection)) {
        for (const auto& key : page) {
            const auto revision = RevisionReader::Read(connection, key);
            ++result.revisions;
            if (revision.isDamaged)
                result.faults << QStringLiteral("revision %1 is damaged").arg(revision.name);
        }
    }
}
} // namespace

CheckResult CheckStore(const std::shared_ptr<const IDialect>& store, bool structureToo)
{
    SqlConnection connection(store);
    CheckResult result;
    if (structureToo && store->IsForOneServer())
        CheckStructure(connection, result);
    for (const Question& question : questions) {
        auto rows = connection.Select(QString::fromLatin1(question.select), {});
        while (rows.Next())
            result.faults << QString::fromLatin1(question.fault).arg(rows.Text(0));
    }
    CheckRevisions(connection, result);
    return result;
}
} // namespace server
