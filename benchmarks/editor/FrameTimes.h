// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QAbstractScrollArea>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEvent>
#include <QScrollBar>
#include <QString>
#include <QVector>

#include <algorithm>
#include <cstdio>

// Measuring of views that are scrolled. Frames are painted at once, as the platform's next refresh would.
namespace FrameTimes
{
struct Figures
{
    double p50Ms;
    double p99Ms;
};

inline double Elapsed(const QElapsedTimer& timer)
{
    return double(timer.nsecsElapsed()) / 1e6;
}

template <typename Act>
double Measure(Act act)
{
    QElapsedTimer timer;
    timer.start();
    act();
    QCoreApplication::processEvents();
    return Elapsed(timer);
}

inline Figures Of(QVector<double> times)
{
    std::sort(times.begin(), times.end());
    return {times.at(times.size() / 2), times.at(times.size() * 99 / 100)};
}

// Tells frames that were painted from moves that ended without a paint.
class PaintCounter : public QObject
{
public:
    explicit PaintCounter(QWidget* widget) { widget->installEventFilter(this); }
    bool eventFilter(QObject*, QEvent* event) override
    {
        count += event->type() == QEvent::Paint;
        return false;
    }

    int count = 0;
};

// Moves the view to `count` places that are `step` apart, from the top, and begins anew at the end.
inline Figures Scroll(QAbstractScrollArea& view, int count, int step)
{
    QScrollBar* bar = view.verticalScrollBar();
    bar->setValue(0);
    QCoreApplication::processEvents();
    const PaintCounter paints(view.viewport());
    QVector<double> times;
    int value = 0;
    for (int i = 0; i < count; ++i) {
        value = (value + step) % qMax(1, bar->maximum());
        QElapsedTimer timer;
        timer.start();
        bar->setValue(value);
        QCoreApplication::processEvents();
        times << Elapsed(timer);
    }
    if (paints.count < count)
        qFatal("%d of %d frames were painted", paints.count, count);
    return Of(times);
}

inline void Print(const char* what, const Figures& figures)
{
    std::printf("  %-34s p50 %7.2f ms  p99 %7.2f ms\n", what, figures.p50Ms, figures.p99Ms);
    std::fflush(stdout);
}

inline void PrintTime(const char* what, double ms)
{
    std::printf("  %-34s %11.2f ms\n", what, ms);
    std::fflush(stdout);
}
} // namespace FrameTimes
