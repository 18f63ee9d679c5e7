// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "run/RpaRun_p.h"

#include <RpaEngineModule/RpaDebugTypes.h>

#include <QPair>
#include <QVariantMap>
#include <QVector>

// What goes to the child and comes from it while a run is debugged. What comes is not believed: numbers,
// texts and lists are bounded, and what does not fit is left out.
namespace DebugFrames
{

QVariantMap Request(const QString& op, QVariantMap request = {});

// The line of the program at which the place begins; 0 when the program does not have it.
int LineOf(const RpaProgram& program, const RpaDebugPlace& place);
RpaDebugPlace PlaceOf(const RpaProgram& program, int line);

// For each line the one at which its statement begins, 0 for one of no statement. Invalid for a program text:
// the child finds them itself.
QVariant StatementLines(const RpaProgram& program);

// Of those that take effect in this program.
QVariantList Points(const RpaProgram& program, const QVector<RpaBreakpoint>& breakpoints);
// What the plan adds to them; empty for a whole run.
QVariantMap Plan(const RpaProgram& program, const RpaRunPlan& plan);
// False when the program does not have the place that the plan names.
bool HasPlace(const RpaProgram& program, const RpaRunPlan& plan);
QString ErrorStopName(RpaErrorStop stop);
QString StepName(RpaDebugStep step);

// The number of the stop that the frame belongs to; 0: none.
int StopOf(const QVariantMap& frame);
// Lines of breakpoints, and where they took effect.
QVector<QPair<int, int>> ReadPlaced(const QVariantMap& frame, const RpaProgram& program);
// False when the frame is none of a stop.
bool ReadPause(const QVariantMap& frame, const RpaProgram& program, RpaPause& pause);
QVector<RpaDebugValue> ReadValues(const QVariant& list);
RpaDebugAnswer ReadAnswer(const QVariantMap& frame);

} // namespace DebugFrames
