// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <WbFoundation/WbFoundationExport.h>

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <memory>

// Writes compact UTF-8 JSON value by value. The caller keeps the order of calls (a key before each value of
// an object); characters that UTF-16 cannot stand for (half a surrogate pair) become "?".
class WBFOUNDATION_EXPORT JsonWriter
{
public:
    // Nothing is written yet.
    JsonWriter();
    ~JsonWriter();
    JsonWriter(const JsonWriter&) = delete;
    JsonWriter& operator=(const JsonWriter&) = delete;

    // Objects and arrays are closed in the order in which they were opened; commas come by themselves.
    void BeginObject();
    void EndObject();
    void BeginArray();
    void EndArray();

    // ASCII that needs no escapes.
    void Key(const char* name);
    void Key(const QString& name);

    // One value, at the place that the calls before it left open.
    void Null();
    void Bool(bool value);
    void Int(int value);
    // Beyond ±2^53 as a string of digits.
    void Int64(qint64 value);
    void UInt64(quint64 value);
    // Shortest form that gives back the same number; beyond ±2^53 and not finite as a string.
    void Double(double value);
    void String(const QString& value);
    // Valid UTF-8.
    void Utf8(const QByteArray& value);
    void StringList(const QStringList& values);
    // Types without a JSON form become strings where they can, else null.
    void Variant(const QVariant& value);
    // JSON text as it stands; nothing is checked.
    void Raw(const QByteArray& json);
    // Members as JsonReader::KeepMember() gathered them: zero or more `"key":value` separated by commas, into
    // the open object.
    void RawMembers(const QByteArray& members);

    // Key and value at once; most records need nothing else.
    void Member(const char* name, const QString& value);
    void Member(const char* name, bool value);
    void Member(const char* name, int value);

    // What was written so far; the writer is empty afterwards.
    QByteArray Take();

private:
    class Private;
    const std::unique_ptr<Private> d;
};
