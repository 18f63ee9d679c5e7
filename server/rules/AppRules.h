// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "../store/Store.h"
#include "Refusal.h"

namespace server
{
// Editors of an app: its creator and every author of the same vendor. To others it does not exist.
bool MayEdit(const Account& account, const App& app);

// The app of a store or transaction that the account may edit; not a deleted one.
template <typename Source>
App EditableApp(Source& source, const Account& account, const QString& appId)
{
    const auto app = source.FindApp(appId);
    if (!app || !MayEdit(account, *app))
        throw refusals::NotFound();
    return *app;
}

// Its creator and administrators of its vendor, of those to whom it exists.
bool MayDelete(const Account& account, const App& app);

// How long a deleted app may be restored.
constexpr qint64 binMs = 30LL * 24 * 60 * 60 * 1000;
// What the versions of an app that is copied may have together.
constexpr qint64 mostCopiedBytes = 128LL * 1024 * 1024;

struct AppChange
{
    std::optional<QString> name = {};
    std::optional<QStringList> tags = {};
};

// The rules of apps; each runs inside a write of the store.
namespace rules
{
// anyName: under the next free name when that one is taken.
App CreateApp(Transaction& store, const Account& account, const QString& name, int kind, qint64 now,
              bool anyName = false);
// Tags say what an app belongs to and are no change of the app itself.
App ChangeApp(Transaction& store, const Account& account, const QString& appId, const AppChange& change,
              qint64 now);
// Its versions go along, and come back with it; users have none of them meanwhile.
App DeleteApp(Transaction& store, const Account& account, const QString& appId, qint64 now);
// Under the next free name when its own was taken meanwhile.
App RestoreApp(Transaction& store, const Account& account, const QString& appId, qint64 now);
// Takes a deleted app out of the bin for good.
App PurgeApp(Transaction& store, const Account& account, const QString& appId, qint64 now);
// A new app of this account with all versions, each in development; nothing of what was released.
App CopyApp(Transaction& store, const Account& account, const QString& appId, qint64 now,
            qint64 mostBytes = mostCopiedBytes);
} // namespace rules
} // namespace server
