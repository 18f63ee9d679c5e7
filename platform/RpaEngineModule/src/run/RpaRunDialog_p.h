// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "ui_RpaRunDialog.h"

#include <WbBaseUI/WbBaseDialog.h>

#include <QVariant>

// A dialog that a running program shows to the user.
class RpaRunDialog : public WbBaseDialog
{
    Q_OBJECT

public:
    enum Kind
    {
        Message, // "确定"
        Confirm, // "是", "否"
        Input,   // a line and "确定", "取消"
    };

    RpaRunDialog(Kind kind, const QString& text, const QString& value);

    // Message: invalid; Confirm: bool; Input: the text, invalid when cancelled.
    QVariant GetAnswer() const;

private:
    const Kind kind;
    Ui::RpaRunDialog ui;
};
