// SPDX-License-Identifier: Apache-2.0

#include "TypeRow_p.h"
#include "TypedValue_p.h"

#include <RpaAppData/RpaTableData.h>

#include <tuple>

namespace
{
const QVector<TypeRow<RpaColumnType>>& ColumnTypeRows()
{
    using namespace TypedValue;
    static const QVector<TypeRow<RpaColumnType>> rows{
        {RpaColumnType::Text, "text", QStringLiteral("文本"), ToText},
        {RpaColumnType::Number, "number", QStringLiteral("数字"), ToNumber},
        {RpaColumnType::Date, "date", QStringLiteral("日期"), ToDate},
        {RpaColumnType::Switch, "switch", QStringLiteral("是/否"), ToSwitch},
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
    if (!value.isValid() || IsForeign())
        return true;
    if (value.userType() == QMetaType::QString && value.toString().isEmpty()) {
        value = QVariant();
        return true;
    }
    return TypeRows::Find(ColumnTypeRows(), type).fit(value);
}

bool RpaTableColumn::operator==(const RpaTableColumn& other) const
{
    return Tie(*this) == Tie(other);
}

QString RpaTableColumn::GetTypeName(RpaColumnType type)
{
    return QLatin1String(TypeRows::Find(ColumnTypeRows(), type).name);
}

QString RpaTableColumn::GetTypeTitle(RpaColumnType type)
{
    return TypeRows::Find(ColumnTypeRows(), type).title;
}

QVector<RpaColumnType> RpaTableColumn::GetTypes()
{
    return TypeRows::Types(ColumnTypeRows());
}
