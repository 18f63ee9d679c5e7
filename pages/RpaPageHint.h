// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <WbBaseUI/WbLabel.h>

#include <QVector>

// Fills the place of a page's contents with a sentence while none of them is shown. GUI thread.
class RpaPageHint : public WbLabel
{
    Q_OBJECT

public:
    // place: becomes the parent, and its whole area is used. contents: null ones are passed over.
    RpaPageHint(const QString& text, QWidget* place, const QVector<QWidget*>& contents);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Update();

    QVector<QWidget*> parts;
};
