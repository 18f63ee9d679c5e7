// SPDX-License-Identifier: Apache-2.0

#include "DebugScript.h"

void DebugScript::Evaluate(const QString& rest)
{
    if (WaitForAnswer(Session()->Evaluate(0, rest)))
        TellEvaluated();
}

void DebugScript::EvaluateAbove(const QString& rest)
{
    if (WaitForAnswer(Session()->Evaluate(1, rest)))
        TellEvaluated();
}

void DebugScript::TellEvaluated()
{
    const RpaDebugValue value = answer.values.value(0);
    transcript << QStringLiteral("= ") + value.text;
    shown.insert(QStringLiteral("="), value);
}

void DebugScript::Scopes(const QString&)
{
    if (!WaitForAnswer(Session()->AskScopes(0)))
        return;
    QStringList names;
    for (const RpaDebugValue& value : qAsConst(answer.values))
        names << value.name;
    transcript << names.join(QLatin1Char(' '));
}

void DebugScript::List(const QString& scope)
{
    if (!WaitForAnswer(Session()->AskScopes(0)))
        return;
    for (const RpaDebugValue& value : qAsConst(answer.values))
        shown.insert(value.name, value);
    Open(scope);
}

void DebugScript::Open(const QString& rest)
{
    const QStringList parts = rest.split(QLatin1Char(' '));
    const int handle = shown.value(parts.first()).handle;
    const int count = parts.size() > 2 ? parts.at(2).toInt() : 100;
    if (!WaitForAnswer(Session()->AskChildren(handle, parts.value(1).toInt(), count)))
        return;
    for (const RpaDebugValue& value : qAsConst(answer.values)) {
        shown.insert(value.name, value);
        owners.insert(value.name, handle);
    }
    TellValues();
}

void DebugScript::TellValues()
{
    QStringList texts;
    for (const RpaDebugValue& value : qAsConst(answer.values))
        texts << QStringLiteral("%1=%2%3").arg(value.name, value.text,
                                               value.changed ? QStringLiteral("*") : QString());
    transcript << texts.join(QLatin1Char(' '));
}

void DebugScript::Set(const QString& rest)
{
    const QString name = rest.section(QLatin1Char(' '), 0, 0);
    if (WaitForAnswer(
            Session()->SetValue(0, owners.value(name), shown.value(name), rest.section(QLatin1Char(' '), 1))))
        TellValues();
}

void DebugScript::Stack(const QString&)
{
    QStringList frames;
    for (const RpaDebugFrame& frame : qAsConst(pause.stack))
        frames << TextOf(frame);
    if (pause.depth > frames.size())
        frames << QStringLiteral("+%1").arg(pause.depth - frames.size());
    transcript << frames.join(QLatin1Char(' '));
}

void DebugScript::Log(const QString&)
{
    const QStringList texts = LogTexts();
    QStringList own;
    for (const QString& text : texts.mid(logSeen))
        if (!text.startsWith(QStringLiteral("流程“")) && !text.startsWith(QStringLiteral("开始运行")) &&
            !text.startsWith(QStringLiteral("正在停止")) && !text.startsWith(QStringLiteral("Traceback")))
            own << text;
    logSeen = texts.size();
    transcript << own.join(QLatin1Char(' '));
}
