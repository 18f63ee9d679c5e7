// SPDX-License-Identifier: Apache-2.0

#include "SettingsFlow.h"

#include "AboutDialog.h"
#include "EditorPage.h"
#include "MainWindow.h"
#include "Session.h"
#include "SettingsPage.h"
#include "WorkstationSettings.h"

#include <RpaCore/RpaGlobalDataManager.h>

SettingsFlow::SettingsFlow(const QString& program, Session* ofUser, WorkstationSettings* store,
                           EditorPage* editorPage, QWidget* homePage, MainWindow* mainWindow)
    : serverProgram(program), session(ofUser), settings(store), editor(editorPage), home(homePage),
      window(mainWindow), page(new SettingsPage(store)), pageBefore(homePage)
{
    window->AddPage(page, QStringLiteral("返回"));
    ConnectPage();
    ConnectSession();
    session->SetCaFile(settings->GetCaFile());
    connect(settings, &WorkstationSettings::SigCaFileChanged, session, &Session::SetCaFile);
    connect(settings, &WorkstationSettings::SigSuperAdminChanged, this, &SettingsFlow::ApplySuperAdmin);
    connect(window, &MainWindow::SigSettings, this, &SettingsFlow::Show);
    connect(window, &MainWindow::SigBack, this, [this](const QWidget* from) {
        if (from == page)
            window->ShowPage(pageBefore);
    });
}

void SettingsFlow::ConnectPage()
{
    connect(page, &SettingsPage::SigSwitchAccount, this, &SettingsFlow::SwitchAccount);
    connect(page, &SettingsPage::SigUseServer, this, &SettingsFlow::UseServer);
    connect(page, &SettingsPage::SigSignOut, this, &SettingsFlow::SignOut);
    connect(page, &SettingsPage::SigAbout, this, &SettingsFlow::ShowAbout);
    connect(page, &SettingsPage::SigGuide, this, &SettingsFlow::SigGuide);
}

void SettingsFlow::ConnectSession()
{
    connect(session, &Session::SigServerChanged, this, &SettingsFlow::ShowAccounts);
    connect(session, &Session::SigSignedOut, this, &SettingsFlow::ShowAccounts);
    connect(session, &Session::SigExpired, this, &SettingsFlow::ShowAccounts);
    connect(session, &Session::SigSignedIn, this, [this] {
        pageBefore = home; // not the one that asked who works, nor what another account had open
        ApplySuperAdmin();
        ShowAccounts();
    });
}

void SettingsFlow::Show()
{
    if (window->CurrentPage() != page) {
        pageBefore = window->CurrentPage();
        window->ShowPage(page);
    }
}

void SettingsFlow::SwitchAccount(int embeddedAccount)
{
    if (embeddedAccount != session->GetEmbeddedIndex() && editor->Leave())
        session->EnterEmbedded(embeddedAccount);
    ShowAccounts();
}

void SettingsFlow::UseServer(bool embedded, const QUrl& address)
{
    if (!editor->Leave())
        return;
    settings->SetServerAddress(address);
    settings->SetEmbeddedServer(embedded);
    session->SignOut();
    emit SigServerChosen();
}

void SettingsFlow::SignOut()
{
    if (editor->Leave())
        session->SignOut();
}

void SettingsFlow::ShowAccounts()
{
    const bool choice = session->IsEmbedded() && session->IsSignedIn();
    page->ShowAccounts(choice ? session->GetEmbeddedNames() : QStringList(), session->GetEmbeddedIndex());
    page->ShowSignedIn(session->IsEmbedded() ? QString() : session->GetName());
}

void SettingsFlow::ShowAbout()
{
    auto* dialog = new AboutDialog(serverProgram, window);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->open();
}

void SettingsFlow::ApplySuperAdmin()
{
    // With a server of one's own this is a matter of taste, with another's it is the server's to say.
    RpaGlobalDataManager::Instance()->SetSuperAdmin(session->IsEmbedded() && settings->GetSuperAdmin());
}
