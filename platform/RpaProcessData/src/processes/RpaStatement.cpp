// SPDX-License-Identifier: Apache-2.0

#include "StatementJson_p.h"

#include <RpaProcessData/RpaStatement.h>
#include <WbFoundation/JsonReader.h>
#include <WbFoundation/JsonWriter.h>

#include <tuple>

namespace
{
auto Tie(const RpaStatement& s)
{
    return std::tie(s.id, s.command, s.arguments, s.output, s.note, s.enabled, s.breakpoint, s.children,
                    s.unknown);
}
} // namespace

bool RpaStatement::operator==(const RpaStatement& other) const
{
    return Tie(*this) == Tie(other);
}

QByteArray RpaStatement::ToJson(const QVector<RpaStatement>& statements)
{
    JsonWriter writer;
    StatementJson::Write(writer, statements);
    return writer.Take();
}

QVector<RpaStatement> RpaStatement::FromJson(const QByteArray& json)
{
    JsonReader reader(json);
    const QVector<RpaStatement> statements = StatementJson::Read(reader);
    return reader.Finish() ? statements : QVector<RpaStatement>();
}
