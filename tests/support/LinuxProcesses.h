// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QDir>
#include <QFile>

// Processes of this machine whose command line holds the mark.
inline int CountProcesses(const QByteArray& mark)
{
    int count = 0;
    const QStringList names = QDir(QStringLiteral("/proc")).entryList(QDir::Dirs);
    for (const QString& name : names) {
        QFile file(QStringLiteral("/proc/%1/cmdline").arg(name));
        if (file.open(QIODevice::ReadOnly) && file.readAll().contains(mark))
            ++count;
    }
    return count;
}
