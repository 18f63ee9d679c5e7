// SPDX-License-Identifier: Apache-2.0

#include "NativeProcess.h"
#include "Session.h"
#include "SmallApp.h"
#include "TestApp.h"
#include "TestFolder.h"

#include <OxHttp/HttpNotifyManager.h>
#include <OxHttp/HttpObserverBase.h>
#include <RpaCore/RpaAppSnapshot.h>
#include <RpaCore/RpaGlobalDataManager.h>
#include <RpaEditorLogic/RpaEditorLogic.h>
#include <RpaEditorLogic/RpaNotifyId.h>
#include <RpaServiceClient/VersionServiceClient.h>
#include <RpaServiceClient/VersionServiceSettings.h>
#include <RpaServiceClient/apps/CreateAppRequest.h>
#include <RpaServiceClient/sessions/GetCurrentSessionRequest.h>
#include <RpaServiceClient/versions/ListVersionsRequest.h>

#include <QFile>
#include <QSignalSpy>
#include <QTcpServer>
#include <QTcpSocket>
#include <QtTest>

#include <memory>

namespace
{
class Saves : public HttpObserverBase
{
public:
    Saves()
    {
        HttpNotifyManager::Instance()->AddObserver(this,
                                                   {NotifySaveAppSnapshotInfo, NotifyUpdateAppSnapshotInfo});
    }
    ~Saves() override { HttpNotifyManager::Instance()->RemoveAllMessage(this); }

    void OnHttpNotify(int, QSharedPointer<IHttpRequest>, QSharedPointer<IHttpResponse> response) override
    {
        reasons.append(response->IsSuccess() ? QStringLiteral("saved") : response->GetErrorDesc());
    }

    QStringList reasons;
};

// Takes the place of a server that died, and keeps what it is told.
class Stranger
{
public:
    bool Take(quint16 port)
    {
        QObject::connect(&listener, &QTcpServer::newConnection, &listener, [this] {
            QTcpSocket* socket = listener.nextPendingConnection();
            QObject::connect(socket, &QTcpSocket::readyRead, socket,
                             [this, socket] { heard += socket->readAll(); });
        });
        return listener.listen(QHostAddress::LocalHost, port);
    }

    QByteArray heard;

private:
    QTcpServer listener;
};
} // namespace

// The embedded server dies while somebody works, and comes back elsewhere.
class tst_ServerDeath : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void savesOnceThoughTheServerDiesBetweenTheSaveAndItsAnswer();
    void asksTheServerThatCameBackAndNobodyElse();
    void givesEachServerTokensOfItsOwn();
    void answersWhatWaitsWhenTheServerStaysAway();
    void dropsWhatWaitsWhenSomebodyElseSignsInMeanwhile();

private:
    void Enter(const QString& program);
    QString CreateApp(const QString& name);
    bool SaveVersion(const QString& content);
    bool Update(const QString& content);
    QVector<VersionServiceVersion> Stored();
    qint64 ServerPid() const { return session->GetEmbeddedServer()->GetProcessId(); }

    std::unique_ptr<TestFolder> folder;
    std::unique_ptr<Session> session;
    std::unique_ptr<Saves> saves;
    QString appId;
    QString versionId;
};

void tst_ServerDeath::initTestCase()
{
    RpaGlobalDataManager::Instance()->SetApiVersion(QStringLiteral("1.0.0"));
}

void tst_ServerDeath::init()
{
    folder = std::make_unique<TestFolder>();
    saves = std::make_unique<Saves>();
}

void tst_ServerDeath::cleanup()
{
    RpaEditorLogic::Instance()->Forget();
    session.reset();
    saves.reset();
    folder.reset();
}

void tst_ServerDeath::Enter(const QString& program)
{
    session = std::make_unique<Session>(program, folder->filePath(QStringLiteral("data")),
                                        folder->filePath(QStringLiteral("kept")));
    session->UseEmbedded();
    QTRY_COMPARE_WITH_TIMEOUT(session->GetServerState(), ServerState::Connected, 30000);
    session->EnterEmbedded(0);
}

QString tst_ServerDeath::CreateApp(const QString& name)
{
    VersionServiceClient client;
    VersionServiceResult<VersionServiceApp> made;
    client.Send(CreateAppRequest{name, 0}, this, [&made](const auto& result) { made = result; });
    return QTest::qWaitFor([&made] { return made.success; }, 30000) ? made.value.id : QString();
}

bool tst_ServerDeath::SaveVersion(const QString& content)
{
    auto record = RpaAppSnapshotPtr::create();
    record->SetAppId(appId);
    record->SetName(QStringLiteral("版本1"));
    record->SetAppData(content);
    record->SetApiVersion(QStringLiteral("1.0.0"));
    auto request = QSharedPointer<SaveAppSnapshotInfoRequest>::create();
    request->SetSnapshotInfoPtr(record);
    const int before = saves->reasons.size();
    RpaEditorLogic::Instance()->SaveAppSnapshotInfo(request);
    const bool isAnswered = QTest::qWaitFor([&] { return saves->reasons.size() > before; }, 30000);
    versionId = record->GetId();
    return isAnswered && saves->reasons.last() == QStringLiteral("saved");
}

bool tst_ServerDeath::Update(const QString& content)
{
    auto record = RpaAppSnapshotPtr::create();
    record->SetId(versionId);
    record->SetAppId(appId);
    record->SetName(QStringLiteral("版本1"));
    record->SetAppData(content);
    record->SetApiVersion(QStringLiteral("1.0.0"));
    auto request = QSharedPointer<UpdateAppSnapshotInfoRequest>::create();
    request->SetSnapshotInfoPtr(record);
    const int before = saves->reasons.size();
    RpaEditorLogic::Instance()->UpdateAppSnapshotInfo(request);
    return QTest::qWaitFor([&] { return saves->reasons.size() > before; }, 60000) &&
           saves->reasons.last() == QStringLiteral("saved");
}

QVector<VersionServiceVersion> tst_ServerDeath::Stored()
{
    VersionServiceClient client;
    VersionServiceResult<QVector<VersionServiceVersion>> listed;
    client.Send(ListVersionsRequest{appId}, this, [&listed](const auto& result) { listed = result; });
    return QTest::qWaitFor([&listed] { return listed.success; }, 30000) ? listed.value
                                                                        : QVector<VersionServiceVersion>();
}

void tst_ServerDeath::savesOnceThoughTheServerDiesBetweenTheSaveAndItsAnswer()
{
    // Given: a version, and a server that will have done the next save when it dies
    Enter(QStringLiteral(MORTAL_SERVER));
    appId = CreateApp(QStringLiteral("孤独的应用"));
    QVERIFY(!appId.isEmpty());
    QVERIFY2(SaveVersion(SmallApp(0)), qPrintable(saves->reasons.join(QLatin1Char('\n'))));
    const QUrl before = session->GetEmbeddedServer()->GetAddress();
    QSignalSpy died(session.get(), &Session::SigServerDied);
    const QString order = folder->filePath(QStringLiteral("data/die-at-answer"));
    QVERIFY(QFile(order).open(QIODevice::WriteOnly));
    QTRY_VERIFY(!QFile::exists(order));

    // When: the author saves
    const bool saved = Update(SmallApp(1));

    // Then: the repeat went to the server that came back, and found the save done
    QCOMPARE(died.size(), 1);
    QVERIFY2(saved, qPrintable(saves->reasons.last()));
    QVERIFY(session->GetEmbeddedServer()->GetAddress() != before);
    QCOMPARE(Stored().size(), 1);
    QCOMPARE(Stored().first().revision, 2);
    QVERIFY2(Update(SmallApp(2)), qPrintable(saves->reasons.last()));
}

void tst_ServerDeath::asksTheServerThatCameBackAndNobodyElse()
{
    // Given: somebody else takes the port at the moment in which the server is found dead
    Enter(QStringLiteral(SERVER_PROGRAM));
    const quint16 port = quint16(session->GetEmbeddedServer()->GetAddress().port());
    Stranger stranger;
    bool tookPlace = false;
    VersionServiceClient client;
    bool known = false;
    connect(session.get(), &Session::SigServerDied, this, [&] {
        tookPlace = stranger.Take(port);
        client.Send(GetCurrentSessionRequest{}, this,
                    [&known](const auto& result) { known = result.success; });
    });

    NativeProcess::Kill(ServerPid());

    QTRY_VERIFY_WITH_TIMEOUT(known, 30000);
    QVERIFY(tookPlace);
    QCOMPARE(stranger.heard, QByteArray());
}

void tst_ServerDeath::givesEachServerTokensOfItsOwn()
{
    // What reached a stranger between the death and its discovery opens nothing afterwards.
    Enter(QStringLiteral(SERVER_PROGRAM));
    auto* settings = VersionServiceSettings::Instance();
    const QByteArray first = settings->GetToken();
    QSignalSpy died(session.get(), &Session::SigServerDied);
    NativeProcess::Kill(ServerPid());
    QTRY_COMPARE(died.size(), 1);
    QTRY_COMPARE_WITH_TIMEOUT(session->GetServerState(), ServerState::Connected, 30000);
    const QByteArray second = settings->GetToken();
    QVERIFY(!second.isEmpty());
    QVERIFY(second != first);

    settings->SetToken(first);
    VersionServiceClient client;
    QString code;
    client.Send(GetCurrentSessionRequest{}, this, [&code](const auto& result) {
        code = result.success ? QStringLiteral("welcome") : result.errorCode;
    });

    QTRY_COMPARE(code, QStringLiteral("unauthorized"));
}

void tst_ServerDeath::answersWhatWaitsWhenTheServerStaysAway()
{
    Enter(QStringLiteral(SERVER_PROGRAM));
    VersionServiceClient client;
    QString reason;
    connect(session.get(), &Session::SigServerDied, this, [&] {
        client.Send(GetCurrentSessionRequest{}, this,
                    [&reason](const auto& result) { reason = result.errorDesc; });
        session->GetEmbeddedServer()->Stop();
    });

    NativeProcess::Kill(ServerPid());

    QTRY_VERIFY(!reason.isEmpty());
    QVERIFY2(reason.contains(QStringLiteral("版本服务")), qPrintable(reason));
}

void tst_ServerDeath::dropsWhatWaitsWhenSomebodyElseSignsInMeanwhile()
{
    // Given: a request of the first account waits for the server
    Enter(QStringLiteral(SERVER_PROGRAM));
    VersionServiceClient client;
    QString reason;
    QString pin;
    connect(session.get(), &Session::SigServerDied, this, [&] {
        client.Send(GetCurrentSessionRequest{}, this, [&](const auto& result) {
            reason = result.errorDesc;
            pin = result.value.account.pin;
        });
        session->SignOut();
    });
    NativeProcess::Kill(ServerPid());
    QTRY_COMPARE_WITH_TIMEOUT(session->GetServerState(), ServerState::Connected, 30000);

    session->EnterEmbedded(1);

    QTRY_VERIFY(!reason.isEmpty());
    QVERIFY2(reason.contains(QStringLiteral("版本服务")), qPrintable(reason));
    QCOMPARE(pin, QString());
}

RPA_TEST_MAIN(tst_ServerDeath)
#include "tst_serverdeath.moc"
