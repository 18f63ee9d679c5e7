// SPDX-License-Identifier: Apache-2.0

#include <WbBaseUI/UIUtils.h>
#include <WbBaseUI/WbIcons.h>

#include <QTextDocument>
#include <QToolButton>

void UIUtils::SetForeground(QWidget* window, bool activate)
{
    if (!window)
        return;
    QWidget* top = window->window();
    if (top->isMinimized())
        top->setWindowState(top->windowState() & ~Qt::WindowMinimized);
    top->show();
    top->raise();
    if (activate)
        top->activateWindow();
}

QString UIUtils::PlainToolTip(const QString& text)
{
    return Qt::mightBeRichText(text) ? Qt::convertFromPlainText(text, Qt::WhiteSpaceNormal) : text;
}

QString UIUtils::WithKeys(const QString& text, const QKeySequence& keys)
{
    return keys.isEmpty() ? text
                          : QStringLiteral("%1（%2）").arg(text, keys.toString(QKeySequence::NativeText));
}

QToolButton* UIUtils::IconButton(const QString& name, const QString& icon, const QString& tip)
{
    auto* button = new QToolButton;
    button->setObjectName(name);
    button->setIcon(WbIcons::Get(icon));
    button->setAutoRaise(true);
    button->setToolTip(tip);
    button->setAccessibleName(tip);
    return button;
}
