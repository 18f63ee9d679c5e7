// SPDX-License-Identifier: Apache-2.0

#include "PopOutRoom.h"

#include <OxBase/DpiTool.h>
#include <WbBrowserLite/IBrowserBorderWindow.h>

#include <QApplication>
#include <QEvent>

namespace
{
constexpr int edge = 60; // how far from the pages' edge a window still stands at it
constexpr int gap = 6;
constexpr int leastPages = 560;
} // namespace

PopOutRoom::PopOutRoom(QWidget* editorPages, int keptFree)
    : QObject(editorPages), pages(editorPages), free(keptFree)
{
    qApp->installEventFilter(this); // the browser's window is made when it is first needed
}

bool PopOutRoom::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::Show:
    case QEvent::Hide:
    case QEvent::Move:
    case QEvent::Resize:
        break;
    default:
        return false;
    }
    if (auto* const window = qobject_cast<IBrowserBorderWindow*>(watched))
        browser = window;
    if (browser && (watched == browser || watched == pages || watched == pages->window()))
        Arrange();
    return false;
}

int PopOutRoom::NeededRoom() const
{
    if (!browser || !browser->isVisible() || !pages->isVisible())
        return 0;
    const QRect own(pages->mapToGlobal(QPoint()), pages->size());
    const QRect covered = own & browser->geometry();
    const bool atEdge = !covered.isEmpty() && covered.right() >= own.right() - DpiTool::ScaleDefault(edge);
    const int room = atEdge ? own.right() + 1 - covered.left() : 0;
    if (room == 0 || own.width() - room < DpiTool::ScaleDefault(leastPages))
        return 0;
    return qMax(0, room + DpiTool::ScaleDefault(gap) - free);
}

void PopOutRoom::Arrange()
{
    QMargins margins = pages->contentsMargins();
    const int room = NeededRoom();
    if (margins.right() != room) {
        margins.setRight(room);
        pages->setContentsMargins(margins);
    }
}
