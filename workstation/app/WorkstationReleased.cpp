// What lies beyond the release: the lists of online and gray apps, running them, invitations.
#include "AppDesk.h"
#include "AppListModel.h"
#include "AppListPage.h"
#include "InvitationDialog.h"
#include "MainWindow.h"
#include "ReleaseDesk.h"
#include "ReleasedAppModel.h"
#include "ReleasedDesk.h"
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
    onlineDesk = std::make_unique<ReleasedDesk>(AppTabs::Online, onlineApps.get(), onlinePage);
    grayDesk = std::make_unique<ReleasedDesk>(AppTabs::Gray, grayApps.get(), grayPage);
    releases = std::make_unique<ReleaseDesk>();
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
    connect(onlinePage, &ReleasedListPage::SigRefresh, onlineDesk.get(), &ReleasedDesk::Refresh);
    connect(grayPage, &ReleasedListPage::SigRefresh, grayDesk.get(), &ReleasedDesk::Refresh);
    connect(grayPage, &ReleasedListPage::SigRedeem, grayDesk.get(), &ReleasedDesk::Redeem);
    connect(listPage, &AppListPage::SigTab, this, &Workstation::ShowTab);
    connect(listPage, &AppListPage::SigInvitations, this, &Workstation::ShowInvitations);
    connect(listPage, &AppListPage::SigReleases, this,
            [this](const AppRecord& app) { releases->Show(app, settings.GetDateLanguage(), window.get()); });
    connect(releases.get(), &ReleaseDesk::SigChanged, this, [this] {
        onlineDesk->Refresh();
        grayDesk->Refresh();
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
        onlineDesk->Refresh();
    } else {
        window->ShowPage(grayPage);
        grayDesk->Refresh();
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
    if (window->CurrentPage() == runPage) {
        window->ShowPage(listPage);
    }
    runPage->Close();
    onlineDesk->Forget();
    grayDesk->Forget();
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
    onlineDesk->Refresh();
    grayDesk->Refresh();
    const AppRecord app = apps->AppAt(apps->RowOf(appId));
    if (!tookEffect || app.id.isEmpty()) {
        return;
    }
    if (publishType == onlineRelease) {
        WbToast::Show(QStringLiteral("“%1”已上线").arg(app.name), ToastSuccess);
    } else if (publishType == grayRelease && app.creator == session->GetPin()) {
        ShowInvitations(app);
    }
}
