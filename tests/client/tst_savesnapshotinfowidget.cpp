#include "RpaAppEditorHandle.h"
#include "SaveSnapshotInfoWidget.h"
#include "TestApp.h"
#include "VersionServiceFixture.h"

#include <RpaCore/RpaGlobalDataManager.h>
#include <RpaEditorCore/RpaSnapshotManager.h>
#include <RpaEditorLogic/RpaEditorLogic.h>
#include <RpaEditorLogic/RpaNotifyId.h>
#include <RpaEditorLogic/SaveLedger.h>
#include <WbBaseUI/WbEditableCombo.h>
#include <WbBaseUI/WbLabel.h>
#include <WbBaseUI/WbPushButton.h>
#include <WbBaseUI/WbTextEdit.h>
#include <WbBaseUI/WbToast.h>

#include <QBoxLayout>
#include <QClipboard>
#include <QLineEdit>
#include <QSignalSpy>
#include <QUuid>
#include <QtTest>

#include <memory>

namespace
{

// The dialog as its user reaches it.
class DialogUser
{
public:
    explicit DialogUser(SaveSnapshotInfoWidget& dialogIn)
        : dialog(dialogIn), name(dialog.findChild<WbEditableCombo*>(QStringLiteral("comboBoxName"))),
          desc(dialog.findChild<WbTextEdit*>(QStringLiteral("plainTextEdit"))),
          labelDesc(dialog.findChild<WbLabel*>(QStringLiteral("labelDesc"))),
          ok(dialog.findChild<WbPushButton*>(QStringLiteral("pushButtonOK"))),
          cancel(dialog.findChild<WbPushButton*>(QStringLiteral("pushButtonCancel")))
    {
    }

    void TypeName(const QString& text) const
    {
        name->lineEdit()->selectAll();
        QTest::keyClick(name->lineEdit(), Qt::Key_Delete);
        for (const QChar character : text) {
            QTest::sendKeyEvent(QTest::Click, name->lineEdit(), Qt::Key_unknown, QString(character),
                                Qt::NoModifier);
        }
    }

    void PickRow(int row) const
    {
        name->setCurrentIndex(row);
        emit name->activated(row);
    }

    void PressOK() const { QTest::mouseClick(ok, Qt::LeftButton); }

    QStringList Names() const
    {
        QStringList names;
        for (int i = 0; i < name->count(); ++i) {
            names.append(name->itemText(i));
        }
        return names;
    }

    SaveSnapshotInfoWidget& dialog;
    WbEditableCombo* const name;
    WbTextEdit* const desc;
    WbLabel* const labelDesc;
    WbPushButton* const ok;
    WbPushButton* const cancel;
};

} // namespace

class TestSaveSnapshotInfoWidget : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void showsItsTexts();
    void keepsTheMeasuresOfItsForm();
    void offersTheDevelopVersionsInOrder();
    void startsWithAnEmptyNameAndItsHint();

    void overwritesTheVersionWhoseNameIsTypedWithBlanks();
    void savesANewVersionWhenTheCaseDiffers();
    void offersVersionOneWhenThereIsNoDevelopVersion();
    void keepsTheFirstFiftyCharactersOfAPaste();
    void removesWhatIsTypedIntoAFullDescription();
    void removesTheRowOfAVersionDeletedElsewhere();
    void takesNoNameBeyondTwentyCharacters();

    void keepsWholeCharactersAtTheLimit();
    void cutsALongDescriptionOfTheServer();
    void showsMarkupInADescriptionAsText();
    void refusesAnEmptyName_data();
    void refusesAnEmptyName();
    void rejectsItselfWithoutAnApp();
    void cancels();
    void showsTheDescriptionOfThePickedVersion();
    void clearsTheDescriptionForANewName();
    void writesTheWholeRecordOfAnOverwrite();
    void writesTheWholeRecordOfANewVersion();
    void waitsForItsAnswer();
    void sendsOnceWhileItWaits();
    void staysOpenAfterARefusal_data();
    void staysOpenAfterARefusal();
    void ignoresTheAnswerOfAnotherRequester_data();
    void ignoresTheAnswerOfAnotherRequester();
    void doesNotDisturbTheHandle();
    void countsAnAnswerOnlyWhenItIsConfirmedTwice();
    void staysDisabledWhenTheVersionIsGone();
    void deletesTheNamedVersion();
    void showsAFailedDeletion();
    void keepsTheTypedNameWhenAnotherVersionGoes();
    void isAnsweredOnceWhateverTheServerDoes_data();
    void isAnsweredOnceWhateverTheServerDoes();
    void mayBeClosedWhileItWaits();

private:
    void Open();

    std::unique_ptr<VersionServiceFixture> service;
    std::unique_ptr<SaveSnapshotInfoWidget> dialog;
    std::unique_ptr<DialogUser> user;
    RpaAppDataPtr app;
};

void TestSaveSnapshotInfoWidget::init()
{
    service = std::make_unique<VersionServiceFixture>();
    app = VersionServiceFixture::MakeModifiedApp();
}

void TestSaveSnapshotInfoWidget::cleanup()
{
    user.reset();
    dialog.reset();
    QTRY_VERIFY(!RpaEditorLogic::Instance()->GetSaveLedger()->HasSavesInFlight());
    service.reset();
}

void TestSaveSnapshotInfoWidget::Open()
{
    dialog = std::make_unique<SaveSnapshotInfoWidget>(&service->window);
    dialog->SetCurrentVersionText(Text("【灰度】灰度版"));
    dialog->SetAppData(app);
    dialog->show();
    user = std::make_unique<DialogUser>(*dialog);
}

void TestSaveSnapshotInfoWidget::showsItsTexts()
{
    Open();

    QCOMPARE(dialog->windowTitle(), Text("另存为"));
    QCOMPARE(dialog->findChild<WbLabel*>(QStringLiteral("labelVersion"))->text(), Text("当前版本："));
    QCOMPARE(dialog->findChild<WbLabel*>(QStringLiteral("labelVersionCurrent"))->text(),
             Text("【灰度】灰度版"));
    QCOMPARE(dialog->findChild<WbLabel*>(QStringLiteral("labelName"))->text(), Text("版本名称："));
    QCOMPARE(user->labelDesc->text(), Text("版本描述："));
    QCOMPARE(user->desc->placeholderText(), Text("版本描述不超过50字符"));
    QCOMPARE(user->name->lineEdit()->placeholderText(), Text("输入新版本名称或下拉选择覆盖版本"));
    QCOMPARE(user->ok->text(), Text("确定"));
    QCOMPARE(user->cancel->text(), Text("取消"));
    QCOMPARE(user->ok->GetButtonType(), 1);
    QCOMPARE(user->cancel->GetButtonType(), 3);
    QCOMPARE(user->name->GetBusinessStyle(), 1);
}

void TestSaveSnapshotInfoWidget::keepsTheMeasuresOfItsForm()
{
    Open();

    const auto layout = [this](const char* name) {
        return dialog->findChild<QBoxLayout*>(QLatin1String(name));
    };
    QVERIFY(dialog->findChild<QWidget*>(QStringLiteral("SaveSnapshotInfoWidget")));
    QCOMPARE(dialog->GetContentWidget()->size(), QSize(528, 420));
    QCOMPARE(dialog->GetContentWidget()->windowTitle(), QStringLiteral("SaveSnapshotInfoWidget"));
    QCOMPARE(layout("verticalLayout")->spacing(), 40);
    QCOMPARE(layout("verticalLayout")->contentsMargins(), QMargins(0, 32, 0, 52));
    QCOMPARE(layout("verticalLayout_2")->spacing(), 16);
    QCOMPARE(layout("verticalLayout_2")->contentsMargins(), QMargins(72, 0, 104, 0));
    QCOMPARE(layout("horizontalLayout_3")->spacing(), 8);
    QCOMPARE(layout("horizontalLayout")->spacing(), 8);
    QCOMPARE(layout("horizontalLayout_4")->spacing(), 8);
    QCOMPARE(layout("horizontalLayout_2")->spacing(), 12);
    QCOMPARE(layout("horizontalLayout_2")->itemAt(0)->spacerItem()->sizeHint(), QSize(40, 20));
    QCOMPARE(user->name->sizePolicy().horizontalPolicy(), QSizePolicy::Expanding);
    QCOMPARE(user->name->sizePolicy().verticalPolicy(), QSizePolicy::Fixed);
}

void TestSaveSnapshotInfoWidget::offersTheDevelopVersionsInOrder()
{
    Open();

    QCOMPARE(user->Names(), QStringList({Text("版本1"), Text("版本2")}));
    QCOMPARE(user->name->itemData(0).toString(), QStringLiteral("v1"));
    QCOMPARE(user->name->itemData(1).toString(), QStringLiteral("v2"));
}

void TestSaveSnapshotInfoWidget::startsWithAnEmptyNameAndItsHint()
{
    Open();

    QCOMPARE(user->name->currentIndex(), -1);
    QCOMPARE(user->name->currentText(), QString());
    QCOMPARE(user->desc->toPlainText(), QString());
}

void TestSaveSnapshotInfoWidget::overwritesTheVersionWhoseNameIsTypedWithBlanks()
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

void TestSaveSnapshotInfoWidget::savesANewVersionWhenTheCaseDiffers()
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

void TestSaveSnapshotInfoWidget::offersVersionOneWhenThereIsNoDevelopVersion()
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

void TestSaveSnapshotInfoWidget::keepsTheFirstFiftyCharactersOfAPaste()
{
    // given
    Open();
    QString pasted;
    for (int i = 0; i < 80; ++i) {
        pasted.append(QChar(u'一' + i));
    }
    QApplication::clipboard()->setText(pasted);

    // when
    user->desc->paste();

    // then
    QCOMPARE(user->desc->toPlainText(), pasted.left(50));
    QCOMPARE(user->desc->textCursor().position(), 50);
    QVERIFY(!user->desc->textCursor().hasSelection());
}

void TestSaveSnapshotInfoWidget::removesWhatIsTypedIntoAFullDescription()
{
    // given
    Open();
    const QString full(50, QLatin1Char('a'));
    user->desc->setPlainText(full);
    QTextCursor cursor = user->desc->textCursor();
    cursor.setPosition(20);
    user->desc->setTextCursor(cursor);

    // when
    QTest::keyClicks(user->desc, QStringLiteral("xyz"));

    // then
    QCOMPARE(user->desc->toPlainText(), full);
    QCOMPARE(user->desc->textCursor().position(), 20);
    QCOMPARE(user->desc->textCursor().anchor(), 20);
}

void TestSaveSnapshotInfoWidget::removesTheRowOfAVersionDeletedElsewhere()
{
    // given
    RpaAppEditorHandle handle;
    Open();
    user->TypeName(Text("版本1"));
    QCOMPARE(user->desc->toPlainText(), Text("说明1"));

    // when
    handle.DeleteSnapshot(QStringLiteral("app1"), QStringLiteral("v1"));

    // then
    QTRY_COMPARE(user->Names(), QStringList{Text("版本2")});
    QCOMPARE(service->toasts.GetToasts(), (QVector<SeenToast>{{Text("删除成功"), int(ToastInformation)}}));
    QCOMPARE(user->name->currentText(), Text("版本1"));
    QCOMPARE(user->desc->toPlainText(), QString());
}

void TestSaveSnapshotInfoWidget::takesNoNameBeyondTwentyCharacters()
{
    Open();

    user->TypeName(QString(25, QLatin1Char('n')));

    QCOMPARE(user->name->currentText(), QString(20, QLatin1Char('n')));
}

void TestSaveSnapshotInfoWidget::keepsWholeCharactersAtTheLimit()
{
    // given
    Open();
    const QString almostFull(49, QLatin1Char('a'));
    QApplication::clipboard()->setText(almostFull + Text("😀"));

    // when
    user->desc->paste();

    // then
    QCOMPARE(user->desc->toPlainText(), almostFull);
    QCOMPARE(user->desc->textCursor().position(), 49);
}

void TestSaveSnapshotInfoWidget::cutsALongDescriptionOfTheServer()
{
    // given
    const QString longText = QString(50, QLatin1Char('a')) + QString(70, QLatin1Char('b'));
    Manager()->GetSnapshot(QStringLiteral("v2"))->SetDesc(longText);
    Open();

    // when
    user->TypeName(Text("版本2"));

    // then
    QCOMPARE(user->desc->toPlainText(), longText.left(50));
}

void TestSaveSnapshotInfoWidget::showsMarkupInADescriptionAsText()
{
    // given
    Manager()->GetSnapshot(QStringLiteral("v2"))->SetDesc(QStringLiteral("<b>x</b><img src='http://h/'>"));
    Open();

    // when
    user->PickRow(1);

    // then
    QCOMPARE(user->desc->toPlainText(), QStringLiteral("<b>x</b><img src='http://h/'>"));
}

void TestSaveSnapshotInfoWidget::refusesAnEmptyName_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("nothing") << QString();
    QTest::newRow("blanks") << QStringLiteral("   ");
}

void TestSaveSnapshotInfoWidget::refusesAnEmptyName()
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

void TestSaveSnapshotInfoWidget::rejectsItselfWithoutAnApp()
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

void TestSaveSnapshotInfoWidget::cancels()
{
    Open();

    QTest::mouseClick(user->cancel, Qt::LeftButton);

    QVERIFY(!dialog->isVisible());
    QCOMPARE(dialog->result(), int(QDialog::Rejected));
    QVERIFY(app->GetModified());
}

void TestSaveSnapshotInfoWidget::showsTheDescriptionOfThePickedVersion()
{
    Open();

    user->PickRow(0);

    QCOMPARE(user->name->currentText(), Text("版本1"));
    QCOMPARE(user->desc->toPlainText(), Text("说明1"));
}

void TestSaveSnapshotInfoWidget::clearsTheDescriptionForANewName()
{
    // given
    Open();
    user->TypeName(Text("版本1"));
    QCOMPARE(user->desc->toPlainText(), Text("说明1"));

    // when
    QTest::keyClicks(user->name->lineEdit(), QStringLiteral("0"));

    // then
    QCOMPARE(user->desc->toPlainText(), QString());
}

void TestSaveSnapshotInfoWidget::writesTheWholeRecordOfAnOverwrite()
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

void TestSaveSnapshotInfoWidget::writesTheWholeRecordOfANewVersion()
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

void TestSaveSnapshotInfoWidget::waitsForItsAnswer()
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

void TestSaveSnapshotInfoWidget::sendsOnceWhileItWaits()
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

void TestSaveSnapshotInfoWidget::staysOpenAfterARefusal_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("status");
    for (int status : {401, 404, 409, 412, 413, 500, 503}) {
        QTest::addRow("new version, %d", status) << Text("新版本") << status;
        QTest::addRow("overwrite, %d", status) << Text("版本1") << status;
    }
}

void TestSaveSnapshotInfoWidget::staysOpenAfterARefusal()
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

void TestSaveSnapshotInfoWidget::ignoresTheAnswerOfAnotherRequester_data()
{
    QTest::addColumn<bool>("success");
    QTest::newRow("success") << true;
    QTest::newRow("failure") << false;
}

void TestSaveSnapshotInfoWidget::ignoresTheAnswerOfAnotherRequester()
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

void TestSaveSnapshotInfoWidget::doesNotDisturbTheHandle()
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

void TestSaveSnapshotInfoWidget::countsAnAnswerOnlyWhenItIsConfirmedTwice()
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

void TestSaveSnapshotInfoWidget::staysDisabledWhenTheVersionIsGone()
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

void TestSaveSnapshotInfoWidget::deletesTheNamedVersion()
{
    // given
    Open();
    user->TypeName(Text(" 版本2"));

    // when
    QVERIFY(QMetaObject::invokeMethod(dialog.get(), "SlotDelete"));

    // then
    QTRY_COMPARE(user->Names(), QStringList{Text("版本1")});
    const auto request =
        service->recorder.answers.constFirst().request.objectCast<DeleteAppSnapshotInfoRequest>();
    QCOMPARE(request->GetSnapshotId(), QStringLiteral("v2"));
    QVERIFY(request->GetAppId().isEmpty());
    QVERIFY(request->GetIdentity().isEmpty());
    QCOMPARE(service->toasts.GetTexts(), QStringList{Text("删除成功")});
}

void TestSaveSnapshotInfoWidget::showsAFailedDeletion()
{
    Open();

    InjectAnswer(NotifyDeleteAppSnapshotInfo, QSharedPointer<DeleteAppSnapshotInfoRequest>::create(),
                 Outcome(false, Text("不能删除")));

    QCOMPARE(service->toasts.GetToasts(), (QVector<SeenToast>{{Text("不能删除"), 2}}));
    QCOMPARE(user->name->count(), 2);
}

void TestSaveSnapshotInfoWidget::keepsTheTypedNameWhenAnotherVersionGoes()
{
    // given
    Open();
    user->PickRow(0);
    user->TypeName(Text("草稿"));
    const auto request = QSharedPointer<DeleteAppSnapshotInfoRequest>::create();
    request->SetSnapshotId(QStringLiteral("v1"));

    // when
    InjectAnswer(NotifyDeleteAppSnapshotInfo, request, Outcome(true));

    // then
    QCOMPARE(user->Names(), QStringList{Text("版本2")});
    QCOMPARE(user->name->currentText(), Text("草稿"));
}

void TestSaveSnapshotInfoWidget::isAnsweredOnceWhateverTheServerDoes_data()
{
    QTest::addColumn<FaultServer::Fault>("fault");
    for (FaultServer::Fault fault : FaultServer::AllFaults()) {
        QTest::newRow(FaultServer::NameOf(fault)) << fault;
    }
}

void TestSaveSnapshotInfoWidget::isAnsweredOnceWhateverTheServerDoes()
{
    QFETCH(FaultServer::Fault, fault);

    // given
    VersionServiceFixture::UseShortDeadlines();
    service->server.SetScript([fault](const FaultServer::Request& request) {
        FaultServer::Reply reply = VersionServiceFixture::AnswerRightly(request);
        reply.fault = fault;
        return reply;
    });
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

void TestSaveSnapshotInfoWidget::mayBeClosedWhileItWaits()
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

RPA_TEST_MAIN(TestSaveSnapshotInfoWidget)

#include "tst_savesnapshotinfowidget.moc"
