// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "AppBreakpoints_p.h"
#include "DebugSource_p.h"

// Whose breakpoints the debug session has: those of the app whose editor was shown last before the run, since
// lines of different apps have the same names.
class DebuggedApp : public QObject
{
    Q_OBJECT

public:
    explicit DebuggedApp(DebugSource* debugged, QObject* parent = nullptr);

    // That of the engine's session.
    static DebuggedApp* Instance();

    // During a run of another app it is that one's turn when the run has ended.
    void Use(const QSharedPointer<AppBreakpoints>& list);
    bool Is(const RpaAppData* app) const;

private:
    void Take();
    void Send();

    DebugSource* const source;
    QWeakPointer<AppBreakpoints> current;
    QWeakPointer<AppBreakpoints> wanted;
};
