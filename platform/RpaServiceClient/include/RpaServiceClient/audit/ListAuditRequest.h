// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaServiceClient/ServiceAnswers.h>
#include <RpaServiceClient/ServiceRoute.h>

#include <QDateTime>

// Who did what to the versions and invitations of an app.
struct VersionServiceAuditEntry
{
    QString id;
    QDateTime at; // UTC
    QString pin;
    QString act; // "release.gray", "invitation.redeem", …: docs/protocol.md
    QString appId;
    QString versionId; // may be empty
    QString detail;    // name of the version, or id of the invitation
    QString reason;    // of a taking back, else empty

    static std::optional<VersionServiceAuditEntry> Read(const QJsonObject& json)
    {
        using namespace ServiceAnswers;
        const VersionServiceAuditEntry entry{
            Text(json, "id"),    Time(json, "at"),        Text(json, "pin"),    Text(json, "act"),
            Text(json, "appId"), Text(json, "versionId"), Text(json, "detail"), Text(json, "reason")};
        return ServiceRoute::IsValidId(entry.id) && !entry.act.isEmpty() ? std::optional(entry)
                                                                         : std::nullopt;
    }
};

// For administrators: entries of the vendor, newest first.
struct ListAuditRequest
{
    using Answer = QVector<VersionServiceAuditEntry>;

    QString beforeId; // only what is older than this entry; empty: from the newest on
    int limit = 0;    // 1–1000

    WbHttpRequest ToHttp() const
    {
        QByteArray path = "/audit?limit=" + QByteArray::number(limit);
        if (!beforeId.isEmpty())
            path += "&before=" + ServiceRoute::Escaped(beforeId);
        return ServiceRoute::Fetch(path);
    }
    static std::optional<Answer> Read(const WbHttpAnswer& answer)
    {
        return ServiceAnswers::ReadList<Answer>(answer, "entries");
    }
};
