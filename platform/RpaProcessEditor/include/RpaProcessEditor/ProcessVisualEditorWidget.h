// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaAppData/RpaAppData.h>
#include <RpaProcessData/RpaCheckInfo.h>
#include <RpaProcessEditor/RpaProcessEditorExport.h>

#include <QWidget>

#include <memory>

struct RpaProblem;

// Edits the processes of a visual app as trees of statements: commands on the left, the statements of one
// process in the middle, the arguments of the selected statement on the right. Every change is one undo step,
// is written into the app at once and marks it modified. Runs are started, stepped through and stopped from a
// row above them. While the engine runs, the statement that it is at is marked. GUI thread only.
class RPAPROCESSEDITOR_EXPORT ProcessVisualEditorWidget : public QWidget
{
    Q_OBJECT

public:
    explicit ProcessVisualEditorWidget(QWidget* parent = nullptr);
    ~ProcessVisualEditorWidget() override;

    // Shows another app; null empties the editor. Undo steps of the former app are forgotten.
    void SetRpaAppData(const RpaAppDataPtr& appData);

    // True when an enabled statement refers to a disabled one; the list is then filled with every such place.
    bool CheckComment(QList<RpaCheckInfo>& list) const;

    // Name of the process that is shown; empty without one.
    QString GetShownProcess() const;

    // Shows the main process. A process whose run was asked for here (SigRunProcess) is shown again afterwards.
    void SwitchMainPage();

    // Marks the statements of these findings; an empty list takes all marks away. The engine's
    // debugger is connected to it (IRpaDebugger::SigCheckNode). Statements of other apps are ignored.
    void ShowCheckInfos(const QList<RpaCheckInfo>& list);

    // Shows the statement, selects it and scrolls to it. False when there is no such statement.
    bool ShowStatement(const QString& processName, const QString& statementId);

    // Mends a problem of a process (RpaProblem::fix) in one undo step. False when it has no such fix, or when what
    // it is about is gone.
    bool MakeFix(const RpaProblem& problem);

signals:
    // The user asked to save (Ctrl+S).
    void SigSaveCode();

    // The user wants the process to be run, or its run to be stopped. What kind of run is meant
    // (RpaDebugSession::SetNextRun) is known while the signal is emitted, and as long as the run waits then.
    void SigRunProcess(const QString& processName);
    void SigStopProcess(const QString& processName);

private:
    class Private;
    const std::unique_ptr<Private> d;
};
