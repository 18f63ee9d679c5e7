#include "BrowserBorderWindow_p.h"

#include <OxBase/DpiTool.h>
#include <WbBrowserLite/IBrowserWidget.h>

#include <QCloseEvent>
#include <QMouseEvent>
#include <QVBoxLayout>
#include <QWindow>

namespace
{
constexpr int BorderWidth = 4;
}

BrowserBorderWindow::BrowserBorderWindow(QWidget* parent)
    : IBrowserBorderWindow(parent), layout(new QVBoxLayout(this))
{
    setWindowFlags(Qt::Window | Qt::FramelessWindowHint);
    setWindowTitle(QStringLiteral("浏览器窗口"));
    const int border = DpiTool::ScaleDefault(BorderWidth);
    layout->setContentsMargins(border, border, border, border);
}

void BrowserBorderWindow::SetTarget(QWidget* target, const QRect& rect)
{
    // The window follows nothing by itself; it only starts where it is told to.
    if (target && !rect.isEmpty())
        setGeometry(QRect(target->mapToGlobal(rect.topLeft()), rect.size()));
}

void BrowserBorderWindow::SetContent(IBrowserWidget* browser)
{
    content = browser;
    if (browser)
        layout->addWidget(browser);
}

void BrowserBorderWindow::closeEvent(QCloseEvent* event)
{
    // Closing the window must not strand the browser in it: its owner is asked to take it back, and hides the
    // window.
    if (!content) {
        event->accept();
        return;
    }
    event->ignore();
    emit content->SigPopup(false);
}

void BrowserBorderWindow::mousePressEvent(QMouseEvent* event)
{
    const QRect inner = layout->contentsRect();
    Qt::Edges edges;
    edges.setFlag(Qt::LeftEdge, event->x() < inner.left());
    edges.setFlag(Qt::RightEdge, event->x() > inner.right());
    edges.setFlag(Qt::TopEdge, event->y() < inner.top());
    edges.setFlag(Qt::BottomEdge, event->y() > inner.bottom());
    if (event->button() == Qt::LeftButton && edges && windowHandle())
        windowHandle()->startSystemResize(edges);
    IBrowserBorderWindow::mousePressEvent(event);
}
