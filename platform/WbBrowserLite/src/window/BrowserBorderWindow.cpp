// SPDX-License-Identifier: Apache-2.0

#include "BrowserBorderWindow_p.h"

#include <OxBase/DpiTool.h>
#include <WbBaseUI/UIUtils.h>
#include <WbBaseUI/WbTheme.h>
#include <WbBrowserLite/IBrowserWidget.h>

#include <QCloseEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QToolButton>
#include <QVBoxLayout>
#include <QWindow>

namespace
{
constexpr int borderWidth = 4;
constexpr QSize leastSize(260, 160); // the least pane of a small screen pops out as large as it is
} // namespace

BrowserBorderWindow::BrowserBorderWindow(QWidget* parent)
    : IBrowserBorderWindow(parent), layout(new QVBoxLayout(this))
{
    setObjectName(QStringLiteral("browserBorderWindow"));
    setWindowFlags(Qt::Window | Qt::FramelessWindowHint);
    setWindowTitle(QStringLiteral("浏览器窗口"));
    setMouseTracking(true);
    setMinimumSize(DpiTool::ScaleDefault(leastSize.width()), DpiTool::ScaleDefault(leastSize.height()));
    const int border = DpiTool::ScaleDefault(borderWidth);
    layout->setContentsMargins(border, border, border, border);
    layout->setSpacing(0);
    title = BuildTitle();
    layout->addWidget(title);
    connect(WbTheme::Instance(), &WbTheme::SigChanged, this, qOverload<>(&QWidget::update));
}

QWidget* BrowserBorderWindow::BuildTitle()
{
    auto* bar = new QWidget;
    auto* caption = new QLabel(windowTitle());
    caption->setObjectName(QStringLiteral("browserWindowTitle"));
    caption->setProperty("wbRole", QStringLiteral("secondary"));
    auto* back = UIUtils::IconButton(QStringLiteral("browserDockBack"), QStringLiteral("close"),
                                     QStringLiteral("放回编辑器"));
    back->setFocusPolicy(Qt::TabFocus);
    auto* row = new QHBoxLayout(bar);
    row->setContentsMargins(8, 2, 4, 2);
    row->addWidget(caption, 1);
    row->addWidget(back);
    connect(back, &QToolButton::clicked, this, &QWidget::close);
    // The window itself moves with presses on the title.
    bar->setMouseTracking(true);
    caption->setAttribute(Qt::WA_TransparentForMouseEvents);
    bar->setCursor(Qt::ArrowCursor);
    return bar;
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
    if (!browser)
        return;
    layout->addWidget(browser, 1);
    browser->setCursor(Qt::ArrowCursor); // the border's own would stay: what is inside tells no mouse moves
}

void BrowserBorderWindow::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), WbTheme::Instance()->Color(WbColor::Surface));
    painter.setPen(WbTheme::Instance()->Color(WbColor::BorderStrong));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
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

Qt::Edges BrowserBorderWindow::EdgesAt(const QPoint& position) const
{
    const QRect inner = rect().marginsRemoved(layout->contentsMargins());
    Qt::Edges edges;
    edges.setFlag(Qt::LeftEdge, position.x() < inner.left());
    edges.setFlag(Qt::RightEdge, position.x() > inner.right());
    edges.setFlag(Qt::TopEdge, position.y() < inner.top());
    edges.setFlag(Qt::BottomEdge, position.y() > inner.bottom());
    return edges;
}

bool BrowserBorderWindow::IsOnTitle(const QPoint& position) const
{
    return title->geometry().contains(position);
}

void BrowserBorderWindow::ShowCursor(Qt::Edges edges)
{
    const bool left = edges.testFlag(Qt::LeftEdge);
    const bool top = edges.testFlag(Qt::TopEdge);
    const bool across = left || edges.testFlag(Qt::RightEdge);
    const bool along = top || edges.testFlag(Qt::BottomEdge);
    if (across && along)
        setCursor(left == top ? Qt::SizeFDiagCursor : Qt::SizeBDiagCursor);
    else if (across || along)
        setCursor(across ? Qt::SizeHorCursor : Qt::SizeVerCursor);
    else
        unsetCursor();
}

void BrowserBorderWindow::mousePressEvent(QMouseEvent* event)
{
    const Qt::Edges edges = EdgesAt(event->pos());
    if (event->button() != Qt::LeftButton || (!edges && !IsOnTitle(event->pos())))
        return;
    QWindow* const window = windowHandle();
    if (window && (edges ? window->startSystemResize(edges) : window->startSystemMove()))
        return;
    dragging = true;
    draggedEdges = edges;
    dragStart = event->globalPos();
    dragGeometry = geometry();
}

void BrowserBorderWindow::mouseMoveEvent(QMouseEvent* event)
{
    if (dragging)
        Drag(event->globalPos());
    else
        ShowCursor(EdgesAt(event->pos()));
}

void BrowserBorderWindow::mouseDoubleClickEvent(QMouseEvent* event)
{
    if (IsOnTitle(event->pos()))
        setWindowState(windowState() ^ Qt::WindowMaximized);
}

void BrowserBorderWindow::Drag(const QPoint& global)
{
    const QPoint way = global - dragStart;
    QRect wanted = dragGeometry;
    if (!draggedEdges)
        wanted.translate(way);
    if (draggedEdges.testFlag(Qt::LeftEdge))
        wanted.setLeft(qMin(wanted.left() + way.x(), wanted.right() - minimumWidth() + 1));
    if (draggedEdges.testFlag(Qt::RightEdge))
        wanted.setRight(qMax(wanted.right() + way.x(), wanted.left() + minimumWidth() - 1));
    if (draggedEdges.testFlag(Qt::TopEdge))
        wanted.setTop(qMin(wanted.top() + way.y(), wanted.bottom() - minimumHeight() + 1));
    if (draggedEdges.testFlag(Qt::BottomEdge))
        wanted.setBottom(qMax(wanted.bottom() + way.y(), wanted.top() + minimumHeight() - 1));
    setGeometry(wanted);
}
