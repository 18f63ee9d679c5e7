// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "DebugSource_p.h"

// Which call of the stopped program the author looks at: the innermost one until another is chosen. All panes
// and editors follow it.
class DebugFocus : public QObject
{
    Q_OBJECT

public:
    explicit DebugFocus(DebugSource* debugged, QObject* parent = nullptr);

    // That of the engine's session.
    static DebugFocus* Instance();

    DebugSource* Source() const { return source; }
    // From 0, the innermost.
    int GetFrame() const { return frame; }
    // Where it stands; nowhere when nothing is stopped.
    RpaDebugPlace GetPlace() const;
    // Ignored when there is no such frame.
    void Choose(int chosen);

    // The expressions that are computed at each stop.
    QStringList GetWatches() const { return watches; }
    void SetWatches(const QStringList& expressions);

signals:
    void SigWatchesChanged();
    // A stop, another frame of it, or its end.
    void SigChanged();

private:
    void Begin();

    DebugSource* const source;
    int frame = 0;
    QStringList watches;
};
