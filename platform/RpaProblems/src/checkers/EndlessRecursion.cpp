// SPDX-License-Identifier: Apache-2.0

#include "Checkers_p.h"
#include "StepFlow_p.h"

#include <QHash>

namespace
{
struct Call
{
    const RpaStatementNode* node;
    QString processName;
};

// The processes that a process runs whatever happens: at its top level, before anything may leave it.
QVector<Call> CertainCalls(const RpaProcess& process)
{
    QVector<Call> calls;
    const RpaStatementNode& root = *process.GetRoot();
    for (const RpaStatementNode* node = StepFlow::NextEnabled(root, -1); node;
         node = StepFlow::NextEnabled(root, node->GetRow())) {
        if (StepFlow::MayLeave(*node))
            break;
        const RpaCommandInfo* command = RpaCommandCatalogue::Instance()->Find(node->GetCommand());
        if (!command || command->HasChildren())
            continue;
        for (const RpaArgumentInfo& argument : command->arguments)
            if (argument.type == RpaArgumentType::Process)
                calls.append({node, CheckedApp::TextOf(*node, argument)});
    }
    return calls;
}

class CallCircles
{
public:
    explicit CallCircles(const ProcessDataManager& processes)
    {
        for (int i = 0; i < processes.GetCount(); ++i)
            calls.insert(processes.GetProcess(i)->GetName(), CertainCalls(*processes.GetProcess(i)));
    }

    QVector<Call> Of(const QString& name) const { return calls.value(name); }

    bool LeadsTo(const QString& from, const QString& to) const
    {
        QStringList waiting{from};
        for (int i = 0; i < waiting.size(); ++i) { // grows while it is looked through
            if (waiting.at(i) == to)
                return true;
            const QVector<Call> next = calls.value(waiting.at(i));
            for (const Call& call : next)
                if (!waiting.contains(call.processName))
                    waiting.append(call.processName);
        }
        return false;
    }

private:
    QHash<QString, QVector<Call>> calls;
};
} // namespace

void Checkers::FindEndlessRecursion(const CheckedApp& app, ProblemList& found)
{
    const CallCircles circles(app.Processes());
    for (int i = 0; i < app.Processes().GetCount(); ++i) {
        const RpaProcess& process = *app.Processes().GetProcess(i);
        const QVector<Call> calls = circles.Of(process.GetName());
        for (const Call& call : calls) {
            if (!circles.LeadsTo(call.processName, process.GetName()))
                continue;
            RpaProblem problem;
            problem.rule = QStringLiteral("endless-recursion");
            problem.severity = RpaProblemSeverity::Warning;
            problem.place = At(process, *call.node);
            problem.subject = call.processName;
            problem.message = QStringLiteral("流程“%1”会无休止地运行自己").arg(process.GetName());
            problem.remedy = QStringLiteral("请给“%1”的运行加上条件，或删除此步骤").arg(call.processName);
            found.Add(problem);
        }
    }
}
