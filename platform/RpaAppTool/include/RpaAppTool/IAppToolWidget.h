// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaAppTool/RpaAppToolExport.h>

#include <QWidget>

class RpaToolData;

// The tools of a UI page as its users see them: a button each, which runs the tool's process and, while that
// process runs, stops it. GUI thread only.
class RPAAPPTOOL_EXPORT IAppToolWidget : public QWidget
{
    Q_OBJECT

public:
    // Owned by the parent.
    static IAppToolWidget* CreateToolEditor(QWidget* parent);

    ~IAppToolWidget() override;

    // Shows these tools and follows their changes; null shows none. Not owned; may go away at any time.
    virtual void SetToolData(RpaToolData* data) = 0;

    // Presses the first tool that runs this process; without a name, the first one that runs any. A process
    // that no tool runs is asked for all the same. False while one runs or waits, and when there is nothing
    // to run.
    virtual bool Run(const QString& processName) = 0;

    // Asks for the end of the process that runs or waits to; false when there is none.
    virtual bool Stop() = 0;

    // A process runs or waits to.
    virtual bool IsBusy() const = 0;

signals:
    // The user wants a process to be run or stopped; the text is its name.
    void SigRunProcess(const QString& processName);
    void SigStopProcess(const QString& processName);

protected:
    explicit IAppToolWidget(QWidget* parent);
};
