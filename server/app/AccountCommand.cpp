#include "AccountCommand.h"

#include "../accounts/Passwords.h"
#include "../base/Clock.h"
#include "../base/Ids.h"

#include <QTextStream>

#include <algorithm>
#include <cstdio>

namespace server
{
namespace
{
constexpr int shortestPassword = 8;

int Fail(const QString& reason)
{
    QTextStream(stderr) << reason << QLatin1Char('\n');
    return 1;
}

QByteArray ReadPassword()
{
    QTextStream input(stdin);
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

int Save(IStore& store, const Account& account)
{
    const QByteArray password = ReadPassword();
    if (password.size() < shortestPassword)
        return Fail(QStringLiteral("a password of at least %1 bytes is expected on standard input")
                        .arg(shortestPassword));
    const QByteArray hash = HashPassword(password);
    store.SubmitAndWait([&](ITransaction& transaction) {
        transaction.UpsertAccount(account, hash, NowMs());
        transaction.RemoveSessionsOf(account.pin); // who had the old password is signed out
    });
    return 0;
}

int Add(IStore& store, const Options& options)
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
    return Save(store, account);
}

int ChangePassword(IStore& store, const QString& pin)
{
    const auto account = store.FindAccount(pin);
    return account ? Save(store, *account) : Fail(QStringLiteral("there is no such account"));
}

int List(IStore& store)
{
    QTextStream output(stdout);
    output.setCodec("UTF-8");
    for (const Account& account : store.Accounts())
        output << account.pin << '\t' << account.name << '\t' << account.venderId << '\t'
               << account.roles.join(QLatin1Char(',')) << '\n';
    return 0;
}
} // namespace

int RunAccountCommand(IStore& store, const Options& options)
{
    const QString command = options.accountCommand.first();
    if (command == QLatin1String("add"))
        return Add(store, options);
    if (command == QLatin1String("passwd"))
        return ChangePassword(store, options.accountCommand.value(1));
    if (command == QLatin1String("list"))
        return List(store);
    return Fail(QStringLiteral("account add, account passwd or account list"));
}
} // namespace server
