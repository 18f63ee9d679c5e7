// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <WbSystem/WbSystemExport.h>

#include <QProcess>

#include <memory>

// A child process that takes whatever it started with it: when it ends, when KillAll() is called, when this
// object goes, and when this program ends, however it ends. On Windows it is born into a job object that no
// process leaves, with its three standard handles and nothing else; on Linux into a PID namespace of its own,
// or, where the system allows none, with a mark in its environment by which its processes are found (there, when
// this program is killed, the child alone is sure to go with it).
//
// Used like QProcess, but for Start(). Its environment is CleanEnvironment() unless another is set before.
// The thread that starts it must live as long as the child.
class WBSYSTEM_EXPORT ChildProcess : public QProcess
{
    Q_OBJECT

public:
    // Of the child and everything it started.
    struct Usage
    {
        int processes = 0;
        qint64 memoryBytes = 0; // on Linux resident now, on Windows the most that was ever committed
    };

    // Does not start anything yet.
    explicit ChildProcess(QObject* parent = nullptr);
    // Kills all, and waits for their end for a moment.
    ~ChildProcess() override;

    // Bounds that the system keeps by itself; an allocation beyond memoryBytes fails. On Linux they count for
    // each process and only the memory; on Windows for all together, and a little wider, so that a caller who
    // measures sees a bound passed in small steps. None when it is not called. Before Start().
    void SetLimits(qint64 memoryBytes, int processes);

    // Instead of start(): a program that does not exist, or a child that cannot be kept together, is a failed
    // start.
    void Start(const QString& program, const QStringList& arguments);

    // What the child and all that it started use.
    Usage Measure() const;

    // Ends the child and everything it started; finished() tells it as a crash.
    void KillAll();

protected:
    // Between fork and exec; Linux only.
    void setupChildProcess() override;

private:
    class Private;
    const std::unique_ptr<Private> d;
};
