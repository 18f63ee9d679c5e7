#pragma once

#include <RpaAppTool/IAppToolWidget.h>
#include <RpaEngineCore/IProcessLifeCycle.h>

#include <QPointer>
#include <QVector>

class FlowLayout;
class RpaToolData;
class WbPushButton;

// The tools as buttons. A tool whose process runs shows "停止"; the others wait, disabled, until it has
// ended.
class AppToolWidget : public IAppToolWidget, public IProcessLifeCycle
{
    Q_OBJECT

public:
    explicit AppToolWidget(QWidget* parent);
    ~AppToolWidget() override;

    void SetToolData(RpaToolData* data) override;

    void ProcessStart(const QString& processName) override;
    void ProcessFinish(const QString& processName) override;

private:
    void Rebuild();
    void UpdateButtons();
    void Press(int index);

    QPointer<RpaToolData> toolData;
    FlowLayout* flow;
    QVector<WbPushButton*> buttons;
    QString runningProcess;
    int runningIndex = -1; // of the tool that started it; -1 when it was started elsewhere
};
