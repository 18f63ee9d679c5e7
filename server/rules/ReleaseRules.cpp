// SPDX-License-Identifier: Apache-2.0

#include "ReleaseRules.h"

#include "../base/Ids.h"
#include "InvitationRules.h"

#include <WbFoundation/FreeNames.h>

#include <algorithm>

namespace server::rules
{
namespace
{
VersionState StateAfter(ReleaseType type)
{
    return type == ReleaseType::Gray ? VersionState::Gray : VersionState::Online;
}

// Why a version in this state cannot be released this way; empty when it can.
QString Obstacle(VersionState state, ReleaseType type)
{
    if (type == ReleaseType::Gray && state == VersionState::Gray)
        return QStringLiteral("灰度版本不能再次灰度。");
    if (type == ReleaseType::Gray && state == VersionState::Online)
        return QStringLiteral("线上版本不能灰度。");
    if (type == ReleaseType::Online && state == VersionState::Online)
        return QStringLiteral("线上版本不能再次上线。");
    return {};
}

QString FreeName(const std::vector<Version>& versions)
{
    FreeNames names;
    for (const Version& version : versions)
        names.Take(version.name);
    return names.TakeNumbered(QStringLiteral("版本"));
}

// An app whose only develop version was released would have nothing left to work on.
void KeepADevelopVersion(Transaction& store, const Version& released, const Account& account, qint64 now)
{
    const std::vector<Version> versions = store.VersionsOf(released.appId);
    const auto isDevelop = [](const Version& version) { return version.state == VersionState::Develop; };
    if (std::any_of(versions.begin(), versions.end(), isDevelop))
        return;
    Version copy = released;
    copy.id = NewId();
    copy.name = FreeName(versions);
    copy.state = VersionState::Develop;
    copy.pin = account.pin;
    copy.revision = 1;
    copy.withdrawnAt = 0;
    copy.createdAt = copy.changedAt = now;
    store.InsertCopy(copy, released);
}
} // namespace

ReleaseResult ReleaseVersion(Transaction& store, const Account& account, const QString& versionId,
                             qint64 basedOnRevision, ReleaseType type, qint64 now)
{
    Version version = EditableVersion(store, account, versionId);
    const QString obstacle = Obstacle(version.state, type);
    if (!obstacle.isEmpty())
        return ReleaseResult{version, false, false, obstacle};
    if (version.revision != basedOnRevision)
        throw ChangedBySomebodyElse(store, version);
    store.Release(version, StateAfter(type), account.pin, now);
    store.Note({{},
                now,
                account.pin,
                type == ReleaseType::Gray ? QStringLiteral("release.gray") : QStringLiteral("release.online"),
                version.appId,
                version.id,
                version.name});
    const bool wasDevelop = version.state == VersionState::Develop;
    version.state = StateAfter(type);
    version.withdrawnAt = 0;
    version.changedAt = now;
    if (wasDevelop)
        KeepADevelopVersion(store, version, account, now);
    if (type == ReleaseType::Gray)
        KeepAnInvitation(store, version, account, now);
    return ReleaseResult{version, true, true, {}};
}
} // namespace server::rules
