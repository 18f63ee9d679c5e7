// SPDX-License-Identifier: Apache-2.0

#include "StorePassword.h"

#include "StandardInput.h"

#include <QFile>
#include <QUrl>

namespace server::storepassword
{
namespace
{
const QString scheme = QStringLiteral("postgresql://");
constexpr int longest = 1024;

// Byte by byte: a command may have more to read there.
QByteArray FirstLineOfStandardInput()
{
    QByteArray line;
    char c = 0;
    while (line.size() <= longest && ReadStandardInput(&c, 1) == 1 && c != '\n')
        line += c;
    return line;
}

QByteArray FirstLineOf(const QString& source)
{
    if (source == QLatin1String("-"))
        return FirstLineOfStandardInput();
    QFile file(source);
    return file.open(QIODevice::ReadOnly) ? file.readLine(longest + 2) : QByteArray();
}
} // namespace

bool IsIn(const QString& address)
{
    if (!address.startsWith(scheme))
        return false;
    // Not by the URL's own rules: a password that breaks them is a password all the same.
    const QString place = address.mid(scheme.size()).section(QLatin1Char('?'), 0, 0);
    const int end = place.lastIndexOf(QLatin1Char('@'));
    return end > 0 && place.left(end).contains(QLatin1Char(':'));
}

QString Add(const QString& address, const QString& source, QString& problem)
{
    if (!address.startsWith(scheme)) {
        problem = QStringLiteral("only a PostgreSQL store has a password");
        return address;
    }
    QByteArray line = FirstLineOf(source);
    while (line.endsWith('\n') || line.endsWith('\r'))
        line.chop(1);
    if (line.isEmpty() || line.size() > longest) {
        problem = QStringLiteral("%1 has no password of 1 to 1024 bytes as its first line").arg(source);
        return address;
    }
    QUrl url(address);
    url.setPassword(QString::fromUtf8(line), QUrl::DecodedMode);
    return url.toString(QUrl::FullyEncoded);
}
} // namespace server::storepassword
