#include "RpaProcessGroupLinux_p.h"

#include <QDir>
#include <QFile>
#include <QHash>
#include <QProcess>

#include <csignal>
#include <unistd.h>

namespace
{

QByteArray ReadProc(qint64 pid, const char* name)
{
    QFile file(QStringLiteral("/proc/%1/%2").arg(pid).arg(QLatin1String(name)));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QVector<qint64> AllPids()
{
    QVector<qint64> pids;
    const QStringList names = QDir(QStringLiteral("/proc")).entryList(QDir::Dirs);
    for (const QString& name : names) {
        bool isNumber = false;
        const qint64 pid = name.toLongLong(&isNumber);
        if (isNumber)
            pids << pid;
    }
    return pids;
}

qint64 ParentOf(qint64 pid)
{
    // "pid (name) state ppid …"; the name may hold blanks and brackets.
    const QByteArray stat = ReadProc(pid, "stat");
    return stat.mid(stat.lastIndexOf(')') + 2).split(' ').value(1).toLongLong();
}

bool Works(const QStringList& words)
{
    QStringList arguments = words.mid(1);
    arguments << QStringLiteral("true");
    return QProcess::execute(words.first(), arguments) == 0;
}

QStringList FindNamespaceCommand()
{
    const QString tool = QStringLiteral("/usr/bin/unshare");
    if (!QFile::exists(tool))
        return {};
    const QStringList plain{tool, QStringLiteral("--pid"), QStringLiteral("--fork"),
                            QStringLiteral("--kill-child")};
    if (geteuid() == 0 && Works(plain))
        return plain;
    const QStringList asUser =
        plain + QStringList{QStringLiteral("--user"), QStringLiteral("--map-current-user")};
    return Works(asUser) ? asUser : QStringList();
}

} // namespace

const QStringList& RpaProcessGroup::NamespaceCommand()
{
    static const QStringList command = FindNamespaceCommand();
    return command;
}

QVector<qint64> RpaProcessGroup::FindMarked(const QByteArray& mark)
{
    QVector<qint64> found;
    const QVector<qint64> pids = AllPids();
    for (const qint64 pid : pids) {
        if (pid != getpid() && ReadProc(pid, "environ").contains(mark))
            found << pid;
    }
    return found;
}

QVector<qint64> RpaProcessGroup::FindDescendants(qint64 pid)
{
    QHash<qint64, QVector<qint64>> children;
    const QVector<qint64> pids = AllPids();
    for (const qint64 other : pids)
        children[ParentOf(other)] << other;
    QVector<qint64> found{pid};
    for (int i = 0; i < found.size(); ++i)
        found += children.value(found.at(i));
    return found;
}

RpaProcessGroup::Usage RpaProcessGroup::Measure(const QVector<qint64>& pids)
{
    static const qint64 pageBytes = sysconf(_SC_PAGESIZE);
    Usage usage;
    for (const qint64 pid : pids) {
        const QByteArray statm = ReadProc(pid, "statm");
        if (statm.isEmpty())
            continue;
        ++usage.processes;
        usage.memoryBytes += statm.split(' ').value(1).toLongLong() * pageBytes;
    }
    return usage;
}

void RpaProcessGroup::KillAll(const QVector<qint64>& pids)
{
    for (const qint64 pid : pids)
        kill(static_cast<pid_t>(pid), SIGKILL);
}
