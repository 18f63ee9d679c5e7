// SPDX-License-Identifier: Apache-2.0

#include "EditorDriver.h"
#include "EditorWorld.h"
#include "ModalDriver.h"
#include "TestApp.h"
#include "ToastWatcher.h"

#include <OxBase/DpiTool.h>
#include <RpaAppData/RpaAppData.h>
#include <RpaCore/RpaGlobalDataManager.h>
#include <RpaCore/RpaGlobalLifeCycle.h>
#include <RpaEditorManager/RpaAppEditorWidget.h>
#include <RpaProcessData/ProcessDataManager.h>
#include <RpaProcessData/RpaProcess.h>
#include <RpaProcessEditor/ProcessProgramEditorWidget.h>
#include <RpaProcessEditor/ProcessVisualEditorWidget.h>
#include <WbBaseUI/WbIconButtonWidget.h>
#include <WbBaseUI/WbPushButton.h>
#include <WbBaseUI/WbToast.h>
#include <WbBrowserLite/IBrowserWidget.h>
#include <WbCore/WbGlobalData.h>

#include <QAbstractItemView>
#include <QHBoxLayout>
#include <QLabel>
#include <QSplitter>
#include <QStackedWidget>
#include <QtTest>

class EditorAssemblyTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { world.Start(); }
    void init() { world.SignIn(); }

    void givesItsPartsTheirNamesAndTexts_data()
    {
        QTest::addColumn<QByteArray>("name");
        QTest::addColumn<QString>("text");
        QTest::newRow("save") << QByteArray("pushButtonSave") << QStringLiteral("保存");
        QTest::newRow("save as") << QByteArray("pushButtonSaveAs") << QStringLiteral("另存为");
        QTest::newRow("gray") << QByteArray("pushButtonBeta") << QStringLiteral("灰度");
        QTest::newRow("publish") << QByteArray("pushButtonPublish") << QStringLiteral("上线");
        QTest::newRow("template") << QByteArray("pushButtonExportAppData") << QStringLiteral("生成模板");
    }

    void givesItsPartsTheirNamesAndTexts()
    {
        QFETCH(QByteArray, name);
        QFETCH(QString, text);
        EditorDriver author;

        const auto* button = author.Find<WbPushButton>(name);

        QCOMPARE(button->text(), text);
        QCOMPARE(button->GetButtonType(), 3);
        QCOMPARE(button->GetBusinessValue(), 1);
    }

    void startsEmptyOnItsFirstPages()
    {
        EditorDriver author;

        QCOMPARE(author.GetEditor()->objectName(), QStringLiteral("RpaAppEditorWidget"));
        QCOMPARE(author.GetEditor()->windowTitle(), QStringLiteral("RpaAppEditorWidget"));
        QCOMPARE(author.GetEditor()->cursor().shape(), Qt::ArrowCursor);
        QCOMPARE(author.GetEditor()->focusPolicy(), Qt::ClickFocus);
        QCOMPARE(author.Find<QLabel>("labelName")->text(), QString());
        QCOMPARE(author.Find<QLabel>("labelVersion")->text(), QStringLiteral("选择版本："));
        QCOMPARE(author.Find<QStackedWidget>("stackedWidgetTop")->currentIndex(), 0);
        QCOMPARE(author.Find<QStackedWidget>("stackedWidget")->currentIndex(), 0);
        QCOMPARE(author.Find("version_combo")->minimumSize(), QSize(150, 30));
        QVERIFY(author.Find("pageProcess")->findChildren<QWidget*>().isEmpty());
    }

    void laysOutTheSplitterAndTheTopBar()
    {
        EditorDriver author;

        const auto* splitter = author.Find<QSplitter>("splitter");
        QCOMPARE(splitter->handleWidth(), 6);
        QVERIFY(!splitter->childrenCollapsible());
        QCOMPARE(splitter->indexOf(author.Find("stackedWidget")), 0);
        QCOMPARE(splitter->indexOf(author.Find("widgetContainer")), 1);
        QCOMPARE(author.Find("pageSplitter")->layout()->contentsMargins(), QMargins(28, 12, 28, 24));

        const QLayout* top = author.Find("widgetTop")->layout();
        QCOMPARE(top->contentsMargins(), QMargins(12, 0, 28, 0));
        QCOMPARE(top->spacing(), 12);
    }

    void scalesTheTopBarWithTheScreen()
    {
        EditorDriver author;

        DpiTool::SetScale(2.0);
        const QLayout* top = author.Find("widgetTop")->layout();
        const QMargins margins = top->contentsMargins();
        const int spacing = top->spacing();
        DpiTool::SetScale(1.0);

        QCOMPARE(margins, QMargins(24, 0, 56, 0));
        QCOMPARE(spacing, 24);
        QCOMPARE(top->contentsMargins(), QMargins(12, 0, 28, 0));
    }

    void explainsTheReleaseButtons()
    {
        EditorDriver author;

        QCOMPARE(author.Find("pushButtonBeta")->toolTip(),
                 QStringLiteral("灰度后可通过邀请码\n分享给使用者"));
        QCOMPARE(author.Find("pushButtonPublish")->toolTip(),
                 QStringLiteral("上线后应用所属类型\n范围内用户均可使用"));
    }

    void isAskedWhenTheWorkstationCloses()
    {
        QVERIFY(RpaGlobalLifeCycle::Instance()->BeforeClose());
        const RobotExecuteInfo app = world.CreateApp();
        world.AddVersion(app, QStringLiteral("版本1"));
        EditorDriver author;
        author.GetEditor()->SetExecuteInfo(app);
        QTRY_COMPARE(author.GetSelectedVersion(), QStringLiteral("版本1"));
        author.TypeInstructions(QStringLiteral("x"));
        ModalDriver modals;
        modals.Then([](QWidget* box) { QVERIFY(ModalDriver::Press(box, QStringLiteral("取消"))); });

        QVERIFY(!RpaGlobalLifeCycle::Instance()->BeforeClose());

        author.Destroy();
        QVERIFY(RpaGlobalLifeCycle::Instance()->BeforeClose());
    }

    void goesFromALogLineToItsStatement()
    {
        const RobotExecuteInfo app = world.CreateApp();
        world.AddVersion(app, QStringLiteral("版本1"), [](RpaAppData& content) {
            ProcessDataManager* processes = content.GetProcessDataManager();
            RpaProcess* second = processes->AddProcess(QStringLiteral("第二个流程"));
            RpaStatement statement;
            statement.id = QStringLiteral("wanted");
            statement.command = QStringLiteral("log");
            second->Insert(QString(), 0, {statement});
        });
        EditorDriver author;
        author.GetEditor()->SetExecuteInfo(app);
        QTRY_COMPARE(author.GetSelectedVersion(), QStringLiteral("版本1"));
        const auto showStatement = [&author](const QString& id) {
            QMetaObject::invokeMethod(author.Find("logView")->parent(), "SigShowStatement",
                                      Q_ARG(QString, id));
        };
        ToastWatcher toasts;

        showStatement(QStringLiteral("gone long ago"));
        QCOMPARE(toasts.GetToasts(),
                 QVector<SeenToast>({{QStringLiteral("这条日志的语句已不在流程中"), int(ToastInformation)}}));
        QVERIFY(author.Find<WbIconButtonWidget>("pushButtonUI")->bSelected);

        showStatement(QStringLiteral("wanted"));
        QVERIFY(author.Find<WbIconButtonWidget>("pushButtonProcess")->bSelected);
        QVERIFY(!author.Find<WbIconButtonWidget>("pushButtonUI")->bSelected);
        QCOMPARE(author.Find<QStackedWidget>("stackedWidget")->currentIndex(), 1);
        const auto* statements = author.Find<QAbstractItemView>("statementView");
        QVERIFY(statements->isVisible());
        QCOMPARE(statements->currentIndex().data(Qt::UserRole).toString(), QStringLiteral("wanted"));
    }

    void showsTheAppThatItOpens()
    {
        const RobotExecuteInfo app = world.CreateApp();
        world.AddVersion(app, QStringLiteral("版本1"), QString(), QStringLiteral("先登录"));
        EditorDriver author;

        author.GetEditor()->SetExecuteInfo(app);

        QCOMPARE(author.Find<QLabel>("labelName")->text(), app.GetAppName());
        QCOMPARE(author.GetStatus(), RequestStatus::Loading);
        QVERIFY(author.Find("editorWidget")->isHidden());
        QTRY_COMPARE(author.GetSelectedVersion(), QStringLiteral("版本1"));
        QCOMPARE(author.GetStatus(), RequestStatus::Succeeded);
        QVERIFY(!author.Find("editorWidget")->isHidden());
        QVERIFY(author.GetInstructions().contains(QStringLiteral("先登录")));
    }

    void anAppNameIsNeverTakenForMarkup()
    {
        RobotExecuteInfo app = world.CreateApp();
        app.SetAppName(QStringLiteral("<b>x</b>"));
        world.AddVersion(app, QStringLiteral("版本1"));
        EditorDriver author;

        author.GetEditor()->SetExecuteInfo(app);

        QCOMPARE(author.Find<QLabel>("labelName")->textFormat(), Qt::PlainText);
        QTRY_COMPARE(author.GetSelectedVersion(), QStringLiteral("版本1"));
    }

    void cutsALongAppNameAndTellsItInAToolTip()
    {
        RobotExecuteInfo app = world.CreateApp();
        const QString name = QString(50, QChar(0x7968));
        app.SetAppName(name);
        world.AddVersion(app, QStringLiteral("版本1"));
        EditorDriver author;

        author.GetEditor()->SetExecuteInfo(app);

        QTRY_COMPARE(author.GetStatus(), RequestStatus::Succeeded);
        const auto* label = author.Find<QLabel>("labelName");
        QCOMPARE(label->text(), name);
        QTRY_COMPARE(label->toolTip(), name);
        const QWidget* bar = author.Find("widgetTop");
        QCOMPARE(label->mapTo(bar, QPoint()).x(), DpiTool::ScaleDefault(12));
        QVERIFY(label->geometry().right() < author.Find("labelVersion")->geometry().left());
        QCOMPARE(author.GetEditor()->width(), 1280);
    }

    void offersReleaseToTheCreatorOnly_data()
    {
        QTest::addColumn<QString>("pin");
        QTest::addColumn<bool>("isOffered");
        QTest::newRow("the creator") << QStringLiteral("author-1") << true;
        QTest::newRow("another author") << QStringLiteral("author-2") << false;
        QTest::newRow("letter case differs") << QStringLiteral("Author-1") << false;
        QTest::newRow("nobody") << QString() << false;
    }

    void offersReleaseToTheCreatorOnly()
    {
        QFETCH(QString, pin);
        QFETCH(bool, isOffered);
        const RobotExecuteInfo app = world.CreateApp();
        world.AddVersion(app, QStringLiteral("版本1"));
        WbGlobalData::Instance()->SetPin(pin);
        EditorDriver author;

        author.GetEditor()->SetExecuteInfo(app);
        QTRY_COMPARE(author.GetSelectedVersion(), QStringLiteral("版本1"));

        QCOMPARE(author.Find("pushButtonBeta")->isVisible(), isOffered);
        QCOMPARE(author.Find("pushButtonPublish")->isVisible(), isOffered);
        QVERIFY(author.Find("pushButtonSave")->isVisible());
    }

    void offersTemplatesToSuperAdministratorsOnly_data()
    {
        QTest::addColumn<bool>("isAdministrator");
        QTest::newRow("super administrator") << true;
        QTest::newRow("author") << false;
    }

    void offersTemplatesToSuperAdministratorsOnly()
    {
        QFETCH(bool, isAdministrator);
        RpaGlobalDataManager::Instance()->SetSuperAdmin(isAdministrator);
        const RobotExecuteInfo app = world.CreateApp();
        world.AddVersion(app, QStringLiteral("版本1"));
        EditorDriver author;

        author.GetEditor()->SetExecuteInfo(app);
        QTRY_COMPARE(author.GetSelectedVersion(), QStringLiteral("版本1"));

        QCOMPARE(author.Find("pushButtonExportAppData")->isVisible(), isAdministrator);
    }

    void keepsTheFirstProcessEditorForAModelOfAnotherKind()
    {
        RobotExecuteInfo app = world.CreateApp(0);
        world.AddVersion(app, QStringLiteral("版本1"), QString(), QStringLiteral("first"));
        EditorDriver author;
        author.GetEditor()->SetExecuteInfo(app);
        QTRY_VERIFY(author.GetInstructions().contains(QStringLiteral("first")));
        const QWidget* page = author.Find("pageProcess");
        const auto* editor = page->findChild<ProcessVisualEditorWidget*>();
        QVERIFY(editor);

        world.AddVersion(app, QStringLiteral("版本2"), QString(), QStringLiteral("second"));
        app.SetAppKind(1);
        author.GetEditor()->SetExecuteInfo(app);
        QTRY_COMPARE(author.GetVersions().size(), 2);
        QVERIFY(author.PickVersion(QStringLiteral("版本2")));
        QTRY_VERIFY(author.GetInstructions().contains(QStringLiteral("second")));

        QCOMPARE(page->findChild<ProcessVisualEditorWidget*>(), editor);
        QVERIFY(!page->findChild<ProcessProgramEditorWidget*>());
        QCOMPARE(page->layout()->count(), 1);
    }

    void makesTheProcessEditorOfTheAppsKind_data()
    {
        QTest::addColumn<int>("kind");
        QTest::addColumn<bool>("visual");
        QTest::addColumn<bool>("program");
        QTest::newRow("visual") << 0 << true << false;
        QTest::newRow("program") << 1 << false << true;
        QTest::newRow("unknown") << 7 << false << false;
    }

    void makesTheProcessEditorOfTheAppsKind()
    {
        QFETCH(int, kind);
        RobotExecuteInfo app = world.CreateApp();
        app.SetAppKind(kind);
        world.AddVersion(app, QStringLiteral("版本1"));
        world.AddVersion(app, QStringLiteral("版本2"));
        EditorDriver author;

        author.GetEditor()->SetExecuteInfo(app);
        QTRY_COMPARE(author.GetVersions().size(), 2);
        const QWidget* page = author.Find("pageProcess");
        QTEST(page->findChild<ProcessVisualEditorWidget*>() != nullptr, "visual");
        QTEST(page->findChild<ProcessProgramEditorWidget*>() != nullptr, "program");

        // A second model finds the page as the first one left it.
        QVERIFY(author.PickVersion(QStringLiteral("版本1")));
        QTRY_COMPARE(author.GetSelectedVersion(), QStringLiteral("版本1"));
    }

    void switchesPagesWithTheNavigationBar()
    {
        EditorDriver author;
        author.GetEditor()->SetExecuteInfo(OpenableApp());
        QTRY_COMPARE(author.GetStatus(), RequestStatus::Succeeded);
        const auto* outer = author.Find<QStackedWidget>("stackedWidgetTop");
        const auto* inner = author.Find<QStackedWidget>("stackedWidget");

        author.ShowPage("pushButtonProcess");
        QCOMPARE(outer->currentWidget(), author.Find("pageSplitter"));
        QCOMPARE(inner->currentWidget(), author.Find("pageProcess"));

        author.ShowPage("pushButtonExtend");
        QCOMPARE(outer->currentWidget(), author.Find("pageExtendInfo"));
        QCOMPARE(inner->currentWidget(), author.Find("pageProcess"));

        author.ShowPage("pushButtonUI");
        QCOMPARE(outer->currentWidget(), author.Find("pageSplitter"));
        QCOMPARE(inner->currentWidget(), author.Find("pageUIDesign"));
    }

    void showsTheProcessPageAfterTheUsageInstructions()
    {
        EditorDriver author;
        author.GetEditor()->SetExecuteInfo(OpenableApp());
        QTRY_COMPARE(author.GetStatus(), RequestStatus::Succeeded);

        author.ShowPage("pushButtonExtend");
        author.ShowPage("pushButtonProcess");

        QVERIFY(author.Find("pageProcess")->isVisible());
    }

    void asksForTheVersionsAgainWhenTheUserRefreshes()
    {
        const RobotExecuteInfo app = OpenableApp();
        world.UseServer(QUrl(QStringLiteral("http://127.0.0.1:1")));
        EditorDriver author;
        author.GetEditor()->SetExecuteInfo(app);
        QTRY_COMPARE(author.GetStatus(), RequestStatus::Failed);

        world.SignIn();
        emit author.Find<RequestStatusBaseWidget>("requestStatusWidget")->SigRefresh();

        QCOMPARE(author.GetStatus(), RequestStatus::Loading);
        QTRY_COMPARE(author.GetSelectedVersion(), QStringLiteral("版本1"));
    }

    void leavesNothingBehindWithoutAPoppedOutBrowser()
    {
        const auto before = QApplication::topLevelWidgets().size();
        EditorDriver author;
        author.GetEditor()->SetExecuteInfo(OpenableApp());
        QTRY_COMPARE(author.GetSelectedVersion(), QStringLiteral("版本1"));

        author.Destroy();

        QCOMPARE(QApplication::topLevelWidgets().size(), before);
    }

private:
    RobotExecuteInfo OpenableApp()
    {
        RobotExecuteInfo app = world.CreateApp();
        world.AddVersion(app, QStringLiteral("版本1"));
        return app;
    }

    EditorWorld world;
};

RPA_TEST_MAIN(EditorAssemblyTest)
#include "tst_editorassembly.moc"
