// SPDX-License-Identifier: Apache-2.0

#include "JsonBytes_p.h"
#include "JsonReflection_p.h"

#include <WbFoundation/JsonReader.h>
#include <WbFoundation/JsonWriter.h>

#include <QMetaProperty>
#include <QStringList>
#include <QVector>

#include <limits>
#include <utility>

namespace
{
// Declared by the derived classes and stored, in the order of their declaration.
QVector<QMetaProperty> PropertiesOf(const QObject& record)
{
    QVector<QMetaProperty> properties;
    const QMetaObject* meta = record.metaObject();
    for (int i = IJsonParser::staticMetaObject.propertyCount(); i < meta->propertyCount(); ++i) {
        const QMetaProperty property = meta->property(i);
        if (property.isReadable() && property.isStored())
            properties.append(property);
    }
    return properties;
}

template <class T>
QVariant ReadWith(JsonReader& reader, bool (JsonReader::*read)(T&))
{
    T value{};
    return (reader.*read)(value) ? QVariant::fromValue(value) : QVariant();
}

QVariant ReadUnsigned(JsonReader& reader, quint64 largest)
{
    if (reader.GetType() == JsonReader::Type::String) {
        QByteArray digits;
        bool ok = false;
        const quint64 value = reader.ReadUtf8(digits) ? digits.toULongLong(&ok) : 0;
        return ok && value <= largest ? QVariant(value) : QVariant();
    }
    qint64 value = 0;
    const bool ok = reader.ReadInt64(value) && value >= 0 && static_cast<quint64>(value) <= largest;
    return ok ? QVariant(static_cast<quint64>(value)) : QVariant();
}

QVariant ReadBytes(JsonReader& reader)
{
    QByteArray utf8;
    return reader.ReadUtf8(utf8) ? QVariant(JsonBytes::Decode(utf8)) : QVariant();
}

QVariant ReadStringList(JsonReader& reader)
{
    QStringList list;
    if (!reader.EnterArray())
        return QVariant();
    while (reader.NextElement()) {
        QString text;
        if (reader.ReadString(text))
            list.append(text);
    }
    return list;
}

QVariant ReadAs(JsonReader& reader, JsonReader::Type type)
{
    QVariant value;
    if (reader.GetType() == type)
        reader.ReadVariant(value);
    else
        reader.Skip();
    return value;
}

// Invalid when the value does not fit the property.
QVariant ReadSimple(int metaType, JsonReader& reader)
{
    switch (static_cast<QMetaType::Type>(metaType)) {
    case QMetaType::QString:
        return ReadWith<QString>(reader, &JsonReader::ReadString);
    case QMetaType::Bool:
        return ReadWith<bool>(reader, &JsonReader::ReadBool);
    case QMetaType::Int:
        return ReadWith<int>(reader, &JsonReader::ReadInt);
    case QMetaType::LongLong:
        return ReadWith<qint64>(reader, &JsonReader::ReadInt64);
    case QMetaType::UInt:
        return ReadUnsigned(reader, std::numeric_limits<uint>::max());
    case QMetaType::ULongLong:
        return ReadUnsigned(reader, std::numeric_limits<quint64>::max());
    case QMetaType::Double:
        return ReadWith<double>(reader, &JsonReader::ReadDouble);
    case QMetaType::QByteArray:
        return ReadBytes(reader);
    case QMetaType::QStringList:
        return ReadStringList(reader);
    case QMetaType::QVariantMap:
        return ReadAs(reader, JsonReader::Type::Object);
    case QMetaType::QVariantList:
        return ReadAs(reader, JsonReader::Type::Array);
    default:
        reader.Skip();
        return QVariant();
    }
}

QVariant ReadProperty(const QMetaProperty& property, JsonReader& reader)
{
    return ReadSimple(property.isEnumType() ? int(QMetaType::Int) : property.userType(), reader);
}
} // namespace

void JsonReflection::Write(const IJsonParser& record, JsonWriter& writer)
{
    writer.BeginObject();
    const QVector<QMetaProperty> properties = PropertiesOf(record);
    for (const QMetaProperty& property : properties) {
        writer.Key(property.name());
        const QVariant value = property.read(&record);
        if (property.isEnumType())
            writer.Int(value.toInt());
        else if (value.userType() == QMetaType::QByteArray)
            writer.Utf8(JsonBytes::Encode(value.toByteArray()));
        else
            writer.Variant(value);
    }
    writer.EndObject();
}

IJsonParser::Commit JsonReflection::Read(IJsonParser& record, JsonReader& reader)
{
    if (!reader.RequireObject(QStringLiteral("此处应为对象")))
        return {};
    QVector<std::pair<QMetaProperty, QVariant>> values;
    const QVector<QMetaProperty> properties = PropertiesOf(record);
    while (reader.NextMember()) {
        for (const QMetaProperty& property : properties) {
            if (reader.IsKey(property.name())) {
                values.push_back({property, ReadProperty(property, reader)});
                break;
            }
        }
    }
    return [&record, values] {
        for (const auto& [property, value] : values)
            if (value.isValid() && property.isWritable())
                property.write(&record, value);
    };
}

void JsonReflection::Copy(IJsonParser& target, const IJsonParser& source)
{
    const QVector<QMetaProperty> properties = PropertiesOf(source);
    for (const QMetaProperty& property : properties) {
        const int index = target.metaObject()->indexOfProperty(property.name());
        const QMetaProperty own = target.metaObject()->property(index);
        if (index >= 0 && own.isWritable())
            own.write(&target, property.read(&source));
    }
}
