// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "ServerProcess.h"

#include <QJsonObject>
#include <QMap>
#include <QNetworkAccessManager>
#include <QObject>

// Apps with released versions on a real server.
class ReleaseFixture : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();

protected:
    void SignIn(const char* account);
    QJsonObject Send(const QByteArray& method, const QString& path, const QByteArray& body,
                     const QMap<QByteArray, QByteArray>& headers = {});
    // Makes an app of author-1 with one released version; gives the app's id.
    QString Release(const QString& name, int type);
    // Another version of the app, by whoever is signed in; gives the version's id.
    QString ReleaseVersion(const QString& app, const QString& name, int type);

    ServerProcess server;
    QNetworkAccessManager network;
    QByteArray token;
};
