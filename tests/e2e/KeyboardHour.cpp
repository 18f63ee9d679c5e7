// SPDX-License-Identifier: Apache-2.0

#include "KeyboardHour.h"

#include "AccountServer.h"
#include "ToastWatcher.h"
#include "TourLook.h"

#include <RpaEditorCore/RpaSnapshotManager.h>
#include <WbBaseUI/RequestStatusBaseWidget.h>

#include <QAbstractItemView>
#include <QClipboard>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QRadioButton>
#include <QTreeView>

using namespace TourLook;

namespace
{
const QString appName = QStringLiteral("键盘应用");
const QString process = QStringLiteral("主流程");

bool HasFocus(const TourDriver::Finder& finder)
{
    const QWidget* widget = finder();
    return widget && QApplication::focusWidget() == widget;
}

bool Says(const char* label, const QString& text)
{
    const auto* shown = VisibleAs<QLabel>(label);
    return shown && shown->text() == text;
}

bool Logs(const QString& text)
{
    const auto* log = Anywhere<QAbstractItemView>("logView");
    for (int row = log ? log->model()->rowCount() - 1 : -1; row >= 0; --row)
        if (log->model()->index(row, log->model()->columnCount() - 1).data().toString().contains(text))
            return true;
    return false;
}

// On the screen, and the keyboard is in it.
bool IsDialogReady()
{
    const QWidget* dialog = QApplication::activeModalWidget();
    return dialog && dialog->isAncestorOf(QApplication::focusWidget());
}

int TableRows()
{
    const auto* table = VisibleAs<QAbstractItemView>("tableView");
    return table ? table->model()->rowCount() : -1;
}

TourDriver::Finder Button(const QString& accessibleName)
{
    return [accessibleName]() -> QWidget* {
        for (QWidget* widget : QApplication::allWidgets())
            if (widget->isVisible() && widget->accessibleName() == accessibleName &&
                qobject_cast<QPushButton*>(widget))
                return widget;
        return nullptr;
    };
}
} // namespace

KeyboardHour::KeyboardHour(TourDriver* driver, ToastWatcher* watcher) : d(driver), toasts(watcher) {}

void KeyboardHour::Run()
{
    AccountServer server;
    const bool there = server.Start({{QStringLiteral("wang"), QStringLiteral("王芳"),
                                      QStringLiteral("author"), QStringLiteral("password-of-wang")},
                                     {QStringLiteral("zhao"), QStringLiteral("赵强"), QStringLiteral("user"),
                                      QStringLiteral("password-of-zhao")}});
    if (!there) {
        d->Step(QStringLiteral("keys-server"), [&] { throw TourFailure(server.GetProblem()); });
        return;
    }
    GoToServer(server.GetAddress().toString());
    CreateApp();
    DesignPage();
    BuildProcess();
    RunProcess();
    FailAndMend();
    SaveVersions();
    Gray();
    Redeem();
    Publish();
    TakeBack();
    ReturnToOwnServer();
}

void KeyboardHour::TabTo(const QString& what, const TourDriver::Finder& finder)
{
    constexpr int most = 200;
    d->Until(what, [finder] { return finder() != nullptr; });
    for (int count = 0; !d->OnGui([finder] { return HasFocus(finder); }); ++count) {
        if (count == most)
            throw TourFailure(QStringLiteral("Tab does not come to %1").arg(what));
        d->Key(Qt::Key_Tab);
    }
}

void KeyboardHour::Rewrite(const QString& text)
{
    d->Key(Qt::Key_A, Qt::ControlModifier);
    d->Type(text);
}

void KeyboardHour::UntilToast(const QString& text)
{
    d->Until(QStringLiteral("the notice ") + text,
             [this, text] { return toasts->GetTexts().contains(text); });
}

void KeyboardHour::UntilEditor()
{
    d->Until(QStringLiteral("a loaded version"), [] {
        const RequestStatusBaseWidget* status = EditorStatus();
        return status && status->GetStatus() == RequestStatus::Succeeded && !CurrentVersion().isEmpty() &&
               !QApplication::activeModalWidget();
    });
}

void KeyboardHour::ChooseServer(bool embedded)
{
    d->Key(Qt::Key_Comma, Qt::ControlModifier);
    // Of a group of choices Tab goes to the one that is made.
    TabTo(QStringLiteral("the choice of a server"), Named(embedded ? "radioRemote" : "radioEmbedded"));
    d->Key(embedded ? Qt::Key_Up : Qt::Key_Down);
    const char* const chosen = embedded ? "radioEmbedded" : "radioRemote";
    d->Until(QStringLiteral("the choice"), [chosen] {
        const auto* radio = VisibleAs<QRadioButton>(chosen);
        return radio && radio->isChecked();
    });
}

void KeyboardHour::SignIn(const QString& account, const QString& name)
{
    TabTo(QStringLiteral("the account"), Named("editAccount"));
    Rewrite(account);
    TabTo(QStringLiteral("the password"), Named("editPassword"));
    d->Type(QStringLiteral("password-of-") + account);
    d->Key(Qt::Key_Return);
    d->Until(QStringLiteral("the list of apps of ") + name, [name] { return Says("labelAccount", name); });
}

void KeyboardHour::ChangeAccount(const QString& account, const QString& name)
{
    d->Key(Qt::Key_Comma, Qt::ControlModifier);
    TabTo(QStringLiteral("sign out"), Named("buttonSignOut"));
    d->Key(Qt::Key_Return);
    SignIn(account, name);
}

void KeyboardHour::GoToServer(const QString& address)
{
    d->Step(QStringLiteral("keys-sign-in"), [=] {
        ChooseServer(false);
        TabTo(QStringLiteral("its address"), Named("editAddress"));
        Rewrite(address);
        TabTo(QStringLiteral("use it"), Named("buttonUseServer"));
        d->Key(Qt::Key_Return);
        d->Until(QStringLiteral("the question for account and password"),
                 [] { return Visible("editPassword") != nullptr; });
        SignIn(QStringLiteral("wang"), QStringLiteral("王芳"));
    });
}

void KeyboardHour::CreateApp()
{
    d->Step(QStringLiteral("keys-app-created"), [this] {
        d->Until(QStringLiteral("a list without apps"), [] { return Visible("labelEmpty") != nullptr; });
        d->Key(Qt::Key_N, Qt::ControlModifier);
        d->Until(QStringLiteral("a field for the name"),
                 [] { return IsDialogReady() && qobject_cast<QLineEdit*>(QApplication::focusWidget()); });
        Rewrite(appName);
        d->Key(Qt::Key_Return);
        d->Until(QStringLiteral("the templates"), [] {
            return IsDialogReady() && QApplication::activeModalWidget()->inherits("RpaTemplateSelectDlg");
        });
        d->TakePicture();
        d->Key(Qt::Key_Escape);
        UntilEditor();
    });
}

void KeyboardHour::AddRecord(const char* panel, const QString& name)
{
    TabTo(QStringLiteral("add"), InPanel(panel, "recordAdd"));
    d->Key(Qt::Key_Return);
    d->Until(QStringLiteral("a field for the name"),
             [] { return qobject_cast<QLineEdit*>(QApplication::focusWidget()) != nullptr; });
    Rewrite(name);
    d->Key(Qt::Key_Return);
    d->Until(QStringLiteral("the record ") + name, [panel, name] {
        const auto* view = qobject_cast<QAbstractItemView*>(InPanel(panel, "recordView")());
        return view && view->hasFocus() && view->currentIndex().data().toString() == name;
    });
}

void KeyboardHour::ChooseProcess()
{
    for (const Qt::Key key : {Qt::Key_Right, Qt::Key_Right, Qt::Key_F2})
        d->Key(key);
    const auto choices = [] { return qobject_cast<QComboBox*>(QApplication::focusWidget()); };
    d->Until(QStringLiteral("the choices"), [choices] { return choices() != nullptr; });
    for (int count = 0; d->OnGui([choices] { return choices()->currentText(); }) != process; ++count) {
        if (count == d->OnGui([choices] { return choices()->count(); }))
            throw TourFailure(QStringLiteral("there is no process to choose"));
        d->Key(Qt::Key_Down);
    }
    d->Key(Qt::Key_Return);
    d->Until(QStringLiteral("the end of the choice"), [choices] { return choices() == nullptr; });
}

void KeyboardHour::DesignPage()
{
    d->Step(QStringLiteral("keys-page-designed"), [this] {
        d->Key(Qt::Key_1, Qt::ControlModifier);
        AddRecord("widgetToolEditor", QStringLiteral("评定"));
        ChooseProcess();
        AddRecord("widgetTableEditor", QStringLiteral("结果"));
        AddRecord("widgetTableEditor", QStringLiteral("工时"));
        d->Until(QStringLiteral("the tool"), [] { return ButtonWithText("评定") != nullptr; });
    });
}

void KeyboardHour::AddStatement(const QString& title, const std::function<void()>& fillIn)
{
    d->Key(Qt::Key_Return);
    d->Until(QStringLiteral("the search for commands"),
             [] { return Visible("lineEditQuickPick") != nullptr; });
    d->Type(title);
    d->Until(QStringLiteral("the command ") + title, [title] {
        const auto* view = VisibleAs<QAbstractItemView>("quickPickView");
        return view && view->currentIndex().data().toString() == title;
    });
    d->Key(Qt::Key_Return);
    d->Until(QStringLiteral("the statement ") + title, [title] {
        const auto* view = VisibleAs<QTreeView>("statementView");
        return view && view->hasFocus() && view->currentIndex().data().toString() == title &&
               Says("labelStatementTitle", title);
    });
    d->Key(Qt::Key_F2);
    d->Until(QStringLiteral("its first field"), [] {
        const QWidget* editor = Named("editor")();
        const QWidget* focus = QApplication::focusWidget();
        return editor && focus && (editor == focus || editor->isAncestorOf(focus));
    });
    fillIn();
    d->Key(Qt::Key_2, Qt::ControlModifier);
    TabTo(QStringLiteral("the process"), Named("statementView"));
}

void KeyboardHour::BuildProcess()
{
    d->Step(QStringLiteral("keys-process-built"), [this] {
        d->Key(Qt::Key_2, Qt::ControlModifier);
        d->Until(QStringLiteral("the process"), [] { return HasFocus(Named("statementView")); });
        AddStatement(QStringLiteral("循环列表"), [this] { Rewrite(QStringLiteral("[8, 6, 9]")); });
        AddStatement(QStringLiteral("如果"), [this] {
            d->Type(QStringLiteral("当前项"));
            TabTo(QStringLiteral("the comparison"), Named("comparisonCombo"));
            d->Key(Qt::Key_Down);
            d->Key(Qt::Key_Down);
            TabTo(QStringLiteral("the other value"), InPanel("rightValue", "valueEdit"));
            d->Type(QStringLiteral("7"));
        });
        AddStatement(QStringLiteral("表格添加一行"), [this] {
            d->Key(Qt::Key_F2);
            d->Type(QStringLiteral("达标"));
            d->Key(Qt::Key_Return);
            d->Key(Qt::Key_Down);
            d->Key(Qt::Key_F2);
            d->Type(QStringLiteral("当前项"));
            d->Key(Qt::Key_Return);
        });
    });
}

void KeyboardHour::RunUntil(const QString& line)
{
    d->Key(Qt::Key_F5);
    d->Until(
        QStringLiteral("the log line ") + line, [line] { return Logs(line); }, std::chrono::seconds(60));
    d->Until(QStringLiteral("the end of the run"), [] {
        const QWidget* versions = Visible("version_combo");
        return versions && versions->isEnabled();
    });
}

void KeyboardHour::RunProcess()
{
    d->Step(QStringLiteral("keys-run"), [this] {
        RunUntil(QStringLiteral("流程“%1”运行完成").arg(process));
        d->Key(Qt::Key_1, Qt::ControlModifier);
        d->Until(QStringLiteral("two rows"), [] { return TableRows() == 2; });
    });
}

void KeyboardHour::FailAndMend()
{
    const auto marked = [] {
        const auto* view = VisibleAs<QTreeView>("statementView");
        return view && view->currentIndex()
                           .data(Qt::AccessibleTextRole)
                           .toString()
                           .contains(QStringLiteral("有问题"));
    };
    d->Step(QStringLiteral("keys-run-fails"), [=] {
        d->Key(Qt::Key_2, Qt::ControlModifier);
        AddStatement(QStringLiteral("报错并停止"), [this] { Rewrite(QStringLiteral("还没有做完")); });
        RunUntil(QStringLiteral("流程“%1”运行失败").arg(process));
        d->Until(QStringLiteral("the mark"), marked);
    });
    d->Step(QStringLiteral("keys-mended"), [=] {
        d->UntilCalm();
        d->Key(Qt::Key_Delete);
        d->Until(QStringLiteral("no mark"), [marked] { return !marked(); });
        RunUntil(QStringLiteral("流程“%1”运行完成").arg(process));
        d->TakePicture();
    });
}

void KeyboardHour::SaveVersions()
{
    d->Step(QStringLiteral("keys-saved"), [this] {
        d->OnGui([this] { toasts->Clear(); });
        d->Key(Qt::Key_S, Qt::ControlModifier);
        UntilToast(QStringLiteral("保存成功"));
        d->Key(Qt::Key_S, Qt::ControlModifier | Qt::ShiftModifier);
        d->Until(QStringLiteral("a field for the name"), [] { return HasFocus(Named("comboBoxName")); });
        Rewrite(QStringLiteral("试用"));
        d->TakePicture();
        d->Key(Qt::Key_Return);
        d->Until(QStringLiteral("the new version"), [] {
            return CurrentVersion() == QStringLiteral("试用") && !QApplication::activeModalWidget();
        });
        UntilEditor();
    });
}

void KeyboardHour::Gray()
{
    d->Step(QStringLiteral("keys-gray"), [this] {
        d->Key(Qt::Key_G, Qt::ControlModifier | Qt::ShiftModifier);
        d->Until(QStringLiteral("the question"), IsDialogReady);
        d->Key(Qt::Key_Return);
        d->Until(QStringLiteral("an invitation code"), [] { return Visible("labelCode") != nullptr; });
        TabTo(QStringLiteral("copy"), Named("buttonCopy"));
        d->OnGui([] { QApplication::clipboard()->clear(); });
        d->Key(Qt::Key_Return);
        d->Until(QStringLiteral("the code on the clipboard"),
                 [] { return !QApplication::clipboard()->text().isEmpty(); });
        d->TakePicture();
        d->Key(Qt::Key_Escape);
        d->Until(QStringLiteral("the dialog's end"), [] { return !QApplication::activeModalWidget(); });
        d->Key(Qt::Key_W, Qt::ControlModifier);
        d->Until(QStringLiteral("the list of apps"), [] { return Visible("listApps") != nullptr; });
    });
}

void KeyboardHour::Redeem()
{
    d->Step(QStringLiteral("keys-redeemed"), [this] {
        ChangeAccount(QStringLiteral("zhao"), QStringLiteral("赵强"));
        d->Key(Qt::Key_3, Qt::ControlModifier);
        TabTo(QStringLiteral("the code"), Named("editCode"));
        d->Key(Qt::Key_V, Qt::ControlModifier);
        d->Key(Qt::Key_Return);
        d->Until(QStringLiteral("the gray app"), [] { return CardNamed("listReleased", appName).isValid(); });
        d->TakePicture();
    });
    d->Step(QStringLiteral("keys-gray-app-runs"), [this] {
        TabTo(QStringLiteral("the apps"), Named("listReleased"));
        d->Key(Qt::Key_Return);
        d->Until(QStringLiteral("the app"), [] { return ButtonWithText("评定") != nullptr; });
        d->Key(Qt::Key_F5);
        d->Until(QStringLiteral("two rows and the end of the run"),
                 [] { return TableRows() == 2 && Says("labelRun", QStringLiteral("运行结束")); });
        d->TakePicture();
        d->Key(Qt::Key_W, Qt::ControlModifier);
    });
}

void KeyboardHour::Publish()
{
    d->Step(QStringLiteral("keys-published"), [this] {
        ChangeAccount(QStringLiteral("wang"), QStringLiteral("王芳"));
        d->Until(QStringLiteral("the app"), [] { return CardNamed("listApps", appName).isValid(); });
        TabTo(QStringLiteral("the apps"), Named("listApps"));
        d->Key(Qt::Key_Return);
        UntilEditor();
        d->Key(Qt::Key_L, Qt::ControlModifier | Qt::ShiftModifier);
        d->Until(QStringLiteral("the versions"), [] { return Visible("VersionComboBoxView") != nullptr; });
        d->TakePicture();
        d->Key(Qt::Key_Escape);
        d->Until(QStringLiteral("the end of the list"), [] { return !QApplication::activePopupWidget(); });
        d->OnGui([this] { toasts->Clear(); });
        d->Key(Qt::Key_O, Qt::ControlModifier | Qt::ShiftModifier);
        d->Until(QStringLiteral("the question"), IsDialogReady);
        d->Key(Qt::Key_Return);
        UntilToast(QStringLiteral("“%1”已上线").arg(appName));
        UntilEditor();
        d->TakePicture();
    });
}

void KeyboardHour::TakeBack()
{
    d->Step(QStringLiteral("keys-taken-back"), [this] {
        d->Key(Qt::Key_W, Qt::ControlModifier);
        d->Until(QStringLiteral("the list of apps"), [] { return HasFocus(Named("listApps")); });
        d->PressOnDisplay(QStringLiteral("Menu"));
        d->Until(QStringLiteral("the card's menu"),
                 [] { return QApplication::activePopupWidget() != nullptr; });
        const auto chosen = [] {
            const auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
            return menu && menu->activeAction() ? menu->activeAction()->text() : QString();
        };
        constexpr int most = 20;
        for (int count = 0; count < most && d->OnGui(chosen) != QStringLiteral("发布管理…"); ++count)
            d->Key(Qt::Key_Down);
        d->Key(Qt::Key_Return);
        TabTo(QStringLiteral("take back"), Button(QStringLiteral("下线…试用")));
        d->Key(Qt::Key_Return);
        TabTo(QStringLiteral("the reason"), Named("editReason"));
        d->Type(QStringLiteral("合计不对"));
        d->TakePicture();
        d->Key(Qt::Key_Return);
        d->Until(QStringLiteral("nothing online"),
                 [] { return Says("labelOnline", QStringLiteral("线上：使用者现在没有线上版本")); });
        d->Key(Qt::Key_Escape);
        d->Until(QStringLiteral("the dialog's end"), [] { return !QApplication::activeModalWidget(); });
    });
}

void KeyboardHour::ReturnToOwnServer()
{
    d->Step(QStringLiteral("keys-own-server-again"), [this] {
        d->UntilCalm();
        ChooseServer(true);
        TabTo(QStringLiteral("use it"), Named("buttonUseServer"));
        d->Key(Qt::Key_Return);
        d->Until(QStringLiteral("a server that is ready"), [] {
            const QWidget* enter = Visible("buttonEnter");
            return enter && enter->isEnabled();
        });
        TabTo(QStringLiteral("enter"), Named("buttonEnter"));
        d->Key(Qt::Key_Return);
        d->Until(QStringLiteral("a sample app in the list"), [] { return SampleCard(0).isValid(); });
    });
}
