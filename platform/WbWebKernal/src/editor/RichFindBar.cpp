// SPDX-License-Identifier: Apache-2.0

#include "RichFindBar_p.h"

#include <WbBaseUI/WbTextSearch.h>

#include <QTextEdit>

RichFindBar::RichFindBar(QTextEdit* searched, QWidget* parent)
    : WbFindBar(QStringLiteral("查找"), parent), view(searched)
{
    setObjectName(QStringLiteral("richFindBar"));
    connect(this, &WbFindBar::SigTextChanged, this, &RichFindBar::SlotTextChanged);
    connect(this, &WbFindBar::SigFind, this, &RichFindBar::Find);
    connect(this, &WbFindBar::SigClosed, this, [this] {
        view->setExtraSelections({});
        view->setFocus();
    });
}

void RichFindBar::OpenWithSelection()
{
    Open(view->textCursor().selectedText());
    MarkAll();
}

void RichFindBar::SlotDocumentReplaced()
{
    if (!isHidden())
        MarkAll();
}

void RichFindBar::SlotTextChanged()
{
    MarkAll();
    QTextCursor cursor = view->textCursor();
    cursor.setPosition(cursor.selectionStart());
    view->setTextCursor(cursor);
    Find(false);
}

void RichFindBar::Find(bool backward)
{
    const auto flags = backward ? QTextDocument::FindBackward : QTextDocument::FindFlags();
    const QTextCursor found = WbTextSearch::Find(view->textCursor(), GetText(), flags);
    if (!found.isNull())
        view->setTextCursor(found);
}

void RichFindBar::MarkAll()
{
    const auto marks = WbTextSearch::MarksOf(view->document(), GetText(), {});
    view->setExtraSelections(marks.places);
    ShowCount(marks.places.size(), marks.isMore);
}
