// SPDX-License-Identifier: Apache-2.0

#include "BoundProcess.h"
#include "VirtualDisplay.h"

#include <QStandardPaths>

namespace
{
constexpr int startWithinMs = 15000;

// The first line that a process writes; empty when none comes.
QByteArray ReadLine(QProcess& process)
{
    while (!process.canReadLine() && process.waitForReadyRead(startWithinMs)) {
    }
    return process.canReadLine() ? process.readLine().trimmed() : QByteArray();
}
} // namespace

VirtualDisplay::VirtualDisplay() = default;

VirtualDisplay::~VirtualDisplay()
{
    for (auto process = processes.rbegin(); process != processes.rend(); ++process) {
        (*process)->terminate();
        if (!(*process)->waitForFinished(2000)) {
            (*process)->kill();
            (*process)->waitForFinished();
        }
    }
}

bool VirtualDisplay::HasRealOne()
{
    return qEnvironmentVariableIsSet("DISPLAY") || qEnvironmentVariableIsSet("WAYLAND_DISPLAY");
}

bool VirtualDisplay::Start(int width, int height)
{
    auto server = std::make_unique<BoundProcess>();
    const QString screen = QStringLiteral("%1x%2x24").arg(width).arg(height);
    server->setStandardErrorFile(QProcess::nullDevice());
    server->start(QStringLiteral("Xvfb"),
                  {QStringLiteral("-displayfd"), QStringLiteral("1"), QStringLiteral("-screen"),
                   QStringLiteral("0"), screen, QStringLiteral("-nolisten"), QStringLiteral("tcp"),
                   QStringLiteral("-noreset")});
    if (!server->waitForStarted(startWithinMs)) {
        problem = QStringLiteral("Xvfb is not installed");
        return false;
    }
    const QByteArray number = ReadLine(*server);
    if (number.isEmpty()) {
        problem = QStringLiteral("Xvfb did not come up");
        return false;
    }
    name = QLatin1Char(':') + QString::fromLatin1(number);
    qputenv("DISPLAY", name.toLatin1());
    qunsetenv("WAYLAND_DISPLAY");
    processes.push_back(std::move(server));

    return StartWindowManager();
}

// Without a window manager windows work too, only without frames.
bool VirtualDisplay::StartWindowManager()
{
    if (QStandardPaths::findExecutable(QStringLiteral("openbox")).isEmpty())
        return true;
    auto manager = std::make_unique<BoundProcess>();
    manager->setStandardErrorFile(QProcess::nullDevice());
    // One that begins later takes the focus from the windows that are there.
    manager->start(QStringLiteral("openbox"), {QStringLiteral("--startup"), QStringLiteral("echo ready")});
    if (ReadLine(*manager).isEmpty()) {
        problem = QStringLiteral("openbox did not come up");
        return false;
    }
    processes.push_back(std::move(manager));
    return true;
}
