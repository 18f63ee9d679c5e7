// SPDX-License-Identifier: Apache-2.0

#include "RpaChildProcess_p.h"
#include "RpaProcessGroupLinux_p.h"

#include <WbSystem/CleanEnvironment.h>

#include <QProcess>
#include <QTimer>
#include <QUuid>

#include <csignal>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <unistd.h>

namespace
{

constexpr int WatchIntervalMs = 200;
// A killed process needs milliseconds.
constexpr int EndMs = 1000;
constexpr int EarlyOutputBytes = 8 * 1024;
// A killed group without a namespace is looked for this often before it is given up: new processes may be
// born while the old ones are killed.
constexpr int SweepsAtMost = 50;

class TiedProcess : public QProcess
{
public:
    using QProcess::QProcess;

    qint64 memoryBytes = 0;

protected:
    void setupChildProcess() override
    {
        // Between fork and exec: system calls only.
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        setsid();
        const rlimit memory{static_cast<rlim_t>(memoryBytes), static_cast<rlim_t>(memoryBytes)};
        setrlimit(RLIMIT_AS, &memory);
        const rlimit noCore{0, 0};
        setrlimit(RLIMIT_CORE, &noCore);
    }
};

} // namespace

class RpaChildProcess::Private
{
public:
    bool IsInNamespace() const { return !RpaProcessGroup::NamespaceCommand().isEmpty(); }

    QVector<qint64> FindGroup() const
    {
        return IsInNamespace() ? RpaProcessGroup::FindDescendants(process.processId())
                               : RpaProcessGroup::FindMarked(mark);
    }

    // In a namespace the kernel does it; elsewhere by hand, and again for what was born meanwhile.
    void KillGroup()
    {
        if (IsInNamespace() && insider < 0 && process.processId() > 0)
            insider = RpaProcessGroup::Watch(RpaProcessGroup::FindDescendants(process.processId()).value(1));
        if (process.state() != QProcess::NotRunning)
            process.kill();
        if (IsInNamespace())
            return;
        for (int sweep = 0; sweep < SweepsAtMost; ++sweep) {
            const QVector<qint64> left = RpaProcessGroup::FindMarked(mark);
            if (left.isEmpty())
                return;
            RpaProcessGroup::KillAll(left);
        }
    }

    TiedProcess process;
    RpaChildLimits limits;
    QTimer watch;
    QByteArray mark;
    QByteArray earlyOutput;
    int insider = -1; // the first process of the namespace, once it is being killed
    bool exited = false;
};

RpaChildProcess::RpaChildProcess(QObject* parent) : QObject(parent), d(std::make_unique<Private>())
{
    d->process.setProcessChannelMode(QProcess::MergedChannels);
    connect(&d->process, &QProcess::readyRead, this,
            [this] { d->earlyOutput = (d->earlyOutput + d->process.readAll()).left(EarlyOutputBytes); });
    connect(&d->process, qOverload<int, QProcess::ExitStatus>(&QProcess::finished), this,
            [this](int, QProcess::ExitStatus status) {
                d->watch.stop();
                d->exited = true;
                // The group may outlive its first process where there is no namespace.
                d->KillGroup();
                emit SigExited(status == QProcess::CrashExit, QString::fromUtf8(d->earlyOutput).trimmed());
            });
    connect(&d->watch, &QTimer::timeout, this, [this] {
        const RpaProcessGroup::Usage usage = RpaProcessGroup::Measure(d->FindGroup());
        QString reason;
        if (usage.memoryBytes > d->limits.memoryBytes)
            reason = QStringLiteral("流程使用的内存超过 %1 MB，已被停止").arg(d->limits.memoryBytes >> 20);
        else if (usage.processes > d->limits.processes)
            reason = QStringLiteral("流程启动的程序超过 %1 个，已被停止").arg(d->limits.processes);
        if (reason.isEmpty())
            return;
        d->watch.stop();
        d->KillGroup();
        emit SigLimitPassed(reason);
    });
}

RpaChildProcess::~RpaChildProcess()
{
    d->process.disconnect(this);
    d->watch.stop();
    if (!d->exited && d->process.state() != QProcess::NotRunning) {
        d->KillGroup();
        // Reaped here, or QProcess would complain.
        d->process.waitForFinished(EndMs);
    }
    // The namespace dies a little later than the process around it, and may still write into its folder.
    RpaProcessGroup::WaitForEnd(d->insider, EndMs);
}

void RpaChildProcess::SetLimits(const RpaChildLimits& limits)
{
    d->limits = limits;
}

bool RpaChildProcess::Start(const QString& interpreter, const QStringList& arguments,
                            const QString& workingFolder, QString* reason)
{
    const QString id = QUuid::createUuid().toString(QUuid::WithoutBraces);
    d->mark = "RPA_RUN_ID=" + id.toLatin1();
    QProcessEnvironment environment = CleanEnvironment();
    environment.insert(QStringLiteral("RPA_RUN_ID"), id);
    d->process.setProcessEnvironment(environment);
    d->process.setWorkingDirectory(workingFolder);
    d->process.memoryBytes = d->limits.memoryBytes;

    const QStringList words = RpaProcessGroup::NamespaceCommand() + QStringList{interpreter} + arguments;
    d->process.start(words.first(), words.mid(1));
    if (!d->process.waitForStarted(5000)) {
        if (reason)
            *reason = QStringLiteral("无法启动 %1：%2").arg(words.first(), d->process.errorString());
        return false;
    }
    d->process.closeWriteChannel();
    d->watch.start(WatchIntervalMs);
    return true;
}

bool RpaChildProcess::IsRunning() const
{
    return d->process.state() != QProcess::NotRunning;
}

void RpaChildProcess::Kill()
{
    d->KillGroup();
}
