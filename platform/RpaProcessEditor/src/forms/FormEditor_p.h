// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QWidget>

// Shows a Python expression without Python; whoever makes it has asked whether that is possible.
class FormEditor : public QWidget
{
    Q_OBJECT

public:
    using QWidget::QWidget;

    // Shows an expression that came from elsewhere; emits nothing.
    virtual void Show(const QString& python) = 0;

    // What the Tab key stops at, in that order.
    virtual QList<QWidget*> TabStops() const { return StopsIn(this); }

    static QList<QWidget*> StopsIn(const QWidget* part);

signals:
    void SigEdited(const QString& python);
    // What comes next is an act of its own.
    void SigFinished();
};
