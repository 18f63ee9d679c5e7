// SPDX-License-Identifier: Apache-2.0

#include "ReachedProcesses_p.h"
#include "VariableUse_p.h"

#include <RpaProcessData/ProcessDataManager.h>
#include <RpaProcessData/RpaCommandCatalogue.h>
#include <RpaProcessData/RpaProcess.h>
#include <RpaProcessData/RpaProcessPart.h>

#include <algorithm>
#include <functional>

namespace
{

enum class Share
{
    None,
    Some, // something inside
    All,
};
using ShareOf = std::function<Share(const RpaStatement&)>;

const RpaCommandInfo* InfoOf(const RpaStatement& statement)
{
    return RpaCommandCatalogue::Instance()->Find(statement.command);
}

RpaBlockKind KindOf(const RpaStatement& statement)
{
    const RpaCommandInfo* const command = InfoOf(statement);
    return command ? command->blockKind : RpaBlockKind::None;
}

bool Holds(const RpaStatement& statement, const QStringList& ids)
{
    return ids.contains(statement.id) ||
           std::any_of(statement.children.cbegin(), statement.children.cend(),
                       [&](const RpaStatement& child) { return Holds(child, ids); });
}

void GoThroughOnce(RpaStatement& block)
{
    const bool loop = KindOf(block) == RpaBlockKind::Loop;
    block.command = loop ? QStringLiteral("loop.count") : QStringLiteral("if");
    block.arguments = loop ? QMap<QString, QString>{{QStringLiteral("times"), QStringLiteral("1")}}
                           : QMap<QString, QString>{{QStringLiteral("condition"), QStringLiteral("True")}};
    block.output.clear();
}

class Cutter
{
public:
    Cutter(ShareOf given, bool skips) : shareOf(std::move(given)), skipsOtherBranches(skips) {}

    QVector<RpaStatement> Cut(const QVector<RpaStatement>& statements) const
    {
        QVector<RpaStatement> cut;
        Head head = Head::Gone;
        for (const RpaStatement& statement : statements) {
            cut.append(statement);
            if (statement.enabled)
                CutOne(cut.last(), head);
        }
        GiveEndsToTries(cut);
        return cut;
    }

private:
    // What stands before a branch.
    enum class Head
    {
        Gone,
        Kept,
        Taken, // gone through once
    };

    void CutOne(RpaStatement& statement, Head& head) const
    {
        const Share share = shareOf(statement);
        const bool branch = KindOf(statement) == RpaBlockKind::Branch;
        if (share == Share::None) {
            statement.enabled = false;
            head = branch ? head : Head::Gone;
            return;
        }
        if (share == Share::Some)
            statement.children = Cut(statement.children);
        if (branch)
            CutBranch(statement, head);
        else
            CutHead(statement, share, head);
    }

    void CutHead(RpaStatement& statement, Share share, Head& head) const
    {
        const bool once = share == Share::Some && (KindOf(statement) == RpaBlockKind::Loop ||
                                                   statement.command == QLatin1String("if"));
        if (once)
            GoThroughOnce(statement);
        head = once ? Head::Taken : Head::Kept;
    }

    void CutBranch(RpaStatement& statement, Head& head) const
    {
        const bool always = statement.command == QLatin1String("finally");
        if (head == Head::Taken && skipsOtherBranches && !always) {
            statement.enabled = false;
        } else if (head != Head::Kept) {
            GoThroughOnce(statement);
            head = Head::Taken;
        }
    }

    // A try whose handlers are all skipped is none.
    static void GiveEndsToTries(QVector<RpaStatement>& statements)
    {
        RpaStatement* open = nullptr;
        const auto close = [&open] {
            if (open)
                GoThroughOnce(*open);
            open = nullptr;
        };
        for (RpaStatement& statement : statements) {
            if (!statement.enabled)
                continue;
            const RpaCommandInfo* const command = InfoOf(statement);
            if (KindOf(statement) != RpaBlockKind::Branch)
                close();
            else
                open = nullptr;
            if (command && !command->followedBy.isEmpty())
                open = &statement;
        }
        close();
    }

    const ShareOf shareOf;
    const bool skipsOtherBranches;
};

} // namespace

namespace RpaProcessPart
{

QVector<RpaStatement> FromHere(const RpaProcess& process, const QString& statementId)
{
    if (!process.Find(statementId))
        return {};
    bool reached = false;
    const ShareOf shareOf = [&](const RpaStatement& statement) {
        reached = reached || statement.id == statementId;
        if (reached)
            return Share::All;
        return Holds(statement, {statementId}) ? Share::Some : Share::None;
    };
    return Cutter(shareOf, true).Cut(process.GetStatements());
}

QVector<RpaStatement> Only(const RpaProcess& process, const QStringList& statementIds)
{
    const auto known = [&](const QString& id) { return process.Find(id) != nullptr; };
    if (std::none_of(statementIds.cbegin(), statementIds.cend(), known))
        return {};
    const ShareOf shareOf = [&](const RpaStatement& statement) {
        if (statementIds.contains(statement.id))
            return Share::All;
        return Holds(statement, statementIds) ? Share::Some : Share::None;
    };
    return Cutter(shareOf, false).Cut(process.GetStatements());
}

void CopyWithPart(const ProcessDataManager& processes, const QString& processName,
                  const QVector<RpaStatement>& part, ProcessDataManager& copy)
{
    const QStringList names = processes.GetProcessNames();
    for (const QString& name : names) {
        RpaProcess* const process = copy.AddProcess(name);
        process->SetStatements(name == processName ? part : processes.FindProcess(name)->GetStatements());
    }
}

RpaPartVariables FindVariables(const ProcessDataManager& processes, const QString& processName,
                               const QVector<RpaStatement>& part)
{
    ProcessDataManager copy;
    CopyWithPart(processes, processName, part, copy);
    const VariableUse inPart(ReachedFrom(copy, processName));
    const VariableUse inWhole(ReachedFrom(processes, processName));
    RpaPartVariables variables;
    const QVector<const RpaProcess*> reached = ReachedFrom(copy, processName);
    for (const RpaProcess* process : reached) {
        const QStringList missing = inPart.FindMissing(*process);
        for (const QString& name : missing)
            (inWhole.IsSet(name) ? variables.needed : variables.unknown) << name;
    }
    for (QStringList* names : {&variables.needed, &variables.unknown}) {
        names->removeDuplicates();
        names->sort();
    }
    return variables;
}

} // namespace RpaProcessPart
