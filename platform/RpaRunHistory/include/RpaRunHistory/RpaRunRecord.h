// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QDateTime>
#include <QMetaType>
#include <QString>
#include <QStringList>
#include <QVector>

// How a run ended.
enum class RpaRunResult
{
    Running = 0,
    Succeeded = 1,
    Failed = 2,
    Stopped = 3,
    Lost = 4, // the workstation ended before it did
};

// What started it.
enum class RpaRunOrigin
{
    Editor = 0, // its author, in the editor
    Page = 1,   // a user of the released app
};

// A value that a run began with; that of a password is "••••".
struct RpaRunValue
{
    QString name;
    QString text;
};

// One run that was kept. Texts are in the user's words unless said otherwise.
struct RpaRunRecord
{
    qint64 id = 0; // counts from 1 in this history
    QString appId;
    QString appName;
    QString versionId;
    QString versionName;
    int revision = 0; // 0: not known
    QString account;
    RpaRunOrigin origin = RpaRunOrigin::Editor;
    QString processName;
    QVector<RpaRunValue> parameters; // in the order of the page
    QStringList packages;            // "name version"
    QDateTime started;               // UTC
    qint64 duration = 0;             // ms
    RpaRunResult result = RpaRunResult::Running;
    QString reason; // of a failure
    QString trace;  // the program's own account of it
    QString failedProcess;
    QString failedStatement; // id; empty in program text
    int failedLine = 0;      // line of the program text, from 1; 0: none
    qint64 missingLines = 0; // of its log, beyond what is kept
};

// Which runs of an app are wanted.
struct RpaRunFilter
{
    QString appId;
    QString versionName;           // as the run saw it; empty: of every version
    QVector<RpaRunResult> results; // none: of every result
    QString text;                  // part of the process, version, account, reason or log; empty: any
    int most = 200;
};

Q_DECLARE_METATYPE(RpaRunRecord)
