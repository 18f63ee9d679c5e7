// SPDX-License-Identifier: Apache-2.0

#include "VersionFacts.h"

namespace
{
constexpr int grayState = 2;
constexpr int onlineState = 3;
} // namespace

QString VersionWords::Name(const VersionFacts& version)
{
    switch (version.state) {
    case grayState:
        return QStringLiteral("【灰度】") + version.name;
    case onlineState:
        return QStringLiteral("【线上】") + version.name;
    default:
        return version.name;
    }
}

QString VersionWords::State(const VersionFacts& version, DateLanguage language)
{
    const VersionServiceRelease& release = version.release;
    if (version.state != grayState && version.state != onlineState)
        return QStringLiteral("开发中：可以修改，使用者看不到");
    const bool isOnline = version.state == onlineState;
    const QString kind = isOnline ? QStringLiteral("线上") : QStringLiteral("灰度");
    if (release.versionId.isEmpty())
        return kind + QStringLiteral("版本");
    const QString when = (isOnline ? QStringLiteral("上线于 %1") : QStringLiteral("灰度于 %1"))
                             .arg(DateText(release.releasedAt, language));
    if (release.present) {
        const QString who = isOnline ? QStringLiteral("使用者现在使用") : QStringLiteral("受邀的人现在使用");
        return QStringLiteral("%1版本：%2（%3）").arg(kind, who, when);
    }
    if (release.withdrawn)
        return QStringLiteral("%1版本：已收回，使用者看不到（%2）").arg(kind, when);
    return QStringLiteral("%1版本：已由更新的版本代替（%2）").arg(kind, when);
}

QString VersionWords::Save(const VersionServiceSave& save, DateLanguage language)
{
    return QStringLiteral("%1 · %2").arg(DateText(save.savedAt, language), save.name);
}

QString VersionWords::UsersHave(const QVector<VersionServiceRelease>& releases)
{
    QStringList parts;
    for (const VersionServiceRelease& release : releases) {
        if (release.present) {
            const QString kind =
                release.state == onlineState ? QStringLiteral("线上") : QStringLiteral("灰度");
            parts << QStringLiteral("%1“%2”").arg(kind, release.versionName);
        }
    }
    return parts.isEmpty() ? QStringLiteral("使用者现在没有可用的版本")
                           : QStringLiteral("使用者现在使用：") + parts.join(QStringLiteral("、"));
}
