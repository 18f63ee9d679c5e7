// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaEngineCore/IRpaLogManager.h>

#include <QVector>

// Lines of the log as text, to be pasted somewhere or kept in a file.
class LogText
{
public:
    static QString Of(const RpaLogLine& line);

    // Writes the file aside, tells when that is done, or why it could not be.
    static void Save(const QString& path, const QVector<RpaLogLine>& lines);
};
