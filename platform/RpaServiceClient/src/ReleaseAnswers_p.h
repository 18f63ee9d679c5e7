// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaServiceClient/VersionServiceRecords.h>

#include <QJsonObject>

#include <optional>

// Reads the answers about released apps, invitations and the audit; a record with a missing or wrong field is
// none, and so is a list that holds one.
namespace ReleaseAnswers
{
std::optional<VersionServiceReleasedApp> ReadReleasedApp(const QJsonObject& json);
std::optional<QVector<VersionServiceReleasedApp>> ReadReleasedApps(const QJsonObject& json);
std::optional<QVector<VersionServiceRelease>> ReadReleases(const QJsonObject& json);
std::optional<QVector<VersionServiceSave>> ReadSaves(const QJsonObject& json);
std::optional<QString> ReadTakenBack(const QJsonObject& json);
std::optional<VersionServiceInvitation> ReadInvitation(const QJsonObject& json);
std::optional<QVector<VersionServiceInvitation>> ReadInvitations(const QJsonObject& json);
std::optional<QVector<VersionServiceAuditEntry>> ReadAudit(const QJsonObject& json);
} // namespace ReleaseAnswers
