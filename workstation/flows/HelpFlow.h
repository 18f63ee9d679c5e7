// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "TipController.h"

#include <QObject>

class EditorPage;
class GuideWindow;
class MainWindow;
class WorkstationSettings;

// The guide, and what each page says first.
class HelpFlow : public QObject
{
    Q_OBJECT

public:
    // None is owned.
    HelpFlow(WorkstationSettings* settings, EditorPage* editor, MainWindow* window);

    // Opens the guide at what it says of the place where the user is.
    void ShowGuide();

private:
    MainWindow* const window;
    TipController tips;
    GuideWindow* guide = nullptr; // the window's
};
