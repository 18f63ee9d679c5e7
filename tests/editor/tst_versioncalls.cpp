// SPDX-License-Identifier: Apache-2.0

// What the editor asks for when versions are listed, opened, switched and deleted.
#include "EditorCalls.h"
#include "ModalDriver.h"
#include "TestApp.h"
#include "ToastWatcher.h"

#include <RpaCore/RpaGlobalDataManager.h>
#include <RpaEditorManager/RpaAppEditorWidget.h>
#include <RpaPackage/RpaPackageModule.h>
#include <RpaProcessData/RpaPackageInfo.h>

#include <QComboBox>
#include <QLabel>
#include <QListWidget>
#include <QTabBar>
#include <QtTest>

namespace
{
ModalDriver::Step Press(const QString& button)
{
    return [button](QWidget* box) { QVERIFY(ModalDriver::Press(box, button)); };
}
const QString yes = QStringLiteral("是");
const QString no = QStringLiteral("否");
} // namespace

class VersionCallsTest : public EditorCalls
{
    Q_OBJECT

private slots:
    void opensTheFirstVersionStepByStep()
    {
        EditorDriver opening;
        QCOMPARE(CallLog::Take(),
                 QStringList({QStringLiteral("browser tool bar"), QStringLiteral("browser embedded"),
                              QStringLiteral("browser: some")}));

        opening.GetEditor()->SetExecuteInfo(App());
        QCOMPARE(CallLog::Take(), QStringList(QStringLiteral("list app1")));
        StandInRequests::AnswerList(Versions());
        QCOMPARE(CallLog::Take(), QStringList(QStringLiteral("load v1")));
        QCOMPARE(opening.GetVersions(), QStringList());
        StandInRequests::AnswerData(Content(QStringLiteral("hello")));

        QCOMPARE(CallLog::Take(), QStringList({QStringLiteral("log emptied"), QStringLiteral("browser reset"),
                                               QStringLiteral("packages are: ")}));
        QCOMPARE(opening.GetVersions(),
                 QStringList({QStringLiteral("甲版"), QStringLiteral("乙版"), QStringLiteral("丙版")}));
    }

    void saysThatItLoadsBeforeItAsksForTheList()
    {
        Open();
        QCOMPARE(author->GetStatus(), RequestStatus::Succeeded);
        RequestStatus then = RequestStatus::Failed;
        CallLog::WhenNoted(QStringLiteral("list app1"), [&] { then = author->GetStatus(); });

        QVERIFY(QMetaObject::invokeMethod(author->GetEditor(), "SlotRefresh"));

        QCOMPARE(then, RequestStatus::Loading);
    }

    void listsTheVersionsBeforeItMakesTheEditorOfAProgram()
    {
        author = std::make_unique<EditorDriver>();
        author->GetEditor()->SetExecuteInfo(App(1));
        StandInRequests::AnswerList(Versions());
        QStringList listed;
        CallLog::WhenNoted(QStringLiteral("packages are: "), [&] { listed = author->GetVersions(); });

        StandInRequests::AnswerData(Content(QStringLiteral("hello")));

        QCOMPARE(listed,
                 QStringList({QStringLiteral("甲版"), QStringLiteral("乙版"), QStringLiteral("丙版")}));
    }

    void opensVersionsWithoutAPackageService()
    {
        IPackageService* const service = RpaPackageModule::Instance()->GetService();
        RpaPackageModule::Instance()->SetService(nullptr);

        Open();
        PickWithoutData(QStringLiteral("乙版"));
        StandInRequests::AnswerData(Content(QStringLiteral("content of v2")));

        RpaPackageModule::Instance()->SetService(service);
        QCOMPARE(author->GetInstructions(), QStringLiteral("content of v2"));
        QCOMPARE(CallLog::Take(), QStringList({QStringLiteral("load v2"), QStringLiteral("log emptied"),
                                               QStringLiteral("browser reset")}));
    }

    void leavesTheSelectionWhereItIsWhenNoVersionIsOpenToGoBackTo()
    {
        author = std::make_unique<EditorDriver>();
        author->GetEditor()->SetExecuteInfo(App());
        StandInRequests::AnswerList({Versions(AppSnapshotGray).last()});
        QCOMPARE(author->GetSelectedVersion(), QStringLiteral("版本1"));
        author->TypeInstructions(QStringLiteral("my edit"));
        CallLog::Take();
        ModalDriver modals;
        modals.Then(&ModalDriver::Reject);

        QVERIFY(author->PickVersion(QStringLiteral("【灰度】丙版")));

        QCOMPARE(CallLog::Take(), QStringList());
        QCOMPARE(author->GetSelectedVersion(), QStringLiteral("【灰度】丙版"));
        QVERIFY(author->GetInstructions().contains(QStringLiteral("my edit")));
    }

    void emptiesTheLogBeforeItShowsTheNextVersion()
    {
        Open();
        PickWithoutData(QStringLiteral("乙版"));
        QString shown;
        CallLog::WhenNoted(QStringLiteral("log emptied"), [&] { shown = author->GetInstructions(); });

        StandInRequests::AnswerData(Content(QStringLiteral("content of v2")));

        QCOMPARE(shown, QStringLiteral("content of v1"));
        QCOMPARE(author->GetInstructions(), QStringLiteral("content of v2"));
    }

    void opensAVersionThatHoldsNothingWithTheContentOfANewApp()
    {
        Open(Versions(), QByteArrayLiteral("{}"));

        const auto* tabs = author->Find("widgetTabBar")->findChild<QTabBar*>();
        QCOMPARE(tabs->count(), 1);
        QVERIFY(!tabs->tabText(0).isEmpty());
    }

    void handsTheListOfAProgramToThePackageServiceWithItsFirstEditor()
    {
        Open();
        author.reset();
        const QByteArray program = Content(
            QStringLiteral("hello"), [](RpaAppData& content) { Need(content, QStringLiteral("requests")); });
        author = std::make_unique<EditorDriver>();
        author->GetEditor()->SetExecuteInfo(App(1));
        StandInRequests::AnswerList(Versions());
        CallLog::Take();

        StandInRequests::AnswerData(program);

        QCOMPARE(CallLog::Take(),
                 QStringList({QStringLiteral("packages are: requests"), QStringLiteral("log emptied"),
                              QStringLiteral("browser reset"), QStringLiteral("packages are: requests")}));
        PickWithoutData(QStringLiteral("乙版"));
        CallLog::Take();
        StandInRequests::AnswerData(program);
        QCOMPARE(CallLog::Take(), QStringList({QStringLiteral("log emptied"), QStringLiteral("browser reset"),
                                               QStringLiteral("packages are: requests")}));
    }

    void tellsTheDescriptionOfEachVersionUnderTheMouse()
    {
        Open(AppSnapshotGray);

        QCOMPARE(Tips(),
                 QStringList({QStringLiteral("第一稿"), QStringLiteral("第二稿"), QStringLiteral("第三稿")}));
        author.reset();
        author = std::make_unique<EditorDriver>();
        author->GetEditor()->SetExecuteInfo(App());
        StandInRequests::AnswerList({Versions(AppSnapshotOnline).last()});
        QCOMPARE(Tips(), QStringList({QStringLiteral("默认开发版本"), QStringLiteral("第三稿")}));
    }

    void asksForTheOpenVersionAgainWhenItRefreshes()
    {
        Open();
        PickAndLoad(QStringLiteral("乙版"));

        QVERIFY(QMetaObject::invokeMethod(author->GetEditor(), "SlotRefresh"));
        StandInRequests::AnswerList(Versions());

        QCOMPARE(CallLog::Take(), QStringList({QStringLiteral("list app1"), QStringLiteral("load v2")}));
    }

    void asksForTheOpenVersionEvenWhenTheListNoLongerHasIt()
    {
        Open();
        QVERIFY(QMetaObject::invokeMethod(author->GetEditor(), "SlotRefresh"));
        StandInRequests::AnswerList({Versions().at(1), Versions().at(2)});
        StandInRequests::AnswerForeignDeletion(QStringLiteral("v2"));
        QCOMPARE(author->GetVersions(), QStringList(QStringLiteral("丙版")));
        QCOMPARE(author->GetSelectedVersion(), QString());
        CallLog::Take();

        QVERIFY(QMetaObject::invokeMethod(author->GetEditor(), "SlotRefresh"));
        StandInRequests::AnswerList({Versions().at(2)});

        QCOMPARE(CallLog::Take(), QStringList({QStringLiteral("list app1"), QStringLiteral("load v1")}));
    }

    void refreshesWhenTheUserPressesTheButton()
    {
        author = std::make_unique<EditorDriver>();
        author->GetEditor()->SetExecuteInfo(App());
        StandInRequests::FailList(QStringLiteral("服务繁忙"));
        QCOMPARE(author->GetStatus(), RequestStatus::Failed);
        CallLog::Take();

        QTest::mouseClick(author->Find("pushButtonRefresh"), Qt::LeftButton);

        QCOMPARE(CallLog::Take(), QStringList(QStringLiteral("list app1")));
        QCOMPARE(author->GetStatus(), RequestStatus::Loading);
    }

    void listsTheVersionsAgainWhenOneDoesNotLoad()
    {
        Open();
        PickWithoutData(QStringLiteral("乙版"));
        CallLog::Take();
        ToastWatcher toasts;

        StandInRequests::FailData(QStringLiteral("读取失败"));

        QCOMPARE(CallLog::Take(), QStringList(QStringLiteral("list app1")));
        QCOMPARE(author->GetStatus(), RequestStatus::Loading);
        QCOMPARE(toasts.GetTexts(), QStringList(QStringLiteral("读取失败")));
        // The version that was open is asked for, not the one that would not load.
        StandInRequests::AnswerList(Versions());
        QCOMPARE(CallLog::Take(), QStringList(QStringLiteral("load v1")));
    }

    void refusesTheContentOfANewerClient()
    {
        Open();
        RpaGlobalDataManager::Instance()->SetApiVersion(QStringLiteral("1.9.0"));
        PickWithoutData(QStringLiteral("乙版"));
        CallLog::Take();
        ToastWatcher toasts;

        StandInRequests::AnswerData(Content(QStringLiteral("newer"), [](RpaAppData& content) {
            content.SetVersion(QStringLiteral("1.10.0"));
        }));

        QCOMPARE(toasts.GetToasts(),
                 QVector<SeenToast>({{QStringLiteral("当前版本过低，请更新为最新版本"), 2}}));
        QCOMPARE(CallLog::Take(), QStringList(QStringLiteral("list app1")));
        QVERIFY(author->GetInstructions().contains(QStringLiteral("content of v1")));
    }

    void makesTheFirstRowCurrentWhenAVersionGoesBeforeAnyWasLoaded()
    {
        author = std::make_unique<EditorDriver>();
        author->GetEditor()->SetExecuteInfo(App());
        StandInRequests::AnswerList(Versions());
        StandInRequests::AnswerForeignDeletion(QStringLiteral("v1"));
        QCOMPARE(author->GetSelectedVersion(), QStringLiteral("乙版"));
        CallLog::Take();

        QVERIFY(QMetaObject::invokeMethod(author->GetEditor(), "SlotRefresh"));
        StandInRequests::AnswerList({Versions().at(2), Versions().at(1)});

        QCOMPARE(CallLog::Take(), QStringList({QStringLiteral("list app1"), QStringLiteral("load v2")}));
    }

    void opensTheFirstOfTheOthersWhenTheOpenVersionIsDeleted()
    {
        Open();
        PickAndLoad(QStringLiteral("丙版"));
        ModalDriver modals;
        modals.Then(Press(yes));

        QVERIFY(author->PressDelete(QStringLiteral("丙版")));
        StandInRequests::AnswerDeletion();

        QCOMPARE(CallLog::Take(),
                 QStringList({QStringLiteral("event OXA_AppDevelop_VersionDelete"),
                              QStringLiteral("delete v3 of app1"), QStringLiteral("load v1")}));
        QCOMPARE(author->GetVersions(), QStringList({QStringLiteral("甲版"), QStringLiteral("乙版")}));
        QCOMPARE(author->GetSelectedVersion(), QStringLiteral("甲版"));
    }

    void loadsNothingWhenAnotherVersionIsDeleted()
    {
        Open();
        PickAndLoad(QStringLiteral("丙版"));
        author->TypeInstructions(QStringLiteral("my edit"));
        ModalDriver modals;
        modals.Then(Press(yes));

        QVERIFY(author->PressDelete(QStringLiteral("甲版")));
        StandInRequests::AnswerDeletion();

        QCOMPARE(CallLog::Take(), QStringList({QStringLiteral("event OXA_AppDevelop_VersionDelete"),
                                               QStringLiteral("delete v1 of app1")}));
        QCOMPARE(author->GetVersions(), QStringList({QStringLiteral("乙版"), QStringLiteral("丙版")}));
        QCOMPARE(author->GetSelectedVersion(), QStringLiteral("丙版"));
        QVERIFY(author->GetInstructions().contains(QStringLiteral("my edit")));
    }

    void keepsItsVersionsWhenTheServerRefusesToDelete()
    {
        Open();
        ToastWatcher toasts;
        ModalDriver modals;
        modals.Then(Press(yes));

        QVERIFY(author->PressDelete(QStringLiteral("甲版")));
        StandInRequests::AnswerDeletion(false, QStringLiteral("没有权限"));

        QCOMPARE(toasts.GetToasts(), QVector<SeenToast>({{QStringLiteral("没有权限"), 2}}));
        QCOMPARE(author->GetVersions().size(), 3);
        QCOMPARE(author->GetSelectedVersion(), QStringLiteral("甲版"));
    }

    void deletesNothingBeforeAnAppIsThere()
    {
        author = std::make_unique<EditorDriver>();
        author->GetEditor()->SetExecuteInfo(App());
        StandInRequests::AnswerList(Versions());
        CallLog::Take();
        ModalDriver modals;
        modals.Then(Press(yes));

        QVERIFY(QMetaObject::invokeMethod(author->Find("version_combo"), "SigDeleteVersion",
                                          Q_ARG(QVariant, QVariant(QStringLiteral("v2")))));

        QCOMPARE(CallLog::Take(), QStringList(QStringLiteral("event OXA_AppDevelop_VersionDelete")));
    }

    void reportsADeletionBeforeItAsks()
    {
        Open();
        QStringList noted;
        ModalDriver modals;
        modals.Then([&](QWidget* box) {
            noted = CallLog::Take();
            ModalDriver::Reject(box);
        });

        QVERIFY(author->PressDelete(QStringLiteral("乙版")));

        QCOMPARE(noted, QStringList(QStringLiteral("event OXA_AppDevelop_VersionDelete")));
        QCOMPARE(CallLog::Take(), QStringList());
    }

    void savesTheOpenVersionBeforeASwitchAndLocksTheVersionsMeanwhile()
    {
        Open();
        author->TypeInstructions(QStringLiteral("my edit"));
        bool isEnabled = true;
        QByteArray written;
        ModalDriver modals;
        modals.Then([&](QWidget* box) {
            QTimer::singleShot(0, author->GetEditor(), [&] {
                isEnabled = author->Find("version_combo")->isEnabled();
                written = StandInRequests::Overwritten()->GetAppData().toUtf8();
                StandInRequests::AnswerOverwrite();
            });
            QVERIFY(ModalDriver::Press(box, yes));
        });

        PickWithoutData(QStringLiteral("丙版"));

        QVERIFY(!isEnabled);
        QVERIFY(author->Find("version_combo")->isEnabled());
        QVERIFY(written.contains("my edit"));
        QCOMPARE(CallLog::Take(), QStringList({QStringLiteral("overwrite v1"), QStringLiteral("load v3")}));
    }

    void asksAboutTheOpenVersionWhileAnotherIsStillLoading()
    {
        Open();
        author->TypeInstructions(QStringLiteral("my edit"));
        ModalDriver modals;
        modals.Then(Press(no));
        PickWithoutData(QStringLiteral("乙版"));
        modals.Then([&](QWidget* box) {
            QTimer::singleShot(0, author->GetEditor(), [] { StandInRequests::AnswerOverwrite(); });
            QVERIFY(ModalDriver::Press(box, yes));
        });

        PickWithoutData(QStringLiteral("丙版"));

        QCOMPARE(CallLog::Take(), QStringList({QStringLiteral("load v2"), QStringLiteral("overwrite v1"),
                                               QStringLiteral("load v3")}));
    }

    void bringsNothingOfAVersionThatWasLeftBeforeItCame()
    {
        Open();
        PickWithoutData(QStringLiteral("乙版"));
        PickWithoutData(QStringLiteral("丙版"));

        StandInRequests::AnswerData(Content(QStringLiteral("content of v2")));
        QVERIFY(author->GetInstructions().contains(QStringLiteral("content of v1")));
        QCOMPARE(author->GetSelectedVersion(), QStringLiteral("丙版"));

        StandInRequests::AnswerData(Content(QStringLiteral("content of v3")));
        QVERIFY(author->GetInstructions().contains(QStringLiteral("content of v3")));
        QCOMPARE(author->GetSelectedVersion(), QStringLiteral("丙版"));
    }

private:
    static void Need(RpaAppData& content, const QString& package)
    {
        const auto item = QSharedPointer<PackageItem>::create();
        item->name = package;
        content.GetPackageInfo()->SetListPackageItemPtr({item});
    }

    QStringList Tips() const
    {
        auto* list = qobject_cast<QListWidget*>(author->Find<QComboBox>("version_combo")->view());
        QStringList tips;
        for (int i = 0; i < list->count(); ++i) {
            QWidget* row = list->itemWidget(list->item(i));
            row->ensurePolished();
            tips.append(row->findChild<QLabel*>(QStringLiteral("rpa_version_combo_icon"))->toolTip());
        }
        return tips;
    }
};

RPA_TEST_MAIN(VersionCallsTest)
#include "tst_versioncalls.moc"
