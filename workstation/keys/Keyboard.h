// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "EditorKeys.h"
#include "KeyActs.h"
#include "PageKeys.h"
#include "RunKeys.h"

#include <QObject>

class EditorPage;
class MainWindow;

// The keyboard of the workstation's window: the acts of the key table, bound to what stands on the pages.
class Keyboard : public QObject
{
    Q_OBJECT

public:
    // editor, run: pages of the window.
    Keyboard(MainWindow* mainWindow, EditorPage* editorPage, QWidget* runPage);

signals:
    void SigGuide();

private:
    KeyPlace FindPlace() const;
    void ShowPalette() const;
    void ShowKeys() const;

    MainWindow* const window;
    EditorPage* const editor;
    QWidget* const run;
    KeyActs acts;
    EditorKeys editorKeys;
    PageKeys pageKeys;
    RunKeys runKeys;
};
