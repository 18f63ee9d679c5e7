// SPDX-License-Identifier: Apache-2.0

#include "BreakpointMark_p.h"
#include "CommandTexts_p.h"
#include "StatementDelegate_p.h"
#include "StatementModel_p.h"

#include <OxBase/DpiTool.h>
#include <WbBaseUI/WbIcons.h>
#include <WbBaseUI/WbTheme.h>

#include <QPainter>
#include <QPixmapCache>

namespace
{
QColor Colour(WbColor colour)
{
    return WbTheme::Instance()->Color(colour);
}

int Scaled(int length)
{
    return DpiTool::ScaleDefault(length);
}

// The card of a row of this size. Kept, since a rounded outline takes longer than all else in the row, and in
// a scroll every row is painted in every frame.
QPixmap CardOf(const QSize& size, const QColor& fill, const QPen& border, qreal ratio)
{
    const QString key =
        QStringLiteral("StatementCard/%1/%2/%3/%4/%5/%6")
            .arg(QString::number(size.width()), QString::number(size.height()), fill.name(),
                 border.color().name(), QString::number(border.widthF()), QString::number(ratio));
    QPixmap card;
    if (QPixmapCache::find(key, &card))
        return card;
    card = QPixmap(size * ratio);
    card.setDevicePixelRatio(ratio);
    card.fill(Qt::transparent);
    QPainter painter(&card);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(fill);
    painter.setPen(border);
    painter.drawRoundedRect(QRectF(QPoint(), size).adjusted(1.5, 2.5, -Scaled(8) - 0.5, -2.5), Scaled(6),
                            Scaled(6));
    painter.end();
    QPixmapCache::insert(key, card);
    return card;
}
} // namespace

StatementDelegate::StatementDelegate(QObject* parent)
    : QStyledItemDelegate(parent), gutterFont(WbTheme::CodeFont())
{
    connect(WbTheme::Instance(), &WbTheme::SigChanged, this, [this] { gutterFont = WbTheme::CodeFont(); });
}

int StatementDelegate::RowHeight()
{
    return Scaled(46);
}

int StatementDelegate::GutterWidth(int lines)
{
    const QFontMetrics metrics(WbTheme::CodeFont());
    return metrics.horizontalAdvance(QString::number(qMax(lines, 99))) + Scaled(34);
}

int StatementDelegate::MarkWidth()
{
    return Scaled(22);
}

QSize StatementDelegate::sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const
{
    return QSize(Scaled(200), RowHeight());
}

void StatementDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                              const QModelIndex& index) const
{
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    if (index.column() == StatementModel::GutterColumn)
        PaintGutter(*painter, option, index);
    else
        PaintCard(*painter, option, index);
    painter->restore();
}

void StatementDelegate::PaintGutter(QPainter& painter, const QStyleOptionViewItem& option,
                                    const QModelIndex& index) const
{
    painter.setFont(gutterFont);
    painter.setPen(Colour(WbColor::TextSecondary));
    painter.drawText(option.rect.adjusted(0, 0, -Scaled(8), 0), Qt::AlignRight | Qt::AlignVCenter,
                     index.data(StatementModel::LineRole).toString());
    const int size = Scaled(14);
    const QRectF area(option.rect.left() + Scaled(6), option.rect.center().y() - size / 2.0, size, size);
    const QVariant mark = index.data(StatementModel::MarkRole);
    if (mark.isValid())
        mark.value<BreakpointMark>().Paint(painter, area);
    const int stop = index.data(StatementModel::StopRole).toInt();
    if (stop != StatementModel::NotStopped)
        BreakpointMark::PaintArrow(painter, area, stop == StatementModel::StoppedHere);
}

void StatementDelegate::PaintCard(QPainter& painter, const QStyleOptionViewItem& option,
                                  const QModelIndex& index) const
{
    const bool selected = option.state.testFlag(QStyle::State_Selected);
    const bool finding = !index.data(StatementModel::FindingRole).toString().isEmpty();
    const QRectF card = QRectF(option.rect).adjusted(1.5, 2.5, -Scaled(8) - 0.5, -2.5);

    const bool running = index.data(StatementModel::RunningRole).toBool() ||
                         index.data(StatementModel::StopRole).toInt() != StatementModel::NotStopped;
    QColor fill = Colour(running ? WbColor::ExecutionLine : selected ? WbColor::Selection : WbColor::Surface);
    if (!selected && !running && option.state.testFlag(QStyle::State_MouseOver))
        fill = Colour(WbColor::Hover);
    QColor border = Colour(finding ? WbColor::DangerText : selected ? WbColor::Accent : WbColor::Border);
    const QPen pen(border, finding || selected ? 1.4 : 1.0);
    painter.drawPixmap(option.rect.topLeft(),
                       CardOf(option.rect.size(), fill, pen, painter.device()->devicePixelRatioF()));

    const bool enabled = index.data(StatementModel::EnabledRole).toBool();
    const int tile = Scaled(26);
    const QRect tileRect(int(card.left()) + Scaled(8), option.rect.center().y() - tile / 2 + 1, tile, tile);
    CommandTexts::PaintTile(painter, tileRect, index.data(StatementModel::CommandRole).toString(), enabled);

    QRect texts(tileRect.right() + Scaled(10), option.rect.top(), 0, option.rect.height());
    texts.setRight(int(card.right()) - Scaled(10));
    const auto addMark = [&](const QString& icon, WbColor colour) {
        const int size = Scaled(16);
        const QRect mark(texts.right() - size, option.rect.center().y() - size / 2, size, size);
        WbIcons::Get(icon, colour).paint(&painter, mark);
        texts.setRight(mark.left() - Scaled(8));
    };
    if (finding)
        addMark(QStringLiteral("error"), WbColor::DangerText);
    if (running)
        addMark(QStringLiteral("run"), WbColor::WarningText);
    if (index.data(StatementModel::BookmarkRole).toBool())
        addMark(QStringLiteral("bookmark"), WbColor::Accent);
    PaintTexts(painter, texts, option, index);
}

const QFont& StatementDelegate::TitleFont(const QFont& base, bool enabled) const
{
    if (!titleBase || !titleBase->isCopyOf(base)) {
        titleBase = base;
        for (const bool strikeOut : {false, true}) {
            QFont& font = titleFonts[strikeOut ? 0 : 1];
            font = base;
            font.setWeight(QFont::DemiBold);
            font.setStrikeOut(strikeOut);
        }
    }
    return titleFonts[enabled ? 1 : 0];
}

void StatementDelegate::PaintTexts(QPainter& painter, const QRect& rect, const QStyleOptionViewItem& option,
                                   const QModelIndex& index) const
{
    const bool enabled = index.data(StatementModel::EnabledRole).toBool();
    const QString note = index.data(StatementModel::NoteRole).toString().simplified();
    const int half = rect.height() / 2;
    const QString title = index.data(StatementModel::TitleRole).toString();
    QString summary = index.data(StatementModel::SummaryRole).toString();
    if (summary == title)
        summary.clear(); // a command without arguments has nothing to add to its title
    QRect upper(rect.left(), rect.top() + Scaled(5), rect.width(), half - Scaled(4));
    const QRect lower(rect.left(), rect.top() + half - Scaled(1), rect.width(), half - Scaled(4));

    if (summary.isEmpty())
        upper = rect;

    painter.setFont(TitleFont(option.font, enabled));
    painter.setPen(Colour(enabled ? WbColor::Text : WbColor::TextSecondary));
    painter.drawText(upper, Qt::AlignLeft | Qt::AlignVCenter, title);
    const int used = painter.fontMetrics().horizontalAdvance(title) + Scaled(10);

    painter.setFont(option.font);
    QString beside = note;
    if (!enabled)
        beside = note.isEmpty() ? QStringLiteral("已注释") : QStringLiteral("已注释 · ") + note;
    const QRect noteRect = upper.adjusted(used, 0, 0, 0);
    if (!beside.isEmpty() && noteRect.width() > Scaled(30)) {
        painter.setPen(Colour(enabled ? WbColor::SuccessText : WbColor::TextSecondary));
        painter.drawText(noteRect, Qt::AlignLeft | Qt::AlignVCenter,
                         painter.fontMetrics().elidedText(beside, Qt::ElideRight, noteRect.width()));
    }
    painter.setPen(Colour(WbColor::TextSecondary));
    painter.drawText(lower, Qt::AlignLeft | Qt::AlignVCenter,
                     painter.fontMetrics().elidedText(summary, Qt::ElideRight, lower.width()));
}
