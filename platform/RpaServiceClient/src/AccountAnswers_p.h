// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaServiceClient/VersionServiceRecords.h>

#include <QJsonObject>

#include <optional>

// Reads the answers about sessions and apps; a record with a missing or wrong field is none.
namespace AccountAnswers
{
std::optional<VersionServiceSession> ReadSession(const QJsonObject& json);
std::optional<VersionServiceApp> ReadApp(const QJsonObject& json);
std::optional<QVector<VersionServiceApp>> ReadApps(const QJsonObject& json);
std::optional<QVector<VersionServiceDeletedApp>> ReadDeletedApps(const QJsonObject& json);
} // namespace AccountAnswers
