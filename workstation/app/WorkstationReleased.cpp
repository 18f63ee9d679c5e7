// SPDX-License-Identifier: Apache-2.0

// What lies beyond the release: the lists of online and gray apps, running them, invitations.
#include "AppListController.h"
#include "AppListModel.h"
#include "AppListPage.h"
#include "InvitationDialog.h"
#include "MainWindow.h"
#include "ReleaseController.h"
#include "ReleasedAppModel.h"
#include "ReleasedListController.h"
#include "ReleasedListPage.h"
#include "RunPage.h"
#include "Session.h"
#include "Workstation.h"

#include <RpaEditorCore/RpaEditorNotify.h>
#include <RpaPackage/PackageService.h>
#include <RpaPackage/RpaPackageModule.h>
#include <WbBaseUI/WbToast.h>

namespace
{
constexpr int grayRelease = 1;
constexpr int onlineRelease = 2;
} // namespace

void Workstation::CreateReleased()
{
    onlineApps = std::make_unique<ReleasedAppModel>();
    grayApps = std::make_unique<ReleasedAppModel>();
    onlinePage = new ReleasedListPage(AppTabs::Online, onlineApps.get());
    grayPage = new ReleasedListPage(AppTabs::Gray, grayApps.get());
    runPage = new RunPage;
    window->AddPage(onlinePage, QString());
    window->AddPage(grayPage, QString());
    window->AddPage(runPage, QStringLiteral("返回应用列表"));
    onlineController =
        std::make_unique<ReleasedListController>(AppTabs::Online, onlineApps.get(), onlinePage);
    grayController = std::make_unique<ReleasedListController>(AppTabs::Gray, grayApps.get(), grayPage);
    releases = std::make_unique<ReleaseController>();
}

void Workstation::ConnectReleased()
{
    const auto run = [this](const VersionServiceReleasedApp& app) {
        pageBeforeRun = window->CurrentPage();
        window->ShowPage(runPage);
        RpaPackageModule::Instance()->GetBuiltIn()->SetApp(app.app.id); // its packages, not the ones before
        runPage->Open(app);
    };
    for (auto* model : {onlineApps.get(), grayApps.get()}) {
        model->SetDateLanguage(settings.GetDateLanguage());
        connect(&settings, &WorkstationSettings::SigDateLanguageChanged, model,
                &AppListModel::SetDateLanguage);
    }
    for (auto* page : {onlinePage, grayPage}) {
        connect(page, &ReleasedListPage::SigTab, this, &Workstation::ShowTab);
        connect(page, &ReleasedListPage::SigRun, this, run);
    }
    connect(onlinePage, &ReleasedListPage::SigRefresh, onlineController.get(),
            &ReleasedListController::Refresh);
    connect(grayPage, &ReleasedListPage::SigRefresh, grayController.get(), &ReleasedListController::Refresh);
    connect(grayPage, &ReleasedListPage::SigRedeem, grayController.get(), &ReleasedListController::Redeem);
    connect(listPage, &AppListPage::SigTab, this, &Workstation::ShowTab);
    connect(listPage, &AppListPage::SigInvitations, this, &Workstation::ShowInvitations);
    connect(listPage, &AppListPage::SigReleases, this,
            [this](const AppRecord& app) { releases->Show(app, settings.GetDateLanguage(), window.get()); });
    connect(releases.get(), &ReleaseController::SigChanged, this, [this] {
        onlineController->Refresh();
        grayController->Refresh();
    });
    connect(session.get(), &Session::SigSignedIn, this, [this] {
        onlineApps->SetAccount(session->GetPin());
        grayApps->SetAccount(session->GetPin());
        ForgetReleased();
    });
    connect(session.get(), &Session::SigSignedOut, this, &Workstation::ForgetReleased);
    // Afterwards: the editor is still at work on the answer.
    connect(RpaEditorNotify::Instance(), &RpaEditorNotify::SigPublishFinished, this,
            &Workstation::SlotPublished, Qt::QueuedConnection);
}

void Workstation::ShowTab(int tab)
{
    if (tab == AppTabs::Mine) {
        window->ShowPage(listPage);
        desk->Refresh();
    } else if (tab == AppTabs::Online) {
        window->ShowPage(onlinePage);
        onlineController->Refresh();
    } else {
        window->ShowPage(grayPage);
        grayController->Refresh();
    }
}

void Workstation::LeaveRun()
{
    runPage->Close();
    window->ShowPage(pageBeforeRun);
}

// Nobody runs or sees what another account was let into.
void Workstation::ForgetReleased()
{
    if (window->CurrentPage() == runPage)
        window->ShowPage(listPage);
    runPage->Close();
    onlineController->Forget();
    grayController->Forget();
}

void Workstation::ShowInvitations(const AppRecord& app)
{
    auto* dialog = new InvitationDialog(app, settings.GetDateLanguage(), window.get());
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    // The editor may have something to ask about the same release.
    dialog->OpenInTurn();
}

// tookEffect: the server gives a tip for a release that it carried out.
void Workstation::SlotPublished(const QString& appId, int publishType, bool tookEffect)
{
    desk->Refresh();
    onlineController->Refresh();
    grayController->Refresh();
    const AppRecord app = apps->AppAt(apps->RowOf(appId));
    if (!tookEffect || app.id.isEmpty())
        return;
    if (publishType == onlineRelease)
        WbToast::Show(QStringLiteral("“%1”已上线").arg(app.name), ToastSuccess);
    else if (publishType == grayRelease && app.creator == session->GetPin())
        ShowInvitations(app);
}
