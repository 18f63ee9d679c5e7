// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <WbBaseUI/WbFindBar.h>

class QTextEdit;

// Finds text on the page.
class RichFindBar : public WbFindBar
{
    Q_OBJECT

public:
    RichFindBar(QTextEdit* searched, QWidget* parent);

    // With the selected text, if it is one line.
    void OpenWithSelection();
    // Another document is searched from now on.
    void SlotDocumentReplaced();

private:
    void SlotTextChanged();
    void Find(bool backward);
    void MarkAll();

    QTextEdit* view;
};
