// SPDX-License-Identifier: Apache-2.0

#include "RpaChildProcess_p.h"

#include <WbSystem/ChildProcess.h>

#include <QTimer>

namespace
{

constexpr int watchIntervalMs = 200;
constexpr int earlyOutputBytes = 8 * 1024;

} // namespace

class RpaChildProcess::Private
{
public:
    QString PassedLimit() const
    {
        const ChildProcess::Usage usage = process.Measure();
        if (usage.memoryBytes > limits.memoryBytes)
            return QStringLiteral("流程使用的内存超过 %1 MB，已被停止").arg(limits.memoryBytes >> 20);
        if (usage.processes > limits.processes)
            return QStringLiteral("流程启动的程序超过 %1 个，已被停止").arg(limits.processes);
        return {};
    }

    ChildProcess process;
    RpaChildLimits limits;
    QTimer watch;
    QByteArray earlyOutput;
};

RpaChildProcess::RpaChildProcess(QObject* parent) : QObject(parent), d(std::make_unique<Private>())
{
    d->process.setProcessChannelMode(QProcess::MergedChannels);
    connect(&d->process, &QProcess::readyRead, this,
            [this] { d->earlyOutput = (d->earlyOutput + d->process.readAll()).left(earlyOutputBytes); });
    connect(&d->process, qOverload<int, QProcess::ExitStatus>(&QProcess::finished), this,
            [this](int, QProcess::ExitStatus status) {
                d->watch.stop();
                emit SigExited(status == QProcess::CrashExit, QString::fromUtf8(d->earlyOutput).trimmed());
            });
    connect(&d->watch, &QTimer::timeout, this, [this] {
        const QString reason = d->PassedLimit();
        if (reason.isEmpty())
            return;
        d->watch.stop();
        d->process.KillAll();
        emit SigLimitPassed(reason);
    });
}

RpaChildProcess::~RpaChildProcess()
{
    d->process.disconnect(this);
}

void RpaChildProcess::SetLimits(const RpaChildLimits& limits)
{
    d->limits = limits;
}

bool RpaChildProcess::Start(const QString& interpreter, const QStringList& arguments,
                            const QString& workingFolder, QString* reason)
{
    d->process.SetLimits(d->limits.memoryBytes, d->limits.processes);
    d->process.setWorkingDirectory(workingFolder);
    d->process.Start(interpreter, arguments);
    if (!d->process.waitForStarted(5000)) {
        if (reason)
            *reason = QStringLiteral("无法启动 %1：%2").arg(interpreter, d->process.errorString());
        return false;
    }
    d->process.closeWriteChannel();
    d->watch.start(watchIntervalMs);
    return true;
}

bool RpaChildProcess::IsRunning() const
{
    return d->process.state() != QProcess::NotRunning;
}

void RpaChildProcess::Kill()
{
    d->process.KillAll();
}
