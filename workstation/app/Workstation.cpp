// SPDX-License-Identifier: Apache-2.0

#include "Workstation.h"

#include "AboutDialog.h"
#include "AppBin.h"
#include "AppListController.h"
#include "AppListModel.h"
#include "AppListPage.h"
#include "CloseGuard.h"
#include "DraftController.h"
#include "EditorPage.h"
#include "Keyboard.h"
#include "LeftWork.h"
#include "MainWindow.h"
#include "PackageDialog.h"
#include "PackagePreparation.h"
#include "QtTexts.h"
#include "ReleaseController.h"
#include "ReleasedAppModel.h"
#include "ReleasedListController.h"
#include "ReleasedListPage.h"
#include "RunPage.h"
#include "SampleInstaller.h"
#include "SavedTemplates.h"
#include "ServerStatusIndicator.h"
#include "Session.h"
#include "SettingsPage.h"
#include "ShippedTemplates.h"
#include "SignInPage.h"
#include "TemplateKeeper.h"
#include "TipController.h"
#include "TransferController.h"
#include "VersionController.h"

#include <RpaCore/RpaGlobalDataManager.h>
#include <RpaCore/RpaSuperDir.h>
#include <RpaEditorCore/RpaEditorNotify.h>
#include <RpaEditorLogic/RpaEditorLogic.h>
#include <RpaEngineCore/IRpaLogManager.h>
#include <RpaEngineModule/RpaEngineModule.h>
#include <RpaPackage/PackageService.h>
#include <RpaPackage/RpaPackageModule.h>
#include <WbBaseUI/UIMain.h>
#include <WbBaseUI/WbTheme.h>
#include <WbBaseUI/WbToast.h>
#include <WbBrowserLite/WbBrowserLite.h>

#include <QApplication>
#include <QPalette>
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
      settings(places.settingsFile),
      systemIsDark(QApplication::palette().color(QPalette::Window).lightness() < 128)
{
    // Packages and their names pass through the local 8-bit encoding, whatever the machine's locale is.
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
    RpaResources::Init();
    QtTexts::Install();
    TellPlatform();
    ApplyTheme();
    CreateParts();
    ConnectSession();
    ConnectPages();
    ConnectReleased();
    ConnectTemplates();
    ConnectServices();
    ConnectPackages();
    ConnectDrafts();
    ConnectVersions();
    ConnectHelp();
}

Workstation::~Workstation()
{
    // The editor goes before what it works with.
    editorPage->Discard();
    window.reset();
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
    ShippedTemplates::Install(paths.visualTemplateDir, paths.programTemplateDir, paths.dataDir);
    OfferTemplates();
    LookForTemplates();
    window->show();
    drafts->Start(paths.draftDir);
    GoToServer();
    return true;
}

void Workstation::TellPlatform()
{
    RpaGlobalDataManager::Instance()->SetApiVersion(QLatin1String(apiVersion));
}

void Workstation::CreateParts()
{
    session = std::make_unique<Session>(paths.serverProgram, paths.serverDataDir, paths.keptSignInFile);
    apps = std::make_unique<AppListModel>();
    apps->SetDateLanguage(settings.GetDateLanguage());

    window = std::make_unique<MainWindow>();
    UIMain::Instance()->SetMainWidget(window.get());
    signInPage = new SignInPage;
    listPage = new AppListPage(apps.get());
    editorPage = new EditorPage;
    settingsPage = new SettingsPage(&settings);
    window->AddPage(signInPage, QString());
    window->AddPage(listPage, QString());
    window->AddPage(editorPage, QStringLiteral("返回应用列表"));
    CreateReleased();
    window->AddPage(settingsPage, QStringLiteral("返回"));
    window->OfferEditing(editorPage);
    keyboard = std::make_unique<Keyboard>(window.get(), editorPage, runPage);

    desk = std::make_unique<AppListController>(apps.get(), listPage, paths.openedAppsFile);
    bin = std::make_unique<AppBin>();
    transfers = std::make_unique<TransferController>();
    samples = std::make_unique<SampleInstaller>();
    templates = std::make_unique<TemplateKeeper>(
        QStringList{paths.visualTemplateDir, paths.programTemplateDir}, paths.dataDir);
    savedTemplates = std::make_unique<SavedTemplates>(paths.dataDir + QStringLiteral("/saved-templates.json"),
                                                      [this] { return editorPage->GetApp().kind; });
    closeGuard = std::make_unique<CloseGuard>(RpaEditorLogic::Instance()->GetSaveLedger());
    drafts = std::make_unique<DraftController>(RpaEditorLogic::Instance()->GetSaveLedger(), window.get());
}

void Workstation::ConnectSession()
{
    Session* s = session.get();
    connect(s, &Session::SigServerChanged, this, [this](ServerState state, const QString& detail) {
        window->GetServerStatusIndicator()->Show(state, detail);
        switch (state) {
        case ServerState::Connecting:
            signInPage->ShowBusy(QStringLiteral("正在连接版本服务…"));
            break;
        case ServerState::Connected:
            signInPage->ShowReady();
            break;
        case ServerState::Broken:
            signInPage->ShowBusy(QString());
            signInPage->ShowProblem(detail);
            break;
        }
    });
    connect(s, &Session::SigServerDied, this,
            [] { WbToast::Show(QStringLiteral("版本服务意外停止，正在重新启动"), ToastWarning); });
    connect(s, &Session::SigSignedIn, this, [this](const QString& name) {
        apps->SetAccount(session->GetPin());
        desk->SetAccount(session->GetPin());
        if (!session->IsEmbedded()) {
            settings.SetLastAccount(session->GetPin());
        }
        window->ShowAccount(name);
        ApplySuperAdmin();
        ShowAccounts();
        if (pageBeforeSettings == signInPage) {
            pageBeforeSettings = listPage;
        }
        if (window->CurrentPage() == signInPage) {
            window->ShowPage(listPage);
        }
        InstallSamples();
    });
    connect(s, &Session::SigSignedOut, this, [this] {
        window->ShowAccount(QString());
        desk->Forget();
        AskSignIn();
    });
    connect(s, &Session::SigRefused, signInPage, &SignInPage::ShowProblem);
    connect(s, &Session::SigExpired, this, [this] {
        // Work in the editor stays where it is: whoever signs in again finds it there.
        AskSignIn();
        signInPage->ShowProblem(QStringLiteral("登录已过期，请重新登录"));
    });
    connect(s, &Session::SigNotKept, this,
            [] { WbToast::Show(QStringLiteral("无法保存登录状态，下次启动时需要重新登录"), ToastWarning); });
}

void Workstation::ConnectPages()
{
    connect(signInPage, &SignInPage::SigEnter, session.get(), &Session::EnterEmbedded);
    connect(signInPage, &SignInPage::SigSignIn, this,
            [this](const QString& account, const QString& password, bool stay) {
                settings.SetStaySignedIn(stay);
                session->SignIn(account, password, stay);
            });
    connect(signInPage, &SignInPage::SigRetry, session.get(), &Session::Retry);
    connect(signInPage, &SignInPage::SigSettings, this, &Workstation::ShowSettings);

    ConnectApps();

    connect(settingsPage, &SettingsPage::SigSwitchAccount, this, &Workstation::SwitchAccount);
    connect(settingsPage, &SettingsPage::SigUseServer, this, &Workstation::UseServer);
    connect(settingsPage, &SettingsPage::SigSignOut, this, &Workstation::SignOut);
    connect(settingsPage, &SettingsPage::SigAbout, this, [this] {
        auto* dialog = new AboutDialog(paths.serverProgram, window.get());
        dialog->setAttribute(Qt::WA_DeleteOnClose);
        dialog->open();
    });
    connect(&settings, &WorkstationSettings::SigThemeChanged, this, &Workstation::ApplyTheme);
    connect(&settings, &WorkstationSettings::SigSuperAdminChanged, this, &Workstation::ApplySuperAdmin);
    connect(&settings, &WorkstationSettings::SigDateLanguageChanged, apps.get(),
            &AppListModel::SetDateLanguage);

    connect(window.get(), &MainWindow::SigPackages, this, &Workstation::ShowPackages);
    connect(window.get(), &MainWindow::SigSettings, this, &Workstation::ShowSettings);
    connect(window.get(), &MainWindow::SigBack, this, [this](QWidget* from) {
        if (from == editorPage)
            LeaveEditor();
        else if (from == runPage)
            LeaveRun();
        else
            window->ShowPage(pageBeforeSettings);
    });
}

void Workstation::ConnectServices()
{
    connect(window.get(), &MainWindow::SigCloseRequested, closeGuard.get(), &CloseGuard::RequestClose);
    connect(closeGuard.get(), &CloseGuard::SigWaiting, this, [this] {
        window->setEnabled(false);
        WbToast::Show(QStringLiteral("正在等待保存完成…"));
    });
    connect(closeGuard.get(), &CloseGuard::SigMayClose, this, [this] {
        window->CloseForGood();
        leftWork.reset(); // nobody is there to read what it says
        editorPage->Discard();
        runPage->Close();
        RpaEditorLogic::Instance()->Shutdown();
        session->End();
        emit SigClosed();
    });
    connect(samples.get(), &SampleInstaller::SigFinished, this, [this](bool complete) {
        settings.SetSamplesInstalled(complete);
        desk->Refresh();
    });
}

// The package service and the engine do not know each other.
void Workstation::ConnectPackages()
{
    PackageService* const packages = RpaPackageModule::Instance()->GetBuiltIn();
    connect(packages, &PackageService::SigPackageFoldersChanged, this,
            [packages] { RpaEngineModule::Instance()->SetPackageFolders(packages->GetPackageFolders()); });
    connect(packages, &PackageService::SigOutput, this, [](const QString& line) {
        RpaEngineModule::Instance()->GetLogManager()->Append(RpaLogLevel::Debug, line);
    });
    connect(&settings, &WorkstationSettings::SigWheelFolderChanged, this, &Workstation::TellWheelFolders);
    TellWheelFolders();
    preparation = std::make_unique<PackagePreparation>(packages);
    connect(editorPage, &EditorPage::SigClosed, preparation.get(), &PackagePreparation::Leave);
}

void Workstation::GoToServer()
{
    if (settings.GetEmbeddedServer())
        session->UseEmbedded();
    else
        session->UseRemote(settings.GetServerAddress());
    AskSignIn();
}

void Workstation::AskSignIn()
{
    if (session->IsEmbedded()) {
        signInPage->AskEmbedded(session->GetEmbeddedNames(), 0);
    } else {
        signInPage->AskRemote(settings.GetServerAddress().toString(), settings.GetLastAccount(),
                              settings.GetStaySignedIn());
    }
    ShowAccounts();
    window->ShowPage(signInPage);
}

void Workstation::ShowSettings()
{
    if (window->CurrentPage() != settingsPage) {
        pageBeforeSettings = window->CurrentPage();
        window->ShowPage(settingsPage);
    }
}

void Workstation::ShowPackages()
{
    auto* dialog = new PackageDialog(RpaPackageModule::Instance()->GetBuiltIn(), settings.GetWheelFolder(),
                                     window.get());
    connect(dialog, &PackageDialog::SigWheelFolderChosen, &settings, &WorkstationSettings::SetWheelFolder);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->open();
}

void Workstation::TellWheelFolders()
{
    PackageSettings places;
    places.dataFolder = paths.packageDir;
    places.wheelFolders = QStringList{paths.wheelDir};
    if (!settings.GetWheelFolder().isEmpty())
        places.wheelFolders.append(settings.GetWheelFolder());
    RpaPackageModule::Instance()->GetBuiltIn()->SetSettings(places);
}

void Workstation::SwitchAccount(int embeddedAccount)
{
    if (embeddedAccount != session->GetEmbeddedIndex() && editorPage->Leave()) {
        pageBeforeSettings = listPage;
        session->EnterEmbedded(embeddedAccount);
    }
    ShowAccounts();
}

void Workstation::UseServer(bool embedded, const QUrl& address)
{
    if (!editorPage->Leave())
        return;
    settings.SetServerAddress(address);
    settings.SetEmbeddedServer(embedded);
    session->SignOut();
    GoToServer();
}

void Workstation::SignOut()
{
    if (editorPage->Leave())
        session->SignOut();
}

void Workstation::ApplyTheme()
{
    const ThemeChoice choice = settings.GetTheme();
    const bool dark = choice == ThemeChoice::Dark || (choice == ThemeChoice::System && systemIsDark);
    WbTheme::Instance()->Apply(dark ? WbTheme::Scheme::Dark : WbTheme::Scheme::Light);
}

void Workstation::ApplySuperAdmin()
{
    // With a server of one's own this is a matter of taste, with another's it is the server's to say.
    RpaGlobalDataManager::Instance()->SetSuperAdmin(session->IsEmbedded() && settings.GetSuperAdmin());
}

void Workstation::ShowAccounts()
{
    const bool choice = session->IsEmbedded() && session->IsSignedIn();
    settingsPage->ShowAccounts(choice ? session->GetEmbeddedNames() : QStringList(),
                               session->GetEmbeddedIndex());
    settingsPage->ShowSignedIn(session->IsEmbedded() ? QString() : session->GetName());
}

void Workstation::InstallSamples()
{
    if (session->IsEmbedded() && !settings.GetSamplesInstalled()) {
        listPage->ShowLoading();
        samples->Start();
    } else {
        desk->Refresh();
    }
}
