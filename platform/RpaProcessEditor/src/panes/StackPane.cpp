// SPDX-License-Identifier: Apache-2.0

#include "StackPane_p.h"
#include "WhyEmpty_p.h"

#include <OxBase/DpiTool.h>
#include <WbBaseUI/WbScaledForm.h>

#include <QHeaderView>
#include <QSignalBlocker>

namespace
{
QString CallName(const RpaDebugFrame& frame)
{
    // A program's top level is the process itself, and a visual process has no functions of its own.
    const bool whole = !frame.place.statementId.isEmpty() || frame.functionName.isEmpty() ||
                       frame.functionName == QLatin1String("<module>");
    return whole ? frame.place.processName : frame.functionName;
}
} // namespace

StackPane::StackPane(DebugFocus* debugFocus, QWidget* parent) : QWidget(parent), focus(debugFocus)
{
    ui.setupUi(this);
    WbScaledForm::Follow(this);
    ui.stackList->header()->resizeSection(0, DpiTool::ScaleDefault(260));
    connect(focus, &DebugFocus::SigChanged, this, &StackPane::Fill);
    connect(ui.stackList, &QTreeWidget::itemClicked, this, &StackPane::SlotChosen);
    connect(ui.stackList, &QTreeWidget::itemActivated, this, &StackPane::SlotChosen);
    connect(ui.stackList, &QTreeWidget::currentItemChanged, this,
            [this](const QTreeWidgetItem* item) { SlotChosen(item); });
    Fill();
}

void StackPane::Fill()
{
    const RpaPause pause = focus->Source()->GetPause();
    const QSignalBlocker silent(ui.stackList);
    if (pause.number != shownStop || pause.number == 0) {
        shownStop = pause.number;
        ui.stackList->clear();
        QList<QTreeWidgetItem*> items;
        for (const RpaDebugFrame& frame : pause.stack)
            items << new QTreeWidgetItem({CallName(frame), QStringLiteral("第 %1 行").arg(frame.place.line)});
        if (pause.depth > pause.stack.size()) {
            auto* rest = new QTreeWidgetItem(
                {QStringLiteral("还有 %1 层调用").arg(pause.depth - pause.stack.size()), QString()});
            rest->setDisabled(true);
            items << rest;
        }
        ui.stackList->addTopLevelItems(items); // which owns them
    }
    ui.stackList->setCurrentItem(ui.stackList->topLevelItem(focus->GetFrame()));
    ui.labelWhy->setText(WhyEmpty(focus->Source()->GetState(), QStringLiteral("调用栈")));
    ui.stack->setCurrentWidget(pause.number > 0 ? ui.pageValues : ui.pageWhy);
}

void StackPane::SlotChosen(const QTreeWidgetItem* item)
{
    const int frame = item ? ui.stackList->indexOfTopLevelItem(const_cast<QTreeWidgetItem*>(item)) : -1;
    if (frame < 0 || frame >= focus->Source()->GetPause().stack.size())
        return;
    focus->Choose(frame);
    emit SigPlaceChosen(focus->GetPlace());
}
