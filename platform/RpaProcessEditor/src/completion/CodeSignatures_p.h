// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "CodeQuestions_p.h"

#include <QObject>

class QLabel;
class QPlainTextEdit;

// The tip above a call that is being written: its arguments, the current one bold, and what the function does.
class CodeSignatures : public QObject
{
    Q_OBJECT

public:
    // The edit owns it.
    CodeSignatures(QPlainTextEdit* codeEdit, CodeQuestions* questions);

    // For the call around the cursor; the tip goes when there is none.
    void Ask();

    // The tip's text for an answer of the helper, as rich text; empty: there is nothing to show.
    static QString TextOf(const QVariantMap& answer);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void SlotCursorMoved();
    void TakeAnswer(int number, const QString& text, const QVariantMap& answer);
    void Place(int bracket);

    QPlainTextEdit* const edit;
    CodeQuestions* const questions;
    QLabel* const tip;
    int lastNumber = 0;
    bool typed = false; // a bracket or a comma
};
