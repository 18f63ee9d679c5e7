// SPDX-License-Identifier: Apache-2.0

#include <WbSystem/DurableFile.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{
constexpr mode_t ownerOnly = S_IRUSR | S_IWUSR;

struct Reason
{
    int error;
    const char* text;
};

constexpr Reason reasons[] = {
    {ENOSPC, "磁盘空间不足"},
    {EDQUOT, "磁盘配额已用完"},
    {EACCES, "没有写入权限"},
    {EPERM, "没有写入权限"},
    {EROFS, "磁盘是只读的"},
    {EIO, "磁盘读写出错"},
    {ENOENT, "文件夹不存在"},
    {EEXIST, "已有同名的文件或文件夹"},
    {ENOTDIR, "路径中有一项不是文件夹"},
    {EISDIR, "这是一个文件夹"},
    {EFBIG, "文件超过允许的大小"},
    {ENAMETOOLONG, "路径过长"},
};

QString TextOf(int error)
{
    for (const Reason& reason : reasons)
        if (reason.error == error)
            return QString::fromUtf8(reason.text);
    return QStringLiteral("系统错误 %1，%2").arg(error).arg(QString::fromLocal8Bit(std::strerror(error)));
}

// The error must be read before anything else is called.
bool Fail(QString* problem, const QString& act, const QString& path, int error = errno)
{
    *problem = QStringLiteral("%1“%2”：%3").arg(act, path, TextOf(error));
    return false;
}

class Descriptor
{
public:
    Descriptor(const QString& path, int flags)
        : number(open(QFile::encodeName(path).constData(), flags | O_CLOEXEC, ownerOnly))
    {
    }
    ~Descriptor()
    {
        if (number >= 0)
            close(number);
    }
    Q_DISABLE_COPY(Descriptor)

    bool IsOpen() const { return number >= 0; }

    bool WriteAll(const QByteArray& bytes) const
    {
        const char* next = bytes.constData();
        auto rest = static_cast<size_t>(bytes.size());
        while (rest > 0) {
            const ssize_t written = write(number, next, rest);
            if (written < 0 && errno != EINTR)
                return false;
            next += written > 0 ? written : 0;
            rest -= written > 0 ? static_cast<size_t>(written) : 0;
        }
        return true;
    }

    bool Flush() const
    {
        while (fsync(number) != 0)
            if (errno != EINTR)
                return false;
        return true;
    }

private:
    const int number;
};

// A name is on the disk only when its folder is.
bool FlushFolderOf(const QString& path, QString* problem)
{
    const QString folder = QFileInfo(path).absolutePath();
    const Descriptor descriptor(folder, O_RDONLY | O_DIRECTORY);
    return (descriptor.IsOpen() && descriptor.Flush()) ||
           Fail(problem, QStringLiteral("无法写入文件夹"), folder);
}

bool WriteNew(const QString& path, const QByteArray& bytes, QString* problem)
{
    // Never through a link that somebody put there, never into a file with other rights.
    unlink(QFile::encodeName(path).constData());
    const Descriptor file(path, O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW);
    if (file.IsOpen() && file.WriteAll(bytes) && file.Flush())
        return true;
    const int error = errno;
    unlink(QFile::encodeName(path).constData());
    return Fail(problem, QStringLiteral("无法写入文件"), path, error);
}
} // namespace

bool DurableFile::CreateFolder(const QString& folder, QString* problem)
{
    const QByteArray name = QFile::encodeName(folder);
    if (!QDir().mkpath(QFileInfo(folder).absolutePath()) ||
        (mkdir(name.constData(), S_IRWXU) != 0 && errno != EEXIST))
        return Fail(problem, QStringLiteral("无法创建文件夹"), folder);
    if (!QFileInfo(folder).isDir())
        return Fail(problem, QStringLiteral("无法创建文件夹"), folder, ENOTDIR);
    if (chmod(name.constData(), S_IRWXU) != 0)
        return Fail(problem, QStringLiteral("无法设置文件夹的权限"), folder);
    return FlushFolderOf(folder, problem);
}

bool DurableFile::Write(const QString& path, const QByteArray& bytes, QString* problem)
{
    const QString unfinished = path + QStringLiteral(".tmp");
    return WriteNew(unfinished, bytes, problem) && Rename(unfinished, path, problem);
}

bool DurableFile::Rename(const QString& path, const QString& newPath, QString* problem)
{
    if (std::rename(QFile::encodeName(path).constData(), QFile::encodeName(newPath).constData()) != 0)
        return Fail(problem, QStringLiteral("无法写入文件"), newPath);
    return FlushFolderOf(newPath, problem);
}

bool DurableFile::Remove(const QString& path, QString* problem)
{
    if (unlink(QFile::encodeName(path).constData()) == 0)
        return FlushFolderOf(path, problem);
    return errno == ENOENT || Fail(problem, QStringLiteral("无法删除文件"), path);
}
