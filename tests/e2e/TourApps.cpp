// SPDX-License-Identifier: Apache-2.0

#include "AppCardDelegate.h"
#include "AppListModel.h"
#include "ToastWatcher.h"
#include "Tour.h"
#include "TourLook.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QScrollBar>

// An app goes out as one file and comes back, and what comes back goes by way of the bin.

using namespace TourLook;

namespace
{
int ShownApps()
{
    const auto* list = VisibleAs<QAbstractItemView>("listApps");
    return list ? list->model()->rowCount() : -1;
}

// The one that the list has selected.
QString CurrentApp()
{
    const auto* list = VisibleAs<QAbstractItemView>("listApps");
    return list ? list->currentIndex().data().toString() : QString();
}

bool HasInBin(const QString& app)
{
    const auto* bin = VisibleAs<QListWidget>("listBin");
    return bin && bin->count() == 1 && bin->item(0)->text().startsWith(app + QLatin1Char(' '));
}

QScrollBar* SettingsBar()
{
    const auto* page = VisibleAs<QAbstractScrollArea>("scrollSettings");
    return page ? page->verticalScrollBar() : nullptr;
}
} // namespace

void Tour::ChooseFromMenu(const QString& entry)
{
    d->ClickAt(
        entry, [] { return QApplication::activePopupWidget(); },
        [entry](QWidget* widget) {
            const auto* menu = qobject_cast<QMenu*>(widget);
            const QList<QAction*> actions = menu ? menu->actions() : QList<QAction*>();
            for (QAction* action : actions)
                if (action->text() == entry)
                    return menu->actionGeometry(action).center();
            return QPoint(-1, -1);
        });
}

void Tour::ChooseFromCard(const QString& app, const QString& entry)
{
    d->ClickAt(QStringLiteral("the card's menu"), Named("listApps"), [app](QWidget* widget) {
        auto* list = qobject_cast<QAbstractItemView*>(widget);
        const QRect card = list->visualRect(CardNamed("listApps", app));
        return list->viewport()->mapTo(list, AppCardDelegate::MenuRect(card).center());
    });
    ChooseFromMenu(entry);
}

void Tour::NameFile(const QString& path)
{
    d->Until(QStringLiteral("the question for a file"), [] {
        const QWidget* name = Visible("fileNameEdit");
        return name && name->hasFocus();
    });
    d->Key(Qt::Key_A, Qt::ControlModifier);
    d->Type(path);
    d->Until(QStringLiteral("the typed file"), [path] {
        const auto* edit = Anywhere<QLineEdit>("fileNameEdit");
        return edit && edit->text() == path;
    });
    d->TakePicture();
    d->Key(Qt::Key_Return);
}

void Tour::MoveApps()
{
    const QString file = QDir::home().filePath(QStringLiteral("库存.rpaapp"));
    d->Step(QStringLiteral("app-exported"), [=] {
        d->UntilCalm();
        const QString app = d->OnGui([] { return SampleCard(AppKindProgram).data().toString(); });
        ChooseFromCard(app, QStringLiteral("导出应用…"));
        NameFile(file);
        UntilToast(QStringLiteral("“%1”已导出到“%2”").arg(app, QDir::toNativeSeparators(file)));
        if (QFileInfo(file).size() == 0)
            throw TourFailure(QStringLiteral("the file of the app is empty"));
    });
    QString imported;
    d->Step(QStringLiteral("app-imported"), [this, file, &imported] {
        d->UntilCalm();
        const int before = d->OnGui(&ShownApps);
        d->Click(QStringLiteral("more"), Named("buttonMore"));
        ChooseFromMenu(QStringLiteral("导入应用…"));
        NameFile(file);
        d->Until(QStringLiteral("one more app, selected"),
                 [before] { return ShownApps() == before + 1 && !CurrentApp().isEmpty(); });
        imported = d->OnGui(&CurrentApp);
        d->TakePicture();
    });
    ThrowAway(imported);
}

void Tour::ThrowAway(const QString& app)
{
    d->Step(QStringLiteral("app-deleted"), [this, app] {
        d->UntilCalm();
        const int before = d->OnGui(&ShownApps);
        ChooseFromCard(app, QStringLiteral("删除应用…"));
        UntilBox(QStringLiteral("删除应用“%1”？\n30 天内可以从回收站恢复。").arg(app));
        d->TakePicture();
        d->Click(QStringLiteral("delete"), TourDriver::DialogButton(QStringLiteral("删除")));
        d->Until(QStringLiteral("one app less"), [before] { return ShownApps() == before - 1; });
    });
    d->Step(QStringLiteral("bin"), [this, app] {
        d->UntilCalm();
        d->Click(QStringLiteral("more"), Named("buttonMore"));
        ChooseFromMenu(QStringLiteral("回收站…"));
        d->Until(QStringLiteral("the deleted app"), [app] { return HasInBin(app); });
        d->TakePicture();
    });
    d->Step(QStringLiteral("bin-emptied"), [this, app] {
        d->Click(QStringLiteral("delete for good"), Named("buttonPurge"));
        UntilBox(QStringLiteral("彻底删除“%1”？之后无法恢复。").arg(app));
        d->Click(QStringLiteral("yes"), TourDriver::DialogButton(QStringLiteral("彻底删除")));
        d->Until(QStringLiteral("an empty bin"), [] {
            const auto* bin = VisibleAs<QListWidget>("listBin");
            return bin && bin->count() == 0;
        });
        d->TakePicture();
        d->Click(QStringLiteral("close"), Named("buttonClose"));
        d->Until(QStringLiteral("the dialog's end"), [] { return !QApplication::activeModalWidget(); });
    });
}

void Tour::ScrollSettings()
{
    d->Step(QStringLiteral("settings-below"), [this] {
        const auto isAtEnd = [] {
            const QScrollBar* const bar = SettingsBar();
            return bar && bar->value() == bar->maximum();
        };
        // A press below the handle goes on by a page.
        for (int page = 0; page < 9 && !d->OnGui(isAtEnd); ++page)
            d->ClickAt(QStringLiteral("below the handle"), &SettingsBar,
                       [](QWidget* bar) { return QPoint(bar->width() / 2, bar->height() - 2); });
        d->Until(QStringLiteral("the last section"), [isAtEnd] {
            const QWidget* const about = Visible("buttonAbout");
            return isAtEnd() && about && !about->visibleRegion().isEmpty();
        });
    });
}
