// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "KeyActs.h"

class MainWindow;
class QAbstractButton;

// The acts of the pages around the editor, through the buttons that stand on them.
class PageKeys
{
public:
    explicit PageKeys(MainWindow* mainWindow) : window(mainWindow) {}

    void BindTo(KeyActs* acts) const;

private:
    void BindLists(KeyActs* acts) const;
    void BindButton(KeyActs* acts, KeyAct act, const char* name) const;

    // The visible one of that name, in the head or on the page; null when there is none.
    QAbstractButton* Button(const char* name) const;
    void ShowList(int by) const;

    MainWindow* const window;
};
