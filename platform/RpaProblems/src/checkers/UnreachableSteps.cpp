// SPDX-License-Identifier: Apache-2.0

#include "Checkers_p.h"
#include "StepFlow_p.h"

namespace
{
// The branches of an "if" that ends belong to it; what stands behind them is meant.
const RpaStatementNode* FirstBehind(const RpaStatementNode& end)
{
    const RpaStatementNode* node = &end;
    while ((node = StepFlow::NextEnabled(*node->GetParent(), node->GetRow()))) {
        const RpaCommandInfo* command = RpaCommandCatalogue::Instance()->Find(node->GetCommand());
        if (!command || command->blockKind != RpaBlockKind::Branch)
            return node;
    }
    return nullptr;
}

class UnreachableSteps
{
public:
    UnreachableSteps(const RpaProcess& checkedProcess, ProblemList& problems)
        : process(checkedProcess), found(problems)
    {
    }

    // One problem for each block: what follows goes the same way.
    void Look(const RpaStatementNode& block)
    {
        bool told = false;
        for (const RpaStatementNode* node = StepFlow::NextEnabled(block, -1); node;
             node = StepFlow::NextEnabled(block, node->GetRow())) {
            const RpaStatementNode* behind = !told && StepFlow::IsEnd(*node) ? FirstBehind(*node) : nullptr;
            if (behind)
                Tell(*behind);
            told = told || behind;
            Look(*node);
        }
    }

private:
    void Tell(const RpaStatementNode& node)
    {
        RpaProblem problem;
        problem.rule = QStringLiteral("unreachable-step");
        problem.severity = RpaProblemSeverity::Warning;
        problem.place = Checkers::At(process, node);
        problem.message = QStringLiteral("此步骤永远不会执行：前面的步骤已经离开这里");
        problem.remedy = QStringLiteral("请把它移到前面，或删除它");
        found.Add(problem);
    }

    const RpaProcess& process;
    ProblemList& found;
};
} // namespace

void Checkers::FindUnreachableSteps(const CheckedApp& app, ProblemList& found)
{
    for (int i = 0; i < app.Processes().GetCount(); ++i) {
        const RpaProcess& process = *app.Processes().GetProcess(i);
        UnreachableSteps(process, found).Look(*process.GetRoot());
    }
}
