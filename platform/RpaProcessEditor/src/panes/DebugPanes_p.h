// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "AppBreakpoints_p.h"
#include "DebugFocus_p.h"
#include "ui_DebugPanes.h"

#include <QWidget>

class BreakpointsPane;

// Variables, watches, call stack and breakpoints, below an editor. Hidden until a program stops or somebody
// asks for them; who closes them while a program runs is left alone until the next run.
class DebugPanes : public QWidget
{
    Q_OBJECT

public:
    explicit DebugPanes(DebugFocus* debugFocus, QWidget* parent = nullptr);

    void SetBreakpoints(const QSharedPointer<AppBreakpoints>& list);
    // The author opens or closes them.
    void Toggle();
    // The program stopped. True when that opened them.
    bool OpenAtStop();
    QSize sizeHint() const override;

signals:
    // The author wants to see it.
    void SigPlaceChosen(const RpaDebugPlace& place);

private:
    void ShowState();
    void Close();

    DebugFocus* const focus;
    BreakpointsPane* const breakpointsPane;
    bool isWanted = true; // at stops of this run
    Ui::DebugPanes ui;
};
