// SPDX-License-Identifier: Apache-2.0

#include "EmbeddedAccounts.h"
#include "EmbeddedServer.h"
#include "NativeProcess.h"
#include "TestFolder.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSignalSpy>
#include <QtTest>

#include <memory>

using State = EmbeddedServer::State;

class tst_EmbeddedServer : public QObject
{
    Q_OBJECT

private slots:
    void isReadyWhenTheServerSaysWhereItListens();
    void handsTheAccountsOverThroughStandardInput();
    void endsTheServerByClosingItsInput();
    void startsAServerThatDiedAgain();
    void givesUpAfterManyDeathsAndTriesAgainWhenAsked();
    void refusesAnAddressOnAnotherMachine();
    void refusesAnAnswerThatIsNoReadyLine();
    void saysWhichProgramIsMissing();
    void readsAwayWhatTheServerKeepsSaying();
    void killsAServerThatDoesNotEnd();
    void makesFreshTokensOf256Bits();

private:
    std::unique_ptr<EmbeddedServer> Server(const QString& behaviour) const;
    QString Read(const QString& behaviour, const QString& file) const;

    TestFolder folder;
};

std::unique_ptr<EmbeddedServer> tst_EmbeddedServer::Server(const QString& behaviour) const
{
    return std::make_unique<EmbeddedServer>(QStringLiteral(FAKE_SERVER), folder.filePath(behaviour),
                                            [] { return QByteArrayLiteral("{\"token\":\"t\"}\n"); });
}

QString tst_EmbeddedServer::Read(const QString& behaviour, const QString& file) const
{
    QFile found(folder.filePath(behaviour + QLatin1Char('/') + file));
    return found.open(QIODevice::ReadOnly) ? QString::fromUtf8(found.readAll()) : QString();
}

void tst_EmbeddedServer::isReadyWhenTheServerSaysWhereItListens()
{
    const auto server = Server(QStringLiteral("good"));

    server->Start();

    QCOMPARE(server->GetState(), State::Starting);
    QVERIFY(server->GetAddress().isEmpty());
    QTRY_COMPARE(server->GetState(), State::Ready);
    QCOMPARE(server->GetAddress(), QUrl(QStringLiteral("http://127.0.0.1:4711")));
    QVERIFY(server->GetProcessId() > 0);
}

void tst_EmbeddedServer::handsTheAccountsOverThroughStandardInput()
{
    const auto server = Server(QStringLiteral("good"));

    server->Start();

    QTRY_COMPARE(server->GetState(), State::Ready);
    QCOMPARE(Read(QStringLiteral("good"), QStringLiteral("handshake")),
             QStringLiteral("{\"token\":\"t\"}\n"));
}

void tst_EmbeddedServer::endsTheServerByClosingItsInput()
{
    QFile::remove(folder.filePath(QStringLiteral("good/ended")));
    const auto server = Server(QStringLiteral("good"));
    server->Start();
    QTRY_COMPARE(server->GetState(), State::Ready);
    QSignalSpy died(server.get(), &EmbeddedServer::SigDied);

    server->Stop();

    QCOMPARE(server->GetState(), State::Stopped);
    QCOMPARE(Read(QStringLiteral("good"), QStringLiteral("ended")), QStringLiteral("end\n"));
    QCOMPARE(died.size(), 0);
    QVERIFY(server->GetAddress().isEmpty());
}

void tst_EmbeddedServer::startsAServerThatDiedAgain()
{
    const auto server = Server(QStringLiteral("dies-once"));
    QSignalSpy died(server.get(), &EmbeddedServer::SigDied);

    server->Start();

    QTRY_COMPARE(server->GetState(), State::Ready);
    QCOMPARE(died.size(), 1);
}

void tst_EmbeddedServer::givesUpAfterManyDeathsAndTriesAgainWhenAsked()
{
    const auto server = Server(QStringLiteral("dies"));
    server->Start();
    QTRY_COMPARE_WITH_TIMEOUT(server->GetState(), State::Failed, 20000);
    QCOMPARE(server->GetProblem(), QStringLiteral("版本服务意外停止"));
    const int starts = Read(QStringLiteral("dies"), QStringLiteral("starts")).count(QLatin1Char('\n'));
    QCOMPARE(starts, 6);

    server->Start();

    QTRY_VERIFY(Read(QStringLiteral("dies"), QStringLiteral("starts")).count(QLatin1Char('\n')) > starts);
}

void tst_EmbeddedServer::refusesAnAddressOnAnotherMachine()
{
    const auto server = Server(QStringLiteral("foreign"));
    QSignalSpy died(server.get(), &EmbeddedServer::SigDied);

    server->Start();

    QTRY_COMPARE(died.size(), 1);
    QVERIFY(server->GetAddress().isEmpty());
}

void tst_EmbeddedServer::refusesAnAnswerThatIsNoReadyLine()
{
    const auto server = Server(QStringLiteral("nonsense"));
    QSignalSpy died(server.get(), &EmbeddedServer::SigDied);

    server->Start();

    QTRY_COMPARE(died.size(), 1);
    QCOMPARE(server->GetProblem(), QStringLiteral("版本服务的应答无法识别"));
}

void tst_EmbeddedServer::saysWhichProgramIsMissing()
{
    EmbeddedServer server(QStringLiteral("/nowhere/rpa-version-server"), folder.filePath(QStringLiteral("x")),
                          [] { return QByteArray(); });

    server.Start();

    QTRY_COMPARE(server.GetState(), State::Failed);
    QVERIFY(server.GetProblem().contains(QLatin1String("/nowhere/rpa-version-server")));
}

void tst_EmbeddedServer::readsAwayWhatTheServerKeepsSaying()
{
    const auto server = Server(QStringLiteral("chatty"));

    server->Start();

    QTRY_COMPARE(server->GetState(), State::Ready);
    QTRY_COMPARE(Read(QStringLiteral("chatty"), QStringLiteral("chatted")), QStringLiteral("done\n"));
    QCOMPARE(server->GetState(), State::Ready);
}

void tst_EmbeddedServer::killsAServerThatDoesNotEnd()
{
    const auto server = Server(QStringLiteral("stubborn"));
    server->Start();
    QTRY_COMPARE(server->GetState(), State::Ready);
    const qint64 pid = server->GetProcessId();
    QVERIFY(NativeProcess::IsAlive(pid));

    server->Stop();

    QVERIFY(!NativeProcess::IsAlive(pid));
}

void tst_EmbeddedServer::makesFreshTokensOf256Bits()
{
    const QVector<EmbeddedAccount> accounts = MakeEmbeddedAccounts();
    const QVector<EmbeddedAccount> others = MakeEmbeddedAccounts();

    QCOMPARE(accounts.size(), 2);
    for (const EmbeddedAccount& account : accounts)
        QCOMPARE(QByteArray::fromBase64(account.token.toLatin1(), QByteArray::Base64UrlEncoding).size(), 32);
    QVERIFY(accounts.at(0).token != accounts.at(1).token);
    QVERIFY(accounts.at(0).token != others.at(0).token);
    QVERIFY(accounts.at(0).venderId == accounts.at(1).venderId);

    const QByteArray line = EmbeddedHandshake(accounts);
    QCOMPARE(line.count('\n'), 1);
    const QJsonObject json = QJsonDocument::fromJson(line).object();
    QCOMPARE(json.value(QStringLiteral("token")).toString(), accounts.at(0).token);
    QCOMPARE(json.value(QStringLiteral("account")).toObject().value(QStringLiteral("pin")).toString(),
             accounts.at(0).pin);
    QCOMPARE(json.value(QStringLiteral("others")).toArray().size(), 1);
}

QTEST_GUILESS_MAIN(tst_EmbeddedServer)
#include "tst_embeddedserver.moc"
