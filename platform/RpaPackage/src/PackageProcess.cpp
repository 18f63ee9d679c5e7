// SPDX-License-Identifier: Apache-2.0

#include "PackageLayout_p.h"
#include "PackageProcess_p.h"

#include <WbSystem/ChildProcess.h>
#include <WbSystem/CleanEnvironment.h>

namespace
{

constexpr int OutputBytesAtMost = 256 * 1024;
constexpr int LongestLine = 1000;

QProcessEnvironment PipEnvironment()
{
    QProcessEnvironment environment = CleanEnvironment();
    // The engine does not see this user's packages, so they must not count as installed.
    environment.insert(QStringLiteral("PYTHONNOUSERSITE"), QStringLiteral("1"));
    environment.insert(QStringLiteral("PYTHONUTF8"), QStringLiteral("1"));
    environment.insert(QStringLiteral("PIP_CONFIG_FILE"), PackageLayout::NullDevice());
    return environment;
}

} // namespace

class PackageProcess::Private
{
public:
    ChildProcess process;
    QByteArray output;
    QByteArray line;
};

PackageProcess::PackageProcess(QObject* parent) : QObject(parent), d(std::make_unique<Private>())
{
    d->process.setProcessChannelMode(QProcess::MergedChannels);
    d->process.setProcessEnvironment(PipEnvironment());
    connect(&d->process, &QProcess::readyRead, this, &PackageProcess::TakeOutput);
    connect(
        &d->process, qOverload<int, QProcess::ExitStatus>(&QProcess::finished), this,
        [this](int code, QProcess::ExitStatus status) { End(status == QProcess::NormalExit && code == 0); });
    connect(
        &d->process, &QProcess::errorOccurred, this,
        [this](QProcess::ProcessError error) {
            if (error == QProcess::FailedToStart)
                End(false);
        },
        Qt::QueuedConnection);
}

PackageProcess::~PackageProcess()
{
    Kill();
}

void PackageProcess::Start(const QString& program, const QStringList& arguments, const QString& workingFolder,
                           const QByteArray& input)
{
    d->process.setWorkingDirectory(workingFolder);
    d->process.Start(program, arguments);
    if (!IsRunning())
        return;
    d->process.write(input);
    d->process.closeWriteChannel();
}

bool PackageProcess::IsRunning() const
{
    return d->process.state() != QProcess::NotRunning;
}

void PackageProcess::Kill()
{
    d->process.disconnect(this);
    if (!IsRunning())
        return;
    d->process.KillAll();
    // Reaped here, or QProcess would complain; a killed process needs milliseconds.
    d->process.waitForFinished(1000);
}

void PackageProcess::TakeOutput()
{
    const QByteArray bytes = d->process.readAll();
    d->output += bytes.left(OutputBytesAtMost - d->output.size());
    d->line += bytes;
    int end = 0;
    int start = 0;
    while ((end = d->line.indexOf('\n', start)) >= 0) {
        emit SigLine(QString::fromUtf8(d->line.mid(start, end - start)).trimmed().left(LongestLine));
        start = end + 1;
    }
    d->line.remove(0, start);
    // A line without an end is shown as far as it may be shown.
    d->line.truncate(4 * LongestLine);
}

void PackageProcess::End(bool ok)
{
    TakeOutput();
    emit SigEnded(ok, d->output);
}
