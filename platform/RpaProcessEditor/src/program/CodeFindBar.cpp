// SPDX-License-Identifier: Apache-2.0

#include "CodeEdit_p.h"
#include "CodeFindBar_p.h"

#include <WbBaseUI/WbTextSearch.h>

#include <QCheckBox>
#include <QKeyEvent>

CodeFindBar::CodeFindBar(CodeEdit* searched, QWidget* parent)
    : WbFindBar(QStringLiteral("查找"), parent), edit(searched),
      caseBox(new QCheckBox(QStringLiteral("区分大小写"))),
      wordBox(new QCheckBox(QStringLiteral("整个单词"))), replaceRow(new QWidget)
{
    setObjectName(QStringLiteral("codeFindBar"));
    caseBox->setObjectName(QStringLiteral("checkBoxCase"));
    wordBox->setObjectName(QStringLiteral("checkBoxWord"));
    AddOption(caseBox);
    AddOption(wordBox);
    replace.setupUi(replaceRow);
    AddRow(replaceRow);

    connect(this, &WbFindBar::SigTextChanged, this, &CodeFindBar::SlotChanged);
    connect(caseBox, &QCheckBox::toggled, this, &CodeFindBar::SlotChanged);
    connect(wordBox, &QCheckBox::toggled, this, &CodeFindBar::SlotChanged);
    connect(this, &WbFindBar::SigFind, this, &CodeFindBar::Find);
    connect(replace.replaceButton, &QPushButton::clicked, this, &CodeFindBar::ReplaceCurrent);
    connect(replace.replaceAllButton, &QPushButton::clicked, this, &CodeFindBar::ReplaceAll);
    connect(this, &WbFindBar::SigClosed, this, [this] {
        edit->SetFoundMarks({});
        edit->setFocus();
    });
}

void CodeFindBar::OpenToFind()
{
    replaceRow->hide();
    OpenWithSelection();
}

void CodeFindBar::OpenToReplace()
{
    replaceRow->show();
    OpenWithSelection();
}

void CodeFindBar::OpenWithSelection()
{
    Open(edit->textCursor().selectedText());
    MarkAll();
}

void CodeFindBar::keyPressEvent(QKeyEvent* event)
{
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isEnter && replace.lineEditReplace->hasFocus())
        ReplaceCurrent();
    else
        WbFindBar::keyPressEvent(event);
}

QTextDocument::FindFlags CodeFindBar::Flags() const
{
    QTextDocument::FindFlags flags;
    flags.setFlag(QTextDocument::FindCaseSensitively, caseBox->isChecked());
    flags.setFlag(QTextDocument::FindWholeWords, wordBox->isChecked());
    return flags;
}

void CodeFindBar::SlotChanged()
{
    MarkAll();
    QTextCursor cursor = edit->textCursor();
    cursor.setPosition(cursor.selectionStart());
    edit->setTextCursor(cursor);
    Find(false);
}

void CodeFindBar::Find(bool backward)
{
    QTextDocument::FindFlags flags = Flags();
    flags.setFlag(QTextDocument::FindBackward, backward);
    const QTextCursor found = WbTextSearch::Find(edit->textCursor(), GetText(), flags);
    if (!found.isNull())
        edit->setTextCursor(found);
}

void CodeFindBar::MarkAll()
{
    const auto marks = WbTextSearch::MarksOf(edit->document(), GetText(), Flags());
    edit->SetFoundMarks(marks.places);
    ShowCount(marks.places.size(), marks.isMore);
}

void CodeFindBar::ReplaceCurrent()
{
    QTextCursor cursor = edit->textCursor();
    const Qt::CaseSensitivity sensitivity = caseBox->isChecked() ? Qt::CaseSensitive : Qt::CaseInsensitive;
    if (cursor.hasSelection() && cursor.selectedText().compare(GetText(), sensitivity) == 0)
        cursor.insertText(replace.lineEditReplace->text());
    Find(false);
    MarkAll();
}

void CodeFindBar::ReplaceAll()
{
    const QString wanted = GetText();
    if (wanted.isEmpty())
        return;
    // One step for undo, and one announcement of the text instead of thousands.
    QTextCursor step(edit->document());
    step.beginEditBlock();
    QTextCursor found = edit->document()->find(wanted, 0, Flags());
    while (!found.isNull()) {
        found.insertText(replace.lineEditReplace->text());
        found = edit->document()->find(wanted, found, Flags());
    }
    step.endEditBlock();
    MarkAll();
}
