// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "AppBreakpoints_p.h"
#include "DebugFocus_p.h"

#include <QStringList>

class StatementView;

// Breakpoints and the stopped statement in the tree of the visual editor.
class VisualDebugMarks : public QObject
{
    Q_OBJECT

public:
    VisualDebugMarks(StatementView* statementView, QWidget* editor);

    void SetApp(const RpaAppDataPtr& app);
    const QSharedPointer<AppBreakpoints>& Breakpoints() const { return breakpoints; }

    // All get one, unless all have one.
    void Toggle(const QStringList& ids);
    // False when there is no breakpoint's place.
    bool ShowMenu(const QPoint& position);

signals:
    // A stop in this app, or another call of it was chosen.
    void SigStopped(const RpaDebugPlace& place);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void ShowMarks();
    void ShowStop();
    RpaDebugPlace PlaceOf(const QString& id) const;

    StatementView* const view;
    QWidget* const host;
    DebugFocus* const focus;
    QSharedPointer<AppBreakpoints> breakpoints;
};
