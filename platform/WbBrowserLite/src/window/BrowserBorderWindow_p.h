// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <WbBrowserLite/IBrowserBorderWindow.h>

#include <QPointer>

class QVBoxLayout;

// A window without the system's frame around the popped-out browser: a thin border that resizes it, a title
// that moves it, and the way back.
class BrowserBorderWindow : public IBrowserBorderWindow
{
    Q_OBJECT

public:
    explicit BrowserBorderWindow(QWidget* parent = nullptr);

    void SetTarget(QWidget* target, const QRect& rect) override;
    void SetContent(IBrowserWidget* browser) override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent*) override { dragging = false; }
    void mouseDoubleClickEvent(QMouseEvent* event) override;

private:
    QWidget* BuildTitle();
    Qt::Edges EdgesAt(const QPoint& position) const;
    bool IsOnTitle(const QPoint& position) const;
    void ShowCursor(Qt::Edges edges);
    void Drag(const QPoint& global);

    QVBoxLayout* const layout;
    QWidget* title = nullptr;
    QPointer<IBrowserWidget> content;

    // A drag that the window system did not take over.
    bool dragging = false;
    Qt::Edges draggedEdges; // none: the window moves
    QPoint dragStart;
    QRect dragGeometry;
};
