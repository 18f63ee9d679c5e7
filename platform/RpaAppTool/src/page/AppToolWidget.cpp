// SPDX-License-Identifier: Apache-2.0

#include "AppToolWidget_p.h"
#include "FlowLayout_p.h"

#include <OxBase/DpiTool.h>
#include <RpaAppData/RpaToolData.h>
#include <RpaEngineCore/RpaProcessLifeCycleManager.h>
#include <WbBaseUI/WbIcons.h>
#include <WbBaseUI/WbPushButton.h>

IAppToolWidget::IAppToolWidget(QWidget* parent) : QWidget(parent) {}

IAppToolWidget::~IAppToolWidget() = default;

IAppToolWidget* IAppToolWidget::CreateToolEditor(QWidget* parent)
{
    return new AppToolWidget(parent);
}

AppToolWidget::AppToolWidget(QWidget* parent)
    : IAppToolWidget(parent), flow(new FlowLayout(this, DpiTool::ScaleDefault(8)))
{
    setObjectName(QStringLiteral("AppToolWidget"));
    const int margin = DpiTool::ScaleDefault(4);
    flow->setContentsMargins(margin, margin, margin, margin);
    RpaProcessLifeCycleManager::Instance()->AddLifeCycle(this);
}

AppToolWidget::~AppToolWidget()
{
    RpaProcessLifeCycleManager::Instance()->RemoveLifeCycle(this);
}

void AppToolWidget::SetToolData(RpaToolData* pageData)
{
    if (toolData)
        toolData->disconnect(this);
    toolData = pageData;
    if (toolData) {
        connect(toolData, &RpaToolData::SigChanged, this, &AppToolWidget::Rebuild);
        connect(toolData, &QObject::destroyed, this, &AppToolWidget::Rebuild);
    }
    runningIndex = -1;
    Rebuild();
}

void AppToolWidget::Rebuild()
{
    const int count = toolData ? toolData->GetCount() : 0;
    while (buttons.size() > count) {
        WbPushButton* button = buttons.takeLast();
        button->hide();
        button->deleteLater();
        delete flow->takeAt(flow->count() - 1);
    }
    while (buttons.size() < count) {
        const int index = buttons.size();
        auto* button = new WbPushButton(this);
        button->setObjectName(QStringLiteral("toolButton%1").arg(index));
        connect(button, &QPushButton::clicked, this, [this, index] { Press(index); });
        flow->addWidget(button);
        button->show();
        buttons << button;
    }
    UpdateButtons();
}

void AppToolWidget::UpdateButtons()
{
    for (int index = 0; index < buttons.size(); ++index) {
        const RpaToolItem tool = toolData->GetItem(index);
        const bool runs = IsBusy() && index == runningIndex;
        WbPushButton* button = buttons.at(index);
        const QString icon = tool.icon.isEmpty() ? QStringLiteral("run") : tool.icon;
        button->setText(runs ? QStringLiteral("停止") : tool.text);
        button->setIcon(WbIcons::Get(runs ? QStringLiteral("stop") : icon, WbColor::TextOnAccent));
        button->SetButtonType(runs ? Wb::DangerButton : Wb::PrimaryButton);
        button->setEnabled(runs || (!IsBusy() && !tool.processName.isEmpty()));
        button->setToolTip(tool.processName.isEmpty() ? QStringLiteral("这个工具还没有选择流程")
                                                      : QStringLiteral("运行流程“%1”").arg(tool.processName));
        button->setAccessibleName(runs ? QStringLiteral("停止 %1").arg(tool.text) : tool.text);
    }
    flow->invalidate();
    updateGeometry();
}

void AppToolWidget::Press(int index)
{
    const QString processName = toolData ? toolData->GetItem(index).processName : QString();
    if (IsBusy()) {
        emit SigStopProcess(runningProcess.isEmpty() ? processName : runningProcess);
        return;
    }
    AskToRun(index, processName);
}

void AppToolWidget::AskToRun(int index, const QString& processName)
{
    runningIndex = index;
    askedProcess = processName;
    isPressing = true;
    const QPointer<AppToolWidget> alive(this);
    emit SigRunProcess(processName);
    if (alive)
        isPressing = false;
}

int AppToolWidget::ToolOf(const QString& processName) const
{
    for (int index = 0; toolData && index < toolData->GetCount(); ++index) {
        const QString name = toolData->GetItem(index).processName;
        if (!name.isEmpty() && (processName.isEmpty() || name == processName))
            return index;
    }
    return -1;
}

bool AppToolWidget::Run(const QString& processName)
{
    const int index = ToolOf(processName);
    if (IsBusy() || (index < 0 && processName.isEmpty()))
        return false;
    AskToRun(index, index < 0 ? processName : toolData->GetItem(index).processName);
    return true;
}

bool AppToolWidget::Stop()
{
    if (!IsBusy())
        return false;
    emit SigStopProcess(runningProcess.isEmpty() ? askedProcess : runningProcess);
    return true;
}

void AppToolWidget::RunWaits(bool waits)
{
    waiting = waits;
    // A run of somebody else's, which is not for these tools to stop.
    if (waits && !isPressing)
        runningIndex = -1;
    UpdateButtons();
}

void AppToolWidget::ProcessStart(const QString& processName)
{
    runningProcess = processName;
    UpdateButtons();
}

void AppToolWidget::ProcessFinish(const QString&)
{
    runningProcess.clear();
    runningIndex = -1;
    UpdateButtons();
}
