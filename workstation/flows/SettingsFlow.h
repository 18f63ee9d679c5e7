// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QObject>
#include <QUrl>

class EditorPage;
class MainWindow;
class Session;
class SettingsPage;
class WorkstationSettings;

// The settings and the way to them and back; what they change about server and account. Makes the settings
// page, which the window owns.
class SettingsFlow : public QObject
{
    Q_OBJECT

public:
    // editor: whose work is asked about before another account or server is used. home: where the way back
    // leads after somebody signed in. serverProgram: of the embedded server, for the about box.
    SettingsFlow(const QString& serverProgram, Session* session, WorkstationSettings* settings,
                 EditorPage* editor, QWidget* home, MainWindow* window);

    SettingsPage* GetPage() const { return page; }
    void Show();

signals:
    // The settings name another server now.
    void SigServerChosen();
    void SigGuide();

private:
    void ConnectPage();
    void ConnectSession();
    void SwitchAccount(int embeddedAccount);
    void UseServer(bool embedded, const QUrl& address);
    void SignOut();
    void ShowAccounts();
    void ShowAbout();
    void ApplySuperAdmin();

    const QString serverProgram;
    Session* const session;
    WorkstationSettings* const settings;
    EditorPage* const editor;
    QWidget* const home;
    MainWindow* const window;
    SettingsPage* const page;
    QWidget* pageBefore;
};
