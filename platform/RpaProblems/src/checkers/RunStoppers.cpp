// SPDX-License-Identifier: Apache-2.0

#include "Checkers_p.h"

#include <RpaProcessData/RpaProcessCheck.h>

#include <QSet>

namespace
{
// The processes that runs begin with, so that a variable that a caller sets is set: those of the tools, then
// those that nobody runs, then what is left, which runs itself in a circle.
class RunRoots
{
public:
    explicit RunRoots(const CheckedApp& checked) : app(checked) {}

    QStringList Get()
    {
        for (const RpaAppCopy::Page& page : app.Get().pages)
            for (const RpaToolItem& tool : page.tools)
                Add(tool.processName);
        const QStringList names = app.Processes().GetProcessNames();
        const QSet<QString> called = Called(names);
        for (const QString& name : names)
            if (!called.contains(name))
                AddUnreached(name);
        for (const QString& name : names)
            AddUnreached(name);
        return roots;
    }

private:
    QSet<QString> Called(const QStringList& names) const
    {
        QSet<QString> called;
        for (const QString& name : names) {
            const QStringList others = app.CalledBy(*app.Processes().FindProcess(name));
            for (const QString& other : others)
                if (other != name)
                    called.insert(other);
        }
        return called;
    }

    void AddUnreached(const QString& name)
    {
        if (!reached.contains(name))
            Add(name);
    }

    void Add(const QString& name)
    {
        if (roots.contains(name) || !app.Processes().FindProcess(name))
            return;
        roots.append(name);
        QStringList waiting{name};
        while (!waiting.isEmpty()) {
            const QString next = waiting.takeFirst();
            const RpaProcess* process = app.Processes().FindProcess(next);
            if (!process || reached.contains(next))
                continue;
            reached.insert(next);
            waiting.append(app.CalledBy(*process));
        }
    }

    const CheckedApp& app;
    QStringList roots;
    QSet<QString> reached;
};

void AddAll(const QList<RpaCheckInfo>& findings, ProblemList& found)
{
    for (const RpaCheckInfo& info : findings)
        found.Add(info);
}
} // namespace

void Checkers::FindRunStoppers(const CheckedApp& app, ProblemList& found)
{
    QStringList elements;
    for (const RpaNode& node : app.Get().htmlNodes)
        elements.append(node.id);
    RpaProcessCheck check(app.Processes());
    check.SetElementIds(elements);
    const QStringList roots = RunRoots(app).Get();
    for (const QString& root : roots)
        AddAll(check.Check(root), found);
    AddAll(check.CheckDisabledReferences(), found);
}

RpaProblemPlace Checkers::At(const RpaProcess& process, const RpaStatementNode& node)
{
    RpaProblemPlace place;
    place.processName = process.GetName();
    place.statementId = node.GetId();
    return place;
}
