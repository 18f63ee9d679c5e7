// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaProblems/RpaAppCopy.h>

// Apps with one thing in them, for the tests of the rules.
namespace ProblemSamples
{
using Statements = QVector<RpaStatement>;

inline RpaStatement Step(const char* command, const QMap<QString, QString>& arguments = {},
                         const QString& output = QString(), const Statements& children = {})
{
    RpaStatement statement;
    statement.command = QLatin1String(command);
    statement.arguments = arguments;
    statement.output = output;
    statement.children = children;
    return statement;
}

inline RpaStatement Disabled(RpaStatement statement)
{
    statement.enabled = false;
    return statement;
}

inline RpaStatement Set(const char* name, const char* value = "1")
{
    return Step("variable.set", {{QStringLiteral("name"), QLatin1String(name)},
                                 {QStringLiteral("value"), QString::fromUtf8(value)}});
}

inline RpaStatement Log(const char* text)
{
    return Step("log", {{QStringLiteral("text"), QString::fromUtf8(text)}});
}

inline RpaStatement Run(const char* process)
{
    return Step("process.run", {{QStringLiteral("process"), QString::fromUtf8(process)}});
}

inline RpaStatement If(const Statements& children)
{
    return Step("if", {{QStringLiteral("condition"), QStringLiteral("1")}}, QString(), children);
}

inline RpaStatement While(const char* condition, const Statements& children)
{
    return Step("loop.while", {{QStringLiteral("condition"), QLatin1String(condition)}}, QString(), children);
}

inline RpaStatement ReadParameter(const char* name)
{
    return Step("param.get", {{QStringLiteral("name"), QString::fromUtf8(name)}}, QStringLiteral("_"));
}

inline RpaAppCopy::Process Process(const char* name, const Statements& statements)
{
    return {QString::fromUtf8(name), statements, QString()};
}

// A visual app whose tool runs the main process.
inline RpaAppCopy Visual(const QVector<RpaAppCopy::Process>& processes)
{
    RpaToolItem tool;
    tool.id = QStringLiteral("t1");
    tool.text = QStringLiteral("开始");
    tool.processName = processes.value(0).name;
    RpaAppCopy app;
    app.processes = processes;
    app.pages = {{QStringLiteral("界面1"), {tool}, {}}};
    return app;
}

inline RpaAppCopy Main(const Statements& statements)
{
    return Visual({Process("主流程", statements)});
}

inline RpaAppCopy Program(const char* text)
{
    RpaAppCopy app = Main({});
    app.isProgram = true;
    app.processes.first().programText = QString::fromUtf8(text);
    return app;
}

inline RpaAppCopy WithTool(RpaAppCopy app, const char* processName)
{
    app.pages.first().tools.first().processName = QString::fromUtf8(processName);
    return app;
}

inline RpaAppCopy With(RpaAppCopy app, const char* name, RpaParamType type = RpaParamType::Text,
                       const QStringList& choices = {})
{
    RpaParamItem param;
    param.name = QString::fromUtf8(name);
    param.type = type;
    param.choices = choices;
    app.pages.first().params.append(param);
    return app;
}

inline RpaAppCopy WithPackage(RpaAppCopy app, const char* name)
{
    app.packages.append({QLatin1String(name), QString()});
    return app;
}

inline RpaAppCopy WithElement(RpaAppCopy app, const char* id)
{
    RpaNode node;
    node.id = QLatin1String(id);
    node.name = QStringLiteral("按钮");
    app.htmlNodes.append(node);
    return app;
}

inline RpaAppCopy WithManual(const char* html)
{
    RpaAppCopy app = Main({});
    app.manual = QString::fromUtf8(html);
    return app;
}
} // namespace ProblemSamples

Q_DECLARE_METATYPE(RpaAppCopy)
