// SPDX-License-Identifier: Apache-2.0

#include "AppsFlow.h"

#include "AppBin.h"
#include "AppListController.h"
#include "AppListModel.h"
#include "AppListPage.h"
#include "MainWindow.h"
#include "SampleInstaller.h"
#include "Session.h"
#include "TransferController.h"
#include "WorkstationSettings.h"

#include <RpaEditorCore/RpaEditorNotify.h>

AppsFlow::AppsFlow(const QString& openedFile, Session* ofUser, WorkstationSettings* store,
                   MainWindow* mainWindow)
    : session(ofUser), settings(store), window(mainWindow), model(std::make_unique<AppListModel>()),
      page(new AppListPage(model.get())),
      controller(std::make_unique<AppListController>(model.get(), page, openedFile)),
      bin(std::make_unique<AppBin>()), transfers(std::make_unique<TransferController>()),
      samples(std::make_unique<SampleInstaller>())
{
    model->SetDateLanguage(settings->GetDateLanguage());
    window->AddPage(page, QString());
    ConnectList();
    ConnectOthers();
    ConnectSession();
}

AppsFlow::~AppsFlow() = default;

void AppsFlow::ConnectList()
{
    connect(page, &AppListPage::SigRefresh, controller.get(), &AppListController::Refresh);
    connect(page, &AppListPage::SigCreate, controller.get(), &AppListController::Create);
    connect(page, &AppListPage::SigRename, controller.get(), &AppListController::Rename);
    connect(page, &AppListPage::SigTags, controller.get(), &AppListController::EditTags);
    connect(page, &AppListPage::SigCopy, controller.get(), &AppListController::Copy);
    connect(page, &AppListPage::SigOpen, this, &AppsFlow::SigOpen);
    connect(controller.get(), &AppListController::SigCreated, this, &AppsFlow::SigOpen);
    connect(settings, &WorkstationSettings::SigDateLanguageChanged, model.get(),
            &AppListModel::SetDateLanguage);
    // Afterwards: the editor is still at work on the answer.
    connect(RpaEditorNotify::Instance(), &RpaEditorNotify::SigPublishFinished, this, &AppsFlow::Refresh,
            Qt::QueuedConnection);
}

void AppsFlow::ConnectOthers()
{
    connect(page, &AppListPage::SigDelete, this, [this](const AppRecord& app) { bin->Delete(app, window); });
    connect(page, &AppListPage::SigBin, this, [this] { bin->Show(settings->GetDateLanguage(), window); });
    connect(page, &AppListPage::SigExport, this,
            [this](const AppRecord& app) { transfers->Export(app, window); });
    connect(page, &AppListPage::SigImport, this, [this] { transfers->Import(window); });
    connect(transfers.get(), &TransferController::SigImported, this, &AppsFlow::RefreshAndSelect);
    connect(bin.get(), &AppBin::SigChanged, this, &AppsFlow::RefreshAndSelect);
    connect(samples.get(), &SampleInstaller::SigFinished, this, [this](bool complete) {
        settings->SetSamplesInstalled(complete);
        Refresh();
    });
}

void AppsFlow::ConnectSession()
{
    connect(session, &Session::SigSignedIn, this, [this] {
        model->SetAccount(session->GetPin());
        controller->SetAccount(session->GetPin());
        Fill();
    });
    connect(session, &Session::SigSignedOut, controller.get(), &AppListController::Forget);
}

void AppsFlow::Fill()
{
    if (session->IsEmbedded() && !settings->GetSamplesInstalled()) {
        page->ShowLoading();
        samples->Start();
    } else {
        Refresh();
    }
}

void AppsFlow::Show()
{
    window->ShowPage(page);
}

void AppsFlow::Refresh()
{
    controller->Refresh();
}

void AppsFlow::RefreshAndSelect(const QString& appId)
{
    controller->RefreshAndSelect(appId);
}

void AppsFlow::NoteOpened(const AppRecord& app)
{
    controller->NoteOpened(app.id);
}
