// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "BuildInfo.h"
#include "ui_AboutDialog.h"

#include <WbBaseUI/WbBaseDialog.h>

// Says what the workstation is and what it was built with.
class AboutDialog : public WbBaseDialog
{
    Q_OBJECT

public:
    // serverProgram: the version server that is asked what it can do.
    AboutDialog(const QString& serverProgram, QWidget* parent);

private:
    void AddFact(QFormLayout* form, const BuildFact& fact);
    void ShowFacts();
    void ShowDetails(bool shown);

    BuildInfo facts;
    Ui::AboutDialog ui;       // the first fact; the details, for whoever looks for a fault, are folded
    QVector<WbLabel*> values; // one per fact
};
