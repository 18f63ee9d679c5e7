// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <WbFoundation/WbFoundationExport.h>

#include <QByteArray>
#include <QList>
#include <QObject>
#include <QSharedPointer>
#include <QVariant>

#include <functional>

class JsonReader;
class JsonWriter;

// Base of every record that is kept as JSON: its declared properties (Q_PROPERTY of the derived classes, in
// declaration order) are the members of the JSON object. Properties may be of the types
//   QString, bool, int, uint, qint64, quint64, double, QByteArray, QStringList, QVariantList, QVariantMap,
//   enumerations, pointers to a record that the object owns (read and written in place), and
//   QList<QSharedPointer<T>> of records, after RegisterRecordList<T>(); Q_PROPERTY must spell the type out.
// A QByteArray that is valid UTF-8 becomes a JSON string of that text; any other one, and a text that begins
// with that prefix, becomes the string "data:;base64," followed by its Base64 form. Whole numbers beyond
// ±2^53 become strings.
class WBFOUNDATION_EXPORT IJsonParser : public QObject
{
    Q_OBJECT

public:
    // Applies what was read.
    using Commit = std::function<void()>;

    explicit IJsonParser(QObject* parent = nullptr);
    ~IJsonParser() override;

    // Copies the values of all declared properties (not the QObject identity); owned records are copied as
    // well. A class that owns records by pointer must hide the assignment that the compiler makes, which
    // would copy the pointer too.
    IJsonParser& operator=(const IJsonParser& other);

    // Compact UTF-8 JSON of the record.
    virtual QByteArray ToJson() const;

    // Reads the members that the object knows and leaves the others' values as they are; a member of a wrong
    // type is passed over. False, with the object unchanged, when the text is not a JSON object or breaks the
    // limits for foreign JSON (JsonGuard).
    virtual bool Parse(const QByteArray& json);

    // For records with a form of their own. WriteJson writes one value. ReadJson reads one value without
    // changing the object and returns what is to be done once the whole text has proved good; it may be empty
    // when there is nothing to do. The defaults go by the declared properties.
    virtual void WriteJson(JsonWriter& writer) const;
    virtual Commit ReadJson(JsonReader& reader);

    // Makes QList<QSharedPointer<T>> usable as the type of a declared property. T needs a constructor without
    // arguments.
    template <class T>
    static void RegisterRecordList();

private:
    using RecordList = QList<QSharedPointer<IJsonParser>>;
    struct RecordListType
    {
        std::function<RecordList(const QVariant&)> toRecords;
        std::function<QVariant(const RecordList&)> toList;
        std::function<QSharedPointer<IJsonParser>()> create;
    };
    static void RegisterRecordListType(int metaType, const RecordListType& type);
    friend class JsonReflection;
};

template <class T>
void IJsonParser::RegisterRecordList()
{
    using List = QList<QSharedPointer<T>>;
    RecordListType type;
    type.create = [] { return QSharedPointer<T>::create().template staticCast<IJsonParser>(); };
    type.toRecords = [](const QVariant& value) {
        RecordList records;
        const List list = value.value<List>();
        for (const QSharedPointer<T>& record : list)
            records.append(record.template staticCast<IJsonParser>());
        return records;
    };
    type.toList = [](const RecordList& records) {
        List list;
        for (const QSharedPointer<IJsonParser>& record : records)
            list.append(record.template staticCast<T>());
        return QVariant::fromValue(list);
    };
    RegisterRecordListType(qMetaTypeId<List>(), type);
}
