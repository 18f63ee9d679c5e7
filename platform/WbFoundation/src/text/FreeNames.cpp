// SPDX-License-Identifier: Apache-2.0

#include <WbFoundation/FreeNames.h>

bool FreeNames::Take(const QString& name)
{
    if (name.trimmed().isEmpty() || taken.contains(name))
        return false;
    taken.insert(name);
    return true;
}

QString FreeNames::TakeNumbered(const QString& stem, int first)
{
    int& number = next[stem];
    number = qMax(number, first);
    QString name;
    do
        name = stem + QString::number(number++);
    while (!Take(name));
    return name;
}
