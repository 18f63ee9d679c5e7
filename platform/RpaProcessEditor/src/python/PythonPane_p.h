// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "ui_PythonPane.h"

#include <RpaAppData/RpaAppData.h>
#include <RpaEngineModule/RpaProcessPython.h>

#include <QThreadPool>
#include <QTimer>
#include <QWidget>

// The Python that a visual process becomes, beside its statements. Both follow each other: the lines of the
// current statement are marked, and the statement of the line that is clicked is chosen. It is made on a thread
// of its own, a moment after the last change, and only while it is shown.
class PythonPane : public QWidget
{
    Q_OBJECT

public:
    explicit PythonPane(QWidget* parent = nullptr);
    ~PythonPane() override;

    void SetApp(const RpaAppDataPtr& appData);
    void ShowProcess(const QString& name);
    // Empty: none.
    void SetCurrent(const QString& id);

signals:
    void SigStatementChosen(const QString& processName, const QString& statementId);

protected:
    void showEvent(QShowEvent* event) override;

private:
    void Make();
    void Take(int number, const RpaProcessPython& made);
    void Write(const QString& text);
    void Mark(bool scrolls);
    void SlotCursorMoved();
    void Copy();

    RpaAppDataPtr app;
    QString processName;
    QString current;
    RpaProcessPython python;
    int newest = 0; // number of the last one that was asked for
    bool marking = false;
    QTimer pause;
    Ui::PythonPane ui;
    QThreadPool thread; // goes first, with what it still makes
};
