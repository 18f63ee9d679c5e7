// SPDX-License-Identifier: Apache-2.0

#include "SignInFlow.h"

#include "MainWindow.h"
#include "ServerStatusIndicator.h"
#include "Session.h"
#include "SignInPage.h"
#include "WorkstationSettings.h"

#include <WbBaseUI/WbToast.h>

SignInFlow::SignInFlow(Session* ofUser, WorkstationSettings* store, MainWindow* mainWindow)
    : session(ofUser), settings(store), window(mainWindow), page(new SignInPage)
{
    window->AddPage(page, QString());
    ConnectPage();
    ConnectSession();
}

void SignInFlow::ConnectPage()
{
    connect(page, &SignInPage::SigEnter, session, &Session::EnterEmbedded);
    connect(page, &SignInPage::SigSignIn, this,
            [this](const QString& account, const QString& password, bool stay) {
                settings->SetStaySignedIn(stay);
                session->SignIn(account, password, stay);
            });
    connect(page, &SignInPage::SigRetry, session, &Session::Retry);
    connect(page, &SignInPage::SigSettings, this, &SignInFlow::SigSettings);
}

void SignInFlow::ConnectSession()
{
    connect(session, &Session::SigServerChanged, this, &SignInFlow::ShowServer);
    connect(session, &Session::SigServerDied, this,
            [] { WbToast::Show(QStringLiteral("版本服务意外停止，正在重新启动"), ToastWarning); });
    connect(session, &Session::SigSignedIn, this, &SignInFlow::Enter);
    connect(session, &Session::SigSignedOut, this, [this] {
        window->ShowAccount(QString());
        Ask();
    });
    connect(session, &Session::SigRefused, page, &SignInPage::ShowProblem);
    connect(session, &Session::SigExpired, this, [this] {
        // Work in the editor stays where it is: whoever signs in again finds it there.
        Ask();
        page->ShowProblem(QStringLiteral("登录已过期，请重新登录"));
    });
    connect(session, &Session::SigNotKept, this,
            [] { WbToast::Show(QStringLiteral("无法保存登录状态，下次启动时需要重新登录"), ToastWarning); });
}

void SignInFlow::GoToServer()
{
    if (settings->GetEmbeddedServer())
        session->UseEmbedded();
    else
        session->UseRemote(settings->GetServerAddress());
    Ask();
}

void SignInFlow::Ask()
{
    if (session->IsEmbedded()) {
        page->AskEmbedded(session->GetEmbeddedNames(), 0);
    } else {
        page->AskRemote(settings->GetServerAddress().toString(), settings->GetLastAccount(),
                        settings->GetStaySignedIn());
    }
    window->ShowPage(page);
}

void SignInFlow::ShowServer(ServerState state, const QString& detail)
{
    window->GetServerStatusIndicator()->Show(state, detail);
    switch (state) {
    case ServerState::Connecting:
        page->ShowBusy(QStringLiteral("正在连接版本服务…"));
        break;
    case ServerState::Connected:
        page->ShowReady();
        break;
    case ServerState::Broken:
        page->ShowBusy(QString());
        page->ShowProblem(detail);
        break;
    }
}

void SignInFlow::Enter(const QString& name)
{
    if (!session->IsEmbedded())
        settings->SetLastAccount(session->GetPin());
    if (!entered.isEmpty() && entered != session->GetPin())
        WbToast::Clear(); // what is still shown was meant for someone else
    entered = session->GetPin();
    window->ShowAccount(name);
    if (window->CurrentPage() == page)
        emit SigEntered();
}
