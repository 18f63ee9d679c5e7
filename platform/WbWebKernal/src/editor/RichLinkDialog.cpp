// SPDX-License-Identifier: Apache-2.0

#include "RichHtmlSanitizer_p.h"
#include "RichLinkDialog_p.h"

#include <OxBase/DpiTool.h>
#include <WbBaseUI/WbLineEdit.h>
#include <WbBaseUI/WbPushButton.h>

#include <QFormLayout>
#include <QLabel>

namespace
{
WbPushButton* NewButton(const QString& name, const QString& text, int type)
{
    auto* button = new WbPushButton(nullptr, type);
    button->setObjectName(name);
    button->setText(text);
    button->setAutoDefault(false);
    return button;
}
} // namespace

RichLinkDialog::RichLinkDialog(const QString& text, const QString& address, bool existing, QWidget* parent)
    : WbBaseDialog(parent), textEdit(new WbLineEdit), addressEdit(new WbLineEdit), hint(new QLabel),
      okButton(NewButton(QStringLiteral("pushButtonLinkOk"), QStringLiteral("确定"), Wb::PrimaryButton))
{
    setObjectName(QStringLiteral("RichLinkDialog"));
    SetTitle(existing ? QStringLiteral("编辑链接") : QStringLiteral("插入链接"));
    textEdit->setObjectName(QStringLiteral("lineEditLinkText"));
    textEdit->setText(text);
    textEdit->setPlaceholderText(QStringLiteral("显示的文字，可不填"));
    addressEdit->setObjectName(QStringLiteral("lineEditLinkAddress"));
    addressEdit->setText(address);
    addressEdit->setPlaceholderText(QStringLiteral("例如 https://example.com"));
    hint->setObjectName(QStringLiteral("labelLinkHint"));
    hint->setProperty("wbRole", QStringLiteral("error"));
    okButton->setDefault(true);
    auto* cancel =
        NewButton(QStringLiteral("pushButtonLinkCancel"), QStringLiteral("取消"), Wb::DefaultButton);
    auto* remove =
        NewButton(QStringLiteral("pushButtonLinkRemove"), QStringLiteral("取消链接"), Wb::DangerButton);
    remove->setVisible(existing);

    auto* buttons = new QHBoxLayout;
    buttons->addWidget(remove);
    buttons->addStretch();
    buttons->addWidget(okButton);
    buttons->addWidget(cancel);
    auto* form = new QFormLayout;
    form->addRow(QStringLiteral("文字(&T)："), textEdit);
    form->addRow(QStringLiteral("地址(&A)："), addressEdit);
    auto* layout = new QVBoxLayout(GetContentWidget());
    layout->setContentsMargins(20, 16, 20, 16);
    layout->addLayout(form);
    layout->addWidget(hint);
    layout->addStretch();
    layout->addLayout(buttons);
    GetContentWidget()->setMinimumSize(DpiTool::ScaleDefault(440), DpiTool::ScaleDefault(190));

    connect(addressEdit, &QLineEdit::textChanged, this, &RichLinkDialog::SlotAddressEdited);
    connect(okButton, &QPushButton::clicked, this, &QDialog::accept);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    connect(remove, &QPushButton::clicked, this, &RichLinkDialog::SlotRemove);
    addressEdit->setFocus();
    SlotAddressEdited();
}

QString RichLinkDialog::Text() const
{
    return textEdit->text().trimmed().isEmpty() ? addressEdit->text().trimmed() : textEdit->text();
}

QString RichLinkDialog::Address() const
{
    const QString typed = addressEdit->text().trimmed();
    if (IsAllowedLink(typed))
        return typed;
    if (typed.contains(QLatin1Char('@')) && IsAllowedLink(QLatin1String("mailto:") + typed) &&
        !typed.contains(QLatin1Char(':')))
        return QLatin1String("mailto:") + typed;
    const QString completed = QLatin1String("https://") + typed;
    const bool bare = !typed.contains(QLatin1Char(':')) && typed.contains(QLatin1Char('.'));
    return bare && IsAllowedLink(completed) ? completed : QString();
}

void RichLinkDialog::SlotAddressEdited()
{
    const bool usable = !Address().isEmpty();
    okButton->setEnabled(usable);
    const bool silent = usable || addressEdit->text().trimmed().isEmpty();
    hint->setText(silent ? QString() : QStringLiteral("只能使用以 http://、https:// 或 mailto: 开头的地址"));
}

void RichLinkDialog::SlotRemove()
{
    removeAsked = true;
    accept();
}
