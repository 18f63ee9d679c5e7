// SPDX-License-Identifier: Apache-2.0

#include "KeptSignIn.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>

namespace
{
// A token stands in a header of every request: nothing else may get there.
bool IsToken(const QString& text)
{
    static const QRegularExpression form(QStringLiteral("\\A[A-Za-z0-9._~+/=-]{16,512}\\z"));
    return form.match(text).hasMatch();
}
} // namespace

QByteArray KeptSignIn::Written(const QUrl& server, const QByteArray& token)
{
    const QString text = QString::fromLatin1(token);
    if (!IsToken(text))
        return {};
    const QJsonObject kept{{QStringLiteral("server"), server.toString()}, {QStringLiteral("token"), text}};
    return QJsonDocument(kept).toJson(QJsonDocument::Compact);
}

QByteArray KeptSignIn::TokenIn(const QByteArray& written, const QUrl& server)
{
    const QJsonObject kept = QJsonDocument::fromJson(written).object();
    const QString token = kept.value(QStringLiteral("token")).toString();
    const bool usable = !server.isEmpty() && IsToken(token) &&
                        kept.value(QStringLiteral("server")).toString() == server.toString();
    return usable ? token.toLatin1() : QByteArray();
}

bool KeptSignIn::Keep(const QUrl& server, const QByteArray& token)
{
    return store.Write(Written(server, token)); // nothing is kept of an empty text
}
