// SPDX-License-Identifier: Apache-2.0

#include "ProgramProbe_p.h"
#include "ProgramReport_p.h"

#include <WbSystem/PythonInterpreter.h>

#include <QFile>

namespace
{
constexpr int probeDeadlineMs = 10000;
constexpr int mostOutputBytes = 1024 * 1024;
constexpr qint64 mostMemoryBytes = 512LL * 1024 * 1024;
constexpr int mostProcesses = 1;

QString Script()
{
    QFile file(QStringLiteral(":/rpa/problems/check_program.py"));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return QString::fromUtf8(file.readAll());
}
} // namespace

ProgramProbe::ProgramProbe(QObject* parent) : QObject(parent)
{
    deadline.setSingleShot(true);
    deadline.setInterval(probeDeadlineMs);
    connect(&deadline, &QTimer::timeout, this, [this] {
        if (process)
            process->KillAll(); // ends as a crash
    });
}

ProgramProbe::~ProgramProbe()
{
    GiveUp();
}

void ProgramProbe::Ask(const QString& asked, const QString& askedName)
{
    GiveUp();
    program = asked;
    processName = askedName;
    process = std::make_unique<ChildProcess>();
    process->setStandardErrorFile(QProcess::nullDevice()); // read by nobody
    process->SetLimits(mostMemoryBytes, mostProcesses);
    connect(process.get(), &QProcess::readyReadStandardOutput, this, &ProgramProbe::TakeOutput);
    connect(
        process.get(), qOverload<int, QProcess::ExitStatus>(&QProcess::finished), this,
        [this](int code, QProcess::ExitStatus status) { End(status == QProcess::NormalExit && code == 0); },
        Qt::QueuedConnection);
    connect(
        process.get(), &QProcess::errorOccurred, this,
        [this](QProcess::ProcessError error) {
            if (error == QProcess::FailedToStart)
                End(false);
        },
        Qt::QueuedConnection);
    deadline.start();
    process->Start(PythonInterpreter::Find(), {QStringLiteral("-I"), QStringLiteral("-c"), Script()});
    process->write(program.toUtf8());
    process->closeWriteChannel();
}

void ProgramProbe::GiveUp()
{
    deadline.stop();
    output.clear();
    if (!process)
        return;
    process->disconnect(this);
    process.reset(); // kills it
}

void ProgramProbe::TakeOutput()
{
    output += process->readAllStandardOutput();
    if (output.size() <= mostOutputBytes)
        return;
    output.clear();
    process->KillAll();
}

void ProgramProbe::End(bool ok)
{
    if (!process)
        return; // given up meanwhile
    TakeOutput();
    const QByteArray report = output;
    GiveUp();
    const auto problems = ok ? ProgramReport::Read(report, program, processName) : std::nullopt;
    emit SigAnswered(problems.value_or(QVector<RpaProblem>()));
}
