// SPDX-License-Identifier: Apache-2.0

#include "Tour.h"
#include "TourLook.h"

#include <QApplication>
#include <QLabel>
#include <QPushButton>

// What users have is taken back, and given to them again.

using namespace TourLook;

namespace
{
bool Says(const char* label, const QString& text)
{
    const auto* shown = VisibleAs<QLabel>(label);
    return shown && shown->text() == text;
}

// The button of a row, by what it says to those who do not see it.
TourDriver::Finder RowButton(const QString& name)
{
    return [name]() -> QWidget* {
        for (QWidget* widget : QApplication::allWidgets())
            if (widget->isVisible() && widget->accessibleName() == name && qobject_cast<QPushButton*>(widget))
                return widget;
        return nullptr;
    };
}
} // namespace

void Tour::ShowReleases(const QString& app)
{
    ChooseFromCard(app, QStringLiteral("发布管理…"));
}

void Tour::AskToTakeBack(const QString& button)
{
    d->Click(button, RowButton(button));
    d->Click(QStringLiteral("the reason"), Named("editReason"));
    d->Type(QStringLiteral("sums are wrong"));
    d->Until(QStringLiteral("a button that confirms"), [] {
        const QWidget* ok = Visible("buttonOk");
        return ok && ok->isEnabled();
    });
}

void Tour::TakeBackVersions()
{
    const QString online = QStringLiteral("线上：使用者现在使用“%1”");
    d->Step(QStringLiteral("releases"), [=] {
        d->UntilCalm();
        BackToList();
        ShowReleases(releasedApp);
        d->Until(QStringLiteral("what users have"),
                 [=] { return Says("labelOnline", online.arg(QStringLiteral("候选版"))); });
        d->TakePicture();
    });
    d->Step(QStringLiteral("earlier-version-question"), [=] {
        AskToTakeBack(QStringLiteral("恢复…上线版"));
        d->TakePicture();
    });
    d->Step(QStringLiteral("earlier-version-back"), [=] {
        d->Click(QStringLiteral("confirm"), Named("buttonOk"));
        d->Until(QStringLiteral("the earlier version"),
                 [=] { return Says("labelOnline", online.arg(QStringLiteral("上线版"))); });
        d->TakePicture();
    });
    d->Step(QStringLiteral("gray-stop-question-dark"), [=] {
        d->UntilCalm();
        UseTheme(ThemeChoice::Dark);
        AskToTakeBack(QStringLiteral("停止灰度…试用版"));
        d->TakePicture();
    });
    d->Step(QStringLiteral("gray-stopped-dark"), [=] {
        d->Click(QStringLiteral("confirm"), Named("buttonOk"));
        d->Until(QStringLiteral("no gray version"),
                 [=] { return Says("labelGray", QStringLiteral("灰度：使用者现在没有灰度版本")); });
        d->TakePicture();
        UseTheme(usualTheme);
    });
    d->Step(QStringLiteral("versions-given-again"), [=] {
        AskToTakeBack(QStringLiteral("恢复…试用版"));
        d->Click(QStringLiteral("confirm"), Named("buttonOk"));
        d->Until(QStringLiteral("the gray version"),
                 [=] { return Says("labelGray", QStringLiteral("灰度：使用者现在使用“试用版”")); });
        AskToTakeBack(QStringLiteral("恢复…候选版"));
        d->Click(QStringLiteral("confirm"), Named("buttonOk"));
        d->Until(QStringLiteral("the newest version"),
                 [=] { return Says("labelOnline", online.arg(QStringLiteral("候选版"))); });
        d->Click(QStringLiteral("done"), Named("buttonClose"));
        d->Until(QStringLiteral("the dialog's end"), [] { return !QApplication::activeModalWidget(); });
    });
}
