// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "CodeQuestions_p.h"

#include <QObject>
#include <QPoint>
#include <QRect>

class QHelpEvent;
class QPlainTextEdit;

// What a name is and does: a tool tip under the pointer, or at the cursor when the author asks by a key. A tip that
// somebody else shows there meanwhile (the value of a stopped run) stays.
class CodeExplanation : public QObject
{
    Q_OBJECT

public:
    // The edit owns it.
    CodeExplanation(QPlainTextEdit* codeEdit, CodeQuestions* questions);

    // Of the name at the cursor.
    void Ask();

    // What an answer of the helper says, as plain text; empty: nothing.
    static QString TextOf(const QVariantMap& answer);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void AskAt(int offset, const QPoint& onScreen);
    void SlotHover(const QHelpEvent& event);
    QRect NameRect(int offset) const;

    QPlainTextEdit* const edit;
    CodeQuestions* const questions;
    int lastNumber = 0;
};
