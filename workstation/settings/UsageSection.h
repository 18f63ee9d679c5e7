// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <WbBaseUI/WbBaseWidget.h>

#include <memory>

class WorkstationSettings;

namespace Ui
{
class UsageSection;
}

// The part of the settings that is about usage events: whether they are sent, and, for administrators, the way
// to their counts.
class UsageSection : public WbBaseWidget
{
    Q_OBJECT

public:
    explicit UsageSection(WorkstationSettings* settings, QWidget* parent = nullptr);
    ~UsageSection() override;

    // Whether the counts are offered.
    void ShowAdministrator(bool isAdministrator);

signals:
    void SigShowCounts();

private:
    const std::unique_ptr<Ui::UsageSection> ui;
};
