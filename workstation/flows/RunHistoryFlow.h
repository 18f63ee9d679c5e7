// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaRunHistory/RpaRunHistory.h>

#include <QObject>

class EditorPage;
class MainWindow;
class RunPage;
class Session;
class WorkstationSettings;

// Keeps the runs of this machine, those of the editor and of released apps, and shows those of the app that is
// being edited.
class RunHistoryFlow : public QObject
{
    Q_OBJECT

public:
    // folder: where the runs are kept. None of the pointers is owned.
    RunHistoryFlow(const QString& folder, const Session* session, WorkstationSettings* settings,
                   const EditorPage* editor, const RunPage* users, MainWindow* window);

    // Once the window is shown and the folders are there.
    void Start() { history.Start(folder); }

private:
    RpaRunRecord ContextOf(const QString& appId) const;
    void Show();

    const QString folder;
    const Session* const session;
    WorkstationSettings* const settings;
    const EditorPage* const editor;
    const RunPage* const users;
    MainWindow* const window;
    RpaRunHistory history;
};
