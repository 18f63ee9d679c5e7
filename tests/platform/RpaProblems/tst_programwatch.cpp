// SPDX-License-Identifier: Apache-2.0

#include <RpaAppData/RpaAppData.h>
#include <RpaAppData/RpaAppExtendInfo.h>
#include <RpaProblems/RpaProblemWatch.h>
#include <RpaProcessData/ProcessDataManager.h>
#include <RpaProcessData/RpaProcess.h>

#include <QtTest>

namespace
{
constexpr int longWaitMs = 30000;

RpaAppDataPtr MakeProgram(const QString& text)
{
    const RpaAppDataPtr app(new RpaAppData);
    app->InitDefault();
    app->GetAppExtendInfo()->SetAppKind(1);
    app->GetProcessDataManager()->GetProcess(0)->SetProgramText(text);
    return app;
}

QStringList RulesOf(const RpaProblemWatch& watch)
{
    QStringList rules;
    for (const RpaProblem& problem : watch.Get())
        rules.append(problem.rule);
    return rules;
}
} // namespace

// A program while it is edited: what a real Python says about it stands beside what is found without one.
class ProgramWatchTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { qunsetenv("RPA_PYTHON"); }
    void tellsWhatPythonAndTheCheckersFindTogether();
    void looksAgainAfterAnEdit();
    void keepsWhatPythonSaidWhileOtherThingsChange();
    void findsTheRestWithoutAPython();
    void forgetsTheFormerProgram();
};

void ProgramWatchTest::tellsWhatPythonAndTheCheckersFindTogether()
{
    const RpaAppDataPtr app = MakeProgram(QStringLiteral("import numpy\nprint(x)"));
    RpaProblemWatch watch;
    QStringList seen;
    connect(&watch, &RpaProblemWatch::SigChanged, this,
            [&] { seen.append(RulesOf(watch).join(QLatin1Char(' '))); });

    watch.SetApp(app.data());

    QTRY_VERIFY_WITH_TIMEOUT(watch.IsCurrent(), longWaitMs);
    QCOMPARE(seen, QStringList{QStringLiteral("unused-import undefined-name unlisted-package")});
}

void ProgramWatchTest::looksAgainAfterAnEdit()
{
    const RpaAppDataPtr app = MakeProgram(QStringLiteral("print(x)"));
    RpaProblemWatch watch;
    watch.SetApp(app.data());
    QTRY_COMPARE_WITH_TIMEOUT(RulesOf(watch), QStringList{QStringLiteral("undefined-name")}, longWaitMs);

    app->GetProcessDataManager()->GetProcess(0)->SetProgramText(QStringLiteral("x = 1\nprint(x)"));

    QVERIFY(!watch.IsCurrent());
    QTRY_COMPARE_WITH_TIMEOUT(RulesOf(watch), QStringList(), longWaitMs);
}

void ProgramWatchTest::keepsWhatPythonSaidWhileOtherThingsChange()
{
    const RpaAppDataPtr app = MakeProgram(QStringLiteral("print(x)"));
    RpaProblemWatch watch;
    watch.SetApp(app.data());
    QTRY_COMPARE_WITH_TIMEOUT(RulesOf(watch), QStringList{QStringLiteral("undefined-name")}, longWaitMs);

    qputenv("RPA_PYTHON", "/nothing/here"); // would find nothing
    app->GetAppExtendInfo()->manual = QStringLiteral("<a href=\"\">甲</a>");
    app->SetModified(true);

    QTRY_VERIFY_WITH_TIMEOUT(watch.IsCurrent(), longWaitMs);
    QCOMPARE(RulesOf(watch), QStringList({QStringLiteral("undefined-name"), QStringLiteral("dead-link")}));
}

void ProgramWatchTest::findsTheRestWithoutAPython()
{
    qputenv("RPA_PYTHON", "/nothing/here");
    const RpaAppDataPtr app = MakeProgram(QStringLiteral("import numpy\nprint(x)"));
    RpaProblemWatch watch;

    watch.SetApp(app.data());

    QTRY_VERIFY_WITH_TIMEOUT(watch.IsCurrent(), longWaitMs);
    QCOMPARE(RulesOf(watch), QStringList{QStringLiteral("unlisted-package")});
}

void ProgramWatchTest::forgetsTheFormerProgram()
{
    const RpaAppDataPtr former = MakeProgram(QStringLiteral("print(x)"));
    const RpaAppDataPtr next = MakeProgram(QString());
    RpaProblemWatch watch;
    watch.SetApp(former.data()); // Python is being asked

    watch.SetApp(next.data());

    QTRY_VERIFY_WITH_TIMEOUT(watch.IsCurrent(), longWaitMs);
    QCOMPARE(RulesOf(watch), QStringList());
}

QTEST_GUILESS_MAIN(ProgramWatchTest)
#include "tst_programwatch.moc"
