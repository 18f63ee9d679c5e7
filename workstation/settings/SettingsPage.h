// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <WbBaseUI/WbBaseWidget.h>

#include <QStringList>

class QCheckBox;
class QRadioButton;
class QVBoxLayout;
class WbComboBox;
class WbLabel;
class WbLineEdit;
class WbPushButton;
class WorkstationSettings;

// Where the user chooses server, look, dates and, with the embedded server, the account; from another server
// the user signs out here. A choice takes effect at once; only a server is confirmed first, because it ends
// the session.
class SettingsPage : public WbBaseWidget
{
    Q_OBJECT

public:
    explicit SettingsPage(WorkstationSettings* settings, QWidget* parent = nullptr);
    ~SettingsPage() override;

    // The embedded server's accounts and the one in use (-1: not signed in); no names hide the choice.
    void ShowAccounts(const QStringList& names, int current);

    // Who is signed in to a server that is not the embedded one (empty: nobody), and may sign out.
    void ShowSignedIn(const QString& name);

signals:
    void SigSwitchAccount(int embeddedAccount);
    void SigSignOut();
    void SigAbout();
    void SigGuide();
    // The user confirmed another server. The owner changes the settings once the session has ended.
    void SigUseServer(bool embedded, const QUrl& address);

private:
    QWidget* CreateServerSection();
    QWidget* CreateLookSection();
    QWidget* CreateAccountSection();
    QWidget* CreateAccountChoice();
    QWidget* CreateSignedIn();
    QWidget* CreateAboutSection();
    void Connect();
    void ShowServer();
    void SlotConfirmServer();
    void UpdateServerForm();
    void ShowLook();

    WorkstationSettings* const settings;
    QRadioButton* radioEmbedded = nullptr;
    QRadioButton* radioRemote = nullptr;
    WbLineEdit* editAddress = nullptr;
    WbLabel* labelAddressProblem = nullptr;
    WbPushButton* buttonUseServer = nullptr;
    WbComboBox* comboTheme = nullptr;
    WbComboBox* comboDates = nullptr;
    WbLabel* labelDateSample = nullptr;
    QWidget* accountSection = nullptr;
    QWidget* accountChoice = nullptr; // of the embedded server
    QWidget* signedIn = nullptr;      // to another one
    WbLabel* labelSignedIn = nullptr;
    WbComboBox* comboAccount = nullptr;
    QCheckBox* checkSuperAdmin = nullptr;
    WbPushButton* buttonSignOut = nullptr;
    QCheckBox* checkTips = nullptr;
    WbPushButton* buttonGuide = nullptr;
    WbPushButton* buttonAbout = nullptr;
};
