// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QWidget>

class QLabel;
class QToolButton;

// Title and close button of a dialog; dragging it moves the dialog.
class DialogTitleBar : public QWidget
{
    Q_OBJECT

public:
    // formTitle: the higher bar of dialogs that hold a form.
    DialogTitleBar(bool formTitle, bool closable, QWidget* parent);

    void SetTitle(const QString& title);
    void AdjustForDpi();

signals:
    void SigClose();

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent*) override { dragging = false; }

private:
    const bool formTitle;
    QLabel* labelTitle;
    QToolButton* buttonClose;
    QPoint grabbedAt;
    bool dragging = false;
};
