// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "AppRecord.h"

#include <WbBaseUI/WbBaseDialog.h>

class QAbstractButton;
class QButtonGroup;
class WbLabel;
class WbLineEdit;
class WbPushButton;

// Asks for the name of an app, and for its kind when the app is new. It stays open and shows why when the
// name cannot be taken.
class AppNameDialog : public WbBaseDialog
{
    Q_OBJECT

public:
    enum class Purpose
    {
        Create,
        Rename,
    };

    AppNameDialog(Purpose purpose, QWidget* parent);
    ~AppNameDialog() override;

    QString GetName() const; // without blanks at its ends
    void SetName(const QString& name);

    int GetKind() const;
    void SetKind(int kind);

    // Holds the dialog while the server is asked.
    void SetBusy(bool busy);

    // Shows why the name was refused and lets the user go on.
    void ShowProblem(const QString& problem);

signals:
    // A name of 1 to 50 characters was confirmed. The owner accepts the dialog or shows a problem.
    void SigConfirmed();

private:
    void SlotConfirm();
    void SlotNameEdited();
    QWidget* CreateKindRow();

    WbLineEdit* editName;
    WbLabel* labelProblem;
    QButtonGroup* kinds;
    WbPushButton* buttonOk;
    WbPushButton* buttonCancel;
};
