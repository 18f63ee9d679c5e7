// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "TakenAlong.h"
#include "ui_TakenAlongDialog.h"

#include <WbBaseUI/WbBaseDialog.h>

// What goes along with an app, a row each with what becomes of it: it goes along, or is taken out before.
// Passwords are taken out unless the author says otherwise.
class TakenAlongDialog : public WbBaseDialog
{
    Q_OBJECT

public:
    // act: what the author is about to do, "导出".
    TakenAlongDialog(const QVector<TakenAlong>& entries, const QString& act, QWidget* parent);

    // Those that are to be taken out.
    QVector<TakenAlong> GetTakenOut() const;

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void PrepareTable();
    void AddRow(const TakenAlong& entry);

    Ui::TakenAlongDialog ui;
    const QVector<TakenAlong> entries;
};
