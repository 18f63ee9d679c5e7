// SPDX-License-Identifier: Apache-2.0

#include "UsageSection.h"

#include "WorkstationSettings.h"

#include <WbBaseUI/WbScaledForm.h>

UsageSection::UsageSection(WorkstationSettings* settings, QWidget* parent) : WbBaseWidget(parent)
{
    ui.setupUi(this);
    setObjectName(QStringLiteral("sectionUsage"));
    setProperty("card", true);
    WbScaledForm::Follow(this);
    ui.checkUsageReports->setChecked(settings->GetUsageReports());
    ShowAdministrator(false);

    connect(ui.checkUsageReports, &QCheckBox::toggled, settings, &WorkstationSettings::SetUsageReports);
    connect(settings, &WorkstationSettings::SigUsageReportsChanged, ui.checkUsageReports,
            &QCheckBox::setChecked);
    connect(ui.buttonUsageCounts, &QPushButton::clicked, this, &UsageSection::SigShowCounts);
}
