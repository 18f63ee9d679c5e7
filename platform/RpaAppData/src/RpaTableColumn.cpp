// SPDX-License-Identifier: Apache-2.0

#include "TypedValue_p.h"

#include <RpaAppData/RpaTableData.h>

#include <tuple>

namespace
{
struct TypeRow
{
    RpaColumnType type;
    const char* name;
    QString title;
};

const QVector<TypeRow>& TypeRows()
{
    static const QVector<TypeRow> rows{
        {RpaColumnType::Text, "text", QStringLiteral("文本")},
        {RpaColumnType::Number, "number", QStringLiteral("数字")},
        {RpaColumnType::Date, "date", QStringLiteral("日期")},
        {RpaColumnType::Switch, "switch", QStringLiteral("是/否")},
    };
    return rows;
}

auto Tie(const RpaTableColumn& column)
{
    return std::tie(column.name, column.type, column.foreignType, column.width, column.unknown);
}
} // namespace

bool RpaTableColumn::Fit(QVariant& value) const
{
    if (TypedValue::IsTooLong(value))
        return false;
    // What a newer client's type may hold is unknown here.
    const bool isForeign = type == RpaColumnType::Text && !foreignType.isEmpty();
    if (!value.isValid() || isForeign)
        return true;
    if (value.userType() == QMetaType::QString && value.toString().isEmpty()) {
        value = QVariant();
        return true;
    }
    switch (type) {
    case RpaColumnType::Number:
        return TypedValue::ToNumber(value);
    case RpaColumnType::Date:
        return TypedValue::ToDate(value);
    case RpaColumnType::Switch:
        return TypedValue::ToSwitch(value);
    case RpaColumnType::Text:
        break;
    }
    return TypedValue::ToText(value);
}

bool RpaTableColumn::operator==(const RpaTableColumn& other) const
{
    return Tie(*this) == Tie(other);
}

QString RpaTableColumn::GetTypeName(RpaColumnType type)
{
    for (const TypeRow& row : TypeRows())
        if (row.type == type)
            return QLatin1String(row.name);
    return QString();
}

QString RpaTableColumn::GetTypeTitle(RpaColumnType type)
{
    for (const TypeRow& row : TypeRows())
        if (row.type == type)
            return row.title;
    return QString();
}

QVector<RpaColumnType> RpaTableColumn::GetTypes()
{
    QVector<RpaColumnType> types;
    for (const TypeRow& row : TypeRows())
        types.append(row.type);
    return types;
}
