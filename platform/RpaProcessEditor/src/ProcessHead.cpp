#include "ProcessHead_p.h"
#include "ProcessTabs_p.h"

#include <OxBase/DpiTool.h>

#include <QAction>
#include <QBoxLayout>
#include <QToolButton>

namespace
{
// Tools and at least two tabs; the width alone decides, so that a new tab does not turn the rows over.
constexpr int kWideEnoughForOneRow = 640;
} // namespace

ProcessHead::ProcessHead(ProcessTabs* tabs, QWidget* parent)
    : QWidget(parent), rows(new QBoxLayout(QBoxLayout::TopToBottom, this)), tools(new QHBoxLayout)
{
    auto* bar = new QWidget(this);
    bar->setObjectName(QStringLiteral("processToolBar"));
    bar->setLayout(tools);
    const int side = DpiTool::ScaleDefault(6);
    tools->setContentsMargins(side, 0, side, 0);
    tools->setSpacing(DpiTool::ScaleDefault(2));
    tools->addStretch();
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(0);
    rows->addWidget(tabs, 1);
    rows->addWidget(bar);
}

void ProcessHead::AddTool(QAction* action)
{
    auto* button = new QToolButton;
    button->setObjectName(action->objectName() + QStringLiteral("Button"));
    button->setDefaultAction(action);
    button->setAutoRaise(true);
    button->setAccessibleName(action->text());
    tools->insertWidget(tools->count() - 1, button);
}

void ProcessHead::AddGap()
{
    tools->insertSpacing(tools->count() - 1, DpiTool::ScaleDefault(10));
}

void ProcessHead::resizeEvent(QResizeEvent* event)
{
    const bool wide = width() >= DpiTool::ScaleDefault(kWideEnoughForOneRow);
    rows->setDirection(wide ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
    QWidget::resizeEvent(event);
}
