// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "TourDriver.h"

#include <QModelIndex>
#include <QStringList>

class QTextEdit;
class RequestStatusBaseWidget;

// Where things are on the screen. GUI thread; null or empty when they are not there.
namespace TourLook
{
// A visible widget by object name, in the window that takes input.
QWidget* Visible(const char* objectName);
TourDriver::Finder Named(const char* objectName);
// A visible widget below another one.
TourDriver::Finder InPanel(const char* panel, const char* objectName);
// The card of the first app of that kind in the list.
QModelIndex SampleCard(int kind);
// The card with that name in a list of apps.
QModelIndex CardNamed(const char* list, const QString& name);
QStringList TabTexts(const char* tabBar);
QWidget* ButtonWithText(const char* text);
QTextEdit* InstructionsEdit();
// What the version drop-down shows; empty without an editor.
QString CurrentVersion();
RequestStatusBaseWidget* EditorStatus();
// Whether the editor has a pane for the embedded browser.
bool HasBrowser();

template <typename Widget>
Widget* VisibleAs(const char* objectName)
{
    return qobject_cast<Widget*>(Visible(objectName));
}

// Visible or not, in any window.
template <typename Widget>
Widget* Anywhere(const char* objectName)
{
    for (QWidget* top : QApplication::topLevelWidgets())
        if (auto* found = top->findChild<Widget*>(QLatin1String(objectName)))
            return found;
    return nullptr;
}
} // namespace TourLook
