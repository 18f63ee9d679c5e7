// SPDX-License-Identifier: Apache-2.0

#include "RichHtmlSanitizer_p.h"
#include "RichLinkDialog_p.h"

#include <OxBase/DpiTool.h>

RichLinkDialog::RichLinkDialog(const QString& text, const QString& address, bool existing, QWidget* parent)
    : WbBaseDialog(parent)
{
    setObjectName(QStringLiteral("RichLinkDialog"));
    SetTitle(existing ? QStringLiteral("编辑链接") : QStringLiteral("插入链接"));
    ui.setupUi(GetContentWidget());
    ui.lineEditLinkText->setText(text);
    ui.lineEditLinkAddress->setText(address);
    ui.pushButtonLinkRemove->setVisible(existing);
    GetContentWidget()->setMinimumSize(DpiTool::ScaleDefault(440), DpiTool::ScaleDefault(190));
    connect(ui.lineEditLinkAddress, &QLineEdit::textChanged, this, &RichLinkDialog::SlotAddressEdited);
    connect(ui.pushButtonLinkOk, &QPushButton::clicked, this, &QDialog::accept);
    connect(ui.pushButtonLinkCancel, &QPushButton::clicked, this, &QDialog::reject);
    connect(ui.pushButtonLinkRemove, &QPushButton::clicked, this, &RichLinkDialog::SlotRemove);
    ui.lineEditLinkAddress->setFocus();
    SlotAddressEdited();
}

QString RichLinkDialog::Text() const
{
    return ui.lineEditLinkText->text().trimmed().isEmpty() ? ui.lineEditLinkAddress->text().trimmed()
                                                           : ui.lineEditLinkText->text();
}

QString RichLinkDialog::Address() const
{
    QString typed = ui.lineEditLinkAddress->text().trimmed();
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
    ui.pushButtonLinkOk->setEnabled(usable);
    const bool silent = usable || ui.lineEditLinkAddress->text().trimmed().isEmpty();
    ui.labelLinkHint->setText(silent ? QString()
                                     : QStringLiteral("只能使用以 http://、https:// 或 mailto: 开头的地址"));
}

void RichLinkDialog::SlotRemove()
{
    removeAsked = true;
    accept();
}
