// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "ProblemSamples.h"

#include <RpaProblems/RpaProblemFinder.h>

#include <QtTest>

// Rows that say what is found in an app, in the order in which it is told: "rule!" is an error, "rule" a warning,
// "rule?" a hint; nothing when there is no problem.
namespace ProblemRules
{
inline QString RulesOf(const QVector<RpaProblem>& problems)
{
    QStringList rules;
    for (const RpaProblem& problem : problems) {
        const bool isError = problem.severity == RpaProblemSeverity::Error;
        const bool isHint = problem.severity == RpaProblemSeverity::Hint;
        rules.append(problem.rule + QLatin1String(isError ? "!" : isHint ? "?" : ""));
    }
    return rules.join(QLatin1Char(' '));
}

inline QString RulesOf(const RpaAppCopy& app)
{
    return RulesOf(RpaProblemFinder::Find(app));
}

inline RpaProblem First(const RpaAppCopy& app)
{
    return RpaProblemFinder::Find(app).value(0);
}

inline void AddColumns()
{
    QTest::addColumn<RpaAppCopy>("app");
    QTest::addColumn<QString>("rules");
}

inline void Row(const char* name, const RpaAppCopy& app, const char* rules)
{
    QTest::newRow(name) << app << QString::fromLatin1(rules);
}

inline void Compare()
{
    QFETCH(RpaAppCopy, app);
    QTEST(RulesOf(app), "rules");
}

inline void AddFixColumns()
{
    QTest::addColumn<RpaAppCopy>("app");
    QTest::addColumn<int>("fix");
    QTest::addColumn<QString>("subject");
}

inline void FixRow(const char* name, const RpaAppCopy& app, RpaProblemFix fix, const char* subject)
{
    QTest::newRow(name) << app << static_cast<int>(fix) << QString::fromUtf8(subject);
}

// What is offered to mend the first problem, and about what.
inline void CompareFix()
{
    QFETCH(RpaAppCopy, app);
    const RpaProblem problem = First(app);
    QTEST(problem.subject, "subject");
    QTEST(static_cast<int>(problem.fix), "fix");
}
} // namespace ProblemRules
