// SPDX-License-Identifier: Apache-2.0

#include "ToastPlace_p.h"

#include <OxBase/DpiTool.h>
#include <WbBaseUI/WbIconButtonWidget.h>

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractScrollArea>
#include <QAbstractSlider>
#include <QAbstractSpinBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QScrollArea>
#include <QStyle>
#include <QTabBar>

#include <algorithm>
#include <limits>
#include <numeric>

namespace
{
constexpr int textCost = 1;  // may be covered, but rather not
constexpr int viewCost = 2;  // from here on it is something in use
constexpr int fieldCost = 8; // small, and lost when it is covered
constexpr int focusCost = 16;

constexpr int topMargin = 2;
constexpr int placeSideMargin = 16;
constexpr int toastGap = 8;
constexpr int clearance = 6;
constexpr int stepDown = 4;
constexpr int stepAside = 16;

template <typename... Kinds>
bool IsAnyOf(const QWidget* widget)
{
    return (... || qobject_cast<const Kinds*>(widget));
}

// What covering it costs; 0 for what only holds other things.
int WeightOf(const QWidget* widget)
{
    // Also while it is disabled: a notice often comes while the window waits for an answer.
    if (IsAnyOf<QAbstractButton, QLineEdit, QComboBox, QAbstractSpinBox, QTabBar, QAbstractSlider,
                WbIconButtonWidget>(widget))
        return widget->hasFocus() ? focusCost : fieldCost;
    if (qobject_cast<const QLabel*>(widget))
        return textCost;
    if (qobject_cast<const QScrollArea*>(widget))
        return 0;
    const bool takesKeys = widget->focusPolicy() & Qt::TabFocus && !widget->layout();
    const bool isView = qobject_cast<const QAbstractScrollArea*>(widget) || takesKeys;
    return isView && widget->isEnabled() ? (widget->hasFocus() ? fieldCost : viewCost) : 0;
}

// The part of the widget in which there is something: labels and lists are often larger than what they show.
QRect FilledPartOf(const QWidget* widget)
{
    if (const auto* label = qobject_cast<const QLabel*>(widget)) {
        const bool empty = label->text().isEmpty() && label->pixmap(Qt::ReturnByValue).isNull();
        const QSize shown = empty ? QSize() : label->sizeHint().boundedTo(label->size());
        return QStyle::alignedRect(label->layoutDirection(), label->alignment(), shown, label->rect());
    }
    const auto* view = qobject_cast<const QAbstractItemView*>(widget);
    const QAbstractItemModel* model = view ? view->model() : nullptr;
    const int rows = model ? model->rowCount(view->rootIndex()) : 0;
    const QRect last = rows > 0 ? view->visualRect(model->index(rows - 1, 0, view->rootIndex())) : QRect();
    // Invalid where the last row is out of sight: then the view is full.
    return last.isValid() ? QRect(0, 0, view->width(), qMin(view->height(), last.bottom() + last.height()))
                          : widget->rect();
}

// One below the other, their middles at x = 0, the first at y = 0.
QVector<QRect> ColumnOf(const QVector<QSize>& sizes)
{
    QVector<QRect> column;
    int y = 0;
    for (const QSize& size : sizes) {
        column.append({QPoint(-size.width() / 2, y), size});
        y += size.height() + DpiTool::ScaleDefault(toastGap);
    }
    return column;
}

QRect BoundsOf(const QVector<QRect>& column)
{
    return std::accumulate(column.begin(), column.end(), QRect(),
                           [](const QRect& all, const QRect& one) { return all.united(one); });
}

QVector<QRect> Moved(QVector<QRect> column, const QPoint& way)
{
    for (QRect& rect : column)
        rect.translate(way);
    return column;
}
} // namespace

ToastPlace::ToastPlace(const QWidget* window) : room(window->size())
{
    Collect(window, window->rect());
}

// clip: what is seen of the widget, in its own coordinates moved to the window's.
void ToastPlace::Collect(const QWidget* widget, const QRect& clip)
{
    for (QObject* object : widget->children()) {
        const auto* child = qobject_cast<const QWidget*>(object);
        if (!child || child->isWindow() || !child->isVisible() ||
            child->objectName() == QLatin1String("WbToast"))
            continue;
        const QPoint origin = child->mapTo(child->window(), QPoint(0, 0));
        const QRect seen = clip.intersected(QRect(origin, child->size()));
        const int weight = WeightOf(child);
        if (weight == 0) {
            Collect(child, seen);
            continue;
        }
        const QRect filled = seen.intersected(FilledPartOf(child).translated(origin));
        if (!filled.isEmpty())
            parts.append({filled, weight});
    }
}

qint64 ToastPlace::CostOf(const QVector<QRect>& column, qint64 enough) const
{
    const int gap = DpiTool::ScaleDefault(clearance);
    qint64 cost = 0;
    for (const QRect& rect : column) {
        const QRect roomy = rect.adjusted(-gap, -gap, gap, gap);
        for (const Part& part : parts) {
            const QRect common = part.rect.intersected(roomy);
            if (!common.isEmpty()) {
                cost += qint64(common.width()) * common.height() * part.weight;
                if (cost >= enough)
                    return cost;
            }
        }
    }
    return cost;
}

QVector<QRect> ToastPlace::Find(const QVector<QSize>& sizes) const
{
    const int side = DpiTool::ScaleDefault(placeSideMargin);
    const QVector<QRect> column = ColumnOf(sizes);
    const QSize size = BoundsOf(column).size();
    const int farthest = qMax(0, (room.width() - size.width()) / 2 - side);
    const int lowest = room.height() - size.height() - side;
    const int first = DpiTool::ScaleDefault(topMargin);
    QPoint best(room.width() / 2, qMax(0, qMin(first, lowest)));
    qint64 least = std::numeric_limits<qint64>::max();
    for (int y = first; y <= lowest && 2 * (y - first) < least; y += DpiTool::ScaleDefault(stepDown)) {
        for (int aside = 0; aside <= farthest; aside += DpiTool::ScaleDefault(stepAside)) {
            for (const int x : {room.width() / 2 + aside, room.width() / 2 - aside}) {
                const qint64 way = 2 * (y - first) + aside;
                const qint64 cost = way + CostOf(Moved(column, {x, y}), least - way);
                if (cost < least) {
                    least = cost;
                    best = {x, y};
                }
            }
        }
    }
    return Moved(column, best);
}

bool ToastPlace::CoversSomethingInUse(const QRect& rect) const
{
    return std::any_of(parts.begin(), parts.end(), [&rect](const Part& part) {
        return part.weight >= viewCost && part.rect.intersects(rect);
    });
}
