// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QVector>

// One account of the embedded server and the token that stands for it until the workstation ends.
struct EmbeddedAccount
{
    QString pin;
    QString name;
    qint64 venderId = 0;
    QStringList roles;
    QString token;
};

// The accounts of a workstation that works by itself: the author who creates apps, and a colleague of the
// same vendor who may edit them but is not their creator. Tokens are 256 random bits, made afresh by every
// call.
QVector<EmbeddedAccount> MakeEmbeddedAccounts();

// The line of JSON that the embedded server reads from its standard input, with its line feed.
QByteArray EmbeddedHandshake(const QVector<EmbeddedAccount>& accounts);
