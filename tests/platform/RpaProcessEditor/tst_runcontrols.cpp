// SPDX-License-Identifier: Apache-2.0

#include "ModalDriver.h"
#include "RunAuthor.h"
#include "TestApp.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>

using namespace EditorFixture;
using State = RpaDebugSession::State;

namespace
{
// How many answers have the variable.
int CountOf(const QSignalSpy& answers, const QString& variable)
{
    int count = 0;
    for (const QList<QVariant>& answer : answers) {
        const QVector<RpaDebugValue> values = answer.first().value<RpaDebugAnswer>().values;
        for (const RpaDebugValue& value : values)
            count += value.name == variable ? 1 : 0;
    }
    return count;
}
} // namespace

// Runs that are started, stepped through and ended from the page of the processes.
class tst_RunControls : public QObject
{
    Q_OBJECT

private slots:
    void runsByKeyAndByMouse();
    void stepsThroughTheProcess();
    void stepsByMouse();
    void runsToTheChosenStatement();
    void runsOnlyWhatIsSelected();
    void runsFromHereWithWhatTheLastRunKnew();
    void saysWhichVariablesAreUnknown();
    void runsTheShownProcessAndStaysThere();
    void runsUnsavedEdits();
};

void tst_RunControls::runsByKeyAndByMouse()
{
    Author author;
    const QString all = QStringLiteral("end: 1 2 子 3 完");

    author.Key(Qt::Key_F5);
    QCOMPARE(Stop(), all);
    RunFixture::Source()->Initialize();
    author.Press("actionRunButton");
    QCOMPARE(Stop(), all);
    RunFixture::Source()->Initialize();
    RpaBreakpoint inLoop;
    inLoop.place = {mainProcess, QStringLiteral("c"), 0};
    RunFixture::Session()->SetBreakpoints({inLoop});
    author.Key(Qt::Key_F5, Qt::ControlModifier);
    QCOMPARE(Stop(), all);
    RunFixture::Session()->SetBreakpoints({});

    QCOMPARE(author.engine.asked, QStringList({mainProcess, mainProcess, mainProcess}));
    QVERIFY(!author.editor.app->GetModified());
}

void tst_RunControls::stepsThroughTheProcess()
{
    Author author;

    author.Key(Qt::Key_F10);
    QCOMPARE(Stop(), QStringLiteral("a"));
    author.Key(Qt::Key_F10);
    QCOMPARE(Stop(), QStringLiteral("b"));
    author.editor.Click(QStringLiteral("e"));
    author.Key(Qt::Key_F10, Qt::ControlModifier); // goes on to the chosen one
    QCOMPARE(Stop(), QStringLiteral("e"));
    author.Key(Qt::Key_F11);
    QCOMPARE(Stop(), QStringLiteral("s"));
    author.Key(Qt::Key_F11, Qt::ShiftModifier);
    QCOMPARE(Stop(), QStringLiteral("f"));
    author.Key(Qt::Key_F5);
    QCOMPARE(Stop(), QStringLiteral("end: 1 2 子 3 完"));

    QCOMPARE(author.engine.asked, QStringList(mainProcess));
}

void tst_RunControls::stepsByMouse()
{
    Author author;
    const auto* run = author.editor.Find<QToolButton>(QStringLiteral("actionRunButton"));

    author.Press("actionStepIntoButton");
    QCOMPARE(Stop(), QStringLiteral("a"));
    QCOMPARE(run->accessibleName(), QStringLiteral("继续"));
    QVERIFY2(run->toolTip().contains(QStringLiteral("F5")), qPrintable(run->toolTip()));
    author.Press("actionStepOverButton");
    QCOMPARE(Stop(), QStringLiteral("b"));
    author.Press("actionStepOutButton");
    QCOMPARE(Stop(), QStringLiteral("end: 1 2 子 3 完"));
    QCOMPARE(run->accessibleName(), QStringLiteral("运行"));
}

void tst_RunControls::runsToTheChosenStatement()
{
    Author author;

    author.editor.Click(QStringLiteral("d")); // inside the loop
    QVERIFY(author.Menu(QStringLiteral("d"), QStringLiteral("运行到此处")));

    QCOMPARE(Stop(), QStringLiteral("d"));
    QCOMPARE(RunFixture::Session()->GetPause().reason, RpaPauseReason::Target);
    QCOMPARE(RunFixture::Logged(), QStringLiteral("1"));
}

void tst_RunControls::runsOnlyWhatIsSelected()
{
    Author author;
    author.editor.Click(QStringLiteral("c"));
    author.editor.Click(QStringLiteral("f"), Qt::ControlModifier);
    ModalDriver modals{std::chrono::milliseconds(runWaitMs)};
    modals.Then([](QWidget* dialog) {
        auto* edit = dialog->findChild<QLineEdit*>(QStringLiteral("given_数"));
        QTRY_VERIFY(edit->hasFocus());
        QTest::keyClicks(edit, QStringLiteral("40 +"));
        QVERIFY(!dialog->findChild<QPushButton*>(QStringLiteral("pushButtonRun"))->isEnabled());
        QVERIFY(!dialog->findChild<QLabel*>(QStringLiteral("labelProblem"))->text().isEmpty());
        QTest::keyClicks(edit, QStringLiteral(" 2"));
        QTest::keyClick(edit, Qt::Key_Return);
    });

    author.Key(Qt::Key_F5, Qt::ControlModifier | Qt::ShiftModifier);

    QCOMPARE(Stop(), QStringLiteral("end: 42 完"));
}

void tst_RunControls::runsFromHereWithWhatTheLastRunKnew()
{
    Author author;
    author.editor.Click(QStringLiteral("e"));
    author.Key(Qt::Key_F10, Qt::ControlModifier);
    QSignalSpy answers(RunFixture::Session(), &RpaDebugSession::SigAnswer);
    QCOMPARE(Stop(), QStringLiteral("e"));
    // For the panes, and for a later run.
    QTRY_COMPARE_WITH_TIMEOUT(CountOf(answers, QStringLiteral("数")), 2, runWaitMs);
    author.Key(Qt::Key_F5, Qt::ShiftModifier);
    QVERIFY(RunFixture::WaitFor(State::Idle));
    RunFixture::Source()->Initialize();
    ModalDriver modals{std::chrono::milliseconds(runWaitMs)};
    modals.Then([](QWidget* dialog) {
        QCOMPARE(dialog->findChild<QLineEdit*>(QStringLiteral("given_数"))->text(), QStringLiteral("3"));
        QVERIFY(!dialog->findChild<QLabel*>(QStringLiteral("labelUnknown"))->isVisible());
        QTest::mouseClick(dialog->findChild<QPushButton*>(QStringLiteral("pushButtonRun")), Qt::LeftButton);
    });

    QVERIFY(author.Menu(QStringLiteral("e"), QStringLiteral("从此处运行…")));

    QTRY_COMPARE_WITH_TIMEOUT(modals.GetPendingCount(), 0, runWaitMs);
    QCOMPARE(Stop(), QStringLiteral("end: 子 3 完"));
}

void tst_RunControls::saysWhichVariablesAreUnknown()
{
    Author author({WithId("a", DebugStatements::Set("数", "1")), WithId("b", DebugStatements::Log("数")),
                   WithId("c", DebugStatements::Log("无"))});
    author.editor.Click(QStringLiteral("b"));
    QString told;
    ModalDriver modals{std::chrono::milliseconds(runWaitMs)};
    modals.Then([&told](QWidget* dialog) {
        told = dialog->findChild<QLabel*>(QStringLiteral("labelUnknown"))->text();
        QTest::keyClick(dialog, Qt::Key_Escape);
    });

    author.Key(Qt::Key_F10, Qt::ControlModifier | Qt::ShiftModifier);

    QCOMPARE(told, QStringLiteral("上次的值未知：数\n没有步骤设置：无"));
    QCOMPARE(author.engine.asked, QStringList());
}

void tst_RunControls::runsTheShownProcessAndStaysThere()
{
    Author author({WithId("a", DebugStatements::Set("数", "1"))});
    QObject::connect(&author.editor.widget, &ProcessVisualEditorWidget::SigRunProcess, &author.editor.widget,
                     &ProcessVisualEditorWidget::SwitchMainPage);
    author.editor.widget.ShowStatement(QStringLiteral("子流程"), QStringLiteral("t"));

    author.Key(Qt::Key_F10, Qt::ControlModifier);

    QCOMPARE(Stop(), QStringLiteral("t"));
    QCOMPARE(author.engine.asked, QStringList(QStringLiteral("子流程")));
    QCOMPARE(author.editor.widget.GetShownProcess(), QStringLiteral("子流程"));
    QCOMPARE(author.editor.view->currentIndex().data(Qt::UserRole).toString(), QStringLiteral("t"));
    author.editor.widget.SwitchMainPage(); // for others it does as ever
    QCOMPARE(author.editor.widget.GetShownProcess(), mainProcess);
}

void tst_RunControls::runsUnsavedEdits()
{
    Author author;
    author.editor.Click(QStringLiteral("e"));
    author.Key(Qt::Key_Delete);

    author.Key(Qt::Key_F5);

    QCOMPARE(Stop(), QStringLiteral("end: 1 2 完"));
    QVERIFY(author.editor.app->GetModified());
}

RPA_TEST_MAIN(tst_RunControls)
#include "tst_runcontrols.moc"
