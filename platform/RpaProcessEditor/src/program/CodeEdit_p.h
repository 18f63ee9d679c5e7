// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QPlainTextEdit>

#include <memory>

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

    // 0: none.
    void SetFailedLine(int line);

    // Marks of the find bar, under those of this class.
    void SetFoundMarks(const QList<QTextEdit::ExtraSelection>& marks);

protected:
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

    QWidget* const gutter;
    std::unique_ptr<QSyntaxHighlighter> highlighter;
    QList<QTextEdit::ExtraSelection> found;
    int zoomed = 0;
    int failedLine = 0;
    bool marksLine = false;
};
