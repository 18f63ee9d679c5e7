// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "DateLanguage.h"
#include "ui_RunFileDialog.h"

#include <RpaRunHistory/RpaRunFile.h>
#include <WbBaseUI/WbBaseDialog.h>

// A run that came as a file, perhaps of another author.
class RunFileDialog : public WbBaseDialog
{
    Q_OBJECT

public:
    RunFileDialog(const RpaRunFile& file, DateLanguage language, QWidget* parent);

    // Of the system's file dialogs.
    static QString Filter();

private:
    Ui::RunFileDialog ui;
};
