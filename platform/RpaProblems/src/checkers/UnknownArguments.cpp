// SPDX-License-Identifier: Apache-2.0

#include "Checkers_p.h"

void Checkers::FindUnknownArguments(const CheckedApp& app, ProblemList& found)
{
    app.ForEachEnabled(
        [&](const RpaProcess& process, const RpaStatementNode& node, const RpaCommandInfo& command) {
            const QStringList names = node.GetValues().arguments.keys();
            for (const QString& name : names) {
                if (command.FindArgument(name))
                    continue;
                RpaProblem problem;
                problem.rule = QStringLiteral("unknown-argument");
                problem.severity = RpaProblemSeverity::Warning;
                problem.place = At(process, node);
                problem.subject = name;
                problem.message = QStringLiteral("“%1”没有名为“%2”的参数").arg(command.title, name);
                problem.remedy = QStringLiteral("请移除此参数，或更新到支持它的版本");
                problem.fix = RpaProblemFix::RemoveArgument;
                found.Add(problem);
            }
        });
}
