// SPDX-License-Identifier: Apache-2.0

#include "BreakpointActs_p.h"
#include "DebuggedApp_p.h"
#include "StatementView_p.h"
#include "VisualDebugMarks_p.h"

#include <QEvent>

#include <algorithm>

VisualDebugMarks::VisualDebugMarks(StatementView* statementView, QWidget* editor)
    : QObject(editor), view(statementView), host(editor), focus(DebugFocus::Instance())
{
    host->installEventFilter(this);
    connect(view, &StatementView::SigMarkPressed, this, [this](const QString& id) { Toggle({id}); });
    connect(focus, &DebugFocus::SigChanged, this, &VisualDebugMarks::ShowStop);
}

void VisualDebugMarks::SetApp(const RpaAppDataPtr& app)
{
    if (breakpoints)
        breakpoints->disconnect(this);
    breakpoints = AppBreakpoints::Of(app);
    if (breakpoints) {
        connect(breakpoints.data(), &AppBreakpoints::SigChanged, this, &VisualDebugMarks::ShowMarks);
        if (host->isVisible())
            DebuggedApp::Instance()->Use(breakpoints);
    }
    ShowMarks();
    ShowStop();
}

bool VisualDebugMarks::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == host && event->type() == QEvent::Show && breakpoints)
        DebuggedApp::Instance()->Use(breakpoints);
    return QObject::eventFilter(watched, event);
}

void VisualDebugMarks::ShowMarks()
{
    QHash<QString, BreakpointMark> marks;
    if (breakpoints) {
        const QVector<RpaBreakpoint> points = breakpoints->Get();
        for (const RpaBreakpoint& point : points)
            marks.insert(point.place.statementId, BreakpointMark::Of(point));
    }
    view->Statements()->SetBreakpoints(marks);
}

void VisualDebugMarks::ShowStop()
{
    const RpaDebugPlace place = focus->GetPlace();
    const bool here = breakpoints && DebuggedApp::Instance()->Is(breakpoints->App());
    if (!here || place.statementId.isEmpty()) {
        view->Statements()->SetStop(QString(), StatementModel::NotStopped);
        return;
    }
    view->Statements()->SetStop(place.statementId, focus->GetFrame() == 0 ? StatementModel::StoppedHere
                                                                          : StatementModel::StoppedInCall);
    emit SigStopped(place);
}

RpaDebugPlace VisualDebugMarks::PlaceOf(const QString& id) const
{
    const RpaProcess* process = view->Statements()->Process();
    const int line = view->Statements()->IndexOf(id).data(StatementModel::LineRole).toInt();
    return {process ? process->GetName() : QString(), id, line};
}

void VisualDebugMarks::Toggle(const QStringList& ids)
{
    if (!breakpoints || ids.isEmpty())
        return;
    const bool removes = std::all_of(ids.begin(), ids.end(),
                                     [this](const QString& id) { return breakpoints->Find(PlaceOf(id)); });
    for (const QString& id : ids)
        if (removes || !breakpoints->Find(PlaceOf(id)))
            breakpoints->Toggle(PlaceOf(id));
}

bool VisualDebugMarks::ShowMenu(const QPoint& position)
{
    const QString id = breakpoints ? view->MarkAt(position) : QString();
    if (id.isEmpty())
        return false;
    BreakpointActs::ShowMenu(breakpoints, PlaceOf(id), view, view->viewport()->mapToGlobal(position));
    return true;
}
