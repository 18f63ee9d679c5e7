// SPDX-License-Identifier: Apache-2.0

#include "AddUIWidget.h"

#include <OxBase/DpiTool.h>
#include <RpaAppData/RpaUIDataManager.h>
#include <WbBaseUI/BaseUIBusiness.h>
#include <WbBaseUI/WbToast.h>

namespace
{

constexpr int nameMaxLength = 20;

} // namespace

AddUIWidget::AddUIWidget(QWidget* parent) : WbBaseDialog(parent, Qt::WindowCloseButtonHint)
{
    ui.setupUi(GetContentWidget());
    ui.lineEdit->setMaxLength(nameMaxLength);
    ui.pushButtonOK->SetButtonType(Wb::PrimaryButton);
    ui.pushButtonCancel->SetButtonType(Wb::SecondaryButton);
    ui.pushButtonOK->setDefault(true);
    SetRenameMode(false);
    ApplyLayoutMetrics();
    connect(ui.pushButtonOK, &WbPushButton::clicked, this, &AddUIWidget::SlotOK);
    connect(ui.pushButtonCancel, &WbPushButton::clicked, this, &AddUIWidget::SlotCancel);
}

void AddUIWidget::SetUIDataManager(RpaUIDataManager* manager)
{
    uiDataManager = manager;
}

void AddUIWidget::SetName(const QString& name)
{
    ui.lineEdit->setText(name);
}

void AddUIWidget::SetIndex(int value)
{
    index = value;
}

void AddUIWidget::SetRenameMode(bool rename)
{
    renameMode = rename;
    SetTitle(rename ? QStringLiteral("重命名界面") : QStringLiteral("添加界面"));
}

QString AddUIWidget::GetName() const
{
    return ui.lineEdit->text().trimmed();
}

void AddUIWidget::AdjustForDpi()
{
    WbBaseDialog::AdjustForDpi();
    ApplyLayoutMetrics();
}

void AddUIWidget::ApplyLayoutMetrics()
{
    const int margin = DpiTool::ScaleDefault(20);
    ui.verticalLayoutRoot->setContentsMargins(margin, margin, margin, DpiTool::ScaleDefault(30));
    ui.verticalLayoutRoot->setSpacing(DpiTool::ScaleDefault(20));
    ui.horizontalLayoutTitle->setSpacing(DpiTool::ScaleDefault(8));
    ui.horizontalLayoutBtn->setSpacing(DpiTool::ScaleDefault(10));
}

void AddUIWidget::SlotOK()
{
    const QString name = GetName();
    if (name.isEmpty()) {
        WbToast::Show(QStringLiteral("界面名称不能为空"), ToastError);
        return;
    }
    if (name.contains(QLatin1Char('\n'))) {
        WbToast::Show(QStringLiteral("界面名称中不能包含换行"), ToastError);
        return;
    }
    if (IsNameTaken(name)) {
        WbToast::Show(QStringLiteral("界面名称已存在"), ToastWarning);
        return;
    }
    accept();
}

void AddUIWidget::SlotCancel()
{
    reject();
}

bool AddUIWidget::IsNameTaken(const QString& name) const
{
    return renameMode ? uiDataManager->IsExistExceptIndex(name, index) : uiDataManager->IsExist(name);
}
