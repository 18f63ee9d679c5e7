// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "AppBreakpoints_p.h"
#include "DebugFocus_p.h"

#include <QPoint>

class CodeEdit;

// Breakpoints, the stopped line and values under the pointer in the program text.
class ProgramDebugMarks : public QObject
{
    Q_OBJECT

public:
    ProgramDebugMarks(CodeEdit* codeEdit, QWidget* editor);

    void SetApp(const RpaAppDataPtr& app);
    const QSharedPointer<AppBreakpoints>& Breakpoints() const { return breakpoints; }

    // Of the line of the text cursor.
    void Toggle();
    // The author changed the text: breakpoints stay with their lines.
    void MoveLines(int first, int by);

signals:
    // A stop in this app, or another call of it was chosen.
    void SigStopped(int line);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void ShowMarks();
    void ShowStop();
    void SlotMarkPressed(int line, Qt::MouseButton button, const QPoint& position);
    void SlotNameHovered(const QString& name, const QPoint& position);
    void SlotAnswer(const RpaDebugAnswer& answer);
    QString ProcessName() const;
    RpaDebugPlace PlaceOf(int line) const { return {ProcessName(), QString(), line}; }

    CodeEdit* const edit;
    QWidget* const host;
    DebugFocus* const focus;
    QSharedPointer<AppBreakpoints> breakpoints;
    int hoverRequest = 0;
    QString hoverName;
    QPoint hoverPosition;
};
