// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <WbBaseUI/WbBaseDialog.h>

#include <QPointer>

class ProcessDataManager;
class QComboBox;
class QLabel;
class QLineEdit;
class RpaStatementNode;
class WbPushButton;

// Asks which variable of the app gets which name, and tells in how many places it stands.
class VariableRenameDialog : public WbBaseDialog
{
    Q_OBJECT

public:
    // current: the statement whose variable is proposed; may be null. Nothing is kept of it.
    VariableRenameDialog(const ProcessDataManager& manager, const RpaStatementNode* current, QWidget* parent);

    QString From() const;
    QString To() const;

private:
    void BuildLayout();
    void SlotChanged();

    const QPointer<const ProcessDataManager> processes;
    QComboBox* variable;
    QLineEdit* edit;
    QLabel* message;
    WbPushButton* okButton;
};
