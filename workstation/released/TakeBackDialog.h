// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <WbBaseUI/WbBaseDialog.h>

class WbLabel;
class WbLineEdit;
class WbPushButton;

// Asks whether users shall lose or get a version, and why. It stays open and shows why when that cannot be
// done.
class TakeBackDialog : public WbBaseDialog
{
    Q_OBJECT

public:
    // act: what the confirming button says. consequence: what becomes of users.
    TakeBackDialog(const QString& title, const QString& act, const QString& consequence, QWidget* parent);
    ~TakeBackDialog() override;

    QString GetReason() const; // without blanks at its ends

    // Shows why it was refused and lets the user go on.
    void ShowProblem(const QString& problem);

signals:
    // With a reason of 1 to 200 characters. The owner accepts the dialog or shows a problem.
    void SigConfirmed();

private:
    void SetBusy(bool busy);
    void SlotConfirm();
    void SlotReasonEdited();

    WbLineEdit* editReason;
    WbLabel* labelProblem;
    WbPushButton* buttonOk;
    bool busy = false;
};
