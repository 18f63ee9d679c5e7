// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaServiceClient/RpaServiceClientExport.h>

#include <QDateTime>
#include <QString>
#include <QStringList>
#include <QVector>

#include <optional>

class QJsonObject;

// An app as the lists show it.
struct RPASERVICECLIENT_EXPORT VersionServiceApp
{
    static constexpr const char* listName = "apps";
    QString id;
    QString name;
    int kind = 0; // 0 visual process, 1 program process
    QString creatorPin;
    QString creatorName;
    QString oxsAppKey;
    QDateTime createdAt;  // UTC
    QDateTime changedAt;  // UTC
    QString changedByPin; // who named it or saved a version of it last
    QString changedByName;
    QStringList tags;
    int state = 1; // what users have: 3 an online version, else 2 a gray one, else 1

    // Nothing when a field is missing or wrong.
    static std::optional<VersionServiceApp> Read(const QJsonObject& json);
};
