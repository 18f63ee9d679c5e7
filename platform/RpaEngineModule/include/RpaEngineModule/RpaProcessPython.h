// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaEngineModule/RpaEngineModuleExport.h>

#include <QString>
#include <QVector>

class ProcessDataManager;

// The Python program that a run of a visual process carries out, for those who want to read it. It is a
// program of its own: an app of the program kind runs it as it stands.
struct RPAENGINEMODULE_EXPORT RpaProcessPython
{
    // What a line was made from; both empty for lines that belong to no statement.
    struct Origin
    {
        QString processName;
        QString statementId;
    };

    QString source;
    QVector<Origin> origins; // of line 1 at index 0

    // With all processes that the named one runs. Empty when there is no such process. The thread that the
    // processes belong to.
    static RpaProcessPython Of(const ProcessDataManager& processes, const QString& processName);
};
