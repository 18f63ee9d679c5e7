// SPDX-License-Identifier: Apache-2.0

#include "AppRules.h"

#include "../base/Ids.h"

#include <WbFoundation/FreeNames.h>

namespace server
{
bool MayEdit(const Account& account, const App& app)
{
    return app.creator == account.pin || (account.IsAuthor() && app.venderId == account.venderId);
}

bool MayDelete(const Account& account, const App& app)
{
    return app.creator == account.pin || (account.IsAdministrator() && app.venderId == account.venderId);
}

namespace rules
{
namespace
{
constexpr int longestName = 50;

QString FreeAppName(Transaction& store, const QString& venderId, const QString& name)
{
    return FreeNames::FirstFree(name, longestName,
                                [&](const QString& tried) { return store.AppNameTaken(venderId, tried); });
}

void NoteApp(Transaction& store, const Account& account, const QString& act, const App& app, qint64 now)
{
    store.Note({{}, now, account.pin, act, app.id, {}, app.name});
}
} // namespace

App CreateApp(Transaction& store, const Account& account, const QString& wanted, int kind, qint64 now,
              bool anyName)
{
    if (!account.IsAuthor())
        throw refusals::Forbidden();
    const QString name = anyName ? FreeAppName(store, account.venderId, wanted) : wanted;
    if (!anyName && store.AppNameTaken(account.venderId, name))
        throw refusals::AppNameTaken();
    App app{NewId(), name, kind, account.pin, account.name, account.venderId,
            NewId(), now,  now,  account.pin, account.name};
    store.InsertApp(app);
    return app;
}

App ChangeApp(Transaction& store, const Account& account, const QString& appId, const AppChange& change,
              qint64 now)
{
    App app = EditableApp(store, account, appId);
    const bool isRenamed = change.name && *change.name != app.name;
    if (isRenamed && store.AppNameTaken(app.venderId, *change.name))
        throw refusals::AppNameTaken();
    if (isRenamed) {
        app.name = *change.name;
        app.changedAt = now;
        app.changedBy = account.pin;
        app.changedByName = account.name;
    }
    app.tags = change.tags.value_or(app.tags);
    store.ChangeApp(app);
    return app;
}

App DeleteApp(Transaction& store, const Account& account, const QString& appId, qint64 now)
{
    const auto app = store.FindApp(appId);
    if (!app || !(MayEdit(account, *app) || MayDelete(account, *app)))
        throw refusals::NotFound();
    if (!MayDelete(account, *app))
        throw refusals::NotTheDeleter();
    store.SetAppDeleted(appId, now, account.pin);
    NoteApp(store, account, QStringLiteral("app.delete"), *app, now);
    return *app;
}

App RestoreApp(Transaction& store, const Account& account, const QString& appId, qint64 now)
{
    auto app = store.FindDeletedApp(appId);
    if (!app || !MayDelete(account, *app) || app->deletedAt + binMs < now)
        throw refusals::NotFound();
    app->name = FreeAppName(store, app->venderId, app->name);
    app->deletedAt = 0;
    store.ChangeApp(*app);
    store.SetAppDeleted(appId, 0, account.pin);
    NoteApp(store, account, QStringLiteral("app.restore"), *app, now);
    return *app;
}

App PurgeApp(Transaction& store, const Account& account, const QString& appId, qint64 now)
{
    const auto app = store.FindDeletedApp(appId);
    if (!app || !MayDelete(account, *app))
        throw refusals::NotFound();
    store.PurgeApp(appId, now);
    NoteApp(store, account, QStringLiteral("app.purge"), *app, now);
    return *app;
}
} // namespace rules
} // namespace server
