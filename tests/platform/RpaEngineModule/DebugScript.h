// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "EngineRunFixture.h"

#include <RpaEngineModule/RpaDebugSession.h>

#include <QHash>
#include <QPair>
#include <QTest>

#include <initializer_list>

// Texts of a row of a test.
struct Lines
{
    Lines(std::initializer_list<const char*> given)
    {
        for (const char* text : given)
            texts << QString::fromUtf8(text);
    }
    friend QTestData& operator<<(QTestData& row, const Lines& lines) { return row << lines.texts; }

    QStringList texts;
};

// Debugs a run as a list of commands says, and writes down what came of each:
//
//   break 4|if n == 1|from 3|at 3|every 3|log n={n}|off    a breakpoint (the line of a text, the number of a
//                                                          statement of "主流程", "子流程:2" of another process)
//   clear 4                                  takes it away
//   errors all|unhandled|never    slow MS    watch EXPRESSION
//   plan to 5|from 5|only 5-7|first|nostops    given NAME=EXPRESSION     of the next run
//   run    continue    into    over    out    to 5      go on, and tell where the program stops
//   go     the same as continue, without waiting; begin: run without waiting
//   until TEXT      waits until the log has the text
//   pause           asks for a pause and tells where it comes;  wait: waits for a stop
//   stop            stops the run
//   eval EXPRESSION         at EXPRESSION: in the calling frame
//   scopes          the headings;  vars HEADING: what is below it;  open NAME [FIRST COUNT]: what is inside
//   set NAME EXPRESSION
//   stack           the whole stack    log: what the program logged so far, then forgets it
//
// A stop is told as "breakpoint 4", inside of functions "breakpoint f:4"; statements as "step 主流程#3".
class DebugScript : public EngineRunFixture
{
public:
    DebugScript();
    ~DebugScript();

    static RpaDebugSession* Session() { return Engine()->GetDebugSession(); }

    void SetText(const QString& program);
    void SetProcess(const QString& name, const QVector<RpaStatement>& statements);

    QStringList Do(const QStringList& commands);
    // The values of the newest answer.
    RpaDebugAnswer answer;
    RpaPause pause;
    QVector<RpaDebugValue> watched;
    QStringList points; // what breakpoints logged, with places

private:
    using Command = void (DebugScript::*)(const QString& rest);

    void AddCommands();
    void Break(const QString& rest);
    void Clear(const QString& rest);
    void Errors(const QString& rest);
    void Slow(const QString& rest);
    void Watch(const QString& rest);
    void Plan(const QString& rest);
    void Given(const QString& rest);
    void Begin(const QString& rest);
    void Run(const QString& rest);
    void Go(const QString& rest);
    void Continue(const QString& rest);
    void Into(const QString& rest);
    void Over(const QString& rest);
    void Out(const QString& rest);
    void To(const QString& rest);
    void Until(const QString& rest);
    void AskToPause(const QString& rest);
    void Wait(const QString& rest);
    void Stop(const QString& rest);
    void Evaluate(const QString& rest);
    void EvaluateAbove(const QString& rest);
    void Scopes(const QString& rest);
    void List(const QString& scope);
    void Open(const QString& rest);
    void Set(const QString& rest);
    void Stack(const QString& rest);
    void Log(const QString& rest);

    void Resume(RpaDebugStep step);
    void WaitForStop();
    bool WaitForAnswer(int request);
    void TellValues();
    void TellEvaluated();
    RpaDebugPlace PlaceOf(const QString& text) const;
    static QString TextOf(const RpaDebugFrame& frame);

    bool visual = false;
    int stops = 0;
    int told = 0; // of the stops
    int ends = 0;
    RpaRunPlan plan;
    QVector<QPair<QString, RpaBreakpoint>> breakpoints;
    QHash<QString, Command> commands;
    QHash<QString, RpaDebugValue> shown; // by name
    QHash<QString, int> owners;          // by name, the handle that gave it
    QStringList transcript;
    int logSeen = 0;
};
