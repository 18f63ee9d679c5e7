// SPDX-License-Identifier: Apache-2.0

#include "FakeSecretService.h"
#include "FaultServer.h"
#include "KeptSignIn.h"
#include "Session.h"
#include "SignInKeeper.h"
#include "TestApp.h"
#include "TestFolder.h"

#include <QFile>
#include <QProcess>
#include <QtTest>

namespace
{
using Mood = FakeSecretService::Mood;

const QUrl server(QStringLiteral("https://rpa.example.com"));
const QByteArray token(43, 'a');
const QByteArray otherToken(43, 'b');
constexpr int patienceMs = 20000;

// What the keeper told, in its order.
class Told
{
public:
    void Keep(SignInKeeper* keeper, const QByteArray& kept)
    {
        keeper->Keep(server, kept, [this](bool isKept) { answers << isKept; });
    }

    QVector<bool> answers;
};

class Found
{
public:
    explicit Found(SignInKeeper* keeper, const QUrl& asking = server)
    {
        keeper->GetToken(asking, [this](const QByteArray& kept) { tokens << kept; });
    }

    QByteArrayList tokens;
};
} // namespace

// The programs of a desktop meet on a bus of the test's own.
class SignInKeeperTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void keepsInTheServiceAndInNoFile();
    void keepsTheLastOneOnly();
    void givesTheTokenToItsServerOnly();
    void signingOutRemovesIt();
    void signingOutWhileItIsBeingKeptWins();
    void keepsInTheFileWithoutAService_data();
    void keepsInTheFileWithoutAService();
    void whatComesLateIsNotToldAgain();
    void whatIsNotTakenAtTheEndLiesInTheFile();
    void movesFromTheFileToTheService();
    void aMoveThatFailsLeavesTheFile();
    void whatWasForgottenWhileTheServiceWasMuteDoesNotComeBack();
    void keepsNoTextThatIsNoToken();
    void aMuteServiceHoldsNoSignInUp();

private:
    QString File() const { return folder.filePath(QStringLiteral("kept")); }
    bool IsKept(const QByteArray& kept)
    {
        Told told;
        SignInKeeper keeper(File());
        told.Keep(&keeper, kept);
        return QTest::qWaitFor([&told] { return !told.answers.isEmpty(); }, patienceMs) &&
               told.answers == QVector<bool>{true};
    }

    TestFolder folder;
    std::unique_ptr<FakeSecretService> service;
};

void SignInKeeperTest::initTestCase()
{
    service = std::make_unique<FakeSecretService>(qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS"));
    QVERIFY(Keychain::IsOffered());
}

void SignInKeeperTest::init()
{
    QVERIFY(service->Enter());
}

void SignInKeeperTest::cleanup()
{
    QVERIFY(service->Enter());
    service->SetMood(Mood::Answering);
    SignInKeeper keeper(File());
    keeper.Forget(); // asked last, so done last
    QTRY_VERIFY_WITH_TIMEOUT(!QFile::exists(File()), patienceMs);
    QCOMPARE(service->CountItems(), 0);
}

void SignInKeeperTest::keepsInTheServiceAndInNoFile()
{
    QVERIFY(IsKept(token));

    QVERIFY(!QFile::exists(File()));
    QCOMPARE(service->CountItems(), 1);
    SignInKeeper again(File());
    const Found found(&again);
    QTRY_COMPARE(found.tokens, QByteArrayList{token});
}

void SignInKeeperTest::keepsTheLastOneOnly()
{
    QVERIFY(IsKept(otherToken));

    QVERIFY(IsKept(token));

    QCOMPARE(service->CountItems(), 1);
    SignInKeeper again(File());
    const Found found(&again);
    QTRY_COMPARE(found.tokens, QByteArrayList{token});
}

void SignInKeeperTest::givesTheTokenToItsServerOnly()
{
    QVERIFY(IsKept(token));

    SignInKeeper again(File());
    const Found found(&again, QUrl(QStringLiteral("https://other.example.com")));

    QTRY_COMPARE(found.tokens, QByteArrayList{QByteArray()});
}

void SignInKeeperTest::signingOutRemovesIt()
{
    QVERIFY(IsKept(token));
    SignInKeeper keeper(File());

    keeper.Forget();

    QTRY_COMPARE(service->CountItems(), 0);
    QTRY_VERIFY(!QFile::exists(File()));
}

void SignInKeeperTest::signingOutWhileItIsBeingKeptWins()
{
    Told told;
    SignInKeeper keeper(File());
    service->SetMood(Mood::Mute);
    told.Keep(&keeper, token);
    QTRY_VERIFY(service->CountWaiting() > 0);

    keeper.Forget();
    service->SetMood(Mood::Answering);

    QTRY_VERIFY(!QFile::exists(File()));
    QCOMPARE(service->CountItems(), 0);
    QVERIFY(told.answers.isEmpty());
}

void SignInKeeperTest::keepsInTheFileWithoutAService_data()
{
    QTest::addColumn<bool>("isThere");
    QTest::addColumn<int>("mood");

    QTest::newRow("none on the bus") << false << int(Mood::Answering);
    QTest::newRow("one that refuses") << true << int(Mood::Refusing);
    QTest::newRow("one that never answers") << true << int(Mood::Mute);
}

void SignInKeeperTest::keepsInTheFileWithoutAService()
{
    QFETCH(bool, isThere);
    QFETCH(int, mood);
    if (!isThere)
        service->Leave();
    service->SetMood(Mood(mood));

    QVERIFY(IsKept(token));

    QCOMPARE(KeptSignIn(File()).GetToken(server), token);
    SignInKeeper again(File());
    const Found found(&again);
    QCOMPARE(found.tokens, QByteArrayList{token}); // at once
}

void SignInKeeperTest::whatComesLateIsNotToldAgain()
{
    Told told;
    SignInKeeper keeper(File());
    service->SetMood(Mood::Mute);
    told.Keep(&keeper, token);
    QTRY_COMPARE_WITH_TIMEOUT(told.answers, QVector<bool>{true}, patienceMs);

    service->SetMood(Mood::Answering);

    QTRY_COMPARE(service->CountItems(), 1);
    QCOMPARE(told.answers, QVector<bool>{true});
    QCOMPARE(KeptSignIn(File()).GetToken(server), token);
}

void SignInKeeperTest::whatIsNotTakenAtTheEndLiesInTheFile()
{
    Told told;
    service->SetMood(Mood::Mute);
    {
        SignInKeeper keeper(File());
        told.Keep(&keeper, token);
    }

    QCOMPARE(KeptSignIn(File()).GetToken(server), token);
    QVERIFY(told.answers.isEmpty());
}

void SignInKeeperTest::movesFromTheFileToTheService()
{
    QVERIFY(KeptSignIn(File()).Keep(server, token));
    SignInKeeper keeper(File());

    const Found found(&keeper);

    QCOMPARE(found.tokens, QByteArrayList{token});
    QTRY_VERIFY(!QFile::exists(File()));
    const Found again(&keeper);
    QTRY_COMPARE(again.tokens, QByteArrayList{token});
}

void SignInKeeperTest::aMoveThatFailsLeavesTheFile()
{
    QVERIFY(KeptSignIn(File()).Keep(server, token));
    service->SetMood(Mood::Refusing);
    SignInKeeper keeper(File());

    const Found found(&keeper);

    QCOMPARE(found.tokens, QByteArrayList{token});
    bool isOver = false;
    Keychain last(QStringLiteral("last")); // asked after the move, so answered after it
    last.Read([&isOver](Keychain::Result, const QByteArray&) { isOver = true; });
    QTRY_VERIFY(isOver);
    QCOMPARE(KeptSignIn(File()).GetToken(server), token);
}

void SignInKeeperTest::whatWasForgottenWhileTheServiceWasMuteDoesNotComeBack()
{
    QVERIFY(IsKept(token));
    service->SetMood(Mood::Mute);
    SignInKeeper(File()).Forget();

    SignInKeeper again(File());
    const Found found(&again);

    QCOMPARE(found.tokens, QByteArrayList{QByteArray()}); // at once
    service->SetMood(Mood::Answering);
    QTRY_VERIFY(!QFile::exists(File()));
    QCOMPARE(service->CountItems(), 0);
}

void SignInKeeperTest::keepsNoTextThatIsNoToken()
{
    QVERIFY(IsKept(token));
    Told told;
    SignInKeeper keeper(File());

    told.Keep(&keeper, "line\nbreak");

    QCOMPARE(told.answers, QVector<bool>{false});
    QTRY_VERIFY(!QFile::exists(File()));
    QCOMPARE(service->CountItems(), 0);
}

void SignInKeeperTest::aMuteServiceHoldsNoSignInUp()
{
    FaultServer remote;
    remote.SetScript([](const FaultServer::Request& request) {
        if (!request.headers.contains("authorization"))
            return FaultServer::Refusal(401, "unauthenticated", QStringLiteral("请先登录"));
        return FaultServer::Json(
            200, R"({"account":{"pin":"wang","name":"Wang","venderId":"1","roles":[]},"expiresAt":1})");
    });
    {
        SignInKeeper keeper(File());
        bool isKept = false;
        keeper.Keep(remote.GetUrl(), token, [&isKept](bool kept) { isKept = kept; });
        QTRY_VERIFY(isKept);
    }
    service->SetMood(Mood::Mute);
    Session session(QStringLiteral("no server of its own"), folder.path(), File());

    session.UseRemote(remote.GetUrl());

    QTRY_COMPARE(session.GetServerState(), ServerState::Connected);
    QVERIFY(!session.IsSignedIn());
    service->SetMood(Mood::Answering);
    QTRY_VERIFY(session.IsSignedIn());
    QCOMPARE(session.GetPin(), QStringLiteral("wang"));
}

// The bus must be there before anything of this program looks for it.
int main(int argc, char** argv)
{
    QProcess bus;
    bus.start(QStringLiteral("dbus-daemon"),
              {QStringLiteral("--session"), QStringLiteral("--nofork"), QStringLiteral("--print-address")});
    if (!bus.waitForReadyRead())
        qFatal("no bus: %s", qPrintable(bus.errorString()));
    qputenv("DBUS_SESSION_BUS_ADDRESS", bus.readLine().trimmed());
    for (const char* desktop : {"XDG_CURRENT_DESKTOP", "KDE_FULL_SESSION", "DESKTOP_SESSION"})
        qunsetenv(desktop); // another desktop has another service

    int result = 0;
    {
        TestApp app(argc, argv);
        SignInKeeperTest test;
        result = TestApp::Run(&test, argc, argv);
    }
    bus.kill();
    bus.waitForFinished();
    return result;
}
#include "tst_signinkeeper.moc"
