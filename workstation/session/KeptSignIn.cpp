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

bool KeptSignIn::Keep(const QUrl& server, const QByteArray& token)
{
    const QString text = QString::fromLatin1(token);
    if (!IsToken(text)) {
        Forget();
        return false;
    }
    const QJsonObject kept{{QStringLiteral("server"), server.toString()}, {QStringLiteral("token"), text}};
    return store.Write(QJsonDocument(kept).toJson(QJsonDocument::Compact));
}

QByteArray KeptSignIn::GetToken(const QUrl& server) const
{
    const QJsonObject kept = QJsonDocument::fromJson(store.Read()).object();
    const QString token = kept.value(QStringLiteral("token")).toString();
    const bool usable = !server.isEmpty() && IsToken(token) &&
                        kept.value(QStringLiteral("server")).toString() == server.toString();
    return usable ? token.toLatin1() : QByteArray();
}
