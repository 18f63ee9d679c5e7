// SPDX-License-Identifier: Apache-2.0

#include "CloseGuard.h"
#include "NativeProcess.h"
#include "SampleInstaller.h"
#include "ServerProcess.h"
#include "Session.h"
#include "TestApp.h"
#include "TestFolder.h"

#include <OxHttp/HttpNotifyManager.h>
#include <OxHttp/HttpObserverBase.h>
#include <RpaAppData/RpaAppData.h>
#include <RpaAppData/RpaAppExtendInfo.h>
#include <RpaAppData/RpaParamData.h>
#include <RpaAppData/RpaTableData.h>
#include <RpaAppData/RpaToolData.h>
#include <RpaAppData/RpaUIData.h>
#include <RpaAppData/RpaUIDataManager.h>
#include <RpaCore/IRpaLifeCycle.h>
#include <RpaCore/RpaGlobalDataManager.h>
#include <RpaCore/RpaGlobalLifeCycle.h>
#include <RpaEditorLogic/RpaNotifyId.h>
#include <RpaEditorLogic/SaveLedger.h>
#include <RpaProcessData/ProcessDataManager.h>
#include <RpaProcessData/RpaProcessCheck.h>
#include <RpaServiceClient/VersionServiceClient.h>
#include <RpaServiceClient/VersionServiceSettings.h>
#include <RpaServiceClient/apps/ListAppsRequest.h>
#include <RpaServiceClient/sessions/GetCurrentSessionRequest.h>
#include <RpaServiceClient/versions/ListVersionsRequest.h>
#include <WbCore/WbGlobalData.h>

#include <QFile>
#include <QMap>
#include <QSignalSpy>
#include <QtTest>

#include <algorithm>

namespace
{
class Answering : public IRpaLifeCycle
{
public:
    explicit Answering(BeforeCloseResult value) : answer(value)
    {
        RpaGlobalLifeCycle::Instance()->AddLogic(this);
    }
    ~Answering() override { RpaGlobalLifeCycle::Instance()->RemoveLogic(this); }

    BeforeCloseResult BeforeClose() override
    {
        ++asked;
        return answer;
    }

    BeforeCloseResult answer;
    int asked = 0;
};

// Hears what editors hear of saves and releases.
class Listener : public HttpObserverBase
{
public:
    Listener()
    {
        HttpNotifyManager::Instance()->AddObserver(
            this, {NotifySaveAppSnapshotInfo, NotifyUpdateAppSnapshotInfo, NotifyGrayOrRelease});
    }
    ~Listener() override { HttpNotifyManager::Instance()->RemoveAllMessage(this); }

    void OnHttpNotify(int, QSharedPointer<IHttpRequest>, QSharedPointer<IHttpResponse>) override { ++heard; }

    int heard = 0;
};
} // namespace

class tst_Service : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();

    void reachesTheEmbeddedServerAndSignsIn();
    void keepsTheSessionWhenTheEmbeddedServerDies();
    void leavesNoServerAndNoTokenBehind();
    void signsInAsTheOtherAccount();
    void findsARemoteServerThatDoesNotKnowUsYet();
    void saysWhenARemoteServerCannotBeReached();

    void installsTheSampleAppsOnce();
    void makesTheSamplesUnheardByEditors();
    void everySampleIsACompleteApp_data();
    void everySampleIsACompleteApp();

    void closesAtOnceWhenNothingIsPending();
    void staysOpenWhenSomebodyRefusesAndAsksAgain();
    void waitsForTheSaveThatIsStillOnItsWay();
    void closesOnlyOnce();

private:
    QString KeptFile() const { return folder.filePath(QStringLiteral("kept")); }

    TestFolder folder;
};

void tst_Service::initTestCase()
{
    RpaGlobalDataManager::Instance()->SetApiVersion(QStringLiteral("1.0.0"));
    QVERIFY(QFile::exists(QStringLiteral(SERVER_PROGRAM)));
}

void tst_Service::reachesTheEmbeddedServerAndSignsIn()
{
    Session session(QStringLiteral(SERVER_PROGRAM), folder.filePath(QStringLiteral("a")), KeptFile());
    QSignalSpy signedIn(&session, &Session::SigSignedIn);

    session.UseEmbedded();
    QTRY_COMPARE_WITH_TIMEOUT(session.GetServerState(), ServerState::Connected, 20000);
    session.EnterEmbedded(0);

    QCOMPARE(signedIn.size(), 1);
    QCOMPARE(WbGlobalData::Instance()->GetPin(), session.GetPin());
    QCOMPARE(VersionServiceSettings::Instance()->GetBaseUrl(), session.GetEmbeddedServer()->GetAddress());
    VersionServiceClient client;
    QString pin;
    client.Send(GetCurrentSessionRequest{}, this,
                [&pin](const VersionServiceResult<VersionServiceSession>& result) {
                    pin = result.value.account.pin;
                });
    QTRY_COMPARE(pin, session.GetPin());
}

void tst_Service::keepsTheSessionWhenTheEmbeddedServerDies()
{
    Session session(QStringLiteral(SERVER_PROGRAM), folder.filePath(QStringLiteral("b")), KeptFile());
    QSignalSpy died(&session, &Session::SigServerDied);
    session.UseEmbedded();
    QTRY_COMPARE_WITH_TIMEOUT(session.GetServerState(), ServerState::Connected, 20000);
    session.EnterEmbedded(0);

    NativeProcess::Kill(session.GetEmbeddedServer()->GetProcessId());

    QTRY_COMPARE(died.size(), 1);
    QTRY_COMPARE_WITH_TIMEOUT(session.GetServerState(), ServerState::Connected, 20000);
    bool known = false;
    VersionServiceClient client;
    client.Send(
        GetCurrentSessionRequest{}, this,
        [&known](const VersionServiceResult<VersionServiceSession>& result) { known = result.success; });
    QTRY_VERIFY(known);
}

void tst_Service::leavesNoServerAndNoTokenBehind()
{
    Session session(QStringLiteral(SERVER_PROGRAM), folder.filePath(QStringLiteral("c")), KeptFile());
    session.UseEmbedded();
    QTRY_COMPARE_WITH_TIMEOUT(session.GetServerState(), ServerState::Connected, 20000);
    session.EnterEmbedded(0);
    const qint64 pid = session.GetEmbeddedServer()->GetProcessId();

    session.End();

    QVERIFY(!NativeProcess::IsAlive(pid));
    QVERIFY(VersionServiceSettings::Instance()->GetToken().isEmpty());
    QVERIFY(WbGlobalData::Instance()->GetPin().isEmpty());
}

void tst_Service::signsInAsTheOtherAccount()
{
    Session session(QStringLiteral(SERVER_PROGRAM), folder.filePath(QStringLiteral("d")), KeptFile());
    session.UseEmbedded();
    QTRY_COMPARE_WITH_TIMEOUT(session.GetServerState(), ServerState::Connected, 20000);
    session.EnterEmbedded(0);
    const QString first = session.GetPin();

    session.EnterEmbedded(1);

    QVERIFY(session.GetPin() != first);
    QCOMPARE(session.GetEmbeddedIndex(), 1);
    QCOMPARE(WbGlobalData::Instance()->GetPin(), session.GetPin());
}

void tst_Service::findsARemoteServerThatDoesNotKnowUsYet()
{
    ServerProcess server;
    QVERIFY2(server.Start(), server.ErrorText());
    Session session(QStringLiteral(SERVER_PROGRAM), folder.filePath(QStringLiteral("e")), KeptFile());
    QSignalSpy refused(&session, &Session::SigRefused);

    session.UseRemote(QUrl(server.BaseUrl()));
    QTRY_COMPARE(session.GetServerState(), ServerState::Connected);
    session.SignIn(QStringLiteral("nobody"), QStringLiteral("wrong password"), false);

    QTRY_COMPARE(refused.size(), 1);
    QVERIFY(!refused.first().first().toString().isEmpty());
    QVERIFY(!session.IsSignedIn());
}

void tst_Service::saysWhenARemoteServerCannotBeReached()
{
    Session session(QStringLiteral(SERVER_PROGRAM), folder.filePath(QStringLiteral("f")), KeptFile());

    session.UseRemote(QUrl(QStringLiteral("http://127.0.0.1:1")));

    QTRY_COMPARE_WITH_TIMEOUT(session.GetServerState(), ServerState::Broken, 20000);
    QVERIFY(!session.GetServerDetail().isEmpty());
}

void tst_Service::installsTheSampleAppsOnce()
{
    Session session(QStringLiteral(SERVER_PROGRAM), folder.filePath(QStringLiteral("g")), KeptFile());
    session.UseEmbedded();
    QTRY_COMPARE_WITH_TIMEOUT(session.GetServerState(), ServerState::Connected, 20000);
    session.EnterEmbedded(0);
    SampleInstaller installer;
    QSignalSpy finished(&installer, &SampleInstaller::SigFinished);

    installer.Start();
    QTRY_COMPARE_WITH_TIMEOUT(finished.size(), 1, 20000);
    installer.Start();
    QTRY_COMPARE_WITH_TIMEOUT(finished.size(), 2, 20000);

    QVERIFY(finished.at(0).first().toBool());
    QVERIFY(finished.at(1).first().toBool());
    QMap<QString, QStringList> versions; // by app, newest first, each with its state
    VersionServiceClient client;
    const auto list = [&](const VersionServiceApp& app) {
        client.Send(ListVersionsRequest{app.id}, this,
                    [&versions, app](const VersionServiceResult<QVector<VersionServiceVersion>>& result) {
                        for (const VersionServiceVersion& version : result.value)
                            versions[app.name] << version.name + QString::number(version.state);
                    });
    };
    client.Send(ListAppsRequest{}, this, [&](const VersionServiceResult<QVector<VersionServiceApp>>& result) {
        std::for_each(result.value.cbegin(), result.value.cend(), list);
    });
    QMap<QString, QStringList> expected;
    for (const SampleApp& app : SampleInstaller::ReadSamples())
        for (const SampleVersion& version : app.versions)
            expected[app.name].prepend(version.name + QString::number(version.release + 1));
    QTRY_COMPARE(versions, expected);
}

void tst_Service::makesTheSamplesUnheardByEditors()
{
    Session session(QStringLiteral(SERVER_PROGRAM), folder.filePath(QStringLiteral("h")), KeptFile());
    session.UseEmbedded();
    QTRY_COMPARE_WITH_TIMEOUT(session.GetServerState(), ServerState::Connected, 20000);
    session.EnterEmbedded(0);
    const Listener editor;
    SampleInstaller installer;
    QSignalSpy finished(&installer, &SampleInstaller::SigFinished);

    installer.Start();

    QTRY_COMPARE_WITH_TIMEOUT(finished.size(), 1, 20000);
    QVERIFY(finished.at(0).first().toBool());
    QCOMPARE(editor.heard, 0);
}

void tst_Service::everySampleIsACompleteApp_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<int>("kind");
    for (const SampleApp& app : SampleInstaller::ReadSamples()) {
        for (const SampleVersion& version : app.versions) {
            QTest::newRow(qPrintable(app.name + QLatin1Char(' ') + version.name))
                << version.dataFile << app.kind;
        }
    }
}

void tst_Service::everySampleIsACompleteApp()
{
    QFETCH(QString, file);
    QFETCH(int, kind);
    QFile data(QStringLiteral(":/samples/") + file);
    QVERIFY(data.open(QIODevice::ReadOnly));
    RpaAppData app;

    QVERIFY(app.Parse(data.readAll()));

    QCOMPARE(app.GetAppExtendInfo()->GetAppKind(), kind);
    QVERIFY(!app.GetAppExtendInfo()->GetManual().isEmpty());
    // No grey of a fixed kind is read on white as well as in the dark scheme.
    QVERIFY(!app.GetAppExtendInfo()->GetManual().contains(QStringLiteral("color:")));
    QVERIFY(app.GetUIDataManager()->GetCount() > 0);
    const RpaUIData* page = app.GetUIDataManager()->GetUIData(0);
    QVERIFY(page->GetToolData()->GetCount() > 0);
    QVERIFY(page->GetParamData()->GetCount() > 0);
    QVERIFY(page->GetTableData()->GetRowCount() > 0);
    QVERIFY(app.GetProcessDataManager()->GetCount() > 0);
    if (kind == 0) {
        const RpaProcessCheck check(*app.GetProcessDataManager());
        for (const QString& process : app.GetProcessDataManager()->GetProcessNames()) {
            const QList<RpaCheckInfo> findings = check.Check(process);
            QVERIFY2(findings.isEmpty(),
                     findings.isEmpty() ? ""
                                        : qPrintable(process + QLatin1Char(' ') + findings.first().message));
        }
    }
}

void tst_Service::closesAtOnceWhenNothingIsPending()
{
    SaveLedger ledger;
    CloseGuard guard(&ledger);
    QSignalSpy mayClose(&guard, &CloseGuard::SigMayClose);

    guard.RequestClose();

    QCOMPARE(mayClose.size(), 1);
}

void tst_Service::staysOpenWhenSomebodyRefusesAndAsksAgain()
{
    SaveLedger ledger;
    CloseGuard guard(&ledger);
    QSignalSpy mayClose(&guard, &CloseGuard::SigMayClose);
    Answering editor(BeforeCloseResult::Refused);

    guard.RequestClose();
    QCOMPARE(mayClose.size(), 0);
    editor.answer = BeforeCloseResult::Resolved;
    guard.RequestClose();

    QCOMPARE(editor.asked, 2);
    QCOMPARE(mayClose.size(), 1);
}

void tst_Service::waitsForTheSaveThatIsStillOnItsWay()
{
    SaveLedger ledger;
    CloseGuard guard(&ledger);
    QSignalSpy waiting(&guard, &CloseGuard::SigWaiting);
    QSignalSpy mayClose(&guard, &CloseGuard::SigMayClose);
    ledger.Begin(QStringLiteral("v1"));

    guard.RequestClose();
    QCOMPARE(waiting.size(), 1);
    QCOMPARE(mayClose.size(), 0);
    ledger.Confirm(QStringLiteral("a"), QStringLiteral("v1"), 2, QByteArrayLiteral("00"));
    ledger.End();

    QTRY_COMPARE(mayClose.size(), 1);
}

void tst_Service::closesOnlyOnce()
{
    SaveLedger ledger;
    CloseGuard guard(&ledger);
    QSignalSpy mayClose(&guard, &CloseGuard::SigMayClose);
    Answering editor(BeforeCloseResult::NothingPending);

    guard.RequestClose();
    guard.RequestClose();

    QCOMPARE(editor.asked, 1);
    QCOMPARE(mayClose.size(), 1);
}

RPA_TEST_MAIN(tst_Service)
#include "tst_service.moc"
