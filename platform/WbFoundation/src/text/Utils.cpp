// SPDX-License-Identifier: Apache-2.0

#include <WbFoundation/Utils.h>

#include <QStringList>

namespace
{
// Numbers of any length: without leading zeros the longer one is larger.
int CompareNumbers(QStringView a, QStringView b)
{
    const auto skipZeros = [](QStringView text) {
        while (!text.isEmpty() && text.front() == QLatin1Char('0'))
            text = text.mid(1);
        return text;
    };
    const QStringView left = skipZeros(a);
    const QStringView right = skipZeros(b);
    if (left.size() != right.size())
        return left.size() < right.size() ? -1 : 1;
    return left.compare(right);
}

// The digits at the start of a part; "2-beta" counts as 2.
QStringView LeadingDigits(const QString& part)
{
    int end = 0;
    while (end < part.size() && part.at(end) >= QLatin1Char('0') && part.at(end) <= QLatin1Char('9'))
        ++end;
    return QStringView(part).left(end);
}
} // namespace

int Utils::CompareVersion(const QString& a, const QString& b)
{
    const QString left = a.trimmed();
    const QString right = b.trimmed();
    if (left.isEmpty() || right.isEmpty())
        return int(right.isEmpty()) - int(left.isEmpty());

    const QStringList leftParts = left.split(QLatin1Char('.'));
    const QStringList rightParts = right.split(QLatin1Char('.'));
    for (int i = 0; i < qMax(leftParts.size(), rightParts.size()); ++i) {
        const int order =
            CompareNumbers(LeadingDigits(leftParts.value(i)), LeadingDigits(rightParts.value(i)));
        if (order != 0)
            return order;
    }
    return 0;
}
