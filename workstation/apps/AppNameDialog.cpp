// SPDX-License-Identifier: Apache-2.0

#include "AppNameDialog.h"

#include <WbBaseUI/WbScaledForm.h>

#include <QButtonGroup>
#include <QRadioButton>

namespace
{
constexpr int leastHeight = 190;
constexpr int leastHeightWithKinds = 300;
constexpr int longestName = 50;
} // namespace

AppNameDialog::AppNameDialog(Purpose purpose, QWidget* parent)
    : FieldDialog(purpose == Purpose::Create ? QStringLiteral("新建应用") : QStringLiteral("重命名应用"),
                  purpose == Purpose::Create ? leastHeightWithKinds : leastHeight, parent),
      kinds(new QButtonGroup(this))
{
    setObjectName(QStringLiteral("AppNameDialog"));
    SetField("editAppName", QStringLiteral("应用名称"), QStringLiteral("应用名称"),
             QStringLiteral("输入应用名称，不超过50字符"));
    ui.edit->setMaxLength(longestName);
    if (purpose == Purpose::Create) {
        ui.buttonOk->setText(QStringLiteral("创建"));
        AddKinds();
    }
}

void AppNameDialog::AddKinds()
{
    auto* row = new QWidget(this);
    auto* layout = new QVBoxLayout(row);
    layout->setContentsMargins(0, 8, 0, 0);
    layout->setSpacing(8);
    auto* visual = new QRadioButton(QStringLiteral("可视化流程：用语句卡片搭建，不写代码"), row);
    visual->setObjectName(QStringLiteral("radioVisual"));
    auto* program = new QRadioButton(QStringLiteral("编程流程：用 Python 编写"), row);
    program->setObjectName(QStringLiteral("radioProgram"));
    kinds->addButton(visual, AppKindVisual);
    kinds->addButton(program, AppKindProgram);
    visual->setChecked(true);
    layout->addWidget(visual);
    layout->addWidget(program);
    WbScaledForm::Follow(row);
    ui.layoutDialog->insertWidget(ui.layoutDialog->indexOf(ui.labelHint), row);
    setTabOrder(ui.edit, visual);
    setTabOrder(visual, program);
    setTabOrder(program, ui.buttonOk);
    setTabOrder(ui.buttonOk, ui.buttonCancel);
}

void AppNameDialog::SetName(const QString& name)
{
    ui.edit->setText(name);
    ui.edit->selectAll();
}

int AppNameDialog::GetKind() const
{
    return kinds->checkedId();
}

void AppNameDialog::SetKind(int kind)
{
    if (QAbstractButton* button = kinds->button(kind))
        button->setChecked(true);
}
