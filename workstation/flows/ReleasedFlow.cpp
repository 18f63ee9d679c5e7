// SPDX-License-Identifier: Apache-2.0

#include "ReleasedFlow.h"

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
#include "WorkstationSettings.h"

#include <RpaCore/RpaAppKind.h>
#include <RpaEditorCore/RpaEditorNotify.h>
#include <RpaPackage/PackageService.h>
#include <RpaPackage/RpaPackageModule.h>
#include <WbBaseUI/WbToast.h>

ReleasedFlow::ReleasedFlow(const Session* ofUser, WorkstationSettings* store, const AppListModel* ownApps,
                           AppListPage* listPage, MainWindow* mainWindow)
    : session(ofUser), settings(store), own(ownApps), list(listPage), window(mainWindow),
      online(MakeShelf(AppPageHead::Online)), gray(MakeShelf(AppPageHead::Gray)), runPage(new RunPage),
      releases(std::make_unique<ReleaseController>())
{
    window->AddPage(runPage, QStringLiteral("返回应用列表"));
    ConnectShelf(online);
    ConnectShelf(gray);
    ConnectList();
    connect(releases.get(), &ReleaseController::SigChanged, this, &ReleasedFlow::Refresh);
    connect(session, &Session::SigSignedIn, this, &ReleasedFlow::Forget);
    connect(session, &Session::SigSignedOut, this, &ReleasedFlow::Forget);
    // Afterwards: the editor is still at work on the answer.
    connect(RpaEditorNotify::Instance(), &RpaEditorNotify::SigPublishFinished, this,
            &ReleasedFlow::SlotPublished, Qt::QueuedConnection);
    connect(window, &MainWindow::SigBack, this, [this](const QWidget* from) {
        if (from == runPage)
            LeaveRun();
    });
}

ReleasedFlow::~ReleasedFlow() = default;

ReleasedFlow::Shelf ReleasedFlow::MakeShelf(AppPageHead::Tab tab)
{
    Shelf shelf;
    shelf.model = std::make_unique<ReleasedAppModel>();
    shelf.page = new ReleasedListPage(tab, shelf.model.get());
    shelf.controller = std::make_unique<ReleasedListController>(tab, shelf.model.get(), shelf.page);
    window->AddPage(shelf.page, QString());
    return shelf;
}

void ReleasedFlow::ConnectShelf(const Shelf& shelf)
{
    shelf.model->SetDateLanguage(settings->GetDateLanguage());
    connect(settings, &WorkstationSettings::SigDateLanguageChanged, shelf.model.get(),
            &AppListModel::SetDateLanguage);
    connect(session, &Session::SigSignedIn, shelf.model.get(),
            [this, model = shelf.model.get()] { model->SetAccount(session->GetPin()); });
    connect(shelf.page, &ReleasedListPage::SigTab, this, &ReleasedFlow::ShowTab);
    connect(shelf.page, &ReleasedListPage::SigRun, this, &ReleasedFlow::Run);
    connect(shelf.page, &ReleasedListPage::SigRefresh, shelf.controller.get(),
            &ReleasedListController::Refresh);
    connect(shelf.page, &ReleasedListPage::SigRedeem, shelf.controller.get(),
            &ReleasedListController::Redeem);
}

void ReleasedFlow::ConnectList()
{
    connect(list, &AppListPage::SigTab, this, &ReleasedFlow::ShowTab);
    connect(list, &AppListPage::SigInvitations, this, &ReleasedFlow::ShowInvitations);
    connect(list, &AppListPage::SigReleases, this,
            [this](const AppRecord& app) { releases->Show(app, settings->GetDateLanguage(), window); });
}

void ReleasedFlow::ShowTab(int tab)
{
    if (tab == AppPageHead::Mine) {
        window->ShowPage(list);
        emit SigOwn();
        return;
    }
    const Shelf& shelf = tab == AppPageHead::Online ? online : gray;
    window->ShowPage(shelf.page);
    shelf.controller->Refresh();
}

void ReleasedFlow::Run(const VersionServiceReleasedApp& app)
{
    pageBeforeRun = window->CurrentPage();
    window->ShowPage(runPage);
    RpaPackageModule::Instance()->GetBuiltIn()->SetApp(app.app.id); // its packages, not the ones before
    runPage->Open(app);
}

void ReleasedFlow::LeaveRun()
{
    runPage->Close();
    window->ShowPage(pageBeforeRun);
}

void ReleasedFlow::Refresh()
{
    online.controller->Refresh();
    gray.controller->Refresh();
}

// Nobody runs or sees what another account was let into.
void ReleasedFlow::Forget()
{
    if (window->CurrentPage() == runPage)
        window->ShowPage(list);
    runPage->Close();
    online.controller->Forget();
    gray.controller->Forget();
}

void ReleasedFlow::ShowInvitations(const AppRecord& app)
{
    auto* dialog = new InvitationDialog(app, settings->GetDateLanguage(), window);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    // The editor may have something to ask about the same release.
    dialog->OpenInTurn();
}

// tookEffect: the server gives a tip for a release that it carried out.
void ReleasedFlow::SlotPublished(const QString& appId, int publishType, bool tookEffect)
{
    Refresh();
    const AppRecord app = own->AppAt(own->RowOf(appId));
    if (!tookEffect || app.id.isEmpty())
        return;
    if (publishType == AppReleaseOnline)
        WbToast::Show(QStringLiteral("“%1”已上线").arg(app.name), ToastSuccess);
    else if (publishType == AppReleaseGray && app.creatorPin == session->GetPin())
        ShowInvitations(app);
}
