// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "DebugFrames_p.h"

#include <RpaEngineModule/RpaDebugSession.h>

#include <QPointer>
#include <QSet>

class RpaDebugSession::Private
{
public:
    QVector<RpaBreakpoint> breakpoints;
    RpaErrorStop errorStop = RpaErrorStop::Never;
    int slowMs = 0;
    QStringList watches;
    RpaRunPlan plan;

    QPointer<RpaRun> run;
    RpaProgram program;
    RpaRunPlan current;
    State state = State::Idle;
    RpaPause pause;
    int newestStop = 0;
    int lastRequest = 0;
    QSet<int> open;     // requests of this stop without an answer
    bool known = false; // the child debugs

    QVariantList Points() const
    {
        return current.ignoresBreakpoints ? QVariantList() : DebugFrames::Points(program, breakpoints);
    }

    QVariantMap Settings() const
    {
        const RpaErrorStop errors = current.ignoresBreakpoints ? RpaErrorStop::Never : errorStop;
        return {{QStringLiteral("slow"), slowMs},
                {QStringLiteral("errors"), DebugFrames::ErrorStopName(errors)},
                {QStringLiteral("watches"), watches}};
    }

    // Something besides breakpoints that a run has to be debugged for.
    bool HasSettings() const
    {
        return slowMs > 0 || (errorStop != RpaErrorStop::Never && !current.ignoresBreakpoints);
    }

    void Send(const QVariantMap& request)
    {
        if (!run)
            return;
        if (!known) {
            known = true;
            QVariantMap first = DebugFrames::Request(QStringLiteral("settings"), Settings());
            first.insert(QStringLiteral("places"), DebugFrames::StatementLines(program));
            run->SendDebug(first);
        }
        run->SendDebug(request);
    }
};
