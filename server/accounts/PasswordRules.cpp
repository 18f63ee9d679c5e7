// SPDX-License-Identifier: Apache-2.0

#include "PasswordRules.h"

#include <QFile>
#include <QList>

// Outside of any namespace, as the macro wants.
static void LoadPasswordResources()
{
    Q_INIT_RESOURCE(passwords);
}

namespace
{
// Those of the commonest that are long enough to be tried at all, in small letters.
bool IsCommon(const QByteArray& password)
{
    LoadPasswordResources();
    QFile file(QStringLiteral(":/accounts/common-passwords.txt"));
    if (!file.open(QIODevice::ReadOnly))
        qFatal("the list of common passwords is not there");
    const QList<QByteArray> common = file.readAll().split('\n');
    return common.contains(QString::fromUtf8(password).toLower().toUtf8());
}
} // namespace

QString server::ProblemOfPassword(const QByteArray& password)
{
    if (password.size() < shortestPasswordBytes)
        return QStringLiteral("the password must have at least %1 bytes").arg(shortestPasswordBytes);
    if (password.size() > longestPasswordBytes)
        return QStringLiteral("the password must have at most %1 bytes").arg(longestPasswordBytes);
    if (IsCommon(password))
        return QStringLiteral("the password is one of the 10,000 commonest: everybody tries them first");
    return {};
}
