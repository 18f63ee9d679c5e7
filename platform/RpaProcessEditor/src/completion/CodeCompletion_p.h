// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "CodeQuestions_p.h"
#include "CompletionItems_p.h"

#include <QObject>
#include <QTimer>

class CompletionPopup;
class QKeyEvent;
class QPlainTextEdit;

// Completions while an author types: they are asked for before they are needed (behind a dot that is not typed yet,
// for a name before its first letter), and what is typed filters them here. Where there is no helper, the words of the
// text take their place.
class CodeCompletion : public QObject
{
    Q_OBJECT

public:
    // The edit owns it.
    CodeCompletion(QPlainTextEdit* codeEdit, CodeQuestions* questions);

    // The author asked for them.
    void Open();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    // What may stand from the anchor on. The text before the anchor is the one that was asked about.
    struct Offers
    {
        int anchor = -1;
        bool areHere = false;
        CompletionItems items;
        int number = 0; // of their question
    };
    // The name in front of the cursor.
    struct Word
    {
        int begin = 0;
        QString text;
    };

    void SlotContentsChange(int position, int removed, int added);
    void SlotTextChanged();
    void SlotCursorMoved();
    void AskAhead();
    void Want(const Word& word);
    void Ask(Offers& offers, CodeQuestion::Kind kind, int offset);
    void TakeAnswer(int number, const QVariantMap& answer);
    void ShowMatching(const Word& word);
    void OfferWords(const Word& word);
    void Take();
    void Close();
    bool TakeKey(const QKeyEvent& event);
    bool EndsTheLine() const;
    bool IsOfPopup(const QKeyEvent& event) const;
    Word WordAtCursor() const;
    bool MayTakeDot(const Word& word) const;
    bool BeginsName(const Word& word) const;
    QRect CursorOnScreen() const;
    QString Hint() const;
    void SlotHidden();

    QPlainTextEdit* const edit;
    CodeQuestions* const questions;
    CompletionPopup* const popup;
    QTimer ahead;
    Offers names;     // for the name at the cursor
    Offers behind;    // for a dot at the cursor
    QString shownFor; // what was typed of the name
    int lastNumber = 0;
    int closedAt = -1;     // the author closed the list for the name that begins here
    bool typed = false;    // the change that comes is a letter of the author's
    bool isChosen = false; // the author moved the selection
    bool wanted = false;   // the list is to be shown when its names are here
};
