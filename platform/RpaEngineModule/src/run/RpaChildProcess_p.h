// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QObject>
#include <QString>

#include <memory>

struct RpaChildLimits
{
    qint64 memoryBytes = qint64(2) * 1024 * 1024 * 1024; // of all processes of the run together
    int processes = 256;
};

// The Python child of one run together with everything it starts: a group that is watched and killed as a
// whole.
class RpaChildProcess : public QObject
{
    Q_OBJECT

public:
    explicit RpaChildProcess(QObject* parent = nullptr);
    // Kills whatever is left.
    ~RpaChildProcess() override;

    void SetLimits(const RpaChildLimits& limits);

    // False, with a reason in Chinese, when the interpreter cannot be started. workingFolder is made current.
    bool Start(const QString& interpreter, const QStringList& arguments, const QString& workingFolder,
               QString* reason);

    bool IsRunning() const;

    // Kills the interpreter and every process that descends from it; none is left when it returns or a moment
    // later. SigExited follows.
    void Kill();

signals:
    // Once; crashed: it did not end by itself. output: what it wrote before its channel was up, for the log.
    void SigExited(bool crashed, const QString& output);
    // A limit was passed; the reason is for the user. The group has been killed.
    void SigLimitPassed(const QString& reason);

private:
    class Private;
    const std::unique_ptr<Private> d;
};
