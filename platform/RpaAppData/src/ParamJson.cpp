// SPDX-License-Identifier: Apache-2.0

#include "ParamJson_p.h"
#include "TypedValue_p.h"

#include <WbFoundation/JsonReader.h>
#include <WbFoundation/JsonWriter.h>

namespace
{
void ReadType(JsonReader& reader, RpaParamItem& item)
{
    QString name;
    reader.ReadString(name);
    const QVector<RpaParamType> types = RpaParamItem::GetTypes();
    for (RpaParamType type : types) {
        if (RpaParamItem::GetTypeName(type) == name) {
            item.type = type;
            return;
        }
    }
    item.foreignType = name;
}

void WriteValue(JsonWriter& writer, const char* name, const QVariant& value)
{
    if (!value.isValid())
        return;
    writer.Key(name);
    writer.Variant(TypedValue::ToJsonValue(value));
}

QStringList ReadTexts(JsonReader& reader)
{
    QStringList texts;
    if (!reader.EnterArray())
        return texts;
    while (reader.NextElement()) {
        QString text;
        if (reader.ReadString(text))
            texts.append(text);
    }
    return texts;
}

void WriteTexts(JsonWriter& writer, const char* name, const QStringList& texts)
{
    if (texts.isEmpty())
        return;
    writer.Key(name);
    writer.StringList(texts);
}

// What only some types have; false for any other member.
bool ReadSetting(JsonReader& reader, RpaParamItem& item)
{
    if (reader.IsKey("choices"))
        item.choices = ReadTexts(reader);
    else if (reader.IsKey("least"))
        reader.ReadVariant(item.least);
    else if (reader.IsKey("most"))
        reader.ReadVariant(item.most);
    else if (reader.IsKey("step"))
        reader.ReadDouble(item.step);
    else if (reader.IsKey("lines"))
        reader.ReadInt(item.lines);
    else if (reader.IsKey("columns"))
        reader.ReadInt(item.columns);
    else if (reader.IsKey("endings"))
        item.endings = ReadTexts(reader);
    else if (reader.IsKey("pattern"))
        reader.ReadString(item.pattern);
    else if (reader.IsKey("hint"))
        reader.ReadString(item.hint);
    else
        return false;
    return true;
}

void WriteSettings(JsonWriter& writer, const RpaParamItem& item)
{
    WriteValue(writer, "least", item.least);
    WriteValue(writer, "most", item.most);
    if (item.step > 0) {
        writer.Key("step");
        writer.Double(item.step);
    }
    if (item.lines > 0)
        writer.Member("lines", item.lines);
    if (item.columns > 0)
        writer.Member("columns", item.columns);
    WriteTexts(writer, "endings", item.endings);
    if (!item.pattern.isEmpty())
        writer.Member("pattern", item.pattern);
    if (!item.hint.isEmpty())
        writer.Member("hint", item.hint);
}

bool IsStored(const RpaParamItem& item)
{
    return item.type != RpaParamType::Password && !item.IsOutput();
}
} // namespace

void ParamJson::Write(JsonWriter& writer, const RpaParamItem& item)
{
    writer.BeginObject();
    writer.Member("name", item.name);
    writer.Member("label", item.label);
    const bool foreign = item.type == RpaParamType::Text && !item.foreignType.isEmpty();
    writer.Member("type", foreign ? item.foreignType : RpaParamItem::GetTypeName(item.type));
    if (IsStored(item)) {
        WriteValue(writer, "default", item.defaultValue);
        WriteValue(writer, "value", item.isResult ? item.initial : item.value);
    }
    WriteTexts(writer, "choices", item.choices);
    writer.Member("required", item.required);
    WriteSettings(writer, item);
    writer.RawMembers(item.unknown);
    writer.EndObject();
}

RpaParamItem ParamJson::Read(JsonReader& reader)
{
    RpaParamItem item;
    while (reader.NextMember())
        if (reader.IsKey("name"))
            reader.ReadString(item.name);
        else if (reader.IsKey("label"))
            reader.ReadString(item.label);
        else if (reader.IsKey("type"))
            ReadType(reader, item);
        else if (reader.IsKey("default"))
            reader.ReadVariant(item.defaultValue);
        else if (reader.IsKey("value"))
            reader.ReadVariant(item.value);
        else if (reader.IsKey("required"))
            reader.ReadBool(item.required);
        else if (!ReadSetting(reader, item))
            reader.KeepMember(item.unknown);
    if (!IsStored(item)) {
        item.defaultValue = QVariant();
        item.value = QVariant();
    }
    return item;
}
