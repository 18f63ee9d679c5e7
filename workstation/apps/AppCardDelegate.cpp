#include "AppCardDelegate.h"

#include "AppListModel.h"

#include <OxBase/DpiTool.h>
#include <WbBaseUI/WbIcons.h>
#include <WbBaseUI/WbTheme.h>

#include <QApplication>
#include <QMouseEvent>
#include <QPainter>

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
    if (focused) {
        edge = WbColor::FocusRing;
    } else if (selected) {
        edge = WbColor::Accent;
    }
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
    PaintLine(painter, QRect(left, card.top() + Px(40), width, Px(20)), option.font, weak,
              index.data(AppListModel::KindNameRole).toString());
    const QString creator =
        index.data(AppListModel::OwnRole).toBool()
            ? QStringLiteral("我创建的")
            : QStringLiteral("创建者：") + index.data(AppListModel::CreatorNameRole).toString();
    PaintLine(painter, QRect(left, card.top() + Px(66), width, Px(20)), option.font, weak, creator);
    PaintLine(painter, QRect(left, card.top() + Px(88), width, Px(20)), option.font, weak,
              timeCaption + index.data(AppListModel::ChangedRole).toString());
}
} // namespace

AppCardDelegate::AppCardDelegate(QObject* parent) : QStyledItemDelegate(parent) {}

void AppCardDelegate::SetReadOnly(const QString& caption)
{
    timeCaption = caption;
    hasMenu = false;
}

QSize AppCardDelegate::CardSize()
{
    return QSize(Px(302), Px(134));
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
        (card.state.testFlag(QStyle::State_MouseOver) || card.state.testFlag(QStyle::State_HasFocus))) {
        PaintIcon(painter, MenuRect(card.rect), "more", 16, WbColor::TextSecondary);
    }
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
