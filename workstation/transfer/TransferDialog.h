// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <WbBaseUI/WbBaseDialog.h>

class QProgressBar;
class WbLabel;

// How far an export or import is; rejecting it cancels.
class TransferDialog : public WbBaseDialog
{
    Q_OBJECT

public:
    TransferDialog(const QString& text, QWidget* parent);
    ~TransferDialog() override;

    void ShowProgress(int done, int total);

private:
    WbLabel* labelCount;
    QProgressBar* bar;
};
