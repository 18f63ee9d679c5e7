// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QObject>
#include <QPointer>
#include <QWidget>

// Leaves the popped-out browser the room that it covers at the right edge of the editor's pages, so that it
// hides nothing of them. A window that the author has moved elsewhere, or has made so large that no editor
// would be left beside it, gets none.
class PopOutRoom : public QObject
{
    Q_OBJECT

public:
    // The pages own it. keptFree: what they leave free at their right edge by themselves.
    PopOutRoom(QWidget* editorPages, int keptFree);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    int NeededRoom() const;
    void Arrange();

    QWidget* const pages;
    const int free;
    QPointer<QWidget> browser; // hidden while it is destroyed, it is a window and no more
};
