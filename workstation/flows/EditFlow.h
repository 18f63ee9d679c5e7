// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "AppRecord.h"
#include "WorkstationPaths.h"

#include <QObject>

#include <memory>

class DraftController;
class EditorPage;
class LeftWork;
class MainWindow;
class TemplateFlow;
class WorkstationSettings;

// The life of an editor: what it opens with, unsaved work around it, the way back. Makes the page with the
// editor, which the window owns.
class EditFlow : public QObject
{
    Q_OBJECT

public:
    // home: the page an app is opened from, and left to. None of the pointers is owned.
    EditFlow(const WorkstationPaths& paths, WorkstationSettings* settings, QWidget* home, MainWindow* window);
    ~EditFlow() override;

    EditorPage* GetPage() const { return page; }

    // Once the window is shown and the folders are there.
    void Start();
    // Opens the app, after asking about drafts of it; nothing happens while another one is open.
    void Offer(const AppRecord& app);
    // The workstation ends, everybody has been asked.
    void End();

signals:
    void SigOpened(const AppRecord& app);
    // The author went back to the list.
    void SigLeft(const QString& appId);

private:
    void Connect();
    void Prepare(const AppRecord& app);
    void Open(const AppRecord& app);
    void Leave();

    const WorkstationPaths paths;
    QWidget* const home;
    MainWindow* const window;
    EditorPage* const page;
    const std::unique_ptr<TemplateFlow> templates;
    const std::unique_ptr<DraftController> drafts;
    std::unique_ptr<LeftWork> leftWork;
};
