// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <WbBaseUI/WbBaseUIExport.h>

#include <QKeySequence>
#include <QWidget>

class QToolButton;

class WBBASEUI_EXPORT UIUtils
{
public:
    // Brings a window to the front; activate: gives it the keyboard too. Null is ignored.
    static void SetForeground(QWidget* window, bool activate);

    // A text of whatever origin as a tool tip that shows it letter by letter: never taken for markup, and
    // without the signs of an escaped text where a tool tip shows plain text.
    static QString PlainToolTip(const QString& text);

    // What a button says and, behind it, the keys that do the same; none are left out.
    static QString WithKeys(const QString& text, const QKeySequence& keys);

    // A flat button with an icon of WbIcons, whose tip is also what a screen reader says. The caller owns it.
    static QToolButton* IconButton(const QString& name, const QString& icon, const QString& tip);
};
