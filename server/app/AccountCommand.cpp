// SPDX-License-Identifier: Apache-2.0

#include "AccountCommand.h"

#include "../accounts/PasswordRules.h"
#include "../accounts/Passwords.h"
#include "../base/Clock.h"
#include "../base/Ids.h"

#include <QFile>
#include <QTextStream>

#include <algorithm>
#include <cstdio>
#include <map>

namespace server
{
namespace
{
int Fail(const QString& reason)
{
    QTextStream(stderr) << reason << QLatin1Char('\n');
    return 1;
}

// The first line of the file, or of standard input: never from the command line, which everybody can list.
QByteArray ReadPassword(const Options& options)
{
    QFile file(options.passwordFile);
    const bool opened = options.passwordFile.isEmpty() ? file.open(stdin, QIODevice::ReadOnly)
                                                       : file.open(QIODevice::ReadOnly);
    if (!opened)
        return {};
    QTextStream input(&file);
    input.setCodec("UTF-8");
    return input.readLine().toUtf8();
}

bool AreRoles(const QStringList& roles)
{
    static const QStringList known{QStringLiteral("author"), QStringLiteral("user"),
                                   QStringLiteral("administrator")};
    return !roles.isEmpty() &&
           std::all_of(roles.begin(), roles.end(), [](const QString& role) { return known.contains(role); });
}

int Save(Store& store, const Account& account, const Options& options)
{
    const QByteArray password = ReadPassword(options);
    const QString problem = ProblemOfPassword(password);
    if (!problem.isEmpty())
        return Fail(problem);
    const QByteArray hash = HashPassword(password);
    store.SubmitAndWait([&](Transaction& transaction) {
        transaction.UpsertAccount(account, hash, NowMs());
        transaction.RemoveSessionsOf(account.pin); // who had the old password is signed out
    });
    return 0;
}

int Add(Store& store, const Options& options)
{
    const QString pin = options.accountCommand.value(1);
    const Account account{pin, options.accountName.isEmpty() ? pin : options.accountName,
                          options.accountVender,
                          options.accountRoles.split(QLatin1Char(','), Qt::SkipEmptyParts)};
    if (!IsId(pin) || !IsId(account.venderId))
        return Fail(QStringLiteral("PIN and --vender are 1 to 64 characters of A-Z a-z 0-9 _ -"));
    if (!AreRoles(account.roles))
        return Fail(QStringLiteral("--roles takes author, user, administrator"));
    if (store.FindAccount(pin))
        return Fail(QStringLiteral("this account exists"));
    return Save(store, account, options);
}

int ChangePassword(Store& store, const Account& account, const Options& options)
{
    return account.closedAt == 0 ? Save(store, account, options)
                                 : Fail(QStringLiteral("this account is closed; account reopen PIN"));
}

// A server that runs notices within seconds.
int ChangeRoles(Store& store, const Account& account, const Options& options)
{
    const QStringList roles = options.accountCommand.value(2).split(QLatin1Char(','), Qt::SkipEmptyParts);
    if (!AreRoles(roles))
        return Fail(QStringLiteral("account roles PIN LIST takes author, user, administrator"));
    store.SubmitAndWait([&](Transaction& transaction) { transaction.SetRoles(account.pin, roles); });
    return 0;
}

int Close(Store& store, const Account& account, const Options&)
{
    store.SubmitAndWait([&](Transaction& transaction) {
        transaction.SetClosed(account.pin, NowMs());
        transaction.RemoveSessionsOf(account.pin);
    });
    return 0;
}

int Reopen(Store& store, const Account& account, const Options&)
{
    store.SubmitAndWait([&](Transaction& transaction) { transaction.SetClosed(account.pin, 0); });
    return 0;
}

int List(Store& store)
{
    QTextStream output(stdout);
    output.setCodec("UTF-8");
    for (const Account& account : store.Accounts())
        output << account.pin << '\t' << account.name << '\t' << account.venderId << '\t'
               << account.roles.join(QLatin1Char(',')) << (account.closedAt ? "\tclosed" : "") << '\n';
    return 0;
}
} // namespace

int RunAccountCommand(Store& store, const Options& options)
{
    const QString command = options.accountCommand.first();
    if (command == QLatin1String("add"))
        return Add(store, options);
    if (command == QLatin1String("list"))
        return List(store);
    static const std::map<QString, int (*)(Store&, const Account&, const Options&)> changes{
        {QStringLiteral("password"), ChangePassword}, {QStringLiteral("passwd"), ChangePassword},
        {QStringLiteral("roles"), ChangeRoles},       {QStringLiteral("close"), Close},
        {QStringLiteral("reopen"), Reopen},
    };
    const auto change = changes.find(command);
    if (change == changes.end())
        return Fail(QStringLiteral("account add, password, roles, close, reopen or list"));
    const auto account = store.FindAccount(options.accountCommand.value(1));
    return account ? change->second(store, *account, options)
                   : Fail(QStringLiteral("there is no such account"));
}
} // namespace server
