// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "ui_RpaTemplateExportDlg.h"

#include <WbBaseUI/WbBaseDialog.h>

#include <QString>

// Asks for name, description and folder of a template to be written. Accepted only when all three are given.
class RpaTemplateExportDlg : public WbBaseDialog
{
    Q_OBJECT

public:
    explicit RpaTemplateExportDlg(QWidget* parent = nullptr);

    // Without leading and trailing blanks.
    QString GetTemplateName() const;
    QString GetTemplateDirection() const;
    QString GetSaveDir() const;

    void AdjustForDpi() override;

private:
    void ApplyMetrics();
    void ChooseDirectory();
    void Confirm();

    Ui::RpaTemplateExportDlg ui;
};
