// SPDX-License-Identifier: Apache-2.0

#include "CommandTexts_p.h"
#include "ProcessEdits_p.h"
#include "StatementRange_p.h"
#include "SubProcessEdits_p.h"

namespace
{
const RpaCommandInfo* CallCommand()
{
    return RpaCommandCatalogue::Instance()->Find(QStringLiteral("process.run"));
}

QString ProcessArgument()
{
    for (const RpaArgumentInfo& argument : CallCommand()->arguments)
        if (argument.type == RpaArgumentType::Process)
            return argument.name;
    return QString();
}

QStringList TopIdsOf(const RpaProcess& process)
{
    QStringList ids;
    for (int row = 0; row < process.GetRoot()->GetChildCount(); ++row)
        ids.append(process.GetRoot()->GetChild(row)->GetId());
    return ids;
}

// They are made anew where the statements are put.
void ForgetIds(QVector<RpaStatement>& statements)
{
    for (RpaStatement& statement : statements) {
        statement.id.clear();
        ForgetIds(statement.children);
    }
}

QString InlineProblem(const RpaProcess& process, const RpaProcess* called, const QString& name)
{
    if (!called)
        return QStringLiteral("没有流程“%1”").arg(name);
    if (called == &process)
        return QStringLiteral("流程不能展开到它自己里面");
    const QStringList ids = TopIdsOf(*called);
    if (ids.isEmpty())
        return QStringLiteral("流程“%1”里面没有步骤").arg(name);
    if (StatementRange(*called, ids).EndsProcess())
        return QStringLiteral("流程“%1”中的“结束当前流程”展开后会结束外面的流程").arg(name);
    return QString();
}
} // namespace

QString SubProcessEdits::ExtractProblem(const RpaProcess& process, const QStringList& ids)
{
    const StatementRange range(process, ids);
    QString problem = range.Problem();
    if (!problem.isEmpty())
        return problem;
    const QString exit = range.LoopExit();
    if (!exit.isEmpty())
        return QStringLiteral("“%1”属于外面的循环，不能移到子流程中").arg(exit);
    if (range.EndsProcess())
        return QStringLiteral("“结束当前流程”移到子流程后只会结束子流程，请不要选择它");
    return QString();
}

void SubProcessEdits::Extract(ProcessEdits& edits, RpaProcess& process, const QStringList& ids,
                              const QString& name)
{
    RpaStatement call = CommandTexts::NewStatement(*CallCommand(), process);
    call.arguments.insert(ProcessArgument(), name);
    edits.Extract(process, ids, StatementRange(process, ids).Statements(), call, name);
}

QString SubProcessEdits::Inline(ProcessEdits& edits, RpaProcess& process, const QStringList& ids)
{
    const RpaStatementNode* call = ids.size() == 1 ? process.Find(ids.first()) : nullptr;
    if (!call || call->GetCommand() != CallCommand()->name)
        return QStringLiteral("请选择一个“%1”语句").arg(CallCommand()->title);
    const QString name = call->GetArgument(ProcessArgument());
    const RpaProcess* called = edits.Manager()->FindProcess(name);
    QString problem = InlineProblem(process, called, name);
    if (!problem.isEmpty())
        return problem;
    QVector<RpaStatement> statements = called->GetStatements();
    ForgetIds(statements);
    if (!call->GetValues().enabled)
        for (RpaStatement& statement : statements)
            statement.enabled = false;
    edits.Replace(process, ids, statements, QStringLiteral("展开子流程"));
    return QString();
}
