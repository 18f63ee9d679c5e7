// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <WbFoundation/JsonWriter.h>

namespace server
{
// The platform's JSON writer, whose calls can be chained: one expression writes one record. The lists that the
// service answers most often are written through it, because building a QJsonDocument for them costs ten times
// as much.
class JsonText
{
public:
    JsonText& BeginObject()
    {
        writer->BeginObject();
        return *this;
    }
    JsonText& EndObject()
    {
        writer->EndObject();
        return *this;
    }
    JsonText& BeginArray()
    {
        writer->BeginArray();
        return *this;
    }
    JsonText& EndArray()
    {
        writer->EndArray();
        return *this;
    }
    JsonText& Key(const char* name)
    {
        writer->Key(name);
        return *this;
    }
    JsonText& Value(const QString& text)
    {
        writer->String(text);
        return *this;
    }
    JsonText& Value(qint64 number)
    {
        writer->Int64(number);
        return *this;
    }
    JsonText& Value(int number)
    {
        writer->Int(number);
        return *this;
    }
    JsonText& Value(bool truth)
    {
        writer->Bool(truth);
        return *this;
    }

    template <typename T>
    JsonText& Member(const char* name, const T& value)
    {
        return Key(name).Value(value);
    }

    // What was written so far; nothing is left in here.
    QByteArray Take() { return writer->Take(); }

private:
    std::unique_ptr<JsonWriter> writer = std::make_unique<JsonWriter>();
};
} // namespace server
