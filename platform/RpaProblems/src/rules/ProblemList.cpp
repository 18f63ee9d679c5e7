// SPDX-License-Identifier: Apache-2.0

#include "ProblemList_p.h"

#include <QCryptographicHash>

namespace
{
QString MakeId(const RpaProblem& problem)
{
    constexpr int length = 16;
    const RpaProblemPlace& place = problem.place;
    const QStringList parts{place.page, place.processName, place.statementId, place.item, problem.subject};
    const QByteArray hash =
        QCryptographicHash::hash(parts.join(QChar::Null).toUtf8(), QCryptographicHash::Sha1).toHex();
    return problem.rule + QLatin1Char('-') + QLatin1String(hash.left(length));
}
} // namespace

void ProblemList::Add(RpaProblem problem)
{
    problem.id = MakeId(problem);
    QStringList& told = messages[problem.id];
    if (told.contains(problem.message))
        return; // met again on another way through the processes
    told.append(problem.message);
    if (told.size() > 1)
        problem.id += QStringLiteral("-%1").arg(told.size());
    problems.append(problem);
}

void ProblemList::Add(const RpaCheckInfo& info)
{
    RpaProblem problem;
    problem.rule = info.rule;
    problem.severity = RpaProblemSeverity::Error;
    if (info.line > 0)
        problem.place.area = RpaProblemArea::Program;
    problem.place.processName = info.processName;
    problem.place.statementId = info.statementId;
    problem.place.line = info.line;
    problem.subject = info.subject;
    problem.message = info.message;
    problem.remedy = info.remedy;
    if (info.rule == QLatin1String("undefined-variable"))
        problem.fix = RpaProblemFix::CreateVariable;
    Add(problem);
}
