// SPDX-License-Identifier: Apache-2.0

#include "JsonBytes_p.h"
#include "JsonReflection_p.h"

#include <WbFoundation/JsonReader.h>
#include <WbFoundation/JsonWriter.h>

#include <QHash>
#include <QMetaProperty>
#include <QMutex>
#include <QStringList>
#include <QVector>

#include <limits>
#include <memory>

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

IJsonParser* OwnedRecord(const QObject& record, const QMetaProperty& property)
{
    const bool isPointer = QMetaType(property.userType()).flags().testFlag(QMetaType::PointerToQObject);
    return isPointer ? qobject_cast<IJsonParser*>(property.read(&record).value<QObject*>()) : nullptr;
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

struct RecordLists
{
    QMutex mutex;
    QHash<int, std::shared_ptr<const void>> types;
};
Q_GLOBAL_STATIC(RecordLists, recordLists)
} // namespace

void IJsonParser::RegisterRecordListType(int metaType, const RecordListType& type)
{
    const QMutexLocker locked(&recordLists->mutex);
    // A type stays for ever once registered, so that pointers to it may be used without the lock.
    if (!recordLists->types.contains(metaType))
        recordLists->types.insert(metaType, std::make_shared<const RecordListType>(type));
}

const IJsonParser::RecordListType* JsonReflection::FindRecordList(int metaType)
{
    const QMutexLocker locked(&recordLists->mutex);
    return static_cast<const RecordListType*>(recordLists->types.value(metaType).get());
}

void JsonReflection::Write(const IJsonParser& record, JsonWriter& writer)
{
    writer.BeginObject();
    const QVector<QMetaProperty> properties = PropertiesOf(record);
    for (const QMetaProperty& property : properties) {
        writer.Key(property.name());
        if (const IJsonParser* owned = OwnedRecord(record, property))
            owned->WriteJson(writer);
        else if (property.isEnumType())
            writer.Int(property.read(&record).toInt());
        else
            WriteValue(property.read(&record), writer);
    }
    writer.EndObject();
}

void JsonReflection::WriteValue(const QVariant& value, JsonWriter& writer)
{
    if (value.userType() == QMetaType::QByteArray) {
        writer.Utf8(JsonBytes::Encode(value.toByteArray()));
        return;
    }
    const RecordListType* list = FindRecordList(value.userType());
    if (!list) {
        writer.Variant(value);
        return;
    }
    writer.BeginArray();
    const RecordList records = list->toRecords(value);
    for (const QSharedPointer<IJsonParser>& record : records)
        if (record)
            record->WriteJson(writer);
    writer.EndArray();
}

IJsonParser::Commit JsonReflection::Read(IJsonParser& record, JsonReader& reader)
{
    if (reader.GetType() != JsonReader::Type::Object) {
        reader.Fail(QStringLiteral("此处应为对象"));
        return {};
    }
    QVector<IJsonParser::Commit> commits;
    const QVector<QMetaProperty> properties = PropertiesOf(record);
    reader.EnterObject();
    while (reader.NextMember()) {
        for (const QMetaProperty& property : properties) {
            if (reader.IsKey(property.name())) {
                commits.append(ReadProperty(record, property, reader));
                break;
            }
        }
    }
    return [commits] {
        for (const IJsonParser::Commit& commit : commits)
            if (commit)
                commit();
    };
}

IJsonParser::Commit JsonReflection::ReadProperty(IJsonParser& record, const QMetaProperty& property,
                                                 JsonReader& reader)
{
    if (IJsonParser* owned = OwnedRecord(record, property)) {
        if (reader.GetType() == JsonReader::Type::Object)
            return owned->ReadJson(reader);
        reader.Skip();
        return {};
    }

    QVariant value;
    if (property.isEnumType())
        value = ReadSimple(QMetaType::Int, reader);
    else if (const RecordListType* list = FindRecordList(property.userType()))
        value = ReadRecordList(*list, reader);
    else
        value = ReadSimple(property.userType(), reader);
    if (!value.isValid() || !property.isWritable())
        return {};
    return [&record, property, value] { property.write(&record, value); };
}

QVariant JsonReflection::ReadRecordList(const RecordListType& type, JsonReader& reader)
{
    RecordList records;
    if (!reader.EnterArray())
        return QVariant();
    while (reader.NextElement()) {
        if (reader.GetType() != JsonReader::Type::Object)
            continue;
        const QSharedPointer<IJsonParser> record = type.create();
        // Nobody sees the new record before the whole text has proved good.
        if (const IJsonParser::Commit commit = record->ReadJson(reader))
            commit();
        records.append(record);
    }
    return type.toList(records);
}

void JsonReflection::Copy(IJsonParser& target, const IJsonParser& source)
{
    const QVector<QMetaProperty> properties = PropertiesOf(source);
    for (const QMetaProperty& property : properties) {
        const int index = target.metaObject()->indexOfProperty(property.name());
        if (index < 0)
            continue;
        const QMetaProperty own = target.metaObject()->property(index);
        const IJsonParser* owned = OwnedRecord(source, property);
        if (IJsonParser* ownOwned = owned ? OwnedRecord(target, own) : nullptr)
            *ownOwned = *owned;
        else if (const RecordListType* list = FindRecordList(property.userType()))
            own.write(&target, CopyRecordList(*list, property.read(&source)));
        else if (own.isWritable())
            own.write(&target, property.read(&source));
    }
}

QVariant JsonReflection::CopyRecordList(const RecordListType& type, const QVariant& list)
{
    RecordList copies;
    const RecordList records = type.toRecords(list);
    for (const QSharedPointer<IJsonParser>& record : records) {
        copies.append(type.create());
        if (record)
            *copies.last() = *record;
    }
    return type.toList(copies);
}
