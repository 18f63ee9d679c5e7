// SPDX-License-Identifier: Apache-2.0

#include "StoreLock.h"

#include "../store/Store.h"

#include <QDir>
#include <QFileInfo>

namespace
{
// A server that is about to end may still hold its store.
constexpr auto patience = std::chrono::seconds(3);
} // namespace

std::unique_ptr<FileLock> server::LockStore(const QString& address)
{
    const QString prefix = QStringLiteral("sqlite:");
    if (!address.startsWith(prefix) || address.endsWith(QLatin1String(":memory:")))
        return nullptr;
    const QString file = address.mid(prefix.size());
    QDir().mkpath(QFileInfo(file).absolutePath());
    auto lock = std::make_unique<FileLock>(file + QStringLiteral(".lock"));
    switch (lock->TryLock(patience)) {
    case FileLock::Result::Locked:
        return lock;
    case FileLock::Result::Taken:
        throw StoreError(StoreFault::Unavailable, QStringLiteral("another server uses %1").arg(file));
    case FileLock::Result::Failed:
        break;
    }
    throw StoreError(StoreFault::Unavailable, QStringLiteral("cannot lock %1.lock").arg(file));
}
