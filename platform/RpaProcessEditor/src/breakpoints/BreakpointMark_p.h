// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaEngineModule/RpaDebugTypes.h>

class QPainter;
class QRectF;

// What a gutter shows of a breakpoint.
struct BreakpointMark
{
    enum Look
    {
        None,
        Stops,
        Logs,
        Disabled,
    };

    static BreakpointMark Of(const RpaBreakpoint& breakpoint);
    // Only when something holds; empty: it stops at every arrival.
    static QString Terms(const RpaBreakpoint& breakpoint);

    // A disc for one that stops, a diamond for one that logs, a ring for a disabled one; with a line across
    // when something must hold.
    void Paint(QPainter& painter, const QRectF& area) const;
    // The statement at which the program stands; of a calling one an outline.
    static void PaintArrow(QPainter& painter, const QRectF& area, bool innermost);

    Look look = None;
    bool hasTerms = false;
    QString text; // for tool tips and screen readers

    bool operator==(const BreakpointMark& other) const
    {
        return look == other.look && hasTerms == other.hasTerms && text == other.text;
    }
};

Q_DECLARE_METATYPE(BreakpointMark)
