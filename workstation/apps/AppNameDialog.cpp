// SPDX-License-Identifier: Apache-2.0

#include "AppNameDialog.h"

#include <OxBase/DpiTool.h>
#include <WbBaseUI/BaseUIBusiness.h>
#include <WbBaseUI/WbLabel.h>
#include <WbBaseUI/WbLineEdit.h>
#include <WbBaseUI/WbPushButton.h>

#include <QButtonGroup>
#include <QHBoxLayout>
#include <QRadioButton>
#include <QVBoxLayout>

namespace
{
constexpr int longestName = 50;
}

AppNameDialog::AppNameDialog(Purpose purpose, QWidget* parent)
    : WbBaseDialog(parent, Qt::WindowCloseButtonHint, 1, true), editName(new WbLineEdit(this)),
      labelProblem(new WbLabel(this)), kinds(new QButtonGroup(this)),
      buttonOk(new WbPushButton(this, Wb::PrimaryButton)),
      buttonCancel(new WbPushButton(this, Wb::SecondaryButton))
{
    const bool create = purpose == Purpose::Create;
    setObjectName(QStringLiteral("AppNameDialog"));
    SetTitle(create ? QStringLiteral("新建应用") : QStringLiteral("重命名应用"));

    editName->setObjectName(QStringLiteral("editAppName"));
    editName->setAccessibleName(QStringLiteral("应用名称"));
    editName->setPlaceholderText(QStringLiteral("输入应用名称，不超过50字符"));
    editName->setMaxLength(longestName);
    labelProblem->setObjectName(QStringLiteral("labelProblem"));
    labelProblem->setWordWrap(true);
    buttonOk->setObjectName(QStringLiteral("buttonOk"));
    buttonOk->setText(create ? QStringLiteral("创建") : QStringLiteral("确定"));
    buttonOk->setDefault(true);
    buttonOk->setEnabled(false);
    buttonCancel->setObjectName(QStringLiteral("buttonCancel"));
    buttonCancel->setText(QStringLiteral("取消"));

    auto* layout = new QVBoxLayout(GetContentWidget());
    layout->setContentsMargins(24, 20, 24, 24);
    layout->setSpacing(12);
    auto* caption = new WbLabel(QStringLiteral("应用名称"), this);
    caption->setBuddy(editName);
    layout->addWidget(caption);
    layout->addWidget(editName);
    if (create)
        layout->addWidget(CreateKindRow());
    layout->addWidget(labelProblem);
    layout->addStretch();
    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(12);
    buttons->addStretch();
    buttons->addWidget(buttonOk);
    buttons->addWidget(buttonCancel);
    layout->addLayout(buttons);
    GetContentWidget()->setMinimumSize(DpiTool::ScaleDefault(440), DpiTool::ScaleDefault(create ? 300 : 190));

    connect(editName, &QLineEdit::textChanged, this, &AppNameDialog::SlotNameEdited);
    connect(editName, &QLineEdit::returnPressed, this, &AppNameDialog::SlotConfirm);
    connect(buttonOk, &QPushButton::clicked, this, &AppNameDialog::SlotConfirm);
    connect(buttonCancel, &QPushButton::clicked, this, &QDialog::reject);
    editName->setFocus();
}

AppNameDialog::~AppNameDialog() = default;

QWidget* AppNameDialog::CreateKindRow()
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
    setTabOrder(editName, visual);
    setTabOrder(visual, program);
    setTabOrder(program, buttonOk);
    setTabOrder(buttonOk, buttonCancel);
    visual->setChecked(true);
    layout->addWidget(visual);
    layout->addWidget(program);
    return row;
}

QString AppNameDialog::GetName() const
{
    return editName->text().trimmed();
}

void AppNameDialog::SetName(const QString& name)
{
    editName->setText(name);
    editName->selectAll();
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

void AppNameDialog::SetBusy(bool busy)
{
    // Disabled it would hand the focus on to the button that cancels, and with it the key being pressed.
    editName->setReadOnly(busy);
    buttonOk->setEnabled(!busy);
}

void AppNameDialog::ShowProblem(const QString& problem)
{
    SetBusy(false);
    labelProblem->setText(problem);
    editName->setFocus();
}

void AppNameDialog::SlotConfirm()
{
    if (buttonOk->isEnabled()) {
        labelProblem->clear();
        SetBusy(true);
        emit SigConfirmed();
    }
}

void AppNameDialog::SlotNameEdited()
{
    labelProblem->clear();
    buttonOk->setEnabled(!GetName().isEmpty());
}
