// SPDX-License-Identifier: Apache-2.0

#include "SecretStrike_p.h"

#include <QUrl>

#include <algorithm>

namespace
{
constexpr int shortestSecret = 4;

QStringList WaysToWrite(const QString& secret)
{
    QString escaped = secret;
    escaped.replace(QLatin1Char('\\'), QLatin1String("\\\\"));
    QString quoted = escaped;
    quoted.replace(QLatin1Char('\''), QLatin1String("\\'"));
    QStringList ways{secret, escaped, quoted, QString::fromLatin1(QUrl::toPercentEncoding(secret))};
    ways.removeDuplicates();
    return ways;
}

// How much of the text is more than what is written around a value that was cut.
int LengthWithoutEnd(const QString& text)
{
    const QString around = QStringLiteral("…'\")]}, ");
    int length = text.size();
    while (length > 0 && around.contains(text.at(length - 1)))
        --length;
    return length;
}
} // namespace

SecretStrike::SecretStrike(const QVector<RpaRunParameter>& parameters)
{
    for (const RpaRunParameter& parameter : parameters)
        if (parameter.isSecret && parameter.text.size() >= shortestSecret)
            secrets += WaysToWrite(parameter.text);
    std::sort(secrets.begin(), secrets.end(),
              [](const QString& a, const QString& b) { return a.size() > b.size(); });
}

QString SecretStrike::Apply(QString text) const
{
    for (const QString& secret : secrets)
        text.replace(secret, Mask());
    return text;
}

QString SecretStrike::ApplyCut(QString text) const
{
    text = Apply(text);
    const int length = LengthWithoutEnd(text);
    const QStringRef shown = text.leftRef(length);
    for (const QString& secret : secrets)
        for (int part = qMin(secret.size() - 1, length); part >= shortestSecret; --part)
            if (shown.endsWith(secret.leftRef(part)))
                return text.left(length - part) + Mask() + text.mid(length);
    return text;
}

QString SecretStrike::Mask()
{
    return QStringLiteral("••••");
}
