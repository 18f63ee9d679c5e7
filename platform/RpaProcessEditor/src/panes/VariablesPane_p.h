// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "DebugFocus_p.h"
#include "ValueFilter_p.h"
#include "ui_VariablesPane.h"

#include <QWidget>

class ValueModel;

// The variables of the chosen call of a stopped program.
class VariablesPane : public QWidget
{
    Q_OBJECT

public:
    explicit VariablesPane(DebugFocus* debugFocus, QWidget* parent = nullptr);

signals:
    // A value was changed; what is computed from it may be another one.
    void SigValueSet();

private:
    void Ask();
    void SlotAnswer(const RpaDebugAnswer& answer);

    DebugFocus* const focus;
    ValueModel* const model;
    ValueFilter filter;
    int request = 0; // for the scopes
    Ui::VariablesPane ui;
};
