// SPDX-License-Identifier: Apache-2.0

#include "EmbeddedAccounts.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRandomGenerator>

#include <array>

namespace
{
QString FreshToken()
{
    std::array<quint32, 8> words{};
    QRandomGenerator::system()->generate(words.begin(), words.end());
    const QByteArray bits(reinterpret_cast<const char*>(words.data()), sizeof(words));
    return QString::fromLatin1(bits.toBase64(QByteArray::Base64UrlEncoding | QByteArray::OmitTrailingEquals));
}

QJsonObject AccountJson(const EmbeddedAccount& account)
{
    return {{QStringLiteral("pin"), account.pin},
            {QStringLiteral("name"), account.name},
            {QStringLiteral("venderId"), QString::number(account.venderId)},
            {QStringLiteral("roles"), QJsonArray::fromStringList(account.roles)}};
}

QJsonObject WithToken(const EmbeddedAccount& account)
{
    return {{QStringLiteral("token"), account.token}, {QStringLiteral("account"), AccountJson(account)}};
}
} // namespace

QVector<EmbeddedAccount> MakeEmbeddedAccounts()
{
    const QString author = QStringLiteral("author");
    return {
        {QStringLiteral("local-author"),
         QStringLiteral("本机作者"),
         1,
         {author, QStringLiteral("administrator")},
         FreshToken()},
        {QStringLiteral("local-colleague"), QStringLiteral("本机同事"), 1, {author}, FreshToken()},
    };
}

QByteArray EmbeddedHandshake(const QVector<EmbeddedAccount>& accounts)
{
    QJsonObject line = accounts.isEmpty() ? QJsonObject() : WithToken(accounts.first());
    QJsonArray others;
    for (int i = 1; i < accounts.size(); ++i)
        others.append(WithToken(accounts.at(i)));
    line.insert(QStringLiteral("others"), others);
    return QJsonDocument(line).toJson(QJsonDocument::Compact) + '\n';
}
