// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "BreakpointMark_p.h"

#include <QHash>
#include <QPlainTextEdit>

#include <memory>

class CodeFolds;
class CodeGutter;
class QSyntaxHighlighter;

// A text edit for Python: line numbers, current line, bracket pairs, indentation by fours, comments, zoom.
class CodeEdit : public QPlainTextEdit
{
    Q_OBJECT

public:
    explicit CodeEdit(QWidget* parent = nullptr);
    ~CodeEdit() override;

    // Replaces the text and forgets the undo steps.
    void LoadText(const QString& text);

    void ToggleComment();
    void Indent();
    void Outdent();
    void MoveLines(int direction);
    void DuplicateLines();
    void Zoom(int steps);    // 0: the original size
    void GoToLine(int line); // from 1; the nearest line there is

    CodeFolds& GetFolds() { return *folds; }

    // 0: none.
    void SetFailedLine(int line);

    // By line, from 1.
    void SetBreakpoints(const QHash<int, BreakpointMark>& marks);
    // The line at which the program stands; 0: none. innermost: not in something that the line calls.
    void SetStoppedLine(int line, bool innermost);
    void RevealLine(int line);
    // Names under the pointer are told by SigNameHovered() instead of having no tool tip.
    void SetHovering(bool hovers) { tellsNames = hovers; }
    // The name at a place of the viewport, with what it is an attribute of; empty when there is none.
    QString NameAt(const QPoint& position) const;

    // Marks of the find bar, under those of this class.
    void SetFoundMarks(const QList<QTextEdit::ExtraSelection>& marks);

signals:
    // The gutter's place for breakpoints was pressed. Position: of the screen.
    void SigMarkPressed(int line, Qt::MouseButton button, const QPoint& position);
    // by > 0 lines came before the line first, or -by lines from it on went.
    void SigLinesMoved(int first, int by);
    void SigNameHovered(const QString& name, const QPoint& position);

protected:
    bool viewportEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    friend class CodeGutter;
    void PaintGutter(QPaintEvent* event);
    int GutterWidth() const;
    QWidget* MakeGutter();
    void LayoutGutter();
    void ApplyTheme();
    void MarkCurrent();
    void MarkBrackets(QList<QTextEdit::ExtraSelection>& marks) const;
    void BreakLine();
    void PaintMark(QPainter& painter, int line, qreal top, qreal height) const;
    void PressGutter(const QMouseEvent& event);
    void FollowLines(int position);
    int MarkWidth() const;

    QWidget* const gutter;
    CodeFolds* folds = nullptr;
    std::unique_ptr<QSyntaxHighlighter> highlighter;
    QList<QTextEdit::ExtraSelection> found;
    int zoomed = 0;
    int failedLine = 0;
    QHash<int, BreakpointMark> breakpoints;
    int stoppedLine = 0;
    bool stoppedInnermost = true;
    bool tellsNames = false;
    int lineCount = 1; // before the newest change
    bool marksLine = false;
};
