// SPDX-License-Identifier: Apache-2.0

#include "ProcessGroupLinux_p.h"

#include <QDir>
#include <QFile>
#include <QHash>
#include <QProcess>

#include <csignal>
#include <functional>
#include <poll.h>
#include <sys/syscall.h>
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

using ChildrenOf = std::function<QVector<qint64>(qint64)>;

// Where the kernel lists the children itself, nothing else has to be read, however much runs on the machine.
bool TellsChildren()
{
    static const bool tells = QFile::exists(QStringLiteral("/proc/self/task/%1/children").arg(getpid()));
    return tells;
}

ChildrenOf TaskChildren()
{
    return [](qint64 pid) {
        QVector<qint64> children;
        const QDir tasks(QStringLiteral("/proc/%1/task").arg(pid));
        const QStringList names = tasks.entryList(QDir::Dirs | QDir::NoDotAndDotDot);
        for (const QString& task : names) {
            QFile file(tasks.filePath(task + QStringLiteral("/children")));
            if (!file.open(QIODevice::ReadOnly))
                continue;
            const QList<QByteArray> words = file.readAll().simplified().split(' ');
            for (const QByteArray& word : words)
                if (!word.isEmpty())
                    children << word.toLongLong();
        }
        return children;
    };
}

ChildrenOf ScannedChildren()
{
    QHash<qint64, QVector<qint64>> children;
    const QVector<qint64> pids = AllPids();
    for (const qint64 pid : pids)
        children[ParentOf(pid)] << pid;
    return [children](qint64 pid) { return children.value(pid); };
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
    QStringList plain{tool, QStringLiteral("--pid"), QStringLiteral("--fork"),
                      QStringLiteral("--kill-child")};
    if (geteuid() == 0 && Works(plain))
        return plain;
    const QStringList asUser =
        plain + QStringList{QStringLiteral("--user"), QStringLiteral("--map-current-user")};
    return Works(asUser) ? asUser : QStringList();
}

} // namespace

const QStringList& ProcessGroup::NamespaceCommand()
{
    static const QStringList command = FindNamespaceCommand();
    return command;
}

QVector<qint64> ProcessGroup::FindMarked(const QByteArray& mark)
{
    QVector<qint64> found;
    const QVector<qint64> pids = AllPids();
    for (const qint64 pid : pids)
        if (pid != getpid() && ReadProc(pid, "environ").contains(mark))
            found << pid;
    return found;
}

QVector<qint64> ProcessGroup::FindDescendants(qint64 pid)
{
    const auto childrenOf = TellsChildren() ? TaskChildren() : ScannedChildren();
    QVector<qint64> found{pid};
    for (int i = 0; i < found.size(); ++i)
        found += childrenOf(found.at(i));
    return found;
}

ChildProcess::Usage ProcessGroup::Measure(const QVector<qint64>& pids)
{
    static const qint64 pageBytes = sysconf(_SC_PAGESIZE);
    ChildProcess::Usage usage;
    for (const qint64 pid : pids) {
        const QByteArray statm = ReadProc(pid, "statm");
        if (statm.isEmpty())
            continue;
        ++usage.processes;
        usage.memoryBytes += statm.split(' ').value(1).toLongLong() * pageBytes;
    }
    return usage;
}

int ProcessGroup::Watch(qint64 pid)
{
    return pid > 0 ? static_cast<int>(syscall(SYS_pidfd_open, static_cast<pid_t>(pid), 0)) : -1;
}

void ProcessGroup::WaitForEnd(int watch, int patienceMs)
{
    if (watch < 0)
        return;
    pollfd end{watch, POLLIN, 0};
    poll(&end, 1, patienceMs);
    close(watch);
}

void ProcessGroup::KillAll(const QVector<qint64>& pids)
{
    for (const qint64 pid : pids)
        kill(static_cast<pid_t>(pid), SIGKILL);
}
