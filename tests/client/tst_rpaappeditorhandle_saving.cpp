// SPDX-License-Identifier: Apache-2.0

#include "HandleFixture.h"
#include "OrderRecorder.h"
#include "TestApp.h"

#include <RpaCore/RpaGlobalDataManager.h>
#include <RpaEditorCore/RpaSnapshotManager.h>
#include <RpaEditorLogic/RpaNotifyId.h>
#include <RpaProcessData/RpaPackageInfo.h>

#include <QSignalSpy>
#include <QUuid>
#include <QtTest>

// Saving into a version and as a new one, at once and in the background.
class TestRpaAppEditorHandleSaving : public HandleFixture
{
    Q_OBJECT

private slots:
    void refusesASecondSaveBeforeTheFirstAnswer();
    void ignoresASaveAnswerOfAnotherRequester_data();
    void ignoresASaveAnswerOfAnotherRequester();
    void endsTheBlockingSaveOfAnUnknownVersionWithoutAnAnswer();
    void endsTheBlockingSaveWhenTheHandleIsDestroyed();

    void overwritesAVersionWithContentFormatAndUser();
    void savesANewVersionFromTheDefaultRecord();
    void writesThePackagesThatTheProcessUses_data();
    void writesThePackagesThatTheProcessUses();
    void takesTheNextSaveOnWhileItAnnouncesAVersion();
    void announcesANewVersionBeforeTheNotice();
    void announcesAVersionWithoutAnIdWhenTheAnswerNamesNone_data();
    void announcesAVersionWithoutAnIdWhenTheAnswerNamesNone();
    void announcesNoVersionForAnOverwrite();
    void finishesABlockingSaveWithItsOutcome_data();
    void finishesABlockingSaveWithItsOutcome();
    void staysSilentAboutTheEndOfAnAsynchronousSave();
    void savesAgainAfterAnAnswer_data();
    void savesAgainAfterAnAnswer();
    void countsAnOverwriteOnlyWhenItIsConfirmedTwice();
    void savesNothingWithoutAnApp();
    void showsEachRefusalOnceInTheServersWords_data();
    void showsEachRefusalOnceInTheServersWords();

    void answersEverySaveOnceWhateverTheServerDoes_data();
    void answersEverySaveOnceWhateverTheServerDoes();
};

void TestRpaAppEditorHandleSaving::refusesASecondSaveBeforeTheFirstAnswer()
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

void TestRpaAppEditorHandleSaving::ignoresASaveAnswerOfAnotherRequester_data()
{
    QTest::addColumn<QString>("snapshotId");
    QTest::addColumn<bool>("success");

    QTest::newRow("new version, success") << QString() << true;
    QTest::newRow("new version, failure") << QString() << false;
    QTest::newRow("overwrite, success") << QStringLiteral("v1") << true;
    QTest::newRow("overwrite, failure") << QStringLiteral("v1") << false;
}

void TestRpaAppEditorHandleSaving::ignoresASaveAnswerOfAnotherRequester()
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

void TestRpaAppEditorHandleSaving::endsTheBlockingSaveOfAnUnknownVersionWithoutAnAnswer()
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

void TestRpaAppEditorHandleSaving::endsTheBlockingSaveWhenTheHandleIsDestroyed()
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

void TestRpaAppEditorHandleSaving::overwritesAVersionWithContentFormatAndUser()
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

void TestRpaAppEditorHandleSaving::savesANewVersionFromTheDefaultRecord()
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

void TestRpaAppEditorHandleSaving::writesThePackagesThatTheProcessUses_data()
{
    QTest::addColumn<QString>("snapshotId");

    QTest::newRow("new version") << QString();
    QTest::newRow("overwrite") << QStringLiteral("v1");
}

void TestRpaAppEditorHandleSaving::writesThePackagesThatTheProcessUses()
{
    QFETCH(QString, snapshotId);

    // given
    const RpaAppDataPtr app = VersionServiceFixture::MakeAppThatUses(QStringLiteral("excel.create"));
    QVERIFY(app->GetPackageInfo()->IsEmpty());

    // when
    handle->SaveSnapshotAsync(snapshotId, app);

    // then
    QTRY_COMPARE(service->recorder.answers.size(), 1);
    RpaAppData written;
    written.Parse(service->server.GetRequests().constFirst().body);
    const auto packages = written.GetPackageInfo()->GetListPackageItemPtr();
    QCOMPARE(packages.size(), 1);
    QCOMPARE(packages.constFirst()->name, QStringLiteral("openpyxl"));
}

void TestRpaAppEditorHandleSaving::takesTheNextSaveOnWhileItAnnouncesAVersion()
{
    // given
    const RpaAppDataPtr next = VersionServiceFixture::MakeModifiedApp();
    connect(handle.get(), &RpaAppEditorHandle::SigSaveAppSnapshot, this,
            [this, next] { handle->SaveSnapshotAsync(QStringLiteral("v1"), next); });

    // when
    handle->SaveSnapshotAsync(QString(), VersionServiceFixture::MakeModifiedApp());

    // then
    QTRY_COMPARE(service->recorder.answers.size(), 2);
    QCOMPARE(service->server.GetRequests().constLast().path, QByteArray("/api/v1/versions/v1"));
    QVERIFY(!next->GetModified());
}

void TestRpaAppEditorHandleSaving::announcesANewVersionBeforeTheNotice()
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

void TestRpaAppEditorHandleSaving::announcesAVersionWithoutAnIdWhenTheAnswerNamesNone_data()
{
    QTest::addColumn<bool>("isSave");
    QTest::newRow("a save without a record") << true;
    QTest::newRow("a request of another kind") << false;
}

void TestRpaAppEditorHandleSaving::announcesAVersionWithoutAnIdWhenTheAnswerNamesNone()
{
    QFETCH(bool, isSave);

    // given
    handle->SaveSnapshotAsync(QString(), VersionServiceFixture::MakeModifiedApp());
    QTRY_COMPARE(service->recorder.answers.size(), 1);
    QSharedPointer<IHttpRequest> strange = QSharedPointer<GetSnapshotListRequest>::create();
    if (isSave)
        strange = QSharedPointer<SaveAppSnapshotInfoRequest>::create();
    strange->SetIdentity(service->recorder.answers.constFirst().request->GetIdentity());
    QSignalSpy saved(handle.get(), &RpaAppEditorHandle::SigSaveAppSnapshot);

    // when
    InjectAnswer(NotifySaveAppSnapshotInfo, strange, Outcome(true));

    // then
    QCOMPARE(saved.size(), 1);
    QCOMPARE(saved.constFirst().constFirst().toString(), QString());
}

void TestRpaAppEditorHandleSaving::announcesNoVersionForAnOverwrite()
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

void TestRpaAppEditorHandleSaving::finishesABlockingSaveWithItsOutcome_data()
{
    QTest::addColumn<QString>("snapshotId");
    QTest::addColumn<bool>("refused");

    QTest::newRow("new version saved") << QString() << false;
    QTest::newRow("new version refused") << QString() << true;
    QTest::newRow("overwritten") << QStringLiteral("v1") << false;
    QTest::newRow("overwrite refused") << QStringLiteral("v1") << true;
}

void TestRpaAppEditorHandleSaving::finishesABlockingSaveWithItsOutcome()
{
    QFETCH(QString, snapshotId);
    QFETCH(bool, refused);

    // given
    if (refused)
        service->server.Enqueue(FaultServer::Refusal(409, "name-taken", Text("名称已存在")));
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

void TestRpaAppEditorHandleSaving::staysSilentAboutTheEndOfAnAsynchronousSave()
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

void TestRpaAppEditorHandleSaving::savesAgainAfterAnAnswer_data()
{
    finishesABlockingSaveWithItsOutcome_data();
}

void TestRpaAppEditorHandleSaving::savesAgainAfterAnAnswer()
{
    QFETCH(QString, snapshotId);
    QFETCH(bool, refused);

    // given
    if (refused)
        service->server.Enqueue(FaultServer::Refusal(409, "name-taken", Text("名称已存在")));
    handle->SaveSnapshotAsync(snapshotId, VersionServiceFixture::MakeModifiedApp());
    QTRY_COMPARE(service->recorder.answers.size(), 1);

    // when
    handle->SaveSnapshotAsync(snapshotId, VersionServiceFixture::MakeModifiedApp());

    // then
    QTRY_COMPARE(service->recorder.answers.size(), 2);
    QCOMPARE(service->toasts.GetToasts().constLast(), (SeenToast{Text("保存成功"), 0}));
}

void TestRpaAppEditorHandleSaving::countsAnOverwriteOnlyWhenItIsConfirmedTwice()
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

void TestRpaAppEditorHandleSaving::savesNothingWithoutAnApp()
{
    // when
    handle->SaveSnapshotAsync(QStringLiteral("v1"), nullptr);
    const bool blocking = handle->SaveSnapshotSync(QString(), nullptr);

    // then
    QVERIFY(blocking);
    QCOMPARE(service->server.GetRequestCount(), 0);
}

void TestRpaAppEditorHandleSaving::showsEachRefusalOnceInTheServersWords_data()
{
    QTest::addColumn<int>("status");
    for (int status : {401, 404, 409, 412, 413, 500, 503})
        QTest::addRow("%d", status) << status;
}

void TestRpaAppEditorHandleSaving::showsEachRefusalOnceInTheServersWords()
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

void TestRpaAppEditorHandleSaving::answersEverySaveOnceWhateverTheServerDoes_data()
{
    AddFaultRows();
}

void TestRpaAppEditorHandleSaving::answersEverySaveOnceWhateverTheServerDoes()
{
    QFETCH(FaultServer::Fault, fault);

    // given
    service->Misbehave(fault);
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

RPA_TEST_MAIN(TestRpaAppEditorHandleSaving)

#include "tst_rpaappeditorhandle_saving.moc"
