// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "KeyActs.h"

class MainWindow;
class QAction;

// Running, stepping and stopping: by the acts of the page of processes, and elsewhere by those of the tools.
class RunKeys
{
public:
    explicit RunKeys(MainWindow* mainWindow) : window(mainWindow) {}

    void BindTo(KeyActs* acts) const;

private:
    void BindRun(KeyActs* acts) const;
    void BindStop(KeyActs* acts) const;
    void BindPlaces(KeyActs* acts) const;
    void BindSteps(KeyActs* acts) const;

    // Of the page of processes; null when the window's page has none.
    QAction* Action(const char* name) const;
    // Does it where the author sees what it does.
    void Trigger(const char* name) const;

    MainWindow* const window;
};
