// SPDX-License-Identifier: Apache-2.0

#include "ModalDriver.h"
#include "TestApp.h"
#include "VisualEditorFixture.h"

#include <RpaAppData/RpaToolData.h>
#include <RpaAppData/RpaUIData.h>
#include <RpaAppData/RpaUIDataManager.h>

#include <QLabel>
#include <QLineEdit>
#include <QTabBar>
#include <QTest>
#include <QToolButton>
#include <QTreeView>

using namespace EditorFixture;

// The tabs of an app's processes.
class tst_ProcessVisualEditorProcesses : public QObject
{
    Q_OBJECT

private slots:
    void addsRenamesAndDeletesProcesses();
    void renamesAProcessWhereverItIsRun();
    void refusesBlankAndTakenProcessNames();
    void keepsTheMainProcessFirst();
    void switchesToTheMainProcess();
    void showsTheProcessThatAnUndoneStepBelongsTo();
};

void tst_ProcessVisualEditorProcesses::addsRenamesAndDeletesProcesses()
{
    Editor editor;
    const ProcessDataManager& manager = *editor.app->GetProcessDataManager();
    auto* bar = editor.Find<QTabBar>(QStringLiteral("processTabBar"));
    ModalDriver modals;
    const auto enterName = [](const QString& name) {
        return [name](QWidget* dialog) {
            auto* edit = dialog->findChild<QLineEdit*>(QStringLiteral("lineEditProcessName"));
            edit->setText(name);
            QTest::keyClick(edit, Qt::Key_Return);
        };
    };
    modals.Then(enterName(QStringLiteral("登录")));
    modals.Then(enterName(QStringLiteral("登录系统")));
    modals.Then([](QWidget* box) { ModalDriver::Press(box, QStringLiteral("确定")); });

    QTest::mouseClick(editor.Find<QToolButton>(QStringLiteral("processAddButton")), Qt::LeftButton);
    QCOMPARE(manager.GetProcessNames().last(), QStringLiteral("登录"));
    QCOMPARE(bar->currentIndex(), 2);

    QTest::keyClick(bar, Qt::Key_F2);
    QCOMPARE(manager.GetProcessNames().last(), QStringLiteral("登录系统"));
    QCOMPARE(bar->tabText(2), QStringLiteral("登录系统"));

    QTest::keyClick(bar, Qt::Key_Delete);
    QCOMPARE(manager.GetCount(), 2);
    QVERIFY(editor.app->GetModified());
}

void tst_ProcessVisualEditorProcesses::renamesAProcessWhereverItIsRun()
{
    RpaStatement call = Statement(QStringLiteral("t-call"), QStringLiteral("k"));
    call.arguments.insert(QStringLiteral("process"), QStringLiteral("子流程"));
    call.enabled = false;
    Editor editor({Log(QStringLiteral("a")), call});
    RpaToolItem tool;
    tool.text = QStringLiteral("开始");
    tool.processName = QStringLiteral("子流程");
    RpaToolData* tools =
        editor.app->GetUIDataManager()->AddUIData(QStringLiteral("页面甲"), tool)->GetToolData();
    editor.app->SetModified(false);
    auto* bar = editor.Find<QTabBar>(QStringLiteral("processTabBar"));
    QTest::mouseClick(bar, Qt::LeftButton, {}, bar->tabRect(1).center());
    QStringList shown;
    ModalDriver modals;
    modals.Then([&shown](QWidget* dialog) {
        auto* edit = dialog->findChild<QLineEdit*>(QStringLiteral("lineEditProcessName"));
        QTest::keyClicks(edit, QStringLiteral("login"));
        const auto* list = dialog->findChild<QTreeView*>(QStringLiteral("callingPlaces"));
        QVERIFY(list->isVisible());
        for (int row = 0; row < list->model()->rowCount(); ++row)
            for (int column : {0, 4, 5})
                shown.append(list->model()->index(row, column).data().toString());
        QTest::keyClick(edit, Qt::Key_Return);
    });

    QTest::keyClick(bar, Qt::Key_F2);

    QCOMPARE(shown, (QStringList{QStringLiteral("主流程"), QStringLiteral("运行 子流程"),
                                 QStringLiteral("运行 login"), QStringLiteral("界面：页面甲"),
                                 QStringLiteral("运行流程 子流程"), QStringLiteral("运行流程 login")}));
    QCOMPARE(editor.Node(QStringLiteral("k"))->GetArgument(QStringLiteral("process")),
             QStringLiteral("login"));
    QCOMPARE(tools->GetItem(0).processName, QStringLiteral("login"));

    editor.widget.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&editor.widget));
    editor.view->setFocus();
    editor.Key(Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(editor.Node(QStringLiteral("k"))->GetArgument(QStringLiteral("process")),
             QStringLiteral("子流程"));
    QCOMPARE(tools->GetItem(0).processName, QStringLiteral("子流程"));
    QTRY_VERIFY(!editor.app->GetModified());

    editor.Key(Qt::Key_Y, Qt::ControlModifier);
    QCOMPARE(tools->GetItem(0).processName, QStringLiteral("login"));
    QVERIFY(editor.app->GetModified());
}

void tst_ProcessVisualEditorProcesses::refusesBlankAndTakenProcessNames()
{
    Editor editor;
    ModalDriver modals;
    QStringList problems;
    modals.Then([&problems](QWidget* dialog) {
        auto* edit = dialog->findChild<QLineEdit*>(QStringLiteral("lineEditProcessName"));
        auto* problem = dialog->findChild<QLabel*>(QStringLiteral("labelNameProblem"));
        for (const QString& name : {QStringLiteral("  "), QStringLiteral("子流程"), QStringLiteral("新的")}) {
            edit->setText(name);
            problems.append(problem->text());
        }
        ModalDriver::Reject(dialog);
    });

    QTest::mouseClick(editor.Find<QToolButton>(QStringLiteral("processAddButton")), Qt::LeftButton);

    QCOMPARE(problems, (QStringList{QStringLiteral("请填写名称"), QStringLiteral("名称已存在"), QString()}));
    QCOMPARE(editor.app->GetProcessDataManager()->GetCount(), 2);
}

void tst_ProcessVisualEditorProcesses::keepsTheMainProcessFirst()
{
    Editor editor;
    auto* bar = editor.Find<QTabBar>(QStringLiteral("processTabBar"));

    bar->moveTab(1, 0);

    QCOMPARE(editor.app->GetProcessDataManager()->GetProcessNameFirst(), QStringLiteral("主流程"));
    QCOMPARE(bar->tabText(0), QStringLiteral("主流程"));
}

void tst_ProcessVisualEditorProcesses::switchesToTheMainProcess()
{
    Editor editor;
    auto* bar = editor.Find<QTabBar>(QStringLiteral("processTabBar"));
    QTest::mouseClick(bar, Qt::LeftButton, {}, bar->tabRect(1).center());
    QCOMPARE(editor.view->model()->rowCount(), 0);

    editor.widget.SwitchMainPage();

    QCOMPARE(bar->currentIndex(), 0);
    QCOMPARE(editor.view->model()->rowCount(), 3);
}

void tst_ProcessVisualEditorProcesses::showsTheProcessThatAnUndoneStepBelongsTo()
{
    Editor editor;
    auto* bar = editor.Find<QTabBar>(QStringLiteral("processTabBar"));
    editor.Click(QStringLiteral("a"));
    editor.Key(Qt::Key_Delete);
    QTest::mouseClick(bar, Qt::LeftButton, {}, bar->tabRect(1).center());

    editor.view->setFocus();
    editor.Key(Qt::Key_Z, Qt::ControlModifier);

    QCOMPARE(bar->currentIndex(), 0);
    QCOMPARE(editor.view->currentIndex().data(Qt::UserRole).toString(), QStringLiteral("a"));
}

RPA_TEST_MAIN(tst_ProcessVisualEditorProcesses)

#include "tst_processvisualeditor_processes.moc"
