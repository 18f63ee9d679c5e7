// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "PackagePreparation.h"
#include "WorkstationPaths.h"

#include <QObject>

class EditorPage;
class MainWindow;
class PackageService;
class WorkstationSettings;

// The packages that processes use: where they come from, what runs find of them, the dialog that shows them.
// The package service and the engine do not know each other.
class PackageFlow : public QObject
{
    Q_OBJECT

public:
    // None of the pointers is owned.
    PackageFlow(const WorkstationPaths& paths, WorkstationSettings* settings, const EditorPage* page,
                MainWindow* window);

private:
    void ConnectEngine();
    void Show();
    void TellFolders();

    const WorkstationPaths paths;
    WorkstationSettings* const settings;
    MainWindow* const window;
    PackageService* const packages;
    PackagePreparation preparation;
};
