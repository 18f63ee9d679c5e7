// SPDX-License-Identifier: Apache-2.0

#include "OrderRecorder.h"
#include "RpaAppEditorHandle.h"
#include "SaveSnapshotInfoWidget.h"
#include "ServerProcess.h"
#include "TestApp.h"
#include "ToastWatcher.h"

#include <RpaAppData/RpaAppExtendInfo.h>
#include <RpaAppData/RpaUIDataManager.h>
#include <RpaCore/RpaGlobalDataManager.h>
#include <RpaEditorCore/RpaSnapshotManager.h>
#include <RpaEditorLogic/RpaEditorLogic.h>
#include <RpaEditorLogic/SaveLedger.h>
#include <RpaServiceClient/VersionServiceClient.h>
#include <RpaServiceClient/VersionServiceSettings.h>
#include <RpaServiceClient/apps/CreateAppRequest.h>
#include <WbBaseUI/WbEditableCombo.h>
#include <WbBaseUI/WbPushButton.h>
#include <WbBaseUI/WbTextEdit.h>
#include <WbCore/WbGlobalData.h>

#include <QSignalSpy>
#include <QtTest>

#include <memory>

namespace
{

QString Text(const char* utf8)
{
    return QString::fromUtf8(utf8);
}

RpaSnapshotManager* Manager()
{
    return RpaEditorLogic::Instance()->GetDevSnapshotManager();
}

} // namespace

// Handle and save dialog as the editor uses them, against a server process.
class TestVersionsOnARealServer : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void savesLoadsAndDeletesAVersion();
    void keepsTwoVersionsApart();
    void refusesToOverwriteAnotherAuthorsWork();
    void releasesAVersionToGray();
    void savesUnderANewNameThroughTheDialog();
    void overwritesThroughTheDialog();
    void tellsThatANameIsTaken();
    void failsWhenTheServerIsGone();

private:
    void SignIn(const QString& pin);
    QString CreateApp();
    RpaAppDataPtr MakeApp(const QString& pageName) const;
    QString SaveNew(const QString& pageName);
    QString LoadPageName(const QString& versionId);

    ServerProcess server;
    QWidget window;
    std::unique_ptr<ToastWatcher> toasts;
    std::unique_ptr<RpaAppEditorHandle> handle;
    QString appId;
    int appCount = 0;
};

void TestVersionsOnARealServer::initTestCase()
{
    QVERIFY2(server.Start(), server.ErrorText());
    VersionServiceSettings::Instance()->SetBaseUrl(QUrl(server.BaseUrl()));
    RpaGlobalDataManager::Instance()->SetApiVersion(QStringLiteral("1.0.0"));
    window.resize(640, 480);
    window.show();
}

void TestVersionsOnARealServer::init()
{
    toasts = std::make_unique<ToastWatcher>();
    handle = std::make_unique<RpaAppEditorHandle>();
    SignIn(QStringLiteral("author-1"));
    appId = CreateApp();
    QVERIFY(!appId.isEmpty());
    Manager()->Clear();
    QSignalSpy listed(handle.get(), &RpaAppEditorHandle::SigGetSnapshotListFinished);
    handle->GetSnapshotList(appId);
    QTRY_COMPARE(listed.size(), 1);
    QVERIFY(listed.constFirst().constFirst().toBool());
}

void TestVersionsOnARealServer::cleanup()
{
    handle.reset();
    QTRY_VERIFY(!RpaEditorLogic::Instance()->GetSaveLedger()->HasSavesInFlight());
    toasts.reset();
}

void TestVersionsOnARealServer::SignIn(const QString& pin)
{
    WbGlobalData::Instance()->SetPin(pin);
    VersionServiceSettings::Instance()->SetToken(server.Token(pin));
}

QString TestVersionsOnARealServer::CreateApp()
{
    VersionServiceClient client;
    QString id;
    bool answered = false;
    client.Send(CreateAppRequest{Text("应用%1").arg(++appCount), 0}, this, [&](const auto& result) {
        id = result.value.id;
        answered = true;
    });
    [&] { QTRY_VERIFY(answered); }();
    return id;
}

RpaAppDataPtr TestVersionsOnARealServer::MakeApp(const QString& pageName) const
{
    auto app = RpaAppDataPtr::create();
    app->InitDefault();
    app->GetAppExtendInfo()->SetAppId(appId);
    app->GetUIDataManager()->UpdateUIData(0, pageName);
    app->SetModified(true);
    return app;
}

QString TestVersionsOnARealServer::SaveNew(const QString& pageName)
{
    QSignalSpy saved(handle.get(), &RpaAppEditorHandle::SigSaveAppSnapshot);
    const bool confirmed = handle->SaveSnapshotSync(QString(), MakeApp(pageName));
    return confirmed && saved.size() == 1 ? saved.constFirst().constFirst().toString() : QString();
}

QString TestVersionsOnARealServer::LoadPageName(const QString& versionId)
{
    QSignalSpy loaded(handle.get(), &RpaAppEditorHandle::SigGetSnapshotData);
    handle->GetSnapshotData(versionId);
    [&] { QTRY_COMPARE(loaded.size(), 1); }();
    const auto app = loaded.value(0).value(2).value<RpaAppDataPtr>();
    return app ? app->GetUIDataManager()->GetUIName(0) : QString();
}

void TestVersionsOnARealServer::savesLoadsAndDeletesAVersion()
{
    // given
    const QString keep = SaveNew(Text("保留"));
    const QString id = SaveNew(Text("登记"));
    QVERIFY(!keep.isEmpty() && !id.isEmpty());
    QCOMPARE(Manager()->GetCount(), 2);
    QCOMPARE(LoadPageName(id), Text("登记"));
    QSignalSpy deleted(handle.get(), &RpaAppEditorHandle::SigSnapshotDeleted);

    // when
    handle->DeleteSnapshot(appId, id);

    // then
    QTRY_COMPARE(deleted.size(), 1);
    QCOMPARE(Manager()->GetCount(), 1);
    QCOMPARE(Manager()->GetSnapshotId(0), keep);
}

void TestVersionsOnARealServer::keepsTwoVersionsApart()
{
    const QString first = SaveNew(Text("一"));
    const QString second = SaveNew(Text("二"));

    QVERIFY(handle->SaveSnapshotSync(first, MakeApp(Text("三"))));

    QCOMPARE(LoadPageName(first), Text("三"));
    QCOMPARE(LoadPageName(second), Text("二"));
}

void TestVersionsOnARealServer::refusesToOverwriteAnotherAuthorsWork()
{
    // given
    const QString id = SaveNew(Text("一"));
    const int known = Manager()->GetBaseRevision(id);
    SignIn(QStringLiteral("author-2"));
    QVERIFY(handle->SaveSnapshotSync(id, MakeApp(Text("别人的"))));
    SignIn(QStringLiteral("author-1"));
    Manager()->SetBaseRevision(id, known);
    toasts->Clear();

    // when
    const bool saved = handle->SaveSnapshotSync(id, MakeApp(Text("我的")));

    // then
    QVERIFY(!saved);
    QCOMPARE(toasts->GetCount(), 1);
    QCOMPARE(toasts->GetToasts().constFirst().type, 2);
    QCOMPARE(LoadPageName(id), Text("别人的"));
}

void TestVersionsOnARealServer::releasesAVersionToGray()
{
    // given
    const QString id = SaveNew(Text("一"));
    QSignalSpy released(handle.get(), &RpaAppEditorHandle::SigGrayOrReleaseFinished);

    // when
    handle->GrayOrRelease(id, 1);

    // then
    QTRY_COMPARE(released.size(), 1);
    QCOMPARE(released.constFirst().at(0).toString(), appId);
    QCOMPARE(released.constFirst().at(1).toInt(), 1);
}

void TestVersionsOnARealServer::savesUnderANewNameThroughTheDialog()
{
    // given
    SaveSnapshotInfoWidget dialog(&window);
    dialog.SetAppData(MakeApp(Text("对话框")));
    dialog.show();
    dialog.findChild<WbEditableCombo*>()->setEditText(Text("新版本"));
    dialog.findChild<WbTextEdit*>()->setPlainText(Text("第一稿"));

    // when
    QTest::mouseClick(dialog.findChild<WbPushButton*>(QStringLiteral("pushButtonOK")), Qt::LeftButton);

    // then
    QTRY_COMPARE(dialog.result(), int(QDialog::Accepted));
    const RpaAppSnapshotPtr snapshot = Manager()->GetSnapshot(dialog.GetSavedSnapshotId());
    QVERIFY(snapshot);
    QCOMPARE(snapshot->GetName(), Text("新版本"));
    QCOMPARE(snapshot->GetDesc(), Text("第一稿"));
    QCOMPARE(LoadPageName(dialog.GetSavedSnapshotId()), Text("对话框"));
}

void TestVersionsOnARealServer::overwritesThroughTheDialog()
{
    // given
    const QString id = SaveNew(Text("旧"));
    SaveSnapshotInfoWidget dialog(&window);
    dialog.SetAppData(MakeApp(Text("新")));
    dialog.show();
    dialog.findChild<WbEditableCombo*>()->setEditText(Manager()->GetSnapshot(id)->GetName());

    // when
    QTest::mouseClick(dialog.findChild<WbPushButton*>(QStringLiteral("pushButtonOK")), Qt::LeftButton);

    // then
    QTRY_COMPARE(dialog.result(), int(QDialog::Accepted));
    QCOMPARE(dialog.GetSavedSnapshotId(), id);
    QCOMPARE(Manager()->GetCount(), 1);
    QCOMPARE(LoadPageName(id), Text("新"));
}

void TestVersionsOnARealServer::tellsThatANameIsTaken()
{
    // given
    const QString id = SaveNew(Text("旧"));
    const QString name = Manager()->GetSnapshot(id)->GetName();
    Manager()->Clear();
    SaveSnapshotInfoWidget dialog(&window);
    dialog.SetAppData(MakeApp(Text("新")));
    dialog.show();
    dialog.findChild<WbEditableCombo*>()->setEditText(name);
    toasts->Clear();

    // when
    QTest::mouseClick(dialog.findChild<WbPushButton*>(QStringLiteral("pushButtonOK")), Qt::LeftButton);

    // then
    QTRY_COMPARE(toasts->GetCount(), 1);
    QCOMPARE(toasts->GetToasts().constFirst().type, 2);
    QVERIFY(!toasts->GetToasts().constFirst().text.isEmpty());
    QVERIFY(dialog.isVisible());
    QVERIFY(dialog.findChild<WbEditableCombo*>()->isEnabled());
}

void TestVersionsOnARealServer::failsWhenTheServerIsGone()
{
    // given
    const QString id = SaveNew(Text("一"));
    toasts->Clear();
    server.Kill();

    // when
    const bool saved = handle->SaveSnapshotSync(id, MakeApp(Text("二")));

    // then
    QVERIFY(!saved);
    QCOMPARE(toasts->GetCount(), 1);
    QVERIFY2(server.Restart(), server.ErrorText());
    QVERIFY(handle->SaveSnapshotSync(id, MakeApp(Text("二"))));
    QCOMPARE(LoadPageName(id), Text("二"));
}

RPA_TEST_MAIN(TestVersionsOnARealServer)

#include "tst_versionsonarealserver.moc"
