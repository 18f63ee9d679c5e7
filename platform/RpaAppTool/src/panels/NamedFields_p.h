// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "RecordTable_p.h"

#include <WbBaseUI/WbIcons.h>

// The fields that records with a name and a type have alike.
namespace NamedFields
{
inline QVariant ShowText(const QString& text, int role)
{
    return role == Qt::DisplayRole || role == Qt::EditRole ? QVariant(text) : QVariant();
}

// what: of what the name is, in messages ("参数名称").
template <class Record>
RecordField<Record> Name(const QString& title, const QString& what)
{
    const auto write = [what](Record& record, const QVariant& value,
                              const QVector<Record>& others) -> QString {
        constexpr int longest = 40;
        const QString name = value.toString().trimmed();
        if (name.isEmpty() || name.size() > longest)
            return QStringLiteral("%1为 1 到 %2 个字符").arg(what).arg(longest);
        for (const Record& other : others)
            if (other.name == name)
                return QStringLiteral("%1“%2”已存在").arg(what, name);
        record.name = name;
        return {};
    };
    return {title, [](const Record& record, int role) { return ShowText(record.name, role); }, write};
}

// written: what the type takes along when the author picks another.
template <class Record, class Type>
RecordField<Record> TypeOf(QString (*iconOf)(Type), void (*written)(Record&))
{
    const auto show = [iconOf](const Record& record, int role) -> QVariant {
        if (role == Qt::DecorationRole)
            return WbIcons::Get(iconOf(record.type));
        if (role == Qt::EditRole)
            return static_cast<int>(record.type);
        return role == Qt::DisplayRole ? QVariant(Record::GetTypeTitle(record.type)) : QVariant();
    };
    const auto write = [written](Record& record, const QVariant& value, const QVector<Record>&) {
        record.type = static_cast<Type>(value.toInt());
        written(record);
        return QString();
    };
    const auto choices = [iconOf](const Record&) {
        QVector<RecordModel::Choice> all;
        const QVector<Type> types = Record::GetTypes();
        for (const Type type : types)
            all << RecordModel::Choice{Record::GetTypeTitle(type), static_cast<int>(type), iconOf(type)};
        return all;
    };
    return {QStringLiteral("类型"), show, write, choices};
}
} // namespace NamedFields
