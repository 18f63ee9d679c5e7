// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "RpaTemplateData.h"
#include "ui_RpaTemplateSelectDlg.h"

#include <WbBaseUI/WbBaseDialog.h>

#include <QByteArray>
#include <QString>

#include <map>

// Offers the templates of a folder to the author of a new app.
class RpaTemplateSelectDlg : public WbBaseDialog
{
    Q_OBJECT

public:
    explicit RpaTemplateSelectDlg(QWidget* parent = nullptr);

    // Reads the files of the folder in the order of their names; what is no template is left out silently.
    void LoadTemplates(const QString& dir);

    // Shows the dialog and returns the app of the chosen template; empty when there are no templates or the
    // author cancelled.
    QByteArray SelectTemplateAppData();

    void AdjustForDpi() override;

private:
    void ApplyMetrics();
    void LoadTemplate(const QString& dir, const QString& fileName);
    const RpaTemplateData* CurrentTemplate() const;
    void ShowDescription();

    Ui::RpaTemplateSelectDlg ui;
    std::map<QString, RpaTemplateData> templates; // by file name
};
