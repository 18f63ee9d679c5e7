// SPDX-License-Identifier: Apache-2.0

// The life of an editor: what it opens with, unsaved work around it, the way back.
#include "AppListController.h"
#include "AppListPage.h"
#include "DraftController.h"
#include "EditorPage.h"
#include "LeftWork.h"
#include "MainWindow.h"
#include "SavedTemplates.h"
#include "Session.h"
#include "TemplateKeeper.h"
#include "VersionController.h"
#include "VersionDialog.h"
#include "VersionHint.h"
#include "Workstation.h"

#include <RpaCore/RpaSuperDir.h>
#include <RpaPackage/PackageService.h>
#include <RpaPackage/RpaPackageModule.h>
#include <WbBaseUI/WbToast.h>

#include <QComboBox>
#include <QLineEdit>

void Workstation::ConnectDrafts()
{
    drafts->SetDateLanguage(settings.GetDateLanguage());
    connect(&settings, &WorkstationSettings::SigDateLanguageChanged, drafts.get(),
            &DraftController::SetDateLanguage);
    connect(drafts.get(), &DraftController::SigReady, this, &Workstation::PrepareEditor);
    leftWork = std::make_unique<LeftWork>([this](const QString& appId) { return drafts->Keeps(appId); });
    connect(editorPage, &EditorPage::SigLeft, leftWork.get(), &LeftWork::Leave);
    connect(editorPage, &EditorPage::SigClosed, drafts.get(), &DraftController::Close);
}

void Workstation::ConnectVersions()
{
    versions = std::make_unique<VersionController>();
    connect(editorPage, &EditorPage::SigOpened, this, [this](QWidget* editor) {
        versions->SetApp(editorPage->GetApp().id);
        if (auto* combo = editor->findChild<QComboBox*>(QStringLiteral("version_combo")))
            new VersionHint(combo, versions.get(), settings.GetDateLanguage()); // goes with the list
    });
    connect(editorPage, &EditorPage::SigClosed, versions.get(), [this] { versions->SetApp(QString()); });
    connect(window.get(), &MainWindow::SigVersions, this, &Workstation::ShowVersions);
}

void Workstation::ShowVersions()
{
    const auto* combo = editorPage->findChild<QComboBox*>(QStringLiteral("version_combo"));
    if (!combo)
        return;
    auto* dialog = new VersionDialog(versions.get(), session->GetPin(), combo->lineEdit()->text(),
                                     settings.GetDateLanguage(), window.get());
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->open();
}

void Workstation::ConnectTemplates()
{
    connect(savedTemplates.get(), &SavedTemplates::SigSaved, this, &Workstation::LookForTemplates);
    connect(templates.get(), &TemplateKeeper::SigLooked, this, &Workstation::OfferTemplates);
    connect(templates.get(), &TemplateKeeper::SigProblem, this,
            [](const QString& text) { WbToast::Show(text, ToastWarning); });
    connect(templates.get(), &TemplateKeeper::SigContentLost, this, [] {
        WbToast::Show(QStringLiteral("所选模板的内容已无法读取，应用从空白内容开始"), ToastWarning);
    });
}

void Workstation::LookForTemplates()
{
    templates->SetOthers(paths.visualTemplateDir, savedTemplates->GetFiles(AppKindVisual));
    templates->SetOthers(paths.programTemplateDir, savedTemplates->GetFiles(AppKindProgram));
    templates->Look();
}

void Workstation::OfferTemplates()
{
    if (DraftController::RestoresStart()) {
        // Work that goes on needs no template to begin with.
        RpaSuperDir::Instance()->SetTemplateDirs(QString(), QString());
        return;
    }
    RpaSuperDir::Instance()->SetTemplateDirs(templates->GetFitFolder(paths.visualTemplateDir),
                                             templates->GetFitFolder(paths.programTemplateDir));
}

// A new app begins with the templates as they are now. No other app may be opened meanwhile: restored work
// that waits for this one would go there.
void Workstation::PrepareEditor(const AppRecord& app)
{
    listPage->setEnabled(false);
    templates->LookThen([this, app] { OpenEditor(app); });
}

void Workstation::OpenEditor(const AppRecord& app)
{
    listPage->setEnabled(true);
    if (editorPage->IsOpen() || window->CurrentPage() != listPage) {
        drafts->Close(); // the user went elsewhere meanwhile
        return;
    }
    window->ShowPage(editorPage);
    OfferTemplates();
    // Before the editor: it hands over the app's list while it opens.
    RpaPackageModule::Instance()->GetBuiltIn()->SetApp(app.id);
    drafts->Open(app);
    desk->NoteOpened(app.id);
    editorPage->Open(app);
}

void Workstation::LeaveEditor()
{
    const QString appId = editorPage->GetApp().id;
    if (editorPage->Leave()) {
        window->ShowPage(listPage);
        desk->RefreshAndSelect(appId);
    }
}
