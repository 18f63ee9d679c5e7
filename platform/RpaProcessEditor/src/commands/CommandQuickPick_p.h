// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "ui_CommandQuickPick.h"

#include <QFrame>

class CommandList;

// A popup that finds a command by a few typed letters: arrows choose, Enter takes, Escape closes.
class CommandQuickPick : public QFrame
{
    Q_OBJECT

public:
    explicit CommandQuickPick(QWidget* parent);

    // Opens empty at the place, kept inside the parent's window.
    void Open(const QPoint& globalPosition);

signals:
    void SigCommandChosen(const QString& command);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void SlotSearch(const QString& text);
    void Take();
    void Step(int rows);

    Ui::CommandQuickPick ui; // the label stands in the place of the list when nothing fits
    CommandList* commands;
};
