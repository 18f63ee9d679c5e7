// SPDX-License-Identifier: Apache-2.0

#include "Checkers_p.h"

namespace
{
RpaProblem ToolProblem(const RpaAppCopy::Page& page, const RpaToolItem& tool)
{
    RpaProblem problem;
    problem.place.area = RpaProblemArea::Page;
    problem.place.page = page.name;
    problem.place.item = tool.id;
    problem.subject = tool.processName;
    return problem;
}

void LookAt(const CheckedApp& app, const RpaAppCopy::Page& page, const RpaToolItem& tool, ProblemList& found)
{
    RpaProblem problem = ToolProblem(page, tool);
    if (tool.processName.isEmpty()) {
        problem.rule = QStringLiteral("tool-without-process");
        problem.severity = RpaProblemSeverity::Warning;
        problem.message = QStringLiteral("按钮“%1”还没有选择流程").arg(tool.text);
        problem.remedy = QStringLiteral("请为它选择要运行的流程，或删除它");
        found.Add(problem);
    } else if (!app.Processes().FindProcess(tool.processName)) {
        problem.rule = QStringLiteral("tool-missing-process");
        problem.severity = RpaProblemSeverity::Error;
        problem.message = QStringLiteral("按钮“%1”要运行的流程“%2”不存在").arg(tool.text, tool.processName);
        problem.remedy = QStringLiteral("请选择已有的流程，或新建同名的流程");
        problem.fix = RpaProblemFix::ClearProcess;
        found.Add(problem);
    }
}
} // namespace

void Checkers::FindToolProblems(const CheckedApp& app, ProblemList& found)
{
    for (const RpaAppCopy::Page& page : app.Get().pages)
        for (const RpaToolItem& tool : page.tools)
            LookAt(app, page, tool, found);
}
