// SPDX-License-Identifier: Apache-2.0

#include "Checkers_p.h"

#include <RpaProcessData/RpaStatementNames.h>

#include <QSet>

namespace
{
QSet<QString> ReadAnywhere(const CheckedApp& app)
{
    QSet<QString> read;
    app.ForEachEnabled([&](const RpaProcess&, const RpaStatementNode& node, const RpaCommandInfo&) {
        const QStringList names = RpaStatementNames::GetRead(node);
        for (const QString& name : names)
            read.insert(name);
    });
    return read;
}

// A loop or a branch binds its name whether it is wanted or not; "_" says that it is not.
bool MayStayUnread(const QString& name, const RpaCommandInfo& command)
{
    return command.HasChildren() || name.isEmpty() || name.startsWith(QLatin1Char('_'));
}
} // namespace

void Checkers::FindUnusedVariables(const CheckedApp& app, ProblemList& found)
{
    QSet<QString> seen = ReadAnywhere(app);
    app.ForEachEnabled([&](const RpaProcess& process, const RpaStatementNode& node,
                           const RpaCommandInfo& command) {
        const QStringList names = RpaStatementNames::GetSet(node);
        for (const QString& name : names) {
            if (MayStayUnread(name, command) || seen.contains(name))
                continue;
            seen.insert(name); // the first place is enough
            RpaProblem problem;
            problem.rule = QStringLiteral("unused-variable");
            problem.severity = RpaProblemSeverity::Hint;
            problem.place = At(process, node);
            problem.subject = name;
            problem.message = QStringLiteral("变量“%1”赋值后从未使用").arg(name);
            problem.remedy = QStringLiteral("请使用它，或删除不需要的赋值；不需要的结果可以用“_”开头命名");
            found.Add(problem);
        }
    });
}
