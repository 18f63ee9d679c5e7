// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QFrame>

class WbLabel;
class WbPushButton;

// Says over a text why it is not shown as it is, and offers what can be done about it. Hidden at first.
class RichNotice : public QFrame
{
    Q_OBJECT

public:
    explicit RichNotice(QWidget* parent = nullptr);

    // Nothing is offered when the offer is empty.
    void Show(const QString& text, const QString& offer);

signals:
    void SigAccepted();

private:
    WbLabel* label;
    WbPushButton* button;
};
