// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "BuildInfo.h"

#include <WbBaseUI/WbBaseDialog.h>

class QFormLayout;
class WbLabel;
class WbPushButton;

// Says what the workstation is and what it was built with.
class AboutDialog : public WbBaseDialog
{
    Q_OBJECT

public:
    // serverProgram: the version server that is asked what it can do.
    AboutDialog(const QString& serverProgram, QWidget* parent);

private:
    void CreateFacts();
    void AddFact(QFormLayout* form, const BuildFact& fact);
    QLayout* CreateButtons();
    void ShowFacts();
    void ShowDetails(bool shown);

    BuildInfo facts;
    QFormLayout* version;     // the first fact; the others are for whoever looks for a fault
    QWidget* details;         // folded until they are asked for
    QVector<WbLabel*> values; // one per fact
    WbPushButton* close = nullptr;
};
