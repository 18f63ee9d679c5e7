// SPDX-License-Identifier: Apache-2.0

#include "BreakpointActs_p.h"
#include "BreakpointMark_p.h"
#include "BreakpointsPane_p.h"
#include "CommandTexts_p.h"

#include <OxBase/DpiTool.h>
#include <RpaProcessData/ProcessDataManager.h>
#include <RpaProcessData/RpaProcess.h>
#include <WbBaseUI/WbScaledForm.h>

#include <QAction>
#include <QHeaderView>
#include <QSignalBlocker>
#include <QTimer>

namespace
{
enum BreakpointColumn
{
    PlaceColumn,
    StatementTextColumn,
    TermsColumn
};
} // namespace

BreakpointsPane::BreakpointsPane(QWidget* parent) : QWidget(parent)
{
    ui.setupUi(this);
    WbScaledForm::Follow(this);
    ui.labelWhy->setText(QStringLiteral("还没有断点；点击语句左侧的空白处，或按 F9 设置"));
    ui.breakpointList->header()->resizeSection(PlaceColumn, DpiTool::ScaleDefault(180));
    ui.breakpointList->header()->resizeSection(StatementTextColumn, DpiTool::ScaleDefault(300));
    AddAct(QStringLiteral("actionEditBreakpoint"), QStringLiteral("断点条件…"), Qt::Key_F2,
           &BreakpointsPane::Edit);
    AddAct(QStringLiteral("actionRemoveBreakpoint"), QStringLiteral("删除断点"), Qt::Key_Delete,
           &BreakpointsPane::Remove);
    AddAct(QStringLiteral("actionRemoveBreakpoints"), QStringLiteral("删除全部断点"), 0,
           &BreakpointsPane::RemoveAll);
    connect(ui.breakpointList, &QTreeWidget::itemActivated, this,
            [this](const QTreeWidgetItem* item) { emit SigPlaceChosen(PlaceOf(item)); });
    connect(ui.breakpointList, &QTreeWidget::itemChanged, this, &BreakpointsPane::SlotTicked);
    Fill();
}

void BreakpointsPane::AddAct(const QString& name, const QString& text, int key,
                             void (BreakpointsPane::*act)())
{
    auto* action = new QAction(text, ui.breakpointList);
    action->setObjectName(name);
    action->setShortcut(QKeySequence(key));
    action->setShortcutContext(Qt::WidgetShortcut);
    ui.breakpointList->addAction(action);
    connect(action, &QAction::triggered, this, act);
}

void BreakpointsPane::SetBreakpoints(const QSharedPointer<AppBreakpoints>& list)
{
    if (breakpoints)
        breakpoints->disconnect(this);
    breakpoints = list;
    if (breakpoints)
        connect(breakpoints.data(), &AppBreakpoints::SigChanged, this, &BreakpointsPane::Fill);
    Fill();
}

void BreakpointsPane::Fill()
{
    const QSignalBlocker silent(ui.breakpointList);
    const int row = ui.breakpointList->indexOfTopLevelItem(ui.breakpointList->currentItem());
    shown = breakpoints ? breakpoints->Get() : QVector<RpaBreakpoint>();
    ui.breakpointList->clear();
    QList<QTreeWidgetItem*> items;
    for (const RpaBreakpoint& point : qAsConst(shown))
        items << MakeItem(point);
    ui.breakpointList->addTopLevelItems(items); // which owns them
    ui.breakpointList->setCurrentItem(ui.breakpointList->topLevelItem(qBound(0, row, shown.size() - 1)));
    ui.stack->setCurrentWidget(shown.isEmpty() ? ui.pageWhy : ui.pageValues);
}

QTreeWidgetItem* BreakpointsPane::MakeItem(const RpaBreakpoint& point) const
{
    auto* item = new QTreeWidgetItem(
        {BreakpointActs::PlaceText(point.place), StatementText(point.place), BreakpointMark::Terms(point)});
    item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
    item->setCheckState(PlaceColumn, point.enabled ? Qt::Checked : Qt::Unchecked);
    return item;
}

QString BreakpointsPane::StatementText(const RpaDebugPlace& place) const
{
    const RpaProcess* process = breakpoints->App()->GetProcessDataManager()->FindProcess(place.processName);
    if (!process)
        return QString();
    if (const RpaStatementNode* node = process->Find(place.statementId))
        return CommandTexts::Title(node->GetCommand());
    return process->GetProgramText().section(QLatin1Char('\n'), place.line - 1, place.line - 1).trimmed();
}

RpaDebugPlace BreakpointsPane::PlaceOf(const QTreeWidgetItem* item) const
{
    const int row = ui.breakpointList->indexOfTopLevelItem(const_cast<QTreeWidgetItem*>(item));
    return row < 0 ? RpaDebugPlace() : shown.at(row).place;
}

void BreakpointsPane::SlotTicked(const QTreeWidgetItem* item)
{
    // The list is made anew by it, and must not be while it tells of its item.
    QTimer::singleShot(
        0, this,
        [list = breakpoints, place = PlaceOf(item), ticked = item->checkState(PlaceColumn) == Qt::Checked] {
            list->SetEnabled(place, ticked);
        });
}

void BreakpointsPane::Edit()
{
    if (const QTreeWidgetItem* item = ui.breakpointList->currentItem())
        BreakpointActs::Edit(breakpoints, PlaceOf(item), this);
}

void BreakpointsPane::Remove()
{
    if (const QTreeWidgetItem* item = ui.breakpointList->currentItem())
        breakpoints->Remove(PlaceOf(item));
}

void BreakpointsPane::RemoveAll()
{
    breakpoints->Clear();
}
