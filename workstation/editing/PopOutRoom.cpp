#include "PopOutRoom.h"

#include <OxBase/DpiTool.h>
#include <WbBrowserLite/IBrowserBorderWindow.h>

#include <QApplication>
#include <QEvent>
#include <QLayout>

namespace
{
constexpr int edge = 60; // how far from the page's edge a window still stands at it
constexpr int leastEditor = 640;
} // namespace

PopOutRoom::PopOutRoom(QWidget* editorPage, QLayout* pageLayout)
    : QObject(editorPage), page(editorPage), layout(pageLayout)
{
    qApp->installEventFilter(this); // the browser's window is made when it is first needed
}

PopOutRoom::~PopOutRoom() = default;

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
    auto* const window = qobject_cast<IBrowserBorderWindow*>(watched);
    if (window) {
        browser = window;
    }
    if (window || (browser && (watched == page || watched == page->window()))) {
        Arrange();
    }
    return false;
}

int PopOutRoom::NeededRoom() const
{
    if (!browser || !browser->isVisible() || !page->isVisible()) {
        return 0;
    }
    const QRect own(page->mapToGlobal(QPoint()), page->size());
    const QRect covered = own & browser->geometry();
    const bool atEdge = !covered.isEmpty() && covered.right() >= own.right() - DpiTool::ScaleDefault(edge);
    const int room = atEdge ? own.right() - covered.left() + 1 : 0;
    return own.width() - room < DpiTool::ScaleDefault(leastEditor) ? 0 : room;
}

void PopOutRoom::Arrange()
{
    QMargins margins = layout->contentsMargins();
    const int room = NeededRoom();
    if (margins.right() != room) {
        margins.setRight(room);
        layout->setContentsMargins(margins);
    }
}
