// SPDX-License-Identifier: Apache-2.0

#include "RpaAppEditorHandle.h"
#include "SaveDialogFixture.h"
#include "TestApp.h"

#include <RpaCore/RpaGlobalDataManager.h>
#include <RpaEditorCore/RpaSnapshotManager.h>
#include <RpaEditorLogic/RpaNotifyId.h>
#include <RpaProcessData/RpaPackageInfo.h>
#include <WbBaseUI/WbEditableCombo.h>
#include <WbBaseUI/WbLabel.h>
#include <WbBaseUI/WbPushButton.h>
#include <WbBaseUI/WbTextEdit.h>
#include <WbBaseUI/WbToast.h>

#include <QLineEdit>
#include <QSignalSpy>
#include <QUuid>
#include <QtTest>

// What is sent when the dialog is confirmed, and what its answer does.
class TestSaveSnapshotInfoWidgetSaving : public SaveDialogFixture
{
    Q_OBJECT

private slots:
    void overwritesTheVersionWhoseNameIsTypedWithBlanks();
    void savesANewVersionWhenTheCaseDiffers();
    void offersVersionOneWhenThereIsNoDevelopVersion();

    void refusesAnEmptyName_data();
    void refusesAnEmptyName();
    void rejectsItselfWithoutAnApp();
    void writesTheWholeRecordOfAnOverwrite();
    void writesTheWholeRecordOfANewVersion();
    void writesTheTypedNameThoughTheVersionWasRenamed();
    void writesThePackagesThatTheProcessUses_data();
    void writesThePackagesThatTheProcessUses();
    void isConfirmedByReturn();
    void waitsForItsAnswer();
    void sendsOnceWhileItWaits();
    void staysOpenAfterARefusal_data();
    void staysOpenAfterARefusal();
    void ignoresTheAnswerOfAnotherRequester_data();
    void ignoresTheAnswerOfAnotherRequester();
    void doesNotDisturbTheHandle();
    void countsAnAnswerOnlyWhenItIsConfirmedTwice();
    void staysDisabledWhenTheVersionIsGone();
    void isAnsweredOnceWhateverTheServerDoes_data();
    void isAnsweredOnceWhateverTheServerDoes();
    void mayBeClosedWhileItWaits();
};

void TestSaveSnapshotInfoWidgetSaving::overwritesTheVersionWhoseNameIsTypedWithBlanks()
{
    // given
    Open();
    user->TypeName(Text("  版本1 "));

    // when
    user->PressOK();

    // then
    QTRY_VERIFY(!dialog->isVisible());
    QCOMPARE(dialog->result(), int(QDialog::Accepted));
    QCOMPARE(dialog->GetSavedSnapshotId(), QStringLiteral("v1"));
    QCOMPARE(service->server.GetRequests().constFirst().method, QByteArray("PUT"));
    QCOMPARE(service->server.GetRequests().constFirst().path, QByteArray("/api/v1/versions/v1"));
    QCOMPARE(service->toasts.GetCount(), 0);
}

void TestSaveSnapshotInfoWidgetSaving::savesANewVersionWhenTheCaseDiffers()
{
    // given
    Manager()->AddOrReplace(VersionServiceFixture::MakeSnapshot(
        QStringLiteral("v4"), QStringLiteral("version"), AppSnapshotDevelop));
    Open();
    user->TypeName(QStringLiteral("Version"));

    // when
    user->PressOK();

    // then
    QTRY_VERIFY(!dialog->isVisible());
    QCOMPARE(service->server.GetRequests().constFirst().method, QByteArray("POST"));
    QCOMPARE(dialog->GetSavedSnapshotId(), QStringLiteral("v9"));
}

void TestSaveSnapshotInfoWidgetSaving::offersVersionOneWhenThereIsNoDevelopVersion()
{
    // given
    Manager()->SetSnapshots(
        {VersionServiceFixture::MakeSnapshot(QStringLiteral("v3"), Text("灰度版"), AppSnapshotGray)});
    Open();
    QCOMPARE(user->Names(), QStringList{Text("版本1")});
    QCOMPARE(user->name->itemData(0), QVariant(QString()));

    // when
    user->PickRow(0);
    user->PressOK();

    // then
    QTRY_VERIFY(!dialog->isVisible());
    const FaultServer::Request request = service->server.GetRequests().constFirst();
    QCOMPARE(request.method, QByteArray("POST"));
    QCOMPARE(QString::fromUtf8(QByteArray::fromPercentEncoding(request.headers.value("version-name"))),
             Text("版本1"));
}

void TestSaveSnapshotInfoWidgetSaving::refusesAnEmptyName_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("nothing") << QString();
    QTest::newRow("blanks") << QStringLiteral("   ");
}

void TestSaveSnapshotInfoWidgetSaving::refusesAnEmptyName()
{
    QFETCH(QString, name);

    // given
    Open();
    user->TypeName(name);

    // when
    user->PressOK();

    // then
    QCOMPARE(service->toasts.GetToasts(), (QVector<SeenToast>{{Text("提示：版本名称不能为空"), 2}}));
    QVERIFY(dialog->isVisible());
    QVERIFY(user->name->isEnabled());
    QVERIFY(app->GetModified());
}

void TestSaveSnapshotInfoWidgetSaving::rejectsItselfWithoutAnApp()
{
    // given
    app.reset();
    Open();
    user->TypeName(Text("新版本"));

    // when
    user->PressOK();

    // then
    QVERIFY(!dialog->isVisible());
    QCOMPARE(dialog->result(), int(QDialog::Rejected));
    QCOMPARE(service->toasts.GetToasts(),
             (QVector<SeenToast>{{Text("版本数据为空，无法保存"), int(ToastInformation)}}));
    QCOMPARE(service->server.GetRequestCount(), 0);
}

void TestSaveSnapshotInfoWidgetSaving::writesTheWholeRecordOfAnOverwrite()
{
    // given
    RpaGlobalDataManager::Instance()->SetApiVersion(QStringLiteral("1.2.0"));
    Open();
    user->TypeName(Text("版本1"));
    user->desc->setPlainText(Text("  新的说明 "));

    // when
    user->PressOK();

    // then
    const RpaAppSnapshotPtr snapshot = Manager()->GetSnapshot(QStringLiteral("v1"));
    QCOMPARE(snapshot->GetName(), Text("版本1"));
    QCOMPARE(snapshot->GetDesc(), Text("新的说明"));
    QCOMPARE(snapshot->GetAppData().toUtf8(), app->ToJson());
    QCOMPARE(snapshot->GetApiVersion(), QStringLiteral("1.2.0"));
    QCOMPARE(snapshot->GetPin(), QStringLiteral("author"));
    QCOMPARE(app->GetVersion(), QStringLiteral("1.2.0"));
    QVERIFY(!app->GetModified());
    QTRY_VERIFY(!dialog->isVisible());
}

void TestSaveSnapshotInfoWidgetSaving::writesTheWholeRecordOfANewVersion()
{
    // given
    Open();
    user->TypeName(Text("新版本"));
    user->desc->setPlainText(Text(" 第一稿 "));

    // when
    user->PressOK();

    // then
    QTRY_VERIFY(!dialog->isVisible());
    const FaultServer::Request request = service->server.GetRequests().constFirst();
    const auto header = [&request](const char* name) {
        return QString::fromUtf8(QByteArray::fromPercentEncoding(request.headers.value(name)));
    };
    QCOMPARE(request.path, QByteArray("/api/v1/apps/app1/versions"));
    QCOMPARE(header("version-name"), Text("新版本"));
    QCOMPARE(header("version-description"), Text("第一稿"));
    QCOMPARE(request.body, app->ToJson());
    QVERIFY(!app->GetModified());
}

void TestSaveSnapshotInfoWidgetSaving::writesTheTypedNameThoughTheVersionWasRenamed()
{
    // given
    Open();
    user->TypeName(Text("版本1"));
    Manager()->GetSnapshot(QStringLiteral("v1"))->SetName(Text("别人起的名字"));

    // when
    user->PressOK();

    // then
    QCOMPARE(Manager()->GetSnapshot(QStringLiteral("v1"))->GetName(), Text("版本1"));
    QTRY_VERIFY(!dialog->isVisible());
}

void TestSaveSnapshotInfoWidgetSaving::writesThePackagesThatTheProcessUses_data()
{
    QTest::addColumn<QString>("name");

    QTest::newRow("new version") << Text("新版本");
    QTest::newRow("overwrite") << Text("版本1");
}

void TestSaveSnapshotInfoWidgetSaving::writesThePackagesThatTheProcessUses()
{
    QFETCH(QString, name);

    // given
    app = VersionServiceFixture::MakeAppThatUses(QStringLiteral("excel.create"));
    Open();
    user->TypeName(name);

    // when
    user->PressOK();

    // then
    QTRY_VERIFY(!dialog->isVisible());
    RpaAppData written;
    written.Parse(service->server.GetRequests().constFirst().body);
    const auto packages = written.GetPackageInfo()->GetListPackageItemPtr();
    QCOMPARE(packages.size(), 1);
    QCOMPARE(packages.constFirst()->name, QStringLiteral("openpyxl"));
}

void TestSaveSnapshotInfoWidgetSaving::isConfirmedByReturn()
{
    // given
    Open();
    user->TypeName(Text("版本2"));

    // when
    QTest::keyClick(user->name->lineEdit(), Qt::Key_Return);

    // then
    QTRY_VERIFY(!dialog->isVisible());
    QCOMPARE(dialog->GetSavedSnapshotId(), QStringLiteral("v2"));
}

void TestSaveSnapshotInfoWidgetSaving::waitsForItsAnswer()
{
    // given
    Open();
    user->TypeName(Text("新版本"));

    // when
    user->PressOK();

    // then
    QVERIFY(dialog->isVisible());
    QVERIFY(!user->name->isEnabled());
    QVERIFY(!user->labelDesc->isEnabled());
    QVERIFY(user->desc->isEnabled());
    QTRY_VERIFY(!dialog->isVisible());
    QVERIFY(user->name->isEnabled());
    QVERIFY(user->labelDesc->isEnabled());
}

void TestSaveSnapshotInfoWidgetSaving::sendsOnceWhileItWaits()
{
    // given
    Open();
    user->TypeName(Text("新版本"));

    // when
    user->PressOK();
    user->PressOK();

    // then
    QTRY_VERIFY(!dialog->isVisible());
    QCOMPARE(service->server.GetRequestCount(), 1);
}

void TestSaveSnapshotInfoWidgetSaving::staysOpenAfterARefusal_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("status");
    for (int status : {401, 404, 409, 412, 413, 500, 503}) {
        QTest::addRow("new version, %d", status) << Text("新版本") << status;
        QTest::addRow("overwrite, %d", status) << Text("版本1") << status;
    }
}

void TestSaveSnapshotInfoWidgetSaving::staysOpenAfterARefusal()
{
    QFETCH(QString, name);
    QFETCH(int, status);

    // given
    service->server.SetScript([status](const FaultServer::Request&) {
        return FaultServer::Refusal(status, "refused", Text("服务器的理由"));
    });
    Open();
    user->TypeName(name);

    // when
    user->PressOK();

    // then
    QTRY_COMPARE(service->recorder.answers.size(), 1);
    const QString told = service->recorder.answers.constFirst().response->GetErrorDesc();
    QCOMPARE(service->toasts.GetToasts(), (QVector<SeenToast>{{told, 2}}));
    QVERIFY(dialog->isVisible());
    QVERIFY(user->name->isEnabled());
    QVERIFY(user->labelDesc->isEnabled());
    service->server.SetScript(&VersionServiceFixture::AnswerRightly);
    user->PressOK();
    QTRY_VERIFY(!dialog->isVisible());
    QCOMPARE(dialog->result(), int(QDialog::Accepted));
}

void TestSaveSnapshotInfoWidgetSaving::ignoresTheAnswerOfAnotherRequester_data()
{
    QTest::addColumn<bool>("success");
    QTest::newRow("success") << true;
    QTest::newRow("failure") << false;
}

void TestSaveSnapshotInfoWidgetSaving::ignoresTheAnswerOfAnotherRequester()
{
    QFETCH(bool, success);

    // given
    Open();
    user->TypeName(Text("新版本"));
    user->PressOK();

    // when
    const auto save = QSharedPointer<SaveAppSnapshotInfoRequest>::create();
    save->SetIdentity(QUuid::createUuid().toString());
    save->SetSnapshotInfoPtr(RpaAppSnapshotPtr::create());
    const auto update = QSharedPointer<UpdateAppSnapshotInfoRequest>::create();
    update->SetIdentity(QUuid::createUuid().toString());
    update->SetSnapshotInfoPtr(RpaAppSnapshotPtr::create());
    InjectAnswer(NotifySaveAppSnapshotInfo, save, Outcome(success, Text("别人的错误")));
    InjectAnswer(NotifyUpdateAppSnapshotInfo, update, Outcome(success, Text("别人的错误")));

    // then
    QVERIFY(dialog->isVisible());
    QVERIFY(!user->name->isEnabled());
    QCOMPARE(service->toasts.GetCount(), 0);
    QTRY_VERIFY(!dialog->isVisible());
    QCOMPARE(dialog->GetSavedSnapshotId(), QStringLiteral("v9"));
}

void TestSaveSnapshotInfoWidgetSaving::doesNotDisturbTheHandle()
{
    // given
    RpaAppEditorHandle handle;
    QSignalSpy saved(&handle, &RpaAppEditorHandle::SigSaveAppSnapshot);
    QSignalSpy finished(&handle, &RpaAppEditorHandle::SigSaveFinished);
    Open();
    user->TypeName(Text("新版本"));

    // when
    user->PressOK();

    // then
    QTRY_VERIFY(!dialog->isVisible());
    QCOMPARE(saved.size(), 0);
    QCOMPARE(finished.size(), 0);
    QCOMPARE(service->toasts.GetCount(), 0);
}

void TestSaveSnapshotInfoWidgetSaving::countsAnAnswerOnlyWhenItIsConfirmedTwice()
{
    // given
    VersionServiceFixture::UseShortDeadlines();
    service->server.SetScript(
        [](const FaultServer::Request&) { return FaultServer::Failing(FaultServer::Fault::Silence); });
    Open();
    user->TypeName(Text("新版本"));
    user->PressOK();
    QTRY_COMPARE(service->recorder.answers.size(), 1);
    service->toasts.Clear();

    // when
    InjectAnswer(NotifySaveAppSnapshotInfo, service->recorder.answers.constFirst().request,
                 QSharedPointer<FickleResponse>::create());

    // then
    QVERIFY(dialog->isVisible());
    QCOMPARE(service->toasts.GetToasts(), (QVector<SeenToast>{{Text("第二次检查失败"), 2}}));
}

void TestSaveSnapshotInfoWidgetSaving::staysDisabledWhenTheVersionIsGone()
{
    // given
    Open();
    user->TypeName(Text("版本1"));
    Manager()->Remove(QStringLiteral("v1"));

    // when
    user->PressOK();

    // then
    QVERIFY(dialog->isVisible());
    QVERIFY(!user->name->isEnabled());
    QVERIFY(!user->labelDesc->isEnabled());
    QCOMPARE(service->toasts.GetCount(), 0);
    QCOMPARE(service->server.GetRequestCount(), 0);
    QTest::mouseClick(user->cancel, Qt::LeftButton);
    QVERIFY(!dialog->isVisible());
}

void TestSaveSnapshotInfoWidgetSaving::isAnsweredOnceWhateverTheServerDoes_data()
{
    AddFaultRows();
}

void TestSaveSnapshotInfoWidgetSaving::isAnsweredOnceWhateverTheServerDoes()
{
    QFETCH(FaultServer::Fault, fault);

    // given
    service->Misbehave(fault);
    Open();
    user->TypeName(Text("新版本"));

    // when
    user->PressOK();

    // then
    QTRY_COMPARE(service->recorder.answers.size(), 1);
    const bool saved = service->recorder.answers.constFirst().response->IsSuccess();
    QCOMPARE(dialog->isVisible(), !saved);
    QCOMPARE(service->toasts.GetCount(), saved ? 0 : 1);
    QVERIFY(user->name->isEnabled());
}

void TestSaveSnapshotInfoWidgetSaving::mayBeClosedWhileItWaits()
{
    // given
    Open();
    user->TypeName(Text("新版本"));
    user->PressOK();

    // when
    user.reset();
    dialog.reset();

    // then
    QTRY_COMPARE(service->recorder.answers.size(), 1);
    QCOMPARE(service->toasts.GetCount(), 0);
}

RPA_TEST_MAIN(TestSaveSnapshotInfoWidgetSaving)

#include "tst_savesnapshotinfowidget_saving.moc"
