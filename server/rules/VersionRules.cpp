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
Outcome<Version> EditableVersion(Transaction& store, const Account& account, const QString& versionId)
{
    const auto version = store.FindVersion(versionId);
    if (!version || version->deletedAt != 0)
        return refusals::NotFound();
    const auto app = store.FindApp(version->appId);
    if (!app || !MayEdit(account, *app))
        return refusals::NotFound();
    return *version;
}

Refusal ChangedBySomebodyElse(Transaction& store, const Version& version)
{
    const auto account = store.FindAccount(version.pin);
    return refusals::RevisionChanged(account ? account->name : version.pin);
}

Outcome<Version> CreateVersion(Transaction& store, const Account& account, const QString& appId,
                               const VersionDraft& draft, qint64 now)
{
    const auto app = store.FindApp(appId);
    if (!app || !MayEdit(account, *app))
        return refusals::NotFound();
    if (store.DevelopNameTaken(appId, draft.name, {}))
        return refusals::VersionNameTaken();
    Version version;
    version.id = NewId();
    version.appId = appId;
    version.createdAt = now;
    TakeOver(version, draft, account, now);
    store.InsertVersion(version, draft.body);
    return version;
}

Outcome<Version> OverwriteVersion(Transaction& store, const Account& account, const QString& versionId,
                                  qint64 basedOnRevision, const VersionDraft& draft, qint64 now)
{
    const auto found = EditableVersion(store, account, versionId);
    if (const auto* refusal = std::get_if<Refusal>(&found))
        return *refusal;
    Version version = std::get<Version>(found);
    if (version.state != VersionState::Develop)
        return refusals::NotDevelop();
    if (version.revision != basedOnRevision)
        return ChangedBySomebodyElse(store, version);
    TakeOver(version, draft, account, now);
    if (store.DevelopNameTaken(version.appId, version.name, version.id))
        return refusals::VersionNameTaken();
    ++version.revision;
    store.AddRevision(version, draft.body);
    return version;
}

Outcome<Version> DeleteVersion(Transaction& store, const Account& account, const QString& versionId,
                               qint64 basedOnRevision, qint64 now)
{
    const auto found = EditableVersion(store, account, versionId);
    if (const auto* refusal = std::get_if<Refusal>(&found))
        return *refusal;
    Version version = std::get<Version>(found);
    if (version.revision != basedOnRevision)
        return ChangedBySomebodyElse(store, version);
    version.deletedAt = now;
    store.SetDeleted(version, now, account.pin);
    store.Note(
        {{}, now, account.pin, QStringLiteral("version.delete"), version.appId, version.id, version.name});
    return version;
}

Outcome<Version> RestoreVersion(Transaction& store, const Account& account, const QString& versionId,
                                qint64 now)
{
    const auto found = store.FindVersion(versionId);
    if (!found || (found->deletedAt != 0 && found->deletedAt + restorableMs < now))
        return refusals::NotFound();
    Version version = *found;
    const auto app = store.FindApp(version.appId);
    if (!account.IsAdministrator())
        return refusals::Forbidden();
    if (!app || app->venderId != account.venderId)
        return refusals::NotFound();
    if (version.deletedAt == 0)
        return version;
    if (version.state == VersionState::Develop &&
        store.DevelopNameTaken(version.appId, version.name, version.id))
        return refusals::VersionNameTaken();
    version.deletedAt = 0;
    store.SetDeleted(version, 0, account.pin);
    store.Note(
        {{}, now, account.pin, QStringLiteral("version.restore"), version.appId, version.id, version.name});
    return version;
}
} // namespace rules
} // namespace server
