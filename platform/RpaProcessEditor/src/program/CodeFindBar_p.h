// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "ui_CodeReplaceRow.h"

#include <WbBaseUI/WbFindBar.h>

#include <QTextDocument>

class CodeEdit;
class QCheckBox;

// Find and replace in the code.
class CodeFindBar : public WbFindBar
{
    Q_OBJECT

public:
    CodeFindBar(CodeEdit* searched, QWidget* parent);

    // With the selected text, if it is one line.
    void OpenToFind();
    void OpenToReplace();
    void ReplaceAll();
    void ReplaceCurrent();

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void OpenWithSelection();
    void SlotChanged();
    void Find(bool backward);
    void MarkAll();
    QTextDocument::FindFlags Flags() const;

    CodeEdit* edit;
    Ui::CodeReplaceRow replace;
    QCheckBox* caseBox;
    QCheckBox* wordBox;
    QWidget* replaceRow;
};
