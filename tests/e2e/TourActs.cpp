// SPDX-License-Identifier: Apache-2.0

#include "AppListModel.h"
#include "ToastWatcher.h"
#include "Tour.h"
#include "TourLook.h"

#include <RpaCore/RpaAppSnapshot.h>
#include <RpaEditorCore/RpaSnapshotManager.h>
#include <RpaEditorLogic/RpaEditorLogic.h>
#include <WbBaseUI/ElidedLabelEx.h>
#include <WbBaseUI/RequestStatusBaseWidget.h>

#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QListWidget>
#include <QTextEdit>

// What the guest does again and again, and the states that the guest waits for.

using namespace TourLook;

void Tour::OpenApp(int kind)
{
    d->Until(QStringLiteral("a sample app in the list"), [kind] { return SampleCard(kind).isValid(); });
    d->ClickAt(QStringLiteral("the sample"), Named("listApps"), [kind](QWidget* widget) {
        auto* list = qobject_cast<QListView*>(widget);
        return list->viewport()->mapTo(list, list->visualRect(SampleCard(kind)).center());
    });
    d->Until(QStringLiteral("the editor's page"), [] { return Visible("RpaAppEditorWidget") != nullptr; });
}

void Tour::GoToPage(const char* button)
{
    d->Click(QLatin1String(button), Named(button));
}

void Tour::GiveFocus(const char* objectName)
{
    d->Until(QLatin1String(objectName), [objectName] {
        auto* widget = Anywhere<QWidget>(objectName);
        if (!widget || !widget->isVisible() || !widget->isEnabled())
            return false;
        widget->setFocus();
        return widget->hasFocus();
    });
}

void Tour::EditInstructions(const QString& text)
{
    GoToPage("pushButtonExtend");
    d->Click(QStringLiteral("the instructions"), []() -> QWidget* { return InstructionsEdit(); });
    d->Key(Qt::Key_End, Qt::ControlModifier);
    d->Key(Qt::Key_Return);
    d->Type(text);
    d->Until(QStringLiteral("the typed text"), [text] {
        QTextEdit* edit = InstructionsEdit();
        return edit && edit->toPlainText().contains(text);
    });
}

void Tour::OpenDropDown()
{
    // A press within a moment of the popup's end counts as the one that closed it; a guest then presses
    // again.
    d->ClickUntil(QStringLiteral("the version drop-down"), Named("version_combo"),
                  [] { return VersionList() != nullptr; });
}

void Tour::PressRow(const QString& name)
{
    d->ClickAt(QStringLiteral("the version ") + name, Named("VersionComboBoxView"), [name](QWidget* widget) {
        auto* list = qobject_cast<QListWidget*>(widget);
        const int row = RowOf(name);
        return row < 0 ? QPoint(-1, -1)
                       : list->viewport()->mapTo(list, list->visualItemRect(list->item(row)).center());
    });
}

void Tour::HoverRow(const QString& name)
{
    d->Hover(QStringLiteral("the version ") + name, [name]() -> QWidget* {
        const int row = RowOf(name);
        return row < 0 ? nullptr : VersionList()->itemWidget(VersionList()->item(row));
    });
    d->Until(QStringLiteral("the row's delete button"), [name] {
        QWidget* item = VersionList()->itemWidget(VersionList()->item(RowOf(name)));
        auto* button = item->findChild<QWidget*>(QStringLiteral("rpa_version_combo_delete"));
        return button && button->isVisible();
    });
}

void Tour::PressDelete(const QString& name)
{
    OpenDropDown();
    HoverRow(name);
    d->Click(QStringLiteral("delete"), [name]() -> QWidget* {
        const int row = RowOf(name);
        QWidget* item = row < 0 ? nullptr : VersionList()->itemWidget(VersionList()->item(row));
        return item ? item->findChild<QWidget*>(QStringLiteral("rpa_version_combo_delete")) : nullptr;
    });
}

void Tour::DeleteVersion(const QString& name)
{
    PressDelete(name);
    UntilBox(QStringLiteral("确定要删除名称为%1的版本吗？").arg(name));
    d->TakePicture();
    d->Click(QStringLiteral("yes"), TourDriver::DialogButton(QStringLiteral("是")));
    d->Until(QStringLiteral("the version is gone"), [name] {
        RpaSnapshotManager* versions = RpaEditorLogic::Instance()->GetDevSnapshotManager();
        for (int i = 0; i < versions->GetCount(); ++i)
            if (versions->GetSnapshot(i)->GetName() == name)
                return false;
        return true;
    });
    UntilLoaded();
}

void Tour::BackToList()
{
    d->Click(QStringLiteral("back"), Named("buttonBack"));
    d->Until(QStringLiteral("the list of apps"), [] { return Visible("listApps") != nullptr; });
}

void Tour::UntilLoaded()
{
    d->Until(QStringLiteral("a loaded version"), [] {
        RequestStatusBaseWidget* status = EditorStatus();
        return status && status->GetStatus() == RequestStatus::Succeeded && Visible("version_combo") &&
               !CurrentVersion().isEmpty();
    });
}

void Tour::UntilResult(const QString& text)
{
    d->Until(
        QStringLiteral("the result of the run ") + text,
        [text] {
            QWidget* page = Visible("pageUIDesign");
            const auto fields = page ? page->findChildren<QLineEdit*>() : QList<QLineEdit*>();
            return std::any_of(fields.begin(), fields.end(),
                               [&](const QLineEdit* field) { return field->text() == text; });
        },
        std::chrono::seconds(60));
}

void Tour::UntilToast(const QString& text)
{
    d->Until(QStringLiteral("the notice ") + text,
             [this, text] { return toasts->GetTexts().contains(text); });
}

void Tour::UntilBox(const QString& text)
{
    d->Until(QStringLiteral("the question ") + text, [text] {
        QWidget* box = QApplication::activeModalWidget();
        if (!box || !box->isVisible())
            return false;
        const auto labels = box->findChildren<QLabel*>();
        return std::any_of(labels.begin(), labels.end(),
                           [&](const QLabel* label) { return label->text() == text; });
    });
}

void Tour::UntilCurrent(const QString& version)
{
    d->Until(QStringLiteral("the current version ") + version,
             [version] { return CurrentVersion() == version && !QApplication::activeModalWidget(); });
}

QListWidget* Tour::VersionList()
{
    return VisibleAs<QListWidget>("VersionComboBoxView");
}

int Tour::RowOf(const QString& name)
{
    QListWidget* list = VersionList();
    for (int row = 0; list && row < list->count(); ++row) {
        QWidget* item = list->itemWidget(list->item(row));
        auto* text =
            item ? item->findChild<ElidedLabelEx*>(QStringLiteral("rpa_version_combo_text")) : nullptr;
        if (text && text->GetText() == name)
            return row;
    }
    return -1;
}
