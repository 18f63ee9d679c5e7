// SPDX-License-Identifier: Apache-2.0

#include "ConditionReader_p.h"

#include <RpaProcessData/RpaCondition.h>

#include <algorithm>

namespace
{
QString Pattern(RpaComparison comparison)
{
    switch (comparison) {
    case RpaComparison::Contains:
        return QStringLiteral("%2 in %1");
    case RpaComparison::ContainsNot:
        return QStringLiteral("%2 not in %1");
    case RpaComparison::StartsWith:
        return QStringLiteral("str(%1).startswith(%2)");
    case RpaComparison::EndsWith:
        return QStringLiteral("str(%1).endswith(%2)");
    case RpaComparison::IsEmpty:
        return QStringLiteral("%1 in ") + QLatin1String(ConditionReader::emptyThings);
    case RpaComparison::IsNotEmpty:
        return QStringLiteral("%1 not in ") + QLatin1String(ConditionReader::emptyThings);
    case RpaComparison::IsNone:
        return QStringLiteral("%1 is None");
    case RpaComparison::IsNotNone:
        return QStringLiteral("%1 is not None");
    case RpaComparison::Holds:
        return QStringLiteral("%1");
    case RpaComparison::HoldsNot:
        return QStringLiteral("not %1");
    default:
        return QStringLiteral("%1 ") + QLatin1String(ConditionReader::SignOf(comparison)) +
               QStringLiteral(" %2");
    }
}

QString Written(const RpaConditionRow& row)
{
    const QString pattern = Pattern(row.comparison);
    return RpaCondition::HasRight(row.comparison) ? pattern.arg(row.left.ToPython(), row.right.ToPython())
                                                  : pattern.arg(row.left.ToPython());
}
} // namespace

bool RpaConditionRow::IsComplete() const
{
    return !left.IsEmpty() && (!RpaCondition::HasRight(comparison) || !right.IsEmpty());
}

bool RpaConditionRow::operator==(const RpaConditionRow& other) const
{
    return isOr == other.isOr && left == other.left && comparison == other.comparison && right == other.right;
}

bool RpaCondition::HasRight(RpaComparison comparison)
{
    return comparison < RpaComparison::IsEmpty;
}

std::optional<RpaCondition> RpaCondition::Read(const QString& python, QString* reason)
{
    ConditionReader reader(python);
    if (!reader.Read()) {
        if (reason)
            *reason = reader.GetReason();
        return std::nullopt;
    }
    RpaCondition condition;
    condition.source = python;
    for (int i = 0; i < reader.GetRows().size(); ++i)
        condition.origins.append({reader.GetRows().at(i), reader.GetSources().at(i)});
    condition.rows = reader.GetRows();
    condition.readRows = reader.GetRows();
    return condition;
}

QString RpaCondition::ToPython() const
{
    if (rows == readRows)
        return source;
    QString python;
    for (const RpaConditionRow& row : rows) {
        // How a row is joined to the one before it is not part of what it says.
        const auto same = [&row](const Origin& origin) {
            RpaConditionRow joined = origin.row;
            joined.isOr = row.isOr;
            return joined == row;
        };
        const auto origin = std::find_if(origins.begin(), origins.end(), same);
        if (&row != &rows.first())
            python += row.isOr ? QStringLiteral(" or ") : QStringLiteral(" and ");
        python += origin == origins.end() ? Written(row) : origin->python;
    }
    return python;
}

int RpaCondition::FindIncomplete() const
{
    for (int i = 0; i < rows.size(); ++i)
        if (!rows.at(i).IsComplete())
            return i;
    return -1;
}
