// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "KeyActs.h"

class EditorPage;
class QAbstractButton;
class QWidget;

// The acts of the page with the editor. What the editor offers to the mouse is done through the very same
// buttons, so that everything it checks is checked here, too.
class EditorKeys
{
public:
    explicit EditorKeys(EditorPage* page) : editor(page) {}

    void BindTo(KeyActs* acts) const;

private:
    void BindPages(KeyActs* acts) const;
    void BindButtons(KeyActs* acts) const;
    void BindSteps(KeyActs* acts) const;
    void BindBrowser(KeyActs* acts) const;

    // What stands in the way of anything that needs an open version.
    QString WhyNotOpen() const;
    QString WhyNotPress(const char* name, const QString& whyHidden) const;
    void Press(const char* name) const;
    void ShowPage(int index) const;
    void ShowPlace(QWidget* place) const;
    void ShowProblems() const;
    int CurrentPage() const;
    QAbstractButton* BrowserButton(const char* name) const;
    QAbstractButton* FoldButton() const;

    EditorPage* const editor;
};
