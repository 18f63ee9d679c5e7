// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaProcessData/RpaProcessDataExport.h>

#include <QList>
#include <QMetaType>
#include <QString>

// One finding of a check before a run, or of a run: where, what, and what to do about it.
struct RPAPROCESSDATA_EXPORT RpaCheckInfo
{
    QString processName;
    QString statementId;
    QString rule;    // stable name of the rule, such as "undefined-variable"
    QString message; // in the user's words
    QString remedy;  // what to do, in the user's words
    int line = 0;    // of the program text, from 1; 0 when a statement is meant, or none
    // What it is about, where the place does not say it: a variable, a process, an argument's name.
    QString subject = QString();
};

Q_DECLARE_METATYPE(RpaCheckInfo)
Q_DECLARE_METATYPE(QList<RpaCheckInfo>)
