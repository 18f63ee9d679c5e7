// SPDX-License-Identifier: Apache-2.0

#include "Checkers_p.h"

void Checkers::FindEmptyChoices(const CheckedApp& app, ProblemList& found)
{
    for (const RpaAppCopy::Page& page : app.Get().pages)
        for (const RpaParamItem& param : page.params) {
            if (!param.TakesChoices() || !param.choices.isEmpty())
                continue;
            RpaProblem problem;
            problem.rule = QStringLiteral("choice-without-options");
            problem.severity = RpaProblemSeverity::Warning;
            problem.place.area = RpaProblemArea::Page;
            problem.place.page = page.name;
            problem.place.item = param.name;
            problem.message = QStringLiteral("参数“%1”没有可选项").arg(param.GetTitle());
            problem.remedy = QStringLiteral("请为它添加选项，或改为其他类型");
            found.Add(problem);
        }
}
