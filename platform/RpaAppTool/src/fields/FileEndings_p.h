// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QRegularExpression>
#include <QStringList>

// Endings of file names ("xlsx") that a parameter allows.
namespace FileEndings
{
inline bool IsGood(const QString& ending)
{
    static const QRegularExpression good(QStringLiteral("^[A-Za-z0-9_]{1,10}$"));
    return good.match(ending).hasMatch();
}

// As file dialogs take it; all files where there are none.
inline QString FilterOf(const QStringList& endings)
{
    QStringList patterns;
    for (const QString& ending : endings)
        if (IsGood(ending))
            patterns << QStringLiteral("*.") + ending;
    return patterns.isEmpty() ? QString()
                              : QStringLiteral("可选择的文件 (%1)").arg(patterns.join(QLatin1Char(' ')));
}
} // namespace FileEndings
