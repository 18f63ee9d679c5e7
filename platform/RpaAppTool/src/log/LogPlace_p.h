// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QObject>
#include <QPointer>

class QWidget;

// Where a log is shown: in its place, over the whole page, or in a window of its own. In its place something
// keeps the room until it comes back.
class LogPlace : public QObject
{
    Q_OBJECT

public:
    explicit LogPlace(QWidget* log);

    bool IsEnlarged() const { return cover; }
    bool IsDetached() const { return window; }

    void Enlarge();
    void Detach();
    void Return();

signals:
    void SigChanged();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void LeaveFor(QWidget* holder);
    QWidget* MakeStandIn();
    void SlotFocusChanged(QWidget* from, QWidget* to);

    QWidget* log;
    QPointer<QWidget> standIn;
    QPointer<QWidget> page;  // what the cover lies over
    QPointer<QWidget> outer; // when it goes, the log comes back
    QPointer<QWidget> cover;
    QPointer<QWidget> window;
    bool moving = false; // the keyboard goes astray for a moment
};
