// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "ReportText.h"

#include <RpaRunHistory/RpaRunHistory.h>

#include <QObject>
#include <QPointer>

#include <functional>

class EditorPage;
class IAppLogWidget;
class MainWindow;
class RunHistoryDialog;
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
                   const EditorPage* editor, RunPage* users, MainWindow* window);

    // Once the window is shown and the folders are there.
    void Start() { history.Start(folder); }

private:
    RpaRunRecord ContextOf(const QString& appId) const;
    static QImage BrowserPicture();
    void TellKeptRun(const QString& appId, QObject* context,
                     const std::function<void(const ReportParts& parts)>& answer);
    void Follow(QWidget* openedEditor);
    void Show();
    void ShowFailure();
    RunHistoryDialog* Open();
    void ShowPlace(const RpaRunPlace& place);

    const QString folder;
    const Session* const session;
    WorkstationSettings* const settings;
    const EditorPage* const editor;
    const RunPage* const users;
    MainWindow* const window;
    RpaRunHistory history;
    QPointer<RunHistoryDialog> dialog;
    QPointer<IAppLogWidget> log; // of the editor
};
