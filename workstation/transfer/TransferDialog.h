// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "ui_TransferDialog.h"

#include <WbBaseUI/WbBaseDialog.h>

// How far an export or import is; rejecting it cancels.
class TransferDialog : public WbBaseDialog
{
    Q_OBJECT

public:
    TransferDialog(const QString& text, QWidget* parent);

    void ShowProgress(int done, int total);

private:
    Ui::TransferDialog ui;
};
