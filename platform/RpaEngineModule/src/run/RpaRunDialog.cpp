// SPDX-License-Identifier: Apache-2.0

#include "RpaRunDialog_p.h"

#include <OxBase/DpiTool.h>
#include <WbBaseUI/UIMain.h>
#include <WbBaseUI/WbLabel.h>
#include <WbBaseUI/WbLineEdit.h>
#include <WbBaseUI/WbPushButton.h>

#include <QHBoxLayout>
#include <QVBoxLayout>

namespace
{

// A text of a program may be of any length; a dialog may not.
constexpr int textLength = 2000;

} // namespace

RpaRunDialog::RpaRunDialog(Kind shownKind, const QString& text, const QString& value)
    : WbBaseDialog(UIMain::Instance()->GetMainWidget(nullptr)), kind(shownKind)
{
    setObjectName(QStringLiteral("RpaRunDialog"));
    SetTitle(QStringLiteral("流程消息"));
    auto* layout = new QVBoxLayout(GetContentWidget());
    const int margin = DpiTool::ScaleDefault(24);
    layout->setContentsMargins(margin, margin, margin, margin);
    layout->setSpacing(DpiTool::ScaleDefault(16));

    auto* label = new WbLabel(text.left(textLength));
    label->setObjectName(QStringLiteral("labelRunText"));
    label->setWordWrap(true);
    label->setMinimumWidth(DpiTool::ScaleDefault(320));
    layout->addWidget(label);
    if (kind == Input) {
        lineEdit = new WbLineEdit;
        lineEdit->setObjectName(QStringLiteral("lineEditRunInput"));
        lineEdit->setText(value);
        lineEdit->setAccessibleName(text.left(100));
        layout->addWidget(lineEdit);
    }
    AddButtons();
    if (lineEdit)
        lineEdit->setFocus();
}

void RpaRunDialog::AddButtons()
{
    auto* row = new QHBoxLayout;
    row->setSpacing(DpiTool::ScaleDefault(8));
    row->addStretch();
    const QString yes = kind == Confirm ? QStringLiteral("是") : QStringLiteral("确定");
    auto* accepting = new WbPushButton(nullptr, Wb::PrimaryButton);
    accepting->setObjectName(QStringLiteral("pushButtonRunYes"));
    accepting->setText(yes);
    accepting->setDefault(true);
    connect(accepting, &QPushButton::clicked, this, &QDialog::accept);
    row->addWidget(accepting);
    if (kind != Message) {
        auto* rejecting = new WbPushButton(nullptr, Wb::SecondaryButton);
        rejecting->setObjectName(QStringLiteral("pushButtonRunNo"));
        rejecting->setText(kind == Confirm ? QStringLiteral("否") : QStringLiteral("取消"));
        connect(rejecting, &QPushButton::clicked, this, &QDialog::reject);
        row->addWidget(rejecting);
    }
    static_cast<QVBoxLayout*>(GetContentWidget()->layout())->addLayout(row);
}

QVariant RpaRunDialog::GetAnswer() const
{
    if (kind == Confirm)
        return result() == QDialog::Accepted;
    if (kind == Input && result() == QDialog::Accepted)
        return lineEdit->text();
    return {};
}
