// SPDX-License-Identifier: Apache-2.0

#include "Checkers_p.h"

#include <RpaProcessData/RpaExpression.h>

namespace
{
// What the app's processes say about parameters.
struct ParameterUse
{
    QStringList named;   // by statements
    QString python;      // all Python of the app, where any call may name one
    bool unsure = false; // a name that only a run knows
};

void Take(const RpaStatementNode& node, const RpaArgumentInfo& argument, ParameterUse& use)
{
    const QString text = CheckedApp::TextOf(node, argument);
    const bool isPython = RpaExpression::IsPython(argument.type, text);
    if (isPython)
        use.python += text + QLatin1Char('\n');
    if (argument.type != RpaArgumentType::Parameter)
        return;
    use.named.append(text);
    use.unsure = use.unsure || isPython;
}

ParameterUse UseOf(const CheckedApp& app)
{
    ParameterUse use;
    if (app.Get().isProgram) {
        for (const RpaAppCopy::Process& process : app.Get().processes)
            use.python += process.programText;
        return use;
    }
    app.ForEachEnabled([&](const RpaProcess&, const RpaStatementNode& node, const RpaCommandInfo& command) {
        for (const RpaArgumentInfo& argument : command.arguments)
            Take(node, argument, use);
    });
    return use;
}

bool CanBeRead(const RpaParamItem& param)
{
    return !param.IsOutput() && param.type != RpaParamType::Group && !param.IsForeign();
}
} // namespace

void Checkers::FindUnreadParameters(const CheckedApp& app, ProblemList& found)
{
    const ParameterUse use = UseOf(app);
    if (use.unsure)
        return;
    for (const RpaAppCopy::Page& page : app.Get().pages)
        for (const RpaParamItem& param : page.params) {
            if (!CanBeRead(param) || use.named.contains(param.name) || use.python.contains(param.name))
                continue;
            RpaProblem problem;
            problem.rule = QStringLiteral("unread-parameter");
            problem.severity = RpaProblemSeverity::Hint;
            problem.place.area = RpaProblemArea::Page;
            problem.place.page = page.name;
            problem.place.item = param.name;
            problem.message = QStringLiteral("没有流程读取参数“%1”").arg(param.GetTitle());
            problem.remedy = QStringLiteral("请在流程中读取它，或删除它");
            found.Add(problem);
        }
}
