// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "RpaRun_p.h"

#include <QHash>
#include <QSet>

class ProcessDataManager;
class RpaProcess;
class RpaStatementNode;
struct RpaCommandInfo;

// Turns the processes of an app into one readable Python program: a function for each process that the
// started one reaches, called at the end. Disabled statements leave no trace.
class RpaProcessTranslator
{
public:
    explicit RpaProcessTranslator(const ProcessDataManager& given) : processes(given) {}

    // The whole program that runs the named process. An empty source when there is no such process.
    RpaProgram Translate(const QString& processName);

    // Program text as it stands, every line belonging to its process.
    static RpaProgram TakeText(const RpaProcess& process);

private:
    void TranslateProcess(const RpaProcess& process);
    void TranslateChildren(const RpaStatementNode& parent, int depth);
    void TranslateStatement(const RpaStatementNode& statement, int depth);
    QString Fill(const QString& line, const RpaCommandInfo& command, const RpaStatementNode& statement) const;
    void Collect(const QString& processName);
    QStringList AssignedNames(const RpaProcess& process) const;
    void AddLine(const QString& text, int depth, const QString& statementId = QString());

    const ProcessDataManager& processes;
    QStringList reached; // in the order in which they are met
    QStringList imports;
    QStringList lines;
    QVector<RpaProgramOrigin> origins;
    QString currentProcess;
    QHash<QString, int> numbers; // of the statements in the current process
    QHash<QString, QString> titles;
};
