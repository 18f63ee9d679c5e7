// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "VersionController.h"

#include <QObject>

class EditorPage;
class MainWindow;
class Session;
class WorkstationSettings;

// The details of the versions of the app that is open: beside the editor's list of them, and in a dialog.
class VersionFlow : public QObject
{
    Q_OBJECT

public:
    // None is owned.
    VersionFlow(const Session* session, const WorkstationSettings* settings, EditorPage* page,
                MainWindow* window);

private:
    void Follow(const QWidget& editor);
    void Show();

    const Session* const session;
    const WorkstationSettings* const settings;
    EditorPage* const page;
    MainWindow* const window;
    VersionController versions;
};
