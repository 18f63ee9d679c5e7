// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QMap>
#include <QMetaType>
#include <QString>
#include <QStringList>
#include <QVector>

// The values that a debug session takes and gives. Plain records; any thread.

// A statement of a visual process, or a line of a program text.
struct RpaDebugPlace
{
    QString processName;
    QString statementId; // empty in a program text
    int line = 0;        // number of the statement in its process, or line of the text, from 1; 0: unknown

    bool operator==(const RpaDebugPlace& other) const
    {
        return processName == other.processName && statementId == other.statementId && line == other.line;
    }
};

enum class RpaHitRule
{
    FromThenOn, // stops at the given arrival and at every later one
    Exactly,    // only at that one
    Every,      // at every n-th
};

// Where a run is to stop, or to log.
struct RpaBreakpoint
{
    RpaDebugPlace place; // in a program text its line counts, in a visual process its statement
    bool enabled = true;
    QString condition; // Python; empty: always. One that cannot be computed stops, with a note.
    int hits = 0;      // arrivals with a true condition, see the rule; 0: every one
    RpaHitRule hitRule = RpaHitRule::FromThenOn;
    QString logText; // logged instead of stopping when not empty; "{expression}" is replaced by its value
};

enum class RpaErrorStop
{
    Never,
    Unhandled, // where a statement fails with an error that no "try" of the program will handle
    All,
};

enum class RpaRunKind
{
    Whole,
    ToHere,   // stops before the place
    FromHere, // begins with the place; what stands before it is skipped
    Only,     // the chosen statements (statementIds, or the lines place.line … lastLine)
    // Of a program text whole statements of its top level run that have a chosen line; definitions and imports
    // that stand before run always.
};

// What kind of run the next one is.
struct RpaRunPlan
{
    RpaRunKind kind = RpaRunKind::Whole;
    RpaDebugPlace place;
    QStringList statementIds;
    int lastLine = 0;
    QMap<QString, QString> given;    // variable -> Python expression, computed before the first statement
    bool pauseAtFirst = false;       // stops before the first statement
    bool ignoresBreakpoints = false; // "without stopping": neither breakpoints nor errors stop it
};

enum class RpaDebugStep
{
    Continue,
    Into,
    Over,
    Out,
};

enum class RpaPauseReason
{
    Breakpoint,
    Step,
    Pause,  // somebody asked for it
    Target, // the place of "run to here"
    Error,
};

struct RpaDebugFrame
{
    QString functionName; // of a program text; its top level has "<module>"
    RpaDebugPlace place;
};

// Why and where the program stands still.
struct RpaPause
{
    int number = 0; // of the stop within the run, from 1
    RpaPauseReason reason = RpaPauseReason::Step;
    QString note;                 // what is wrong with a breakpoint's condition; empty: nothing
    QVector<RpaDebugFrame> stack; // the innermost first; at most 200
    int depth = 0;                // how deep the stack is altogether
    QString errorType;            // reason Error: its Python type,
    QString errorText;            // in the user's words,
    QString errorTrace;           // and Python's own account

    RpaDebugPlace GetPlace() const { return stack.value(0).place; }
};

// A variable, an entry of one, or a heading ("局部变量", "全局变量", "界面参数", "界面表格") of variables.
struct RpaDebugValue
{
    QString name;
    QString type;     // Python's name of it; empty for a heading
    QString text;     // short
    qint64 size = -1; // entries, characters or bytes; -1: has none
    int handle = 0;   // for what is inside, valid during this stop; 0: nothing is
    int inside = 0;   // how many entries the handle has
    int index = 0;    // among its siblings
    bool settable = false;
    bool changed = false; // since the stop before
    QString error;        // of a watch that cannot be computed
};

// The answer to a question; values have the order of the program.
struct RpaDebugAnswer
{
    int request = 0; // number of the question
    bool ok = false;
    QString error; // in the user's words where possible
    int total = 0; // entries that there are, of which values may be a page
    QVector<RpaDebugValue> values;
};

Q_DECLARE_METATYPE(RpaPause)
Q_DECLARE_METATYPE(RpaDebugAnswer)
Q_DECLARE_METATYPE(QVector<RpaDebugValue>)
