// SPDX-License-Identifier: Apache-2.0

#include "RpaTemplateExportDlg.h"

#include <OxBase/DpiTool.h>
#include <WbBaseUI/WbToast.h>

#include <QFileDialog>
#include <QPointer>

RpaTemplateExportDlg::RpaTemplateExportDlg(QWidget* parent) : WbBaseDialog(parent)
{
    ui.setupUi(GetContentWidget());
    SetTitle(QStringLiteral("生成模板"));
    ui.confirmBtn->SetButtonType(Wb::PrimaryButton);
    ui.cancleSelectBtn->SetButtonType(Wb::SecondaryButton);
    ui.openPushButton->SetButtonType(Wb::SecondaryButton);
    connect(ui.confirmBtn, &WbPushButton::clicked, this, &RpaTemplateExportDlg::Confirm);
    connect(ui.cancleSelectBtn, &WbPushButton::clicked, this, &RpaTemplateExportDlg::reject);
    connect(ui.openPushButton, &WbPushButton::clicked, this, &RpaTemplateExportDlg::ChooseDirectory);
    ApplyMetrics();
}

QString RpaTemplateExportDlg::GetTemplateName() const
{
    return ui.nameLineEdit->text().trimmed();
}

QString RpaTemplateExportDlg::GetTemplateDirection() const
{
    return ui.directionLineEdit->text().trimmed();
}

QString RpaTemplateExportDlg::GetSaveDir() const
{
    return ui.saveFileLineEdit->text().trimmed();
}

void RpaTemplateExportDlg::AdjustForDpi()
{
    WbBaseDialog::AdjustForDpi();
    ApplyMetrics();
}

void RpaTemplateExportDlg::ApplyMetrics()
{
    setFixedSize(DpiTool::ScaleDefault(400), DpiTool::ScaleDefault(280));
    const int side = DpiTool::ScaleDefault(20);
    const int end = DpiTool::ScaleDefault(12);
    ui.mainLayout->setContentsMargins(side, end, side, end);
    ui.mainLayout->setSpacing(DpiTool::ScaleDefault(8));
    for (QHBoxLayout* row : {ui.nameHLayout, ui.directionHLayout, ui.saveFileHLayout})
        row->setSpacing(DpiTool::ScaleDefault(4));
    ui.btnLayout->setSpacing(DpiTool::ScaleDefault(8));
}

void RpaTemplateExportDlg::ChooseDirectory()
{
    // The editor may take this dialog along while the system's is open.
    const QPointer<RpaTemplateExportDlg> self(this);
    const QString dir = QFileDialog::getExistingDirectory(this, QStringLiteral("请选择生成模板的存储路径"),
                                                          QString(), QFileDialog::ShowDirsOnly);
    if (self)
        ui.saveFileLineEdit->setText(dir);
}

void RpaTemplateExportDlg::Confirm()
{
    if (GetTemplateName().isEmpty())
        WbToast::Show(QStringLiteral("模板名称不能为空"), ToastError);
    else if (GetTemplateDirection().isEmpty())
        WbToast::Show(QStringLiteral("模板描述不能为空"), ToastError);
    else if (GetSaveDir().isEmpty())
        WbToast::Show(QStringLiteral("存储路径不能为空"), ToastError);
    else
        accept();
}
