// SPDX-License-Identifier: Apache-2.0

#include "RpaTemplateSelectDlg.h"

#include "RpaTemplateFile.h"

#include <OxBase/DpiTool.h>

#include <QDir>
#include <QFile>
#include <QPointer>

RpaTemplateSelectDlg::RpaTemplateSelectDlg(QWidget* parent) : WbBaseDialog(parent)
{
    ui.setupUi(GetContentWidget());
    SetTitle(QStringLiteral("选择模板"));
    ui.comboBox->SetBusinessStyle(1);
    ui.confirmBtn->SetButtonType(Wb::PrimaryButton);
    ui.cancleSelectBtn->SetButtonType(Wb::SecondaryButton);
    connect(ui.comboBox, qOverload<int>(&WbComboBox::currentIndexChanged), this,
            &RpaTemplateSelectDlg::ShowDescription);
    connect(ui.confirmBtn, &WbPushButton::clicked, this, &RpaTemplateSelectDlg::accept);
    connect(ui.cancleSelectBtn, &WbPushButton::clicked, this, &RpaTemplateSelectDlg::reject);
    ApplyMetrics();
}

void RpaTemplateSelectDlg::LoadTemplates(const QString& dir)
{
    ui.comboBox->clear();
    templates.clear();
    const QStringList fileNames =
        QDir(dir).entryList({QStringLiteral("*")}, QDir::Files | QDir::Readable, QDir::Name);
    for (const QString& fileName : fileNames)
        LoadTemplate(dir, fileName);
    ui.comboBox->setCurrentIndex(0);
    ShowDescription();
}

void RpaTemplateSelectDlg::LoadTemplate(const QString& dir, const QString& fileName)
{
    QFile file(QStringLiteral("%1/%2").arg(dir, fileName));
    const QByteArray content = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    RpaTemplateData record;
    RpaTemplateFile::Decode(content, record);
    if (record.GetTemplateName().isEmpty())
        return;
    templates[fileName].IJsonParser::operator=(record);
    ui.comboBox->addItem(record.GetTemplateName(), fileName);
}

QByteArray RpaTemplateSelectDlg::SelectTemplateAppData()
{
    if (templates.empty())
        return {};
    // The dialog goes away with the editor while it is open.
    const QPointer<RpaTemplateSelectDlg> self(this);
    const int result = exec();
    if (!self || result != Accepted || !CurrentTemplate())
        return {};
    return CurrentTemplate()->GetAppData();
}

void RpaTemplateSelectDlg::AdjustForDpi()
{
    WbBaseDialog::AdjustForDpi();
    ApplyMetrics();
}

void RpaTemplateSelectDlg::ApplyMetrics()
{
    setFixedSize(DpiTool::ScaleDefault(400), DpiTool::ScaleDefault(240));
    ui.directorLabel->setFixedWidth(DpiTool::ScaleDefault(64));
    ui.verticalLayout->setContentsMargins(DpiTool::ScaleDefault(30), DpiTool::ScaleDefault(40),
                                          DpiTool::ScaleDefault(30), DpiTool::ScaleDefault(20));
    ui.verticalLayout->setSpacing(DpiTool::ScaleDefault(4));
    ui.horizontalLayout->setContentsMargins(0, 0, DpiTool::ScaleDefault(20), 0);
    ui.horizontalLayout->setSpacing(DpiTool::ScaleDefault(4));
    ui.btnLayout->setSpacing(DpiTool::ScaleDefault(8));
}

// Null when no template could be read: nothing may be put into the map by being asked for, or a folder
// without templates would seem to hold one.
const RpaTemplateData* RpaTemplateSelectDlg::CurrentTemplate() const
{
    const auto found = templates.find(ui.comboBox->currentData().toString());
    return found != templates.end() ? &found->second : nullptr;
}

void RpaTemplateSelectDlg::ShowDescription()
{
    const RpaTemplateData* const current = CurrentTemplate();
    ui.descLabel->setText(current ? current->GetTemplateDirection() : QString());
}
