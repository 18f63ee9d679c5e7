// SPDX-License-Identifier: Apache-2.0

// A program that speaks for its debugger, and what the author asks at a bad time: nothing of it is believed, and a run
// can always be ended.

#include "DebugScript.h"

#include <QSignalSpy>

namespace
{

// Programs reach the child that they run in.
const QString forging =
    QStringLiteral("import __main__\n"
                   "def tell(**frame):\n"
                   "    __main__.LINK.send({'t': 'debug', **frame})\n"
                   "def pause(stop, **more):\n"
                   "    tell(event='paused', stop=stop, **{'reason': 'step', 'stack': [], **more})\n");
constexpr int firstLine = 6; // behind them

QString Forging(const char* program)
{
    return forging + QString::fromUtf8(program) + QStringLiteral("\nprint('over')\n");
}

QString LineText(int offset)
{
    return QString::number(firstLine + offset);
}

} // namespace

class DebugHostile : public QObject
{
    Q_OBJECT

private slots:
    void stopsThatAreNoneAreNotShown_data();
    void stopsThatAreNoneAreNotShown();
    void aFrameThatIsNoneEndsTheRun_data();
    void aFrameThatIsNoneEndsTheRun();
    void whatIsShownIsBounded();
    void aStopThatWasIsNotShownAgain();
    void anAnswerIsTakenOnceAndOnlyWhenAsked();
    void breakpointsArePlacedInTheProgramOnly();
    void nothingIsAskedOfARunningProgram();
    void anEndlessComputationEndsWithTheRun_data();
    void anEndlessComputationEndsWithTheRun();
    void theChildDiesWhileItComputes();
    void objectsThatLieAboutThemselvesAreShown_data();
    void objectsThatLieAboutThemselvesAreShown();
    void manySettingsAtOnceAreAllTaken();
    void watchesThatAreSetDuringAStopAreComputed();
    void aPlanIsForgottenWhenItsRunIsGivenUp();
};

void DebugHostile::stopsThatAreNoneAreNotShown_data()
{
    QTest::addColumn<QString>("frame");
    QTest::newRow("number 0") << "pause(0)";
    QTest::newRow("a negative number") << "pause(-4)";
    QTest::newRow("a number that is too large") << "pause(2 ** 40)";
    QTest::newRow("no number") << "pause(None)";
    QTest::newRow("a text for a number") << "pause('x')";
    QTest::newRow("a list for a number") << "pause([1])";
    QTest::newRow("a reason that is none") << "pause(1, reason='because')";
    QTest::newRow("a list for a reason") << "pause(1, reason=['step'])";
    QTest::newRow("no reason") << "tell(event='paused', stop=1)";
    QTest::newRow("an event that is none") << "tell(event='other', stop=1)";
    QTest::newRow("going on without a stop") << "tell(event='resumed', stop=0)";
    QTest::newRow("watches without a stop") << "tell(event='watches', stop=0, values=[{}])";
    QTest::newRow("nothing at all") << "tell()";
}

void DebugHostile::stopsThatAreNoneAreNotShown()
{
    QFETCH(QString, frame);
    DebugScript script;
    script.SetText(Forging(frame.toUtf8().constData()));
    QSignalSpy paused(DebugScript::Session(), &RpaDebugSession::SigPaused);
    QSignalSpy resumed(DebugScript::Session(), &RpaDebugSession::SigResumed);
    QSignalSpy watches(DebugScript::Session(), &RpaDebugSession::SigWatches);

    const QStringList told =
        script.Do({QStringLiteral("errors all"), QStringLiteral("run"), QStringLiteral("log")});

    QCOMPARE(told, (QStringList{QStringLiteral("end"), QStringLiteral("over")}));
    QVERIFY(paused.isEmpty() && resumed.isEmpty() && watches.isEmpty());
    // A run that nobody debugs has no stops at all.
    script.SetText(Forging("pause(1)"));
    QCOMPARE(script.Do({QStringLiteral("errors never"), QStringLiteral("run")}),
             QStringList{QStringLiteral("end")});
    QVERIFY(paused.isEmpty());
}

void DebugHostile::aFrameThatIsNoneEndsTheRun_data()
{
    QTest::addColumn<QString>("line");
    QTest::newRow("no JSON") << "__main__.LINK.socket.sendall(b'\\0\\0\\0\\3{,}')";
    QTest::newRow("a list") << "__main__.LINK.socket.sendall(b'\\0\\0\\0\\2[]')";
    QTest::newRow("more than a frame may have") << "__main__.LINK.socket.sendall(b'\\x7f\\0\\0\\0')";
    QTest::newRow("deeper than a frame may be")
        << "__main__.LINK.socket.sendall(b'\\0\\1\\x86\\xa0' + b'[' * 100000)";
}

void DebugHostile::aFrameThatIsNoneEndsTheRun()
{
    QFETCH(QString, line);
    DebugScript script;
    // It sleeps: the reason must not be that the program ended.
    script.SetText(Forging((line + QStringLiteral("\nimport time\ntime.sleep(60)")).toUtf8().constData()));

    QCOMPARE(script.Do({QStringLiteral("errors all"), QStringLiteral("run")}),
             QStringList{QStringLiteral("failed")});

    QVERIFY(DebugScript::LogHas(QStringLiteral("流程发来的数据")));
    QVERIFY(DebugScript::Session()->GetState() == RpaDebugSession::State::Idle);
}

void DebugHostile::whatIsShownIsBounded()
{
    DebugScript script;
    script.SetText(Forging("long = 'x' * 30000\n"
                           "pause(1, stack=[[long, 1]] * 100 + [['f', 1]] * 5000 + [[5], 7, None, ['f', 10 "
                           "** 9]], depth='deep', note=long,\n"
                           "      error={'type': long, 'text': long, 'trace': [long]})"));
    QSignalSpy paused(DebugScript::Session(), &RpaDebugSession::SigPaused);

    script.Do({QStringLiteral("errors all"), QStringLiteral("begin")});

    QTRY_COMPARE_WITH_TIMEOUT(paused.size(), 1, 20000);
    const RpaPause pause = paused.first().first().value<RpaPause>();
    QCOMPARE(pause.stack.size(), 200);
    QCOMPARE(pause.stack.first().functionName.size(), 300);
    QCOMPARE(pause.depth, 0);
    QVERIFY(pause.note.size() <= 20000 && pause.errorText.size() <= 20000);
    QCOMPARE(pause.errorType.size(), 300);
    QVERIFY(pause.errorTrace.isEmpty());
}

void DebugHostile::aStopThatWasIsNotShownAgain()
{
    DebugScript script;
    script.SetText(Forging("x = 1\npause(1)\ny = 2"));
    QSignalSpy paused(DebugScript::Session(), &RpaDebugSession::SigPaused);

    const QStringList told =
        script.Do({QStringLiteral("break ") + LineText(0), QStringLiteral("break ") + LineText(2),
                   QStringLiteral("run"), QStringLiteral("eval pause(1)"), QStringLiteral("eval pause(2)"),
                   QStringLiteral("eval tell(event='resumed', stop=7)"), QStringLiteral("continue"),
                   QStringLiteral("continue")});

    QCOMPARE(told, (QStringList{QStringLiteral("breakpoint ") + LineText(0), QStringLiteral("= None"),
                                QStringLiteral("= None"), QStringLiteral("= None"),
                                QStringLiteral("breakpoint ") + LineText(2), QStringLiteral("end")}));
    QCOMPARE(paused.size(), 2);
}

void DebugHostile::anAnswerIsTakenOnceAndOnlyWhenAsked()
{
    DebugScript script;
    script.SetText(Forging("x = 1"));
    script.Do({QStringLiteral("break ") + LineText(0), QStringLiteral("run"), QStringLiteral("eval x")});
    QSignalSpy answers(DebugScript::Session(), &RpaDebugSession::SigAnswer);
    const int number = script.answer.request + 1;

    // Answers of other questions and of other stops, then a doubled one of this.
    script.Do({QStringLiteral("eval [tell(event='answer', stop=s, id=i, ok=True) for s, i in "
                              "[(1, %1), (1, %2), (2, %3), (1, -1), (1, None)]]")
                   .arg(number - 1)
                   .arg(number + 50)
                   .arg(number)});
    QCOMPARE(answers.size(), 1);
    QCOMPARE(answers.first().first().value<RpaDebugAnswer>().values.size(), 1);
    script.Do({QStringLiteral("eval [tell(event='answer', stop=1, id=%1, ok=True) for _ in range(3)]")
                   .arg(number + 1),
               QStringLiteral("continue")});

    QCOMPARE(answers.size(), 2);
}

void DebugHostile::breakpointsArePlacedInTheProgramOnly()
{
    DebugScript script;
    script.SetText(Forging(
        "tell(event='placed', lines=[[1, -5], [0, 1], [-3, 1], [1, 10 ** 6], ['x', []], 7, [2, 3]])"));
    QSignalSpy placed(DebugScript::Session(), &RpaDebugSession::SigPlaced);

    script.Do({QStringLiteral("errors all"), QStringLiteral("run")});

    QCOMPARE(placed.size(), 1);
    QCOMPARE(placed.first(), (QVariantList{2, 3}));
}

void DebugHostile::nothingIsAskedOfARunningProgram()
{
    DebugScript script;
    script.SetText(QStringLiteral("print('going', flush=True)\nwhile True: pass\n"));
    RpaDebugSession* const session = DebugScript::Session();
    QVERIFY(!session->Pause());

    script.Do({QStringLiteral("begin"), QStringLiteral("until going")});

    QCOMPARE(session->AskScopes(0), 0);
    QCOMPARE(session->AskChildren(1, 0, 10), 0);
    QCOMPARE(session->Evaluate(0, QStringLiteral("1")), 0);
    QVERIFY(!session->Resume(RpaDebugStep::Over));
    QVERIFY(!session->RunTo({QStringLiteral("主流程"), {}, 1}));
    QCOMPARE(script.Do({QStringLiteral("stop")}), QStringList{QStringLiteral("stopped")});
    QVERIFY(!session->Pause());
}

void DebugHostile::anEndlessComputationEndsWithTheRun_data()
{
    QTest::addColumn<QString>("expression");
    QTest::newRow("in Python") << "any(k for k in iter(int, 1))";
    QTest::newRow("in a library that does not return") << "sum(iter(int, 1))";
    QTest::newRow("that catches everything") << "spin()";
}

void DebugHostile::anEndlessComputationEndsWithTheRun()
{
    QFETCH(QString, expression);
    DebugScript script;
    script.SetText(
        QStringLiteral("def spin():\n    print('spins', flush=True)\n    while True:\n        try:\n"
                       "            while True: pass\n        except BaseException: pass\nx = 1\n"));
    script.Do({QStringLiteral("break 7"), QStringLiteral("run")});
    QSignalSpy answers(DebugScript::Session(), &RpaDebugSession::SigAnswer);

    QVERIFY(DebugScript::Session()->Evaluate(0, expression) > 0);

    QCOMPARE(script.Do({QStringLiteral("stop")}), QStringList{QStringLiteral("stopped")});
    QVERIFY(answers.isEmpty());
    QVERIFY(DebugScript::Session()->GetState() == RpaDebugSession::State::Idle);
}

void DebugHostile::theChildDiesWhileItComputes()
{
    DebugScript script;
    script.SetText(QStringLiteral("x = 1\n"));

    const QStringList told = script.Do({QStringLiteral("break 1"), QStringLiteral("run"),
                                        QStringLiteral("eval __import__('os')._exit(9)"),
                                        QStringLiteral("run"), QStringLiteral("eval 1 + 1")});

    QCOMPARE(told, (QStringList{QStringLiteral("breakpoint 1"), QStringLiteral("no answer"),
                                QStringLiteral("breakpoint 1"), QStringLiteral("= 2")}));
}

void DebugHostile::objectsThatLieAboutThemselvesAreShown_data()
{
    QTest::addColumn<QString>("body");
    QTest::addColumn<QString>("shown");
    const auto row = [](const char* name, const char* body, const char* shown) {
        QTest::newRow(name) << QString::fromUtf8(body) << QString::fromUtf8(shown);
    };
    row("a class that is another's", "    __class__ = list\n    def __repr__(self): return 'C!'", "C!");
    row("a class that raises",
        "    @property\n    def __class__(self): raise KeyError\n    def __repr__(self): return 'C!'", "C!");
    row("attributes that are none", "    __dict__ = 5\n    def __repr__(self): return 'C!'", "C!");
    row("attributes that raise",
        "    @property\n    def __dict__(self): raise KeyError\n    def __repr__(self): return 'C!'", "C!");
    row("a text without an end",
        "    def __repr__(self):\n        class T(str):\n            def __len__(self): return 10 ** 30\n"
        "        return T('C!')",
        "C!");
    row("a class without a name",
        "    class M(type):\n        __name__ = property(lambda c: 1 / 0)\nclass C(metaclass=C.M):\n"
        "    def __repr__(self): return 'C!'",
        "C!");
}

void DebugHostile::objectsThatLieAboutThemselvesAreShown()
{
    QFETCH(QString, body);
    QFETCH(QString, shown);
    DebugScript script;
    script.SetText(QStringLiteral("class C:\n") + body + QStringLiteral("\nx = C()\npass\n"));
    const int last = 3 + body.count(QLatin1Char('\n')) + 1;

    const QStringList told = script.Do({QStringLiteral("break %1").arg(last), QStringLiteral("run"),
                                        QStringLiteral("vars 全局变量"), QStringLiteral("continue")});

    QCOMPARE(told.mid(1), (QStringList{QStringLiteral("x=") + shown, QStringLiteral("end")}));
}

void DebugHostile::manySettingsAtOnceAreAllTaken()
{
    DebugScript script;
    script.SetText(QStringLiteral("n = 0\ndef f(k):\n    return k + 1\nprint('going', flush=True)\n"
                                  "while True:\n    n = f(n)\n"));
    script.Do({QStringLiteral("begin")});

    // The first ones come before the program is there, the others while it takes those before them.
    for (int i = 0; i < 200; ++i) {
        RpaBreakpoint point;
        point.place = {QStringLiteral("主流程"), {}, i % 2 ? 3 : 6};
        point.condition = QStringLiteral("n < 0");
        DebugScript::Session()->SetBreakpoints({point});
        DebugScript::Session()->SetErrorStop(i % 2 ? RpaErrorStop::All : RpaErrorStop::Never);
        if (i == 100)
            script.Do({QStringLiteral("until going")});
    }

    QCOMPARE(script
                 .Do({QStringLiteral("break 3"), QStringLiteral("wait"), QStringLiteral("clear 3"),
                      QStringLiteral("pause"), QStringLiteral("stop")})
                 .first(),
             QStringLiteral("breakpoint f:3"));
}

void DebugHostile::watchesThatAreSetDuringAStopAreComputed()
{
    DebugScript script;
    script.SetText(QStringLiteral("x = 20\npass\n"));
    QSignalSpy watches(DebugScript::Session(), &RpaDebugSession::SigWatches);
    script.Do({QStringLiteral("break 2"), QStringLiteral("run")});
    QVERIFY(watches.isEmpty());

    script.Do({QStringLiteral("watch x + 1"), QStringLiteral("eval x")});

    QCOMPARE(watches.size(), 1);
    QCOMPARE(script.watched.value(0).text, QStringLiteral("21"));
}

void DebugHostile::aPlanIsForgottenWhenItsRunIsGivenUp()
{
    DebugScript script;
    script.SetText(QStringLiteral("x = 20\nprint('whole')\nprint(x)\n"));
    RpaRunPlan plan;
    plan.kind = RpaRunKind::Only;
    plan.place = {QStringLiteral("主流程"), {}, 3};
    DebugScript::Session()->SetNextRun(plan);

    DebugScript::Engine()->SetWaiting(true);
    DebugScript::Engine()->SetWaiting(false);
    QCoreApplication::processEvents();
    const RpaRunPlan next = DebugScript::Session()->TakeNextRun();

    QVERIFY(next.kind == RpaRunKind::Whole);
    DebugScript::Session()->SetNextRun(plan);
    DebugScript::Engine()->SetWaiting(true);
    DebugScript::Engine()->SetWaiting(false);
    QVERIFY(DebugScript::Session()->TakeNextRun().kind == RpaRunKind::Only);
}

QTEST_MAIN(DebugHostile)
#include "tst_debughostile.moc"
