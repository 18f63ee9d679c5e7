// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "ui_SettingsPage.h"

#include <WbBaseUI/WbBaseWidget.h>

#include <QStringList>

class UsageSection;
class WorkstationSettings;

// Where the user chooses server, look, size, dates and, with the embedded server, the account; from another server
// the user signs out here. A choice takes effect at once; only a server is confirmed first, because it ends
// the session.
class SettingsPage : public WbBaseWidget
{
    Q_OBJECT

public:
    explicit SettingsPage(WorkstationSettings* settings, QWidget* parent = nullptr);

    // The embedded server's accounts and the one in use (-1: not signed in); no names hide the choice.
    void ShowAccounts(const QStringList& names, int current);

    // Who is signed in to a server that is not the embedded one (empty: nobody), and may sign out.
    void ShowSignedIn(const QString& name);

    UsageSection* GetUsageSection() const { return usage; }

signals:
    void SigSwitchAccount(int embeddedAccount);
    void SigSignOut();
    void SigAbout();
    void SigGuide();
    // The user confirmed another server. The owner changes the settings once the session has ended.
    void SigUseServer(bool embedded, const QUrl& address);

private:
    void Connect();
    void ConnectServer();
    void ConnectLook();
    void ShowServer();
    void SlotConfirmServer();
    void UpdateServerForm();
    void SlotChooseCaFile();
    void ShowCaFile();
    void TellCaProblem(const QString& problem);
    void ShowLook();

    WorkstationSettings* const settings;
    Ui::SettingsPage ui;
    UsageSection* const usage;
};
