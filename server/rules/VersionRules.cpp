// SPDX-License-Identifier: Apache-2.0

#include "VersionRules.h"

#include "../base/Ids.h"

namespace server
{
namespace
{
constexpr qint64 restorableMs = 30LL * 24 * 60 * 60 * 1000;

void TakeOver(Version& version, const VersionDraft& draft, const Account& account, qint64 now)
{
    if (!draft.name.isNull())
        version.name = draft.name;
    if (!draft.description.isNull())
        version.description = draft.description;
    version.apiVersion = draft.apiVersion;
    version.pin = account.pin;
    version.sha256 = draft.sha256;
    version.size = draft.body.size();
    version.changedAt = now;
}
} // namespace

namespace rules
{
Version EditableVersion(Transaction& store, const Account& account, const QString& versionId)
{
    const auto version = store.FindVersion(versionId);
    if (!version || version->deletedAt != 0)
        throw refusals::NotFound();
    EditableApp(store, account, version->appId);
    return *version;
}

Refusal ChangedBySomebodyElse(Transaction& store, const Version& version)
{
    const auto account = store.FindAccount(version.pin);
    return refusals::RevisionChanged(account ? account->name : version.pin);
}

Version CreateVersion(Transaction& store, const Account& account, const QString& appId,
                      const VersionDraft& draft, qint64 now)
{
    EditableApp(store, account, appId);
    if (store.DevelopNameTaken(appId, draft.name, {}))
        throw refusals::VersionNameTaken();
    Version version;
    version.id = NewId();
    version.appId = appId;
    version.createdAt = now;
    TakeOver(version, draft, account, now);
    store.InsertVersion(version, draft.body);
    return version;
}

Version OverwriteVersion(Transaction& store, const Account& account, const QString& versionId,
                         qint64 basedOnRevision, const VersionDraft& draft, qint64 now)
{
    Version version = EditableVersion(store, account, versionId);
    if (version.state != VersionState::Develop)
        throw refusals::NotDevelop();
    if (version.revision != basedOnRevision)
        throw ChangedBySomebodyElse(store, version);
    TakeOver(version, draft, account, now);
    if (store.DevelopNameTaken(version.appId, version.name, version.id))
        throw refusals::VersionNameTaken();
    ++version.revision;
    store.AddRevision(version, draft.body);
    return version;
}

Version DeleteVersion(Transaction& store, const Account& account, const QString& versionId,
                      qint64 basedOnRevision, qint64 now)
{
    Version version = EditableVersion(store, account, versionId);
    if (version.revision != basedOnRevision)
        throw ChangedBySomebodyElse(store, version);
    version.deletedAt = now;
    store.SetDeleted(version, now, account.pin);
    store.Note(
        {{}, now, account.pin, QStringLiteral("version.delete"), version.appId, version.id, version.name});
    return version;
}

Version RestoreVersion(Transaction& store, const Account& account, const QString& versionId, qint64 now)
{
    const auto found = store.FindVersion(versionId);
    if (!found || (found->deletedAt != 0 && found->deletedAt + restorableMs < now))
        throw refusals::NotFound();
    Version version = *found;
    const auto app = store.FindApp(version.appId);
    if (!account.IsAdministrator())
        throw refusals::Forbidden();
    if (!app || app->venderId != account.venderId)
        throw refusals::NotFound();
    if (version.deletedAt == 0)
        return version;
    if (version.state == VersionState::Develop &&
        store.DevelopNameTaken(version.appId, version.name, version.id))
        throw refusals::VersionNameTaken();
    version.deletedAt = 0;
    store.SetDeleted(version, 0, account.pin);
    store.Note(
        {{}, now, account.pin, QStringLiteral("version.restore"), version.appId, version.id, version.name});
    return version;
}
} // namespace rules
} // namespace server
