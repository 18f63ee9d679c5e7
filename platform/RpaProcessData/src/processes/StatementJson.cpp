// SPDX-License-Identifier: Apache-2.0

#include "StatementJson_p.h"

#include <WbFoundation/JsonReader.h>
#include <WbFoundation/JsonWriter.h>

namespace
{
void WriteText(JsonWriter& writer, const char* name, const QString& text)
{
    if (!text.isEmpty())
        writer.Member(name, text);
}

void WriteStatement(JsonWriter& writer, const RpaStatement& statement)
{
    writer.BeginObject();
    StatementJson::WriteValues(writer, statement);
    if (!statement.children.isEmpty()) {
        writer.Key("children");
        StatementJson::Write(writer, statement.children);
    }
    writer.EndObject();
}

RpaStatement ReadStatement(JsonReader& reader)
{
    RpaStatement statement;
    while (reader.NextMember())
        if (!StatementJson::ReadMember(reader, statement))
            statement.children = StatementJson::Read(reader);
    return statement;
}
} // namespace

bool StatementJson::ReadMember(JsonReader& reader, RpaStatement& statement)
{
    if (reader.IsKey("id"))
        reader.ReadString(statement.id);
    else if (reader.IsKey("command"))
        reader.ReadString(statement.command);
    else if (reader.IsKey("arguments"))
        statement.arguments = ReadMap(reader);
    else if (reader.IsKey("output"))
        reader.ReadString(statement.output);
    else if (reader.IsKey("note"))
        reader.ReadString(statement.note);
    else if (reader.IsKey("enabled"))
        reader.ReadBool(statement.enabled);
    else if (reader.IsKey("breakpoint"))
        reader.ReadBool(statement.breakpoint);
    else if (reader.IsKey("children"))
        return false;
    else
        reader.KeepMember(statement.unknown);
    return true;
}

void StatementJson::WriteValues(JsonWriter& writer, const RpaStatement& statement)
{
    writer.Member("id", statement.id);
    writer.Member("command", statement.command);
    if (!statement.arguments.isEmpty()) {
        writer.Key("arguments");
        WriteMap(writer, statement.arguments);
    }
    WriteText(writer, "output", statement.output);
    WriteText(writer, "note", statement.note);
    if (!statement.enabled)
        writer.Member("enabled", false);
    if (statement.breakpoint)
        writer.Member("breakpoint", true);
    writer.RawMembers(statement.unknown);
}

void StatementJson::Write(JsonWriter& writer, const QVector<RpaStatement>& statements)
{
    writer.BeginArray();
    for (const RpaStatement& statement : statements)
        WriteStatement(writer, statement);
    writer.EndArray();
}

QVector<RpaStatement> StatementJson::Read(JsonReader& reader)
{
    QVector<RpaStatement> statements;
    if (!reader.EnterArray())
        return statements;
    while (reader.NextElement())
        if (reader.EnterObject())
            statements.append(ReadStatement(reader));
    return statements;
}

void StatementJson::WriteMap(JsonWriter& writer, const QMap<QString, QString>& map)
{
    writer.BeginObject();
    for (auto entry = map.cbegin(); entry != map.cend(); ++entry) {
        writer.Key(entry.key());
        writer.String(entry.value());
    }
    writer.EndObject();
}

QMap<QString, QString> StatementJson::ReadMap(JsonReader& reader)
{
    QMap<QString, QString> map;
    if (!reader.EnterObject())
        return map;
    while (reader.NextMember()) {
        const QString name = QString::fromUtf8(reader.GetKey());
        QString text;
        if (reader.ReadString(text))
            map.insert(name, text);
    }
    return map;
}
