// SPDX-License-Identifier: Apache-2.0

#include "StepFlow_p.h"

#include <RpaProcessData/RpaCommandCatalogue.h>

namespace
{
// The first word of what the command becomes; empty for an unknown one.
QString WordOf(const RpaStatementNode& node)
{
    const RpaCommandInfo* command = RpaCommandCatalogue::Instance()->Find(node.GetCommand());
    if (!command)
        return {};
    int end = 0;
    const QString& python = command->pythonTemplate;
    while (end < python.size() && python.at(end).isLetter())
        ++end;
    return python.left(end);
}

bool Leaves(const QString& word)
{
    return word == QLatin1String("return") || word == QLatin1String("raise");
}

template <class Test>
bool AnyInside(const RpaStatementNode& node, const Test& test)
{
    for (int row = 0; row < node.GetChildCount(); ++row)
        if (node.GetChild(row)->GetValues().enabled && test(*node.GetChild(row)))
            return true;
    return false;
}

// A "break" of this loop, not of one inside it.
bool HasBreak(const RpaStatementNode& block)
{
    return AnyInside(block, [](const RpaStatementNode& child) {
        const QString word = WordOf(child);
        const bool isLoop = word == QLatin1String("while") || word == QLatin1String("for");
        return word == QLatin1String("break") || (!isLoop && HasBreak(child));
    });
}

bool IsEndlessLoop(const RpaStatementNode& node)
{
    if (WordOf(node) != QLatin1String("while") || HasBreak(node))
        return false;
    const QString condition = node.GetArgument(QStringLiteral("condition")).trimmed();
    return condition == QLatin1String("True") || condition == QLatin1String("1");
}

bool EndsInside(const RpaStatementNode& block)
{
    return AnyInside(block, StepFlow::IsEnd);
}

// From an "if" through its "elif"s to an "else", each of which ends.
bool AllBranchesEnd(const RpaStatementNode& first)
{
    const RpaStatementNode* branch = &first;
    while (branch && EndsInside(*branch)) {
        branch = StepFlow::NextEnabled(*branch->GetParent(), branch->GetRow());
        const QString word = branch ? WordOf(*branch) : QString();
        if (word == QLatin1String("else"))
            return EndsInside(*branch);
        if (word != QLatin1String("elif"))
            return false;
    }
    return false;
}
} // namespace

const RpaStatementNode* StepFlow::NextEnabled(const RpaStatementNode& parent, int row)
{
    while (++row < parent.GetChildCount())
        if (parent.GetChild(row)->GetValues().enabled)
            return parent.GetChild(row);
    return nullptr;
}

bool StepFlow::IsEnd(const RpaStatementNode& node)
{
    const QString word = WordOf(node);
    if (Leaves(word) || word == QLatin1String("break") || word == QLatin1String("continue"))
        return true;
    return IsEndlessLoop(node) || (word == QLatin1String("if") && AllBranchesEnd(node));
}

bool StepFlow::MayLeave(const RpaStatementNode& node)
{
    return Leaves(WordOf(node)) || AnyInside(node, MayLeave);
}
