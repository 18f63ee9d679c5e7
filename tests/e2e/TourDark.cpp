// SPDX-License-Identifier: Apache-2.0

#include "AppListModel.h"
#include "Tour.h"
#include "TourLook.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QLabel>

// The rooms of the workstation in the dark scheme.

using namespace TourLook;

namespace
{
constexpr int statusColumn = 2; // of the package list

QPoint FirstCard(QWidget* widget)
{
    auto* list = qobject_cast<QAbstractItemView*>(widget);
    const QModelIndex first = list->model()->index(0, 0);
    return first.isValid() ? list->viewport()->mapTo(list, list->visualRect(first).center()) : QPoint(-1, -1);
}
} // namespace

void Tour::LookAtEditorInTheDark()
{
    if (d->OnGui(&HasBrowser)) {
        d->Step(QStringLiteral("browser-dark"), [this] {
            GoToPage("pushButtonProcess");
            OpenPage();
        });
    }
    d->Step(QStringLiteral("package-dialog-dark"), [this] {
        d->Click(QStringLiteral("packages"), Named("buttonPackages"));
        d->Until(QStringLiteral("how the package stands"), [] {
            const auto* table = VisibleAs<QAbstractItemView>("tablePackages");
            return table && table->model()->index(0, statusColumn).data() != QStringLiteral("未检查");
        });
        d->TakePicture();
        d->Key(Qt::Key_Escape);
        d->Until(QStringLiteral("the dialog's end"), [] { return !QApplication::activeModalWidget(); });
        BackToList();
    });
}

void Tour::LookAtAppsInTheDark()
{
    d->Step(QStringLiteral("online-apps-dark"), [this] {
        d->Click(QStringLiteral("online apps"), InPanel("AppListPage", "tabOnline"));
        d->Until(QStringLiteral("an online app"), [] {
            auto* list = VisibleAs<QAbstractItemView>("listReleased");
            return Visible("OnlineAppsPage") && list && list->model()->rowCount() > 0;
        });
    });
    d->Step(QStringLiteral("run-page-dark"), [this] {
        d->ClickAt(QStringLiteral("the online app"), Named("listReleased"), &FirstCard);
        d->Click(QStringLiteral("the tool"), [] { return ButtonWithText("开始汇总"); });
        d->Until(
            QStringLiteral("the end of the run"),
            [] {
                auto* run = VisibleAs<QLabel>("labelRun");
                return run && run->text() == QStringLiteral("运行结束");
            },
            std::chrono::seconds(60));
        d->TakePicture();
        d->Click(QStringLiteral("back"), Named("buttonBack"));
        d->Until(QStringLiteral("the online apps"), [] { return Visible("OnlineAppsPage") != nullptr; });
    });
    d->Step(QStringLiteral("gray-apps-dark"), [this] {
        d->Click(QStringLiteral("gray apps"), InPanel("OnlineAppsPage", "tabGray"));
        d->Until(QStringLiteral("the gray apps"), [] {
            return Visible("GrayAppsPage") && (Visible("listReleased") || Visible("labelEmpty"));
        });
        d->TakePicture();
        d->Click(QStringLiteral("my apps"), InPanel("GrayAppsPage", "tabMine"));
        d->Until(QStringLiteral("my apps"), [] { return Visible("listApps") != nullptr; });
    });
    d->Step(QStringLiteral("invitation-dialog-dark"), [this] {
        const QString app = d->OnGui([] { return SampleCard(AppKindVisual).data().toString(); });
        ChooseFromCard(app, QStringLiteral("灰度邀请码…"));
        d->Click(QStringLiteral("new invitation"), Named("buttonCreate"));
        d->Until(QStringLiteral("the code"), [] { return Visible("labelCode") != nullptr; });
        d->TakePicture();
        d->Click(QStringLiteral("done"), Named("buttonClose"));
        d->Until(QStringLiteral("the dialog's end"), [] { return !QApplication::activeModalWidget(); });
    });
}

void Tour::LookInTheDark()
{
    LookAtEditorInTheDark();
    LookAtAppsInTheDark();
    d->Step(QStringLiteral("app-opened-again"), [this] {
        OpenApp(AppKindVisual);
        UntilLoaded();
    });
}
