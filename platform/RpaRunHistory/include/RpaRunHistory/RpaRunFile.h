// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaEngineCore/IRpaLogManager.h>
#include <RpaRunHistory/RpaRunDetails.h>
#include <RpaRunHistory/RpaRunHistoryExport.h>
#include <RpaRunHistory/RpaRunRecord.h>

#include <QString>
#include <QVector>

// One run as a file that another author can open. What it holds came from the history, so that it has no
// password; a file that is opened is not believed. Any thread.
struct RPARUNHISTORY_EXPORT RpaRunFile
{
    static constexpr qint64 bytesAtMost = 64 * 1024 * 1024;

    RpaRunRecord record;
    QVector<RpaLogLine> log;
    RpaRunDetails details;

    // False with the reason in the user's words.
    bool Write(const QString& path, QString* problem) const;
    // Leaves the run as it was when it returns false.
    bool Read(const QString& path, QString* problem);
};
