// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "ActEntries.h"
#include "ui_ActPalette.h"

#include <WbBaseUI/WbBaseDialog.h>

// Everything that can be done now and here, found by a few letters of its name or its key. What cannot be
// done says why.
class ActPalette : public WbBaseDialog
{
    Q_OBJECT

public:
    explicit ActPalette(const QVector<ActEntry>& acts, QWidget* parent = nullptr);

signals:
    // Announced once the dialog is on its way out: what the deed works with is found as it was before.
    void SigChosen(int entry);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Fill();
    void Search(const QString& text);
    void ShowReason();
    void Choose();
    void MoveBy(int rows);

    const QVector<ActEntry> entries;
    Ui::ActPalette ui;
};
