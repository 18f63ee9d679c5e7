// What is done with apps as a whole.
#include "AppBin.h"
#include "AppDesk.h"
#include "AppListPage.h"
#include "DraftDesk.h"
#include "EditorPage.h"
#include "MainWindow.h"
#include "TransferDesk.h"
#include "Workstation.h"

void Workstation::ConnectApps()
{
    connect(listPage, &AppListPage::SigRefresh, desk.get(), &AppDesk::Refresh);
    connect(listPage, &AppListPage::SigCreate, desk.get(), &AppDesk::Create);
    connect(listPage, &AppListPage::SigRename, desk.get(), &AppDesk::Rename);
    connect(listPage, &AppListPage::SigTags, desk.get(), &AppDesk::EditTags);
    connect(listPage, &AppListPage::SigCopy, desk.get(), &AppDesk::Copy);
    const auto open = [this](const AppRecord& app) {
        if (!editorPage->IsOpen() && window->CurrentPage() == listPage) {
            drafts->Offer(app);
        }
    };
    connect(listPage, &AppListPage::SigOpen, this, open);
    connect(desk.get(), &AppDesk::SigCreated, this, open);
    connect(listPage, &AppListPage::SigDelete, this,
            [this](const AppRecord& app) { bin->Delete(app, window.get()); });
    connect(listPage, &AppListPage::SigBin, this,
            [this] { bin->Show(settings.GetDateLanguage(), window.get()); });
    connect(listPage, &AppListPage::SigExport, this,
            [this](const AppRecord& app) { transfers->Export(app, window.get()); });
    connect(listPage, &AppListPage::SigImport, this, [this] { transfers->Import(window.get()); });
    connect(transfers.get(), &TransferDesk::SigImported, desk.get(), &AppDesk::RefreshAndSelect);
    connect(bin.get(), &AppBin::SigChanged, desk.get(), &AppDesk::RefreshAndSelect);
}
