// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <WbBaseUI/WbToast.h>

#include <QFrame>
#include <QTimer>

class QGraphicsOpacityEffect;
class QLabel;
class QPropertyAnimation;

// One notice: an icon and a text that fade in, wait and fade out. It takes no focus.
class ToastWidget : public QFrame
{
    Q_OBJECT
    Q_PROPERTY(int toastType READ GetType)

public:
    ToastWidget(const QString& message, ENUM_TOAST_TYPE type, QWidget* parent);

    int GetType() const { return type; }
    // The whole text, also where a shortened one is shown.
    QString GetText() const { return text; }

    void FadeIn();
    void FadeOut();

    // As tall as its text needs at that width, and not wider than its text.
    void FitInto(int width);

    // Whether the mouse goes to what lies beneath; else a click sends the notice away.
    void SetMousePasses(bool passes);

signals:
    // It has faded out and may be removed.
    void SigGone();

protected:
    void leaveEvent(QEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    void Announce();
    void PaintIcon();

    const QString text;
    const ENUM_TOAST_TYPE type;
    QLabel* labelIcon;
    QLabel* labelText;
    QGraphicsOpacityEffect* opacity;
    QPropertyAnimation* fade;
    QTimer timer;
    bool leaving = false;
    bool mouseCame = false;
    QPoint mouseCameAt;
};
