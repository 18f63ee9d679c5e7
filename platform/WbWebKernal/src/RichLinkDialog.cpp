#include "RichHtmlScreen_p.h"
#include "RichLinkDialog_p.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

RichLinkDialog::RichLinkDialog(const QString& text, const QString& address, bool existing, QWidget* parent)
    : QDialog(parent), textEdit(new QLineEdit(text)), addressEdit(new QLineEdit(address)), hint(new QLabel)
{
    setObjectName(QStringLiteral("RichLinkDialog"));
    setWindowTitle(existing ? QStringLiteral("编辑链接") : QStringLiteral("插入链接"));
    setMinimumWidth(420);
    textEdit->setObjectName(QStringLiteral("lineEditLinkText"));
    textEdit->setPlaceholderText(QStringLiteral("显示的文字，可不填"));
    addressEdit->setObjectName(QStringLiteral("lineEditLinkAddress"));
    addressEdit->setPlaceholderText(QStringLiteral("例如 https://example.com"));
    hint->setObjectName(QStringLiteral("labelLinkHint"));
    hint->setWordWrap(true);

    auto* buttons = new QDialogButtonBox;
    okButton = buttons->addButton(QStringLiteral("确定"), QDialogButtonBox::AcceptRole);
    okButton->setObjectName(QStringLiteral("pushButtonLinkOk"));
    buttons->addButton(QStringLiteral("取消"), QDialogButtonBox::RejectRole);
    if (existing) {
        auto* remove = buttons->addButton(QStringLiteral("取消链接"), QDialogButtonBox::DestructiveRole);
        remove->setObjectName(QStringLiteral("pushButtonLinkRemove"));
        connect(remove, &QPushButton::clicked, this, &RichLinkDialog::SlotRemove);
    }

    auto* form = new QFormLayout;
    form->addRow(QStringLiteral("文字(&T)："), textEdit);
    form->addRow(QStringLiteral("地址(&A)："), addressEdit);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addWidget(hint);
    layout->addWidget(buttons);

    connect(addressEdit, &QLineEdit::textChanged, this, &RichLinkDialog::SlotAddressEdited);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
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
