// SPDX-License-Identifier: Apache-2.0

#include "ChoicesField_p.h"

#include <OxBase/DpiTool.h>
#include <WbBaseUI/UIUtils.h>

#include <QListWidget>
#include <QSignalBlocker>

namespace
{
constexpr int rowHeight = 28;
constexpr int seenRows = 5;
} // namespace

ChoicesField::ChoicesField(const RpaParamItem& item) : list(new QListWidget)
{
    for (const QString& choice : item.choices) {
        auto* row = new QListWidgetItem(choice, list);
        row->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
        row->setCheckState(Qt::Unchecked);
        row->setToolTip(UIUtils::PlainToolTip(choice));
        row->setSizeHint(QSize(0, DpiTool::ScaleDefault(rowHeight)));
    }
    const int rows = qBound(1, list->count(), seenRows);
    list->setFixedHeight(rows * DpiTool::ScaleDefault(rowHeight) + 2 * list->frameWidth() + 2);
    list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    list->setTextElideMode(Qt::ElideRight);
    AddInput(list);
    connect(list, &QListWidget::itemChanged, this, &ChoicesField::TakeTicks);
}

void ChoicesField::ShowValue(const QVariant& value)
{
    const QSignalBlocker blocker(list);
    const QStringList picked = value.toStringList();
    for (int i = 0; i < list->count(); ++i)
        list->item(i)->setCheckState(picked.contains(list->item(i)->text()) ? Qt::Checked : Qt::Unchecked);
    list->viewport()->update();
}

void ChoicesField::TakeTicks()
{
    QStringList picked;
    for (int i = 0; i < list->count(); ++i)
        if (list->item(i)->checkState() == Qt::Checked)
            picked << list->item(i)->text();
    // None is an answer too: the default must not come back.
    emit SigEntered(picked);
}
