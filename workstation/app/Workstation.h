// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "AppRecord.h"
#include "WorkstationPaths.h"
#include "WorkstationSettings.h"

#include <WbFoundation/FileLock.h>

#include <QObject>

#include <memory>

class AppBin;
class AppListController;
class AppListModel;
class AppListPage;
class CloseGuard;
class DraftController;
class EditorPage;
class GuideWindow;
class Keyboard;
class LeftWork;
class MainWindow;
class PackagePreparation;
class ReleaseController;
class ReleasedAppModel;
class ReleasedListController;
class ReleasedListPage;
class RunPage;
class SampleInstaller;
class SavedTemplates;
class Session;
class SettingsPage;
class SignInPage;
class TemplateKeeper;
class TipController;
class TransferController;
class VersionController;

// Puts the workstation together: the one place that knows how its parts are joined. Everybody else is given
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
    void TellPlatform();
    void ConnectTemplates();
    void LookForTemplates();
    void OfferTemplates();
    void CreateParts();
    void ConnectSession();
    void ConnectPages();
    void ConnectApps();
    void ConnectServices();
    void ConnectPackages();

    void GoToServer();
    void AskSignIn();
    void ShowSettings();
    void ShowPackages();
    void TellWheelFolders();
    void ConnectHelp();
    void ShowGuide();
    void ConnectVersions();
    void ShowVersions();
    void ConnectDrafts();
    void PrepareEditor(const AppRecord& app);
    void OpenEditor(const AppRecord& app);
    void LeaveEditor();
    void SwitchAccount(int embeddedAccount);
    void UseServer(bool embedded, const QUrl& address);
    void SignOut();
    void ConnectReleased();
    void ShowTab(int tab);
    void CreateReleased();
    void LeaveRun();
    void ForgetReleased();
    void ShowInvitations(const AppRecord& app);
    void SlotPublished(const QString& appId, int publishType, bool tookEffect);
    void ApplyTheme();
    void ApplySuperAdmin();
    void ShowAccounts();
    void InstallSamples();

    const WorkstationPaths paths;
    FileLock lock;
    WorkstationSettings settings;
    const bool systemIsDark;
    std::unique_ptr<Session> session;
    std::unique_ptr<AppListModel> apps;
    std::unique_ptr<ReleasedAppModel> onlineApps;
    std::unique_ptr<ReleasedAppModel> grayApps;
    std::unique_ptr<MainWindow> window; // owns the pages
    SignInPage* signInPage = nullptr;
    AppListPage* listPage = nullptr;
    ReleasedListPage* onlinePage = nullptr;
    ReleasedListPage* grayPage = nullptr;
    RunPage* runPage = nullptr;
    QWidget* pageBeforeRun = nullptr;
    EditorPage* editorPage = nullptr;
    SettingsPage* settingsPage = nullptr;
    QWidget* pageBeforeSettings = nullptr;
    std::unique_ptr<AppListController> desk;
    std::unique_ptr<AppBin> bin;
    std::unique_ptr<TransferController> transfers;
    std::unique_ptr<ReleasedListController> onlineController;
    std::unique_ptr<ReleasedListController> grayController;
    std::unique_ptr<ReleaseController> releases;
    std::unique_ptr<VersionController> versions;
    std::unique_ptr<SampleInstaller> samples;
    std::unique_ptr<TemplateKeeper> templates;
    std::unique_ptr<SavedTemplates> savedTemplates;
    std::unique_ptr<CloseGuard> closeGuard;
    std::unique_ptr<DraftController> drafts;
    std::unique_ptr<LeftWork> leftWork;
    std::unique_ptr<PackagePreparation> preparation;
    std::unique_ptr<Keyboard> keyboard;
    std::unique_ptr<TipController> tips;
    GuideWindow* guide = nullptr; // the window's
};
