// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaProcessData/RpaProcessDataExport.h>
#include <RpaProcessData/RpaStatementChange.h>

#include <QPair>
#include <QString>
#include <QVector>

class ProcessDataManager;
class RpaProcess;
class RpaStatementNode;

// What is looked for, and where. Nothing is found without a text.
struct RPAPROCESSDATA_EXPORT RpaSearchOptions
{
    QString text;
    bool matchCase = false;
    bool wholeWords = false; // no letter, digit or underscore beside it
    bool inNames = true;     // names of variables, where they are set and where they are read
    bool inTexts = true;     // all else in arguments, names of processes included
    bool inNotes = true;
};

// An argument, the output or the note of a statement, in which the text stands at least once.
struct RPAPROCESSDATA_EXPORT RpaSearchPlace
{
    enum class Kind
    {
        Argument,
        Output,
        Note
    };

    QString processName;
    QString statementId;
    QString command;
    int line = 0; // of the statement, from 1, in the order shown
    Kind kind = Kind::Argument;
    QString argument;    // its name; empty for output and note
    QString text;        // the whole of it
    QVector<int> begins; // where in it, in ascending order; as long as what was looked for
};

// Looks through the statements of all processes, disabled ones and those of unknown commands included. What
// an author does not read is left out: ids of elements, values of choices and switches. Changes nothing. GUI
// thread only.
class RPAPROCESSDATA_EXPORT RpaProcessSearch
{
public:
    explicit RpaProcessSearch(const RpaSearchOptions& searched) : options(searched) {}

    // In the order of the processes and their statements.
    QVector<RpaSearchPlace> Find(const ProcessDataManager& manager) const;

    // The place's text with another in every place of the one that was looked for.
    QString Replaced(const RpaSearchPlace& place, const QString& with) const;

    // Why that must not be put there, in Chinese; empty when it may: no name for a variable, an expression that
    // would be incomplete or would become a text, a process that there is not.
    QString Problem(const ProcessDataManager& manager, const RpaSearchPlace& place,
                    const QString& with) const;

    // What becomes of the statements, one change each. Places with a problem, and those whose text has become
    // another one meanwhile, are left out.
    QVector<RpaStatementChange> Replace(const ProcessDataManager& manager,
                                        const QVector<RpaSearchPlace>& places, const QString& with) const;

private:
    using Name = QPair<QString, int>; // and where it begins
    void FindIn(const RpaProcess& process, QVector<RpaSearchPlace>& places) const;
    QVector<int> BeginsIn(const QString& text) const;
    QVector<int> BeginsInArgument(const RpaStatementNode& node, const QString& name,
                                  const QString& text) const;
    QString ProblemOfNames(const RpaSearchPlace& place, const QVector<Name>& names,
                           const QString& with) const;
    bool IsWholeWord(const QString& text, int begin) const;

    const RpaSearchOptions options;
};
