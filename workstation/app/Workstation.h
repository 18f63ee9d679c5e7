// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "WorkstationPaths.h"
#include "WorkstationSettings.h"

#include <WbSystem/FileLock.h>

#include <QObject>

#include <memory>

class Appearance;
class AppsFlow;
class CloseGuard;
class EditFlow;
class HelpFlow;
class Keyboard;
class MainWindow;
class PackageFlow;
class ReleasedFlow;
class RunHistoryFlow;
class Session;
class SettingsFlow;
class SignInFlow;
class UsageFlow;
class VersionFlow;

// Puts the workstation together: the one place that knows how its flows are joined. Everybody else is given
// what they need and announces what happened.
class Workstation : public QObject
{
    Q_OBJECT

public:
    // Before the application object is made: what has to be set that early.
    static void PrepareProcess();

    explicit Workstation(const WorkstationPaths& paths, QObject* parent = nullptr);
    ~Workstation() override;

    // Shows the window and goes to the configured server. False with a problem in the user's words when the
    // workstation cannot run here.
    bool Start(QString* problem);

    MainWindow* GetWindow() const { return window.get(); }
    Session* GetSession() const { return session.get(); }
    WorkstationSettings* GetSettings() { return &settings; }

signals:
    // The window has been closed and the embedded server has ended.
    void SigClosed();

private:
    static void PreparePlatform();
    void CreateFlows();
    void JoinFlows();
    void ConnectClosing();
    void End();

    const WorkstationPaths paths;
    FileLock lock;
    WorkstationSettings settings;
    std::unique_ptr<Appearance> appearance;
    std::unique_ptr<Session> session;
    std::unique_ptr<MainWindow> window; // owns the pages that the flows make
    std::unique_ptr<SignInFlow> signIn;
    std::unique_ptr<AppsFlow> apps;
    std::unique_ptr<EditFlow> editing;
    std::unique_ptr<ReleasedFlow> released;
    std::unique_ptr<SettingsFlow> settingsFlow;
    std::unique_ptr<PackageFlow> packages;
    std::unique_ptr<VersionFlow> versions;
    std::unique_ptr<RunHistoryFlow> runs;
    std::unique_ptr<HelpFlow> help;
    std::unique_ptr<UsageFlow> usage;
    std::unique_ptr<Keyboard> keyboard;
    std::unique_ptr<CloseGuard> closeGuard;
};
