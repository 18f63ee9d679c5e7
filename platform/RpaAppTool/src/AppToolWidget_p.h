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

    void RunWaits(bool waits) override;
    void ProcessStart(const QString& processName) override;
    void ProcessFinish(const QString& processName) override;

private:
    void Rebuild();
    void UpdateButtons();
    void Press(int index);
    // A process runs or waits to.
    bool IsBusy() const { return waiting || !runningProcess.isEmpty(); }

    QPointer<RpaToolData> toolData;
    FlowLayout* flow;
    QVector<WbPushButton*> buttons;
    QString runningProcess;
    bool waiting = false;
    bool isPressing = false; // what starts to wait now was asked for here
    int runningIndex = -1;   // of the tool that started it; -1 when it was started elsewhere
};
