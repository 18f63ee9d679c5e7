// SPDX-License-Identifier: Apache-2.0

#include "JsonReflection_p.h"

#include <WbFoundation/IJsonParser.h>
#include <WbFoundation/JsonReader.h>
#include <WbFoundation/JsonWriter.h>

IJsonParser::IJsonParser(QObject* parent) : QObject(parent) {}

IJsonParser::~IJsonParser() = default;

IJsonParser& IJsonParser::operator=(const IJsonParser& other)
{
    if (this != &other)
        JsonReflection::Copy(*this, other);
    return *this;
}

QByteArray IJsonParser::ToJson() const
{
    JsonWriter writer;
    WriteJson(writer);
    return writer.Take();
}

bool IJsonParser::Parse(const QByteArray& json)
{
    JsonReader reader(json);
    const Commit commit = ReadJson(reader);
    if (!reader.Finish())
        return false;
    if (commit)
        commit();
    return true;
}

void IJsonParser::WriteJson(JsonWriter& writer) const
{
    JsonReflection::Write(*this, writer);
}

IJsonParser::Commit IJsonParser::ReadJson(JsonReader& reader)
{
    return JsonReflection::Read(*this, reader);
}
