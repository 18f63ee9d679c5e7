// SPDX-License-Identifier: Apache-2.0

#include "OpenedApps.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>

#include <algorithm>

namespace
{
constexpr qint64 mostBytes = 4 * 1024 * 1024;
constexpr int mostApps = 500; // of one account

void ForgetOldest(QHash<QString, qint64>* apps)
{
    const auto oldest = std::min_element(apps->cbegin(), apps->cend());
    apps->remove(QString(oldest.key()));
}
} // namespace

OpenedApps::OpenedApps(const QString& place) : file(place)
{
    Read();
}

void OpenedApps::Note(const QString& account, const QString& appId, const QDateTime& at)
{
    QHash<QString, qint64>& apps = times[account];
    apps.insert(appId, at.toMSecsSinceEpoch());
    while (apps.size() > mostApps)
        ForgetOldest(&apps);
    Write();
}

QVector<AppRecord> OpenedApps::Sorted(const QString& account, QVector<AppRecord> apps) const
{
    const QHash<QString, qint64> opened = times.value(account);
    std::stable_sort(apps.begin(), apps.end(), [&opened](const AppRecord& left, const AppRecord& right) {
        return opened.value(left.id) > opened.value(right.id);
    });
    return apps;
}

void OpenedApps::Read()
{
    QFile source(file);
    if (file.isEmpty() || !source.open(QIODevice::ReadOnly))
        return;
    const QJsonObject accounts = QJsonDocument::fromJson(source.read(mostBytes)).object();
    for (auto account = accounts.begin(); account != accounts.end(); ++account) {
        const QJsonObject apps = account.value().toObject();
        for (auto app = apps.begin(); app != apps.end(); ++app)
            times[account.key()].insert(app.key(), qint64(app.value().toDouble()));
    }
}

void OpenedApps::Write() const
{
    QJsonObject accounts;
    for (auto account = times.begin(); account != times.end(); ++account) {
        QJsonObject apps;
        for (auto app = account->begin(); app != account->end(); ++app)
            apps.insert(app.key(), double(app.value()));
        accounts.insert(account.key(), apps);
    }
    QSaveFile target(file);
    if (!file.isEmpty() && target.open(QIODevice::WriteOnly)) {
        target.write(QJsonDocument(accounts).toJson(QJsonDocument::Compact));
        target.commit();
    }
}
