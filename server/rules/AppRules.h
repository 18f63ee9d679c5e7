#pragma once

#include "../store/IStore.h"
#include "Outcome.h"

namespace server
{
// Editors of an app: its creator and every author of the same vendor. To others it does not exist.
bool MayEdit(const Account& account, const App& app);

struct AppChange
{
    std::optional<QString> name = {};
    std::optional<QStringList> tags = {};
};

// The rules of apps; each runs inside a write of the store.
namespace rules
{
Outcome<App> CreateApp(ITransaction& store, const Account& account, const QString& name, int kind,
                       qint64 now);
// Tags say what an app belongs to and are no change of the app itself.
Outcome<App> ChangeApp(ITransaction& store, const Account& account, const QString& appId,
                       const AppChange& change, qint64 now);
} // namespace rules
} // namespace server
