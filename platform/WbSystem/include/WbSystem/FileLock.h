// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <WbSystem/WbSystemExport.h>

#include <QString>

#include <chrono>

// Keeps a folder or a store to one process at a time, by a lock that the system holds on an open file. It
// goes when the lock is destroyed or its process ends, however that happens; what the file holds, and whether
// it was there before, says nothing. The file stays behind, empty: it must be no file that is used otherwise.
// One thread at a time.
//
//   FileLock lock(folder + QStringLiteral("/lock"));
//   if (lock.TryLock() != FileLock::Result::Locked)
//       ...
class WBSYSTEM_EXPORT FileLock
{
public:
    // How TryLock() went.
    enum class Result
    {
        Locked,
        Taken,  // by another lock, in this process or another
        Failed, // the file cannot be opened, or the file system knows no locks
    };

    // Its folder must exist when the lock is tried.
    explicit FileLock(const QString& file);
    ~FileLock();

    FileLock(const FileLock&) = delete;
    FileLock& operator=(const FileLock&) = delete;

    // Tries again for as long as the patience lasts while another holds the lock. What is locked stays so.
    Result TryLock(std::chrono::milliseconds patience = std::chrono::milliseconds(0));
    void Unlock();
    bool IsLocked() const { return isLocked; }

private:
    const QString file;
    bool isLocked = false;
    qintptr handle = 0; // of the system
};
