// SPDX-License-Identifier: Apache-2.0

#include "CheckDelegate_p.h"
#include "CheckPane_p.h"

#include <OxBase/DpiTool.h>
#include <WbBaseUI/UIUtils.h>
#include <WbBaseUI/WbIcons.h>

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QScrollBar>
#include <QToolButton>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace
{
// More than this nobody works through; the first ones matter.
constexpr int maximumShown = 1000;

enum Column
{
    MessageColumn,
    RemedyColumn,
    ProcessColumn,
    ColumnCount
};
} // namespace

CheckPane::CheckPane(QWidget* parent) : QWidget(parent), title(new QLabel), list(new QTreeWidget)
{
    setObjectName(QStringLiteral("checkPane"));
    title->setObjectName(QStringLiteral("labelCheckTitle"));
    list->setObjectName(QStringLiteral("checkList"));
    list->setAccessibleName(QStringLiteral("检查结果"));
    list->setColumnCount(ColumnCount);
    list->setHeaderLabels({QStringLiteral("问题"), QStringLiteral("怎样解决"), QStringLiteral("流程")});
    list->setRootIsDecorated(false);
    list->setItemDelegate(new CheckDelegate(list));
    list->setWordWrap(true);
    list->setFrameShape(QFrame::NoFrame);
    list->header()->setStretchLastSection(false);
    list->header()->setSectionResizeMode(MessageColumn, QHeaderView::Stretch);
    list->header()->setSectionResizeMode(RemedyColumn, QHeaderView::Stretch);
    list->header()->setSectionResizeMode(ProcessColumn, QHeaderView::Interactive);
    list->header()->setMinimumSectionSize(DpiTool::ScaleDefault(72));
    auto* close = new QToolButton;
    close->setObjectName(QStringLiteral("checkCloseButton"));
    close->setIcon(WbIcons::Get(QStringLiteral("close")));
    close->setAutoRaise(true);
    close->setToolTip(QStringLiteral("关闭检查结果"));
    close->setAccessibleName(QStringLiteral("关闭检查结果"));
    auto* top = new QHBoxLayout;
    top->setContentsMargins(10, 4, 6, 2);
    top->addWidget(title);
    top->addStretch();
    top->addWidget(close);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addLayout(top);
    layout->addWidget(list);

    measuring.setSingleShot(true);
    measuring.setInterval(0);
    connect(list->header(), &QHeaderView::sectionResized, &measuring, qOverload<>(&QTimer::start));
    connect(&measuring, &QTimer::timeout, list, &QTreeWidget::doItemsLayout);
    connect(list, &QTreeWidget::itemActivated, this, &CheckPane::SlotActivated);
    connect(close, &QToolButton::clicked, this, &QWidget::hide);
    hide();
}

void CheckPane::ShowFindings(const QList<RpaCheckInfo>& findings)
{
    Fill(findings);
    setVisible(!findings.isEmpty());
}

void CheckPane::KeepFindings(const QList<RpaCheckInfo>& findings)
{
    const int place = list->verticalScrollBar()->value();
    Fill(findings);
    list->verticalScrollBar()->setValue(place);
    setVisible(!findings.isEmpty() && !isHidden());
}

void CheckPane::Fill(const QList<RpaCheckInfo>& findings)
{
    list->clear();
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
    list->addTopLevelItems(items);
    title->setText(QStringLiteral("检查发现 %1 个问题，双击定位").arg(findings.size()));
}

void CheckPane::SlotActivated(const QTreeWidgetItem* item)
{
    emit SigFindingChosen(item->text(ProcessColumn), item->data(MessageColumn, Qt::UserRole).toString());
}
