// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "DebugFocus_p.h"
#include "ui_WatchesPane.h"

#include <QWidget>

class ValueModel;

// Expressions that are computed at each stop, and one that is computed now. In the innermost call the program
// computes them by itself; for another one each is asked for.
class WatchesPane : public QWidget
{
    Q_OBJECT

public:
    explicit WatchesPane(DebugFocus* debugFocus, QWidget* parent = nullptr);

    // Values are others by now.
    void Refresh();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void AddWatch();
    void EvaluateOnce();
    void RemoveCurrent();
    void SlotList();
    void ShowWithout();
    void SlotFrame();
    void SlotWatches(const QVector<RpaDebugValue>& values);
    void SlotAnswer(const RpaDebugAnswer& answer);
    void Ask(const QString& expression, int row);

    DebugFocus* const focus;
    ValueModel* const model;
    QStringList expressions;  // row by row, before once
    QString once;             // what was computed once at this stop, behind the watches; may be empty
    QHash<int, int> requests; // number -> row
    Ui::WatchesPane ui;
};
