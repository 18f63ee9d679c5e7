// SPDX-License-Identifier: Apache-2.0

#include "FileLock_p.h"

#include <QFile>

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{
int OpenFile(const QByteArray& name)
{
    constexpr int flags =
        O_CLOEXEC | O_NOCTTY | O_NONBLOCK; // a child must not keep the lock, a pipe not hang
    const int writable = open(name.constData(), flags | O_RDWR | O_CREAT, S_IRUSR | S_IWUSR);
    // A file of another user can be locked as well.
    return writable >= 0 || errno != EACCES ? writable : open(name.constData(), flags | O_RDONLY);
}

FileLock::Result Lock(int descriptor)
{
    int failed = 0;
    do
        failed = flock(descriptor, LOCK_EX | LOCK_NB);
    while (failed != 0 && errno == EINTR);
    if (failed == 0)
        return FileLock::Result::Locked;
    return errno == EWOULDBLOCK ? FileLock::Result::Taken : FileLock::Result::Failed;
}

// A file that was removed or replaced meanwhile keeps nobody out who comes later.
bool StillStands(int descriptor, const QByteArray& name)
{
    struct stat opened = {};
    struct stat named = {};
    return fstat(descriptor, &opened) == 0 && stat(name.constData(), &named) == 0 &&
           opened.st_dev == named.st_dev && opened.st_ino == named.st_ino;
}
} // namespace

FileLock::Result LockedFile::Open(const QString& file, qintptr* handle)
{
    const QByteArray name = QFile::encodeName(file);
    const int descriptor = OpenFile(name);
    if (descriptor < 0)
        return FileLock::Result::Failed;
    FileLock::Result result = Lock(descriptor);
    if (result == FileLock::Result::Locked && !StillStands(descriptor, name))
        result = FileLock::Result::Taken;
    if (result == FileLock::Result::Locked)
        *handle = descriptor;
    else
        close(descriptor);
    return result;
}

void LockedFile::Close(qintptr handle)
{
    close(int(handle));
}
