// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaServiceClient/ServiceAnswers.h>

#include <QStringList>

// Who works with the service.
struct VersionServiceAccount
{
    QString pin;
    QString name;
    QString venderId;
    QStringList roles; // "author", "user", "administrator"
};

// A session as its account is told of it.
struct VersionServiceSession
{
    QByteArray token; // secret; empty in an answer about the current session
    VersionServiceAccount account;
    QDateTime expiresAt; // UTC

    // Nothing when a field is missing or wrong.
    static std::optional<VersionServiceSession> Read(const QJsonObject& json)
    {
        using namespace ServiceAnswers;
        const QJsonObject account = json.value(QLatin1String("account")).toObject();
        VersionServiceSession session{
            Text(json, "token").toLatin1(),
            {Text(account, "pin"), Text(account, "name"), Text(account, "venderId"), {}},
            Time(json, "expiresAt")};
        for (const QJsonValue role : account.value(QLatin1String("roles")).toArray())
            session.account.roles.append(role.toString());
        return session.account.pin.isEmpty() ? std::nullopt : std::optional(session);
    }
};
