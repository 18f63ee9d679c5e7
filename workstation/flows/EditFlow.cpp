// SPDX-License-Identifier: Apache-2.0

#include "EditFlow.h"

#include "DraftController.h"
#include "EditorPage.h"
#include "LeftWork.h"
#include "MainWindow.h"
#include "TemplateFlow.h"
#include "WorkstationSettings.h"

#include <RpaEditorLogic/RpaEditorLogic.h>
#include <RpaPackage/PackageService.h>
#include <RpaPackage/RpaPackageModule.h>

EditFlow::EditFlow(const WorkstationPaths& places, WorkstationSettings* settings, QWidget* homePage,
                   MainWindow* mainWindow)
    : paths(places), home(homePage), window(mainWindow), page(new EditorPage),
      templates(std::make_unique<TemplateFlow>(places, [this] { return page->GetApp().kind; })),
      drafts(std::make_unique<DraftController>(RpaEditorLogic::Instance()->GetSaveLedger(), mainWindow)),
      leftWork(std::make_unique<LeftWork>([this](const QString& appId) { return drafts->Keeps(appId); }))
{
    window->AddPage(page, QStringLiteral("返回应用列表"));
    window->OfferEditing(page);
    drafts->SetDateLanguage(settings->GetDateLanguage());
    connect(settings, &WorkstationSettings::SigDateLanguageChanged, drafts.get(),
            &DraftController::SetDateLanguage);
    Connect();
}

EditFlow::~EditFlow() = default;

void EditFlow::Connect()
{
    connect(drafts.get(), &DraftController::SigReady, this, &EditFlow::Prepare);
    connect(page, &EditorPage::SigLeft, leftWork.get(), &LeftWork::Leave);
    connect(page, &EditorPage::SigClosed, drafts.get(), &DraftController::Close);
    connect(window, &MainWindow::SigBack, this, [this](const QWidget* from) {
        if (from == page)
            Leave();
    });
}

void EditFlow::Start()
{
    templates->Start();
    drafts->Start(paths.draftDir);
}

void EditFlow::Offer(const AppRecord& app)
{
    if (!page->IsOpen() && window->CurrentPage() == home)
        drafts->Offer(app);
}

// A new app begins with the templates as they are now. No other app may be opened meanwhile: restored work
// that waits for this one would go there.
void EditFlow::Prepare(const AppRecord& app)
{
    home->setEnabled(false);
    templates->LookThen([this, app] { Open(app); });
}

void EditFlow::Open(const AppRecord& app)
{
    home->setEnabled(true);
    if (page->IsOpen() || window->CurrentPage() != home) {
        drafts->Close(); // the user went elsewhere meanwhile
        return;
    }
    window->ShowPage(page);
    templates->Offer();
    // Before the editor: it hands over the app's list while it opens.
    RpaPackageModule::Instance()->GetBuiltIn()->SetApp(app.id);
    drafts->Open(app);
    emit SigOpened(app);
    page->Open(app);
}

void EditFlow::Leave()
{
    const QString appId = page->GetApp().id;
    if (page->Leave()) {
        window->ShowPage(home);
        emit SigLeft(appId);
    }
}

void EditFlow::End()
{
    leftWork.reset(); // nobody is there to read what it says
    page->Discard();
}
