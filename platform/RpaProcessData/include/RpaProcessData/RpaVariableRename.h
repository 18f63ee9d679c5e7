// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaProcessData/RpaProcessDataExport.h>
#include <RpaProcessData/RpaStatementChange.h>

#include <QStringList>
#include <QVector>

class ProcessDataManager;

// What becomes of the statements of all processes when a variable gets another name: where it is set, changed
// and read, in expressions and in the fields of f-strings, but not inside texts. Program text is left alone.
// GUI thread only.
class RPAPROCESSDATA_EXPORT RpaVariableRename
{
public:
    using Change = RpaStatementChange;

    // Looks through all processes at once and changes nothing. The manager is not needed afterwards.
    RpaVariableRename(const ProcessDataManager& manager, const QString& from, const QString& to);

    // A statement that holds the variable several times is one change.
    const QVector<Change>& GetChanges() const { return changes; }
    // Places, and those of them that give the variable its value.
    int CountPlaces() const { return places; }
    int CountSetters() const { return setters; }

    // Why the variable cannot have that name, in Chinese; empty when it can: no name for a variable, or one
    // that stands for something else in any expression already.
    static QString Problem(const ProcessDataManager& manager, const QString& to);

    // Variables that statements set, sorted, each once.
    static QStringList NamesIn(const ProcessDataManager& manager);

private:
    RpaStatement Renamed(const RpaStatement& values);
    QString RenamedPython(const QString& python);

    const QString from;
    const QString to;
    QVector<Change> changes;
    int places = 0;
    int setters = 0;
};
