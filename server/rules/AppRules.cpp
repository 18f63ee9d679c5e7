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
    const App app{NewId(), name, kind, account.pin, account.name, account.venderId, NewId(), now, now};
    store.InsertApp(app);
    return app;
}

Outcome<App> RenameApp(ITransaction& store, const Account& account, const QString& appId, const QString& name,
                       qint64 now)
{
    auto app = store.FindApp(appId);
    if (!app || !MayEdit(account, *app))
        return refusals::NotFound();
    if (app->name == name)
        return *app;
    if (store.AppNameTaken(app->venderId, name))
        return refusals::AppNameTaken();
    store.RenameApp(appId, name, now);
    app->name = name;
    app->changedAt = now;
    return *app;
}
} // namespace rules
} // namespace server
