// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QHash>
#include <QStringList>
#include <QVector>

// The readings of Chinese characters, without tones; read from the data file when it is first asked.
class PinyinTable
{
public:
    static const PinyinTable& Instance();

    // As typed ("lv" for "lü"), the usual one first; none for other characters.
    QStringList SyllablesOf(QChar c) const;

private:
    PinyinTable();

    QStringList syllables;
    QHash<QChar, QVector<quint16>> readings; // numbers of syllables
};
