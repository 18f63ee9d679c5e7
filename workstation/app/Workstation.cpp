// SPDX-License-Identifier: Apache-2.0

#include "Workstation.h"

#include "AppListPage.h"
#include "Appearance.h"
#include "AppsFlow.h"
#include "CloseGuard.h"
#include "EditFlow.h"
#include "EditorPage.h"
#include "HelpFlow.h"
#include "Keyboard.h"
#include "MainWindow.h"
#include "PackageFlow.h"
#include "QtTexts.h"
#include "ReleasedFlow.h"
#include "RunHistoryFlow.h"
#include "RunPage.h"
#include "Session.h"
#include "SettingsFlow.h"
#include "SettingsPage.h"
#include "SignInFlow.h"
#include "UsageFlow.h"
#include "VersionFlow.h"

#include <RpaCore/RpaGlobalDataManager.h>
#include <RpaEditorLogic/RpaEditorLogic.h>
#include <WbBaseUI/UIMain.h>
#include <WbBaseUI/WbToast.h>
#include <WbBrowserLite/WbBrowserLite.h>

#include <QApplication>
#include <QTextCodec>

#include <RpaResources.h>

namespace
{
constexpr char apiVersion[] = "1.0.0";
}

void Workstation::PrepareProcess()
{
    WbBrowserLite::PrepareApplication();
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QCoreApplication::setApplicationName(QStringLiteral("rpa-workstation"));
    QCoreApplication::setApplicationVersion(QStringLiteral(RPA_WORKSTATION_VERSION));
}

Workstation::Workstation(const WorkstationPaths& places, QObject* parent)
    : QObject(parent), paths(places), lock(places.dataDir + QStringLiteral("/lock")),
      settings(places.settingsFile)
{
    PreparePlatform();
    appearance = std::make_unique<Appearance>(&settings);
    session = std::make_unique<Session>(paths.serverProgram, paths.serverDataDir, paths.keptSignInFile);
    window = std::make_unique<MainWindow>();
    UIMain::Instance()->SetMainWidget(window.get());
    CreateFlows();
    JoinFlows();
    ConnectClosing();
}

Workstation::~Workstation()
{
    // The editor goes before what it works with.
    editing->GetPage()->Discard();
    window.reset();
}

void Workstation::PreparePlatform()
{
    // Packages and their names pass through the local 8-bit encoding, whatever the machine's locale is.
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
    RpaResources::Init();
    QtTexts::Install();
    RpaGlobalDataManager::Instance()->SetApiVersion(QLatin1String(apiVersion));
}

bool Workstation::Start(QString* problem)
{
    if (!paths.Create()) {
        *problem = QStringLiteral("无法创建工作站的数据目录：%1").arg(paths.dataDir);
        return false;
    }
    switch (lock.TryLock()) {
    case FileLock::Result::Locked:
        break;
    case FileLock::Result::Taken:
        *problem = QStringLiteral("工作站已经在运行。");
        return false;
    case FileLock::Result::Failed:
        *problem = QStringLiteral("无法使用工作站的数据目录：%1").arg(paths.dataDir);
        return false;
    }
    window->show();
    editing->Start();
    runs->Start();
    signIn->GoToServer();
    return true;
}

void Workstation::CreateFlows()
{
    Session* const user = session.get();
    MainWindow* const shell = window.get();
    signIn = std::make_unique<SignInFlow>(user, &settings, shell);
    apps = std::make_unique<AppsFlow>(paths.openedAppsFile, user, &settings, shell);
    editing = std::make_unique<EditFlow>(paths, &settings, apps->GetPage(), shell);
    released = std::make_unique<ReleasedFlow>(user, &settings, apps->GetModel(), apps->GetPage(), shell);
    EditorPage* const editor = editing->GetPage();
    settingsFlow =
        std::make_unique<SettingsFlow>(paths.serverProgram, user, &settings, editor, apps->GetPage(), shell);
    packages = std::make_unique<PackageFlow>(paths, &settings, editor, shell);
    versions = std::make_unique<VersionFlow>(user, &settings, editor, shell);
    runs = std::make_unique<RunHistoryFlow>(paths.runDir, user, &settings, editor, released->GetRunPage(),
                                            shell);
    help = std::make_unique<HelpFlow>(&settings, editor, shell);
    usage = std::make_unique<UsageFlow>(paths.usageDir, user, &settings,
                                        settingsFlow->GetPage()->GetUsageSection(), shell);
    keyboard = std::make_unique<Keyboard>(shell, editor, released->GetRunPage());
}

void Workstation::JoinFlows()
{
    connect(signIn.get(), &SignInFlow::SigEntered, apps.get(), &AppsFlow::Show);
    connect(signIn.get(), &SignInFlow::SigSettings, settingsFlow.get(), &SettingsFlow::Show);
    connect(settingsFlow.get(), &SettingsFlow::SigServerChosen, signIn.get(), &SignInFlow::GoToServer);
    connect(settingsFlow.get(), &SettingsFlow::SigGuide, help.get(), &HelpFlow::ShowGuide);
    connect(keyboard.get(), &Keyboard::SigGuide, help.get(), &HelpFlow::ShowGuide);
    connect(apps.get(), &AppsFlow::SigOpen, editing.get(), &EditFlow::Offer);
    connect(editing.get(), &EditFlow::SigOpened, apps.get(), &AppsFlow::NoteOpened);
    connect(editing.get(), &EditFlow::SigLeft, apps.get(), &AppsFlow::RefreshAndSelect);
    connect(released.get(), &ReleasedFlow::SigOwn, apps.get(), &AppsFlow::Refresh);
}

void Workstation::ConnectClosing()
{
    closeGuard = std::make_unique<CloseGuard>(RpaEditorLogic::Instance()->GetSaveLedger());
    connect(window.get(), &MainWindow::SigCloseRequested, closeGuard.get(), &CloseGuard::RequestClose);
    connect(closeGuard.get(), &CloseGuard::SigWaiting, this, [this] {
        window->setEnabled(false);
        WbToast::Show(QStringLiteral("正在等待保存完成…"));
    });
    connect(closeGuard.get(), &CloseGuard::SigMayClose, this, &Workstation::End);
}

void Workstation::End()
{
    window->CloseForGood();
    editing->End();
    released->GetRunPage()->Close();
    RpaEditorLogic::Instance()->Shutdown();
    usage->End();
    session->End();
    emit SigClosed();
}
