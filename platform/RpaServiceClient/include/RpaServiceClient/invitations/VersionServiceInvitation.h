// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaServiceClient/RpaServiceClientExport.h>

#include <QDateTime>
#include <QString>
#include <QVector>

#include <optional>

class QJsonObject;

// A code that opens the gray versions of an app to whoever redeems it.
struct RPASERVICECLIENT_EXPORT VersionServiceInvitation
{
    static constexpr const char* listName = "invitations";
    QString id;
    QString code; // "XXXXX-XXXXX"
    QString appId;
    QDateTime createdAt; // UTC
    QDateTime expiresAt; // UTC
    int mostUses = 0;
    int uses = 0; // accounts that redeemed it
    bool revoked = false;

    // Whether somebody can still redeem it.
    bool IsOpen(const QDateTime& now) const { return !revoked && now < expiresAt && uses < mostUses; }

    // Nothing when a field is missing or wrong.
    static std::optional<VersionServiceInvitation> Read(const QJsonObject& json);
};
