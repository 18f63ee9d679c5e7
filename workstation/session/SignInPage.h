// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "ui_SignInPage.h"

#include <WbBaseUI/WbBaseWidget.h>

#include <QStringList>

class QButtonGroup;

// Where the workstation starts: pick an account of the embedded server, or sign in to a configured one.
class SignInPage : public WbBaseWidget
{
    Q_OBJECT

public:
    explicit SignInPage(QWidget* parent = nullptr);

    // Asks for one of the embedded server's accounts.
    void AskEmbedded(const QStringList& names, int current);

    // Asks for account and password of the server at the address; stay: whether the sign-in is to be kept, as
    // the user finds the switch.
    void AskRemote(const QString& address, const QString& account, bool stay);

    // While the server starts or is asked nothing can be confirmed; the text says what is going on.
    void ShowBusy(const QString& text);

    // The server can be asked now.
    void ShowReady();

    void ShowProblem(const QString& text);

signals:
    void SigEnter(int embeddedAccount);
    void SigSignIn(const QString& account, const QString& password, bool stay);
    void SigSettings();
    void SigRetry();

private:
    void ShowForm(const QWidget* shown);
    void ShowState(const QString& text, bool problem);
    void ForgetRefusal();
    void SlotConfirm();
    void UpdateButton();
    bool AsksEmbedded() const { return !ui.embeddedForm->isHidden(); }

    Ui::SignInPage ui;
    QButtonGroup* const accounts;
    bool ready = false;
};
