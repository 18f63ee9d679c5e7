// SPDX-License-Identifier: Apache-2.0

// What is saved, and into which version.
#include "EditorCalls.h"
#include "ModalDriver.h"
#include "TestApp.h"
#include "ToastWatcher.h"

#include <RpaAppData/RpaAppExtendInfo.h>
#include <RpaCore/RpaGlobalLifeCycle.h>
#include <RpaEditorManager/RpaAppEditorWidget.h>
#include <RpaProcessData/RpaPackageInfo.h>

#include <QComboBox>
#include <QDialog>
#include <QtTest>

namespace
{
const QString yes = QStringLiteral("是");

// Presses the button of the box and answers the save that it starts.
ModalDriver::Step PressAndAnswer(const QString& button, const std::function<void()>& answer)
{
    return [button, answer](QWidget* box) {
        QTimer::singleShot(0, qApp, answer);
        QVERIFY(ModalDriver::Press(box, button));
    };
}
} // namespace

class SavingCallsTest : public EditorCalls
{
    Q_OBJECT

private slots:
    void reportsASaveBeforeItSendsIt()
    {
        Open();

        author->Press("pushButtonSave");

        QCOMPARE(CallLog::Take(),
                 QStringList({QStringLiteral("event OXA_AppDevelop_Save"), QStringLiteral("overwrite v1")}));
    }

    void reportsSaveAsBeforeItAsksForAName()
    {
        Open();
        bool isAsking = true;
        CallLog::WhenNoted(QStringLiteral("event OXA_AppDevelop_Saveas"),
                           [&] { isAsking = author->GetEditor()->findChild<QDialog*>() != nullptr; });
        ModalDriver modals;
        modals.Then(&ModalDriver::Reject);

        author->Press("pushButtonSaveAs");

        QVERIFY(!isAsking);
        QCOMPARE(CallLog::Take(), QStringList(QStringLiteral("event OXA_AppDevelop_Saveas")));
        QVERIFY(!author->GetEditor()->findChild<QDialog*>()); // nothing of it is left
    }

    void savesIntoTheSelectedVersionWhileItIsStillLoading()
    {
        Open();
        PickWithoutData(QStringLiteral("乙版"));

        author->Press("pushButtonSave");

        QCOMPARE(CallLog::Take(),
                 QStringList({QStringLiteral("load v2"), QStringLiteral("event OXA_AppDevelop_Save"),
                              QStringLiteral("overwrite v2")}));
    }

    void theGuardSavesIntoTheSelectedVersionWhileItIsStillLoading()
    {
        Open();
        PickWithoutData(QStringLiteral("乙版"));
        author->TypeInstructions(QStringLiteral("my edit"));
        CallLog::Take();
        ModalDriver modals;
        modals.Then(PressAndAnswer(yes, [] { StandInRequests::AnswerOverwrite(); }));

        QCOMPARE(author->GetEditor()->BeforeClose(), BeforeCloseResult::Resolved);

        QCOMPARE(CallLog::Take(), QStringList(QStringLiteral("overwrite v2")));
    }

    void theGuardRefusesWhenTheServerDoes()
    {
        Open();
        author->TypeInstructions(QStringLiteral("my edit"));
        ToastWatcher toasts;
        ModalDriver modals;
        modals.Then(PressAndAnswer(
            yes, [] { StandInRequests::AnswerOverwrite(false, QStringLiteral("版本已被他人修改")); }));

        QVERIFY(!RpaGlobalLifeCycle::Instance()->BeforeClose());

        QCOMPARE(toasts.GetToasts(), QVector<SeenToast>({{QStringLiteral("版本已被他人修改"), 2}}));
    }

    void writesTheIdentityOfTheOpenedAppIntoWhatItSaves()
    {
        const QByteArray foreign = Content(QStringLiteral("hello"), [](RpaAppData& content) {
            content.GetAppExtendInfo()->SetAppId(QStringLiteral("another app"));
            content.GetAppExtendInfo()->SetOxsAppKey(QStringLiteral("another key"));
            content.GetAppExtendInfo()->SetAppKind(7);
        });
        Open(Versions(), foreign, 1);

        author->Press("pushButtonSave");

        const RpaAppDataPtr written = StandInRequests::ContentOf(StandInRequests::Overwritten());
        QCOMPARE(written->GetAppExtendInfo()->GetAppId(), QStringLiteral("app1"));
        QCOMPARE(written->GetAppExtendInfo()->GetOxsAppKey(), QStringLiteral("key1"));
        QCOMPARE(written->GetAppExtendInfo()->GetAppKind(), 1);
    }

    void savesThePackagesThatTheServiceWasConfiguredFor()
    {
        Open(Versions(), Content(QStringLiteral("hello")), 1);
        RpaPackageInfo chosen;
        const auto item = QSharedPointer<PackageItem>::create();
        item->name = QStringLiteral("requests");
        item->version = QStringLiteral("2.31.0");
        chosen.SetListPackageItemPtr({item});

        emit packages->SigSaveConfig(QString::fromUtf8(chosen.ToJson()));
        author->Press("pushButtonSave");

        const RpaAppDataPtr written = StandInRequests::ContentOf(StandInRequests::Overwritten());
        const auto items = written->GetPackageInfo()->GetListPackageItemPtr();
        QCOMPARE(items.size(), 1);
        QCOMPARE(items.first()->name, QStringLiteral("requests"));
        QCOMPARE(items.first()->version, QStringLiteral("2.31.0"));
    }

    void makesTheFirstSavedVersionTheOpenOne()
    {
        OpenWithoutVersions();
        author->Press("pushButtonSave");
        QCOMPARE(CallLog::Take(),
                 QStringList({QStringLiteral("event OXA_AppDevelop_Save"), QStringLiteral("save 版本1")}));

        StandInRequests::AnswerSave(QStringLiteral("v9"));

        QCOMPARE(author->GetVersions(),
                 QStringList({QStringLiteral("版本1"), QStringLiteral("【灰度】丙版")}));
        QCOMPARE(author->GetSelectedVersion(), QStringLiteral("版本1"));
        author->Press("pushButtonSave");
        QCOMPARE(CallLog::Take(),
                 QStringList({QStringLiteral("event OXA_AppDevelop_Save"), QStringLiteral("overwrite v9")}));
    }

    void selectsNoVersionWhenTheSavedOneIsNotListed()
    {
        OpenWithoutVersions();
        author->Press("pushButtonSave");

        StandInRequests::AnswerSaveUnlisted(QStringLiteral("v9"));

        QCOMPARE(author->GetSelectedVersion(), QString());
    }

    void goesOnWithTheOpenVersionAfterACancelledSaveAs()
    {
        Open();
        PickAndLoad(QStringLiteral("乙版"));
        ModalDriver modals;
        modals.Then([](QWidget* dialog) { QVERIFY(ModalDriver::Press(dialog, QStringLiteral("取消"))); });

        author->Press("pushButtonSaveAs");

        QCOMPARE(CallLog::Take(), QStringList(QStringLiteral("event OXA_AppDevelop_Saveas")));
        QCOMPARE(author->GetSelectedVersion(), QStringLiteral("乙版"));
        QVERIFY(QMetaObject::invokeMethod(author->GetEditor(), "SlotRefresh"));
        StandInRequests::AnswerList(Versions());
        QCOMPARE(CallLog::Take(), QStringList({QStringLiteral("list app1"), QStringLiteral("load v2")}));
    }

    void goesOnWithTheVersionThatWasSavedAs()
    {
        Open();
        PickAndLoad(QStringLiteral("丙版"));
        ModalDriver modals;
        modals.Then([](QWidget* dialog) {
            dialog->findChild<QComboBox*>(QStringLiteral("comboBoxName"))
                ->setEditText(QStringLiteral("乙版"));
            QVERIFY(ModalDriver::Press(dialog, QStringLiteral("确定")));
            StandInRequests::AnswerOverwrite();
        });

        author->Press("pushButtonSaveAs");

        QCOMPARE(CallLog::Take(), QStringList({QStringLiteral("event OXA_AppDevelop_Saveas"),
                                               QStringLiteral("overwrite v2")}));
        QCOMPARE(author->GetSelectedVersion(), QStringLiteral("乙版"));
        author->Press("pushButtonSave");
        QCOMPARE(CallLog::Take(),
                 QStringList({QStringLiteral("event OXA_AppDevelop_Save"), QStringLiteral("overwrite v2")}));
    }

    void isNotAskedAnyMoreOnceItIsGone()
    {
        Open();
        author->TypeInstructions(QStringLiteral("my edit"));

        author.reset();

        ModalDriver noQuestion;
        QVERIFY(RpaGlobalLifeCycle::Instance()->BeforeClose());
    }

    void asksEachEditorForItself()
    {
        Open();
        author->TypeInstructions(QStringLiteral("my edit"));
        EditorDriver other;
        ModalDriver modals;
        modals.Then([](QWidget* box) { QVERIFY(ModalDriver::Press(box, QStringLiteral("否"))); });

        QVERIFY(RpaGlobalLifeCycle::Instance()->BeforeClose());
        QCOMPARE(modals.GetSeenCount(), 1);
        QVERIFY(RpaGlobalLifeCycle::Instance()->BeforeClose());
        QCOMPARE(modals.GetSeenCount(), 1);
    }

private:
    // An app with a gray version only, opened with its default content.
    void OpenWithoutVersions()
    {
        author = std::make_unique<EditorDriver>();
        author->GetEditor()->SetExecuteInfo(App());
        StandInRequests::AnswerList({Versions(AppSnapshotGray).last()});
        QCOMPARE(author->GetSelectedVersion(), QStringLiteral("版本1"));
        CallLog::Take();
    }
};

RPA_TEST_MAIN(SavingCallsTest)
#include "tst_savingcalls.moc"
