// SPDX-License-Identifier: Apache-2.0

#include "AppCardDelegate.h"

#include "AppListModel.h"

#include <OxBase/DpiTool.h>
#include <RpaCore/RpaAppSnapshot.h>
#include <WbBaseUI/WbIcons.h>
#include <WbBaseUI/WbTheme.h>

#include <QApplication>
#include <QMouseEvent>
#include <QPainter>

#include <algorithm>

namespace
{
int Px(int length)
{
    return DpiTool::ScaleDefault(length);
}

QRect CardRect(const QRect& item)
{
    return item.adjusted(0, 0, -Px(12), -Px(12)); // the gap to the next card
}

QColor Color(WbColor color)
{
    return WbTheme::Instance()->Color(color);
}

void PaintFrame(QPainter* painter, const QStyleOptionViewItem& option, const QRect& card)
{
    const bool hovered = option.state.testFlag(QStyle::State_MouseOver);
    const bool selected = option.state.testFlag(QStyle::State_Selected);
    const bool focused = option.state.testFlag(QStyle::State_HasFocus);

    WbColor edge = hovered ? WbColor::BorderStrong : WbColor::Border;
    if (focused)
        edge = WbColor::FocusRing;
    else if (selected)
        edge = WbColor::Accent;
    painter->setPen(QPen(Color(edge), focused ? 2 : 1));
    painter->setBrush(Color(hovered ? WbColor::SurfaceRaised : WbColor::Surface));
    painter->drawRoundedRect(QRectF(card).adjusted(0.5, 0.5, -0.5, -0.5), Px(8), Px(8));
}

void PaintIcon(QPainter* painter, const QRect& place, const char* name, int size, WbColor color)
{
    const qreal ratio = painter->device()->devicePixelRatioF();
    QRect target(0, 0, Px(size), Px(size));
    target.moveCenter(place.center());
    painter->drawPixmap(target, WbIcons::Pixmap(QLatin1String(name), Px(size), color, ratio));
}

void PaintKindMark(QPainter* painter, const QRect& mark, int kind)
{
    painter->setPen(Qt::NoPen);
    painter->setBrush(Color(WbColor::AccentSoft));
    painter->drawRoundedRect(mark, Px(8), Px(8));
    PaintIcon(painter, mark, kind == AppKindVisual ? "app-visual" : "app-program", 24, WbColor::AccentText);
}

void PaintLine(QPainter* painter, const QRect& line, const QFont& font, const QColor& color,
               const QString& text)
{
    painter->setFont(font);
    painter->setPen(color);
    painter->drawText(line, Qt::AlignLeft | Qt::AlignVCenter,
                      QFontMetrics(font).elidedText(text, Qt::ElideRight, line.width()));
}

QColor StateColor(int state)
{
    return Color(state == AppSnapshotOnline ? WbColor::SuccessText
                 : state == AppSnapshotGray ? WbColor::WarningText
                                            : WbColor::TextSecondary);
}

// Kind, and what users have of the app.
void PaintKindLine(QPainter* painter, const QRect& line, const QFont& font, const QModelIndex& index)
{
    const QString kind = index.data(AppListModel::KindNameRole).toString();
    const QString state = index.data(AppListModel::StateNameRole).toString();
    PaintLine(painter, line, font, Color(WbColor::TextSecondary), kind);
    if (!state.isEmpty()) {
        const int left = line.left() + QFontMetrics(font).horizontalAdvance(kind) + Px(8);
        PaintLine(painter, QRect(left, line.top(), line.right() - left, line.height()), font,
                  StateColor(index.data(AppListModel::StateRole).toInt()), QStringLiteral("· ") + state);
    }
}

// As many tags as fit; the rest as a number.
void PaintTags(QPainter* painter, const QRect& line, const QFont& font, const QStringList& tags)
{
    const QFontMetrics metrics(font);
    int left = line.left();
    for (int i = 0; i < tags.size(); ++i) {
        const bool isLast = i == tags.size() - 1;
        const int width = metrics.horizontalAdvance(tags.at(i)) + Px(12);
        const int rest = isLast ? 0 : metrics.horizontalAdvance(QStringLiteral("+99")) + Px(4);
        if (left + width + rest > line.right()) {
            PaintLine(painter, QRect(left, line.top(), line.right() - left, line.height()), font,
                      Color(WbColor::TextSecondary), QStringLiteral("+%1").arg(tags.size() - i));
            return;
        }
        const QRect chip(left, line.top() + Px(1), width, line.height() - Px(2));
        painter->setPen(Qt::NoPen);
        painter->setBrush(Color(WbColor::AccentSoft));
        painter->drawRoundedRect(chip, Px(4), Px(4));
        PaintLine(painter, chip.adjusted(Px(6), 0, 0, 0), font, Color(WbColor::AccentText), tags.at(i));
        left += width + Px(6);
    }
}

// A long name gives way to the time.
void PaintChange(QPainter* painter, const QRect& line, const QFont& font, const QString& who,
                 const QString& when)
{
    const QFontMetrics metrics(font);
    const int whenWidth = metrics.horizontalAdvance(when) + Px(2);
    const int whoWidth =
        who.isEmpty() ? 0
                      : qBound(0, line.width() - whenWidth - Px(6), metrics.horizontalAdvance(who) + Px(2));
    const QColor color = Color(WbColor::TextSecondary);
    PaintLine(painter, QRect(line.left(), line.top(), whoWidth, line.height()), font, color, who);
    const int left = line.left() + whoWidth + (whoWidth > 0 ? Px(6) : 0);
    PaintLine(painter, QRect(left, line.top(), line.right() - left + 1, line.height()), font, color, when);
}

void PaintTexts(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index,
                const QRect& card, const QString& timeCaption)
{
    const QColor strong = Color(WbColor::Text);
    const QColor weak = Color(WbColor::TextSecondary);
    const int left = card.left() + Px(72);
    const int width = card.right() - Px(16) - left;

    QFont nameFont = option.font;
    nameFont.setBold(true);
    nameFont.setPointSizeF(nameFont.pointSizeF() * 1.1);
    PaintLine(painter, QRect(left, card.top() + Px(14), width - Px(20), Px(24)), nameFont, strong,
              index.data(Qt::DisplayRole).toString());
    PaintKindLine(painter, QRect(left, card.top() + Px(40), width, Px(20)), option.font, index);
    const QString creator =
        index.data(AppListModel::OwnRole).toBool()
            ? QStringLiteral("我创建的")
            : QStringLiteral("创建者：") + index.data(AppListModel::CreatorNameRole).toString();
    // Below the mark there is room on its side, too.
    const QRect who(card.left() + Px(16), card.top() + Px(68), card.width() - Px(32), Px(20));
    PaintLine(painter, who, option.font, weak, creator);
    const int creatorWidth = std::min(QFontMetrics(option.font).horizontalAdvance(creator), who.width());
    PaintTags(painter, who.adjusted(creatorWidth + Px(8), 0, 0, 0), option.font,
              index.data(AppListModel::TagsRole).toStringList());
    PaintChange(painter, who.translated(0, Px(24)), option.font,
                index.data(AppListModel::ChangedByRole).toString(),
                timeCaption + index.data(AppListModel::ChangedRole).toString());
}
} // namespace

void AppCardDelegate::SetReadOnly(const QString& caption)
{
    timeCaption = caption;
    hasMenu = false;
}

QSize AppCardDelegate::CardSize()
{
    return QSize(Px(296), Px(134)); // three beside each other in the smallest window
}

QRect AppCardDelegate::MenuRect(const QRect& item)
{
    const QRect card = CardRect(item);
    return QRect(card.right() - Px(36), card.top() + Px(8), Px(28), Px(28));
}

void AppCardDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                            const QModelIndex& index) const
{
    QStyleOptionViewItem card = option;
    initStyleOption(&card, index);
    const QRect rect = CardRect(card.rect);
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    PaintFrame(painter, card, rect);
    PaintKindMark(painter, QRect(rect.left() + Px(16), rect.top() + Px(16), Px(44), Px(44)),
                  index.data(AppListModel::KindRole).toInt());
    PaintTexts(painter, card, index, rect, timeCaption);
    if (hasMenu &&
        (card.state.testFlag(QStyle::State_MouseOver) || card.state.testFlag(QStyle::State_HasFocus)))
        PaintIcon(painter, MenuRect(card.rect), "more", 16, WbColor::TextSecondary);
    painter->restore();
}

QSize AppCardDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    Q_UNUSED(option)
    Q_UNUSED(index)
    return CardSize();
}

bool AppCardDelegate::editorEvent(QEvent* event, QAbstractItemModel* model,
                                  const QStyleOptionViewItem& option, const QModelIndex& index)
{
    if (hasMenu && event->type() == QEvent::MouseButtonRelease) {
        auto* mouse = static_cast<QMouseEvent*>(event);
        if (mouse->button() == Qt::LeftButton && MenuRect(option.rect).contains(mouse->pos())) {
            emit SigMenu(index, mouse->globalPos());
            return true;
        }
    }
    return QStyledItemDelegate::editorEvent(event, model, option, index);
}
