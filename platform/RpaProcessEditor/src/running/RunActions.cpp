// SPDX-License-Identifier: Apache-2.0

#include "GivenDialog_p.h"
#include "RunActions_p.h"

#include <RpaEngineModule/RpaDebugSession.h>
#include <RpaEngineModule/RpaEngineModule.h>
#include <WbBaseUI/UIUtils.h>
#include <WbBaseUI/WbIcons.h>
#include <WbBaseUI/WbToast.h>

#include <QAction>
#include <QApplication>
#include <QPointer>

using Phase = RunState::Phase;

namespace
{
RpaDebugSession* Session()
{
    return RpaEngineModule::Instance()->GetDebugSession();
}

// What is being written in a field or a cell is the app's only once the field is left; a key does not leave it.
void LeaveField()
{
    const QPointer<QWidget> field = QApplication::focusWidget();
    if (!field)
        return;
    field->clearFocus();
    if (field && field->isVisible() && !QApplication::focusWidget())
        field->setFocus(Qt::OtherFocusReason);
}
} // namespace

RunActions::RunActions(QWidget* page, const RunPlace& runPlace) : host(page), place(runPlace), values(state)
{
    run = Add("actionRun", QStringLiteral("运行"), Qt::Key_F5, "run", &RunActions::Run);
    runFree = Add("actionRunFree", QStringLiteral("不停顿运行"), Qt::CTRL + Qt::Key_F5, "run-free",
                  &RunActions::RunFree);
    toHere = Add("actionRunToHere", QStringLiteral("运行到此处"), Qt::CTRL + Qt::Key_F10, "",
                 &RunActions::RunToHere);
    fromHere = Add("actionRunFromHere", QStringLiteral("从此处运行…"), Qt::CTRL + Qt::SHIFT + Qt::Key_F10, "",
                   &RunActions::RunFromHere);
    selected = Add("actionRunSelected", QStringLiteral("只运行所选…"), Qt::CTRL + Qt::SHIFT + Qt::Key_F5, "",
                   &RunActions::RunSelected);
    pause = Add("actionPause", QStringLiteral("暂停"), Qt::Key_F6, "pause", &RunActions::Pause);
    over = Add("actionStepOver", QStringLiteral("单步跳过"), Qt::Key_F10, "step-over", &RunActions::StepOver);
    into = Add("actionStepInto", QStringLiteral("单步进入"), Qt::Key_F11, "step-into", &RunActions::StepInto);
    out = Add("actionStepOut", QStringLiteral("单步跳出"), Qt::SHIFT + Qt::Key_F11, "step-out",
              &RunActions::StepOut);
    stop = Add("actionStop", QStringLiteral("停止"), Qt::SHIFT + Qt::Key_F5, "stop", &RunActions::Stop);
    connect(&state, &RunState::SigChanged, this, &RunActions::Update);
    Update();
}

RunActions::~RunActions()
{
    if (state.GetPhase() == Phase::Paused)
        RpaEngineModule::Instance()->Terminate(state.GetProcess());
}

QAction* RunActions::Add(const char* name, const QString& text, const QKeySequence& key, const char* icon,
                         Act act)
{
    auto* action = new QAction(WbIcons::Get(QLatin1String(icon)), text, host);
    action->setObjectName(QLatin1String(name));
    action->setShortcut(key);
    action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    action->setAutoRepeat(false);
    action->setToolTip(UIUtils::WithKeys(text, key));
    host->addAction(action);
    connect(action, &QAction::triggered, this, act);
    return action;
}

void RunActions::SetApp(const RpaAppDataPtr& appData)
{
    values.Forget();
    state.SetApp(appData);
}

void RunActions::Update()
{
    RpaDebugPlace current;
    const Phase phase = state.GetPhase();
    const bool paused = phase == Phase::Paused;
    const QString start = WhyNotStart();
    const QString here = place.FindCurrent(current) ? QString() : QStringLiteral("先选择语句");
    const QString chosen = place.HasSelection() ? QString() : QStringLiteral("先选择语句");
    run->setText(paused ? QStringLiteral("继续") : QStringLiteral("运行"));
    run->setToolTip(UIUtils::WithKeys(run->text(), run->shortcut()));
    Enable(run, paused ? QString() : start);
    Enable(runFree, start);
    Enable(toHere, paused || start.isEmpty() ? here : start);
    Enable(fromHere, start.isEmpty() ? here : start);
    Enable(selected, start.isEmpty() ? chosen : start);
    Enable(pause, paused ? QStringLiteral("流程已经暂停") : WhyNotAct());
    Enable(over, paused ? QString() : start);
    Enable(into, paused ? QString() : start);
    Enable(out, WhyNotGoOn());
    Enable(stop, phase == Phase::Waiting ? QString() : WhyNotAct());
}

// whyNot: empty when it can be done; otherwise it is told where all acts are listed.
void RunActions::Enable(QAction* action, const QString& whyNot)
{
    action->setEnabled(whyNot.isEmpty());
    action->setProperty("whyNot", whyNot);
}

QString RunActions::WhyNotStart() const
{
    switch (state.GetPhase()) {
    case Phase::Idle:
        return place.GetProcess().isEmpty() ? QStringLiteral("还没有流程") : QString();
    case Phase::Elsewhere:
        return QStringLiteral("另一个流程正在运行");
    case Phase::Waiting:
    case Phase::Running:
    case Phase::Paused:
        break;
    }
    return QStringLiteral("流程正在运行");
}

QString RunActions::WhyNotAct() const
{
    const Phase phase = state.GetPhase();
    if (phase == Phase::Running || phase == Phase::Paused)
        return QString();
    if (phase == Phase::Elsewhere)
        return QStringLiteral("另一个流程正在运行");
    return phase == Phase::Waiting ? QStringLiteral("流程还没有开始") : QStringLiteral("没有流程在运行");
}

QString RunActions::WhyNotGoOn() const
{
    return state.GetPhase() == Phase::Paused ? QString() : QStringLiteral("流程没有暂停");
}

void RunActions::Run()
{
    if (!Session()->Resume(RpaDebugStep::Continue))
        Start({});
}

void RunActions::RunFree()
{
    RpaRunPlan plan;
    plan.ignoresBreakpoints = true;
    Start(plan);
}

void RunActions::RunToHere()
{
    RpaRunPlan plan;
    plan.kind = RpaRunKind::ToHere;
    if (!place.FindCurrent(plan.place))
        return;
    if (state.GetPhase() != Phase::Paused)
        Start(plan);
    else if (!Session()->RunTo(plan.place))
        WbToast::Show(QStringLiteral("正在运行的流程不包含此处"), ToastWarning);
}

void RunActions::RunFromHere()
{
    RpaRunPlan plan;
    plan.kind = RpaRunKind::FromHere;
    if (place.FindCurrent(plan.place))
        StartPart(plan);
}

void RunActions::RunSelected()
{
    RpaRunPlan plan;
    if (place.FindSelected(plan))
        StartPart(plan);
}

void RunActions::Pause()
{
    Session()->Pause();
}

void RunActions::StepOver()
{
    Step(RpaDebugStep::Over);
}

void RunActions::StepInto()
{
    Step(RpaDebugStep::Into);
}

void RunActions::StepOut()
{
    Session()->Resume(RpaDebugStep::Out);
}

void RunActions::Step(RpaDebugStep step)
{
    if (Session()->Resume(step))
        return;
    RpaRunPlan plan; // the first step is the one to the first statement
    plan.pauseAtFirst = true;
    Start(plan);
}

void RunActions::Stop()
{
    emit SigStopAsked(state.GetProcess());
}

void RunActions::StartPart(RpaRunPlan plan)
{
    LeaveField();
    const RpaPartVariables variables = place.FindVariables(plan);
    if (!variables.needed.isEmpty() || !variables.unknown.isEmpty()) {
        const QPointer<RunActions> self(this);
        const QPointer<GivenDialog> dialog = new GivenDialog(variables, values, host);
        const bool accepted = dialog->exec() == QDialog::Accepted;
        if (self && accepted && dialog)
            plan.given = dialog->GetGiven();
        delete dialog;
        if (!self || !accepted)
            return;
        values.Keep(plan.given);
    }
    Start(plan);
}

void RunActions::Start(const RpaRunPlan& plan)
{
    LeaveField();
    const QString processName = place.GetProcess();
    if (processName.isEmpty() || state.GetPhase() != Phase::Idle)
        return;
    const QPointer<RunActions> self(this);
    Session()->SetNextRun(plan);
    state.SetAsking(processName);
    emit SigRunAsked(processName);
    if (!self) {
        Session()->TakeNextRun();
        return;
    }
    state.SetAsking(QString());
    // A run that was refused must not leave its plan to the next one.
    if (state.GetPhase() != Phase::Waiting)
        Session()->TakeNextRun();
}
