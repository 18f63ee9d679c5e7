// SPDX-License-Identifier: Apache-2.0

#include "PackageRules_p.h"

#include <RpaProcessData/RpaPackageInfo.h>

#include <QRegularExpression>
#include <QSet>

namespace
{

constexpr int longestName = 100;
constexpr int longestVersion = 64;

bool IsAllOf(const QString& text, const QString& pattern)
{
    const QRegularExpression rule(QRegularExpression::anchoredPattern(pattern));
    return rule.match(text).hasMatch();
}

// pip takes such a name for a file in the current folder.
bool LooksLikeArchive(const QString& name)
{
    return IsAllOf(name.toLower(), QStringLiteral(".*\\.(whl|zip|tar|tgz|tbz|txz|tlz|gz|bz2|xz|lzma|egg)"));
}

QString Problem(const PackageState& state)
{
    const QString name = PackageService::NameProblem(state.name);
    return name.isEmpty() ? PackageService::VersionProblem(state.version) : name;
}

} // namespace

QString PackageService::NameProblem(const QString& name)
{
    if (name.isEmpty())
        return QStringLiteral("请输入扩展包名称");
    if (name.size() > longestName)
        return QStringLiteral("扩展包名称不能超过 %1 个字符").arg(longestName);
    if (!IsAllOf(name, QStringLiteral("[A-Za-z0-9]([A-Za-z0-9._-]*[A-Za-z0-9])?")))
        return QStringLiteral("扩展包名称只能包含字母、数字和“.”“_”“-”，并以字母或数字开头和结尾");
    if (LooksLikeArchive(name))
        return QStringLiteral("请输入扩展包名称，而不是文件名");
    return {};
}

QString PackageService::VersionProblem(const QString& version)
{
    // The public and local version identifiers of Python's packaging, without comparison operators.
    const QString form =
        QStringLiteral("([0-9]+!)?[0-9]+(\\.[0-9]+)*((a|b|rc)[0-9]+)?(\\.post[0-9]+)?(\\.dev[0-9]+)?"
                       "(\\+[a-z0-9]+([._-][a-z0-9]+)*)?");
    if (version.isEmpty() || (version.size() <= longestVersion && IsAllOf(version, form)))
        return {};
    return QStringLiteral("版本应形如 3.1.2，留空表示任意版本");
}

QString PackageRules::Normalised(const QString& name)
{
    QString normalised = name.toLower();
    return normalised.replace(QRegularExpression(QStringLiteral("[-_.]+")), QStringLiteral("-"));
}

QString PackageRules::Requirement(const PackageState& state)
{
    return state.version.isEmpty() ? state.name : state.name + QStringLiteral("==") + state.version;
}

bool PackageRules::ReadList(const QString& json, QVector<PackageState>* states, QString* problem)
{
    states->clear();
    RpaPackageInfo info(nullptr);
    if (!info.Parse(json.toUtf8())) {
        *problem = QStringLiteral("扩展包列表无法识别");
        return false;
    }
    const QList<QSharedPointer<PackageItem>> items = info.GetListPackageItemPtr();
    if (items.size() > maxPackages) {
        *problem = QStringLiteral("扩展包不能超过 %1 个").arg(maxPackages);
        return false;
    }
    QSet<QString> known;
    for (const QSharedPointer<PackageItem>& item : items) {
        PackageState state;
        state.name = item->name.trimmed();
        state.version = item->version.trimmed();
        state.problem = Problem(state);
        const QString key = Normalised(state.name) + QLatin1Char(' ') + state.version;
        if (known.contains(key))
            continue;
        known.insert(key);
        if (!state.problem.isEmpty())
            state.status = PackageState::Failed;
        states->append(state);
    }
    return true;
}
