// SPDX-License-Identifier: Apache-2.0

#include <WbBaseUI/WbTextEdit.h>

WbTextEdit::WbTextEdit(QWidget* parent) : QTextEdit(parent)
{
    setAcceptRichText(false);
    setTabChangesFocus(true);
}

void WbTextEdit::setText(const QString& text)
{
    setPlainText(text);
}
