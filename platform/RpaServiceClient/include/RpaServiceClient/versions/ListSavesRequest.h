// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaServiceClient/ServiceAnswers.h>
#include <RpaServiceClient/ServiceRoute.h>

#include <QDateTime>

// One save of a version.
struct VersionServiceSave
{
    static constexpr const char* listName = "saves";
    QString versionId;
    int revision = 0;
    QString pin;       // who saved it
    QString name;      // the account's
    QDateTime savedAt; // UTC
    QString note;      // what its author says of it; may be empty

    // Nothing when a field is missing or wrong.
    static std::optional<VersionServiceSave> Read(const QJsonObject& json)
    {
        using namespace ServiceAnswers;
        const VersionServiceSave save{Text(json, "versionId"), json.value(QLatin1String("revision")).toInt(),
                                      Text(json, "pin"),       Text(json, "name"),
                                      Time(json, "savedAt"),   Text(json, "note")};
        return ServiceRoute::IsValidId(save.versionId) && save.revision > 0 ? std::optional(save)
                                                                            : std::nullopt;
    }
};

// Of each version of the app its last saves and all with a note: newest version, then newest save first.
struct ListSavesRequest
{
    using Answer = QVector<VersionServiceSave>;

    QString appId;

    WbHttpRequest ToHttp() const { return ServiceRoute::Fetch("/apps/%1/saves", appId); }
};
