// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "ProcessEdits_p.h"
#include "RunActions_p.h"
#include "StandingFindings_p.h"
#include "VisualRunPlace_p.h"

#include <RpaProcessData/RpaCheckInfo.h>

#include <QWidget>

#include <functional>
#include <memory>

class BookmarkActs;
class CommandPalette;
class CommandQuickPick;
class DebugPanes;
class ProcessFindPane;
class ProcessHead;
class ProcessTabs;
class PropertyPanel;
class PythonPane;
class QAction;
class QMenu;
class RefactorActs;
class StatementFindBar;
class StatementView;
class VisualDebugMarks;
struct RpaDebugPlace;
struct RpaProblem;

// The parts of the visual editor and how they work together.
class VisualEditorParts : public QObject
{
    Q_OBJECT

public:
    explicit VisualEditorParts(QWidget* editor);
    ~VisualEditorParts() override;

    void SetApp(const RpaAppDataPtr& appData);
    RpaAppDataPtr App() const { return app; }

    QString ShownProcess() const { return shownProcess; }
    void SwitchMainPage();
    void ShowFindings(const QList<RpaCheckInfo>& list);
    bool ShowStatement(const QString& processName, const QString& statementId);
    // The keyboard stays where it is.
    bool ShowPlace(const QString& processName, const QString& statementId);
    // Of a problem of a process; see ProcessVisualEditorWidget::MakeFix().
    bool MakeFix(const RpaProblem& problem);
    // Marks the statement without scrolling to it: the author may be editing elsewhere. Empty for none.
    void MarkRunning(const QString& statementId);

signals:
    void SigSaveAsked();
    void SigRunAsked(const QString& processName);
    void SigStopAsked(const QString& processName);

private:
    using Act = std::function<void()>;

    void BuildLayout();
    void BuildActions();
    QAction* Add(const QString& name, const QString& text, const QList<QKeySequence>& keys,
                 const QString& icon, const Act& act);
    QAction* Add(const QString& name, const QString& text, const QList<QKeySequence>& keys,
                 const QString& icon);
    void Separate();
    void AddFindKey(const QKeySequence& keys, void (StatementFindBar::*act)());
    void ConnectParts();
    void ShowProcess(const QString& name);
    void SlotTouched(const QString& processName, const QStringList& ids);
    void AskVariableName();
    void SlotVariableFollowed(const QString& from, const QString& to, int places);
    void UpdateActions();
    void ShowMenu(const QPoint& position);
    void OpenQuickPick();
    void AddCommand(const QString& command);
    void SlotMended();
    void SlotRunAsked(const QString& processName);
    void ShowStop(const RpaDebugPlace& place);

    QWidget* host;
    ProcessTabs* tabs;
    ProcessHead* head;
    CommandPalette* palette;
    StatementView* view;
    StatementFindBar* findBar;
    PropertyPanel* properties;
    PythonPane* python;
    VisualDebugMarks* marks;
    DebugPanes* panes;
    CommandQuickPick* quickPick;
    QMenu* menu;
    RefactorActs* refactor;
    BookmarkActs* bookmarks;
    ProcessFindPane* findPane;
    VisualRunPlace runPlace;
    RunActions runs;
    QAction* undo = nullptr;
    QAction* redo = nullptr;
    QList<QAction*> onSelection;

    RpaAppDataPtr app;
    std::unique_ptr<ProcessEdits> edits;
    StandingFindings findings;
    QString shownProcess;
};
