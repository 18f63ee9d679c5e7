// SPDX-License-Identifier: Apache-2.0

// A process that gets another name, as a step of ProcessEdits: whatever runs it follows.
#include "ProcessEdits_p.h"
#include "ProcessSteps_p.h"
#include "ToolCalls_p.h"

#include <RpaAppData/RpaPageEdits.h>
#include <RpaAppData/RpaToolData.h>
#include <RpaAppData/RpaUIData.h>
#include <RpaAppData/RpaUIDataManager.h>

#include <algorithm>

QVector<ToolCall> ToolCalls::Of(const RpaAppData& app, const QString& processName)
{
    QVector<ToolCall> calls;
    const RpaUIDataManager* pages = app.GetUIDataManager();
    for (int page = 0; page < pages->GetCount(); ++page) {
        const QVector<RpaToolItem>& tools = pages->GetUIData(page)->GetToolData()->GetItems();
        for (const RpaToolItem& tool : tools)
            if (tool.processName == processName)
                calls.append({pages->GetUIName(page), tool.id, tool.text});
    }
    return calls;
}

void ToolCalls::Direct(RpaAppData& app, const QVector<ToolCall>& calls, const QString& from,
                       const QString& to)
{
    if (calls.isEmpty())
        return;
    RpaPageEdits* edits = RpaPageEdits::Of(&app); // it remembers what was before
    for (int page = 0; page < app.GetUIDataManager()->GetCount(); ++page) {
        RpaToolData* tools = app.GetUIDataManager()->GetUIData(page)->GetToolData();
        for (int index = 0; index < tools->GetCount(); ++index) {
            RpaToolItem tool = tools->GetItem(index);
            const bool follows = std::any_of(
                calls.begin(), calls.end(), [&tool](const ToolCall& call) { return call.toolId == tool.id; });
            if (!follows || tool.processName != from)
                continue;
            tool.processName = to;
            tools->SetItem(index, tool);
        }
    }
    edits->Edited();
}

void ProcessEdits::RenameProcess(const QString& name, const QString& newName)
{
    EndTyping();
    if (name == newName)
        return;
    const QVector<ToolCall> calls = ToolCalls::Of(*app, name);
    const auto rename = [this, calls](const QString& from, const QString& to) {
        return [this, calls, from, to] {
            Manager()->RenameProcess(from, to);
            ToolCalls::Direct(*app, calls, from, to);
            Report(to, {});
        };
    };
    stack.push(new ActStep(QStringLiteral("重命名流程"), rename(name, newName), rename(newName, name)));
}
