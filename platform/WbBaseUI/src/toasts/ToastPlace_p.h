// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QRect>
#include <QVector>

class QWidget;

// The parts of a window as a notice finds them: it should cover nothing that the user works with.
class ToastPlace
{
public:
    explicit ToastPlace(const QWidget* window);

    // Where a notice of that size stands best, not above top: where it covers least, then near the top, then
    // near the middle.
    QPoint Find(const QSize& size, int top) const;

    // Keeps other notices away from there.
    void Take(const QRect& rect);

    // Whether a button, a field, a list or the like lies there.
    bool CoversSomethingInUse(const QRect& rect) const;

private:
    struct Part
    {
        QRect rect;
        int weight;
    };

    void Collect(const QWidget* widget, const QRect& clip);
    qint64 CostOf(const QRect& rect, qint64 enough) const;

    QSize room;
    QVector<Part> parts;
};
