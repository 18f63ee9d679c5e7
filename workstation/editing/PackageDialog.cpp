// SPDX-License-Identifier: Apache-2.0

#include "PackageDialog.h"

#include "WheelFolderRow.h"
#include "ui_PackageDialog.h"

#include <RpaPackage/RpaPackagePanel.h>
#include <WbBaseUI/PackagedMsgBox.h>
#include <WbBaseUI/WbScaledForm.h>

#include <QPointer>

PackageDialog::PackageDialog(PackageService* service, const QString& wheelFolder, QWidget* parent)
    : WbBaseDialog(parent, Qt::WindowCloseButtonHint, 1, true), panel(new RpaPackagePanel(service, this))
{
    Ui::PackageDialog ui;
    ui.setupUi(GetContentWidget());
    setObjectName(QStringLiteral("PackageDialog"));
    SetTitle(QStringLiteral("扩展包"));
    QString about = QStringLiteral("安装在这个应用自己的环境中，不影响其他应用。");
    if (!panel->IsEditable())
        about += QStringLiteral("可视化应用的扩展包由流程中的指令决定，运行时自动更新，这里可以查看和安装。");
    ui.labelAbout->setText(about);
    auto* wheels = new WheelFolderRow(wheelFolder, this);
    ui.layoutDialog->addWidget(wheels);
    ui.layoutDialog->addWidget(panel, 1);
    connect(wheels, &WheelFolderRow::SigChosen, this, &PackageDialog::SigWheelFolderChosen);
    WbScaledForm::Follow(GetContentWidget());
}

void PackageDialog::reject()
{
    if (panel->IsChanged()) {
        const QPointer<PackageDialog> self(this);
        const int answer = PackagedMsgBox::question(
            QStringLiteral("扩展包列表有未保存的修改，是否保存？"), this,
            QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel, true, nullptr,
            {{QMessageBox::Yes, QStringLiteral("保存")}, {QMessageBox::No, QStringLiteral("不保存")}});
        if (!self || answer == QMessageBox::Cancel)
            return;
        if (answer == QMessageBox::Yes)
            panel->Save();
    }
    WbBaseDialog::reject();
}
