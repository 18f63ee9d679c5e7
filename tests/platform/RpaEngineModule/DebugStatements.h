// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaProcessData/RpaStatement.h>

#include <QString>
#include <QVector>

// Statements of a visual process, in few words.
namespace DebugStatements
{

inline RpaStatement Of(const char* command, const QMap<QString, QString>& arguments,
                       const QVector<RpaStatement>& children = {}, const QString& output = {})
{
    RpaStatement statement;
    statement.command = QString::fromLatin1(command);
    statement.arguments = arguments;
    statement.children = children;
    statement.output = output;
    return statement;
}

// The value is Python.
inline RpaStatement Set(const char* name, const char* value)
{
    return Of("variable.set", {{QStringLiteral("name"), QString::fromUtf8(name)},
                               {QStringLiteral("value"), QLatin1Char('=') + QString::fromUtf8(value)}});
}

inline RpaStatement Log(const char* value)
{
    return Of("log", {{QStringLiteral("text"), QLatin1Char('=') + QString::fromUtf8(value)},
                      {QStringLiteral("level"), QStringLiteral("info")}});
}

inline RpaStatement Loop(int times, const char* variable, const QVector<RpaStatement>& children)
{
    return Of("loop.count", {{QStringLiteral("times"), QString::number(times)}}, children,
              QString::fromUtf8(variable));
}

inline RpaStatement If(const char* condition, const QVector<RpaStatement>& children)
{
    return Of("if", {{QStringLiteral("condition"), QString::fromUtf8(condition)}}, children);
}

inline RpaStatement Call(const char* process)
{
    return Of("process.run", {{QStringLiteral("process"), QString::fromUtf8(process)}});
}

} // namespace DebugStatements
