// SPDX-License-Identifier: Apache-2.0

#include "AccountAnswers_p.h"

#include <RpaServiceClient/ServiceRoutes.h>

#include <QJsonArray>

namespace
{
QString Text(const QJsonObject& json, const char* name)
{
    return json.value(QLatin1String(name)).toString();
}

QDateTime Time(const QJsonObject& json, const char* name)
{
    return QDateTime::fromMSecsSinceEpoch(qint64(json.value(QLatin1String(name)).toDouble()), Qt::UTC);
}

VersionServiceAccount ReadAccount(const QJsonObject& json)
{
    VersionServiceAccount account;
    account.pin = Text(json, "pin");
    account.name = Text(json, "name");
    account.venderId = Text(json, "venderId");
    for (const QJsonValue& role : json.value(QLatin1String("roles")).toArray())
        account.roles.append(role.toString());
    return account;
}
} // namespace

std::optional<VersionServiceSession> AccountAnswers::ReadSession(const QJsonObject& json)
{
    VersionServiceSession session;
    session.token = Text(json, "token").toLatin1();
    session.account = ReadAccount(json.value(QLatin1String("account")).toObject());
    session.expiresAt = Time(json, "expiresAt");
    if (session.account.pin.isEmpty())
        return std::nullopt;
    return session;
}

std::optional<VersionServiceApp> AccountAnswers::ReadApp(const QJsonObject& json)
{
    VersionServiceApp app;
    app.id = Text(json, "id");
    app.name = Text(json, "name");
    app.kind = json.value(QLatin1String("kind")).toInt(-1);
    app.creatorPin = Text(json, "creator");
    app.creatorName = Text(json, "creatorName");
    app.oxsAppKey = Text(json, "oxsAppKey");
    app.createdAt = Time(json, "createdAt");
    app.changedAt = Time(json, "changedAt");
    app.changedByPin = Text(json, "changedBy");
    app.changedByName = Text(json, "changedByName");
    for (const QJsonValue& tag : json.value(QLatin1String("tags")).toArray())
        app.tags.append(tag.toString());
    app.state = json.value(QLatin1String("state")).toInt(1);
    if (!ServiceRoutes::IsValidId(app.id) || app.name.isEmpty() || app.kind < 0)
        return std::nullopt;
    return app;
}

std::optional<QVector<VersionServiceDeletedApp>> AccountAnswers::ReadDeletedApps(const QJsonObject& json)
{
    const QJsonValue list = json.value(QLatin1String("apps"));
    if (!list.isArray())
        return std::nullopt;
    QVector<VersionServiceDeletedApp> apps;
    for (const QJsonValue& entry : list.toArray()) {
        const auto app = ReadApp(entry.toObject().value(QLatin1String("app")).toObject());
        if (!app)
            return std::nullopt;
        apps.append({*app, Time(entry.toObject(), "deletedAt")});
    }
    return apps;
}

std::optional<QVector<VersionServiceApp>> AccountAnswers::ReadApps(const QJsonObject& json)
{
    const QJsonValue list = json.value(QLatin1String("apps"));
    if (!list.isArray())
        return std::nullopt;
    QVector<VersionServiceApp> apps;
    for (const QJsonValue& entry : list.toArray()) {
        const auto app = ReadApp(entry.toObject());
        if (!app)
            return std::nullopt;
        apps.append(*app);
    }
    return apps;
}
