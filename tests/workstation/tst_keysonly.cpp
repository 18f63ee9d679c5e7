// SPDX-License-Identifier: Apache-2.0

#include "InvitationDialog.h"
#include "KeyTable.h"
#include "LivingWorkstation.h"
#include "MainWindow.h"
#include "ModalDriver.h"
#include "TestApp.h"
#include "ToastWatcher.h"

#include <RpaEngineCore/IRpaLogManager.h>
#include <RpaEngineModule/RpaDebugSession.h>
#include <RpaEngineModule/RpaEngineModule.h>

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QSet>
#include <QTabBar>
#include <QTreeWidget>
#include <QtTest>

namespace
{
constexpr int longWaitMs = 30000;

QStringList Log()
{
    QStringList texts;
    const auto lines = RpaEngineModule::Instance()->GetLogManager()->GetLogDataSource()->GetLines();
    for (const RpaLogLine& line : lines)
        texts.append(line.text);
    return texts;
}
} // namespace

// An author without a mouse.
class tst_KeysOnly : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase();
    void init();

    void showsThePagesOfTheEditor();
    void takesBackAnEditWhereverTheFocusWent();
    void goesToAProblemAndMendsIt();
    void leavesAFieldItsOwnSteps();
    void reachesEveryControlWithTab();
    void pressesTheButtonThatHasTheFocus();
    void saysInThePaletteWhyAnActMustWait();
    void doesWhatThePaletteIsAskedFor();
    void listsEveryKey();
    void keepsAQuestionMarkThatIsWritten();
    void stepsThroughAProcessThatNoToolStarts();
    void looksIntoARunAtABreakpoint();
    void buildsRunsSavesAndReleasesAnApp();

private:
    static void Key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        LivingWorkstation::Key(key, modifiers);
    }
    // Opens it by its key.
    QDialog* OpenPalette();
    int StatementCount() const;

    std::unique_ptr<ToastWatcher> toasts;
    std::unique_ptr<LivingWorkstation> living;
};

void tst_KeysOnly::initTestCase()
{
    living = std::make_unique<LivingWorkstation>();
    QVERIFY(living->Start());
    QVERIFY(living->CreateApp(QStringLiteral("按键应用")));
}

void tst_KeysOnly::cleanupTestCase()
{
    living.reset();
}

void tst_KeysOnly::init()
{
    toasts = std::make_unique<ToastWatcher>();
}

QDialog* tst_KeysOnly::OpenPalette()
{
    Key(Qt::Key_P, Qt::ControlModifier | Qt::ShiftModifier);
    const bool open = QTest::qWaitFor([] { return LivingWorkstation::HasFocus("editAct"); });
    return open ? qobject_cast<QDialog*>(QApplication::activeModalWidget()) : nullptr;
}

int tst_KeysOnly::StatementCount() const
{
    return living->Window()->findChild<QTreeView*>(QStringLiteral("statementView"))->model()->rowCount();
}

void tst_KeysOnly::showsThePagesOfTheEditor()
{
    const std::tuple<Qt::Key, const char*> steps[] = {
        {Qt::Key_2, "pageProcess"},           {Qt::Key_3, "pageExtendInfo"},
        {Qt::Key_1, "pageUIDesign"},          {Qt::Key_PageDown, "pageProcess"},
        {Qt::Key_PageDown, "pageExtendInfo"}, {Qt::Key_PageDown, "pageUIDesign"},
        {Qt::Key_PageUp, "pageExtendInfo"},   {Qt::Key_PageUp, "pageProcess"},
    };
    for (const auto& [key, page] : steps) {
        Key(key, Qt::ControlModifier);

        const QWidget* const shown = LivingWorkstation::Shown(page);
        QVERIFY2(shown, page);
        QVERIFY2(shown->isAncestorOf(QApplication::focusWidget()), page);
    }
}

void tst_KeysOnly::takesBackAnEditWhereverTheFocusWent()
{
    const int before = StatementCount();
    QVERIFY(living->AddStatement(QStringLiteral("输出日志")));
    QVERIFY(living->AddStatement(QStringLiteral("设置变量")));
    Key(Qt::Key_1, Qt::ControlModifier);
    QVERIFY(LivingWorkstation::TabTo("buttonAddTab"));

    Key(Qt::Key_Z, Qt::ControlModifier);

    QCOMPARE(StatementCount(), before + 1);
    QVERIFY(LivingWorkstation::Shown("pageProcess"));
    QVERIFY(LivingWorkstation::TabTo("buttonSettings"));
    Key(Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(StatementCount(), before);
    Key(Qt::Key_Y, Qt::ControlModifier);
    QCOMPARE(StatementCount(), before + 1);
    Key(Qt::Key_Z, Qt::ControlModifier);
}

void tst_KeysOnly::goesToAProblemAndMendsIt()
{
    auto* const list = living->Window()->findChild<QTreeWidget*>(QStringLiteral("problemList"));
    QTRY_COMPARE(list->topLevelItemCount(), 0);                // nothing of earlier edits any more
    QVERIFY(living->AddStatement(QStringLiteral("设置变量"))); // without a name
    Key(Qt::Key_1, Qt::ControlModifier);
    Key(Qt::Key_M, Qt::ControlModifier | Qt::ShiftModifier);
    QTRY_VERIFY(LivingWorkstation::HasFocus("problemList") && list->topLevelItemCount() > 0);
    Key(Qt::Key_Home);
    Key(Qt::Key_Return);

    QTRY_VERIFY(LivingWorkstation::HasFocus("statementView"));
    Key(Qt::Key_Delete);
    QTRY_COMPARE(list->topLevelItemCount(), 0);
}

void tst_KeysOnly::leavesAFieldItsOwnSteps()
{
    const int before = StatementCount();
    QVERIFY(living->AddStatement(QStringLiteral("输出日志")));
    QVERIFY(LivingWorkstation::TabTo("lineEditCommandSearch"));
    LivingWorkstation::Write(QStringLiteral("循环"));

    Key(Qt::Key_Z, Qt::ControlModifier);

    QCOMPARE(LivingWorkstation::ShownAs<QLineEdit>("lineEditCommandSearch")->text(), QString());
    QCOMPARE(StatementCount(), before + 1);
    Key(Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(StatementCount(), before);
}

void tst_KeysOnly::reachesEveryControlWithTab()
{
    QVERIFY(living->AddStatement(QStringLiteral("点击元素")));
    QVERIFY(LivingWorkstation::Shown("captureButton"));
    QSet<const QWidget*> reached;
    for (int count = 0; count < 200; ++count) {
        Key(Qt::Key_Tab);
        reached.insert(QApplication::focusWidget());
    }

    QStringList missed;
    const auto buttons = living->Window()->findChildren<QAbstractButton*>();
    for (const QAbstractButton* button : buttons) {
        // The arrows of tabs that have room do nothing.
        const bool counts = button->isVisible() && button->isEnabled() &&
                            !button->visibleRegion().isEmpty() &&
                            !qobject_cast<QTabBar*>(button->parentWidget());
        if (counts && !reached.contains(button))
            missed.append(button->objectName() + button->text() + button->toolTip());
    }
    QCOMPARE(missed.join(QLatin1Char(' ')), QString());
    Key(Qt::Key_Z, Qt::ControlModifier);
}

void tst_KeysOnly::pressesTheButtonThatHasTheFocus()
{
    Key(Qt::Key_2, Qt::ControlModifier);
    const int before = StatementCount();
    QVERIFY(living->AddStatement(QStringLiteral("输出日志")));
    QVERIFY(LivingWorkstation::TabTo("actionUndoButton"));

    Key(Qt::Key_Return);

    QCOMPARE(StatementCount(), before);
}

void tst_KeysOnly::saysInThePaletteWhyAnActMustWait()
{
    QDialog* const palette = OpenPalette();
    QVERIFY(palette);

    LivingWorkstation::Write(QStringLiteral("停止"));
    Key(Qt::Key_Return);

    QCOMPARE(palette->findChild<QLabel*>(QStringLiteral("labelReason"))->text(),
             QStringLiteral("“停止”：没有流程在运行"));
    QVERIFY(palette->isVisible());
    Key(Qt::Key_Escape);
    QTRY_VERIFY(!QApplication::activeModalWidget());
    Key(Qt::Key_F5, Qt::ShiftModifier);
    QTRY_COMPARE(toasts->GetTexts(), QStringList{QStringLiteral("“停止”现在不能使用：没有流程在运行")});
}

void tst_KeysOnly::doesWhatThePaletteIsAskedFor()
{
    Key(Qt::Key_1, Qt::ControlModifier);
    QVERIFY(OpenPalette());

    LivingWorkstation::Write(QStringLiteral("ctrl+3"));
    Key(Qt::Key_Return);

    QTRY_VERIFY(LivingWorkstation::Shown("pageExtendInfo"));
    QVERIFY(!QApplication::activeModalWidget());
}

void tst_KeysOnly::listsEveryKey()
{
    Key(Qt::Key_2, Qt::ControlModifier);
    Key(Qt::Key_F1, Qt::ControlModifier);
    QTRY_VERIFY(LivingWorkstation::HasFocus("listKeys"));
    const auto* list = LivingWorkstation::ShownAs<QTreeWidget>("listKeys");

    for (const KeyRow& row : KeyTable::Rows()) {
        const auto found = list->findItems(row.text, Qt::MatchExactly | Qt::MatchRecursive);
        QVERIFY2(row.keys.isEmpty() || !found.isEmpty(), qPrintable(row.text));
        QCOMPARE(row.keys.isEmpty() || found.first()->text(1) == KeyTable::KeyText(row.keys.first()), true);
    }
    QCOMPARE(list->findItems(QStringLiteral("注释 / 取消注释"), Qt::MatchExactly | Qt::MatchRecursive).size(),
             1);
    Key(Qt::Key_Escape);
    QTRY_VERIFY(!QApplication::activeModalWidget());
}

void tst_KeysOnly::keepsAQuestionMarkThatIsWritten()
{
    Key(Qt::Key_2, Qt::ControlModifier);
    QVERIFY(LivingWorkstation::TabTo("lineEditCommandSearch"));
    Key(Qt::Key_Question, Qt::ShiftModifier);
    QVERIFY(!QApplication::activeModalWidget());

    QVERIFY(LivingWorkstation::TabTo("buttonSettings"));
    Key(Qt::Key_Question, Qt::ShiftModifier);

    QTRY_VERIFY(LivingWorkstation::HasFocus("listKeys"));
    Key(Qt::Key_Escape);
    QTRY_VERIFY(!QApplication::activeModalWidget());
    QVERIFY(LivingWorkstation::TabTo("lineEditCommandSearch"));
    Key(Qt::Key_Escape);
}

void tst_KeysOnly::stepsThroughAProcessThatNoToolStarts()
{
    Key(Qt::Key_2, Qt::ControlModifier);
    const int before = StatementCount();
    QVERIFY(living->AddStatement(QStringLiteral("输出日志")));
    Key(Qt::Key_F2);
    QTRY_VERIFY(LivingWorkstation::HasFocus("editor"));
    LivingWorkstation::Write(QStringLiteral("第一步"));
    const RpaDebugSession* const session = RpaEngineModule::Instance()->GetDebugSession();
    const auto isPaused = [session] { return session->GetState() == RpaDebugSession::State::Paused; };

    Key(Qt::Key_F10);
    QTRY_VERIFY_WITH_TIMEOUT(isPaused(), longWaitMs);
    Key(Qt::Key_1, Qt::ControlModifier);
    Key(Qt::Key_F11);
    QTRY_VERIFY(LivingWorkstation::Shown("pageProcess")); // a step is taken where it is seen
    QTRY_VERIFY_WITH_TIMEOUT(session->GetState() == RpaDebugSession::State::Idle, longWaitMs);
    QVERIFY(Log().contains(QStringLiteral("第一步")));
    Key(Qt::Key_F11, Qt::ShiftModifier);
    QTRY_COMPARE(toasts->GetTexts(), QStringList{QStringLiteral("“单步跳出”现在不能使用：流程没有暂停")});

    Key(Qt::Key_F10);
    QTRY_VERIFY_WITH_TIMEOUT(isPaused(), longWaitMs);
    Key(Qt::Key_1, Qt::ControlModifier);
    Key(Qt::Key_F5); // goes on, whatever the tools could run
    QTRY_VERIFY_WITH_TIMEOUT(session->GetState() == RpaDebugSession::State::Idle, longWaitMs);
    Key(Qt::Key_1, Qt::ControlModifier);
    Key(Qt::Key_F10, Qt::ControlModifier);
    QTRY_COMPARE(toasts->GetTexts().last(), QStringLiteral("“运行到此处”现在不能使用：先打开流程设计"));
    Key(Qt::Key_2, Qt::ControlModifier);
    while (StatementCount() > before)
        Key(Qt::Key_Z, Qt::ControlModifier);
}

void tst_KeysOnly::looksIntoARunAtABreakpoint()
{
    Key(Qt::Key_2, Qt::ControlModifier);
    const int before = StatementCount();
    QVERIFY(living->AddStatement(QStringLiteral("输出日志")));
    Key(Qt::Key_F2);
    QTRY_VERIFY(LivingWorkstation::HasFocus("editor"));
    LivingWorkstation::Write(QStringLiteral("停在这里"));
    const RpaDebugSession* const session = RpaEngineModule::Instance()->GetDebugSession();
    const auto reason = [session] { return session->GetPause().reason; };

    Key(Qt::Key_F9);
    Key(Qt::Key_F5);
    QTRY_VERIFY_WITH_TIMEOUT(session->GetState() == RpaDebugSession::State::Paused, longWaitMs);
    QCOMPARE(reason(), RpaPauseReason::Breakpoint);
    QTRY_VERIFY(LivingWorkstation::Shown("debugPanes"));
    Key(Qt::Key_D, Qt::ControlModifier | Qt::AltModifier);
    QVERIFY(!LivingWorkstation::Shown("debugPanes"));
    Key(Qt::Key_1, Qt::ControlModifier);
    Key(Qt::Key_F9);
    QTRY_COMPARE(toasts->GetTexts(),
                 QStringList{QStringLiteral("“设置 / 取消断点”现在不能使用：先打开流程设计")});
    Key(Qt::Key_D, Qt::ControlModifier | Qt::AltModifier); // shown where they are
    QTRY_VERIFY(LivingWorkstation::Shown("debugPanes"));
    Key(Qt::Key_F9);
    Key(Qt::Key_F5);
    QTRY_VERIFY_WITH_TIMEOUT(session->GetState() == RpaDebugSession::State::Idle, longWaitMs);

    Key(Qt::Key_F5); // without the breakpoint
    QTRY_VERIFY_WITH_TIMEOUT(session->GetState() == RpaDebugSession::State::Running, longWaitMs);
    QTRY_VERIFY_WITH_TIMEOUT(session->GetState() == RpaDebugSession::State::Idle, longWaitMs);
    Key(Qt::Key_D, Qt::ControlModifier | Qt::AltModifier);
    while (StatementCount() > before)
        Key(Qt::Key_Z, Qt::ControlModifier);
}

void tst_KeysOnly::buildsRunsSavesAndReleasesAnApp()
{
    QVERIFY(living->AddStatement(QStringLiteral("输出日志")));
    Key(Qt::Key_F2);
    QTRY_VERIFY(LivingWorkstation::HasFocus("editor"));
    LivingWorkstation::Write(QStringLiteral("只用键盘"));

    Key(Qt::Key_F5);
    QTRY_VERIFY_WITH_TIMEOUT(Log().contains(QStringLiteral("只用键盘")), longWaitMs);
    Key(Qt::Key_S, Qt::ControlModifier);
    QTRY_COMPARE_WITH_TIMEOUT(toasts->GetTexts(), QStringList{QStringLiteral("保存成功")}, longWaitMs);
    ModalDriver modals{std::chrono::milliseconds(longWaitMs)};
    modals.Then([](QWidget*) {
        QTRY_VERIFY(LivingWorkstation::HasFocus("comboBoxName"));
        LivingWorkstation::Write(QStringLiteral("试用"));
        Key(Qt::Key_Return);
    });
    Key(Qt::Key_S, Qt::ControlModifier | Qt::ShiftModifier);
    const auto* versions = living->Window()->findChild<QComboBox*>(QStringLiteral("version_combo"));
    QTRY_COMPARE_WITH_TIMEOUT(versions->currentText(), QStringLiteral("试用"), longWaitMs);

    modals.Then([](QWidget*) { Key(Qt::Key_Return); }); // yes, gray it is
    modals.ThenIn<InvitationDialog>([](InvitationDialog*) { Key(Qt::Key_Escape); });
    Key(Qt::Key_G, Qt::ControlModifier | Qt::ShiftModifier);
    QTRY_COMPARE_WITH_TIMEOUT(modals.GetPendingCount(), 0, longWaitMs);
}

RPA_TEST_MAIN(tst_KeysOnly)
#include "tst_keysonly.moc"
