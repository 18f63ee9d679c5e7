// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "TestFolder.h"

#include <QProcess>
#include <QUrl>

#include <memory>

// A version server as others run it: with accounts and passwords, a data folder and a port of its own. Lives
// on the thread that makes it and ends with this object.
class AccountServer
{
public:
    // Who may sign in; all of them belong to one vendor.
    struct Account
    {
        QString pin;
        QString name;
        QString roles;
        QString password;
    };

    AccountServer();
    ~AccountServer();

    // Blocks until it can be asked. False when it did not come up; GetProblem() says why.
    bool Start(const QList<Account>& accounts);

    QUrl GetAddress() const { return address; }
    QString GetProblem() const { return problem; }

private:
    bool Add(const Account& account);

    const TestFolder folder;
    const std::unique_ptr<QProcess> process;
    QUrl address;
    QString problem;
};
