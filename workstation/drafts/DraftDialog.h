// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "DateLanguage.h"
#include "DraftPlan.h"

#include <WbBaseUI/WbBaseDialog.h>

// Offers the author work that was not saved when the workstation ended. Closing the dialog decides nothing.
class DraftDialog : public WbBaseDialog
{
    Q_OBJECT

public:
    enum class Choice
    {
        Later,
        Restore,
        Discard,
    };

    DraftDialog(const QString& appName, const RpaDraft& draft, const DraftPlan& plan, DateLanguage language,
                QWidget* parent);

    Choice GetChoice() const { return choice; }

private:
    void SlotDiscard();
    void Choose(Choice chosen);

    Choice choice = Choice::Later;
};
