#include "OrderRecorder.h"
#include "RpaAppEditorHandle.h"
#include "TestApp.h"
#include "VersionServiceFixture.h"

#include <RpaAppData/RpaUIDataManager.h>
#include <RpaCore/RpaGlobalDataManager.h>
#include <RpaEditorCore/RpaSnapshotManager.h>
#include <RpaEditorLogic/RpaEditorLogic.h>
#include <RpaEditorLogic/RpaNotifyId.h>
#include <RpaEditorLogic/SaveLedger.h>

#include <QElapsedTimer>
#include <QSignalSpy>
#include <QUuid>
#include <QtTest>

#include <memory>

using namespace std::chrono_literals;

namespace
{

QString Text(const char* utf8)
{
    return QString::fromUtf8(utf8);
}

QSharedPointer<SnapshotResponse> Outcome(bool ok, const QString& error = QString())
{
    auto response = QSharedPointer<SnapshotResponse>::create();
    response->SetOutcome(ok, error);
    return response;
}

RpaSnapshotManager* Manager()
{
    return RpaEditorLogic::Instance()->GetDevSnapshotManager();
}

} // namespace

class TestRpaAppEditorHandle : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void refusesASecondSaveBeforeTheFirstAnswer();
    void ignoresASaveAnswerOfAnotherRequester_data();
    void ignoresASaveAnswerOfAnotherRequester();
    void turnsAForeignDeleteAnswerIntoItsSignal();
    void ignoresTheDataAnswerOfAnOlderRequest();
    void endsTheBlockingSaveOfAnUnknownVersionWithoutAnAnswer();
    void endsTheBlockingSaveWhenTheHandleIsDestroyed();
    void emitsOneFinishedSignalPerListAnswer_data();
    void emitsOneFinishedSignalPerListAnswer();
    void showsAnErrorWhenAReleaseTookNoEffect();

    void overwritesAVersionWithContentFormatAndUser();
    void savesANewVersionFromTheDefaultRecord();
    void givesEveryRequestAFreshIdentity();
    void announcesANewVersionBeforeTheNotice();
    void announcesNoVersionForAnOverwrite();
    void finishesABlockingSaveWithItsOutcome_data();
    void finishesABlockingSaveWithItsOutcome();
    void staysSilentAboutTheEndOfAnAsynchronousSave();
    void savesAgainAfterAnAnswer_data();
    void savesAgainAfterAnAnswer();
    void countsAnOverwriteOnlyWhenItIsConfirmedTwice();
    void countsADeletionOnlyWhenItIsConfirmedTwice();
    void savesNothingWithoutAnApp();
    void showsEachRefusalOnceInTheServersWords_data();
    void showsEachRefusalOnceInTheServersWords();
    void deletesWithoutANotice();
    void showsAFailedDeletionAndEmitsNothing();
    void passesTheErrorTextOfAListOnEvenOnSuccess();
    void bringsTheDataOfAVersionUnmodified();
    void refusesDataOfANewerClient();
    void bringsAnEmptyAppWhenTheDataCannotBeLoaded();
    void announcesAReleaseWithoutANotice();
    void showsAFailedReleaseAndEmitsNothing();
    void sendsNoReleaseOfAnUnknownVersion();
    void ignoresReleaseAnswersOfOtherClasses();
    void ignoresOtherNotifications();

    void answersEverySaveOnceWhateverTheServerDoes_data();
    void answersEverySaveOnceWhateverTheServerDoes();
    void survivesItsEndWhileARequestIsUnderWay_data();
    void survivesItsEndWhileARequestIsUnderWay();
    void survivesItsEndInsideItsOwnSignal();

private:
    std::unique_ptr<VersionServiceFixture> service;
    std::unique_ptr<RpaAppEditorHandle> handle;
};

void TestRpaAppEditorHandle::init()
{
    service = std::make_unique<VersionServiceFixture>();
    handle = std::make_unique<RpaAppEditorHandle>(nullptr);
}

void TestRpaAppEditorHandle::cleanup()
{
    handle.reset();
    // Nothing of this test may be answered in the next one.
    QTRY_VERIFY(!RpaEditorLogic::Instance()->GetSaveLedger()->HasSavesInFlight());
    service.reset();
}

void TestRpaAppEditorHandle::refusesASecondSaveBeforeTheFirstAnswer()
{
    // given
    const RpaAppDataPtr first = VersionServiceFixture::MakeModifiedApp();
    const RpaAppDataPtr second = VersionServiceFixture::MakeModifiedApp();
    handle->SaveSnapshotAsync(QStringLiteral("v1"), first);

    // when
    handle->SaveSnapshotAsync(QStringLiteral("v2"), second);
    const bool blocking = handle->SaveSnapshotSync(QStringLiteral("v2"), second);

    // then
    QVERIFY(blocking);
    QVERIFY(service->recorder.answers.isEmpty());
    QVERIFY(!first->GetModified());
    QVERIFY(second->GetModified());
    QTRY_COMPARE(service->recorder.answers.size(), 1);
    QCOMPARE(service->server.GetRequestCount(), 1);
    QCOMPARE(service->server.GetRequests().constFirst().path, QByteArray("/api/v1/versions/v1"));
}

void TestRpaAppEditorHandle::ignoresASaveAnswerOfAnotherRequester_data()
{
    QTest::addColumn<QString>("snapshotId");
    QTest::addColumn<bool>("success");

    QTest::newRow("new version, success") << QString() << true;
    QTest::newRow("new version, failure") << QString() << false;
    QTest::newRow("overwrite, success") << QStringLiteral("v1") << true;
    QTest::newRow("overwrite, failure") << QStringLiteral("v1") << false;
}

void TestRpaAppEditorHandle::ignoresASaveAnswerOfAnotherRequester()
{
    QFETCH(QString, snapshotId);
    QFETCH(bool, success);

    // given
    OrderRecorder order;
    order.Watch(handle.get(), &RpaAppEditorHandle::SigSaveAppSnapshot, Text("saved"));
    order.Watch(handle.get(), &RpaAppEditorHandle::SigSaveFinished, Text("finished"));
    handle->SaveSnapshotAsync(snapshotId, VersionServiceFixture::MakeModifiedApp());

    // when
    const auto save = QSharedPointer<SaveAppSnapshotInfoRequest>::create();
    save->SetIdentity(QUuid::createUuid().toString());
    save->SetSnapshotInfoPtr(
        VersionServiceFixture::MakeSnapshot(Text("other"), Text("别的"), AppSnapshotDevelop));
    const auto update = QSharedPointer<UpdateAppSnapshotInfoRequest>::create();
    update->SetIdentity(QUuid::createUuid().toString());
    InjectAnswer(NotifySaveAppSnapshotInfo, save, Outcome(success, Text("别人的错误")));
    InjectAnswer(NotifyUpdateAppSnapshotInfo, update, Outcome(success, Text("别人的错误")));

    // then
    QCOMPARE(order.GetEvents(), QStringList());
    QCOMPARE(service->toasts.GetCount(), 0);
    const RpaAppDataPtr refused = VersionServiceFixture::MakeModifiedApp();
    handle->SaveSnapshotAsync(snapshotId, refused);
    QVERIFY2(refused->GetModified(), "the first save counts as answered");
    QTRY_COMPARE(service->toasts.GetCount(), 1);
}

void TestRpaAppEditorHandle::turnsAForeignDeleteAnswerIntoItsSignal()
{
    // given
    QSignalSpy deleted(handle.get(), &RpaAppEditorHandle::SigSnapshotDeleted);
    const auto request = QSharedPointer<DeleteAppSnapshotInfoRequest>::create();
    request->SetSnapshotId(QStringLiteral("v2"));

    // when
    InjectAnswer(NotifyDeleteAppSnapshotInfo, request, Outcome(true));

    // then
    QCOMPARE(deleted.size(), 1);
    QCOMPARE(deleted.constFirst().constFirst().toString(), QStringLiteral("v2"));
    QCOMPARE(service->toasts.GetCount(), 0);
}

void TestRpaAppEditorHandle::ignoresTheDataAnswerOfAnOlderRequest()
{
    // given
    QSignalSpy loaded(handle.get(), &RpaAppEditorHandle::SigGetSnapshotData);

    // when
    handle->GetSnapshotData(QStringLiteral("v1"));
    handle->GetSnapshotData(QStringLiteral("v2"));

    // then
    QTRY_COMPARE(service->recorder.answers.size(), 2);
    QCOMPARE(loaded.size(), 1);
    QCOMPARE(loaded.constFirst().at(1).toString(), QStringLiteral("v2"));
}

void TestRpaAppEditorHandle::endsTheBlockingSaveOfAnUnknownVersionWithoutAnAnswer()
{
    // given
    const RpaAppDataPtr app = VersionServiceFixture::MakeModifiedApp();

    // when
    const bool saved = handle->SaveSnapshotSync(QStringLiteral("unknown"), app);

    // then
    QVERIFY(!saved);
    QVERIFY(!app->GetModified());
    QCOMPARE(service->server.GetRequestCount(), 0);
    QCOMPARE(service->toasts.GetCount(), 0);
    // Nothing is under way: the next save is sent.
    handle->SaveSnapshotAsync(QStringLiteral("v1"), app);
    QTRY_COMPARE(service->server.GetRequestCount(), 1);
    QTRY_COMPARE(service->recorder.answers.size(), 1);
}

void TestRpaAppEditorHandle::endsTheBlockingSaveWhenTheHandleIsDestroyed()
{
    // given
    VersionServiceFixture::UseShortDeadlines();
    service->server.SetScript(
        [](const FaultServer::Request&) { return FaultServer::Failing(FaultServer::Fault::Silence); });
    QTimer::singleShot(0, this, [this] { handle.reset(); });

    // when
    const bool saved =
        handle->SaveSnapshotSync(QStringLiteral("v1"), VersionServiceFixture::MakeModifiedApp());

    // then
    QVERIFY(!handle);
    QVERIFY(!saved);
    QVERIFY(service->recorder.answers.isEmpty());
    QTRY_COMPARE(service->recorder.answers.size(), 1);
}

void TestRpaAppEditorHandle::emitsOneFinishedSignalPerListAnswer_data()
{
    QTest::addColumn<bool>("refused");

    QTest::newRow("success") << false;
    QTest::newRow("failure") << true;
}

void TestRpaAppEditorHandle::emitsOneFinishedSignalPerListAnswer()
{
    QFETCH(bool, refused);

    // given
    const QString reason = Text("没有权限");
    if (refused) {
        service->server.Enqueue(FaultServer::Refusal(403, "forbidden", reason));
    }
    QSignalSpy finished(handle.get(), &RpaAppEditorHandle::SigGetSnapshotListFinished);

    // when
    handle->GetSnapshotList(QStringLiteral("app1"));

    // then
    QTRY_COMPARE(service->recorder.answers.size(), 1);
    QCOMPARE(finished.size(), 1);
    QCOMPARE(finished.constFirst().at(0).toBool(), !refused);
    QCOMPARE(finished.constFirst().at(1).toString(), refused ? reason : QString());
    QCOMPARE(service->toasts.GetCount(), 0);
    QCOMPARE(Manager()->GetCount(), 3);
}

void TestRpaAppEditorHandle::showsAnErrorWhenAReleaseTookNoEffect()
{
    // given
    QSignalSpy released(handle.get(), &RpaAppEditorHandle::SigGrayOrReleaseFinished);
    VersionReplies::Version version;
    version.id = QStringLiteral("v1");
    service->server.Enqueue(VersionReplies::Released(0, true, Text("该版本已经灰度"), version));

    // when
    handle->GrayOrRelease(QStringLiteral("v1"), 1);

    // then
    QTRY_COMPARE(service->recorder.answers.size(), 1);
    QVERIFY(service->recorder.answers.constFirst().response->IsSuccess());
    QCOMPARE(released.size(), 0);
    QCOMPARE(service->toasts.GetToasts(), (QVector<SeenToast>{{Text("该版本已经灰度"), 2}}));
}

void TestRpaAppEditorHandle::overwritesAVersionWithContentFormatAndUser()
{
    // given
    RpaGlobalDataManager::Instance()->SetApiVersion(QStringLiteral("1.2.0"));
    const RpaAppDataPtr app = VersionServiceFixture::MakeModifiedApp();

    // when
    handle->SaveSnapshotAsync(QStringLiteral("v1"), app);

    // then
    const RpaAppSnapshotPtr snapshot = Manager()->GetSnapshot(QStringLiteral("v1"));
    QCOMPARE(app->GetVersion(), QStringLiteral("1.2.0"));
    QVERIFY(!app->GetModified());
    QCOMPARE(snapshot->GetAppData().toUtf8(), app->ToJson());
    QCOMPARE(snapshot->GetApiVersion(), QStringLiteral("1.2.0"));
    QCOMPARE(snapshot->GetPin(), QStringLiteral("author"));
    QCOMPARE(snapshot->GetName(), Text("版本1"));
    QCOMPARE(snapshot->GetDesc(), Text("说明1"));
    QTRY_COMPARE(service->toasts.GetToasts(), (QVector<SeenToast>{{Text("保存成功"), 0}}));
    const FaultServer::Request request = service->server.GetRequests().constFirst();
    QCOMPARE(request.method, QByteArray("PUT"));
    QCOMPARE(request.body, app->ToJson());
}

void TestRpaAppEditorHandle::savesANewVersionFromTheDefaultRecord()
{
    // given
    const RpaAppDataPtr app = VersionServiceFixture::MakeModifiedApp();
    QSignalSpy saved(handle.get(), &RpaAppEditorHandle::SigSaveAppSnapshot);

    // when
    handle->SaveSnapshotAsync(QString(), app);

    // then
    QTRY_COMPARE(saved.size(), 1);
    QCOMPARE(saved.constFirst().constFirst().toString(), QStringLiteral("v9"));
    QVERIFY(!app->GetModified());
    const FaultServer::Request request = service->server.GetRequests().constFirst();
    QCOMPARE(request.method, QByteArray("POST"));
    QCOMPARE(request.path, QByteArray("/api/v1/apps/app1/versions"));
    QCOMPARE(request.body, app->ToJson());
}

void TestRpaAppEditorHandle::givesEveryRequestAFreshIdentity()
{
    // when
    for (const QString& id : {QString(), QString(), QStringLiteral("v1"), QStringLiteral("v1")}) {
        const int before = service->recorder.answers.size();
        handle->SaveSnapshotAsync(id, VersionServiceFixture::MakeModifiedApp());
        QTRY_COMPARE(service->recorder.answers.size(), before + 1);
    }
    handle->GetSnapshotData(QStringLiteral("v1"));
    handle->GetSnapshotData(QStringLiteral("v1"));
    handle->GetSnapshotList(QStringLiteral("app1"));
    handle->DeleteSnapshot(QStringLiteral("app1"), QStringLiteral("v2"));
    handle->GrayOrRelease(QStringLiteral("v1"), 1);
    QTRY_COMPARE(service->recorder.answers.size(), 9);

    // then
    QSet<QString> identities;
    for (const DeliveredAnswer& answer : service->recorder.answers) {
        const QString identity = answer.request->GetIdentity();
        const bool carriesIdentity = answer.notifyId == NotifySaveAppSnapshotInfo ||
                                     answer.notifyId == NotifyUpdateAppSnapshotInfo ||
                                     answer.notifyId == NotifyGetDevSnapshotData;
        QCOMPARE(!identity.isEmpty(), carriesIdentity);
        if (carriesIdentity) {
            QCOMPARE(QUuid(identity).toString(), identity);
            identities.insert(identity);
        }
    }
    QCOMPARE(identities.size(), 6);
}

void TestRpaAppEditorHandle::announcesANewVersionBeforeTheNotice()
{
    // given
    OrderRecorder order;
    order.Watch(handle.get(), &RpaAppEditorHandle::SigSaveAppSnapshot, Text("saved"));
    order.Watch(&service->toasts, &ToastWatcher::SigToast, Text("toast"));
    order.Watch(handle.get(), &RpaAppEditorHandle::SigSaveFinished, Text("finished"));

    // when
    QVERIFY(handle->SaveSnapshotSync(QString(), VersionServiceFixture::MakeModifiedApp()));

    // then
    QCOMPARE(order.GetEvents(), QStringList({Text("saved"), Text("toast"), Text("finished")}));
    QCOMPARE(service->toasts.GetToasts(), (QVector<SeenToast>{{Text("保存成功"), 0}}));
}

void TestRpaAppEditorHandle::announcesNoVersionForAnOverwrite()
{
    // given
    OrderRecorder order;
    order.Watch(handle.get(), &RpaAppEditorHandle::SigSaveAppSnapshot, Text("saved"));
    order.Watch(&service->toasts, &ToastWatcher::SigToast, Text("toast"));
    order.Watch(handle.get(), &RpaAppEditorHandle::SigSaveFinished, Text("finished"));

    // when
    QVERIFY(handle->SaveSnapshotSync(QStringLiteral("v1"), VersionServiceFixture::MakeModifiedApp()));

    // then
    QCOMPARE(order.GetEvents(), QStringList({Text("toast"), Text("finished")}));
}

void TestRpaAppEditorHandle::finishesABlockingSaveWithItsOutcome_data()
{
    QTest::addColumn<QString>("snapshotId");
    QTest::addColumn<bool>("refused");

    QTest::newRow("new version saved") << QString() << false;
    QTest::newRow("new version refused") << QString() << true;
    QTest::newRow("overwritten") << QStringLiteral("v1") << false;
    QTest::newRow("overwrite refused") << QStringLiteral("v1") << true;
}

void TestRpaAppEditorHandle::finishesABlockingSaveWithItsOutcome()
{
    QFETCH(QString, snapshotId);
    QFETCH(bool, refused);

    // given
    if (refused) {
        service->server.Enqueue(FaultServer::Refusal(409, "name-taken", Text("名称已存在")));
    }
    QSignalSpy saved(handle.get(), &RpaAppEditorHandle::SigSaveAppSnapshot);
    QSignalSpy finished(handle.get(), &RpaAppEditorHandle::SigSaveFinished);

    // when
    const bool result = handle->SaveSnapshotSync(snapshotId, VersionServiceFixture::MakeModifiedApp());

    // then
    QCOMPARE(result, !refused);
    QCOMPARE(finished.size(), 1);
    QCOMPARE(finished.constFirst().constFirst().toBool(), !refused);
    QCOMPARE(saved.size(), snapshotId.isEmpty() && !refused ? 1 : 0);
    const SeenToast expected = refused ? SeenToast{Text("名称已存在"), 2} : SeenToast{Text("保存成功"), 0};
    QCOMPARE(service->toasts.GetToasts(), QVector<SeenToast>{expected});
}

void TestRpaAppEditorHandle::staysSilentAboutTheEndOfAnAsynchronousSave()
{
    // given
    QVERIFY(handle->SaveSnapshotSync(QStringLiteral("v1"), VersionServiceFixture::MakeModifiedApp()));
    QSignalSpy finished(handle.get(), &RpaAppEditorHandle::SigSaveFinished);

    // when
    handle->SaveSnapshotAsync(QStringLiteral("v1"), VersionServiceFixture::MakeModifiedApp());

    // then
    QTRY_COMPARE(service->recorder.answers.size(), 2);
    QCOMPARE(finished.size(), 0);
}

void TestRpaAppEditorHandle::savesAgainAfterAnAnswer_data()
{
    finishesABlockingSaveWithItsOutcome_data();
}

void TestRpaAppEditorHandle::savesAgainAfterAnAnswer()
{
    QFETCH(QString, snapshotId);
    QFETCH(bool, refused);

    // given
    if (refused) {
        service->server.Enqueue(FaultServer::Refusal(409, "name-taken", Text("名称已存在")));
    }
    handle->SaveSnapshotAsync(snapshotId, VersionServiceFixture::MakeModifiedApp());
    QTRY_COMPARE(service->recorder.answers.size(), 1);

    // when
    handle->SaveSnapshotAsync(snapshotId, VersionServiceFixture::MakeModifiedApp());

    // then
    QTRY_COMPARE(service->recorder.answers.size(), 2);
    QCOMPARE(service->toasts.GetToasts().constLast(), (SeenToast{Text("保存成功"), 0}));
}

void TestRpaAppEditorHandle::countsAnOverwriteOnlyWhenItIsConfirmedTwice()
{
    // given
    VersionServiceFixture::UseShortDeadlines();
    service->server.SetScript(
        [](const FaultServer::Request&) { return FaultServer::Failing(FaultServer::Fault::Silence); });
    handle->SaveSnapshotAsync(QStringLiteral("v1"), VersionServiceFixture::MakeModifiedApp());
    QTRY_COMPARE(service->recorder.answers.size(), 1);
    const auto request = service->recorder.answers.constFirst().request;
    service->toasts.Clear();

    // when
    InjectAnswer(NotifyUpdateAppSnapshotInfo, request, QSharedPointer<FickleResponse>::create());

    // then
    QCOMPARE(service->toasts.GetToasts(), (QVector<SeenToast>{{Text("第二次检查失败"), 2}}));
}

void TestRpaAppEditorHandle::countsADeletionOnlyWhenItIsConfirmedTwice()
{
    // given
    QSignalSpy deleted(handle.get(), &RpaAppEditorHandle::SigSnapshotDeleted);

    // when
    InjectAnswer(NotifyDeleteAppSnapshotInfo, QSharedPointer<DeleteAppSnapshotInfoRequest>::create(),
                 QSharedPointer<FickleResponse>::create());

    // then
    QCOMPARE(deleted.size(), 0);
    QCOMPARE(service->toasts.GetToasts(), (QVector<SeenToast>{{Text("第二次检查失败"), 2}}));
}

void TestRpaAppEditorHandle::savesNothingWithoutAnApp()
{
    // when
    handle->SaveSnapshotAsync(QStringLiteral("v1"), nullptr);
    const bool blocking = handle->SaveSnapshotSync(QString(), nullptr);

    // then
    QVERIFY(blocking);
    QCOMPARE(service->server.GetRequestCount(), 0);
}

void TestRpaAppEditorHandle::showsEachRefusalOnceInTheServersWords_data()
{
    QTest::addColumn<int>("status");
    for (int status : {401, 404, 409, 412, 413, 500, 503}) {
        QTest::addRow("%d", status) << status;
    }
}

void TestRpaAppEditorHandle::showsEachRefusalOnceInTheServersWords()
{
    QFETCH(int, status);

    // given
    const QString words = Text("服务器的理由 %1").arg(status);
    service->server.SetScript([status, words](const FaultServer::Request&) {
        return FaultServer::Refusal(status, "refused", words);
    });
    OrderRecorder order;
    order.Watch(handle.get(), &RpaAppEditorHandle::SigSaveAppSnapshot, Text("saved"));
    order.Watch(&service->toasts, &ToastWatcher::SigToast, Text("toast"));
    order.Watch(handle.get(), &RpaAppEditorHandle::SigSaveFinished, Text("finished"));

    // when
    const bool saved =
        handle->SaveSnapshotSync(QStringLiteral("v1"), VersionServiceFixture::MakeModifiedApp());

    // then
    QVERIFY(!saved);
    QCOMPARE(order.GetEvents(), QStringList({Text("toast"), Text("finished")}));
    const QString told = service->recorder.answers.constFirst().response->GetErrorDesc();
    QVERIFY(!told.isEmpty());
    QCOMPARE(service->toasts.GetToasts(), (QVector<SeenToast>{{told, 2}}));
}

void TestRpaAppEditorHandle::deletesWithoutANotice()
{
    // given
    QSignalSpy deleted(handle.get(), &RpaAppEditorHandle::SigSnapshotDeleted);
    int listed = -1;
    connect(handle.get(), &RpaAppEditorHandle::SigSnapshotDeleted, this,
            [&listed] { listed = Manager()->GetCount(); });

    // when
    handle->DeleteSnapshot(QStringLiteral("app1"), QStringLiteral("v2"));

    // then
    QTRY_COMPARE(deleted.size(), 1);
    QCOMPARE(deleted.constFirst().constFirst().toString(), QStringLiteral("v2"));
    QCOMPARE(listed, 2);
    QCOMPARE(service->toasts.GetCount(), 0);
    const auto request =
        service->recorder.answers.constFirst().request.objectCast<DeleteAppSnapshotInfoRequest>();
    QCOMPARE(request->GetAppId(), QStringLiteral("app1"));
    QVERIFY(request->GetIdentity().isEmpty());
}

void TestRpaAppEditorHandle::showsAFailedDeletionAndEmitsNothing()
{
    // given
    service->server.Enqueue(FaultServer::Refusal(409, "not-develop", Text("已发布的版本不能删除")));
    QSignalSpy deleted(handle.get(), &RpaAppEditorHandle::SigSnapshotDeleted);

    // when
    handle->DeleteSnapshot(QStringLiteral("app1"), QStringLiteral("v2"));

    // then
    QTRY_COMPARE(service->recorder.answers.size(), 1);
    QCOMPARE(service->toasts.GetToasts(), (QVector<SeenToast>{{Text("已发布的版本不能删除"), 2}}));
    QCOMPARE(deleted.size(), 0);
}

void TestRpaAppEditorHandle::passesTheErrorTextOfAListOnEvenOnSuccess()
{
    // given
    QSignalSpy finished(handle.get(), &RpaAppEditorHandle::SigGetSnapshotListFinished);

    // when
    InjectAnswer(NotifyGetSnapshotList, QSharedPointer<GetSnapshotListRequest>::create(),
                 Outcome(true, Text("列表不完整")));

    // then
    QCOMPARE(finished.size(), 1);
    QCOMPARE(finished.constFirst().at(0).toBool(), true);
    QCOMPARE(finished.constFirst().at(1).toString(), Text("列表不完整"));
}

void TestRpaAppEditorHandle::bringsTheDataOfAVersionUnmodified()
{
    // given
    const RpaAppDataPtr original = VersionServiceFixture::MakeModifiedApp();
    original->SetVersion(QStringLiteral("1.0.0"));
    original->GetUIDataManager()->UpdateUIData(0, Text("登记"));
    service->server.Enqueue(FaultServer::Data(original->ToJson(), 4));
    QSignalSpy loaded(handle.get(), &RpaAppEditorHandle::SigGetSnapshotData);

    // when
    handle->GetSnapshotData(QStringLiteral("v1"));

    // then
    QTRY_COMPARE(loaded.size(), 1);
    QCOMPARE(loaded.constFirst().at(0).toBool(), true);
    QCOMPARE(loaded.constFirst().at(1).toString(), QStringLiteral("v1"));
    const auto app = loaded.constFirst().at(2).value<RpaAppDataPtr>();
    QCOMPARE(app->GetUIDataManager()->GetUIName(0), Text("登记"));
    QVERIFY(!app->GetModified());
    QCOMPARE(service->toasts.GetCount(), 0);
}

void TestRpaAppEditorHandle::refusesDataOfANewerClient()
{
    // given
    const RpaAppDataPtr original = VersionServiceFixture::MakeModifiedApp();
    original->SetVersion(QStringLiteral("1.10.0"));
    RpaGlobalDataManager::Instance()->SetApiVersion(QStringLiteral("1.9.0"));
    service->server.Enqueue(FaultServer::Data(original->ToJson(), 1));
    QSignalSpy loaded(handle.get(), &RpaAppEditorHandle::SigGetSnapshotData);
    OrderRecorder order;
    order.Watch(&service->toasts, &ToastWatcher::SigToast, Text("toast"));
    order.Watch(handle.get(), &RpaAppEditorHandle::SigGetSnapshotData, Text("data"));

    // when
    handle->GetSnapshotData(QStringLiteral("v1"));

    // then
    QTRY_COMPARE(loaded.size(), 1);
    QCOMPARE(loaded.constFirst().at(0).toBool(), false);
    QVERIFY(loaded.constFirst().at(2).value<RpaAppDataPtr>());
    QCOMPARE(loaded.constFirst().at(2).value<RpaAppDataPtr>()->GetVersion(), QStringLiteral("1.10.0"));
    QCOMPARE(service->toasts.GetToasts(), (QVector<SeenToast>{{Text("当前版本过低，请更新为最新版本"), 2}}));
    QCOMPARE(order.GetEvents(), QStringList({Text("toast"), Text("data")}));
}

void TestRpaAppEditorHandle::bringsAnEmptyAppWhenTheDataCannotBeLoaded()
{
    // given
    service->server.Enqueue(FaultServer::Refusal(404, "not-found", Text("版本不存在")));
    QSignalSpy loaded(handle.get(), &RpaAppEditorHandle::SigGetSnapshotData);

    // when
    handle->GetSnapshotData(QStringLiteral("v1"));

    // then
    QTRY_COMPARE(loaded.size(), 1);
    QCOMPARE(loaded.constFirst().at(0).toBool(), false);
    QCOMPARE(loaded.constFirst().at(1).toString(), QStringLiteral("v1"));
    const auto app = loaded.constFirst().at(2).value<RpaAppDataPtr>();
    QVERIFY(app);
    QCOMPARE(app->GetUIDataManager()->GetCount(), 0);
    QCOMPARE(service->toasts.GetToasts(), (QVector<SeenToast>{{Text("版本不存在"), 2}}));
}

void TestRpaAppEditorHandle::announcesAReleaseWithoutANotice()
{
    // given
    QSignalSpy released(handle.get(), &RpaAppEditorHandle::SigGrayOrReleaseFinished);

    // when
    handle->GrayOrRelease(QStringLiteral("v1"), 2);

    // then
    QTRY_COMPARE(released.size(), 1);
    QCOMPARE(released.constFirst().at(0).toString(), QStringLiteral("app1"));
    QCOMPARE(released.constFirst().at(1).toInt(), 2);
    QCOMPARE(released.constFirst().at(2).toBool(), true);
    QCOMPARE(service->toasts.GetCount(), 0);
}

void TestRpaAppEditorHandle::showsAFailedReleaseAndEmitsNothing()
{
    // given
    service->server.Enqueue(FaultServer::Refusal(412, "changed", Text("版本已被他人修改")));
    QSignalSpy released(handle.get(), &RpaAppEditorHandle::SigGrayOrReleaseFinished);

    // when
    handle->GrayOrRelease(QStringLiteral("v1"), 1);

    // then
    QTRY_COMPARE(service->recorder.answers.size(), 1);
    QCOMPARE(service->toasts.GetCount(), 1);
    QCOMPARE(service->toasts.GetToasts().constFirst().type, 2);
    QCOMPARE(released.size(), 0);
}

void TestRpaAppEditorHandle::sendsNoReleaseOfAnUnknownVersion()
{
    // when
    handle->GrayOrRelease(QStringLiteral("unknown"), 1);
    handle->GetSnapshotList(QStringLiteral("app1"));

    // then
    QTRY_COMPARE(service->recorder.answers.size(), 1);
    QCOMPARE(service->recorder.answers.constFirst().notifyId, int(NotifyGetSnapshotList));
    QCOMPARE(service->server.GetRequestCount(), 1);
}

void TestRpaAppEditorHandle::ignoresReleaseAnswersOfOtherClasses()
{
    // given
    QSignalSpy released(handle.get(), &RpaAppEditorHandle::SigGrayOrReleaseFinished);

    // when
    InjectAnswer(NotifyGrayOrRelease, QSharedPointer<GrayOrReleaseRequest>::create(),
                 Outcome(false, Text("错误")));
    InjectAnswer(NotifyGrayOrRelease, QSharedPointer<IHttpRequest>::create(),
                 QSharedPointer<GrayOrReleaseResponse>::create());

    // then
    QCOMPARE(released.size(), 0);
    QCOMPARE(service->toasts.GetCount(), 0);
}

void TestRpaAppEditorHandle::ignoresOtherNotifications()
{
    // when
    for (int notifyId : {0, 10018, 10024, 10026}) {
        const auto request = QSharedPointer<DeleteAppSnapshotInfoRequest>::create();
        InjectAnswer(notifyId, request, Outcome(false, Text("错误")));
        handle->OnHttpNotify(notifyId, request, Outcome(false, Text("错误")));
    }

    // then
    QCOMPARE(service->toasts.GetCount(), 0);
}

void TestRpaAppEditorHandle::answersEverySaveOnceWhateverTheServerDoes_data()
{
    QTest::addColumn<FaultServer::Fault>("fault");
    for (FaultServer::Fault fault : FaultServer::AllFaults()) {
        QTest::newRow(FaultServer::NameOf(fault)) << fault;
    }
}

void TestRpaAppEditorHandle::answersEverySaveOnceWhateverTheServerDoes()
{
    QFETCH(FaultServer::Fault, fault);

    // given
    VersionServiceFixture::UseShortDeadlines();
    service->server.SetScript([fault](const FaultServer::Request& request) {
        FaultServer::Reply reply = VersionServiceFixture::AnswerRightly(request);
        reply.fault = fault;
        return reply;
    });
    QSignalSpy finished(handle.get(), &RpaAppEditorHandle::SigSaveFinished);

    // when
    const bool saved =
        handle->SaveSnapshotSync(QStringLiteral("v1"), VersionServiceFixture::MakeModifiedApp());

    // then
    QCOMPARE(finished.size(), 1);
    QCOMPARE(service->recorder.answers.size(), 1);
    QCOMPARE(service->toasts.GetCount(), 1);
    QCOMPARE(service->toasts.GetToasts().constFirst().type, saved ? 0 : 2);
    // The next save is taken on and answered: a late or second answer has not come in between.
    service->server.SetScript(&VersionServiceFixture::AnswerRightly);
    handle->SaveSnapshotAsync(QString(), VersionServiceFixture::MakeModifiedApp());
    QTRY_COMPARE(service->recorder.answers.size(), 2);
    QCOMPARE(finished.size(), 1);
}

void TestRpaAppEditorHandle::survivesItsEndWhileARequestIsUnderWay_data()
{
    QTest::addColumn<int>("act");

    QTest::newRow("new version") << 0;
    QTest::newRow("overwrite") << 1;
    QTest::newRow("list") << 2;
    QTest::newRow("data") << 3;
    QTest::newRow("delete") << 4;
    QTest::newRow("release") << 5;
}

void TestRpaAppEditorHandle::survivesItsEndWhileARequestIsUnderWay()
{
    QFETCH(int, act);

    // given
    const auto app = VersionServiceFixture::MakeModifiedApp();
    const std::function<void()> acts[] = {
        [&] { handle->SaveSnapshotAsync(QString(), app); },
        [&] { handle->SaveSnapshotAsync(QStringLiteral("v1"), app); },
        [&] { handle->GetSnapshotList(QStringLiteral("app1")); },
        [&] { handle->GetSnapshotData(QStringLiteral("v1")); },
        [&] { handle->DeleteSnapshot(QStringLiteral("app1"), QStringLiteral("v2")); },
        [&] { handle->GrayOrRelease(QStringLiteral("v1"), 1); },
    };

    // when
    acts[act]();
    handle.reset();

    // then
    QTRY_COMPARE(service->recorder.answers.size(), 1);
    QCOMPARE(service->toasts.GetCount(), 0);
}

void TestRpaAppEditorHandle::survivesItsEndInsideItsOwnSignal()
{
    // given
    connect(handle.get(), &RpaAppEditorHandle::SigSaveAppSnapshot, this, [this] { handle.reset(); });

    // when
    const bool saved = handle->SaveSnapshotSync(QString(), VersionServiceFixture::MakeModifiedApp());

    // then
    QVERIFY(!saved);
    QVERIFY(!handle);
    QCOMPARE(service->toasts.GetToasts(), (QVector<SeenToast>{{Text("保存成功"), 0}}));
}

RPA_TEST_MAIN(TestRpaAppEditorHandle)

#include "tst_rpaappeditorhandle.moc"
