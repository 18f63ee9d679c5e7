// SPDX-License-Identifier: Apache-2.0

#include "StoreCommand.h"

#include "../sql/Schema.h"
#include "../sql/SqlConnection.h"
#include "../store/StoreCheck.h"
#include "../store/StoreCopy.h"
#include "StoreLock.h"

#include <QFile>
#include <QTextStream>

namespace server
{
namespace
{
constexpr int damaged = 3;

[[noreturn]] void Refuse(const QString& reason)
{
    throw StoreError(StoreFault::Unavailable, reason);
}

QString FileOf(const QString& address)
{
    const QString prefix = QStringLiteral("sqlite:");
    return address.startsWith(prefix) ? address.mid(prefix.size()) : QString();
}

// A store that is read: it must be there, or opening it would make an empty one.
std::shared_ptr<const IDialect> Existing(const QString& address)
{
    const QString file = FileOf(address);
    if (!file.isEmpty() && !QFile::exists(file))
        Refuse(QStringLiteral("there is no %1").arg(file));
    return MakeDialect(address);
}

int Report(const QString& what, const CopyResult& result)
{
    QTextStream output(stdout);
    output << what << ": " << result.revisions << " revisions, " << result.rows << " other rows\n";
    for (const QString& name : result.damaged)
        output << "damaged already in the source: revision " << name << '\n';
    return result.damaged.isEmpty() ? 0 : damaged;
}

// The file gets its name when it is complete.
int Backup(const Options& options, const QString& file)
{
    const QString part = file + QStringLiteral(".part");
    if (QFile::exists(file))
        Refuse(QStringLiteral("%1 exists").arg(file));
    const auto source = Existing(options.store);
    QFile::remove(part);
    const CopyResult result = CopyStore(source, MakeSqliteDialect(part));
    if (!QFile::rename(part, file))
        Refuse(QStringLiteral("%1 cannot be renamed to %2").arg(part, file));
    return Report(QStringLiteral("backed up"), result);
}

// The same content in the schema of this program; the backup itself stays as it is.
class UpToDate
{
public:
    explicit UpToDate(const QString& file)
    {
        auto given = Existing(QStringLiteral("sqlite:") + file);
        const int schema = SchemaOf(given);
        if (schema == 0)
            Refuse(QStringLiteral("%1 is no backup").arg(file));
        if (schema == CurrentSchema()) {
            dialect = std::move(given);
            return;
        }
        migrated = file + QStringLiteral(".migrated");
        QFile::remove(migrated);
        if (!QFile::copy(file, migrated))
            Refuse(QStringLiteral("%1 cannot be written").arg(migrated));
        dialect = MakeSqliteDialect(migrated);
        SqlConnection connection(dialect);
        MigrateSchema(connection, *dialect);
    }
    ~UpToDate()
    {
        if (!migrated.isEmpty())
            QFile::remove(migrated);
    }
    UpToDate(const UpToDate&) = delete;
    UpToDate& operator=(const UpToDate&) = delete;

    std::shared_ptr<const IDialect> dialect;

private:
    QString migrated;
};

int Restore(const Options& options, const QString& file)
{
    const auto lock = LockStore(options.store);
    const UpToDate backup(file);
    return Report(QStringLiteral("restored"), CopyStore(backup.dialect, MakeDialect(options.store)));
}

int Move(const Options& options, const QString& address)
{
    const auto lock = LockStore(options.store); // a server would go on with the old store
    const auto targetLock = LockStore(address);
    return Report(QStringLiteral("moved"), CopyStore(Existing(options.store), MakeDialect(address)));
}

// Null when a server uses the store.
std::unique_ptr<FileLock> LockIfFree(const QString& address)
{
    try {
        return LockStore(address);
    } catch (const StoreError&) {
        return nullptr;
    }
}

int Verify(const Options& options)
{
    const auto store = Existing(options.store);
    const auto lock = LockIfFree(options.store);
    const CheckResult result = CheckStore(store, lock != nullptr);
    QTextStream output(stdout);
    for (const QString& fault : result.faults)
        output << fault << '\n';
    output << result.revisions << " revisions read, " << result.faults.size() << " faults\n";
    if (store->IsForOneServer() && !lock)
        output << "A server uses the file: its pages were not checked.\n";
    return result.faults.isEmpty() ? 0 : damaged;
}
} // namespace

int RunStoreCommand(const Options& options)
{
    const QString command = options.storeCommand.first();
    const QString argument = options.storeCommand.value(1);
    if (command == QLatin1String("backup"))
        return Backup(options, argument);
    if (command == QLatin1String("restore"))
        return Restore(options, argument);
    if (command == QLatin1String("move"))
        return Move(options, argument);
    return Verify(options);
}
} // namespace server
