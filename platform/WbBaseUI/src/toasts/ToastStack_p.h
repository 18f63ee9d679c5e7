// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <WbBaseUI/WbToast.h>

#include <QObject>
#include <QTimer>
#include <QVector>

class ToastPlace;
class ToastWidget;
class QWidget;

// The notices of one window, one below the other from its top, where they cover nothing that is in use. It
// belongs to the window and goes with it.
class ToastStack : public QObject
{
    Q_OBJECT

public:
    // The stack of that window, made when it is first asked for.
    static ToastStack* Of(QWidget* window);

    void Show(const QString& text, ENUM_TOAST_TYPE type);
    void Clear();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    explicit ToastStack(QWidget* window);

    void Adopt(ToastWidget* toast);
    void Remove(ToastWidget* toast);
    void MoveToNextWindow();
    void Arrange();
    void LookBeneath();
    void LetMouseThrough(const ToastPlace& place);

    QTimer looking;
    QWidget* window;
    QVector<ToastWidget*> toasts;
};

// The window in which a notice is seen best now; null when no window of the application is visible.
QWidget* ToastWindow();
