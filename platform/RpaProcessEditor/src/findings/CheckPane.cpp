// SPDX-License-Identifier: Apache-2.0

#include "CheckDelegate_p.h"
#include "CheckPane_p.h"

#include <OxBase/DpiTool.h>
#include <WbBaseUI/UIUtils.h>
#include <WbBaseUI/WbIcons.h>

#include <QHeaderView>
#include <QScrollBar>

namespace
{
// More than this nobody works through; the first ones matter.
constexpr int maximumShown = 1000;

enum Column
{
    MessageColumn,
    RemedyColumn,
    ProcessColumn
};
} // namespace

CheckPane::CheckPane(QWidget* parent) : QWidget(parent)
{
    ui.setupUi(this);
    ui.checkCloseButton->setIcon(WbIcons::Get(QStringLiteral("close")));
    ui.checkList->setItemDelegate(new CheckDelegate(ui.checkList));
    QHeaderView* const header = ui.checkList->header();
    header->setStretchLastSection(false);
    header->setSectionResizeMode(MessageColumn, QHeaderView::Stretch);
    header->setSectionResizeMode(RemedyColumn, QHeaderView::Stretch);
    header->setSectionResizeMode(ProcessColumn, QHeaderView::Interactive);
    header->setMinimumSectionSize(DpiTool::ScaleDefault(72));

    measuring.setSingleShot(true);
    measuring.setInterval(0);
    connect(header, &QHeaderView::sectionResized, &measuring, qOverload<>(&QTimer::start));
    connect(&measuring, &QTimer::timeout, ui.checkList, &QTreeWidget::doItemsLayout);
    connect(ui.checkList, &QTreeWidget::itemActivated, this, &CheckPane::SlotActivated);
    connect(ui.checkCloseButton, &QToolButton::clicked, this, &QWidget::hide);
    hide();
}

void CheckPane::ShowFindings(const QList<RpaCheckInfo>& findings)
{
    Fill(findings);
    setVisible(!findings.isEmpty());
}

void CheckPane::KeepFindings(const QList<RpaCheckInfo>& findings)
{
    const int place = ui.checkList->verticalScrollBar()->value();
    Fill(findings);
    ui.checkList->verticalScrollBar()->setValue(place);
    setVisible(!findings.isEmpty() && !isHidden());
}

void CheckPane::Fill(const QList<RpaCheckInfo>& findings)
{
    ui.checkList->clear();
    QList<QTreeWidgetItem*> items;
    for (const RpaCheckInfo& info : findings) {
        if (items.size() == maximumShown)
            break;
        auto* item = new QTreeWidgetItem({info.message, info.remedy, info.processName}); // the list takes it
        item->setData(MessageColumn, Qt::UserRole, info.statementId);
        item->setIcon(MessageColumn, WbIcons::Get(QStringLiteral("error"), WbColor::DangerText));
        item->setToolTip(MessageColumn, UIUtils::PlainToolTip(info.message));
        item->setToolTip(RemedyColumn, UIUtils::PlainToolTip(info.remedy));
        items.append(item);
    }
    ui.checkList->addTopLevelItems(items);
    ui.labelCheckTitle->setText(QStringLiteral("检查发现 %1 个问题，双击定位").arg(findings.size()));
}

void CheckPane::SlotActivated(const QTreeWidgetItem* item)
{
    emit SigFindingChosen(item->text(ProcessColumn), item->data(MessageColumn, Qt::UserRole).toString());
}
