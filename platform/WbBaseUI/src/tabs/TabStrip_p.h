// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <WbBaseUI/WbTabBar.h>

// The tabs of RpaTabBar. It turns mouse and keys into wishes and never changes its tabs by itself.
class TabStrip : public WbTabBar
{
    Q_OBJECT

public:
    explicit TabStrip(QWidget* parent);

    // Each tab keeps an identity of its own through moves and renames.
    int AppendTab(const QString& name);
    void Swap(int from, int to);

signals:
    void SigRename(int index);
    void SigDelete(int index);
    void SigMove(int from, int to);
    void SigMenu(int index, const QPoint& globalPosition);

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    bool HandleKey(const QKeyEvent& event);
    void MoveBy(int index, int step);
    void DragTo(const QPoint& position);
    int StepTowards(int index, int x) const;
    int IndexOfIdentity(int identity) const;

    QPoint pressedAt;
    int pressedIdentity = -1;
    bool dragging = false;
    int nextIdentity = 0;
};
