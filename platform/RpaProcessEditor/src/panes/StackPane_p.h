// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "DebugFocus_p.h"
#include "ui_StackPane.h"

#include <QWidget>

// The calls of a stopped program, the innermost first; the chosen one is what panes and editors show.
class StackPane : public QWidget
{
    Q_OBJECT

public:
    explicit StackPane(DebugFocus* debugFocus, QWidget* parent = nullptr);

signals:
    // A frame was clicked, maybe again.
    void SigPlaceChosen(const RpaDebugPlace& place);

private:
    void Fill();
    void SlotChosen(const QTreeWidgetItem* item);

    DebugFocus* const focus;
    int shownStop = 0;
    Ui::StackPane ui;
};
