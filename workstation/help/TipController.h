// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QObject>

class EditorPage;
class MainWindow;
class TipBar;
class WorkstationSettings;

// Tells once on each page what to do first there, unless the user wants no tips or the window is too low for
// one more line.
class TipController : public QObject
{
    Q_OBJECT

public:
    TipController(WorkstationSettings* store, MainWindow* mainWindow, EditorPage* editorPage);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    // Where the user is, by the name of the page or of the editor's part.
    QString FindPlace() const;
    void FollowEditor(QWidget* editor);
    void Update();
    void Forget();

    WorkstationSettings* const settings;
    MainWindow* const window;
    EditorPage* const editing;
    TipBar* const bar; // the window's
    QString told;      // the place that the bar speaks of
};
