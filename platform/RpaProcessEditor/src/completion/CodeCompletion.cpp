// SPDX-License-Identifier: Apache-2.0

#include "CodeCompletion_p.h"
#include "CompletionPopup_p.h"
#include "PythonWords_p.h"

#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QTextBlock>

namespace
{
// Between two letters of somebody who types fast there is more.
constexpr int aheadMs = 40;

bool isHintTold = false; // in this process

bool IsEnter(int key)
{
    return key == Qt::Key_Return || key == Qt::Key_Enter;
}
} // namespace

CodeCompletion::CodeCompletion(QPlainTextEdit* codeEdit, CodeQuestions* codeQuestions)
    : QObject(codeEdit), edit(codeEdit), questions(codeQuestions), popup(new CompletionPopup(codeEdit))
{
    ahead.setSingleShot(true);
    ahead.setInterval(aheadMs);
    connect(&ahead, &QTimer::timeout, this, &CodeCompletion::AskAhead);
    connect(edit->document(), &QTextDocument::contentsChange, this, &CodeCompletion::SlotContentsChange);
    connect(edit, &QPlainTextEdit::textChanged, this, &CodeCompletion::SlotTextChanged);
    connect(edit, &QPlainTextEdit::cursorPositionChanged, this, &CodeCompletion::SlotCursorMoved);
    connect(edit->verticalScrollBar(), &QScrollBar::valueChanged, popup, &QWidget::hide);
    connect(edit->horizontalScrollBar(), &QScrollBar::valueChanged, popup, &QWidget::hide);
    connect(popup, &CompletionPopup::SigHidden, this, &CodeCompletion::SlotHidden);
    connect(popup, &CompletionPopup::SigClicked, this, &CodeCompletion::Take);
    edit->installEventFilter(this);
}

void CodeCompletion::Open()
{
    wanted = true;
    closedAt = -1;
    Want(WordAtCursor());
}

CodeCompletion::Word CodeCompletion::WordAtCursor() const
{
    const QTextCursor cursor = edit->textCursor();
    const int begin = PythonWords::BeginOf(*edit->document(), cursor.position());
    const QTextBlock block = cursor.block();
    return {begin, block.text().mid(begin - block.position(), cursor.position() - begin)};
}

// Where a list opens by itself: behind a dot, or behind the first letter of a name.
bool CodeCompletion::BeginsName(const Word& word) const
{
    if (word.begin == closedAt)
        return false;
    if (!word.text.isEmpty())
        return !word.text.at(0).isDigit();
    const QTextDocument& text = *edit->document();
    return word.begin > 1 && text.characterAt(word.begin - 1) == QLatin1Char('.') &&
           !text.characterAt(word.begin - 2).isDigit();
}

// Whether the author may be about to ask what belongs to it: a name, a call, an element, a text.
bool CodeCompletion::MayTakeDot(const Word& word) const
{
    if (!word.text.isEmpty())
        return !word.text.at(0).isDigit();
    const QChar before = word.begin > 0 ? edit->document()->characterAt(word.begin - 1) : QChar();
    return QStringLiteral(")]}\"'").contains(before) && !before.isNull();
}

void CodeCompletion::SlotContentsChange(int position, int removed, int added)
{
    const QTextDocument& text = *edit->document();
    const bool isDot = position == behind.anchor - 1 && removed == 0 && added == 1 &&
                       text.characterAt(position) == QLatin1Char('.');
    if (isDot)
        names = behind;
    else if (position < names.anchor || position > PythonWords::EndOf(text, qMax(0, names.anchor)))
        names = {};
    behind = {};
    if (position < closedAt)
        closedAt = -1;
}

void CodeCompletion::SlotTextChanged()
{
    const bool wasTyped = typed;
    typed = false;
    const Word word = WordAtCursor();
    const bool goesOn = popup->isVisible() && word.begin == names.anchor && !word.text.isEmpty();
    wanted = (wasTyped && BeginsName(word)) || goesOn;
    if (wanted)
        Want(word);
    else
        popup->hide();
    if (edit->hasFocus())
        ahead.start();
}

void CodeCompletion::SlotCursorMoved()
{
    if (popup->isVisible()) {
        const Word word = WordAtCursor();
        if (word.begin != names.anchor)
            popup->hide();
        else if (word.text != shownFor)
            ShowMatching(word);
    }
    if (edit->hasFocus())
        ahead.start();
}

void CodeCompletion::AskAhead()
{
    if (!edit->hasFocus() || !questions->CanAnswer() || edit->textCursor().hasSelection())
        return;
    const Word word = WordAtCursor();
    const int place = edit->textCursor().position();
    if (MayTakeDot(word)) {
        if (behind.anchor != place + 1) {
            Ask(behind, CodeQuestion::Kind::CompleteAhead, place);
            behind.anchor = place + 1;
        }
    } else if (word.text.isEmpty() && names.anchor != place) {
        Ask(names, CodeQuestion::Kind::Complete, place);
    }
}

void CodeCompletion::Want(const Word& word)
{
    questions->Prepare();
    if (names.anchor == word.begin) {
        if (names.areHere)
            ShowMatching(word);
        return;
    }
    popup->hide();
    const bool isLong = edit->document()->characterCount() > CodeQuestions::mostCharacters;
    if (isLong || !questions->CanAnswer())
        OfferWords(word);
    else
        Ask(names, CodeQuestion::Kind::Complete, word.begin);
}

void CodeCompletion::Ask(Offers& offers, CodeQuestion::Kind kind, int offset)
{
    if (edit->document()->characterCount() > CodeQuestions::mostCharacters)
        return;
    offers = {};
    offers.anchor = offset;
    offers.number = ++lastNumber;
    questions->Ask(this, {kind, edit->toPlainText(), offset},
                   [this, number = lastNumber](const QVariantMap& answer) { TakeAnswer(number, answer); });
}

// What was asked of another text finds no place any more.
void CodeCompletion::TakeAnswer(int number, const QVariantMap& answer)
{
    Offers* const offers = names.number == number ? &names : behind.number == number ? &behind : nullptr;
    if (!offers)
        return;
    const Word word = WordAtCursor();
    const bool isWaitedFor = offers == &names && wanted && word.begin == names.anchor;
    const bool isAnswer = answer.contains(QStringLiteral("items"));
    if (isAnswer) {
        offers->items = CompletionLists::Of(answer);
        offers->areHere = true;
    } else {
        *offers = {}; // to be asked again
    }
    if (isWaitedFor && isAnswer)
        ShowMatching(word);
    else if (isWaitedFor)
        OfferWords(word);
}

void CodeCompletion::OfferWords(const Word& word)
{
    names = {};
    names.anchor = word.begin;
    names.areHere = true;
    const bool isAttribute =
        word.begin > 0 && edit->document()->characterAt(word.begin - 1) == QLatin1Char('.');
    if (!isAttribute || !word.text.isEmpty())
        names.items = CompletionLists::OfWords(PythonWords::Near(*edit->document(), word.begin));
    ShowMatching(word);
}

void CodeCompletion::ShowMatching(const Word& word)
{
    const CompletionItems matches = CompletionLists::Filter(names.items, word.text);
    shownFor = word.text;
    isChosen = false;
    const bool isWritten = matches.size() == 1 && matches.first().name == word.text;
    if (matches.isEmpty() || isWritten || !edit->isVisible())
        popup->hide();
    else
        popup->ShowAt(CursorOnScreen(), matches, Hint());
}

// Once; whoever knows it needs no reminder.
QString CodeCompletion::Hint() const
{
    if (isHintTold || !questions->IsMissing())
        return QString();
    return QStringLiteral("没有找到 jedi，只列出程序中的词");
}

void CodeCompletion::SlotHidden()
{
    isHintTold = isHintTold || questions->IsMissing();
}

QRect CodeCompletion::CursorOnScreen() const
{
    QTextCursor begin(edit->document());
    begin.setPosition(names.anchor);
    const QRect place = edit->cursorRect(begin);
    return QRect(edit->viewport()->mapToGlobal(place.topLeft()), place.size());
}

void CodeCompletion::Take()
{
    const CompletionItem item = popup->Current();
    popup->hide();
    wanted = false;
    if (item.name.isEmpty())
        return;
    QTextCursor cursor = edit->textCursor();
    cursor.setPosition(names.anchor);
    cursor.setPosition(edit->textCursor().position(), QTextCursor::KeepAnchor);
    if (cursor.selectedText() != item.name)
        cursor.insertText(item.name);
    cursor.clearSelection();
    edit->setTextCursor(cursor);
    edit->setFocus();
}

void CodeCompletion::Close()
{
    popup->hide();
    wanted = false;
    closedAt = WordAtCursor().begin;
}

bool CodeCompletion::IsOfPopup(const QKeyEvent& event) const
{
    if (!popup->isVisible() || (event.modifiers() & ~Qt::KeypadModifier) != Qt::NoModifier)
        return false;
    switch (event.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Tab:
    case Qt::Key_Escape:
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
        return true;
    default:
        return false;
    }
}

// The name is written, or what is selected is not what the author was about to write.
bool CodeCompletion::EndsTheLine() const
{
    const QString typedText = WordAtCursor().text;
    const QString name = popup->Current().name;
    return name == typedText || (!isChosen && !name.startsWith(typedText, Qt::CaseInsensitive));
}

bool CodeCompletion::TakeKey(const QKeyEvent& event)
{
    const int key = event.key();
    if (IsEnter(key) && EndsTheLine()) {
        Close();
        return false;
    }
    isChosen = !IsEnter(key) && key != Qt::Key_Tab && key != Qt::Key_Escape;
    if (IsEnter(key) || key == Qt::Key_Tab)
        Take();
    else if (key == Qt::Key_Escape)
        Close();
    else if (key == Qt::Key_Up || key == Qt::Key_Down)
        popup->Move(key == Qt::Key_Up ? -1 : 1);
    else
        popup->Move(key == Qt::Key_PageUp ? -popup->RowsOfAPage() : popup->RowsOfAPage());
    return true;
}

bool CodeCompletion::eventFilter(QObject*, QEvent* event)
{
    switch (event->type()) {
    case QEvent::ShortcutOverride:
        // Else the key would go to whatever closes or moves by it.
        if (IsOfPopup(*static_cast<QKeyEvent*>(event)))
            event->accept();
        return event->isAccepted() && IsOfPopup(*static_cast<QKeyEvent*>(event));
    case QEvent::KeyPress: {
        const auto& key = *static_cast<QKeyEvent*>(event);
        typed = !key.text().isEmpty() && key.text().at(0).isPrint();
        return IsOfPopup(key) && TakeKey(key);
    }
    case QEvent::InputMethod:
        typed = !static_cast<QInputMethodEvent*>(event)->commitString().isEmpty();
        return false;
    case QEvent::FocusOut:
    case QEvent::Hide:
        popup->hide();
        wanted = false;
        return false;
    case QEvent::FocusIn:
        questions->Prepare();
        ahead.start();
        return false;
    default:
        return false;
    }
}
