// SPDX-License-Identifier: Apache-2.0

#include "Checkers_p.h"

#include <QSet>

namespace
{
// Every text that may name an element; a disabled statement keeps its element, it may come back.
QSet<QString> TextsOf(const QVector<RpaStatement>& statements)
{
    QSet<QString> texts;
    for (const RpaStatement& statement : statements) {
        for (const QString& text : statement.arguments)
            texts.insert(text);
        texts.unite(TextsOf(statement.children));
    }
    return texts;
}

class ElementUse
{
public:
    explicit ElementUse(const RpaAppCopy& app) : isProgram(app.isProgram)
    {
        for (const RpaAppCopy::Process& process : app.processes) {
            texts.unite(TextsOf(process.statements));
            program += process.programText;
        }
    }

    bool Has(const RpaNode& node) const
    {
        return texts.contains(node.id) || (isProgram && program.contains(node.id));
    }

private:
    const bool isProgram;
    QSet<QString> texts;
    QString program;
};
} // namespace

void Checkers::FindUnusedElements(const CheckedApp& app, ProblemList& found)
{
    const ElementUse use(app.Get());
    const QVector<RpaNode> nodes = app.Get().htmlNodes + app.Get().uiaNodes;
    for (const RpaNode& node : nodes) {
        if (use.Has(node))
            continue;
        RpaProblem problem;
        problem.rule = QStringLiteral("unused-element");
        problem.severity = RpaProblemSeverity::Hint;
        problem.place.area = RpaProblemArea::Elements;
        problem.place.item = node.id;
        problem.message = QStringLiteral("捕获的元素“%1”没有被使用").arg(node.name);
        problem.remedy = QStringLiteral("请在流程中使用它，或删除它");
        found.Add(problem);
    }
}
