// SPDX-License-Identifier: Apache-2.0

#include "StatementRange_p.h"

#include <RpaProcessData/RpaCommandCatalogue.h>

#include <algorithm>

namespace
{
const RpaCommandInfo* CommandOf(const RpaStatementNode& node)
{
    return RpaCommandCatalogue::Instance()->Find(node.GetCommand());
}

RpaBlockKind KindOf(const RpaStatementNode& node)
{
    const RpaCommandInfo* command = CommandOf(node);
    return command ? command->blockKind : RpaBlockKind::None;
}

QString LoopExitIn(const RpaStatementNode& node)
{
    const RpaCommandInfo* command = CommandOf(node);
    if (!node.GetValues().enabled || (command && command->blockKind == RpaBlockKind::Loop))
        return QString();
    if (command && command->onlyInLoop)
        return command->title;
    QString found;
    for (int row = 0; row < node.GetChildCount() && found.isEmpty(); ++row)
        found = LoopExitIn(*node.GetChild(row));
    return found;
}

bool EndsProcessIn(const RpaStatementNode& node)
{
    if (!node.GetValues().enabled)
        return false;
    bool ends = node.GetCommand() == QLatin1String("process.return");
    for (int row = 0; row < node.GetChildCount() && !ends; ++row)
        ends = EndsProcessIn(*node.GetChild(row));
    return ends;
}

bool IsEnabled(const RpaStatementNode* node)
{
    return node->GetValues().enabled;
}

// Disabled statements leave no trace in the program: a branch continues the enabled one before it.
const RpaStatementNode* NextEnabledOf(const RpaStatementNode& node)
{
    const RpaStatementNode* parent = node.GetParent();
    for (int row = node.GetRow() + 1; row < parent->GetChildCount(); ++row)
        if (IsEnabled(parent->GetChild(row)))
            return parent->GetChild(row);
    return nullptr;
}
} // namespace

StatementRange::StatementRange(const RpaProcess& process, const QStringList& chosen) : ids(chosen)
{
    for (const QString& id : ids)
        if (const RpaStatementNode* node = process.Find(id))
            nodes.append(node);
}

QString StatementRange::Problem() const
{
    if (nodes.isEmpty())
        return QStringLiteral("先选择语句");
    for (int i = 1; i < nodes.size(); ++i)
        if (nodes.at(i)->GetParent() != nodes.first()->GetParent() ||
            nodes.at(i)->GetRow() != nodes.first()->GetRow() + i)
            return QStringLiteral("请选择同一层中相邻的语句");
    return BranchProblem();
}

QString StatementRange::BranchProblem() const
{
    const auto first = std::find_if(nodes.begin(), nodes.end(), IsEnabled);
    if (first != nodes.end() && KindOf(**first) == RpaBlockKind::Branch)
        return QStringLiteral("“%1”接着前面的步骤，请和那一步一起选择").arg(CommandOf(**first)->title);
    const RpaStatementNode* next = NextEnabledOf(*nodes.last());
    if (next && KindOf(*next) == RpaBlockKind::Branch)
        return QStringLiteral("后面的“%1”接着所选的步骤，请一起选择").arg(CommandOf(*next)->title);
    return QString();
}

QVector<RpaStatement> StatementRange::Statements() const
{
    QVector<RpaStatement> statements;
    for (const RpaStatementNode* node : nodes)
        statements.append(node->ToStatement());
    return statements;
}

QString StatementRange::LoopExit() const
{
    for (const RpaStatementNode* node : nodes) {
        QString title = LoopExitIn(*node);
        if (!title.isEmpty())
            return title;
    }
    return QString();
}

bool StatementRange::EndsProcess() const
{
    return std::any_of(nodes.begin(), nodes.end(),
                       [](const RpaStatementNode* node) { return EndsProcessIn(*node); });
}
