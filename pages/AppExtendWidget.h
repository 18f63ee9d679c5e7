// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "ui_AppExtendWidget.h"

#include <RpaAppData/RpaAppData.h>
#include <WbBaseUI/WbBaseWidget.h>

#include <QString>

// The editor page with the app's usage instructions. Every change is written straight into the app and marks
// it modified.
class AppExtendWidget : public WbBaseWidget
{
    Q_OBJECT

public:
    explicit AppExtendWidget(QWidget* parent = nullptr);

    // Shows the app's instructions and writes later changes into it. Never null.
    void SetRpaAppData(const RpaAppDataPtr& app);

private slots:
    void SlotManualEdited(QString str);

private:
    Ui::AppExtendWidget ui;
    RpaAppDataPtr appData;
    QString loadedManual; // as bound; edits do not change it
};
