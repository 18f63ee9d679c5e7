// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <WbSystem/WbSystemExport.h>

#include <QString>

class QFile;

// Files in folders that others may write into as well: a link leads anywhere, and whoever opens a pipe waits
// for somebody who writes.
namespace RegularFile
{
// Opens the file for reading, without ever waiting. False with a problem in the user's words when it is no
// regular file or cannot be read. Any thread.
WBSYSTEM_EXPORT bool Open(QFile* file, const QString& path, QString* problem);
} // namespace RegularFile
