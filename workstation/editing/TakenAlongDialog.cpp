// SPDX-License-Identifier: Apache-2.0

#include "TakenAlongDialog.h"

#include <WbBaseUI/BaseUIBusiness.h>
#include <WbBaseUI/UIUtils.h>
#include <WbBaseUI/WbComboBox.h>
#include <WbBaseUI/WbLabel.h>
#include <WbBaseUI/WbPushButton.h>
#include <WbBaseUI/WbTheme.h>

#include <QEvent>
#include <QHeaderView>
#include <QTableWidget>
#include <QVBoxLayout>

namespace
{
enum Column
{
    WhereColumn,
    WhatColumn,
    ActColumn,
};
constexpr int rowHeight = 40;
} // namespace

TakenAlongDialog::TakenAlongDialog(const QVector<TakenAlong>& shown, const QString& act, QWidget* parent)
    : WbBaseDialog(parent, Qt::WindowCloseButtonHint, 1, true), entries(shown), table(new QTableWidget)
{
    setObjectName(QStringLiteral("TakenAlongDialog"));
    SetTitle(QStringLiteral("随应用%1的数据").arg(act));
    auto* hint = new WbLabel(QStringLiteral("得到这个应用的人会看到下面的数据。请选择哪些保留，哪些清除。写在"
                                            "步骤中的密码可以改为参数，由使用者自己填写。"));
    hint->setProperty("hint", true);
    hint->setWordWrap(true);
    table->setObjectName(QStringLiteral("tableTakenAlong"));
    table->setAccessibleName(QStringLiteral("随应用%1的数据").arg(act));
    table->setColumnCount(3);
    table->setHorizontalHeaderLabels(
        {QStringLiteral("位置"), QStringLiteral("内容"), QStringLiteral("处理")});
    table->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    table->horizontalHeader()->setSectionResizeMode(WhereColumn, QHeaderView::Stretch);
    table->horizontalHeader()->setSectionResizeMode(WhatColumn, QHeaderView::Stretch);
    table->setColumnWidth(ActColumn, 124);
    table->verticalHeader()->hide();
    table->verticalHeader()->setDefaultSectionSize(rowHeight);
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table->setSelectionMode(QAbstractItemView::NoSelection);
    table->setTabKeyNavigation(false);
    table->setFocusPolicy(Qt::NoFocus); // only the choices can be worked
    for (const TakenAlong& entry : entries)
        AddRow(entry);
    auto* go = new WbPushButton(nullptr, Wb::PrimaryButton);
    go->setObjectName(QStringLiteral("buttonGoOn"));
    go->setText(QStringLiteral("继续%1").arg(act));
    auto* cancel = new WbPushButton(nullptr, Wb::SecondaryButton);
    cancel->setObjectName(QStringLiteral("buttonCancel"));
    cancel->setText(QStringLiteral("取消"));
    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(12);
    buttons->addStretch();
    buttons->addWidget(go);
    buttons->addWidget(cancel);
    auto* layout = new QVBoxLayout(GetContentWidget());
    layout->setContentsMargins(24, 16, 24, 24);
    layout->setSpacing(16);
    layout->addWidget(hint);
    layout->addWidget(table, 1);
    layout->addLayout(buttons);
    GetContentWidget()->setMinimumSize(720, 360);
    connect(go, &QPushButton::clicked, this, &QDialog::accept);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
}

void TakenAlongDialog::AddRow(const TakenAlong& entry)
{
    const bool isPassword = entry.kind == TakenAlong::Kind::Password;
    const int row = table->rowCount();
    table->insertRow(row);
    for (const auto& [column, text] :
         {std::pair(WhereColumn, entry.where), std::pair(WhatColumn, entry.what)}) {
        auto* item = new QTableWidgetItem(text);
        item->setToolTip(UIUtils::PlainToolTip(text));
        if (isPassword)
            item->setForeground(WbTheme::Instance()->Color(WbColor::DangerText));
        table->setItem(row, column, item);
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
    table->setCellWidget(row, ActColumn, place);
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
        const auto* choice = table->cellWidget(row, ActColumn)->findChild<const QComboBox*>();
        if (choice && choice->currentIndex() == 1)
            out << entries.at(row);
    }
    return out;
}
