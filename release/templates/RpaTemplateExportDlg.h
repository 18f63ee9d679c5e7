// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <WbBaseUI/WbBaseDialog.h>

#include <QString>

#include <memory>

namespace Ui
{
class RpaTemplateExportDlg;
}

// Asks for name, description and folder of a template to be written. Accepted only when all three are given.
class RpaTemplateExportDlg : public WbBaseDialog
{
    Q_OBJECT

public:
    explicit RpaTemplateExportDlg(QWidget* parent = nullptr);
    ~RpaTemplateExportDlg() override;

    // Without leading and trailing blanks.
    QString GetTemplateName() const;
    QString GetTemplateDirection() const;
    QString GetSaveDir() const;

    void AdjustForDpi() override;

private:
    void ApplyMetrics();
    void ChooseDirectory();
    void Confirm();

    const std::unique_ptr<Ui::RpaTemplateExportDlg> ui;
};
