// SPDX-License-Identifier: Apache-2.0

#include "CodeEdit_p.h"
#include "CodeFindBar_p.h"

#include <WbBaseUI/WbLineEdit.h>
#include <WbBaseUI/WbPushButton.h>
#include <WbBaseUI/WbTextSearch.h>

#include <QCheckBox>
#include <QHBoxLayout>
#include <QKeyEvent>

namespace
{
constexpr int replaceEditWidth = 280;
}

CodeFindBar::CodeFindBar(CodeEdit* searched, QWidget* parent)
    : WbFindBar(QStringLiteral("查找"), parent), edit(searched), replaceEdit(new WbLineEdit),
      caseBox(new QCheckBox(QStringLiteral("区分大小写"))),
      wordBox(new QCheckBox(QStringLiteral("整个单词"))), replaceRow(MakeReplaceRow())
{
    setObjectName(QStringLiteral("codeFindBar"));
    caseBox->setObjectName(QStringLiteral("checkBoxCase"));
    wordBox->setObjectName(QStringLiteral("checkBoxWord"));
    AddOption(caseBox);
    AddOption(wordBox);
    AddRow(replaceRow);

    connect(this, &WbFindBar::SigTextChanged, this, &CodeFindBar::SlotChanged);
    connect(caseBox, &QCheckBox::toggled, this, &CodeFindBar::SlotChanged);
    connect(wordBox, &QCheckBox::toggled, this, &CodeFindBar::SlotChanged);
    connect(this, &WbFindBar::SigFind, this, &CodeFindBar::Find);
    connect(this, &WbFindBar::SigClosed, this, [this] {
        edit->SetFoundMarks({});
        edit->setFocus();
    });
}

QWidget* CodeFindBar::MakeReplaceRow()
{
    replaceEdit->setObjectName(QStringLiteral("lineEditReplace"));
    replaceEdit->setPlaceholderText(QStringLiteral("替换为"));
    replaceEdit->setAccessibleName(QStringLiteral("替换为"));
    replaceEdit->setFixedWidth(replaceEditWidth);
    auto* one = new WbPushButton;
    one->setObjectName(QStringLiteral("replaceButton"));
    one->setText(QStringLiteral("替换"));
    auto* all = new WbPushButton;
    all->setObjectName(QStringLiteral("replaceAllButton"));
    all->setText(QStringLiteral("全部替换"));
    auto* row = new QWidget;
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(replaceEdit);
    layout->addWidget(one);
    layout->addWidget(all);
    layout->addStretch();
    connect(one, &QPushButton::clicked, this, &CodeFindBar::ReplaceCurrent);
    connect(all, &QPushButton::clicked, this, &CodeFindBar::ReplaceAll);
    return row;
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
    if (isEnter && replaceEdit->hasFocus())
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
        cursor.insertText(replaceEdit->text());
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
        found.insertText(replaceEdit->text());
        found = edit->document()->find(wanted, found, Flags());
    }
    step.endEditBlock();
    MarkAll();
}
