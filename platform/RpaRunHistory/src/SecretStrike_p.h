// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaEngineCore/RpaRunStart.h>

#include <QString>
#include <QStringList>

// Strikes the values of passwords out of what a run wrote.
class SecretStrike
{
public:
    SecretStrike() = default;
    explicit SecretStrike(const QVector<RpaRunParameter>& parameters);

    // Values of fewer than four characters stay: they would be found in every other word.
    QString Apply(QString text) const;
    // Of a text that may have been cut: a part of a secret at its end goes as well.
    QString ApplyCut(QString text) const;

    static QString Mask();

private:
    QStringList
        secrets; // as they are and as Python and addresses write them; the longest first, so that none
                 // is left in part
};
