// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "AppRecord.h"

#include <WbBaseUI/WbBaseWidget.h>

class ProblemDesk;
class QSplitter;
class ResultsBar;
class RpaAppEditorWidget;

// Holds the editor of the app that is open. There is one at a time: the list of versions that an editor works
// on is one for the whole workstation.
class EditorPage : public WbBaseWidget
{
    Q_OBJECT

public:
    explicit EditorPage(QWidget* parent = nullptr);

    // Opens an app in a fresh editor. The page must be empty.
    void Open(const AppRecord& app);

    bool IsOpen() const { return editor != nullptr; }
    AppRecord GetApp() const { return app; }

    // Asks the editor whether it may go, and lets it go when it may; true when the page is empty afterwards.
    // False as well for a call while the editor is being asked.
    bool Leave();

    // Lets the editor go without asking: it has been asked.
    void Discard();

signals:
    // A fresh editor stands here, before anything is loaded into it.
    void SigOpened(QWidget* editor);
    // The editor is gone. What it asked for may still be under way.
    void SigLeft(const AppRecord& app);
    void SigClosed();

private:
    void SlotDemanded();

    QSplitter* const parts; // the editor, and below it the problems of its app
    ProblemDesk* const desk;
    ResultsBar* const results;
    RpaAppEditorWidget* editor = nullptr;
    AppRecord app;
    bool asking = false;
};
