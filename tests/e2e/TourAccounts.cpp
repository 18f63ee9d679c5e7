// SPDX-License-Identifier: Apache-2.0

#include "AccountServer.h"
#include "AppListModel.h"
#include "MainWindow.h"
#include "Tour.h"
#include "TourLook.h"
#include "Workstation.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListView>

// Servers and accounts, and the buttons that the editor offers to each of them.

using namespace TourLook;

namespace
{
const char* const editorButtons[] = {"pushButtonSave", "pushButtonSaveAs", "pushButtonBeta",
                                     "pushButtonPublish", "pushButtonExportAppData"};

QString OfferedButtons()
{
    QStringList texts;
    for (const char* name : editorButtons)
        if (const QWidget* button = Visible(name))
            texts.append(button->property("text").toString());
    return texts.join(QLatin1Char(' '));
}

bool ShowsAccount(const QString& name)
{
    const auto* account = VisibleAs<QLabel>("labelAccount");
    return account && account->text() == name;
}
} // namespace

void Tour::UseTheme(ThemeChoice theme)
{
    d->OnGui([this, theme] { workstation->GetSettings()->SetTheme(theme); });
}

void Tour::SeeInTheDark(const QString& step)
{
    d->Step(step, [this] {
        UseTheme(ThemeChoice::Dark);
        d->TakePicture();
        UseTheme(usualTheme);
    });
}

void Tour::UntilOffered(const QString& buttons)
{
    d->Until(QStringLiteral("the buttons ") + buttons, [buttons] { return OfferedButtons() == buttons; });
}

void Tour::SwitchSuperAdministrator()
{
    d->Click(QStringLiteral("settings"), Named("buttonSettings"));
    d->Click(QStringLiteral("super administrator"), Named("checkSuperAdmin"));
    d->Click(QStringLiteral("back"), Named("buttonBack"));
}

void Tour::SeeCreatorsButtons()
{
    d->Step(QStringLiteral("buttons-of-the-creator"),
            [this] { UntilOffered(QStringLiteral("保存 另存为 灰度 上线")); });
}

void Tour::SeeSuperAdministratorsButtons()
{
    d->Step(QStringLiteral("buttons-of-the-creator-as-super-administrator"), [this] {
        BackToList();
        SwitchSuperAdministrator();
        OpenApp(AppKindVisual);
        UntilLoaded();
        UntilOffered(QStringLiteral("保存 另存为 灰度 上线 生成模板"));
    });
}

void Tour::SeeColleaguesButtons()
{
    d->Step(QStringLiteral("buttons-of-a-colleague-as-super-administrator"), [this] {
        GiveFocus("comboAccount");
        d->Key(Qt::Key_End);
        d->Until(QStringLiteral("the colleague"), [] { return ShowsAccount(QStringLiteral("本机同事")); });
        d->Click(QStringLiteral("back"), Named("buttonBack"));
        OpenApp(AppKindVisual);
        UntilLoaded();
        UntilOffered(QStringLiteral("保存 另存为 生成模板"));
    });
    d->Step(QStringLiteral("buttons-of-a-colleague"), [this] {
        BackToList();
        SwitchSuperAdministrator();
        OpenApp(AppKindVisual);
        UntilLoaded();
        UntilOffered(QStringLiteral("保存 另存为"));
    });
    d->Step(QStringLiteral("creator-again"), [this] {
        BackToList();
        d->Click(QStringLiteral("settings"), Named("buttonSettings"));
        GiveFocus("comboAccount");
        d->Key(Qt::Key_Home);
        d->Until(QStringLiteral("the author"), [] { return ShowsAccount(QStringLiteral("本机作者")); });
    });
    d->Step(QStringLiteral("usage-counts"), [this] {
        // The button may stand below the edge of the page.
        GiveFocus("buttonUsageCounts");
        d->Key(Qt::Key_Space);
        d->Until(QStringLiteral("a save and a run"), [] {
            QString days;
            if (const QWidget* dialog = Visible("UsageDialog"))
                for (const auto* day : dialog->findChildren<QLabel*>(QStringLiteral("labelDay")))
                    days += day->text();
            return days.contains(QStringLiteral("保存 ")) && days.contains(QStringLiteral("运行 "));
        });
        d->TakePicture();
        d->Click(QStringLiteral("done"), Named("buttonClose"));
    });
}

void Tour::SignIn(const QString& account, const QString& password)
{
    d->Until(QStringLiteral("the question for account and password"),
             [] { return Visible("editPassword") != nullptr; });
    d->Click(QStringLiteral("account"), Named("editAccount"));
    d->Key(Qt::Key_A, Qt::ControlModifier);
    d->Type(account);
    d->Key(Qt::Key_Return);
    d->Type(password);
    d->Key(Qt::Key_Return);
}

void Tour::GoToServer(const QString& address)
{
    d->Step(QStringLiteral("server-settings"), [=] {
        d->UntilCalm();
        BackToList();
        d->Click(QStringLiteral("settings"), Named("buttonSettings"));
        d->Click(QStringLiteral("another server"), Named("radioRemote"));
        d->Click(QStringLiteral("its address"), Named("editAddress"));
        d->Key(Qt::Key_A, Qt::ControlModifier);
        d->Type(address);
        d->Until(QStringLiteral("an address that can be used"), [] {
            const QWidget* use = Visible("buttonUseServer");
            return use && use->isEnabled();
        });
        d->TakePicture();
        d->Click(QStringLiteral("use it"), Named("buttonUseServer"));
        d->Until(QStringLiteral("a question without an account of the server left"), [] {
            const auto* account = VisibleAs<QLineEdit>("editAccount");
            return account && account->text().isEmpty();
        });
    });
    d->Step(QStringLiteral("sign-in-refused"), [this] {
        SignIn(QStringLiteral("zhang"), QStringLiteral("not-the-password"));
        d->Until(QStringLiteral("the reason"), [] {
            const auto* state = VisibleAs<QLabel>("labelState");
            return state && state->text() == QStringLiteral("账号或密码不正确。");
        });
    });
    d->Step(QStringLiteral("sign-in-with-a-password"), [this] {
        SignIn(QStringLiteral("zhang"), QStringLiteral("password-of-zhang"));
        d->Until(QStringLiteral("a list without apps"),
                 [] { return Visible("labelEmpty") && ShowsAccount(QStringLiteral("张三")); });
    });
}

void Tour::ChangeAccount()
{
    d->Step(QStringLiteral("account-of-the-server"), [this] {
        d->UntilCalm();
        d->Click(QStringLiteral("settings"), Named("buttonSettings"));
        d->Until(QStringLiteral("who is signed in"), [] {
            const auto* name = VisibleAs<QLabel>("labelSignedIn");
            return name && name->text() == QStringLiteral("张三");
        });
    });
    d->Step(QStringLiteral("signed-out"), [this] {
        d->Click(QStringLiteral("sign out"), Named("buttonSignOut"));
        d->Until(QStringLiteral("the account that was used last"), [] {
            const auto* account = VisibleAs<QLineEdit>("editAccount");
            const auto* state = VisibleAs<QLabel>("labelState");
            return account && account->text() == QStringLiteral("zhang") && !Visible("labelAccount") &&
                   (!state || state->text().isEmpty());
        });
    });
    d->Step(QStringLiteral("sign-in-as-a-user"), [this] {
        SignIn(QStringLiteral("li"), QStringLiteral("password-of-li"));
        d->Until(QStringLiteral("a list without apps"),
                 [] { return Visible("labelEmpty") && ShowsAccount(QStringLiteral("李娜")); });
    });
}

void Tour::ReturnToOwnServer()
{
    d->Step(QStringLiteral("own-server-again"), [this] {
        d->UntilCalm();
        d->Click(QStringLiteral("settings"), Named("buttonSettings"));
        d->Click(QStringLiteral("the own server"), Named("radioEmbedded"));
        d->Click(QStringLiteral("use it"), Named("buttonUseServer"));
        d->Click(QStringLiteral("enter"), Named("buttonEnter"));
        OpenApp(AppKindVisual);
        UntilLoaded();
    });
}

void Tour::VisitServer()
{
    AccountServer server;
    const bool there = server.Start({{QStringLiteral("zhang"), QStringLiteral("张三"),
                                      QStringLiteral("author"), QStringLiteral("password-of-zhang")},
                                     {QStringLiteral("li"), QStringLiteral("李娜"), QStringLiteral("user"),
                                      QStringLiteral("password-of-li")}});
    if (!there) {
        d->Step(QStringLiteral("server-with-accounts"), [&] { throw TourFailure(server.GetProblem()); });
        return;
    }
    GoToServer(server.GetAddress().toString());
    StartFromShippedTemplate();
    StartFromOwnTemplate();
    PublishDevelopVersion();
    ReleaseGrayVersion();
    PublishGrayVersion();
    TakeBackVersions();
    ChangeAccount();
    UseOnlineApp();
    UseGrayApp();
    ReturnToOwnServer();
}
