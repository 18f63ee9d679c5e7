// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "FaultServer.h"

#include <QString>

// Answers of the version service as a FaultServer gives them, right in every field unless a test changes
// them.
namespace VersionReplies
{
struct Version
{
    QString id = QStringLiteral("v1");
    QString appId = QStringLiteral("app1");
    QString name = QStringLiteral("版本1");
    QString description;
    int state = 1;
    QString apiVersion = QStringLiteral("1.0.0");
    QString pin = QStringLiteral("author");
    int revision = 1;
    QByteArray content = QByteArrayLiteral("{}");
};

// The smallest content that is an app, of format version 1.0.0; members: further ones, without braces.
QByteArray App(const QByteArray& members = {});
// The versions of an app, in this order.
FaultServer::Reply List(const QVector<Version>& versions);
// A confirmed save: 201 for a new version, 200 for an overwrite.
FaultServer::Reply Saved(int status, const Version& version);
// An answered release; result 0 means that it did not take effect.
FaultServer::Reply Released(int result, bool needTip, const QString& message, const Version& version);
// A confirmed deletion.
FaultServer::Reply Deleted();
} // namespace VersionReplies
