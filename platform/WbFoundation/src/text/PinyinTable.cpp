// SPDX-License-Identifier: Apache-2.0

#include "PinyinTable_p.h"

#include <QFile>

const PinyinTable& PinyinTable::Instance()
{
    static const PinyinTable table;
    return table;
}

PinyinTable::PinyinTable()
{
    QFile file(QStringLiteral(":/wb/pinyin.txt"));
    if (!file.open(QIODevice::ReadOnly))
        return;
    const QStringList lines = QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    readings.reserve(25000);
    for (const QString& line : lines) {
        const QStringList parts = line.split(QLatin1Char(' '));
        const auto number = quint16(syllables.size());
        syllables.append(parts.first());
        for (const QChar c : parts.value(1))
            readings[c].prepend(number);
        for (const QChar c : parts.value(2))
            readings[c].append(number);
    }
}

QStringList PinyinTable::SyllablesOf(QChar c) const
{
    QStringList found;
    const QVector<quint16> numbers = readings.value(c);
    for (const quint16 number : numbers)
        found.append(syllables.at(number));
    return found;
}
