// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "TypedValue_p.h"

#include <WbFoundation/JsonReader.h>
#include <WbFoundation/JsonWriter.h>

#include <QStringList>
#include <QVector>

#include <algorithm>
#include <functional>
#include <type_traits>

// Records to and from JSON by a table of their members. What a newer client wrote beside them is kept in the
// record (unknown) and written back.
namespace RecordJson
{
template <class Record>
struct Field
{
    const char* key;
    std::function<void(JsonReader&, Record&)> read;
    // Key and value; nothing where there is nothing to tell.
    std::function<void(JsonWriter&, const Record&)> write;
};

template <class Record>
using Fields = QVector<Field<Record>>;

inline void ReadTexts(JsonReader& reader, QStringList& texts)
{
    texts.clear();
    if (!reader.EnterArray())
        return;
    for (QString text; reader.NextElement();)
        if (reader.ReadString(text))
            texts.append(text);
}

template <class Value>
void ReadValue(JsonReader& reader, Value& value)
{
    if constexpr (std::is_same_v<Value, QString>)
        reader.ReadString(value);
    else if constexpr (std::is_same_v<Value, bool>)
        reader.ReadBool(value);
    else if constexpr (std::is_same_v<Value, int>)
        reader.ReadInt(value);
    else if constexpr (std::is_same_v<Value, double>)
        reader.ReadDouble(value);
    else if constexpr (std::is_same_v<Value, QStringList>)
        ReadTexts(reader, value);
    else
        reader.ReadVariant(value);
}

template <class Value>
void WriteMember(JsonWriter& writer, const char* key, const Value& value)
{
    writer.Key(key);
    if constexpr (std::is_same_v<Value, QString>)
        writer.String(value);
    else if constexpr (std::is_same_v<Value, bool>)
        writer.Bool(value);
    else if constexpr (std::is_same_v<Value, int>)
        writer.Int(value);
    else if constexpr (std::is_same_v<Value, double>)
        writer.Double(value);
    else if constexpr (std::is_same_v<Value, QStringList>)
        writer.StringList(value);
    else
        writer.Variant(TypedValue::ToJsonValue(value));
}

template <class Value>
bool IsSet(const Value& value)
{
    if constexpr (std::is_arithmetic_v<Value>)
        return value > 0;
    else if constexpr (std::is_same_v<Value, QVariant>)
        return value.isValid();
    else
        return !value.isEmpty();
}

// A member that is always written.
template <class Record, class Value>
Field<Record> Always(const char* key, Value Record::*member)
{
    return {key, [member](JsonReader& reader, Record& record) { ReadValue(reader, record.*member); },
            [key, member](JsonWriter& writer, const Record& record) {
                WriteMember(writer, key, record.*member);
            }};
}

// A member that is left out while it is empty, invalid or not above 0.
template <class Record, class Value>
Field<Record> WhenSet(const char* key, Value Record::*member)
{
    return {key, [member](JsonReader& reader, Record& record) { ReadValue(reader, record.*member); },
            [key, member](JsonWriter& writer, const Record& record) {
                if (IsSet(record.*member))
                    WriteMember(writer, key, record.*member);
            }};
}

// The type by its name; that of a newer client as it came.
template <class Record>
Field<Record> TypeName(const char* key)
{
    const auto read = [](JsonReader& reader, Record& record) {
        QString name;
        reader.ReadString(name);
        const auto types = Record::GetTypes();
        const auto type = std::find_if(types.begin(), types.end(),
                                       [&](auto each) { return Record::GetTypeName(each) == name; });
        if (type != types.end())
            record.type = *type;
        else
            record.foreignType = name;
    };
    return {key, read, [key](JsonWriter& writer, const Record& record) {
                WriteMember(writer, key,
                            record.IsForeign() ? record.foreignType : Record::GetTypeName(record.type));
            }};
}

template <class Record>
void WriteList(JsonWriter& writer, const QVector<Record>& records, const Fields<Record>& fields)
{
    writer.BeginArray();
    for (const Record& record : records) {
        writer.BeginObject();
        for (const Field<Record>& field : fields)
            field.write(writer, record);
        writer.RawMembers(record.unknown);
        writer.EndObject();
    }
    writer.EndArray();
}

template <class Record>
void ReadMember(JsonReader& reader, Record& record, const Fields<Record>& fields)
{
    for (const Field<Record>& field : fields)
        if (reader.IsKey(field.key))
            return field.read(reader, record);
    reader.KeepMember(record.unknown);
}

// False, going past the value, when it is no list.
template <class Record>
bool ReadList(JsonReader& reader, QVector<Record>& records, const Fields<Record>& fields)
{
    if (!reader.EnterArray())
        return false;
    while (reader.NextElement()) {
        if (!reader.EnterObject())
            continue;
        Record record;
        while (reader.NextMember())
            ReadMember(reader, record, fields);
        records.append(record);
    }
    return true;
}
} // namespace RecordJson
