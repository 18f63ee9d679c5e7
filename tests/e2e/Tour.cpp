// SPDX-License-Identifier: Apache-2.0

#include "Tour.h"

#include "AppListModel.h"
#include "KeyboardHour.h"
#include "MainWindow.h"
#include "OtherClient.h"
#include "ServerStatusIndicator.h"
#include "Session.h"
#include "ToastWatcher.h"
#include "TourLook.h"
#include "Workstation.h"

#include <RpaCore/RpaAppSnapshot.h>
#include <RpaEditorCore/RpaSnapshotManager.h>
#include <RpaEditorLogic/RpaEditorLogic.h>
#include <RpaServiceClient/VersionServiceSettings.h>
#include <WbBaseUI/RequestStatusBaseWidget.h>
#include <WbBaseUI/WbTheme.h>

#include <QAbstractButton>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QListWidget>
#include <QStackedWidget>
#include <QTextEdit>

#include <csignal>

using namespace TourLook;

Tour::Tour(Workstation* host, TourDriver* driver, ToastWatcher* watcher)
    : workstation(host), d(driver), toasts(watcher), usualTheme(host->GetSettings()->GetTheme())
{
}

void Tour::Run()
{
    Arrive();
    OpenVisualApp();
    SeeCreatorsButtons();
    WalkThroughPages();
    Save();
    UseDropDown();
    SeeVersionDetails();
    SwitchVersions();
    DeleteVersions();
    FoldBrowser();
    DesignPages();
    DesignContent();
    BuildProcess();
    MeetRefusals();
    RunProcesses();
    SeeRunHistory();
    MoveBrowser();
    CaptureElements();
    RunWithPackages();
    LoseServer();
    MeetNewerData();
    SeeSuperAdministratorsButtons();
    ExportTemplate();
    VisitServer();
    LookAround();
    LookInTheDark();
    WorkByKeyboard();
    Leave();
}

void Tour::RunByKeyboard()
{
    Arrive();
    OpenVisualApp();
    WorkByKeyboard();
    Leave();
}

void Tour::WorkByKeyboard()
{
    d->Step(QStringLiteral("keys-back-to-list"), [this] {
        d->UntilCalm();
        d->Key(Qt::Key_W, Qt::ControlModifier);
        d->Until(QStringLiteral("the list of apps"), [] { return Visible("listApps") != nullptr; });
    });
    KeyboardHour(d, toasts).Run();
    d->Step(QStringLiteral("app-opened-for-the-last-time"), [this] {
        OpenApp(AppKindVisual);
        UntilLoaded();
    });
}

void Tour::Arrive()
{
    d->Step(QStringLiteral("start"), [this] {
        d->Until(QStringLiteral("the server is ready"), [] {
            QWidget* enter = Visible("buttonEnter");
            return enter && enter->isEnabled();
        });
    });
    d->Step(QStringLiteral("sign-in"), [this] {
        d->Click(QStringLiteral("enter"), Named("buttonEnter"));
        d->Until(
            QStringLiteral("the list of apps"), [] { return Visible("listApps") != nullptr; },
            std::chrono::seconds(60));
    });
    d->Step(QStringLiteral("app-list"), [this] {
        d->Until(QStringLiteral("two sample apps"), [] {
            auto* list = VisibleAs<QListView>("listApps");
            return list && list->model()->rowCount() == 2;
        });
    });
    d->Step(QStringLiteral("search-without-a-hit"), [this] {
        d->Click(QStringLiteral("search"), Named("editSearch"));
        d->Type(QStringLiteral("没有这个应用"));
        d->Until(QStringLiteral("the empty state"), [] { return Visible("labelEmpty") != nullptr; });
        d->TakePicture();
        d->Key(Qt::Key_A, Qt::ControlModifier);
        d->Key(Qt::Key_Delete);
        d->Until(QStringLiteral("the list again"), [] { return Visible("listApps") != nullptr; });
    });
}

void Tour::OpenVisualApp()
{
    d->Step(QStringLiteral("open-app-loading"), [this] {
        // A server that hesitates keeps the overlay on the screen for as long as it takes to look at it.
        const auto server = pid_t(
            d->OnGui([this] { return workstation->GetSession()->GetEmbeddedServer()->GetProcessId(); }));
        ::kill(server, SIGSTOP);
        try {
            OpenApp(AppKindVisual);
            d->Until(QStringLiteral("the loading overlay"), [] {
                RequestStatusBaseWidget* status = EditorStatus();
                return status && status->isVisible() && status->GetStatus() == RequestStatus::Loading;
            });
            d->TakePicture();
        } catch (...) {
            ::kill(server, SIGCONT);
            throw;
        }
        ::kill(server, SIGCONT);
    });
    d->Step(QStringLiteral("open-app"), [this] {
        UntilLoaded();
        d->Until(QStringLiteral("the app's name"), [] {
            auto* name = VisibleAs<QLabel>("labelName");
            return name && !name->text().isEmpty();
        });
    });
}

void Tour::WalkThroughPages()
{
    d->Step(QStringLiteral("page-process"), [this] {
        GoToPage("pushButtonProcess");
        d->Until(QStringLiteral("the process page"), [] { return Visible("pageProcess") != nullptr; });
    });
    d->Step(QStringLiteral("page-instructions"), [this] {
        GoToPage("pushButtonExtend");
        d->Until(QStringLiteral("the instructions page"),
                 [] { return Visible("pageExtendInfo") != nullptr; });
    });
    d->Step(QStringLiteral("page-ui-design"), [this] {
        GoToPage("pushButtonUI");
        d->Until(QStringLiteral("the UI design page"), [] { return Visible("pageUIDesign") != nullptr; });
    });
    d->Step(QStringLiteral("run-process"), [this] {
        d->Click(QStringLiteral("the tool"), [] { return ButtonWithText("开始汇总"); });
        UntilResult(QStringLiteral("共 5 张，合计 33580.50 元"));
    });
    d->Step(QStringLiteral("edit-instructions"),
            [this] { EditInstructions(QStringLiteral("导览者补充的一行说明。")); });
}

void Tour::LoseServer()
{
    d->Step(QStringLiteral("server-stopped"), [this] {
        d->UntilCalm();
        BackToList();
        d->OnGui([this] { workstation->GetSession()->GetEmbeddedServer()->Stop(); });
        OpenApp(AppKindVisual);
        d->Until(
            QStringLiteral("the failed overlay"),
            [] {
                RequestStatusBaseWidget* status = EditorStatus();
                return status && status->isVisible() && status->GetStatus() == RequestStatus::Failed;
            },
            std::chrono::seconds(90));
    });
    d->Step(QStringLiteral("refresh-after-restart"), [this] {
        d->OnGui([this] { workstation->GetSession()->GetEmbeddedServer()->Start(); });
        d->Until(QStringLiteral("the server is back"), [this] {
            return workstation->GetWindow()->GetServerStatusIndicator()->GetState() == ServerState::Connected;
        });
        d->Click(QStringLiteral("refresh"), []() -> QWidget* {
            RequestStatusBaseWidget* status = EditorStatus();
            for (auto* button :
                 status ? status->findChildren<QAbstractButton*>() : QList<QAbstractButton*>()) {
                if (button->isVisible()) {
                    return button;
                }
            }
            return nullptr;
        });
        UntilLoaded();
    });
    d->Step(QStringLiteral("server-crash"), [this] {
        d->OnGui([this] {
            toasts->Clear();
            ::kill(pid_t(workstation->GetSession()->GetEmbeddedServer()->GetProcessId()), SIGKILL);
        });
        UntilToast(QStringLiteral("版本服务意外停止，正在重新启动"));
        d->TakePicture();
        d->Until(QStringLiteral("the server is back"), [this] {
            return workstation->GetWindow()->GetServerStatusIndicator()->GetState() == ServerState::Connected;
        });
        EditInstructions(QStringLiteral("重启之后保存。"));
        d->Click(QStringLiteral("save"), Named("pushButtonSave"));
        UntilToast(QStringLiteral("保存成功"));
    });
}

void Tour::MeetNewerData()
{
    const QString newer = QStringLiteral("新客户端的版本");
    const QString older = QStringLiteral("开发版一");
    d->Step(QStringLiteral("data-of-a-newer-client"), [=] {
        d->Click(QStringLiteral("save as"), Named("pushButtonSaveAs"));
        d->Click(QStringLiteral("name"), Named("comboBoxName"));
        d->Type(newer);
        d->Click(QStringLiteral("OK"), Named("pushButtonOK"));
        UntilCurrent(newer);
        const QString versionId = d->OnGui([=] {
            RpaSnapshotManager* versions = RpaEditorLogic::Instance()->GetDevSnapshotManager();
            for (int i = 0; i < versions->GetCount(); ++i)
                if (versions->GetSnapshot(i)->GetName() == newer)
                    return versions->GetSnapshotId(i);
            return QString();
        });
        OpenDropDown();
        PressRow(older);
        UntilCurrent(older);
        UntilLoaded();

        const auto [address, token, appId] = d->OnGui([=] {
            return std::make_tuple(
                VersionServiceSettings::Instance()->GetBaseUrl(),
                VersionServiceSettings::Instance()->GetToken(),
                RpaEditorLogic::Instance()->GetDevSnapshotManager()->GetSnapshot(0)->GetAppId());
        });
        OtherClient other(address, token);
        if (!other.OverwriteAs(appId, versionId, QStringLiteral("9.0.0")))
            throw TourFailure(other.GetProblem());

        d->UntilCalm();
        d->OnGui([this] { toasts->Clear(); });
        OpenDropDown();
        PressRow(newer);
        UntilToast(QStringLiteral("当前版本过低，请更新为最新版本"));
        d->TakePicture();
        UntilLoaded();
        UntilCurrent(older);
        DeleteVersion(newer);
    });
}

void Tour::LookAround()
{
    d->Step(QStringLiteral("close-guard-back-to-list-no"), [this] {
        EditInstructions(QStringLiteral("这一行不要了。"));
        d->Click(QStringLiteral("back"), Named("buttonBack"));
        UntilBox(QStringLiteral("应用已经修改，是否保存？"));
        d->Click(QStringLiteral("no"), TourDriver::DialogButton(QStringLiteral("否")));
        d->Until(QStringLiteral("the list of apps"), [] { return Visible("listApps") != nullptr; });
    });
    MoveApps();
    d->Step(QStringLiteral("program-app"), [this] {
        OpenApp(AppKindProgram);
        UntilLoaded();
        GoToPage("pushButtonProcess");
        d->UntilCalm();
        d->TakePicture();
    });
    d->Step(QStringLiteral("run-program"), [this] {
        GoToPage("pushButtonUI");
        d->Click(QStringLiteral("the tool"), [] { return ButtonWithText("检查库存"); });
        UntilResult(QStringLiteral("共 5 种商品，3 种需要补货"));
        d->TakePicture();
    });
    UsePackages();
    d->Step(QStringLiteral("settings"), [this] {
        d->UntilCalm();
        d->Click(QStringLiteral("settings"), Named("buttonSettings"));
        d->Until(QStringLiteral("the settings"), [] { return Visible("comboTheme") != nullptr; });
    });
    ScrollSettings();
    d->Step(QStringLiteral("about"), [this] {
        // The button may stand below the edge of the page.
        GiveFocus("buttonAbout");
        d->Key(Qt::Key_Space);
        d->Until(QStringLiteral("the about box"), [] { return Visible("buttonCloseAbout") != nullptr; });
        d->TakePicture();
        d->Click(QStringLiteral("close"), Named("buttonCloseAbout"));
        d->Until(QStringLiteral("the box's end"), [] { return !QApplication::activeModalWidget(); });
    });
    SeeColleaguesButtons();
    d->Step(QStringLiteral("settings-dark"), [this] {
        GiveFocus("comboTheme");
        d->Key(Qt::Key_End);
        d->Until(QStringLiteral("the dark scheme"),
                 [] { return WbTheme::Instance()->GetScheme() == WbTheme::Scheme::Dark; });
    });
    d->Step(QStringLiteral("app-list-dark"), [this] {
        d->Click(QStringLiteral("back"), Named("buttonBack"));
        d->Until(QStringLiteral("the list of apps"), [] { return Visible("listApps") != nullptr; });
    });
    d->Step(QStringLiteral("page-ui-design-dark"), [this] {
        OpenApp(AppKindVisual);
        UntilLoaded();
    });
    d->Step(QStringLiteral("page-process-dark"), [this] { GoToPage("pushButtonProcess"); });
    d->Step(QStringLiteral("page-instructions-dark"), [this] { GoToPage("pushButtonExtend"); });
    d->Step(QStringLiteral("drop-down-dark"), [this] {
        OpenDropDown();
        HoverRow(QStringLiteral("开发版一"));
        d->TakePicture();
        d->Key(Qt::Key_Escape);
    });
    d->Step(QStringLiteral("save-as-dialog-dark"), [this] {
        d->Click(QStringLiteral("save as"), Named("pushButtonSaveAs"));
        d->Until(QStringLiteral("the dialog"), [] { return Visible("comboBoxName") != nullptr; });
        d->TakePicture();
        d->Click(QStringLiteral("cancel"), Named("pushButtonCancel"));
        d->Until(QStringLiteral("the dialog's end"), [] { return !Visible("comboBoxName"); });
    });
}

void Tour::Leave()
{
    const QString question = QStringLiteral("应用已经修改，是否保存？");
    const auto closeWindow = [this] {
        QMetaObject::invokeMethod(workstation->GetWindow(), &QWidget::close, Qt::QueuedConnection);
    };
    d->Step(QStringLiteral("close-guard-cancel"), [=] {
        EditInstructions(QStringLiteral("最后一行。"));
        closeWindow();
        UntilBox(question);
        d->TakePicture();
        d->Click(QStringLiteral("cancel"), TourDriver::DialogButton(QStringLiteral("取消")));
        d->Until(QStringLiteral("the window stays"), [this] {
            return workstation->GetWindow()->isVisible() && !QApplication::activeModalWidget();
        });
    });
    d->Step(QStringLiteral("close-guard-yes"), [=] {
        const qint64 server =
            d->OnGui([this] { return workstation->GetSession()->GetEmbeddedServer()->GetProcessId(); });
        closeWindow();
        UntilBox(question);
        d->TakePicture();
        d->OnGui([this] { toasts->Clear(); });
        d->Click(QStringLiteral("yes"), TourDriver::DialogButton(QStringLiteral("是")));
        d->Until(QStringLiteral("the window has closed"),
                 [this] { return !workstation->GetWindow()->isVisible(); });
        if (!d->OnGui([this] { return toasts->GetTexts().contains(QStringLiteral("保存成功")); })) {
            throw TourFailure(QStringLiteral("the work was not saved before the window closed"));
        }
        if (::kill(pid_t(server), 0) == 0) {
            throw TourFailure(QStringLiteral("the embedded server outlived the workstation"));
        }
    });
}
