// SPDX-License-Identifier: Apache-2.0

#include "AppListModel.h"
#include "ToastWatcher.h"
#include "Tour.h"
#include "TourLook.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QClipboard>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QTextBrowser>

// Released apps as those meet them who only use them.

using namespace TourLook;

namespace
{
bool Reads(const char* label, const QString& text)
{
    const auto* shown = VisibleAs<QLabel>(label);
    return shown && shown->text() == text;
}

bool IsCardOf(const QString& app, const QString& version)
{
    const QModelIndex card = CardNamed("listReleased", app);
    return card.isValid() && card.data(AppListModel::KindNameRole).toString().endsWith(version);
}

bool ManualSays(const QString& text)
{
    // It may stand behind the browser, which a run brings to the front.
    const auto* manual = Anywhere<QTextBrowser>("viewManual");
    return manual && manual->toPlainText().contains(text);
}
} // namespace

void Tour::RunReleasedApp(const QString& version)
{
    PressCard("listReleased", releasedApp);
    d->Until(version, [=] { return Reads("labelPageTitle", releasedApp) && Reads("labelVersion", version); });
    d->Click(QStringLiteral("the tool"), [] { return ButtonWithText("统计"); });
    UntilLog(QStringLiteral("共 3 人"));
    // The three rows of the author's own run have stayed with the author.
    d->Until(QStringLiteral("the rows and the end of the run"), [] {
        const auto* table = VisibleAs<QAbstractItemView>("tableView");
        return table && table->model()->rowCount() == 3 && Reads("labelRun", QStringLiteral("运行结束"));
    });
}

void Tour::UseOnlineApp()
{
    d->Step(QStringLiteral("online-apps"), [this] {
        d->Click(QStringLiteral("online apps"), Named("tabOnline"));
        d->Until(QStringLiteral("the version that went online last"),
                 [this] { return IsCardOf(releasedApp, QStringLiteral("候选版")); });
    });
    d->Step(QStringLiteral("online-app-runs"), [this] {
        RunReleasedApp(QStringLiteral("线上 · 候选版"));
        if (!d->OnGui([] {
                return ManualSays(QStringLiteral("候选版的说明。")) &&
                       !ManualSays(QStringLiteral("灰度期间的修改。"));
            })) {
            throw TourFailure(QStringLiteral("what is online is not what was in gray release"));
        }
    });
}

void Tour::UseGrayApp()
{
    d->Step(QStringLiteral("invitation-code-refused"), [this] {
        d->Click(QStringLiteral("back"), Named("buttonBack"));
        d->Click(QStringLiteral("gray apps"), Named("tabGray"));
        d->Until(QStringLiteral("no gray apps"),
                 [] { return Reads("labelEmpty", QStringLiteral("还没有灰度应用")); });
        d->Click(QStringLiteral("the code"), Named("editCode"));
        d->Type(QStringLiteral("22222-22222"));
        d->Key(Qt::Key_Return);
        d->Until(QStringLiteral("the reason"),
                 [] { return Reads("labelProblem", QStringLiteral("邀请码不存在，请检查后重新输入。")); });
    });
    d->Step(QStringLiteral("invitation-code-redeemed"), [this] {
        d->Click(QStringLiteral("the code"), Named("editCode"));
        d->Key(Qt::Key_A, Qt::ControlModifier);
        d->Key(Qt::Key_V, Qt::ControlModifier);
        d->Until(QStringLiteral("the code that the author copied"), [] {
            const auto* code = VisibleAs<QLineEdit>("editCode");
            return code && code->text() == QApplication::clipboard()->text();
        });
        d->Click(QStringLiteral("redeem"), Named("buttonRedeem"));
        UntilToast(QStringLiteral("已可以试用“%1”").arg(releasedApp));
        d->Until(QStringLiteral("the gray version"),
                 [this] { return IsCardOf(releasedApp, QStringLiteral("试用版")); });
        d->TakePicture();
    });
    d->Step(QStringLiteral("gray-app-runs"), [this] {
        RunReleasedApp(QStringLiteral("灰度 · 试用版"));
        d->TakePicture();
        d->Click(QStringLiteral("back"), Named("buttonBack"));
    });
}
