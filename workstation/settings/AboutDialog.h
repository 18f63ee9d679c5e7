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
    QFormLayout* CreateFacts();
    QLayout* CreateButtons();
    void ShowFacts();

    BuildInfo facts;
    QVector<WbLabel*> values; // one per fact
    WbPushButton* close = nullptr;
};
