// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <WbFoundation/IJsonParser.h>

class QMetaProperty;

// Declared properties of records to and from JSON.
class JsonReflection
{
public:
    static void Write(const IJsonParser& record, JsonWriter& writer);
    static IJsonParser::Commit Read(IJsonParser& record, JsonReader& reader);
    static void Copy(IJsonParser& target, const IJsonParser& source);

private:
    using RecordList = IJsonParser::RecordList;
    using RecordListType = IJsonParser::RecordListType;
    friend class IJsonParser;

    static const RecordListType* FindRecordList(int metaType);
    static void WriteValue(const QVariant& value, JsonWriter& writer);
    static IJsonParser::Commit ReadProperty(IJsonParser& record, const QMetaProperty& property,
                                            JsonReader& reader);
    static QVariant ReadRecordList(const RecordListType& type, JsonReader& reader);
    static QVariant CopyRecordList(const RecordListType& type, const QVariant& list);
};
