// SPDX-License-Identifier: Apache-2.0

#include "SignInPage.h"

#include <WbBaseUI/WbScaledForm.h>

#include <QButtonGroup>
#include <QRadioButton>
#include <QStyle>

SignInPage::SignInPage(QWidget* parent) : WbBaseWidget(parent), accounts(new QButtonGroup(this))
{
    ui.setupUi(this);
    WbScaledForm::Follow(this);
    ui.buttonRetry->hide();
    ShowForm(ui.embeddedForm);
    connect(ui.buttonEnter, &QPushButton::clicked, this, &SignInPage::SlotConfirm);
    connect(ui.buttonRetry, &QPushButton::clicked, this, &SignInPage::SigRetry);
    connect(ui.buttonServerSettings, &QPushButton::clicked, this, &SignInPage::SigSettings);
    connect(ui.editAccount, &QLineEdit::textChanged, this, &SignInPage::UpdateButton);
    connect(ui.editPassword, &QLineEdit::textChanged, this, &SignInPage::UpdateButton);
    connect(ui.editAccount, &QLineEdit::returnPressed, ui.editPassword, qOverload<>(&QWidget::setFocus));
    connect(ui.editPassword, &QLineEdit::returnPressed, this, &SignInPage::SlotConfirm);
    UpdateButton();
}

void SignInPage::ShowForm(const QWidget* shown)
{
    ui.embeddedForm->setVisible(ui.embeddedForm == shown);
    ui.remoteForm->setVisible(ui.remoteForm == shown);
}

void SignInPage::AskEmbedded(const QStringList& names, int current)
{
    for (QAbstractButton* old : accounts->buttons())
        delete old;
    for (int i = 0; i < names.size(); ++i) {
        auto* choice = new QRadioButton(names.at(i), ui.embeddedForm);
        choice->setObjectName(QStringLiteral("radioAccount%1").arg(i));
        choice->setChecked(i == current);
        accounts->addButton(choice, i);
        ui.layoutAccounts->addWidget(choice, 0, Qt::AlignLeft);
    }
    ShowForm(ui.embeddedForm);
    ForgetRefusal();
    ui.buttonEnter->setText(QStringLiteral("进入工作站"));
    UpdateButton();
}

void SignInPage::AskRemote(const QString& address, const QString& account, bool stay)
{
    ui.labelAddress->setText(QStringLiteral("版本服务：%1").arg(address));
    ui.editAccount->setText(account);
    ui.editPassword->clear();
    ui.checkStaySignedIn->setChecked(stay);
    ShowForm(ui.remoteForm);
    ForgetRefusal();
    ui.buttonEnter->setText(QStringLiteral("登录"));
    (account.isEmpty() ? ui.editAccount : ui.editPassword)->setFocus();
    UpdateButton();
}

void SignInPage::ShowBusy(const QString& text)
{
    ready = false;
    ShowState(text, false);
    ui.buttonRetry->hide();
    UpdateButton();
}

void SignInPage::ShowReady()
{
    ready = true;
    ShowState(QString(), false);
    ui.buttonRetry->hide();
    UpdateButton();
    if (AsksEmbedded())
        ui.buttonEnter->setFocus();
}

void SignInPage::ShowState(const QString& text, bool problem)
{
    ui.labelState->setText(text);
    ui.labelState->setProperty("problem", problem);
    ui.labelState->style()->unpolish(ui.labelState); // the style sheet reads the property only then
    ui.labelState->style()->polish(ui.labelState);
}

void SignInPage::ShowProblem(const QString& text)
{
    ShowState(text, true);
    ui.buttonRetry->setVisible(!ready);
    UpdateButton();
}

// While the server is not ready the text is about the server, and stays.
void SignInPage::ForgetRefusal()
{
    if (ready)
        ShowState(QString(), false);
}

void SignInPage::UpdateButton()
{
    const bool filled =
        AsksEmbedded() || (!ui.editAccount->text().trimmed().isEmpty() && !ui.editPassword->text().isEmpty());
    ui.buttonEnter->setEnabled(ready && filled);
}

void SignInPage::SlotConfirm()
{
    if (!ui.buttonEnter->isEnabled())
        return;
    // Why the last attempt was refused says nothing about this one.
    ShowState(QString(), false);
    if (AsksEmbedded()) {
        emit SigEnter(accounts->checkedId());
        return;
    }
    // The password lives no longer than the request needs it.
    const QString password = ui.editPassword->text();
    ui.editPassword->clear();
    emit SigSignIn(ui.editAccount->text().trimmed(), password, ui.checkStaySignedIn->isChecked());
}
