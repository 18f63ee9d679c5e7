// SPDX-License-Identifier: Apache-2.0

#include "ServerProcess.h"
#include "TestApp.h"
#include "VersionReplies.h"

#include <OxHttp/HttpNotifyManager.h>
#include <OxHttp/HttpObserverBase.h>
#include <RpaCore/RpaGlobalDataManager.h>
#include <RpaEditorCore/RpaSnapshotManager.h>
#include <RpaEditorLogic/RpaEditorLogic.h>
#include <RpaEditorLogic/RpaNotifyId.h>
#include <RpaEditorLogic/SaveLedger.h>
#include <RpaServiceClient/VersionServiceClient.h>
#include <RpaServiceClient/VersionServiceSettings.h>
#include <RpaServiceClient/apps/CreateAppRequest.h>
#include <RpaServiceClient/apps/ListAppsRequest.h>
#include <RpaServiceClient/apps/RenameAppRequest.h>
#include <RpaServiceClient/sessions/GetCurrentSessionRequest.h>
#include <WbHttpModule/WbHttpClient.h>

#include <QRandomGenerator>
#include <QUuid>
#include <QtTest>

#include <optional>

namespace
{
// Hears all answers and keeps the last.
class Observer : public HttpObserverBase
{
public:
    Observer()
    {
        HttpNotifyManager::Instance()->AddObserver(
            this, {NotifySaveAppSnapshotInfo, NotifyUpdateAppSnapshotInfo, NotifyDeleteAppSnapshotInfo,
                   NotifyGetSnapshotList, NotifyGetDevSnapshotData, NotifyGrayOrRelease});
    }
    ~Observer() override { HttpNotifyManager::Instance()->RemoveAllMessage(this); }

    void OnHttpNotify(int, QSharedPointer<IHttpRequest>, QSharedPointer<IHttpResponse> response) override
    {
        ++count;
        last = response;
    }

    int count = 0;
    QSharedPointer<IHttpResponse> last;
};

QString Content(int number)
{
    return QString::fromUtf8(VersionReplies::App("\"应用\":" + QByteArray::number(number)));
}
} // namespace

// The request library and the real server: what one says, the other understands.
class RequestLibraryTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void takesAVersionThroughItsLife();
    void refusesANameThatIsTaken();
    void keepsALargeAppByteForByte();
    void refusesAnAppOverTheLimit();
    void tellsTwoAuthorsOfOneVersionApart();
    void savesOnceThoughTheServerIsKilledMeanwhile();
    void tellsThatTheTokenIsDead();
    void findsAndRenamesApps();
    void readsTheSessionOfItsToken();

private:
    bool Wait(int before)
    {
        return QTest::qWaitFor([&] { return observer->count > before; }, 30000);
    }
    bool Succeeded() const { return observer->last && observer->last->IsSuccess(); }
    QByteArray Reason() const
    {
        return observer->last ? observer->last->GetErrorDesc().toUtf8() : QByteArray();
    }

    // Each sends one request and waits for its answer.
    bool List();
    bool Load(const QString& id);
    QString Save(const QString& name, const QString& content);
    bool Update(const QString& id, const QString& content);
    bool Delete(const QString& id);
    bool Release(const QString& id, int type);
    QByteArray LoadedBytes() const;
    bool SaveAsAnotherAuthor(const QString& id, const QString& content);

    RpaSnapshotManager* Manager() const { return RpaEditorLogic::Instance()->GetDevSnapshotManager(); }

    ServerProcess server;
    std::unique_ptr<Observer> observer;
    QString appId;
    int appNumber = 0;
};

void RequestLibraryTest::initTestCase()
{
    QVERIFY2(server.Start(), server.ErrorText());
    RpaGlobalDataManager::Instance()->SetApiVersion(QStringLiteral("1.0.0"));
    QVERIFY(VersionServiceSettings::Instance()->SetBaseUrl(QUrl(server.BaseUrl())));
}

void RequestLibraryTest::init()
{
    observer = std::make_unique<Observer>();
    VersionServiceSettings::Instance()->SetToken(server.Token(QStringLiteral("author-1")));
    VersionServiceClient client;
    std::optional<VersionServiceResult<VersionServiceApp>> app;
    client.Send(CreateAppRequest{QStringLiteral("应用%1").arg(++appNumber), 0}, nullptr,
                [&app](const auto& result) { app = result; });
    QTRY_VERIFY(app);
    QVERIFY2(app->success, qPrintable(app->errorDesc));
    appId = app->value.id;
}

void RequestLibraryTest::cleanup()
{
    RpaEditorLogic::Instance()->Forget();
    observer.reset();
}

bool RequestLibraryTest::List()
{
    const int before = observer->count;
    auto request = QSharedPointer<GetSnapshotListRequest>::create();
    request->SetAppId(appId);
    RpaEditorLogic::Instance()->GetSnapshotList(request);
    return Wait(before) && Succeeded();
}

bool RequestLibraryTest::Load(const QString& id)
{
    const int before = observer->count;
    auto request = QSharedPointer<GetDevSnapshotDataRequest>::create();
    request->SetSnapshotId(id);
    RpaEditorLogic::Instance()->GetDevSnapshotData(request);
    return Wait(before) && Succeeded();
}

QString RequestLibraryTest::Save(const QString& name, const QString& content)
{
    const int before = observer->count;
    auto record = RpaAppSnapshotPtr::create();
    record->SetAppId(appId);
    record->SetName(name);
    record->SetDesc(QStringLiteral("描述"));
    record->SetApiVersion(QStringLiteral("1.0.0"));
    record->SetAppData(content);
    auto request = QSharedPointer<SaveAppSnapshotInfoRequest>::create();
    request->SetSnapshotInfoPtr(record);
    RpaEditorLogic::Instance()->SaveAppSnapshotInfo(request);
    return Wait(before) && Succeeded() ? record->GetId() : QString();
}

bool RequestLibraryTest::Update(const QString& id, const QString& content)
{
    const int before = observer->count;
    auto request = QSharedPointer<UpdateAppSnapshotInfoRequest>::create();
    const auto record = Manager()->GetSnapshot(id);
    record->SetAppData(content);
    request->SetSnapshotInfoPtr(record);
    RpaEditorLogic::Instance()->UpdateAppSnapshotInfo(request);
    return Wait(before) && Succeeded();
}

bool RequestLibraryTest::Delete(const QString& id)
{
    const int before = observer->count;
    auto request = QSharedPointer<DeleteAppSnapshotInfoRequest>::create();
    request->SetSnapshotId(id);
    RpaEditorLogic::Instance()->DeleteAppSnapshotInfo(request);
    return Wait(before) && Succeeded();
}

bool RequestLibraryTest::Release(const QString& id, int type)
{
    const int before = observer->count;
    auto request = QSharedPointer<GrayOrReleaseRequest>::create();
    request->SetAppId(appId);
    request->SetSnapshotId(id);
    request->SetPublishType(type);
    RpaEditorLogic::Instance()->GrayOrRelease(request);
    return Wait(before) && Succeeded();
}

QByteArray RequestLibraryTest::LoadedBytes() const
{
    return observer->last.staticCast<GetDevSnapshotDataResponse>()->GetAppData();
}

// The other author uses the transport alone, so that this library's memory of revisions knows nothing of it.
bool RequestLibraryTest::SaveAsAnotherAuthor(const QString& id, const QString& content)
{
    WbHttpClient client;
    WbHttpRequest load;
    load.url = QUrl(server.BaseUrl() + QStringLiteral("/api/v1/versions/%1/data").arg(id));
    load.bearerToken = server.Token(QStringLiteral("author-2"));
    std::optional<WbHttpAnswer> answer;
    const auto keep = [&answer](const WbHttpAnswer& value) { answer = value; };
    client.Send(load, keep);
    if (!QTest::qWaitFor([&] { return answer.has_value(); }) || !answer->IsSuccess())
        return false;

    WbHttpRequest save = load;
    save.method = "PUT";
    save.url = QUrl(server.BaseUrl() + QStringLiteral("/api/v1/versions/") + id);
    save.bodyText = content;
    save.digestBody = true;
    save.headers = {qMakePair(QByteArray("If-Match"), answer->headers.value("etag")),
                    qMakePair(QByteArray("Version-Name"), QByteArray("other")),
                    qMakePair(QByteArray("Version-Description"), QByteArray("other")),
                    qMakePair(QByteArray("Version-Api"), QByteArray("1.0.0")),
                    qMakePair(QByteArray("Content-Type"), QByteArray("application/json")),
                    qMakePair(QByteArray("Idempotency-Key"), QUuid::createUuid().toByteArray())};
    answer.reset();
    client.Send(save, keep);
    return QTest::qWaitFor([&] { return answer.has_value(); }) && answer->IsSuccess();
}

void RequestLibraryTest::takesAVersionThroughItsLife()
{
    QVERIFY2(List(), Reason());
    QCOMPARE(Manager()->GetCount(), 0);

    const QString id = Save(QStringLiteral("版本1"), Content(1));
    QVERIFY2(!id.isEmpty(), Reason());
    QVERIFY2(Update(id, Content(2)), Reason());
    QVERIFY2(Load(id), Reason());
    QCOMPARE(LoadedBytes(), Content(2).toUtf8());
    QVERIFY2(Release(id, 1), Reason());
    QCOMPARE(observer->last.staticCast<GrayOrReleaseResponse>()->GetResult(), 1);
    QVERIFY2(List(), Reason());
    QCOMPARE(Manager()->GetSnapshot(id)->GetState(), AppSnapshotGray);
    QCOMPARE(Manager()->GetSnapshot(id)->GetName(), QStringLiteral("版本1"));
    QCOMPARE(Manager()->GetSnapshot(id)->GetDesc(), QStringLiteral("描述"));
    QVERIFY2(Release(id, 2), Reason());
    QVERIFY2(Release(id, 2), Reason());
    QCOMPARE(observer->last.staticCast<GrayOrReleaseResponse>()->GetResult(), 0);
    QCOMPARE(Reason(), QByteArray("线上版本不能再次上线。"));
    QVERIFY2(Delete(id), Reason());
    QCOMPARE(Manager()->GetCount(), 1);
    QVERIFY2(Delete(id), Reason()); // gone already
    QVERIFY2(List(), Reason());
    // What the release of the only version left to work on.
    QCOMPARE(Manager()->GetCount(), 1);
    QCOMPARE(Manager()->GetSnapshot(0)->GetName(), QStringLiteral("版本2"));
    QCOMPARE(Manager()->GetSnapshot(0)->GetState(), AppSnapshotDevelop);
    QVERIFY2(Load(Manager()->GetSnapshotId(0)), Reason());
    QCOMPARE(LoadedBytes(), Content(2).toUtf8());
}

void RequestLibraryTest::refusesANameThatIsTaken()
{
    QVERIFY2(!Save(QStringLiteral("同名"), Content(1)).isEmpty(), Reason());

    QVERIFY(Save(QStringLiteral("同名"), Content(2)).isEmpty());

    QVERIFY(!Reason().isEmpty());
    QVERIFY2(List(), Reason());
    QCOMPARE(Manager()->GetCount(), 1);
}

void RequestLibraryTest::keepsALargeAppByteForByte()
{
    QString content =
        QString::fromUtf8(VersionReplies::App()).chopped(1) + QStringLiteral(",\"texts\":[\"\"");
    const QString line(1000, QChar(0x7248));
    for (int i = 0; i < 5000; ++i)
        content += QStringLiteral(",\"") + line + QLatin1Char('"');
    content += QStringLiteral("]}");

    const QString id = Save(QStringLiteral("large"), content);
    QVERIFY2(!id.isEmpty(), Reason());
    QVERIFY2(Load(id), Reason());

    QVERIFY(LoadedBytes() == content.toUtf8());
}

void RequestLibraryTest::refusesAnAppOverTheLimit()
{
    const QString content =
        QStringLiteral("{\"a\":[\"") + QString(65 * 1024 * 1024, QLatin1Char('x')) + QStringLiteral("\"]}");

    QVERIFY(Save(QStringLiteral("too large"), content).isEmpty());

    QVERIFY(!Reason().isEmpty());
}

void RequestLibraryTest::tellsTwoAuthorsOfOneVersionApart()
{
    const quint32 seed = QRandomGenerator::global()->generate();
    qInfo("seed %u", seed);
    QRandomGenerator random(seed);
    const QString id = Save(QStringLiteral("shared"), Content(0));
    QVERIFY2(!id.isEmpty(), Reason());
    QString expected = Content(0);
    bool isStale = false;

    for (int i = 1; i <= 150; ++i) {
        if (random.bounded(3) == 0) {
            QVERIFY(SaveAsAnotherAuthor(id, Content(-i)));
            expected = Content(-i);
            isStale = true;
            continue;
        }
        const bool saved = Update(id, Content(i));
        QVERIFY2(saved == !isStale, Reason()); // no lost update, no false conflict
        if (saved) {
            expected = Content(i);
            continue;
        }
        QVERIFY(Reason().startsWith("该版本已被他人修改"));
        QVERIFY2(Load(id), Reason());
        QCOMPARE(LoadedBytes(), expected.toUtf8());
        isStale = false;
    }
    QVERIFY2(Load(id), Reason());
    QCOMPARE(LoadedBytes(), expected.toUtf8());
}

void RequestLibraryTest::savesOnceThoughTheServerIsKilledMeanwhile()
{
    const QString id = Save(QStringLiteral("版本1"), Content(0));
    QVERIFY2(!id.isEmpty(), Reason());

    for (int i = 1; i <= 5; ++i) {
        const int before = observer->count;
        auto request = QSharedPointer<UpdateAppSnapshotInfoRequest>::create();
        const auto record = Manager()->GetSnapshot(id);
        record->SetAppData(Content(i));
        request->SetSnapshotInfoPtr(record);
        RpaEditorLogic::Instance()->UpdateAppSnapshotInfo(request);
        server.Kill();
        QVERIFY2(server.Restart(), server.ErrorText());
        QVERIFY(Wait(before));
        QCOMPARE(observer->count, before + 1);
        const bool saved = Succeeded();
        // Confirmed or not: the next save goes through, for nobody else is at work.
        QVERIFY2(saved || Update(id, Content(i)), Reason());
        QVERIFY2(Load(id), Reason());
        QCOMPARE(LoadedBytes(), Content(i).toUtf8());
    }
    QVERIFY2(List(), Reason());
    QCOMPARE(Manager()->GetCount(), 1);
}

void RequestLibraryTest::tellsThatTheTokenIsDead()
{
    VersionServiceSettings::Instance()->SetToken("0123456789abcdef0123456789abcdef");
    QSignalSpy rejected(VersionServiceSettings::Instance(), &VersionServiceSettings::SigTokenRejected);

    QVERIFY(!List());

    QVERIFY(!Reason().isEmpty());
    QCOMPARE(rejected.count(), 1);
}

void RequestLibraryTest::findsAndRenamesApps()
{
    VersionServiceClient client;
    const QString name = QStringLiteral("改名%1").arg(appNumber);
    std::optional<VersionServiceResult<VersionServiceApp>> renamed;
    client.Send(RenameAppRequest{appId, name}, nullptr, [&](const auto& result) { renamed = result; });
    QTRY_VERIFY(renamed);
    QVERIFY2(renamed->success, qPrintable(renamed->errorDesc));

    std::optional<VersionServiceResult<QVector<VersionServiceApp>>> found;
    client.Send(ListAppsRequest{name}, nullptr, [&](const auto& result) { found = result; });

    QTRY_VERIFY(found);
    QVERIFY2(found->success, qPrintable(found->errorDesc));
    QCOMPARE(found->value.size(), 1);
    QCOMPARE(found->value.first().id, appId);
    QCOMPARE(found->value.first().creatorPin, QStringLiteral("author-1"));
}

void RequestLibraryTest::readsTheSessionOfItsToken()
{
    VersionServiceClient client;
    std::optional<VersionServiceResult<VersionServiceSession>> session;

    client.Send(GetCurrentSessionRequest{}, nullptr, [&](const auto& result) { session = result; });

    QTRY_VERIFY(session);
    QVERIFY2(session->success, qPrintable(session->errorDesc));
    QCOMPARE(session->value.account.pin, QStringLiteral("author-1"));
    QCOMPARE(session->value.account.venderId, QStringLiteral("vender-a"));
}

RPA_TEST_MAIN(RequestLibraryTest)
#include "tst_requestlibrary.moc"
