// SPDX-License-Identifier: Apache-2.0

#include "CompletionPopup_p.h"

#include <WbBaseUI/WbTheme.h>

#include <QGuiApplication>
#include <QLabel>
#include <QListView>
#include <QPainter>
#include <QScreen>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <QVBoxLayout>

namespace
{
constexpr int rowsShown = 10;
constexpr int margin = 8;

// The name, and what it is at the other end of the row.
class CompletionDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        QStyledItemDelegate::paint(painter, option, index);
        painter->save();
        painter->setFont(WbTheme::UiFont());
        painter->setPen(WbTheme::Instance()->Color(WbColor::TextSecondary));
        painter->drawText(option.rect.adjusted(0, 0, -margin, 0), Qt::AlignRight | Qt::AlignVCenter,
                          index.data(Qt::UserRole).toString());
        painter->restore();
    }
};
} // namespace

void CompletionModel::Show(const CompletionItems& shown)
{
    beginResetModel();
    items = shown;
    endResetModel();
}

int CompletionModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : items.size();
}

QVariant CompletionModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid())
        return {};
    const CompletionItem& item = items.at(index.row());
    if (role == Qt::DisplayRole)
        return item.name;
    return role == Qt::UserRole ? CompletionLists::KindText(item.kind) : QVariant();
}

CompletionPopup::CompletionPopup(QWidget* owner)
    : QFrame(owner, Qt::ToolTip | Qt::WindowDoesNotAcceptFocus), model(new CompletionModel(this)),
      list(new QListView), hintLabel(new QLabel)
{
    setObjectName(QStringLiteral("completionPopup"));
    setAttribute(Qt::WA_ShowWithoutActivating);
    setFocusPolicy(Qt::NoFocus);
    list->setObjectName(QStringLiteral("completionList"));
    list->setAccessibleName(QStringLiteral("可补全的名称"));
    list->setFocusPolicy(Qt::NoFocus);
    list->setFrameShape(QFrame::NoFrame);
    list->setUniformItemSizes(true);
    list->setEditTriggers(QAbstractItemView::NoEditTriggers);
    list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    list->setModel(model);
    list->setItemDelegate(new CompletionDelegate(list));
    hintLabel->setObjectName(QStringLiteral("completionHint"));
    hintLabel->setTextFormat(Qt::PlainText);
    hintLabel->setProperty("wbRole", QStringLiteral("secondary"));
    hintLabel->setContentsMargins(margin, 2, margin, 4);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(1, 1, 1, 1);
    layout->setSpacing(0);
    layout->addWidget(list);
    layout->addWidget(hintLabel);
    connect(list, &QListView::clicked, this, &CompletionPopup::SigClicked);
    hide();
}

void CompletionPopup::ShowAt(const QRect& cursor, const CompletionItems& items, const QString& hint)
{
    list->setFont(WbTheme::CodeFont());
    model->Show(items);
    list->setCurrentIndex(model->index(0, 0));
    hintLabel->setText(hint);
    hintLabel->setVisible(!hint.isEmpty());
    Place(cursor);
    show();
}

void CompletionPopup::Place(const QRect& cursor)
{
    const QFontMetrics names(WbTheme::CodeFont());
    const QFontMetrics kinds(WbTheme::UiFont());
    int width = 0;
    for (int row = 0; row < model->rowCount(); ++row)
        width = qMax(width, model->At(row).name.size());
    width = qBound(12, width, 48) * names.averageCharWidth() +
            kinds.horizontalAdvance(QStringLiteral("文中的词")) + 5 * margin +
            list->verticalScrollBar()->sizeHint().width();
    const int rows = qMin(model->rowCount(), rowsShown);
    list->setFixedSize(width, qMax(1, list->sizeHintForRow(0)) * rows + 2);
    adjustSize();
    const QScreen* screen = QGuiApplication::screenAt(cursor.center());
    const QRect room = (screen ? screen : QGuiApplication::primaryScreen())->availableGeometry();
    QPoint place = cursor.bottomLeft() + QPoint(0, 2);
    if (place.y() + height() > room.bottom() && cursor.top() - height() > room.top())
        place.setY(cursor.top() - height() - 2);
    place.setX(qBound(room.left(), place.x(), qMax(room.left(), room.right() - this->width())));
    move(place);
}

void CompletionPopup::Move(int by)
{
    const int row = qBound(0, list->currentIndex().row() + by, model->rowCount() - 1);
    list->setCurrentIndex(model->index(row, 0));
    list->scrollTo(list->currentIndex());
}

int CompletionPopup::RowsOfAPage() const
{
    return qMax(1, qMin(model->rowCount(), rowsShown) - 1);
}

void CompletionPopup::hideEvent(QHideEvent* event)
{
    QFrame::hideEvent(event);
    emit SigHidden();
}

CompletionItem CompletionPopup::Current() const
{
    const QModelIndex index = list->currentIndex();
    return isVisible() && index.isValid() ? model->At(index.row()) : CompletionItem();
}

#include "CompletionPopup.moc"
