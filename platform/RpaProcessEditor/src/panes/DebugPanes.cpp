// SPDX-License-Identifier: Apache-2.0

#include "BreakpointActs_p.h"
#include "BreakpointsPane_p.h"
#include "DebugPanes_p.h"
#include "StackPane_p.h"
#include "VariablesPane_p.h"
#include "WatchesPane_p.h"

#include <OxBase/DpiFollower.h>
#include <OxBase/DpiTool.h>
#include <WbBaseUI/WbIcons.h>
#include <WbBaseUI/WbScaledForm.h>

namespace
{
QString ReasonText(const RpaPause& pause)
{
    switch (pause.reason) {
    case RpaPauseReason::Breakpoint:
        return pause.note.isEmpty() ? QStringLiteral("停在断点") : pause.note;
    case RpaPauseReason::Error:
        return QStringLiteral("停在出错处：%1").arg(pause.errorText);
    case RpaPauseReason::Step:
    case RpaPauseReason::Pause:
    case RpaPauseReason::Target:
        break;
    }
    return QStringLiteral("已暂停");
}
} // namespace

DebugPanes::DebugPanes(DebugFocus* debugFocus, QWidget* parent)
    : QWidget(parent), focus(debugFocus), breakpointsPane(new BreakpointsPane)
{
    ui.setupUi(this);
    WbScaledForm::Follow(this);
    auto* variables = new VariablesPane(focus);
    auto* watches = new WatchesPane(focus);
    auto* stack = new StackPane(focus);
    const auto add = [this](QWidget* pane, const QString& title) {
        ui.tabBarPanes->addTab(title);
        ui.pages->addWidget(pane); // which owns it
    };
    add(variables, QStringLiteral("变量"));
    add(watches, QStringLiteral("监视"));
    add(stack, QStringLiteral("调用栈"));
    add(breakpointsPane, QStringLiteral("断点"));
    ui.tabBarPanes->setExpanding(false);
    ui.tabBarPanes->setAccessibleName(QStringLiteral("调试窗格"));
    ui.buttonClose->setIcon(WbIcons::Get(QStringLiteral("close")));
    DpiFollower::Follow(this, [this] { setMinimumHeight(DpiTool::ScaleDefault(160)); });
    connect(ui.tabBarPanes, &QTabBar::currentChanged, ui.pages, &QStackedWidget::setCurrentIndex);
    connect(ui.buttonClose, &QToolButton::clicked, this, &DebugPanes::Close);
    connect(focus->Source(), &DebugSource::SigStarted, this, [this] { isWanted = true; });
    connect(focus, &DebugFocus::SigChanged, this, &DebugPanes::ShowState);
    connect(variables, &VariablesPane::SigValueSet, watches, &WatchesPane::Refresh);
    connect(stack, &StackPane::SigPlaceChosen, this, &DebugPanes::SigPlaceChosen);
    connect(breakpointsPane, &BreakpointsPane::SigPlaceChosen, this, &DebugPanes::SigPlaceChosen);
    ShowState();
    hide();
}

void DebugPanes::SetBreakpoints(const QSharedPointer<AppBreakpoints>& list)
{
    breakpointsPane->SetBreakpoints(list);
}

void DebugPanes::Toggle()
{
    if (isHidden())
        show();
    else
        Close();
}

void DebugPanes::Close()
{
    hide();
    isWanted = false;
}

bool DebugPanes::OpenAtStop()
{
    if (!isHidden() || !isWanted)
        return false;
    show();
    return true;
}

QSize DebugPanes::sizeHint() const
{
    return {QWidget::sizeHint().width(), DpiTool::ScaleDefault(280)};
}

void DebugPanes::ShowState()
{
    const RpaPause pause = focus->Source()->GetPause();
    ui.labelState->SetText(
        pause.number == 0
            ? QString()
            : QStringLiteral("%1 · %2").arg(BreakpointActs::PlaceText(focus->GetPlace()), ReasonText(pause)));
}
