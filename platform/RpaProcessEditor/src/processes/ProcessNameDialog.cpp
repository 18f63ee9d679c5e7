// SPDX-License-Identifier: Apache-2.0

#include "ProcessNameDialog_p.h"

#include <OxBase/DpiTool.h>
#include <WbBaseUI/WbLineEdit.h>
#include <WbBaseUI/WbPushButton.h>

#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

ProcessNameDialog::ProcessNameDialog(const QString& title, const QString& name, const QStringList& taken,
                                     QWidget* parent)
    : WbBaseDialog(parent), takenNames(taken), edit(new WbLineEdit), problem(new QLabel),
      okButton(new WbPushButton(nullptr, Wb::PrimaryButton))
{
    setObjectName(QStringLiteral("ProcessNameDialog"));
    SetTitle(title);
    edit->setObjectName(QStringLiteral("lineEditProcessName"));
    edit->setMaxLength(maximumLength);
    edit->setText(name);
    edit->selectAll();
    edit->setPlaceholderText(QStringLiteral("流程名称"));
    edit->setAccessibleName(QStringLiteral("流程名称"));
    problem->setObjectName(QStringLiteral("labelNameProblem"));
    problem->setProperty("wbRole", QStringLiteral("error"));
    okButton->setObjectName(QStringLiteral("pushButtonNameOk"));
    okButton->setText(QStringLiteral("确定"));
    okButton->setDefault(true);
    auto* cancel = new WbPushButton;
    cancel->setText(QStringLiteral("取消"));
    cancel->setAutoDefault(false);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(okButton);
    buttons->addWidget(cancel);
    auto* layout = new QVBoxLayout(GetContentWidget());
    layout->setContentsMargins(16, 8, 16, 16);
    layout->addWidget(edit);
    layout->addWidget(problem);
    layout->addStretch();
    layout->addLayout(buttons);
    GetContentWidget()->setMinimumSize(DpiTool::ScaleDefault(360), DpiTool::ScaleDefault(140));

    connect(edit, &QLineEdit::textChanged, this, &ProcessNameDialog::SlotEdited);
    connect(edit, &QLineEdit::returnPressed, okButton, &QPushButton::click);
    connect(okButton, &QPushButton::clicked, this, &QDialog::accept);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    SlotEdited();
}

QString ProcessNameDialog::Name() const
{
    return edit->text().trimmed();
}

QString ProcessNameDialog::Problem(const QString& name, const QStringList& taken)
{
    if (name.trimmed().isEmpty())
        return QStringLiteral("请填写名称");
    if (taken.contains(name.trimmed()))
        return QStringLiteral("名称已存在");
    return QString();
}

void ProcessNameDialog::SlotEdited()
{
    const QString text = Problem(edit->text(), takenNames);
    problem->setText(text);
    okButton->setEnabled(text.isEmpty());
}
