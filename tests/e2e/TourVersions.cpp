// SPDX-License-Identifier: Apache-2.0

#include "ToastWatcher.h"
#include "Tour.h"
#include "TourLook.h"

#include <QApplication>
#include <QLabel>
#include <QListWidget>
#include <QTextEdit>

// Saving, and the drop-down of versions.

using namespace TourLook;

void Tour::Save()
{
    d->Step(QStringLiteral("save"), [this] {
        d->OnGui([this] { toasts->Clear(); });
        d->Click(QStringLiteral("save"), Named("pushButtonSave"));
        UntilToast(QStringLiteral("保存成功"));
    });
    d->Step(QStringLiteral("save-as-dialog"), [this] {
        d->UntilCalm();
        d->Click(QStringLiteral("save as"), Named("pushButtonSaveAs"));
        d->Until(QStringLiteral("the dialog"), [] { return Visible("comboBoxName") != nullptr; });
        d->Click(QStringLiteral("name"), Named("comboBoxName"));
        d->Type(QStringLiteral("评审版"));
        d->Click(QStringLiteral("description"), Named("plainTextEdit"));
        d->Type(QStringLiteral("供同事评审的版本"));
    });
    d->Step(QStringLiteral("save-as-new-name"), [this] {
        d->Click(QStringLiteral("OK"), Named("pushButtonOK"));
        UntilCurrent(QStringLiteral("评审版"));
    });
    d->Step(QStringLiteral("save-as-overwrite"), [this] {
        EditInstructions(QStringLiteral("再改一行。"));
        d->Click(QStringLiteral("save as"), Named("pushButtonSaveAs"));
        d->Until(QStringLiteral("the dialog"), [] { return Visible("comboBoxName") != nullptr; });
        d->Click(QStringLiteral("name"), Named("comboBoxName"));
        d->Type(QStringLiteral("评审版"));
        d->Until(QStringLiteral("the description of the version to overwrite"), [] {
            auto* description = VisibleAs<QTextEdit>("plainTextEdit");
            return description && description->toPlainText() == QStringLiteral("供同事评审的版本");
        });
        d->TakePicture();
        d->Click(QStringLiteral("OK"), Named("pushButtonOK"));
        d->Until(QStringLiteral("the dialog's end"), [] { return !Visible("comboBoxName"); });
        UntilCurrent(QStringLiteral("评审版"));
    });
}

void Tour::UseDropDown()
{
    d->Step(QStringLiteral("drop-down"), [this] {
        d->UntilCalm();
        OpenDropDown();
        d->Until(QStringLiteral("rows of every state"),
                 [] { return RowOf(QStringLiteral("评审版")) >= 0 && VersionList()->count() >= 5; });
    });
    d->Step(QStringLiteral("drop-down-delete-on-hover"), [this] {
        HoverRow(QStringLiteral("评审版"));
        d->TakePicture();
        d->Key(Qt::Key_Escape);
        d->Until(QStringLiteral("the drop-down's end"), [] { return VersionList() == nullptr; });
    });
}

void Tour::SeeVersionDetails()
{
    d->Step(QStringLiteral("version-details"), [this] {
        d->Click(QStringLiteral("details"), Named("buttonVersions"));
        d->Until(QStringLiteral("who saved the version"), [] {
            const auto* list = VisibleAs<QListWidget>("listVersions");
            const auto* save = VisibleAs<QLabel>("labelVersionSave");
            return list && list->count() >= 5 && save && save->text().contains(QStringLiteral("本机作者"));
        });
        d->TakePicture();
        d->Key(Qt::Key_Escape);
        d->Until(QStringLiteral("the dialog's end"), [] { return !QApplication::activeModalWidget(); });
    });
}

void Tour::SwitchVersions()
{
    const QString question = QStringLiteral("版本数据已修改，是否先保存当前版本？");
    const QString other = QStringLiteral("开发版一");
    d->Step(QStringLiteral("switch-cancel"), [=] {
        EditInstructions(QStringLiteral("还没有保存。"));
        OpenDropDown();
        PressRow(other);
        UntilBox(question);
        d->TakePicture();
        d->Click(QStringLiteral("cancel"), TourDriver::DialogButton(QStringLiteral("取消")));
        UntilCurrent(QStringLiteral("评审版"));
    });
    d->Step(QStringLiteral("switch-yes"), [=] {
        d->OnGui([this] { toasts->Clear(); });
        OpenDropDown();
        PressRow(other);
        UntilBox(question);
        d->Click(QStringLiteral("yes"), TourDriver::DialogButton(QStringLiteral("是")));
        UntilToast(QStringLiteral("保存成功"));
        UntilCurrent(other);
        UntilLoaded();
    });
    d->Step(QStringLiteral("switch-no"), [=] {
        EditInstructions(QStringLiteral("这一行不保存。"));
        OpenDropDown();
        PressRow(QStringLiteral("评审版"));
        UntilBox(question);
        d->Click(QStringLiteral("no"), TourDriver::DialogButton(QStringLiteral("否")));
        UntilCurrent(QStringLiteral("评审版"));
        d->Until(QStringLiteral("the saved text"), [] {
            QTextEdit* edit = InstructionsEdit();
            return edit && edit->toPlainText().contains(QStringLiteral("还没有保存。")) &&
                   !edit->toPlainText().contains(QStringLiteral("这一行不保存。"));
        });
    });
}

void Tour::DeleteVersions()
{
    d->Step(QStringLiteral("delete-version"), [this] { DeleteVersion(QStringLiteral("评审版")); });
    d->Step(QStringLiteral("delete-last-develop-version"), [this] {
        DeleteVersion(QStringLiteral("开发版二"));
        PressDelete(QStringLiteral("开发版一"));
        UntilBox(QStringLiteral("至少需保留一个开发中版本"));
        d->TakePicture();
        d->Key(Qt::Key_Escape);
        d->Until(QStringLiteral("the box's end"), [] { return !QApplication::activeModalWidget(); });
    });
}
