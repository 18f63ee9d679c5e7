// SPDX-License-Identifier: Apache-2.0

#include "ActPalette.h"

#include "ActWords.h"

#include <WbBaseUI/WbLabel.h>
#include <WbBaseUI/WbLineEdit.h>
#include <WbBaseUI/WbScaledForm.h>
#include <WbBaseUI/WbTheme.h>
#include <WbFoundation/SearchText.h>

#include <QBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QTreeWidget>

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
    : WbBaseDialog(parent, Qt::WindowCloseButtonHint, 1, true), entries(acts), search(new WbLineEdit(this)),
      list(new QTreeWidget(this)), labelReason(new WbLabel(this))
{
    setObjectName(QStringLiteral("ActPalette"));
    SetTitle(QStringLiteral("命令面板"));
    search->setObjectName(QStringLiteral("editAct"));
    search->setPlaceholderText(QStringLiteral("搜索命令或快捷键，回车执行"));
    search->setAccessibleName(QStringLiteral("搜索命令"));
    search->installEventFilter(this);
    labelReason->setObjectName(QStringLiteral("labelReason"));
    labelReason->setProperty("hint", true);
    labelReason->setWordWrap(true);
    BuildList();
    auto* layout = new QVBoxLayout(GetContentWidget());
    layout->setContentsMargins(24, 16, 24, 20);
    layout->setSpacing(12);
    layout->addWidget(search);
    layout->addWidget(list, 1);
    layout->addWidget(labelReason);
    GetContentWidget()->setMinimumSize(620, 420);

    connect(search, &QLineEdit::textChanged, this, &ActPalette::Search);
    connect(list, &QTreeWidget::currentItemChanged, this, &ActPalette::ShowReason);
    connect(list, &QTreeWidget::itemClicked, this, &ActPalette::Choose);
    Fill();
    search->setFocus();
    WbScaledForm::Follow(GetContentWidget());
}

ActPalette::~ActPalette() = default;

void ActPalette::BuildList()
{
    list->setObjectName(QStringLiteral("listActs"));
    list->setAccessibleName(QStringLiteral("命令"));
    list->setRootIsDecorated(false);
    list->setColumnCount(ColumnCount);
    list->setHeaderLabels(
        {QStringLiteral("命令"), QStringLiteral("快捷键"), QStringLiteral("现在不能使用的原因")});
    list->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    list->header()->setStretchLastSection(true);
    list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    list->setSelectionMode(QAbstractItemView::SingleSelection);
    list->setFocusPolicy(Qt::NoFocus); // the field keeps the keyboard and moves the choice
}

void ActPalette::Fill()
{
    const QBrush faint(WbTheme::Instance()->Color(WbColor::TextSecondary));
    for (const ActEntry& entry : entries) {
        auto* item = new QTreeWidgetItem(list, {entry.text, entry.key, entry.reason});
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
    for (int row = 0; row < list->topLevelItemCount(); ++row) {
        QTreeWidgetItem* const item = list->topLevelItem(row);
        const bool fits = Fits(entries.at(row), text);
        const int rank = RankOf(entries.at(row), text);
        item->setHidden(!fits);
        if (fits && (!best || rank < bestRank)) {
            best = item;
            bestRank = rank;
        }
    }
    list->setCurrentItem(best);
    ShowReason();
}

void ActPalette::ShowReason()
{
    QTreeWidgetItem* const item = list->currentItem();
    if (!item) {
        labelReason->setText(QStringLiteral("没有找到“%1”。可以换个说法，也可以输入拼音或首字母")
                                 .arg(search->text().trimmed()));
        return;
    }
    const ActEntry& entry = entries.at(list->indexOfTopLevelItem(item));
    labelReason->setText(entry.reason.isEmpty() ? QStringLiteral("回车执行“%1”").arg(entry.text)
                                                : QStringLiteral("“%1”：%2").arg(entry.text, entry.reason));
}

void ActPalette::Choose()
{
    QTreeWidgetItem* const item = list->currentItem();
    if (!item)
        return;
    const int index = list->indexOfTopLevelItem(item);
    if (entries.at(index).reason.isEmpty()) {
        accept();
        emit SigChosen(index);
    }
}

void ActPalette::MoveBy(int rows)
{
    QTreeWidgetItem* item = list->currentItem();
    while (item && rows != 0) {
        QTreeWidgetItem* const next = rows > 0 ? list->itemBelow(item) : list->itemAbove(item);
        if (!next)
            break;
        item = next;
        rows += rows > 0 ? -1 : 1;
    }
    list->setCurrentItem(item);
}

bool ActPalette::eventFilter(QObject* watched, QEvent* event)
{
    if (watched != search || event->type() != QEvent::KeyPress)
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
