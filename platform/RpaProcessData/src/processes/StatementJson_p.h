// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaProcessData/RpaStatement.h>

#include <QVector>

class JsonReader;
class JsonWriter;

// Statements to and from JSON. What equals its default is left out: most statements have neither note nor
// children.
namespace StatementJson
{
// The members of one statement but for its children.
void WriteValues(JsonWriter& writer, const RpaStatement& statement);
void Write(JsonWriter& writer, const QVector<RpaStatement>& statements);
QVector<RpaStatement> Read(JsonReader& reader);

// Reads the current member into the statement unless it is its children, of which it tells by false.
bool ReadMember(JsonReader& reader, RpaStatement& statement);

void WriteMap(JsonWriter& writer, const QMap<QString, QString>& map);
QMap<QString, QString> ReadMap(JsonReader& reader);
} // namespace StatementJson
