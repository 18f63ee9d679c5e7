// SPDX-License-Identifier: Apache-2.0

#include "StandingFindings_p.h"

#include <RpaProcessData/ProcessDataManager.h>
#include <RpaProcessData/RpaHtmlNodeManager.h>
#include <RpaProcessData/RpaProcess.h>
#include <RpaProcessData/RpaProcessCheck.h>

#include <algorithm>

namespace
{
constexpr int pauseMs = 200; // a check looks at all statements, so it waits for a pause in the typing

// Of a run: no check can tell whether it would be met again.
const QString runFailed = QStringLiteral("run-failed");

bool IsOfOnePlace(const RpaCheckInfo& a, const RpaCheckInfo& b)
{
    return a.statementId == b.statementId && a.rule == b.rule;
}

bool HasSamePlaces(const QList<RpaCheckInfo>& a, const QList<RpaCheckInfo>& b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), IsOfOnePlace);
}

// What it does, not what is said about it.
bool DoesTheSame(RpaStatement a, const RpaStatement& b)
{
    a.note = b.note;
    a.breakpoint = b.breakpoint;
    a.children = b.children;
    return a == b;
}
} // namespace

StandingFindings::StandingFindings(QObject* parent) : QObject(parent)
{
    looking.setSingleShot(true);
    looking.setInterval(pauseMs);
    connect(&looking, &QTimer::timeout, this, &StandingFindings::Look);
}

void StandingFindings::SetApp(const RpaAppDataPtr& appData)
{
    if (app)
        app->GetProcessDataManager()->disconnect(this);
    app = appData;
    Take({});
    if (!app)
        return;
    connect(app->GetProcessDataManager(), &ProcessDataManager::SigChanged, this, [this] {
        if (!findings.isEmpty())
            looking.start();
    });
}

void StandingFindings::Take(const QList<RpaCheckInfo>& list)
{
    looking.stop();
    findings.clear();
    atFault.clear();
    for (const RpaCheckInfo& info : list) {
        const RpaProcess* process =
            app ? app->GetProcessDataManager()->FindProcess(info.processName) : nullptr;
        const RpaStatementNode* node = process ? process->Find(info.statementId) : nullptr;
        if (!process || (!node && !info.statementId.isEmpty()))
            continue;
        findings.append(info);
        if (node)
            atFault.insert(info.statementId, node->GetValues());
    }
    root = findings.isEmpty() ? QString() : RootOf(list);
}

// A process that is run by another may be at fault only as a part of it.
QString StandingFindings::RootOf(const QList<RpaCheckInfo>& list) const
{
    const QStringList names = app->GetProcessDataManager()->GetProcessNames();
    const auto found = std::find_if(names.begin(), names.end(), [this, &list](const QString& name) {
        return HasSamePlaces(CheckFrom(name), list);
    });
    return found == names.end() ? app->GetProcessDataManager()->GetProcessNameFirst() : *found;
}

QList<RpaCheckInfo> StandingFindings::CheckFrom(const QString& processName) const
{
    QStringList elements;
    const QVector<RpaNode> nodes = app->GetHtmlNodeManager()->GetNodes();
    for (const RpaNode& node : nodes)
        elements.append(node.id);
    RpaProcessCheck check(*app->GetProcessDataManager());
    check.SetElementIds(elements);
    return check.Check(processName);
}

QList<RpaCheckInfo> StandingFindings::FindAgain() const
{
    return RpaProcessCheck(*app->GetProcessDataManager()).CheckDisabledReferences() + CheckFrom(root);
}

bool StandingFindings::Stands(const RpaCheckInfo& info, const QList<RpaCheckInfo>& again) const
{
    const RpaStatementNode* node = nullptr;
    const ProcessDataManager* processes = app->GetProcessDataManager();
    for (int i = 0; i < processes->GetCount() && !node; ++i)
        node = processes->GetProcess(i)->Find(info.statementId);
    if (!node && !info.statementId.isEmpty())
        return false;
    if (node && info.rule == runFailed)
        return DoesTheSame(node->GetValues(), atFault.value(info.statementId));
    return std::any_of(again.begin(), again.end(),
                       [&info](const RpaCheckInfo& other) { return IsOfOnePlace(info, other); });
}

void StandingFindings::Look()
{
    const QList<RpaCheckInfo> again = FindAgain();
    QList<RpaCheckInfo> standing;
    for (const RpaCheckInfo& info : qAsConst(findings))
        if (Stands(info, again))
            standing.append(info);
    if (standing.size() == findings.size())
        return;
    findings = standing;
    emit SigChanged();
}
