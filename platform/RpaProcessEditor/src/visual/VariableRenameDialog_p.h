// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <WbBaseUI/WbBaseDialog.h>

#include <QPointer>

#include <memory>

class ProcessDataManager;
class RpaStatementNode;

namespace Ui
{
class VariableRenameDialog;
}

// Asks which variable of the app gets which name, and tells in how many places it stands.
class VariableRenameDialog : public WbBaseDialog
{
    Q_OBJECT

public:
    // current: the statement whose variable is proposed; may be null. Nothing is kept of it.
    VariableRenameDialog(const ProcessDataManager& manager, const RpaStatementNode* current, QWidget* parent);
    ~VariableRenameDialog() override;

    QString From() const;
    QString To() const;

private:
    void SlotChanged();

    const QPointer<const ProcessDataManager> processes;
    const std::unique_ptr<Ui::VariableRenameDialog> ui;
};
