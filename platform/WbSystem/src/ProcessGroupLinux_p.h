// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <WbSystem/ChildProcess.h>

#include <QString>
#include <QStringList>
#include <QVector>

// What /proc tells about a child and what it started.
namespace ProcessGroup
{

// Words to put before a command so that it runs in a PID namespace of its own, which dies as a whole with its
// first process; empty where this system does not allow it. Found out once per process.
const QStringList& NamespaceCommand();

// Processes that carry the mark in their environment, the caller itself excepted.
QVector<qint64> FindMarked(const QByteArray& mark);

// Processes below the given one, itself included.
QVector<qint64> FindDescendants(qint64 pid);

ChildProcess::Usage Measure(const QVector<qint64>& pids);

// Something to wait for the end of a process with, though it is not our child; -1 when it has ended or the
// system knows no such thing.
int Watch(qint64 pid);
// Until the process has ended, at most that long. The watch is used up; -1 is over at once.
void WaitForEnd(int watch, int patienceMs);

// SIGKILL to each; vanished ones are no error.
void KillAll(const QVector<qint64>& pids);

} // namespace ProcessGroup
