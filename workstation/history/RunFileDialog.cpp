// SPDX-License-Identifier: Apache-2.0

#include "RunFileDialog.h"

#include <WbBaseUI/WbScaledForm.h>

RunFileDialog::RunFileDialog(const RpaRunFile& file, DateLanguage language, QWidget* parent)
    : WbBaseDialog(parent, Qt::WindowCloseButtonHint, 1, true)
{
    ui.setupUi(GetContentWidget());
    WbScaledForm::Follow(GetContentWidget());
    setObjectName(QStringLiteral("RunFileDialog"));
    SetTitle(file.record.appName.isEmpty() ? QStringLiteral("运行记录文件")
                                           : QStringLiteral("运行记录文件：%1").arg(file.record.appName));
    ui.viewRun->SetDateLanguage(language);
    ui.viewRun->ShowRun(file.record, file.log, QStringLiteral("这个文件中没有运行记录。"));
    ui.viewRun->ShowDetails(file.details);
    connect(ui.buttonClose, &QPushButton::clicked, this, &QDialog::accept);
}

QString RunFileDialog::Filter()
{
    return QStringLiteral("运行记录 (*.rparun)");
}
