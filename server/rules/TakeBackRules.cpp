// SPDX-License-Identifier: Apache-2.0

#include "TakeBackRules.h"

namespace server::rules
{
namespace
{
QString ActOf(const TakeBackOrder& order)
{
    if (!order.to.isEmpty())
        return QStringLiteral("release.return");
    return order.state == VersionState::Online ? QStringLiteral("release.offline")
                                               : QStringLiteral("release.stop");
}

// The version that users shall have; nothing when they shall have none.
std::optional<Version> Wanted(Transaction& store, const QString& appId, const TakeBackOrder& order)
{
    if (order.to.isEmpty())
        return std::nullopt;
    auto version = store.FindVersion(order.to);
    if (!version || version->deletedAt != 0 || version->appId != appId)
        throw refusals::NotFound();
    if (version->state != order.state)
        throw refusals::NotReleased();
    return version;
}
} // namespace

QString TakeBack(Transaction& store, const Account& account, const QString& appId, const TakeBackOrder& order,
                 qint64 now)
{
    EditableApp(store, account, appId);
    const auto wanted = Wanted(store, appId, order);
    const auto present = store.NewestReleased(appId, order.state);
    QString presentId = present ? present->id : QString();
    if (presentId == order.to)
        return presentId;
    if (presentId != order.from)
        throw refusals::ReleaseChanged();
    store.WithdrawAll(appId, order.state, now);
    if (wanted)
        store.Release(*wanted, wanted->state, account.pin, now);
    const Version& meant = wanted ? *wanted : *present;
    store.Note({{}, now, account.pin, ActOf(order), appId, meant.id, meant.name, order.reason});
    return order.to;
}
} // namespace server::rules
