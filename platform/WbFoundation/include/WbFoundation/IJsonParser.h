// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <WbFoundation/WbFoundationExport.h>

#include <QByteArray>
#include <QObject>
#include <QSharedPointer>
#include <QVariant>

#include <functional>

class JsonReader;
class JsonWriter;

// Base of every record that is kept as JSON: its declared properties (Q_PROPERTY of the derived classes, in
// declaration order) are the members of the JSON object. Properties may be of the types
//   QString, bool, int, uint, qint64, quint64, double, QByteArray, QStringList, QVariantList, QVariantMap and
//   enumerations.
// A QByteArray that is valid UTF-8 becomes a JSON string of that text; any other one, and a text that begins
// with that prefix, becomes the string "data:;base64," followed by its Base64 form. Whole numbers beyond
// ±2^53 become strings.
class WBFOUNDATION_EXPORT IJsonParser : public QObject
{
    Q_OBJECT

public:
    // Applies what was read.
    using Commit = std::function<void()>;

    // A record with the values that its class gives the properties.
    explicit IJsonParser(QObject* parent = nullptr);
    ~IJsonParser() override;

    // Copies the values of all declared properties (not the QObject identity).
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
};
