// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaServiceClient/RpaServiceClientExport.h>

#include <QByteArray>
#include <QString>
#include <QVector>

#include <optional>

class QJsonObject;
struct WbHttpAnswer;

// A version as its app's list shows it.
struct RPASERVICECLIENT_EXPORT VersionServiceVersion
{
    static constexpr const char* listName = "versions";
    QString id;
    QString name;
    int state = 1; // 1 develop, 2 gray, 3 online
    int revision = 0;
    QByteArray sha256; // of its app data, lower-case hex
    QString pin;       // who saved it last
    QString description = {};
    QString apiVersion = {};
    QString appId = {};

    // Nothing when a field is missing or wrong.
    static std::optional<VersionServiceVersion> Read(const QJsonObject& json);
    // The version as a save left it; nothing when the answer is not the confirmation of what was sent.
    static std::optional<VersionServiceVersion> ReadSaved(const WbHttpAnswer& answer);
};
