// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QBasicTimer>
#include <QElapsedTimer>
#include <QWidget>

// A turning arc. It runs only while it can be seen.
class BusySpinner : public QWidget
{
    Q_OBJECT

public:
    explicit BusySpinner(QWidget* parent = nullptr);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent*) override { timer.stop(); }
    void timerEvent(QTimerEvent* event) override;

private:
    QBasicTimer timer;
    QElapsedTimer clock;
};
