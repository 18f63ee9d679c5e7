// SPDX-License-Identifier: Apache-2.0

#include "../base/Ids.h"
#include "AppRules.h"

#include <WbFoundation/FreeNames.h>

#include <QSet>

namespace server::rules
{
namespace
{
constexpr int longestVersionName = 20;

// Versions that were released under one name are all in development in the copy, where names are unique.
void CopyVersions(Transaction& store, const std::vector<Version>& versions, const App& copy)
{
    QSet<QString> taken;
    for (const Version& original : versions) {
        Version version = original;
        version.id = NewId();
        version.appId = copy.id;
        version.name = FreeNames::FirstFree(original.name, longestVersionName,
                                            [&taken](const QString& tried) { return taken.contains(tried); });
        taken.insert(version.name);
        version.state = VersionState::Develop;
        version.pin = copy.creator;
        version.revision = 1;
        version.withdrawnAt = 0;
        version.createdAt = version.changedAt = copy.createdAt;
        store.InsertCopy(version, original);
    }
}
} // namespace

App CopyApp(Transaction& store, const Account& account, const QString& appId, qint64 now, qint64 mostBytes)
{
    const auto app = store.FindApp(appId);
    if (!app || !account.IsAuthor() || !MayEdit(account, *app))
        throw refusals::NotFound();
    const std::vector<Version> versions = store.VersionsOf(appId);
    qint64 bytes = 0;
    for (const Version& version : versions)
        bytes += version.size;
    if (bytes > mostBytes)
        throw refusals::TooLargeToCopy();
    const QString name = FreeNames::WithEnding(app->name, QStringLiteral(" 副本"), 50);
    App copy = CreateApp(store, account, name, app->kind, now, true);
    copy.tags = app->tags;
    store.ChangeApp(copy);
    CopyVersions(store, versions, copy);
    return copy;
}
} // namespace server::rules
