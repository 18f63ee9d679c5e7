// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <WbBaseUI/WbBaseDialog.h>

#include <memory>

namespace Ui
{
class TransferDialog;
}

// How far an export or import is; rejecting it cancels.
class TransferDialog : public WbBaseDialog
{
    Q_OBJECT

public:
    TransferDialog(const QString& text, QWidget* parent);
    ~TransferDialog() override;

    void ShowProgress(int done, int total);

private:
    const std::unique_ptr<Ui::TransferDialog> ui;
};
