// SPDX-License-Identifier: Apache-2.0

#include "ActPalette.h"

#include "ActWords.h"

#include <WbBaseUI/WbScaledForm.h>
#include <WbBaseUI/WbTheme.h>
#include <WbFoundation/SearchText.h>

#include <QHeaderView>
#include <QKeyEvent>

#include <algorithm>

namespace
{
enum Column
{
    TextColumn,
    KeyColumn,
    ReasonColumn,
    ColumnCount,
};

bool Fits(const ActEntry& entry, const QString& wanted)
{
    const QString all = entry.group + QLatin1Char(' ') + entry.text + QLatin1Char(' ') + entry.key;
    const QStringList read = QStringList(entry.text) + ActWords::Of(entry.text);
    const QStringList words = wanted.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    return std::all_of(words.begin(), words.end(), [&all, &read](const QString& word) {
        return all.contains(word, Qt::CaseInsensitive) || SearchText::HasAll(read, word);
    });
}

// The lower the likelier: what can be done, then what begins with the words, then what has them in its name.
int RankOf(const ActEntry& entry, const QString& wanted)
{
    const int place = SearchText::Find(entry.text, wanted.trimmed());
    const int rank = place == 0 ? 0 : place > 0 ? 1 : 2;
    return entry.reason.isEmpty() ? rank : rank + 3;
}
} // namespace

ActPalette::ActPalette(const QVector<ActEntry>& acts, QWidget* parent)
    : WbBaseDialog(parent, Qt::WindowCloseButtonHint, 1, true), entries(acts)
{
    ui.setupUi(GetContentWidget());
    WbScaledForm::Follow(GetContentWidget());
    setObjectName(QStringLiteral("ActPalette"));
    SetTitle(QStringLiteral("命令面板"));
    ui.editAct->installEventFilter(this);
    ui.listActs->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    connect(ui.editAct, &QLineEdit::textChanged, this, &ActPalette::Search);
    connect(ui.listActs, &QTreeWidget::currentItemChanged, this, &ActPalette::ShowReason);
    connect(ui.listActs, &QTreeWidget::itemClicked, this, &ActPalette::Choose);
    Fill();
    ui.editAct->setFocus(); // it keeps the keyboard and moves the choice
}

void ActPalette::Fill()
{
    const QBrush faint(WbTheme::Instance()->Color(WbColor::TextSecondary));
    for (const ActEntry& entry : entries) {
        auto* item = new QTreeWidgetItem(ui.listActs, {entry.text, entry.key, entry.reason});
        item->setToolTip(ReasonColumn, entry.reason);
        for (int column = 0; column < ColumnCount && !entry.reason.isEmpty(); ++column)
            item->setForeground(column, faint);
    }
    Search(QString());
}

void ActPalette::Search(const QString& text)
{
    QTreeWidgetItem* best = nullptr;
    int bestRank = 0;
    for (int row = 0; row < ui.listActs->topLevelItemCount(); ++row) {
        QTreeWidgetItem* const item = ui.listActs->topLevelItem(row);
        const bool fits = Fits(entries.at(row), text);
        const int rank = RankOf(entries.at(row), text);
        item->setHidden(!fits);
        if (fits && (!best || rank < bestRank)) {
            best = item;
            bestRank = rank;
        }
    }
    ui.listActs->setCurrentItem(best);
    ShowReason();
}

void ActPalette::ShowReason()
{
    QTreeWidgetItem* const item = ui.listActs->currentItem();
    if (!item) {
        ui.labelReason->setText(QStringLiteral("没有找到“%1”。可以换个说法，也可以输入拼音或首字母")
                                    .arg(ui.editAct->text().trimmed()));
        return;
    }
    const ActEntry& entry = entries.at(ui.listActs->indexOfTopLevelItem(item));
    ui.labelReason->setText(entry.reason.isEmpty()
                                ? QStringLiteral("回车执行“%1”").arg(entry.text)
                                : QStringLiteral("“%1”：%2").arg(entry.text, entry.reason));
}

void ActPalette::Choose()
{
    QTreeWidgetItem* const item = ui.listActs->currentItem();
    if (!item)
        return;
    const int index = ui.listActs->indexOfTopLevelItem(item);
    if (entries.at(index).reason.isEmpty()) {
        accept();
        emit SigChosen(index);
    }
}

void ActPalette::MoveBy(int rows)
{
    QTreeWidgetItem* item = ui.listActs->currentItem();
    while (item && rows != 0) {
        QTreeWidgetItem* const next = rows > 0 ? ui.listActs->itemBelow(item) : ui.listActs->itemAbove(item);
        if (!next)
            break;
        item = next;
        rows += rows > 0 ? -1 : 1;
    }
    ui.listActs->setCurrentItem(item);
}

bool ActPalette::eventFilter(QObject* watched, QEvent* event)
{
    if (watched != ui.editAct || event->type() != QEvent::KeyPress)
        return WbBaseDialog::eventFilter(watched, event);
    constexpr int pageRows = 8;
    switch (static_cast<QKeyEvent*>(event)->key()) {
    case Qt::Key_Down:
        MoveBy(1);
        return true;
    case Qt::Key_Up:
        MoveBy(-1);
        return true;
    case Qt::Key_PageDown:
        MoveBy(pageRows);
        return true;
    case Qt::Key_PageUp:
        MoveBy(-pageRows);
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        Choose();
        return true;
    default:
        return false;
    }
}
