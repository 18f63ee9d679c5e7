#include "ReleaseRules.h"

#include "InvitationRules.h"

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
} // namespace

Outcome<ReleaseResult> ReleaseVersion(ITransaction& store, const Account& account, const QString& versionId,
                                      qint64 basedOnRevision, ReleaseType type, qint64 now)
{
    const auto found = EditableVersion(store, account, versionId);
    if (const auto* refusal = std::get_if<Refusal>(&found))
        return *refusal;
    Version version = std::get<Version>(found);
    const QString obstacle = Obstacle(version.state, type);
    if (!obstacle.isEmpty())
        return ReleaseResult{version, false, false, obstacle};
    if (version.revision != basedOnRevision)
        return ChangedBySomebodyElse(store, version);
    store.Release(version, StateAfter(type), account.pin, now);
    store.Note({{},
                now,
                account.pin,
                type == ReleaseType::Gray ? QStringLiteral("release.gray") : QStringLiteral("release.online"),
                version.appId,
                version.id,
                version.name});
    version.state = StateAfter(type);
    version.changedAt = now;
    if (type == ReleaseType::Gray)
        KeepAnInvitation(store, version, account, now);
    return ReleaseResult{version, true, true, {}};
}
} // namespace server::rules
