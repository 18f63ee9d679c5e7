// SPDX-License-Identifier: Apache-2.0

#include "TakenAlongDialog.h"

#include <OxBase/DpiFollower.h>
#include <OxBase/DpiTool.h>
#include <WbBaseUI/UIUtils.h>
#include <WbBaseUI/WbComboBox.h>
#include <WbBaseUI/WbScaledForm.h>
#include <WbBaseUI/WbTheme.h>

#include <QEvent>
#include <QHeaderView>

namespace
{
enum Column
{
    WhereColumn,
    WhatColumn,
    ActColumn,
};
constexpr int rowHeight = 40;
constexpr int actWidth = 124;
} // namespace

TakenAlongDialog::TakenAlongDialog(const QVector<TakenAlong>& shown, const QString& act, QWidget* parent)
    : WbBaseDialog(parent, Qt::WindowCloseButtonHint, 1, true), entries(shown)
{
    ui.setupUi(GetContentWidget());
    WbScaledForm::Follow(GetContentWidget());
    setObjectName(QStringLiteral("TakenAlongDialog"));
    SetTitle(QStringLiteral("随应用%1的数据").arg(act));
    ui.tableTakenAlong->setAccessibleName(QStringLiteral("随应用%1的数据").arg(act));
    ui.buttonGoOn->setText(QStringLiteral("继续%1").arg(act));
    PrepareTable();
    for (const TakenAlong& entry : entries)
        AddRow(entry);
    connect(ui.buttonGoOn, &QPushButton::clicked, this, &QDialog::accept);
    connect(ui.buttonCancel, &QPushButton::clicked, this, &QDialog::reject);
}

void TakenAlongDialog::PrepareTable()
{
    QTableWidget* const table = ui.tableTakenAlong;
    table->setHorizontalHeaderLabels(
        {QStringLiteral("位置"), QStringLiteral("内容"), QStringLiteral("处理")});
    table->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    table->horizontalHeader()->setSectionResizeMode(WhereColumn, QHeaderView::Stretch);
    table->horizontalHeader()->setSectionResizeMode(WhatColumn, QHeaderView::Stretch);
    table->verticalHeader()->hide();
    DpiFollower::Follow(table, [table] {
        table->setColumnWidth(ActColumn, DpiTool::ScaleDefault(actWidth));
        table->verticalHeader()->setDefaultSectionSize(DpiTool::ScaleDefault(rowHeight));
    });
}

void TakenAlongDialog::AddRow(const TakenAlong& entry)
{
    const bool isPassword = entry.kind == TakenAlong::Kind::Password;
    const int row = ui.tableTakenAlong->rowCount();
    ui.tableTakenAlong->insertRow(row);
    for (const auto& [column, text] :
         {std::pair(WhereColumn, entry.where), std::pair(WhatColumn, entry.what)}) {
        auto* item = new QTableWidgetItem(text);
        item->setToolTip(UIUtils::PlainToolTip(text));
        if (isPassword)
            item->setForeground(WbTheme::Instance()->Color(WbColor::DangerText));
        ui.tableTakenAlong->setItem(row, column, item);
    }
    auto* choice = new WbComboBox;
    choice->setObjectName(QStringLiteral("choiceTakenAlong%1").arg(row));
    choice->setAccessibleName(entry.where);
    choice->addItem(QStringLiteral("保留"));
    choice->addItem(isPassword ? QStringLiteral("改为参数") : QStringLiteral("清除"));
    choice->setCurrentIndex(isPassword ? 1 : 0);
    choice->installEventFilter(this);
    auto* place = new QWidget;
    auto* layout = new QHBoxLayout(place);
    layout->setContentsMargins(6, 4, 6, 4);
    layout->addWidget(choice);
    ui.tableTakenAlong->setCellWidget(row, ActColumn, place);
}

// Whoever scrolls through the list decides nothing on the way.
bool TakenAlongDialog::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::Wheel)
        return WbBaseDialog::eventFilter(watched, event);
    event->ignore();
    return true;
}

QVector<TakenAlong> TakenAlongDialog::GetTakenOut() const
{
    QVector<TakenAlong> out;
    for (int row = 0; row < entries.size(); ++row) {
        const auto* choice = ui.tableTakenAlong->cellWidget(row, ActColumn)->findChild<const QComboBox*>();
        if (choice && choice->currentIndex() == 1)
            out << entries.at(row);
    }
    return out;
}
