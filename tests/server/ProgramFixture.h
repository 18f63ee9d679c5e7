// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "ApiClient.h"
#include "PlainServer.h"
#include "PostgresProcess.h"
#include "TestFolder.h"

#include <QObject>

#include <memory>

// The server's program on a store of its own in either database, with one account that may do everything.
// Tests have the column "database".
class ProgramFixture : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase() { postgres.reset(); }
    void init();
    void cleanup() { EndServer(); }

protected:
    static const QByteArray pin;
    static const QByteArray password;

    // The column "database" with a row for each.
    static void Databases();

    bool AddAccount(); // to the present store
    bool Start(const QStringList& more = {}, const PlainServer::Environment& variables = {});
    void EndServer();
    bool SignIn();

    // Exit code of a command on the store; what it said is in `said`.
    int Command(const QStringList& arguments, const QByteArray& input = {});

    // The id of what was made.
    QByteArray NewApp(const QByteArray& name);
    QByteArray NewVersion(const QByteArray& appId, const QByteArray& name, const QByteArray& body);

    std::unique_ptr<PostgresProcess> postgres;
    std::unique_ptr<TestFolder> folder;
    QString store; // its address
    std::unique_ptr<PlainServer> server;
    std::unique_ptr<ApiClient> client; // signed in
    QByteArray said;
};
