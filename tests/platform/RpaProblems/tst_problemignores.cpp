// SPDX-License-Identifier: Apache-2.0

#include <RpaProblems/RpaProblemIgnores.h>

#include <QTemporaryDir>
#include <QtTest>

namespace
{
RpaProblem Make(const QString& id, RpaProblemSeverity severity = RpaProblemSeverity::Warning)
{
    RpaProblem problem;
    problem.id = id;
    problem.severity = severity;
    return problem;
}

const QString reason = QStringLiteral("测试环境才用到");
} // namespace

class ProblemIgnoresTest : public QObject
{
    Q_OBJECT

private slots:
    void keepsTheReasonForTheNextTime();
    void keepsAppsApart();
    void takesBack();
    void wantsAReason();
    void letsNoErrorPass();
    void keepsNothingForAnAppWithoutId();
    void saysWhenItCannotBeKept();

private:
    QString File() const { return folder.filePath(QStringLiteral("ignored.ini")); }

    QTemporaryDir folder;
};

void ProblemIgnoresTest::keepsTheReasonForTheNextTime()
{
    const RpaProblem problem = Make(QStringLiteral("dead-link-1"));
    QVERIFY(RpaProblemIgnores(File(), QStringLiteral("甲/1")).Ignore(problem, reason));

    const RpaProblemIgnores again(File(), QStringLiteral("甲/1"));
    QCOMPARE(again.GetReason(problem), reason);
    QCOMPARE(again.GetReason(Make(QStringLiteral("dead-link-2"))), QString());
}

void ProblemIgnoresTest::keepsAppsApart()
{
    const RpaProblem problem = Make(QStringLiteral("dead-link-3"));
    RpaProblemIgnores(File(), QStringLiteral("a")).Ignore(problem, reason);

    QCOMPARE(RpaProblemIgnores(File(), QStringLiteral("b")).GetReason(problem), QString());
}

void ProblemIgnoresTest::takesBack()
{
    const RpaProblem problem = Make(QStringLiteral("dead-link-4"));
    RpaProblemIgnores ignores(File(), QStringLiteral("a"));
    ignores.Ignore(problem, reason);

    ignores.TakeBack(problem);

    QCOMPARE(ignores.GetReason(problem), QString());
}

void ProblemIgnoresTest::wantsAReason()
{
    const RpaProblem problem = Make(QStringLiteral("dead-link-5"));
    RpaProblemIgnores ignores(File(), QStringLiteral("a"));

    QVERIFY(!ignores.Ignore(problem, QStringLiteral(" \n")));
    QCOMPARE(ignores.GetReason(problem), QString());
}

void ProblemIgnoresTest::letsNoErrorPass()
{
    RpaProblemIgnores ignores(File(), QStringLiteral("a"));
    QVERIFY(!ignores.Ignore(Make(QStringLiteral("x"), RpaProblemSeverity::Error), reason));

    // Nor one that became an error since.
    ignores.Ignore(Make(QStringLiteral("y")), reason);
    QCOMPARE(ignores.GetReason(Make(QStringLiteral("y"), RpaProblemSeverity::Error)), QString());
}

void ProblemIgnoresTest::keepsNothingForAnAppWithoutId()
{
    const RpaProblem problem = Make(QStringLiteral("dead-link-6"));

    QVERIFY(!RpaProblemIgnores(File(), QString()).Ignore(problem, reason));
}

void ProblemIgnoresTest::saysWhenItCannotBeKept()
{
    // A folder stands where the file should be.
    RpaProblemIgnores ignores(folder.path(), QStringLiteral("a"));

    QVERIFY(!ignores.Ignore(Make(QStringLiteral("dead-link-7")), reason));
}

QTEST_GUILESS_MAIN(ProblemIgnoresTest)
#include "tst_problemignores.moc"
