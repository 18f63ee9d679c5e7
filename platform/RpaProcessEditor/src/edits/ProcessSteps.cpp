// SPDX-License-Identifier: Apache-2.0

#include "ProcessSteps_p.h"

namespace
{
// Later statements first, so that the rows of those still to come stay true.
QVector<PlacedStatement> TakeAll(RpaProcess& process, const QStringList& ids)
{
    QVector<PlacedStatement> taken;
    for (auto id = ids.crbegin(); id != ids.crend(); ++id) {
        const RpaStatementNode* node = process.Find(*id);
        if (!node)
            continue;
        PlacedStatement placed;
        placed.parentId = node->GetParent()->GetId();
        placed.row = node->GetRow();
        placed.statement = process.Take(*id);
        taken.prepend(placed);
    }
    return taken;
}

void PutBack(RpaProcess& process, const QVector<PlacedStatement>& taken)
{
    for (const PlacedStatement& placed : taken)
        process.Insert(placed.parentId, placed.row, {placed.statement});
}

QStringList IdsOf(const QVector<PlacedStatement>& taken)
{
    QStringList ids;
    for (const PlacedStatement& placed : taken)
        ids.append(placed.statement.id);
    return ids;
}

// As they came into the process, so that they come back with the same ids.
QVector<RpaStatement> StatementsNow(const RpaProcess& process, const QStringList& ids)
{
    QVector<RpaStatement> statements;
    for (const QString& id : ids)
        statements.append(process.Find(id)->ToStatement());
    return statements;
}

QStringList IdsOf(const QVector<RpaStatement>& statements)
{
    QStringList ids;
    for (const RpaStatement& statement : statements)
        ids.append(statement.id);
    return ids;
}
} // namespace

ProcessStep::ProcessStep(ProcessEdits& owner, const QString& process, const QString& title)
    : QUndoCommand(title), processName(process), edits(owner)
{
}

void ProcessStep::Run(QStringList (ProcessStep::*act)(RpaProcess&))
{
    if (RpaProcess* process = edits.Manager()->FindProcess(processName))
        edits.Report(processName, (this->*act)(*process));
}

InsertStep::InsertStep(ProcessEdits& owner, const RpaProcess& process, const QString& parent, int at,
                       const QVector<RpaStatement>& inserted, const QString& title)
    : ProcessStep(owner, process.GetName(), title), parentId(parent), row(at), statements(inserted)
{
}

QStringList InsertStep::Do(RpaProcess& process)
{
    QStringList ids = process.Insert(parentId, row, statements);
    statements = StatementsNow(process, ids);
    return ids;
}

QStringList InsertStep::TakeBack(RpaProcess& process)
{
    const QVector<PlacedStatement> taken = TakeAll(process, IdsOf(statements));
    if (!taken.isEmpty())
        row = taken.first().row;
    return {};
}

RemoveStep::RemoveStep(ProcessEdits& owner, const RpaProcess& process, const QStringList& removed,
                       const QString& title)
    : ProcessStep(owner, process.GetName(), title), ids(removed)
{
}

QStringList RemoveStep::Do(RpaProcess& process)
{
    taken = TakeAll(process, ids);
    return {};
}

QStringList RemoveStep::TakeBack(RpaProcess& process)
{
    PutBack(process, taken);
    return IdsOf(taken);
}

MoveStep::MoveStep(ProcessEdits& owner, const RpaProcess& process, const QStringList& moved,
                   const QString& parent, int at)
    : ProcessStep(owner, process.GetName(), QStringLiteral("移动语句")), ids(moved), parentId(parent), row(at)
{
}

QStringList MoveStep::Do(RpaProcess& process)
{
    taken = TakeAll(process, ids);
    int target = row;
    QVector<RpaStatement> statements;
    for (const PlacedStatement& placed : qAsConst(taken)) {
        statements.append(placed.statement);
        if (row >= 0 && placed.parentId == parentId && placed.row < row)
            --target;
    }
    return process.Insert(parentId, target, statements);
}

QStringList MoveStep::TakeBack(RpaProcess& process)
{
    TakeAll(process, IdsOf(taken));
    PutBack(process, taken);
    return IdsOf(taken);
}

ReplaceStep::ReplaceStep(ProcessEdits& owner, const RpaProcess& process, const QStringList& replaced,
                         const QVector<RpaStatement>& statements, const QString& title)
    : ProcessStep(owner, process.GetName(), title), ids(replaced), instead(statements)
{
}

QStringList ReplaceStep::Do(RpaProcess& process)
{
    taken = TakeAll(process, ids);
    QStringList inserted = process.Insert(taken.first().parentId, taken.first().row, instead);
    instead = StatementsNow(process, inserted);
    return inserted;
}

QStringList ReplaceStep::TakeBack(RpaProcess& process)
{
    TakeAll(process, IdsOf(instead));
    PutBack(process, taken);
    return IdsOf(taken);
}

ValuesStep::ValuesStep(ProcessEdits& owner, const RpaProcess& process, const QVector<Change>& changed,
                       const QString& mergeKey, const QString& title)
    : ProcessStep(owner, process.GetName(), title), changes(changed), key(mergeKey),
      session(owner.TypingSession())
{
}

QStringList ValuesStep::Put(RpaProcess& process, RpaStatement Change::*values) const
{
    QStringList ids;
    for (const Change& change : changes) {
        process.SetValues((change.*values).id, change.*values);
        ids.append((change.*values).id);
    }
    return ids;
}

bool ValuesStep::mergeWith(const QUndoCommand* other)
{
    const auto* next = static_cast<const ValuesStep*>(other);
    const bool same = next->key == key && next->session == session && next->processName == processName &&
                      changes.size() == 1 && next->changes.size() == 1 &&
                      changes.first().after.id == next->changes.first().after.id;
    if (!same)
        return false;
    changes.first().after = next->changes.first().after;
    return true;
}
