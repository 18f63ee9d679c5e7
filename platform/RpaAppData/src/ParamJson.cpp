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

QStringList ReadChoices(JsonReader& reader)
{
    QStringList choices;
    if (!reader.EnterArray())
        return choices;
    while (reader.NextElement()) {
        QString choice;
        if (reader.ReadString(choice))
            choices.append(choice);
    }
    return choices;
}
} // namespace

void ParamJson::Write(JsonWriter& writer, const RpaParamItem& item)
{
    writer.BeginObject();
    writer.Member("name", item.name);
    writer.Member("label", item.label);
    const bool foreign = item.type == RpaParamType::Text && !item.foreignType.isEmpty();
    writer.Member("type", foreign ? item.foreignType : RpaParamItem::GetTypeName(item.type));
    if (item.type != RpaParamType::Password) {
        WriteValue(writer, "default", item.defaultValue);
        WriteValue(writer, "value", item.isResult ? item.initial : item.value);
    }
    if (!item.choices.isEmpty()) {
        writer.Key("choices");
        writer.StringList(item.choices);
    }
    writer.Member("required", item.required);
    WriteValue(writer, "least", item.least);
    WriteValue(writer, "most", item.most);
    if (!item.pattern.isEmpty())
        writer.Member("pattern", item.pattern);
    if (!item.hint.isEmpty())
        writer.Member("hint", item.hint);
    writer.RawMembers(item.unknown);
    writer.EndObject();
}

RpaParamItem ParamJson::Read(JsonReader& reader)
{
    RpaParamItem item;
    while (reader.NextMember()) {
        if (reader.IsKey("name")) {
            reader.ReadString(item.name);
        } else if (reader.IsKey("label")) {
            reader.ReadString(item.label);
        } else if (reader.IsKey("type")) {
            ReadType(reader, item);
        } else if (reader.IsKey("default")) {
            reader.ReadVariant(item.defaultValue);
        } else if (reader.IsKey("value")) {
            reader.ReadVariant(item.value);
        } else if (reader.IsKey("choices")) {
            item.choices = ReadChoices(reader);
        } else if (reader.IsKey("required")) {
            reader.ReadBool(item.required);
        } else if (reader.IsKey("least")) {
            reader.ReadVariant(item.least);
        } else if (reader.IsKey("most")) {
            reader.ReadVariant(item.most);
        } else if (reader.IsKey("pattern")) {
            reader.ReadString(item.pattern);
        } else if (reader.IsKey("hint")) {
            reader.ReadString(item.hint);
        } else {
            reader.KeepMember(item.unknown);
        }
    }
    if (item.type == RpaParamType::Password) {
        item.defaultValue = QVariant();
        item.value = QVariant();
    }
    return item;
}
