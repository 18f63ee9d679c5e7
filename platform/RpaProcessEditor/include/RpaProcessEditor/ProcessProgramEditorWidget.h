// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaAppData/RpaAppData.h>
#include <RpaProcessData/RpaCheckInfo.h>
#include <RpaProcessEditor/RpaProcessEditorExport.h>

#include <QWidget>

#include <memory>

// Edits the program text of a program app: the text of its main process. Every change is written into the app
// at once and marks it modified. Runs are started, stepped through and stopped from a row above it. The line at which a run failed is marked until the text is edited or the
// next run begins (IRpaDebugger::SigCheckNode). GUI thread only.
class RPAPROCESSEDITOR_EXPORT ProcessProgramEditorWidget : public QWidget
{
    Q_OBJECT

public:
    explicit ProcessProgramEditorWidget(QWidget* parent = nullptr);
    ~ProcessProgramEditorWidget() override;

    // Name and version of the library that colours the program text; empty when the editor does it itself.
    static QString GetHighlighterName();

    // Shows another app; null empties the editor. Undo steps of the former app are forgotten; the same app
    // given again keeps them.
    void SetRpaAppData(const RpaAppDataPtr& appData);

    // Goes to the line, from 1; beyond the end to the last one.
    void ShowLine(int line);

    // Marks the line of the first finding that has one and tells its message; none: takes the mark away.
    void ShowCheckInfos(const QList<RpaCheckInfo>& list);

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
