// SPDX-License-Identifier: Apache-2.0

#include "AppBreakpoints_p.h"
#include "BreakpointFile_p.h"

#include <RpaAppData/RpaAppRunTimeInfo.h>
#include <RpaEngineModule/RpaDebugSession.h>
#include <RpaProcessData/ProcessDataManager.h>
#include <RpaProcessData/RpaProcess.h>

#include <algorithm>

namespace
{
using BreakpointLists = QHash<const RpaAppData*, QWeakPointer<AppBreakpoints>>;

BreakpointLists& Lists()
{
    static BreakpointLists lists;
    return lists;
}

bool IsSamePlace(const RpaDebugPlace& a, const RpaDebugPlace& b)
{
    if (!a.statementId.isEmpty() || !b.statementId.isEmpty())
        return a.statementId == b.statementId;
    return a.processName == b.processName && a.line == b.line;
}

// The places of the statements, in the order shown.
void AddStatements(const RpaProcess& process, const QHash<QString, int>& wanted,
                   const QVector<RpaBreakpoint>& points, QVector<RpaBreakpoint>& found)
{
    int line = 0;
    process.ForEach([&](const RpaStatementNode& node) {
        ++line;
        const auto it = wanted.find(node.GetId());
        if (it == wanted.end())
            return;
        RpaBreakpoint point = points.at(*it);
        point.place = {process.GetName(), node.GetId(), line};
        found.append(point);
    });
}

void AddLines(const RpaProcess& process, const QVector<RpaBreakpoint>& points, QVector<RpaBreakpoint>& found)
{
    const int before = found.size();
    for (const RpaBreakpoint& point : points)
        if (point.place.statementId.isEmpty() && point.place.processName == process.GetName())
            found.append(point);
    std::sort(found.begin() + before, found.end(),
              [](const RpaBreakpoint& a, const RpaBreakpoint& b) { return a.place.line < b.place.line; });
}

QVector<RpaDebugPlace> PlacesOf(const QVector<RpaBreakpoint>& points)
{
    QVector<RpaDebugPlace> places;
    for (const RpaBreakpoint& point : points)
        places.append(point.place);
    return places;
}
} // namespace

QSharedPointer<AppBreakpoints> AppBreakpoints::Of(const RpaAppDataPtr& app)
{
    if (!app)
        return {};
    QSharedPointer<AppBreakpoints> list = Lists().value(app.data()).toStrongRef();
    if (!list) {
        list.reset(new AppBreakpoints(app.data()));
        Lists().insert(app.data(), list);
    }
    return list;
}

AppBreakpoints::AppBreakpoints(RpaAppData* appData) : app(appData)
{
    looking.setSingleShot(true);
    looking.setInterval(0);
    connect(&looking, &QTimer::timeout, this, &AppBreakpoints::Look);
    connect(app, &RpaAppData::SigReplaced, this, &AppBreakpoints::Load);
    connect(app->GetProcessDataManager(), &ProcessDataManager::SigChanged, &looking,
            qOverload<>(&QTimer::start));
    connect(app->GetProcessDataManager(), &ProcessDataManager::SigProcessRenamed, this,
            [this](int index, const QString& oldName) {
                for (RpaBreakpoint& point : points)
                    if (point.place.processName == oldName)
                        point.place.processName = app->GetProcessDataManager()->GetProcess(index)->GetName();
            });
    // An app goes before its list only when it is not closed in order; its address may then be another's.
    connect(app, &QObject::destroyed, this, [appData] { Lists().remove(appData); });
    Load();
}

AppBreakpoints::~AppBreakpoints()
{
    if (app)
        Lists().remove(app);
}

QString AppBreakpoints::AppId() const
{
    return app ? app->GetRunTimeInfo()->GetAppId() : QString();
}

void AppBreakpoints::Load()
{
    const std::optional<QVector<RpaBreakpoint>> kept = BreakpointFile::Read(AppId());
    if (kept)
        points = *kept;
    else
        TakeFlags();
    Look();
}

void AppBreakpoints::TakeFlags()
{
    const ProcessDataManager* processes = app->GetProcessDataManager();
    for (int i = 0; i < processes->GetCount(); ++i) {
        const RpaProcess* process = processes->GetProcess(i);
        process->ForEach([this, process](const RpaStatementNode& node) {
            if (!node.GetValues().breakpoint || IndexOf({QString(), node.GetId(), 0}) >= 0)
                return;
            RpaBreakpoint point;
            point.place = {process->GetName(), node.GetId(), 0};
            points.append(point);
        });
    }
}

QVector<RpaBreakpoint> AppBreakpoints::Get() const
{
    QVector<RpaBreakpoint> found;
    if (!app || points.isEmpty())
        return found;
    QHash<QString, int> statements;
    for (int i = 0; i < points.size(); ++i)
        if (!points.at(i).place.statementId.isEmpty())
            statements.insert(points.at(i).place.statementId, i);
    const ProcessDataManager* processes = app->GetProcessDataManager();
    for (int i = 0; i < processes->GetCount(); ++i) {
        const RpaProcess* process = processes->GetProcess(i);
        if (!statements.isEmpty())
            AddStatements(*process, statements, points, found);
        AddLines(*process, points, found);
    }
    return found;
}

int AppBreakpoints::IndexOf(const RpaDebugPlace& place) const
{
    const auto it = std::find_if(points.begin(), points.end(), [&place](const RpaBreakpoint& point) {
        return IsSamePlace(point.place, place);
    });
    return it == points.end() ? -1 : int(it - points.begin());
}

const RpaBreakpoint* AppBreakpoints::Find(const RpaDebugPlace& place) const
{
    const int index = IndexOf(place);
    return index < 0 ? nullptr : &points.at(index);
}

void AppBreakpoints::Toggle(const RpaDebugPlace& place)
{
    if (IndexOf(place) >= 0) {
        Remove(place);
        return;
    }
    RpaBreakpoint added;
    added.place = place;
    Put(added);
}

void AppBreakpoints::Put(const RpaBreakpoint& breakpoint)
{
    const int index = IndexOf(breakpoint.place);
    if (index < 0 && points.size() >= RpaDebugSession::breakpointsAtMost)
        return;
    if (index < 0)
        points.append(breakpoint);
    else
        points[index] = breakpoint;
    Store();
}

void AppBreakpoints::Remove(const RpaDebugPlace& place)
{
    const int index = IndexOf(place);
    if (index < 0)
        return;
    points.removeAt(index);
    Store();
}

void AppBreakpoints::SetEnabled(const RpaDebugPlace& place, bool enabled)
{
    const int index = IndexOf(place);
    if (index < 0 || points.at(index).enabled == enabled)
        return;
    points[index].enabled = enabled;
    Store();
}

void AppBreakpoints::Clear()
{
    points.clear();
    Store();
}

void AppBreakpoints::MoveLines(const QString& processName, int first, int by)
{
    QVector<RpaBreakpoint> moved;
    for (RpaBreakpoint point : qAsConst(points)) {
        RpaDebugPlace& place = point.place;
        if (place.statementId.isEmpty() && place.processName == processName && place.line >= first) {
            if (place.line < first - by)
                continue; // its line went
            place.line += by;
        }
        moved.append(point);
    }
    if (PlacesOf(moved) == PlacesOf(points))
        return;
    points = moved;
    Store();
}

void AppBreakpoints::Store()
{
    BreakpointFile::Write(AppId(), points);
    shown = PlacesOf(Get());
    emit SigChanged();
}

// Statements came, went or moved.
void AppBreakpoints::Look()
{
    const QVector<RpaDebugPlace> places = PlacesOf(Get());
    if (places == shown)
        return;
    shown = places;
    emit SigChanged();
}
