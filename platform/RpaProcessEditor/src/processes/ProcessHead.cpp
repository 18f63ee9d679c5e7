// SPDX-License-Identifier: Apache-2.0

#include "ProcessHead_p.h"
#include "ProcessTabs_p.h"

#include <OxBase/DpiTool.h>

#include <QAction>
#include <QBoxLayout>
#include <QEvent>
#include <QToolButton>

ProcessHead::ProcessHead(ProcessTabs* processTabs, QWidget* parent)
    : QWidget(parent), tabs(processTabs), rows(new QBoxLayout(QBoxLayout::LeftToRight, this)),
      tools(new QHBoxLayout)
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

void ProcessHead::Arrange()
{
    const bool fit = width() >= tabs->sizeHint().width() + tools->sizeHint().width();
    const QBoxLayout::Direction direction = fit ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom;
    if (rows->direction() == direction)
        return;
    rows->setDirection(direction);
    // A row of its own stands clear of the tabs and of the statements.
    const int gap = fit ? 0 : DpiTool::ScaleDefault(4);
    rows->setSpacing(gap);
    rows->setContentsMargins(0, 0, 0, gap);
}

void ProcessHead::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    Arrange();
}

// A tab more, or a longer name.
bool ProcessHead::event(QEvent* event)
{
    if (event->type() == QEvent::LayoutRequest)
        Arrange();
    return QWidget::event(event);
}
