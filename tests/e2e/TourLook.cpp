// SPDX-License-Identifier: Apache-2.0

#include "TourLook.h"

#include "AppListModel.h"

#include <WbBaseUI/RequestStatusBaseWidget.h>

#include <QAbstractButton>
#include <QComboBox>
#include <QLineEdit>
#include <QListView>
#include <QTabBar>
#include <QTextEdit>

namespace TourLook
{
QWidget* Visible(const char* objectName)
{
    return TourDriver::Named(QLatin1String(objectName))();
}

TourDriver::Finder Named(const char* objectName)
{
    return TourDriver::Named(QLatin1String(objectName));
}

TourDriver::Finder InPanel(const char* panel, const char* objectName)
{
    const QString panelName = QLatin1String(panel);
    const QString name = QLatin1String(objectName);
    return [panelName, name]() -> QWidget* {
        const QWidget* root = TourDriver::Named(panelName)();
        for (QWidget* child : root ? root->findChildren<QWidget*>(name) : QList<QWidget*>())
            if (child->isVisible())
                return child;
        return nullptr;
    };
}

QModelIndex SampleCard(int kind)
{
    auto* list = VisibleAs<QListView>("listApps");
    for (int i = 0; list && i < list->model()->rowCount(); ++i) {
        const QModelIndex index = list->model()->index(i, 0);
        if (index.data(AppListModel::KindRole).toInt() == kind)
            return index;
    }
    return {};
}

QModelIndex CardNamed(const char* list, const QString& name)
{
    const auto* cards = VisibleAs<QListView>(list);
    for (int i = 0; cards && i < cards->model()->rowCount(); ++i) {
        const QModelIndex index = cards->model()->index(i, 0);
        if (index.data().toString() == name)
            return index;
    }
    return {};
}

QStringList TabTexts(const char* tabBar)
{
    const auto* tabs = VisibleAs<QTabBar>(tabBar);
    QStringList texts;
    for (int i = 0; tabs && i < tabs->count(); ++i)
        texts.append(tabs->tabText(i));
    return texts;
}

QWidget* ButtonWithText(const char* text)
{
    for (QWidget* widget : QApplication::allWidgets()) {
        const auto* button = qobject_cast<QAbstractButton*>(widget);
        if (button && button->isVisible() && button->text() == QString::fromUtf8(text))
            return widget;
    }
    return nullptr;
}

QTextEdit* InstructionsEdit()
{
    QWidget* page = Visible("textEditManual");
    return page ? page->findChild<QTextEdit*>() : nullptr;
}

QString CurrentVersion()
{
    auto* combo = Anywhere<QComboBox>("version_combo");
    return combo && combo->lineEdit() ? combo->lineEdit()->text() : QString();
}

RequestStatusBaseWidget* EditorStatus()
{
    return Anywhere<RequestStatusBaseWidget>("requestStatusWidget");
}

bool HasBrowser()
{
    return Anywhere<QWidget>("browserPane") != nullptr;
}
} // namespace TourLook
