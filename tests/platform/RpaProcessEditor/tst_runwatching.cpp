// SPDX-License-Identifier: Apache-2.0

#include "RunAuthor.h"
#include "TestApp.h"

#include <QCheckBox>
#include <QElapsedTimer>
#include <QLabel>
#include <QSlider>

#include <memory>

using namespace EditorFixture;
using State = RpaDebugSession::State;

// Runs that are paused, slowed down, ended and refused on the page of the processes.
class tst_RunWatching : public QObject
{
    Q_OBJECT

private slots:
    void pausesAndStops();
    void leavesNoPlanBehindARefusedRun();
    void stopsAtAnErrorWhenItIsToldTo();
    void goesSlowlyAsTheSliderSays();
    void endsARunThatStandsStillWithItsEditor();
};

void tst_RunWatching::pausesAndStops()
{
    Author author({WithId("a", DebugStatements::Of("loop.while",
                                                   {{QStringLiteral("condition"), QStringLiteral("True")}},
                                                   {WithId("b", DebugStatements::Set("数", "1"))}))});
    author.Key(Qt::Key_F5);
    QCOMPARE(RunFixture::Session()->GetState(), State::Running);
    const auto* pause = author.editor.Find<QToolButton>(QStringLiteral("actionPauseButton"));
    QVERIFY(pause->isEnabled());

    author.Press("actionPauseButton");
    QVERIFY(RunFixture::WaitFor(State::Paused));
    QVERIFY(!pause->isEnabled());
    author.Key(Qt::Key_F5);
    QCOMPARE(RunFixture::Session()->GetState(), State::Running);
    author.Key(Qt::Key_F6);
    QVERIFY(RunFixture::WaitFor(State::Paused));
    author.Press("actionStopButton");

    QVERIFY(RunFixture::WaitFor(State::Idle));
    QVERIFY(RunFixture::LogHas(QStringLiteral("已停止")));
    QVERIFY(!author.editor.Find<QToolButton>(QStringLiteral("actionStopButton"))->isEnabled());
}

void tst_RunWatching::leavesNoPlanBehindARefusedRun()
{
    Author author;
    author.editor.Click(QStringLiteral("b"));
    author.engine.refuses = true;
    author.Key(Qt::Key_F10, Qt::ControlModifier);
    QCOMPARE(author.engine.asked.size(), 1);
    author.engine.refuses = false;

    QVERIFY(RunFixture::Engine()->Execute(mainProcess)); // by a tool's button

    QCOMPARE(Stop(), QStringLiteral("end: 1 2 子 3 完"));
}

void tst_RunWatching::stopsAtAnErrorWhenItIsToldTo()
{
    Author author(
        {WithId("a", DebugStatements::Set("数", "1")), WithId("b", DebugStatements::Log("数 / 0"))});
    auto* check = author.editor.Find<QCheckBox>(QStringLiteral("checkErrorStop"));
    check->setFocus();
    QTest::keyClick(check, Qt::Key_Space);

    author.Key(Qt::Key_F5);

    QCOMPARE(Stop(), QStringLiteral("b"));
    QCOMPARE(RunFixture::Session()->GetPause().reason, RpaPauseReason::Error);
}

void tst_RunWatching::goesSlowlyAsTheSliderSays()
{
    Editor other;
    Author author;
    auto* slider = author.editor.Find<QSlider>(QStringLiteral("sliderSlow"));
    QTest::keyClick(slider, Qt::Key_End);
    QCOMPARE(slider->value(), RpaDebugSession::slowestMs);
    QTest::keyClick(slider, Qt::Key_Home);
    QTest::keyClick(slider, Qt::Key_Right);
    QCOMPARE(other.Find<QLabel>(QStringLiteral("labelSlowValue"))->text(), QStringLiteral("0.1 秒/步"));

    QElapsedTimer timer;
    timer.start();
    author.Key(Qt::Key_F5);
    QCOMPARE(Stop(), QStringLiteral("end: 1 2 子 3 完"));

    QVERIFY2(timer.elapsed() > 800, qPrintable(QString::number(timer.elapsed()))); // ten steps
}

void tst_RunWatching::endsARunThatStandsStillWithItsEditor()
{
    auto editor = std::make_unique<Editor>(QVector<RpaStatement>{WithId("a", DebugStatements::Log("1")),
                                                                 WithId("b", DebugStatements::Log("2"))});
    const RpaAppDataPtr app = editor->app;
    const RunFixture engine(editor->widget, app, true);
    editor->Find<QSlider>(QStringLiteral("sliderSlow"))->setValue(100);
    editor->Key(Qt::Key_F10);
    QCOMPARE(Stop(), QStringLiteral("a"));

    editor.reset();

    QVERIFY(RunFixture::WaitFor(State::Idle));
    QVERIFY(RunFixture::LogHas(QStringLiteral("已停止")));
    const Editor next;
    QCOMPARE(next.Find<QSlider>(QStringLiteral("sliderSlow"))->value(), 0);
}

RPA_TEST_MAIN(tst_RunWatching)
#include "tst_runwatching.moc"
