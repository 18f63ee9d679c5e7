// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaAppData/RpaParamData.h>
#include <RpaAppData/RpaToolData.h>
#include <RpaProblems/RpaProblemsExport.h>
#include <RpaProcessData/RpaNode.h>
#include <RpaProcessData/RpaPackageInfo.h>
#include <RpaProcessData/RpaStatement.h>

#include <QString>
#include <QVector>

class RpaAppData;

// What of an app can have problems, as values: made on the GUI thread, read on any other. Texts are shared
// with the app, so a copy of 10,000 statements takes a few milliseconds.
struct RPAPROBLEMS_EXPORT RpaAppCopy
{
    struct Process
    {
        QString name;
        QVector<RpaStatement> statements;
        QString programText;
    };
    struct Page
    {
        QString name;
        QVector<RpaToolItem> tools;
        QVector<RpaParamItem> params;
    };

    bool isProgram = false;
    QVector<Process> processes;
    QVector<Page> pages;
    QVector<PackageItem> packages;
    QVector<RpaNode> htmlNodes;
    QVector<RpaNode> uiaNodes;
    QString manual; // HTML

    // GUI thread.
    static RpaAppCopy Of(const RpaAppData& app);
};
