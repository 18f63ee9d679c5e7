// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "ServerProcess.h"

#include <RpaCore/RobotExecuteInfo.h>

#include <QByteArray>
#include <QJsonObject>
#include <QNetworkAccessManager>
#include <QString>
#include <QStringList>
#include <QUrl>

#include <functional>

class QNetworkReply;
class QNetworkRequest;
class RpaAppData;

// What an editor needs around it: a real version server with apps and versions on it, a signed-in author
// ("author-1", the creator of every app made here) and the settings of a workstation.
class EditorWorld
{
public:
    static constexpr auto ownApiVersion = "1.0.0";

    // Starts the server; a test cannot do without it.
    void Start();

    // Back to the state before each test: author-1 signed in at the server, no administrator, no templates.
    void SignIn();
    // Sends the editor's requests somewhere else, to a server that misbehaves.
    void UseServer(const QUrl& url);

    ServerProcess& GetServer() { return server; }

    // Launch information of a new app.
    RobotExecuteInfo CreateApp(int kind = 0);

    // A version with the content of a new app, or with its instructions changed; returns the id.
    QString AddVersion(const RobotExecuteInfo& app, const QString& name, const QString& description = {},
                       const QString& instructions = {},
                       const QString& apiVersion = QLatin1String(ownApiVersion));
    // The same with whatever content the test needs.
    using Fill = std::function<void(RpaAppData& content)>;
    QString AddVersion(const RobotExecuteInfo& app, const QString& name, const Fill& fill);
    // 1 gray, 2 online; of the last develop version no copy stays.
    void Release(const QString& versionId, int type);
    void Remove(const QString& versionId);

    // What the server holds.
    QStringList GetVersionNames(const RobotExecuteInfo& app);
    QStringList GetVersionIds(const RobotExecuteInfo& app);
    int GetState(const RobotExecuteInfo& app, const QString& versionId);
    QByteArray GetContent(const QString& versionId);
    QString GetInstructions(const QString& versionId);

private:
    QString Upload(const RobotExecuteInfo& app, const QString& name, const QString& description,
                   const RpaAppData& content);
    QNetworkRequest Request(const QString& path) const;
    QByteArray Finish(QNetworkReply* reply);
    QVector<QJsonObject> ListVersions(const RobotExecuteInfo& app);

    ServerProcess server;
    QNetworkAccessManager network;
    int appCount = 0;
};
