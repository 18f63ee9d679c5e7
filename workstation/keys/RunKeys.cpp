// SPDX-License-Identifier: Apache-2.0

#include "RunKeys.h"

#include "MainWindow.h"

#include <RpaAppTool/IAppToolWidget.h>
#include <WbBaseUI/WbIconButtonWidget.h>
#include <WbBaseUI/WbToast.h>

#include <QAction>

namespace
{
bool IsShown(const QAction* action)
{
    const auto* const page = action ? qobject_cast<const QWidget*>(action->parent()) : nullptr;
    return page && page->isVisible();
}

QString WhyNotTrigger(const QAction* action)
{
    if (!action)
        return QStringLiteral("应用还没有打开");
    return action->isEnabled() ? QString() : action->property("whyNot").toString();
}

bool IsPaused(const QAction* stepOut)
{
    return stepOut && stepOut->isEnabled();
}
} // namespace

void RunKeys::BindTo(KeyActs* acts) const
{
    BindRun(acts);
    BindStop(acts);
    BindPlaces(acts);
    BindSteps(acts);
}

// On the page of the processes the one that is shown runs, anywhere else that of the first tool. What stands
// still goes on.
void RunKeys::BindRun(KeyActs* acts) const
{
    const auto tools = [this] { return window->CurrentPage()->findChild<IAppToolWidget*>(); };
    const auto isByAction = [this] {
        return IsShown(Action("actionRun")) || IsPaused(Action("actionStepOut"));
    };
    acts->Bind(
        KeyAct::Run,
        [this, tools, isByAction] {
            if (isByAction())
                return WhyNotTrigger(Action("actionRun"));
            if (!tools())
                return QStringLiteral("应用还没有打开");
            return tools()->IsBusy() ? QStringLiteral("流程正在运行") : QString();
        },
        [this, tools, isByAction] {
            if (isByAction())
                Trigger("actionRun");
            else if (!tools()->Run(QString()))
                WbToast::Show(QStringLiteral("界面上还没有选择了流程的工具"), ToastWarning);
        });
}

void RunKeys::BindStop(KeyActs* acts) const
{
    const auto tools = [this] { return window->CurrentPage()->findChild<IAppToolWidget*>(); };
    const auto isByAction = [this] {
        const QAction* const stop = Action("actionStop");
        return stop && stop->isEnabled();
    };
    acts->Bind(
        KeyAct::Stop,
        [tools, isByAction] {
            const bool runs = isByAction() || (tools() && tools()->IsBusy());
            return runs ? QString() : QStringLiteral("没有流程在运行");
        },
        [this, tools, isByAction] {
            if (isByAction())
                Action("actionStop")->trigger();
            else
                tools()->Stop();
        });
}

// What is done at the statement or the line at which the author is.
void RunKeys::BindPlaces(KeyActs* acts) const
{
    const QPair<KeyAct, const char*> places[] = {{KeyAct::RunToHere, "actionRunToHere"},
                                                 {KeyAct::RunFromHere, "actionRunFromHere"},
                                                 {KeyAct::RunSelected, "actionRunSelected"},
                                                 {KeyAct::Breakpoint, "actionBreakpoint"}};
    for (const auto& [act, name] : places)
        acts->Bind(
            act,
            [this, name = name] {
                const QAction* const action = Action(name);
                if (action && !IsShown(action))
                    return QStringLiteral("先打开流程设计");
                return WhyNotTrigger(action);
            },
            [this, name = name] { Trigger(name); });
}

void RunKeys::BindSteps(KeyActs* acts) const
{
    const QPair<KeyAct, const char*> steps[] = {
        {KeyAct::RunFree, "actionRunFree"},   {KeyAct::Pause, "actionPause"},
        {KeyAct::StepOver, "actionStepOver"}, {KeyAct::StepInto, "actionStepInto"},
        {KeyAct::StepOut, "actionStepOut"},   {KeyAct::DebugPanes, "actionDebugPanes"}};
    for (const auto& [act, name] : steps)
        acts->Bind(
            act, [this, name = name] { return WhyNotTrigger(Action(name)); },
            [this, name = name] { Trigger(name); });
}

QAction* RunKeys::Action(const char* name) const
{
    const auto* const processes = window->CurrentPage()->findChild<QWidget*>(QStringLiteral("pageProcess"));
    return processes ? processes->findChild<QAction*>(QLatin1String(name)) : nullptr;
}

void RunKeys::Trigger(const char* name) const
{
    QAction* const action = Action(name);
    auto* const pageButton =
        window->CurrentPage()->findChild<WbIconButtonWidget*>(QStringLiteral("pushButtonProcess"));
    if (!IsShown(action) && pageButton)
        emit pageButton->SigClicked();
    action->trigger();
}
