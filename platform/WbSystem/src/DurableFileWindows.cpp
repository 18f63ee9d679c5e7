// SPDX-License-Identifier: Apache-2.0

#include <WbSystem/DurableFile.h>

#include <QDir>
#include <QFileInfo>

#include <windows.h>
#include <algorithm>

namespace
{
struct Reason
{
    DWORD error;
    const char* text;
};

constexpr Reason reasons[] = {
    {ERROR_DISK_FULL, "磁盘空间不足"},
    {ERROR_HANDLE_DISK_FULL, "磁盘空间不足"},
    {ERROR_ACCESS_DENIED, "没有写入权限"},
    {ERROR_WRITE_PROTECT, "磁盘是只读的"},
    {ERROR_PATH_NOT_FOUND, "文件夹不存在"},
    {ERROR_FILE_NOT_FOUND, "文件不存在"},
    {ERROR_SHARING_VIOLATION, "文件正被其他程序使用"},
    {ERROR_DIRECTORY, "路径中有一项不是文件夹"},
};

QString TextOf(DWORD error)
{
    for (const Reason& reason : reasons)
        if (reason.error == error)
            return QString::fromUtf8(reason.text);
    return QStringLiteral("系统错误 %1，%2").arg(error).arg(qt_error_string(static_cast<int>(error)));
}

// The error must be read before anything else is called.
bool Fail(QString* problem, const QString& act, const QString& path, DWORD error = GetLastError())
{
    *problem = QStringLiteral("%1“%2”：%3").arg(act, QDir::toNativeSeparators(path), TextOf(error));
    return false;
}

// Long paths included.
std::wstring NativeName(const QString& path)
{
    const QString full = QDir::toNativeSeparators(QFileInfo(path).absoluteFilePath());
    const bool isShare = full.startsWith(QLatin1String("\\\\"));
    return (isShare ? full : QStringLiteral("\\\\?\\") + full).toStdWString();
}

class NewFile
{
public:
    explicit NewFile(const QString& path)
        : handle(CreateFileW(NativeName(path).c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                             FILE_ATTRIBUTE_NORMAL, nullptr))
    {
    }
    ~NewFile()
    {
        if (handle != INVALID_HANDLE_VALUE)
            CloseHandle(handle);
    }
    Q_DISABLE_COPY(NewFile)

    bool WriteAll(const QByteArray& bytes) const
    {
        constexpr int largestPart = 1 << 20;
        for (int at = 0; at < bytes.size();) {
            DWORD written = 0;
            const int part = std::min(largestPart, bytes.size() - at);
            if (!WriteFile(handle, bytes.constData() + at, static_cast<DWORD>(part), &written, nullptr))
                return false;
            at += static_cast<int>(written);
        }
        return true;
    }

    bool IsOpen() const { return handle != INVALID_HANDLE_VALUE; }
    bool Flush() const { return FlushFileBuffers(handle) != 0; }

private:
    const HANDLE handle;
};

bool WriteNew(const QString& path, const QByteArray& bytes, QString* problem)
{
    DWORD error = ERROR_SUCCESS;
    {
        const NewFile file(path);
        if (file.IsOpen() && file.WriteAll(bytes) && file.Flush())
            return true;
        error = GetLastError();
    }
    DeleteFileW(NativeName(path).c_str());
    return Fail(problem, QStringLiteral("无法写入文件"), path, error);
}
} // namespace

bool DurableFile::CreateFolder(const QString& folder, QString* problem)
{
    if (QDir().mkpath(folder))
        return true;
    const DWORD error = QFileInfo::exists(folder) ? ERROR_DIRECTORY : GetLastError();
    return Fail(problem, QStringLiteral("无法创建文件夹"), folder, error);
}

bool DurableFile::Write(const QString& path, const QByteArray& bytes, QString* problem)
{
    const QString unfinished = path + QStringLiteral(".tmp");
    return WriteNew(unfinished, bytes, problem) && Rename(unfinished, path, problem);
}

bool DurableFile::Rename(const QString& path, const QString& newPath, QString* problem)
{
    // There is no way to flush a folder; written through, the move is on the disk when the call returns.
    return MoveFileExW(NativeName(path).c_str(), NativeName(newPath).c_str(),
                       MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) ||
           Fail(problem, QStringLiteral("无法写入文件"), newPath);
}

bool DurableFile::Remove(const QString& path, QString* problem)
{
    if (DeleteFileW(NativeName(path).c_str()))
        return true;
    const DWORD error = GetLastError();
    return error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND ||
           Fail(problem, QStringLiteral("无法删除文件"), path, error);
}
