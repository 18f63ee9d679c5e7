// SPDX-License-Identifier: Apache-2.0

#include "MonkeySight.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QComboBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QSplitterHandle>
#include <QStackedWidget>
#include <QTabBar>
#include <QTextEdit>

namespace
{
// They lead away from the server that the storm is made for.
const char* const forbidden[] = {"radioEmbedded",     "radioRemote",         "editAddress",
                                 "buttonUseServer",   "editAccount",         "editPassword",
                                 "checkStaySignedIn", "buttonServerSettings"};
// They end what the monkey is doing; now and then is enough.
const char* const rare[] = {"buttonBack",  "buttonSignOut",  "buttonSettings", "tabOnline", "tabGray",
                            "buttonAbout", "buttonPackages", "comboTheme",     "comboDates"};
constexpr int othersPerRare = 8;

template <typename Names>
bool IsAmong(const Names& names, const QWidget* widget)
{
    return std::any_of(std::begin(names), std::end(names),
                       [widget](const char* name) { return widget->objectName() == QLatin1String(name); });
}

bool IsForbidden(const QWidget* widget)
{
    for (const QWidget* part = widget; part; part = part->parentWidget())
        if (IsAmong(forbidden, part))
            return true;
    return false;
}

bool Invites(QWidget* widget)
{
    return qobject_cast<QAbstractButton*>(widget) || qobject_cast<QLineEdit*>(widget) ||
           qobject_cast<QTabBar*>(widget) || qobject_cast<QAbstractItemView*>(widget) ||
           qobject_cast<QComboBox*>(widget) || qobject_cast<QTextEdit*>(widget) ||
           qobject_cast<QPlainTextEdit*>(widget) || qobject_cast<QAbstractSpinBox*>(widget) ||
           qobject_cast<QSplitterHandle*>(widget) || widget->inherits("WbIconButtonWidget");
}
} // namespace

QWidget* MonkeySight::WindowInUse(int whim)
{
    if (QWidget* popup = QApplication::activePopupWidget())
        return popup;
    if (QWidget* modal = QApplication::activeModalWidget())
        return modal;
    QList<QWidget*> windows;
    const auto all = QApplication::topLevelWidgets();
    for (QWidget* window : all) {
        const bool taken =
            window->windowType() == Qt::ToolTip || window->testAttribute(Qt::WA_TransparentForMouseEvents);
        if (window->isVisible() && window->isEnabled() && window->windowHandle() && !taken)
            windows.append(window);
    }
    return windows.isEmpty() ? nullptr : windows.at(whim % windows.size());
}

QList<QWidget*> MonkeySight::Inviting(QWidget* window)
{
    QList<QWidget*> usual;
    QList<QWidget*> seldom;
    const auto all = window->findChildren<QWidget*>();
    for (QWidget* widget : all) {
        const bool within = widget->window() == window && widget->isVisible() && widget->isEnabled();
        if (!within || !Invites(widget) || IsForbidden(widget) || widget->visibleRegion().isEmpty())
            continue;
        (IsAmong(rare, widget) ? seldom : usual).append(widget);
    }
    QList<QWidget*> inviting = seldom;
    for (int i = 0; i < (seldom.isEmpty() ? 1 : othersPerRare); ++i)
        inviting.append(usual);
    return inviting;
}

QString MonkeySight::NameOf(const QWidget* widget)
{
    if (!widget)
        return QStringLiteral("nothing");
    QString name = QLatin1String(widget->metaObject()->className());
    for (const QWidget* part = widget; part; part = part->parentWidget())
        if (!part->objectName().isEmpty())
            return name + QLatin1Char('#') + part->objectName();
    return name;
}

QString MonkeySight::PlaceOf(const QWidget* window)
{
    const QWidget* place = window;
    for (const char* stack : {"stackPages", "stackedWidgetTop", "stackedWidget"}) {
        const auto* pages = place->findChild<QStackedWidget*>(QLatin1String(stack));
        if (pages && pages->isVisible() && pages->currentWidget())
            place = pages->currentWidget();
    }
    return QLatin1String(place->metaObject()->className()) + QLatin1Char('#') + place->objectName();
}
