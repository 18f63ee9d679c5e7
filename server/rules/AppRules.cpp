#include "AppRules.h"

#include "../base/Ids.h"

namespace server
{
bool MayEdit(const Account& account, const App& app)
{
    return app.creator == account.pin || (account.IsAuthor() && app.venderId == account.venderId);
}

namespace rules
{
Outcome<App> CreateApp(ITransaction& store, const Account& account, const QString& name, int kind, qint64 now)
{
    if (!account.IsAuthor())
        return refusals::Forbidden();
    if (store.AppNameTaken(account.venderId, name))
        return refusals::AppNameTaken();
    const App app{NewId(), name, kind, account.pin, account.name, account.venderId,
                  NewId(), now,  now,  account.pin, account.name};
    store.InsertApp(app);
    return app;
}

Outcome<App> ChangeApp(ITransaction& store, const Account& account, const QString& appId,
                       const AppChange& change, qint64 now)
{
    auto app = store.FindApp(appId);
    if (!app || !MayEdit(account, *app))
        return refusals::NotFound();
    const bool isRenamed = change.name && *change.name != app->name;
    if (isRenamed && store.AppNameTaken(app->venderId, *change.name))
        return refusals::AppNameTaken();
    if (isRenamed) {
        app->name = *change.name;
        app->changedAt = now;
        app->changedBy = account.pin;
        app->changedByName = account.name;
    }
    app->tags = change.tags.value_or(app->tags);
    store.ChangeApp(*app);
    return *app;
}
} // namespace rules
} // namespace server
