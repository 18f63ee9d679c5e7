// SPDX-License-Identifier: Apache-2.0

// What is done with apps as a whole.
#include "AppBin.h"
#include "AppListController.h"
#include "AppListPage.h"
#include "DraftController.h"
#include "EditorPage.h"
#include "MainWindow.h"
#include "TransferController.h"
#include "Workstation.h"

void Workstation::ConnectApps()
{
    connect(listPage, &AppListPage::SigRefresh, desk.get(), &AppListController::Refresh);
    connect(listPage, &AppListPage::SigCreate, desk.get(), &AppListController::Create);
    connect(listPage, &AppListPage::SigRename, desk.get(), &AppListController::Rename);
    connect(listPage, &AppListPage::SigTags, desk.get(), &AppListController::EditTags);
    connect(listPage, &AppListPage::SigCopy, desk.get(), &AppListController::Copy);
    const auto open = [this](const AppRecord& app) {
        if (!editorPage->IsOpen() && window->CurrentPage() == listPage)
            drafts->Offer(app);
    };
    connect(listPage, &AppListPage::SigOpen, this, open);
    connect(desk.get(), &AppListController::SigCreated, this, open);
    connect(listPage, &AppListPage::SigDelete, this,
            [this](const AppRecord& app) { bin->Delete(app, window.get()); });
    connect(listPage, &AppListPage::SigBin, this,
            [this] { bin->Show(settings.GetDateLanguage(), window.get()); });
    connect(listPage, &AppListPage::SigExport, this,
            [this](const AppRecord& app) { transfers->Export(app, window.get()); });
    connect(listPage, &AppListPage::SigImport, this, [this] { transfers->Import(window.get()); });
    connect(transfers.get(), &TransferController::SigImported, desk.get(),
            &AppListController::RefreshAndSelect);
    connect(bin.get(), &AppBin::SigChanged, desk.get(), &AppListController::RefreshAndSelect);
}
