// SPDX-License-Identifier: Apache-2.0

#include "HandleFixture.h"
#include "OrderRecorder.h"
#include "TestApp.h"

#include <RpaAppData/RpaUIDataManager.h>
#include <RpaCore/RpaGlobalDataManager.h>
#include <RpaEditorCore/RpaSnapshotManager.h>
#include <RpaEditorLogic/RpaNotifyId.h>

#include <QSignalSpy>
#include <QUuid>
#include <QtTest>

// Listing, loading, deleting and releasing versions.
class TestRpaAppEditorHandleVersions : public HandleFixture
{
    Q_OBJECT

private slots:
    void turnsAForeignDeleteAnswerIntoItsSignal();
    void ignoresTheDataAnswerOfAnOlderRequest();
    void ignoresTheDataOfAnotherRequester();
    void asksForTheVersionsOfTheApp();
    void emitsOneFinishedSignalPerListAnswer_data();
    void emitsOneFinishedSignalPerListAnswer();
    void showsAnErrorWhenAReleaseTookNoEffect();

    void countsADeletionOnlyWhenItIsConfirmedTwice();
    void deletesWithoutANotice();
    void showsAFailedDeletionAndEmitsNothing();
    void passesTheErrorTextOfAListOnEvenOnSuccess();
    void bringsTheDataOfAVersionUnmodified();
    void takesDataOfAnOlderClient();
    void refusesDataOfANewerClient();
    void bringsAnEmptyAppWhenTheDataCannotBeLoaded();
    void announcesAReleaseWithoutANotice_data();
    void announcesAReleaseWithoutANotice();
    void showsAFailedReleaseAndEmitsNothing();
    void sendsNoReleaseOfAnUnknownVersion();
    void ignoresReleaseAnswersOfOtherClasses();
};

void TestRpaAppEditorHandleVersions::turnsAForeignDeleteAnswerIntoItsSignal()
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

void TestRpaAppEditorHandleVersions::ignoresTheDataAnswerOfAnOlderRequest()
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

void TestRpaAppEditorHandleVersions::ignoresTheDataOfAnotherRequester()
{
    // given
    QSignalSpy loaded(handle.get(), &RpaAppEditorHandle::SigGetSnapshotData);
    handle->GetSnapshotData(QStringLiteral("v1"));

    // when
    for (const QString& identity : {QString(), QUuid::createUuid().toString()}) {
        const auto request = QSharedPointer<GetDevSnapshotDataRequest>::create();
        request->SetSnapshotId(QStringLiteral("v2"));
        request->SetIdentity(identity);
        const auto response = QSharedPointer<GetDevSnapshotDataResponse>::create();
        response->SetOutcome(identity.isEmpty(), Text("别人的错误"));
        InjectAnswer(NotifyGetDevSnapshotData, request, response);
    }

    // then
    QCOMPARE(loaded.size(), 0);
    QCOMPARE(service->toasts.GetCount(), 0);
    QTRY_COMPARE(loaded.size(), 1);
    QCOMPARE(loaded.constFirst().at(1).toString(), QStringLiteral("v1"));
}

void TestRpaAppEditorHandleVersions::asksForTheVersionsOfTheApp()
{
    handle->GetSnapshotList(QStringLiteral("app7"));

    QTRY_COMPARE(service->server.GetRequestCount(), 1);
    QCOMPARE(service->server.GetRequests().constFirst().path, QByteArray("/api/v1/apps/app7/versions"));
    QTRY_COMPARE(service->recorder.answers.size(), 1);
}

void TestRpaAppEditorHandleVersions::emitsOneFinishedSignalPerListAnswer_data()
{
    QTest::addColumn<bool>("refused");

    QTest::newRow("success") << false;
    QTest::newRow("failure") << true;
}

void TestRpaAppEditorHandleVersions::emitsOneFinishedSignalPerListAnswer()
{
    QFETCH(bool, refused);

    // given
    const QString reason = Text("没有权限");
    if (refused)
        service->server.Enqueue(FaultServer::Refusal(403, "forbidden", reason));
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

void TestRpaAppEditorHandleVersions::showsAnErrorWhenAReleaseTookNoEffect()
{
    // given
    QSignalSpy released(handle.get(), &RpaAppEditorHandle::SigGrayOrReleaseFinished);
    VersionReplies::Version version;
    version.id = QStringLiteral("v1");
    service->server.Enqueue(FaultServer::Data(VersionReplies::App(), 1));
    service->server.Enqueue(VersionReplies::Released(0, true, Text("该版本已经灰度"), version));

    // when
    handle->GrayOrRelease(QStringLiteral("v1"), 1);

    // then
    QTRY_COMPARE(service->recorder.answers.size(), 1);
    QVERIFY(service->recorder.answers.constFirst().response->IsSuccess());
    QCOMPARE(released.size(), 0);
    QCOMPARE(service->toasts.GetToasts(), (QVector<SeenToast>{{Text("该版本已经灰度"), 2}}));
}

void TestRpaAppEditorHandleVersions::countsADeletionOnlyWhenItIsConfirmedTwice()
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

void TestRpaAppEditorHandleVersions::deletesWithoutANotice()
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

void TestRpaAppEditorHandleVersions::showsAFailedDeletionAndEmitsNothing()
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

void TestRpaAppEditorHandleVersions::passesTheErrorTextOfAListOnEvenOnSuccess()
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

void TestRpaAppEditorHandleVersions::bringsTheDataOfAVersionUnmodified()
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

void TestRpaAppEditorHandleVersions::takesDataOfAnOlderClient()
{
    // given
    const RpaAppDataPtr original = VersionServiceFixture::MakeModifiedApp();
    original->SetVersion(QStringLiteral("1.9.0"));
    RpaGlobalDataManager::Instance()->SetApiVersion(QStringLiteral("1.10.0"));
    service->server.Enqueue(FaultServer::Data(original->ToJson(), 1));
    QSignalSpy loaded(handle.get(), &RpaAppEditorHandle::SigGetSnapshotData);

    // when
    handle->GetSnapshotData(QStringLiteral("v1"));

    // then
    QTRY_COMPARE(loaded.size(), 1);
    QCOMPARE(loaded.constFirst().at(0).toBool(), true);
    QCOMPARE(service->toasts.GetCount(), 0);
}

void TestRpaAppEditorHandleVersions::refusesDataOfANewerClient()
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
    QCOMPARE(service->toasts.GetToasts(), (QVector<SeenToast>{{Text("当前版本过低，请更新为最新版本"), 2}}));
    QCOMPARE(order.GetEvents(), QStringList({Text("toast"), Text("data")}));
}

void TestRpaAppEditorHandleVersions::bringsAnEmptyAppWhenTheDataCannotBeLoaded()
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

void TestRpaAppEditorHandleVersions::announcesAReleaseWithoutANotice_data()
{
    QTest::addColumn<QString>("snapshotId");
    QTest::addColumn<int>("type");
    QTest::addColumn<bool>("needTip");

    QTest::newRow("gray, without a tip") << QStringLiteral("v1") << 1 << false;
    QTest::newRow("online, with a tip") << QStringLiteral("v2") << 2 << true;
}

void TestRpaAppEditorHandleVersions::announcesAReleaseWithoutANotice()
{
    QFETCH(QString, snapshotId);
    QFETCH(int, type);
    QFETCH(bool, needTip);

    // given
    VersionReplies::Version version;
    version.id = snapshotId;
    version.state = type + 1;
    version.revision = 2;
    service->server.Enqueue(FaultServer::Data(VersionReplies::App(), 1));
    service->server.Enqueue(VersionReplies::Released(1, needTip, QString(), version));
    QSignalSpy released(handle.get(), &RpaAppEditorHandle::SigGrayOrReleaseFinished);

    // when
    handle->GrayOrRelease(snapshotId, type);

    // then
    QTRY_COMPARE(released.size(), 1);
    QCOMPARE(released.constFirst().at(0).toString(), QStringLiteral("app1"));
    QCOMPARE(released.constFirst().at(1).toInt(), type);
    QCOMPARE(released.constFirst().at(2).toBool(), needTip);
    QCOMPARE(service->toasts.GetCount(), 0);
    const FaultServer::Request request = service->server.GetRequests().constLast();
    QCOMPARE(request.path, "/api/v1/versions/" + snapshotId.toUtf8() + "/release");
}

void TestRpaAppEditorHandleVersions::showsAFailedReleaseAndEmitsNothing()
{
    // given
    service->server.Enqueue(FaultServer::Data(VersionReplies::App(), 1));
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

void TestRpaAppEditorHandleVersions::sendsNoReleaseOfAnUnknownVersion()
{
    // when
    handle->GrayOrRelease(QStringLiteral("unknown"), 1);
    handle->GetSnapshotList(QStringLiteral("app1"));

    // then
    QTRY_COMPARE(service->recorder.answers.size(), 1);
    QCOMPARE(service->recorder.answers.constFirst().notifyId, int(NotifyGetSnapshotList));
    QCOMPARE(service->server.GetRequestCount(), 1);
}

void TestRpaAppEditorHandleVersions::ignoresReleaseAnswersOfOtherClasses()
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

RPA_TEST_MAIN(TestRpaAppEditorHandleVersions)

#include "tst_rpaappeditorhandle_versions.moc"
