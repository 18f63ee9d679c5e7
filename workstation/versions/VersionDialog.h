// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "DateLanguage.h"
#include "ui_VersionDialog.h"

#include <RpaServiceClient/versions/ListSavesRequest.h>
#include <WbBaseUI/WbBaseDialog.h>

class VersionController;
class VersionDetails;
struct VersionFacts;

// All versions of the app, what is known of each, and the note that whoever saved last may give to the save.
class VersionDialog : public WbBaseDialog
{
    Q_OBJECT

public:
    // pin: who is signed in. shownName: of the version that is selected first.
    VersionDialog(VersionController* versionController, const QString& pin, const QString& shownName,
                  DateLanguage language, QWidget* parent);

private:
    void Connect();
    void FillList(const QString& shownName);
    void Update();
    void ShowNote(const VersionFacts& version);
    void SaveNote();
    void SlotNoted();
    void SlotNotNoted(const QString& problem);

    Ui::VersionDialog ui;
    VersionController* const desk;
    const QString account;
    const DateLanguage dateLanguage;
    VersionDetails* const details;
    VersionServiceSave noted; // the save that the note field belongs to
};
