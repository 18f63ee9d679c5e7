// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaAppTool/IAppToolWidget.h>
#include <RpaEngineCore/IProcessLifeCycle.h>

#include <QPointer>
#include <QVector>

class FlowLayout;
class RpaToolData;
class WbPushButton;

// The tools as buttons. A tool whose process runs, or waits to, shows "停止"; the others wait, disabled,
// until it has ended.
class AppToolWidget : public IAppToolWidget, public IProcessLifeCycle
{
    Q_OBJECT

public:
    explicit AppToolWidget(QWidget* parent);
    ~AppToolWidget() override;

    void SetToolData(RpaToolData* data) override;
    bool Run(const QString& processName) override;
    bool Stop() override;
    bool IsBusy() const override { return waiting || !runningProcess.isEmpty(); }

    void RunWaits(bool waits) override;
    void ProcessStart(const QString& processName) override;
    void ProcessFinish(const QString& processName) override;

private:
    void Rebuild();
    void UpdateButtons();
    void Press(int index);
    void AskToRun(int index, const QString& processName);
    int ToolOf(const QString& processName) const;

    QPointer<RpaToolData> toolData;
    FlowLayout* flow;
    QVector<WbPushButton*> buttons;
    QString runningProcess;
    QString askedProcess; // by the user, here
    bool waiting = false;
    bool isPressing = false; // what starts to wait now was asked for here
    int runningIndex = -1;   // of the tool that started it; -1 when it was started elsewhere
};
