// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "ui_UsageSection.h"

#include <WbBaseUI/WbBaseWidget.h>

class WorkstationSettings;

// The part of the settings that is about usage events: whether they are sent, and, for administrators, the way
// to their counts.
class UsageSection : public WbBaseWidget
{
    Q_OBJECT

public:
    explicit UsageSection(WorkstationSettings* settings, QWidget* parent = nullptr);

    // Whether the counts are offered.
    void ShowAdministrator(bool isAdministrator) { ui.buttonUsageCounts->setVisible(isAdministrator); }

signals:
    void SigShowCounts();

private:
    Ui::UsageSection ui;
};
