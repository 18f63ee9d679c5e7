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

    // Where notices of these sizes stand best, one below the other on one axis: where they cover least, then near
    // the top, then near the middle.
    QVector<QRect> Find(const QVector<QSize>& sizes) const;

    // Whether a button, a field, a list or the like lies there.
    bool CoversSomethingInUse(const QRect& rect) const;

private:
    struct Part
    {
        QRect rect;
        int weight;
    };

    void Collect(const QWidget* widget, const QRect& clip);
    qint64 CostOf(const QVector<QRect>& column, qint64 enough) const;

    QSize room;
    QVector<Part> parts;
};
