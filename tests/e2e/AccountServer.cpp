// SPDX-License-Identifier: Apache-2.0

#include "AccountServer.h"

#include "BoundProcess.h"

#include <QCoreApplication>
#include <QJsonDocument>
#include <QJsonObject>

namespace
{
constexpr int withinMs = 20000;

QString Program()
{
    return QCoreApplication::applicationDirPath() + QStringLiteral("/rpa-version-server");
}
} // namespace

AccountServer::AccountServer() : process(std::make_unique<BoundProcess>()) {}

AccountServer::~AccountServer()
{
    process->terminate();
    if (!process->waitForFinished(withinMs)) {
        process->kill();
        process->waitForFinished();
    }
}

bool AccountServer::Start(const QList<Account>& accounts)
{
    for (const Account& account : accounts)
        if (!Add(account))
            return false;
    process->setStandardErrorFile(QProcess::nullDevice());
    process->start(Program(), {QStringLiteral("--data"), folder.path(), QStringLiteral("--listen"),
                               QStringLiteral("127.0.0.1:0")});
    while (process->state() != QProcess::NotRunning && !process->canReadLine())
        if (!process->waitForReadyRead(withinMs))
            break;
    const QJsonObject ready = QJsonDocument::fromJson(process->readLine()).object();
    address = QUrl(ready.value(QStringLiteral("listening")).toString());
    problem = QStringLiteral("no ready line from %1").arg(Program());
    return address.port() > 0;
}

bool AccountServer::Add(const Account& account)
{
    QProcess command;
    command.start(Program(),
                  {QStringLiteral("--data"), folder.path(), QStringLiteral("account"), QStringLiteral("add"),
                   account.pin, QStringLiteral("--name"), account.name, QStringLiteral("--vender"),
                   QStringLiteral("tour"), QStringLiteral("--roles"), account.roles});
    command.write(account.password.toUtf8() + '\n');
    command.closeWriteChannel();
    const bool added = command.waitForFinished(withinMs) && command.exitCode() == 0;
    problem = QString::fromUtf8(command.readAllStandardError());
    return added;
}
