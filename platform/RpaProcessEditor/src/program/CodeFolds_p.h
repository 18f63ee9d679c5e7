// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QObject>
#include <QTextBlock>
#include <QVector>

class CodeFoldStrip;
class QPlainTextEdit;

// Folds the blocks of Python, which are told by their indentation: a line stands for the deeper ones below it. What is
// folded opens by itself when the cursor comes into it or its first line is no first line any more; the text itself
// never changes.
class CodeFolds : public QObject
{
    Q_OBJECT

public:
    // The edit owns it. gutter: the strip with the triangles lies at its right edge.
    CodeFolds(QPlainTextEdit* codeEdit, QWidget* codeGutter);

    // Whether deeper lines follow the line.
    static bool IsHead(const QTextBlock& block);
    // The last line that belongs to the head; the head itself for any other.
    static QTextBlock EndOf(const QTextBlock& head);

    bool IsFolded(const QTextBlock& head) const;
    void Fold(const QTextBlock& head);
    void Unfold(const QTextBlock& head);

    // The block that the cursor is in, as far outward as it takes to find one.
    void ToggleAtCursor();
    // All that begin in the first column, or all there are open again.
    void ToggleAll();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void SlotCursorMoved();
    void SlotContentsChange(int position, int removed, int added);
    void Show(const QTextBlock& first, const QTextBlock& last, bool visible);
    void Layout();
    int PlaceOf(const QTextBlock& head) const;

    QPlainTextEdit* const edit;
    QWidget* const gutter;
    CodeFoldStrip* const strip;
    QVector<QTextCursor> folded; // at the begin of each head
};
