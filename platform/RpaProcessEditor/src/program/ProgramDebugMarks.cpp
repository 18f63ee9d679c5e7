// SPDX-License-Identifier: Apache-2.0

#include "BreakpointActs_p.h"
#include "CodeEdit_p.h"
#include "DebuggedApp_p.h"
#include "ProgramDebugMarks_p.h"

#include <RpaProcessData/ProcessDataManager.h>
#include <WbBaseUI/UIUtils.h>

#include <QEvent>
#include <QToolTip>

ProgramDebugMarks::ProgramDebugMarks(CodeEdit* codeEdit, QWidget* editor)
    : QObject(editor), edit(codeEdit), host(editor), focus(DebugFocus::Instance())
{
    host->installEventFilter(this);
    connect(edit, &CodeEdit::SigMarkPressed, this, &ProgramDebugMarks::SlotMarkPressed);
    connect(edit, &CodeEdit::SigNameHovered, this, &ProgramDebugMarks::SlotNameHovered);
    connect(focus, &DebugFocus::SigChanged, this, &ProgramDebugMarks::ShowStop);
    connect(focus->Source(), &DebugSource::SigAnswer, this, &ProgramDebugMarks::SlotAnswer);
}

void ProgramDebugMarks::SetApp(const RpaAppDataPtr& app)
{
    if (breakpoints)
        breakpoints->disconnect(this);
    breakpoints = AppBreakpoints::Of(app);
    if (breakpoints) {
        connect(breakpoints.data(), &AppBreakpoints::SigChanged, this, &ProgramDebugMarks::ShowMarks);
        if (host->isVisible())
            DebuggedApp::Instance()->Use(breakpoints);
    }
    ShowMarks();
    ShowStop();
}

bool ProgramDebugMarks::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == host && event->type() == QEvent::Show && breakpoints)
        DebuggedApp::Instance()->Use(breakpoints);
    return QObject::eventFilter(watched, event);
}

QString ProgramDebugMarks::ProcessName() const
{
    return breakpoints && breakpoints->App()
               ? breakpoints->App()->GetProcessDataManager()->GetProcessNameFirst()
               : QString();
}

void ProgramDebugMarks::ShowMarks()
{
    QHash<int, BreakpointMark> marks;
    if (breakpoints) {
        const QVector<RpaBreakpoint> points = breakpoints->Get();
        for (const RpaBreakpoint& point : points)
            if (point.place.statementId.isEmpty() && point.place.processName == ProcessName())
                marks.insert(point.place.line, BreakpointMark::Of(point));
    }
    edit->SetBreakpoints(marks);
}

void ProgramDebugMarks::ShowStop()
{
    const RpaDebugPlace place = focus->GetPlace();
    const bool here = breakpoints && DebuggedApp::Instance()->Is(breakpoints->App()) &&
                      place.statementId.isEmpty() && place.line > 0 && place.processName == ProcessName();
    hoverRequest = 0;
    edit->SetHovering(here);
    edit->SetStoppedLine(here ? place.line : 0, focus->GetFrame() == 0);
    if (!here)
        return;
    edit->RevealLine(place.line);
    emit SigStopped(place.line);
}

void ProgramDebugMarks::Toggle()
{
    if (breakpoints && !ProcessName().isEmpty())
        breakpoints->Toggle(PlaceOf(edit->textCursor().blockNumber() + 1));
}

void ProgramDebugMarks::MoveLines(int first, int by)
{
    if (breakpoints)
        breakpoints->MoveLines(ProcessName(), first, by);
}

void ProgramDebugMarks::SlotMarkPressed(int line, Qt::MouseButton button, const QPoint& position)
{
    if (!breakpoints || ProcessName().isEmpty())
        return;
    if (button == Qt::LeftButton)
        breakpoints->Toggle(PlaceOf(line));
    else if (button == Qt::RightButton)
        BreakpointActs::ShowMenu(breakpoints, PlaceOf(line), edit, position);
}

void ProgramDebugMarks::SlotNameHovered(const QString& name, const QPoint& position)
{
    hoverName = name;
    hoverPosition = position;
    hoverRequest = focus->Source()->Evaluate(focus->GetFrame(), name);
}

void ProgramDebugMarks::SlotAnswer(const RpaDebugAnswer& answer)
{
    if (hoverRequest == 0 || answer.request != hoverRequest)
        return;
    hoverRequest = 0;
    // A name without a value, such as a word of a text, is passed over.
    if (answer.ok && !answer.values.isEmpty())
        QToolTip::showText(
            hoverPosition,
            UIUtils::PlainToolTip(QStringLiteral("%1 = %2").arg(hoverName, answer.values.first().text)),
            edit->viewport());
}
