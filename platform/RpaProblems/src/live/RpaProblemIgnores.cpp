// SPDX-License-Identifier: Apache-2.0

#include <RpaProblems/RpaProblemIgnores.h>

#include <QSettings>
#include <QStandardPaths>

#include <memory>

namespace
{
constexpr int longestReason = 500;

std::unique_ptr<QSettings> Open(const QString& file)
{
    auto store = std::make_unique<QSettings>(file, QSettings::IniFormat);
    store->setIniCodec("UTF-8");
    return store;
}
} // namespace

RpaProblemIgnores::RpaProblemIgnores(const QString& iniFile, const QString& appId) : file(iniFile)
{
    if (appId.isEmpty())
        return;
    // Ids are the server's; a slash would make groups within groups.
    group = QString::fromLatin1(appId.toUtf8().toHex());
    const auto store = Open(file);
    store->beginGroup(group);
    const QStringList ids = store->childKeys();
    for (const QString& id : ids)
        reasons.insert(id, store->value(id).toString());
}

QString RpaProblemIgnores::GetReason(const RpaProblem& problem) const
{
    return problem.severity == RpaProblemSeverity::Error ? QString() : reasons.value(problem.id);
}

bool RpaProblemIgnores::Ignore(const RpaProblem& problem, const QString& reason)
{
    const QString text = reason.trimmed().left(longestReason);
    if (group.isEmpty() || text.isEmpty() || problem.severity == RpaProblemSeverity::Error)
        return false;
    const auto store = Open(file);
    store->setValue(group + QLatin1Char('/') + problem.id, text);
    store->sync();
    if (store->status() != QSettings::NoError)
        return false;
    reasons.insert(problem.id, text);
    return true;
}

void RpaProblemIgnores::TakeBack(const RpaProblem& problem)
{
    if (group.isEmpty())
        return;
    Open(file)->remove(group + QLatin1Char('/') + problem.id);
    reasons.remove(problem.id);
}

QString RpaProblemIgnores::GetUsualFile()
{
    return QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation) +
           QStringLiteral("/ignored-problems.ini");
}
