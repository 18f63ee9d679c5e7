// SPDX-License-Identifier: Apache-2.0

#include "RpaVersionList.h"

#include "RpaVersionItem.h"

#include <QMouseEvent>

RpaVersionList::RpaVersionList(QWidget* parent) : QListWidget(parent)
{
    // All rows are alike, so one is measured for all.
    setUniformItemSizes(true);
}

RpaVersionList::~RpaVersionList() = default;

void RpaVersionList::showEvent(QShowEvent* event)
{
    QListWidget::showEvent(event);
    // Rows that came while the list was hidden have not been placed yet.
    updateEditorGeometries();
}

void RpaVersionList::scrollContentsBy(int, int)
{
    // The stock list moves every row widget, seen or not.
    viewport()->update();
    updateEditorGeometries();
}

// Whoever hears of the press may ask the user something, and the host may destroy the list meanwhile. The
// stock list goes on working after its signal; here nothing follows.
void RpaVersionList::mousePressEvent(QMouseEvent* event)
{
    event->accept();
    if (QListWidgetItem* entry = itemAt(event->pos()))
        emit itemPressed(entry);
}

void RpaVersionList::updateEditorGeometries()
{
    const Rows before = rowsInSight;
    rowsInSight = PlaceRowsInSight();
    for (const QPointer<RpaVersionItem>& row : before)
        if (row && !rowsInSight.contains(row))
            row->SetInSight(false);
}

RpaVersionList::Rows RpaVersionList::PlaceRowsInSight()
{
    Rows placed;
    if (!isVisible())
        return placed;
    const QRect sight = viewport()->rect();
    const QModelIndex first = indexAt(sight.topLeft());
    for (int i = first.row(); i >= 0 && i < count(); ++i) {
        const QModelIndex index = model()->index(i, 0);
        const QRect place = visualRect(index);
        if (place.top() > sight.bottom())
            break;
        if (auto* row = qobject_cast<RpaVersionItem*>(indexWidget(index))) {
            row->setGeometry(place);
            row->SetInSight(true);
            placed.append(row);
        }
    }
    return placed;
}
