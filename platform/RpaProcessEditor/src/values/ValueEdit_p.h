// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaProcessData/RpaValue.h>

#include <QTextEdit>

// A text in which variables stand as pieces of their own: each is one character to the cursor, and one
// Backspace takes it away. Ctrl+Space asks for what may be inserted.
class ValueEdit : public QTextEdit
{
    Q_OBJECT

public:
    enum class Lines
    {
        One,
        Several,
    };

    explicit ValueEdit(Lines lines, QWidget* parent = nullptr);

    // Texts and Code as they stand; emits nothing.
    void SetParts(const QVector<RpaValuePart>& parts);
    QVector<RpaValuePart> Parts() const;

    // In place of the selection, as if it were typed.
    void Insert(const RpaValuePart& part);

    // Before the character or piece of that number.
    void SetCursor(int position);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

signals:
    void SigEdited();
    void SigFinished();
    void SigPickAsked();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void changeEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    QMimeData* createMimeDataFromSelection() const override;
    bool canInsertFromMimeData(const QMimeData* source) const override;
    void insertFromMimeData(const QMimeData* source) override;

private:
    void Write(QTextCursor& cursor, const RpaValuePart& part) const;
    QVector<RpaValuePart> PartsWithin(int begin, int end) const;
    void FitHeight();
    void SlotContentsChanged();

    const Lines lines;
    QVector<RpaValuePart> told;
    bool quiet = false;
};
