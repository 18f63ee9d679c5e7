#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

// What /proc tells about the processes of one run.
namespace RpaProcessGroup
{

struct Usage
{
    int processes = 0;
    qint64 memoryBytes = 0; // resident
};

// Words to put before a command so that it runs in a PID namespace of its own, which dies as a whole with its
// first process; empty where this system does not allow it. Found out once per process.
const QStringList& NamespaceCommand();

// Processes that carry the mark in their environment, the caller itself excepted.
QVector<qint64> FindMarked(const QByteArray& mark);

// Processes below the given one, itself included.
QVector<qint64> FindDescendants(qint64 pid);

Usage Measure(const QVector<qint64>& pids);

// SIGKILL to each; vanished ones are no error.
void KillAll(const QVector<qint64>& pids);

} // namespace RpaProcessGroup
