// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "RpaAppEditorHandle.h"

#include <RpaAppData/RpaAppData.h>
#include <RpaCore/RobotExecuteInfo.h>

#include <QList>
#include <QString>

#include <memory>

class IBrowserBorderWindow;
class IBrowserWidget;
class ProcessProgramEditorWidget;
class ProcessVisualEditorWidget;
class RpaBrowserNaviWidget;

namespace Ui
{
class RpaAppEditorWidget;
}

// Kinds of an app, as its first model says.
constexpr int visualKind = 0;
constexpr int programKind = 1;

// What the editor holds, kept out of its public header. They are destroyed in reverse order, after the editor
// has left the registries of the workstation.
struct RpaAppEditorMembers
{
    RpaAppEditorMembers();
    ~RpaAppEditorMembers();

    // Shows the statement on the page of the processes; says so when it is no longer there.
    void ShowStatement(const QString& statementId);
    // The same for a line of the program.
    void ShowLine(int line);

    // The log may have been asked in a window of its own.
    void ShowProcessPage();

    std::unique_ptr<Ui::RpaAppEditorWidget> ui;

    // At most one of the two exists: that of the first model's app kind. Owned by the process page.
    ProcessVisualEditorWidget* visualEditor = nullptr;
    ProcessProgramEditorWidget* programEditor = nullptr;

    IBrowserWidget* browser =
        nullptr; // null without a web engine; owned by the pane or by the pop-out window
    std::unique_ptr<IBrowserBorderWindow> popOutWindow; // made when it is first needed
    RpaBrowserNaviWidget* browserStrip = nullptr;       // owned by the pane
    int paneMinimumWidth = 0;                           // of the pane before it was folded
    int paneMaximumWidth = 0;
    QList<int> paneShares; // how pages and pane shared the width then
    bool poppedOut = false;

    RobotExecuteInfo executeInfo;
    QString currentSnapshotId; // of the version being edited; empty while the app has no saved version open
    RpaAppDataPtr appData;     // null before the first version has loaded
    RpaAppEditorHandle handle;

    QString runningProcessName; // of the run that waits for packages or checks
    bool firstPackageCheck = true;
};
