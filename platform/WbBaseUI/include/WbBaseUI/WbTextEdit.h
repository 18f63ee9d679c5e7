// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <WbBaseUI/WbBaseUIExport.h>

#include <QTextEdit>

// Multi-line plain-text edit of the theme: pasted rich text arrives as plain text; Tab leaves the field.
class WBBASEUI_EXPORT WbTextEdit : public QTextEdit
{
    Q_OBJECT

public:
    explicit WbTextEdit(QWidget* parent = nullptr);

    // Replaces the text. Unlike QTextEdit it never guesses that the text is HTML, so text from a server stays
    // text.
    void setText(const QString& text);
};
