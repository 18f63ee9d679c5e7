// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QWidget>

class QLabel;
class QProgressBar;
class QPushButton;

// Says what is under way, how far it is, and lets the user end it. Hidden until Open().
class TransferBar : public QWidget
{
    Q_OBJECT

public:
    explicit TransferBar(QWidget* parent = nullptr);

    void Open(const QString& text);
    void ShowProgress(int permille);

signals:
    void SigCancel();

private:
    QLabel* label;
    QProgressBar* progress;
    QPushButton* cancel;
};
