// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "AppRecord.h"
#include "DateLanguage.h"
#include "DraftPlan.h"

#include <RpaDrafts/RpaDraftJournal.h>
#include <RpaServiceClient/VersionServiceClient.h>

#include <QObject>

class SaveLedger;
class QWidget;

// Keeps the unsaved work of the app that is open, and offers what a crash left when the app is opened again.
class DraftController : public QObject
{
    Q_OBJECT

public:
    // window: dialogs are centred over it.
    DraftController(SaveLedger* ledger, QWidget* window);

    // Takes the folder of drafts over. A folder that cannot be used costs a notice, nothing else.
    void Start(const QString& folder);

    void SetDateLanguage(DateLanguage language) { dateLanguage = language; }

    // Asks the author about drafts of the app, if there are any; SigReady follows, at once without drafts.
    // Nothing happens while another app is being asked about.
    void Offer(const AppRecord& app);

    // Around the life of an editor.
    void Open(const AppRecord& app);
    void Close();

    // Whether unsaved work of the app is on the disk; waits until what is due is there.
    bool Keeps(const QString& appId);

    // Whether an editor, when it finds no version to open, starts with restored work.
    static bool RestoresStart();

signals:
    // The app may be opened; work to be restored is on its way into the editor.
    void SigReady(const AppRecord& app);

private:
    void Ask(const AppRecord& app, const QVector<RpaDraft>& drafts,
             const QVector<VersionServiceVersion>& versions);
    bool CanOpen(const RpaDraft& draft);
    static void Restore(const RpaDraft& draft, const DraftPlan& plan);
    void Ready(const AppRecord& app);
    void LeaveVersion();

    SaveLedger* const ledger;
    RpaDraftJournal journal;
    VersionServiceClient client;
    QWidget* const window;
    DateLanguage dateLanguage = DateLanguage::System;
    bool isBusy = false;
};
