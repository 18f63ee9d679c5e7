// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "ui_VariableRenameDialog.h"

#include <WbBaseUI/WbBaseDialog.h>

#include <QPointer>

class ProcessDataManager;
class RpaStatementNode;

// Asks which variable of the app gets which name, and tells in how many places it stands.
class VariableRenameDialog : public WbBaseDialog
{
    Q_OBJECT

public:
    // current: the statement whose variable is proposed; may be null. Nothing is kept of it.
    VariableRenameDialog(const ProcessDataManager& manager, const RpaStatementNode* current, QWidget* parent);

    QString From() const { return ui.comboBoxVariable->currentText(); }
    QString To() const;

private:
    void SlotChanged();

    const QPointer<const ProcessDataManager> processes;
    Ui::VariableRenameDialog ui;
};
