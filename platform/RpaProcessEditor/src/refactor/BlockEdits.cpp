// SPDX-License-Identifier: Apache-2.0

#include "BlockEdits_p.h"
#include "CommandTexts_p.h"
#include "ProcessEdits_p.h"

#include <utility>

namespace
{
const RpaCommandInfo* BlockCommandOf(const RpaStatementNode& node)
{
    const RpaCommandInfo* command = RpaCommandCatalogue::Instance()->Find(node.GetCommand());
    return command && command->HasChildren() ? command : nullptr;
}

QStringList ChildIdsOf(const RpaStatementNode& node)
{
    QStringList ids;
    for (int row = 0; row < node.GetChildCount(); ++row)
        ids.append(node.GetChild(row)->GetId());
    return ids;
}

bool IsBranch(const RpaStatementNode& node)
{
    const RpaCommandInfo* command = BlockCommandOf(node);
    return command && command->blockKind == RpaBlockKind::Branch;
}

// The branches that continue the block, up to the last one, with the disabled statements between them. A
// disabled branch behind another disabled statement may belong to that one.
QVector<const RpaStatementNode*> TailOf(const RpaStatementNode& block)
{
    QVector<const RpaStatementNode*> tail;
    QVector<const RpaStatementNode*> between;
    const RpaStatementNode* parent = block.GetParent();
    for (int row = block.GetRow() + 1; row < parent->GetChildCount(); ++row) {
        const RpaStatementNode* node = parent->GetChild(row);
        const bool enabled = node->GetValues().enabled;
        between.append(node);
        if (IsBranch(*node) && (enabled || between.size() == 1))
            tail += std::exchange(between, {});
        else if (enabled)
            break;
    }
    return tail;
}

QString UnwrapProblem(const RpaProcess& process, const RpaStatementNode* block)
{
    const RpaCommandInfo* command = block ? BlockCommandOf(*block) : nullptr;
    if (!command)
        return QStringLiteral("请选择一个里面有步骤的语句");
    if (command->blockKind == RpaBlockKind::Branch)
        return QStringLiteral("“%1”接着前面的步骤，请选择那一步").arg(command->title);
    if (block->GetChildCount() == 0)
        return QStringLiteral("“%1”里面没有步骤").arg(command->title);
    const QString exit = StatementRange(process, ChildIdsOf(*block)).LoopExit();
    if (command->blockKind == RpaBlockKind::Loop && !exit.isEmpty())
        return QStringLiteral("里面的“%1”离不开这个循环，请先删除或移走它").arg(exit);
    const QVector<const RpaStatementNode*> tail = TailOf(*block);
    for (const RpaStatementNode* node : tail)
        if (IsBranch(*node) && node->GetChildCount() > 0)
            return QStringLiteral("“%1”里面还有步骤，请先删除或移走它们")
                .arg(CommandTexts::Title(node->GetCommand()));
    return QString();
}
} // namespace

QString BlockEdits::Wrap(ProcessEdits& edits, RpaProcess& process, const QStringList& ids,
                         const QString& command, QString& block)
{
    const StatementRange range(process, ids);
    const RpaCommandInfo* info = RpaCommandCatalogue::Instance()->Find(command);
    QString problem = range.Problem();
    if (!problem.isEmpty() || !info)
        return problem;
    const QString exit = range.LoopExit();
    if (info->blockKind == RpaBlockKind::Loop && !exit.isEmpty())
        return QStringLiteral("“%1”属于外面的循环，放进新的循环后意思就变了").arg(exit);
    QVector<RpaStatement> instead{CommandTexts::NewStatement(*info, process)};
    instead.first().children = range.Statements();
    const RpaCommandInfo* behind = RpaCommandCatalogue::Instance()->Find(
        info->followedBy.isEmpty() ? QString() : info->followedBy.first());
    if (behind)
        instead.append(CommandTexts::NewStatement(*behind, process));
    if (edits.Replace(process, ids, instead, QStringLiteral("放进“%1”").arg(info->title)))
        block = process.Find(ids.first())->GetParent()->GetId();
    return QString();
}

QString BlockEdits::Unwrap(ProcessEdits& edits, RpaProcess& process, const QStringList& ids)
{
    const RpaStatementNode* block = ids.size() == 1 ? process.Find(ids.first()) : nullptr;
    QString problem = UnwrapProblem(process, block);
    if (!problem.isEmpty())
        return problem;
    QVector<RpaStatement> inside = block->ToStatement().children;
    if (!block->GetValues().enabled)
        for (RpaStatement& statement : inside)
            statement.enabled = false;
    QStringList replaced = ids;
    const QVector<const RpaStatementNode*> tail = TailOf(*block);
    for (const RpaStatementNode* node : tail) {
        replaced.append(node->GetId());
        if (!IsBranch(*node))
            inside.append(node->ToStatement());
    }
    edits.Replace(process, replaced, inside,
                  QStringLiteral("去掉外层“%1”").arg(CommandTexts::Title(block->GetCommand())));
    return QString();
}
