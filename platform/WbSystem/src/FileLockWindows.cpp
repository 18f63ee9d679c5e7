// SPDX-License-Identifier: Apache-2.0

#include "FileLock_p.h"

#include <QDir>
#include <QFileInfo>

#include <windows.h>

namespace
{
// Long paths included.
std::wstring NativeName(const QString& path)
{
    const QString full = QDir::toNativeSeparators(QFileInfo(path).absoluteFilePath());
    const bool isShare = full.startsWith(QLatin1String("\\\\"));
    return (isShare ? full : QStringLiteral("\\\\?\\") + full).toStdWString();
}

FileLock::Result Lock(HANDLE file)
{
    // Far behind the end of the file, so that what is in it can still be read.
    OVERLAPPED place = {};
    place.OffsetHigh = 0x40000000;
    if (LockFileEx(file, LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY, 0, 1, 0, &place))
        return FileLock::Result::Locked;
    const DWORD error = GetLastError();
    return error == ERROR_LOCK_VIOLATION || error == ERROR_IO_PENDING ? FileLock::Result::Taken
                                                                      : FileLock::Result::Failed;
}
} // namespace

FileLock::Result LockedFile::Open(const QString& path, qintptr* handle)
{
    const HANDLE file =
        CreateFileW(NativeName(path).c_str(), GENERIC_READ | GENERIC_WRITE,
                    FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return GetLastError() == ERROR_SHARING_VIOLATION ? FileLock::Result::Taken : FileLock::Result::Failed;
    const FileLock::Result result = Lock(file);
    if (result == FileLock::Result::Locked)
        *handle = reinterpret_cast<qintptr>(file);
    else
        CloseHandle(file);
    return result;
}

void LockedFile::Close(qintptr handle)
{
    CloseHandle(reinterpret_cast<HANDLE>(handle));
}
