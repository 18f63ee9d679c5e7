// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QWidget>

class QHBoxLayout;
class QToolButton;
class QVBoxLayout;

// A titled area that folds to its title. The title row is a button: a click, Space or Return folds.
class ShrinkPanel : public QWidget
{
    Q_OBJECT

public:
    explicit ShrinkPanel(const QString& title, QWidget* parent = nullptr);

    // Owned by the panel from then on; shown while unfolded.
    void SetContent(QWidget* content);

    // A button at the right end of the title row.
    QToolButton* AddAction(const QString& icon, const QString& tip);

    // Number shown behind the title.
    void SetCount(int count);

    bool IsShrink() const { return shrunk; }
    void SetShrink(bool shrink);

signals:
    void SigShrinkChanged();

private:
    QString title;
    QToolButton* titleButton;
    QHBoxLayout* titleRow;
    QVBoxLayout* rootLayout;
    QWidget* content = nullptr;
    bool shrunk = false;
};
