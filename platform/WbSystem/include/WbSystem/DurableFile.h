// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <WbSystem/WbSystemExport.h>

#include <QByteArray>
#include <QString>

// Files that are whole and stay, whatever happens to program, system or power. What is written here belongs
// to the user alone (files 0600, folders 0700 where the system knows such modes; the profile's rights
// elsewhere).
//
// Every operation returns when the disk has it, which takes milliseconds: not for the GUI thread. False with
// a problem in the user's words, the path among them; what was there before is still there then. Any thread,
// but one at a time per file.
namespace DurableFile
{
// Makes the folder, its parents included, if it is not there.
WBSYSTEM_EXPORT bool CreateFolder(const QString& folder, QString* problem);

// Puts the bytes in the place of the file, if there is one: afterwards it holds either what it held or all of
// the bytes, never a part. A file "path.tmp" stands beside it meanwhile. The folder must exist.
WBSYSTEM_EXPORT bool Write(const QString& path, const QByteArray& bytes, QString* problem);

// Gives the file another name in the same folder. A file of that name is replaced.
WBSYSTEM_EXPORT bool Rename(const QString& path, const QString& newPath, QString* problem);

// A file that is not there counts as removed.
WBSYSTEM_EXPORT bool Remove(const QString& path, QString* problem);
} // namespace DurableFile
