// SPDX-License-Identifier: Apache-2.0

#include "ProgramFixture.h"

#include "TestFolder.h"

#include <QTest>

const QByteArray ProgramFixture::pin = QByteArrayLiteral("zhang");
const QByteArray ProgramFixture::password = QByteArrayLiteral("nine-green-lamps");

void ProgramFixture::initTestCase()
{
    if (PostgresProcess::IsOffered()) {
        postgres = std::make_unique<PostgresProcess>();
        QVERIFY2(postgres->Start(), postgres->ErrorText().constData());
    }
}

void ProgramFixture::Databases()
{
    QTest::addColumn<QString>("database");
    QTest::newRow("sqlite") << QStringLiteral("sqlite");
    QTest::newRow("postgresql") << QStringLiteral("postgresql");
}

void ProgramFixture::init()
{
    folder = std::make_unique<TestFolder>();
    QFETCH(QString, database);
    if (database == QLatin1String("postgresql")) {
        if (!PostgresProcess::IsOffered())
            QSKIP("this system has no PostgreSQL to offer");
        store = postgres->NewDatabaseForPrograms();
    } else {
        store = QStringLiteral("sqlite:") + folder->filePath(QStringLiteral("versions.db"));
    }
    QVERIFY2(AddAccount(), said.constData());
}

bool ProgramFixture::AddAccount()
{
    const QStringList add{QStringLiteral("account"),
                          QStringLiteral("add"),
                          QString::fromLatin1(pin),
                          QStringLiteral("--vender"),
                          QStringLiteral("acme"),
                          QStringLiteral("--roles"),
                          QStringLiteral("author,user,administrator")};
    return Command(add, password + '\n') == 0;
}

void ProgramFixture::EndServer()
{
    client.reset();
    server.reset();
}

bool ProgramFixture::Start(const QStringList& more, const PlainServer::Environment& variables)
{
    server = std::make_unique<PlainServer>(PlainServer::ServingArguments(store) + more, variables);
    return server->WaitUntilReady();
}

bool ProgramFixture::SignIn()
{
    const QByteArray token = ApiClient::TokenOf(server->Port(), pin, password);
    client = std::make_unique<ApiClient>(server->Port(), token);
    return !token.isEmpty();
}

int ProgramFixture::Command(const QStringList& arguments, const QByteArray& input)
{
    return PlainServer::RunCommand(QStringList{QStringLiteral("--store"), store} + arguments, input, &said);
}

QByteArray ProgramFixture::NewApp(const QByteArray& name)
{
    return client->CreateApp(name).json.value(QLatin1String("id")).toString().toLatin1();
}

QByteArray ProgramFixture::NewVersion(const QByteArray& appId, const QByteArray& name, const QByteArray& body)
{
    return client->Create(appId, name, body).json.value(QLatin1String("id")).toString().toLatin1();
}
