// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "ui_FieldDialog.h"

#include <WbBaseUI/WbBaseDialog.h>

// Asks for one line of text. It stays open while the owner sees to it, and shows why when it cannot be taken.
class FieldDialog : public WbBaseDialog
{
    Q_OBJECT

public:
    QString GetText() const; // without blanks at its ends

    // Shows why the text was refused and lets the user go on.
    void ShowProblem(const QString& problem);

signals:
    // The text was confirmed. The owner accepts the dialog or shows a problem.
    void SigConfirmed();

protected:
    // leastHeight: of the contents, in pixels at 100 %.
    FieldDialog(const QString& title, int leastHeight, QWidget* parent);

    // The field is named by what it asks for: caption above it, the same for those who hear it.
    void SetField(const char* objectName, const QString& caption, const QString& accessibleName,
                  const QString& placeholder);
    // Above the field, and below it; without a text there is none.
    void SetIntro(const char* objectName, const QString& text);
    void SetHint(const char* objectName, const QString& text);
    // The field may be confirmed as it is when it is empty.
    void AllowEmpty();

    // Why the text cannot be confirmed, in the user's words; empty when it can.
    virtual QString FindProblem() const { return {}; }

    Ui::FieldDialog ui;

private:
    void SetBusy(bool isBusy);
    void SlotConfirm();
    void SlotEdited();
    void UpdateOk() { ui.buttonOk->setEnabled(!busy && (mayBeEmpty || !GetText().isEmpty())); }

    bool mayBeEmpty = false;
    bool busy = false;
};
