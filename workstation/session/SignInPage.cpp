// SPDX-License-Identifier: Apache-2.0

#include "SignInPage.h"

#include <OxBase/DpiTool.h>
#include <WbBaseUI/BaseUIBusiness.h>
#include <WbBaseUI/WbLabel.h>
#include <WbBaseUI/WbLineEdit.h>
#include <WbBaseUI/WbPushButton.h>

#include <QBoxLayout>
#include <QButtonGroup>
#include <QCheckBox>
#include <QRadioButton>
#include <QStyle>

namespace
{
WbLineEdit* Field(const char* objectName, const QString& caption, QVBoxLayout* layout, QWidget* parent)
{
    auto* field = new WbLineEdit(parent);
    field->setObjectName(QLatin1String(objectName));
    field->setAccessibleName(caption);
    auto* label = new WbLabel(caption, parent);
    label->setBuddy(field);
    layout->addWidget(label);
    layout->addWidget(field);
    return field;
}
} // namespace

SignInPage::SignInPage(QWidget* parent) : WbBaseWidget(parent)
{
    setObjectName(QStringLiteral("SignInPage"));
    auto* row = new QHBoxLayout;
    row->addStretch();
    row->addWidget(CreateCard());
    row->addStretch();
    auto* layout = new QVBoxLayout(this);
    layout->addStretch(2);
    layout->addLayout(row);
    layout->addStretch(3);

    connect(buttonEnter, &QPushButton::clicked, this, &SignInPage::SlotConfirm);
    connect(buttonRetry, &QPushButton::clicked, this, &SignInPage::SigRetry);
    connect(editAccount, &QLineEdit::textChanged, this, &SignInPage::UpdateButton);
    connect(editPassword, &QLineEdit::textChanged, this, &SignInPage::UpdateButton);
    connect(editAccount, &QLineEdit::returnPressed, editPassword, qOverload<>(&QWidget::setFocus));
    connect(editPassword, &QLineEdit::returnPressed, this, &SignInPage::SlotConfirm);
    UpdateButton();
}

SignInPage::~SignInPage() = default;

QWidget* SignInPage::CreateCard()
{
    auto* card = new WbBaseWidget(this);
    card->setObjectName(QStringLiteral("signInCard"));
    card->setFixedWidth(DpiTool::ScaleDefault(420));
    auto* title = new WbLabel(QStringLiteral("登录 RPA 工作站"), card);
    title->setObjectName(QStringLiteral("labelSignInTitle"));
    embeddedForm = CreateEmbeddedForm(card);
    remoteForm = CreateRemoteForm(card);
    labelState = new WbLabel(card);
    labelState->setObjectName(QStringLiteral("labelState"));
    labelState->setWordWrap(true);
    buttonEnter = new WbPushButton(card, Wb::PrimaryButton);
    buttonEnter->setObjectName(QStringLiteral("buttonEnter"));
    buttonEnter->setAutoDefault(true);
    buttonRetry = new WbPushButton(card, Wb::SecondaryButton);
    buttonRetry->setObjectName(QStringLiteral("buttonRetry"));
    buttonRetry->setText(QStringLiteral("重试"));
    buttonRetry->hide();
    auto* settings = new WbPushButton(card, Wb::SecondaryButton);
    settings->setObjectName(QStringLiteral("buttonServerSettings"));
    settings->setText(QStringLiteral("服务器设置"));

    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(12);
    buttons->addWidget(buttonEnter, 1);
    buttons->addWidget(buttonRetry);
    buttons->addWidget(settings);
    auto* layout = new QVBoxLayout(card);
    layout->setContentsMargins(32, 28, 32, 28);
    layout->setSpacing(14);
    layout->addWidget(title);
    layout->addWidget(embeddedForm);
    layout->addWidget(remoteForm);
    layout->addWidget(labelState);
    layout->addLayout(buttons);
    ShowForm(embeddedForm);
    connect(settings, &QPushButton::clicked, this, &SignInPage::SigSettings);
    return card;
}

QWidget* SignInPage::CreateEmbeddedForm(QWidget* card)
{
    auto* form = new QWidget(card);
    accounts = new QButtonGroup(form);
    accountLayout = new QVBoxLayout(form);
    accountLayout->setContentsMargins(0, 0, 0, 0);
    accountLayout->setSpacing(10);
    auto* hint = new WbLabel(QStringLiteral("使用本机的版本服务，数据只保存在这台电脑上。"), form);
    hint->setWordWrap(true);
    accountLayout->addWidget(hint);
    return form;
}

QWidget* SignInPage::CreateRemoteForm(QWidget* card)
{
    auto* form = new QWidget(card);
    auto* layout = new QVBoxLayout(form);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(8);
    labelAddress = new WbLabel(form);
    labelAddress->setObjectName(QStringLiteral("labelAddress"));
    labelAddress->setWordWrap(true);
    layout->addWidget(labelAddress);
    editAccount = Field("editAccount", QStringLiteral("账号"), layout, form);
    editPassword = Field("editPassword", QStringLiteral("密码"), layout, form);
    editPassword->setEchoMode(QLineEdit::Password);
    checkStay = new QCheckBox(QStringLiteral("保持登录"), form);
    checkStay->setObjectName(QStringLiteral("checkStaySignedIn"));
    checkStay->setToolTip(QStringLiteral("下次启动时不再询问密码，直到退出登录。密码不会保存。"));
    checkStay->setAccessibleDescription(checkStay->toolTip());
    layout->addWidget(checkStay, 0, Qt::AlignLeft);
    return form;
}

void SignInPage::ShowForm(const QWidget* shown)
{
    embeddedForm->setVisible(embeddedForm == shown);
    remoteForm->setVisible(remoteForm == shown);
}

void SignInPage::AskEmbedded(const QStringList& names, int current)
{
    for (QAbstractButton* old : accounts->buttons())
        delete old;
    for (int i = 0; i < names.size(); ++i) {
        auto* choice = new QRadioButton(names.at(i), embeddedForm);
        choice->setObjectName(QStringLiteral("radioAccount%1").arg(i));
        choice->setChecked(i == current);
        accounts->addButton(choice, i);
        accountLayout->addWidget(choice, 0, Qt::AlignLeft);
    }
    ShowForm(embeddedForm);
    ForgetRefusal();
    buttonEnter->setText(QStringLiteral("进入工作站"));
    UpdateButton();
}

void SignInPage::AskRemote(const QString& address, const QString& account, bool stay)
{
    labelAddress->setText(QStringLiteral("版本服务：%1").arg(address));
    editAccount->setText(account);
    editPassword->clear();
    checkStay->setChecked(stay);
    ShowForm(remoteForm);
    ForgetRefusal();
    buttonEnter->setText(QStringLiteral("登录"));
    (account.isEmpty() ? editAccount : editPassword)->setFocus();
    UpdateButton();
}

void SignInPage::ShowBusy(const QString& text)
{
    ready = false;
    ShowState(text, false);
    buttonRetry->hide();
    UpdateButton();
}

void SignInPage::ShowReady()
{
    ready = true;
    ShowState(QString(), false);
    buttonRetry->hide();
    UpdateButton();
    if (AsksEmbedded())
        buttonEnter->setFocus();
}

void SignInPage::ShowState(const QString& text, bool problem)
{
    labelState->setText(text);
    labelState->setProperty("problem", problem);
    labelState->style()->unpolish(labelState); // the style sheet reads the property only then
    labelState->style()->polish(labelState);
}

void SignInPage::ShowProblem(const QString& text)
{
    ShowState(text, true);
    buttonRetry->setVisible(!ready);
    UpdateButton();
}

// While the server is not ready the text is about the server, and stays.
void SignInPage::ForgetRefusal()
{
    if (ready)
        ShowState(QString(), false);
}

bool SignInPage::AsksEmbedded() const
{
    return !embeddedForm->isHidden();
}

void SignInPage::UpdateButton()
{
    const bool filled =
        AsksEmbedded() || (!editAccount->text().trimmed().isEmpty() && !editPassword->text().isEmpty());
    buttonEnter->setEnabled(ready && filled);
}

void SignInPage::SlotConfirm()
{
    if (!buttonEnter->isEnabled())
        return;
    // Why the last attempt was refused says nothing about this one.
    ShowState(QString(), false);
    if (AsksEmbedded()) {
        emit SigEnter(accounts->checkedId());
        return;
    }
    // The password lives no longer than the request needs it.
    const QString password = editPassword->text();
    editPassword->clear();
    emit SigSignIn(editAccount->text().trimmed(), password, checkStay->isChecked());
}
