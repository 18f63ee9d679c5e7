// SPDX-License-Identifier: Apache-2.0

#include <WbSystem/RegularFile.h>

#include <QFile>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

// What is looked at is what was opened: a name may mean another file a moment later.
bool RegularFile::Open(QFile* file, const QString& path, QString* problem)
{
    const int descriptor =
        ::open(QFile::encodeName(path).constData(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
    if (descriptor < 0) {
        *problem = errno == ELOOP || errno == ENXIO
                       ? QStringLiteral("不是普通文件")
                       : QStringLiteral("无法打开：%1").arg(QString::fromLocal8Bit(std::strerror(errno)));
        return false;
    }
    struct stat facts = {};
    const bool isRegular = ::fstat(descriptor, &facts) == 0 && S_ISREG(facts.st_mode);
    if (isRegular && file->open(descriptor, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle))
        return true;
    ::close(descriptor);
    *problem = isRegular ? QStringLiteral("无法打开") : QStringLiteral("不是普通文件");
    return false;
}
