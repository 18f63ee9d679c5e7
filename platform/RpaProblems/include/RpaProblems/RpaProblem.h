// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaProblems/RpaProblemsExport.h>

#include <QMetaType>
#include <QString>
#include <QVector>

// How bad a problem is: whether a run would be refused because of it, may go wrong, or merely be untidy.
enum class RpaProblemSeverity
{
    Error,
    Warning,
    Hint,
};

// The part of the app that a problem is in, which decides where a jump goes.
enum class RpaProblemArea
{
    Process,
    Program,
    Page,
    Packages,
    Elements,
    Manual,
};

// What takes a problem away for certain; None where only the author can tell. The operand is the subject.
enum class RpaProblemFix
{
    None,
    ListPackage,    // the package into the app's list
    UnlistPackage,  // the package out of it
    CreateVariable, // a statement that sets the variable, at the top of the process
    RemoveArgument, // the argument out of the statement
    ClearProcess,   // the tool no longer names the process
};

// Where a problem is; what does not apply is empty.
struct RPAPROBLEMS_EXPORT RpaProblemPlace
{
    RpaProblemArea area = RpaProblemArea::Process;
    QString page;
    QString processName;
    QString statementId;
    QString item; // id of a tool, name of a parameter, id of an element
    int line = 0; // of the program text, from 1
};

// One problem of an app, as a value.
struct RPAPROBLEMS_EXPORT RpaProblem
{
    QString id;   // the same as long as rule, place and subject are; lines do not count, they move
    QString rule; // stable name, such as "unused-variable"
    RpaProblemSeverity severity = RpaProblemSeverity::Hint;
    RpaProblemPlace place;
    QString subject; // what it is about: a variable, a package, a link
    QString message; // in the user's words
    QString remedy;  // what to do, in the user's words
    RpaProblemFix fix = RpaProblemFix::None;
};

Q_DECLARE_METATYPE(RpaProblem)
