// SPDX-License-Identifier: Apache-2.0

// Statements that become a process of their own, as one step of ProcessEdits.
#include "ProcessEdits_p.h"
#include "ProcessSteps_p.h"

void ProcessEdits::Extract(RpaProcess& process, const QStringList& ids,
                           const QVector<RpaStatement>& statements, const RpaStatement& call,
                           const QString& name)
{
    EndTyping();
    const auto add = [this, statements, name] {
        if (RpaProcess* added = Manager()->AddProcess(name))
            added->SetStatements(statements);
        Report(QString(), {});
    };
    const auto remove = [this, name] {
        Manager()->RemoveProcess(name);
        Report(QString(), {});
    };
    const QString title = QStringLiteral("提取为子流程");
    stack.beginMacro(title);
    stack.push(new ActStep(title, add, remove));
    stack.push(new ReplaceStep(*this, process, ids, {call}, title));
    stack.endMacro();
}
