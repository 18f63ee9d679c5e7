// SPDX-License-Identifier: Apache-2.0

#include "FreeName.h"

namespace server::rules
{
QString WithEnding(const QString& name, const QString& ending, int most)
{
    QString kept = name.left(most - ending.size());
    if (!kept.isEmpty() && kept.size() < name.size() && kept.at(kept.size() - 1).isHighSurrogate())
        kept.chop(1); // half a character
    return kept + ending;
}

QString FreeName(const QString& name, int most, const std::function<bool(const QString&)>& isTaken)
{
    QString tried = name;
    for (int number = 2; isTaken(tried); ++number)
        tried = WithEnding(name, QStringLiteral(" %1").arg(number), most);
    return tried;
}
} // namespace server::rules
