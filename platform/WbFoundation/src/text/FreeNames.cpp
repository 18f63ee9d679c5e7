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

QString FreeNames::FirstFree(const QString& name, int most,
                             const std::function<bool(const QString& tried)>& isTaken)
{
    QString tried = name;
    for (int number = 2; isTaken(tried); ++number)
        tried = WithEnding(name, QStringLiteral(" %1").arg(number), most);
    return tried;
}

QString FreeNames::WithEnding(const QString& name, const QString& ending, int most)
{
    QString kept = name.left(most - ending.size());
    if (!kept.isEmpty() && kept.size() < name.size() && kept.at(kept.size() - 1).isHighSurrogate())
        kept.chop(1); // half a character
    return kept + ending;
}
