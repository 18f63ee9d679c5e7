// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "ui_RunNotice.h"

#include <QFrame>

// Why a run failed or could not begin, in words, with what can be done about it; what only programmers read
// is behind a button.
class RunNotice : public QFrame
{
    Q_OBJECT

public:
    explicit RunNotice(QWidget* parent = nullptr);

    // again: what the button says that tries once more. details: may be empty.
    void Tell(const QString& text, const QString& again, const QString& details);

signals:
    void SigAgain();
    void SigReport();

private:
    Ui::RunNotice ui;
};
