// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "ServerState.h"

#include <QObject>

class MainWindow;
class Session;
class SignInPage;
class WorkstationSettings;

// The way into the workstation: goes to the server of the settings, asks who works and, when the session ends,
// asks again. Makes the sign-in page, which the window owns.
class SignInFlow : public QObject
{
    Q_OBJECT

public:
    // None is owned.
    SignInFlow(Session* session, WorkstationSettings* settings, MainWindow* window);

    // Goes to the server that is configured now, and asks.
    void GoToServer();

signals:
    // Somebody signed in who was being asked; the sign-in page is still shown.
    void SigEntered();
    // The user wants the settings before signing in.
    void SigSettings();

private:
    void ConnectPage();
    void ConnectSession();
    void Ask();
    void ShowServer(ServerState state, const QString& detail);
    void Enter(const QString& name);

    Session* const session;
    WorkstationSettings* const settings;
    MainWindow* const window;
    SignInPage* const page;
    QString entered; // whose notices may be shown
};
