// SPDX-License-Identifier: Apache-2.0

#include "PackageLayout_p.h"
#include "PackageProcess_p.h"

#include <WbSystem/CleanEnvironment.h>

namespace
{
constexpr int outputBytesAtMost = 256 * 1024;
constexpr int longestLine = 1000;

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

PackageProcess::PackageProcess(QObject* parent) : QObject(parent)
{
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.setProcessEnvironment(PipEnvironment());
    connect(&process, &QProcess::readyRead, this, &PackageProcess::TakeOutput);
    connect(
        &process, qOverload<int, QProcess::ExitStatus>(&QProcess::finished), this,
        [this](int code, QProcess::ExitStatus status) { End(status == QProcess::NormalExit && code == 0); });
    connect(
        &process, &QProcess::errorOccurred, this,
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
    process.setWorkingDirectory(workingFolder);
    process.Start(program, arguments);
    if (!IsRunning())
        return;
    process.write(input);
    process.closeWriteChannel();
}

bool PackageProcess::IsRunning() const
{
    return process.state() != QProcess::NotRunning;
}

void PackageProcess::Kill()
{
    process.disconnect(this);
    if (!IsRunning())
        return;
    process.KillAll();
    // Reaped here, or QProcess would complain; a killed process needs milliseconds.
    process.waitForFinished(1000);
}

void PackageProcess::TakeOutput()
{
    const QByteArray bytes = process.readAll();
    output += bytes.left(outputBytesAtMost - output.size());
    line += bytes;
    int end = 0;
    int start = 0;
    while ((end = line.indexOf('\n', start)) >= 0) {
        emit SigLine(QString::fromUtf8(line.mid(start, end - start)).trimmed().left(longestLine));
        start = end + 1;
    }
    line.remove(0, start);
    // A line without an end is shown as far as it may be shown.
    line.truncate(4 * longestLine);
}

void PackageProcess::End(bool ok)
{
    TakeOutput();
    emit SigEnded(ok, output);
}
