// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QObject>
#include <QPoint>
#include <QSet>

#include <chrono>

class QMouseEvent;

// Keeps the second press of a double click away from what the first click has brought there: a page, a
// dialog, a button. Whoever double-clicks a card means the card, not what opens under the mouse. Listens to
// the whole application while it lives; what was there before the first press gets double clicks as ever.
class ClickGuard : public QObject
{
    Q_OBJECT

public:
    explicit ClickGuard(QObject* parent = nullptr);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool TakeMouse(QEvent* event);
    bool IsSwallowed(const QMouseEvent& press);
    bool Continues(const QMouseEvent& press) const;
    bool IsNewAt(const QPoint& globalPlace) const;

    QSet<const QObject*> appeared; // since the first press; never looked into, some may be gone
    std::chrono::milliseconds lastPress{0};
    QPoint lastPlace;
    Qt::MouseButton button = Qt::NoButton;
    bool swallowing = false; // from a press to its release
};
