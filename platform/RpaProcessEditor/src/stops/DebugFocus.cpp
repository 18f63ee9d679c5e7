// SPDX-License-Identifier: Apache-2.0

#include "DebugFocus_p.h"

DebugFocus::DebugFocus(DebugSource* debugged, QObject* parent) : QObject(parent), source(debugged)
{
    connect(source, &DebugSource::SigStarted, this, &DebugFocus::Begin);
    connect(source, &DebugSource::SigPaused, this, &DebugFocus::Begin);
    connect(source, &DebugSource::SigResumed, this, &DebugFocus::Begin);
    connect(source, &DebugSource::SigEnded, this, &DebugFocus::Begin);
}

DebugFocus* DebugFocus::Instance()
{
    static auto* const one = new DebugFocus(DebugSource::Instance(), DebugSource::Instance());
    return one;
}

RpaDebugPlace DebugFocus::GetPlace() const
{
    return source->GetPause().stack.value(frame).place;
}

void DebugFocus::Choose(int chosen)
{
    if (chosen == frame || chosen < 0 || chosen >= source->GetPause().stack.size())
        return;
    frame = chosen;
    emit SigChanged();
}

void DebugFocus::SetWatches(const QStringList& expressions)
{
    if (expressions == watches)
        return;
    watches = expressions.mid(0, RpaDebugSession::entriesPerPage);
    emit SigWatchesChanged();
    source->SetWatches(watches);
}

void DebugFocus::Begin()
{
    frame = 0;
    emit SigChanged();
}
