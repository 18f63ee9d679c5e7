// SPDX-License-Identifier: Apache-2.0

#include "FileLock_p.h"

#include <thread>

namespace
{
constexpr auto pause = std::chrono::milliseconds(20);
}

FileLock::FileLock(const QString& path) : file(path) {}

FileLock::~FileLock()
{
    Unlock();
}

FileLock::Result FileLock::TryLock(std::chrono::milliseconds patience)
{
    if (isLocked)
        return Result::Locked;
    const auto end = std::chrono::steady_clock::now() + patience;
    for (;;) {
        const Result result = LockedFile::Open(file, &handle);
        isLocked = result == Result::Locked;
        if (result != Result::Taken || std::chrono::steady_clock::now() >= end)
            return result;
        std::this_thread::sleep_for(pause);
    }
}

void FileLock::Unlock()
{
    if (isLocked)
        LockedFile::Close(handle);
    isLocked = false;
}
