// SPDX-License-Identifier: Apache-2.0

#include "SecretStrike_p.h"

#include <algorithm>

namespace
{
constexpr int shortestSecret = 4;
}

SecretStrike::SecretStrike(const QVector<RpaRunParameter>& parameters)
{
    for (const RpaRunParameter& parameter : parameters)
        if (parameter.isSecret && parameter.text.size() >= shortestSecret)
            secrets.append(parameter.text);
    std::sort(secrets.begin(), secrets.end(),
              [](const QString& a, const QString& b) { return a.size() > b.size(); });
}

QString SecretStrike::Apply(QString text) const
{
    for (const QString& secret : secrets)
        text.replace(secret, Mask());
    return text;
}

QString SecretStrike::Mask()
{
    return QStringLiteral("••••");
}
