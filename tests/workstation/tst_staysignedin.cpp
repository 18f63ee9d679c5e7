// SPDX-License-Identifier: Apache-2.0

#include "FaultServer.h"
#include "KeptSignIn.h"
#include "ServerProcess.h"
#include "Session.h"
#include "TestApp.h"
#include "TestFolder.h"

#include <RpaServiceClient/VersionServiceClient.h>
#include <RpaServiceClient/VersionServiceSettings.h>
#include <RpaServiceClient/apps/ListAppsRequest.h>
#include <RpaServiceClient/sessions/GetCurrentSessionRequest.h>
#include <WbCore/WbGlobalData.h>

#include <QFile>
#include <QSignalSpy>
#include <QtTest>

#include <cstdlib>

namespace
{
const QString password = QStringLiteral("a good password");

// The server refuses an account that signs in too often: each test has its own.
constexpr int accounts = 14;

QString PinOf(int account)
{
    return QStringLiteral("wang-%1").arg(account);
}

bool AddAccount(const QString& dataDir, const QString& pin)
{
    QProcess process;
    process.start(QStringLiteral(SERVER_PROGRAM),
                  {QStringLiteral("--data"), dataDir, QStringLiteral("account"), QStringLiteral("add"), pin,
                   QStringLiteral("--name"), QStringLiteral("Wang"), QStringLiteral("--vender"),
                   QStringLiteral("1")});
    process.write(password.toUtf8() + '\n');
    process.closeWriteChannel();
    return process.waitForFinished(20000) && process.exitCode() == 0;
}
} // namespace

class tst_StaySignedIn : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();

    void staysSignedInAfterARestart();
    void asksAgainWithoutTheSwitch();
    void asksAgainAfterSigningOut();
    void forgetsAnEarlierSignInWithoutTheSwitch();
    void asksForASessionThatOutlastsANight_data();
    void asksForASessionThatOutlastsANight();
    void keepsThePasswordNowhere();
    void forgetsATokenThatTheServerRefuses();
    void saysOnceThatASessionExpired();
    void keepsTheTokenWhileTheServerIsAway();
    void keepsTheTokenWhenTheServerIsOutOfOrder();
    void showsNoOtherServerTheToken();
    void takesNoTokenFromAServerThatWasLeft();
    void signsInAllTheSameWhenNothingCanBeKept();

private:
    std::unique_ptr<Session> Started(const QString& keptFile)
    {
        auto session = std::make_unique<Session>(QStringLiteral(SERVER_PROGRAM),
                                                 folder.filePath(QStringLiteral("data")), keptFile);
        session->UseRemote(address);
        return session;
    }
    std::unique_ptr<Session> Started() { return Started(file); }
    std::unique_ptr<Session> SignedIn(bool stay)
    {
        auto session = Started();
        session->SignIn(pin, password, stay);
        QSignalSpy signedIn(session.get(), &Session::SigSignedIn);
        if (!signedIn.wait(20000))
            return nullptr;
        return session;
    }
    // What the server says of a token.
    bool IsKnown(const QByteArray& token);

    TestFolder folder;
    const QString file = folder.filePath(QStringLiteral("kept"));
    ServerProcess server;
    QUrl address;
    int nextAccount = 0;
    QString pin;
};

void tst_StaySignedIn::initTestCase()
{
    for (int account = 0; account < accounts; ++account)
        QVERIFY(AddAccount(server.DataDir(), PinOf(account)));
    QVERIFY2(server.Start(), server.ErrorText());
    address = QUrl(server.BaseUrl());
}

void tst_StaySignedIn::init()
{
    QVERIFY(nextAccount < accounts);
    pin = PinOf(nextAccount++);
    QFile::remove(file);
    VersionServiceSettings::Instance()->SetToken(QByteArray());
}

bool tst_StaySignedIn::IsKnown(const QByteArray& token)
{
    VersionServiceSettings::Instance()->SetBaseUrl(address);
    VersionServiceSettings::Instance()->SetToken(token);
    VersionServiceClient client;
    bool answered = false;
    bool known = false;
    client.Send(GetCurrentSessionRequest{}, this,
                [&](const VersionServiceResult<VersionServiceSession>& result) {
                    answered = true;
                    known = result.success;
                });
    const bool waited = QTest::qWaitFor([&answered] { return answered; }, 20000);
    VersionServiceSettings::Instance()->SetToken(QByteArray());
    return waited && known;
}

void tst_StaySignedIn::staysSignedInAfterARestart()
{
    {
        const auto session = SignedIn(true);
        QVERIFY(session);
        session->End();
        QVERIFY(WbGlobalData::Instance()->GetPin().isEmpty());
        QVERIFY(VersionServiceSettings::Instance()->GetToken().isEmpty());
    }

    const auto again = Started();

    QTRY_VERIFY(again->IsSignedIn());
    QCOMPARE(again->GetPin(), pin);
    QCOMPARE(again->GetName(), QStringLiteral("Wang"));
    QCOMPARE(WbGlobalData::Instance()->GetPin(), pin);
    QCOMPARE(again->GetServerState(), ServerState::Connected);
    // And after one more.
    again->End();
    const auto third = Started();
    QTRY_VERIFY(third->IsSignedIn());
}

void tst_StaySignedIn::asksAgainWithoutTheSwitch()
{
    {
        const auto session = SignedIn(false);
        QVERIFY(session);
        session->End();
    }
    QVERIFY(!QFile::exists(file));

    const auto again = Started();

    QTRY_COMPARE(again->GetServerState(), ServerState::Connected);
    QVERIFY(!again->IsSignedIn());
}

void tst_StaySignedIn::asksAgainAfterSigningOut()
{
    QByteArray token;
    {
        const auto session = SignedIn(true);
        QVERIFY(session);
        token = KeptSignIn(file).GetToken(address);
        QVERIFY(!token.isEmpty());
        QVERIFY(IsKnown(token));
        VersionServiceSettings::Instance()->SetToken(token);
        session->SignOut();
        QVERIFY(!QFile::exists(file));
        QTRY_VERIFY(!IsKnown(token)); // ended on the server, too
        session->End();
    }

    const auto again = Started();

    QTRY_COMPARE(again->GetServerState(), ServerState::Connected);
    QVERIFY(!again->IsSignedIn());
}

void tst_StaySignedIn::forgetsAnEarlierSignInWithoutTheSwitch()
{
    QVERIFY(KeptSignIn(file).Keep(QUrl(QStringLiteral("https://rpa.example.com")), QByteArray(32, 'a')));

    const auto session = SignedIn(false);

    QVERIFY(session);
    QVERIFY(!QFile::exists(file));
}

void tst_StaySignedIn::asksForASessionThatOutlastsANight_data()
{
    QTest::addColumn<bool>("stay");
    QTest::addColumn<int>("days");
    QTest::newRow("stay") << true << 30;
    QTest::newRow("do not stay") << false << 7;
}

void tst_StaySignedIn::asksForASessionThatOutlastsANight()
{
    QFETCH(bool, stay);
    QFETCH(int, days);
    const auto session = SignedIn(stay);
    QVERIFY(session);

    VersionServiceClient client;
    QDateTime end;
    client.Send(
        GetCurrentSessionRequest{}, this,
        [&end](const VersionServiceResult<VersionServiceSession>& result) { end = result.value.expiresAt; });

    QTRY_VERIFY(end.isValid());
    QVERIFY(std::abs(QDateTime::currentDateTimeUtc().daysTo(end) - days) <= 1);
}

void tst_StaySignedIn::keepsThePasswordNowhere()
{
    const auto session = SignedIn(true);
    QVERIFY(session);

    QVERIFY(!SecretStore(file).Read().isEmpty());
    QVERIFY(!SecretStore(file).Read().contains(password.toUtf8()));
}

void tst_StaySignedIn::forgetsATokenThatTheServerRefuses()
{
    QVERIFY(KeptSignIn(file).Keep(address, QByteArray(43, 'x')));

    Session session(QStringLiteral(SERVER_PROGRAM), folder.filePath(QStringLiteral("data")), file);
    QSignalSpy expired(&session, &Session::SigExpired);
    session.UseRemote(address);

    QTRY_COMPARE(expired.size(), 1);
    QVERIFY(!session.IsSignedIn());
    QCOMPARE(session.GetServerState(), ServerState::Connected);
    QVERIFY(!QFile::exists(file));
    QVERIFY(VersionServiceSettings::Instance()->GetToken().isEmpty());
}

void tst_StaySignedIn::saysOnceThatASessionExpired()
{
    const auto session = SignedIn(true);
    QVERIFY(session);
    QSignalSpy expired(session.get(), &Session::SigExpired);
    // Somebody else's doing, as far as the session knows.
    VersionServiceSettings::Instance()->SetToken(QByteArray(43, 'x'));
    VersionServiceClient client;
    const auto ask = [this, &client] {
        bool answered = false;
        client.Send(
            ListAppsRequest{}, this,
            [&answered](const VersionServiceResult<QVector<VersionServiceApp>>&) { answered = true; });
        return QTest::qWaitFor([&answered] { return answered; }, 20000);
    };

    QVERIFY(ask());
    QVERIFY(ask());

    QCOMPARE(expired.size(), 1);
    QVERIFY(!QFile::exists(file));
    QVERIFY(session->IsSignedIn()); // whoever signs in again finds the work where it was
}

void tst_StaySignedIn::keepsTheTokenWhileTheServerIsAway()
{
    {
        const auto session = SignedIn(true);
        QVERIFY(session);
        session->End();
    }
    QVERIFY(server.Stop());
    const auto again = Started();
    QTRY_COMPARE_WITH_TIMEOUT(again->GetServerState(), ServerState::Broken, 20000);
    QVERIFY(QFile::exists(file));
    QVERIFY(!again->IsSignedIn());

    QVERIFY2(server.Restart(), server.ErrorText());
    again->Retry();

    QTRY_VERIFY_WITH_TIMEOUT(again->IsSignedIn(), 20000);
}

void tst_StaySignedIn::keepsTheTokenWhenTheServerIsOutOfOrder()
{
    FaultServer sick;
    sick.SetScript([](const FaultServer::Request&) {
        return FaultServer::Refusal(500, "internal", QStringLiteral("服务出错"));
    });
    QVERIFY(KeptSignIn(file).Keep(sick.GetUrl(), QByteArray(43, 'x')));
    Session session(QStringLiteral(SERVER_PROGRAM), folder.filePath(QStringLiteral("data")), file);
    QSignalSpy expired(&session, &Session::SigExpired);

    session.UseRemote(sick.GetUrl());

    QTRY_COMPARE(session.GetServerState(), ServerState::Connected);
    QVERIFY(!session.IsSignedIn());
    QCOMPARE(expired.size(), 0);
    QVERIFY(!KeptSignIn(file).GetToken(sick.GetUrl()).isEmpty());
}

void tst_StaySignedIn::showsNoOtherServerTheToken()
{
    {
        const auto session = SignedIn(true);
        QVERIFY(session);
        session->End();
    }
    FaultServer other;
    Session session(QStringLiteral(SERVER_PROGRAM), folder.filePath(QStringLiteral("data")), file);

    session.UseRemote(other.GetUrl());

    QTRY_VERIFY(other.GetRequestCount() > 0);
    QVERIFY(!other.GetRequests().first().headers.contains("authorization"));
}

void tst_StaySignedIn::takesNoTokenFromAServerThatWasLeft()
{
    FaultServer slow;
    slow.SetScript([](const FaultServer::Request&) {
        FaultServer::Reply reply = FaultServer::Json(
            201, R"({"token":"token-of-the-server-that-was-left","account":{"pin":"evil"},"expiresAt":1})");
        reply.delay = std::chrono::milliseconds(300);
        return reply;
    });
    Session session(QStringLiteral(SERVER_PROGRAM), folder.filePath(QStringLiteral("data")), file);
    session.UseRemote(slow.GetUrl());
    session.SignIn(pin, password, true);
    QTRY_COMPARE(slow.GetRequestCount(), 2);
    VersionServiceClient client;
    bool later = false; // asked later, so answered later
    client.Send(GetCurrentSessionRequest{}, this,
                [&later](const VersionServiceResult<VersionServiceSession>&) { later = true; });

    session.UseRemote(address);
    QTRY_VERIFY(later);

    QVERIFY(!session.IsSignedIn());
    QVERIFY(!QFile::exists(file));
    QVERIFY(VersionServiceSettings::Instance()->GetToken().isEmpty());
}

void tst_StaySignedIn::signsInAllTheSameWhenNothingCanBeKept()
{
    const auto session = Started(folder.filePath(QStringLiteral("no such folder/kept")));
    QSignalSpy notKept(session.get(), &Session::SigNotKept);

    session->SignIn(pin, password, true);

    QTRY_VERIFY(session->IsSignedIn());
    QCOMPARE(notKept.size(), 1);
}

RPA_TEST_MAIN(tst_StaySignedIn)
#include "tst_staysignedin.moc"
