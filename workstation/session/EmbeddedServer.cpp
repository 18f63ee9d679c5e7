// SPDX-License-Identifier: Apache-2.0

#include "EmbeddedServer.h"

#include <QDir>
#include <QFileInfo>
#include <QHostAddress>
#include <QJsonDocument>
#include <QJsonObject>

#include <array>
#include <chrono>

using namespace std::chrono_literals;

namespace
{
constexpr auto readyWithin = 20s;
constexpr auto stopWithin = 5s;
// A server that lives this long has recovered: earlier deaths no longer count.
constexpr auto calmAfter = 60s;
constexpr std::array<std::chrono::milliseconds, 5> pauses{250ms, 500ms, 1s, 2s, 4s};
constexpr int longestReadyLine = 4096;
constexpr qint64 largestLog = 1024 * 1024;

QUrl AddressIn(const QByteArray& line)
{
    const QUrl url(QJsonDocument::fromJson(line).object().value(QStringLiteral("listening")).toString());
    // Tokens go to this address: a line that names another machine is not from our server.
    const bool own =
        url.scheme() == QLatin1String("http") && QHostAddress(url.host()).isLoopback() && url.port() > 0;
    return own ? url : QUrl();
}
} // namespace

EmbeddedServer::EmbeddedServer(const QString& programFile, const QString& data, const MakeHandshake& make,
                               QObject* parent)
    : QObject(parent), program(programFile), dataDir(data), makeHandshake(make)
{
    readyTimer.setSingleShot(true);
    restartTimer.setSingleShot(true);
    calmTimer.setSingleShot(true);
    connect(&process, &QProcess::readyReadStandardOutput, this, &EmbeddedServer::SlotReadReadyLine);
    connect(&process, QOverload<int, QProcess::ExitStatus>::of(&QProcess::finished), this,
            &EmbeddedServer::SlotFinished);
    connect(&process, &QProcess::errorOccurred, this, &EmbeddedServer::SlotErrorOccurred);
    connect(&readyTimer, &QTimer::timeout, &process, &QProcess::kill);
    connect(&restartTimer, &QTimer::timeout, this, &EmbeddedServer::Launch);
    connect(&calmTimer, &QTimer::timeout, this, [this] { deaths = 0; });
}

EmbeddedServer::~EmbeddedServer()
{
    Stop();
}

void EmbeddedServer::Start()
{
    if (state == State::Starting || state == State::Ready)
        return;
    deaths = 0;
    Launch();
}

void EmbeddedServer::Launch()
{
    restartTimer.stop();
    problem.clear();
    SetState(State::Starting);
    QDir().mkpath(dataDir);
    const QString log = dataDir + QStringLiteral("/server.log");
    if (QFileInfo(log).size() > largestLog) {
        QFile::remove(log + QStringLiteral(".1"));
        QFile::rename(log, log + QStringLiteral(".1"));
    }
    process.setStandardErrorFile(log, QIODevice::Append);
    readyTimer.start(readyWithin);
    process.start(program, {QStringLiteral("--embedded"), QStringLiteral("--data"), dataDir});
    process.write(makeHandshake());
}

void EmbeddedServer::Stop()
{
    readyTimer.stop();
    restartTimer.stop();
    calmTimer.stop();
    SetState(State::Stopped);
    if (process.state() == QProcess::NotRunning)
        return;
    process.closeWriteChannel();
    if (!process.waitForFinished(int(std::chrono::milliseconds(stopWithin).count()))) {
        process.kill();
        process.waitForFinished();
    }
}

void EmbeddedServer::SlotReadReadyLine()
{
    // After the ready line nothing is expected; what comes is read away so that it does not pile up.
    if (state != State::Starting) {
        process.readAllStandardOutput();
        return;
    }
    process.setReadChannel(QProcess::StandardOutput);
    if (!process.canReadLine() && process.bytesAvailable() < longestReadyLine)
        return;
    address = AddressIn(process.readLine(longestReadyLine));
    readyTimer.stop();
    if (address.isEmpty()) {
        problem = QStringLiteral("版本服务的应答无法识别");
        process.kill();
        return;
    }
    calmTimer.start(calmAfter);
    SetState(State::Ready);
}

void EmbeddedServer::SlotErrorOccurred(QProcess::ProcessError error)
{
    // Every other error is followed by finished().
    if (error == QProcess::FailedToStart) {
        readyTimer.stop();
        problem = QStringLiteral("无法启动版本服务：%1").arg(program);
        SetState(State::Failed);
    }
}

void EmbeddedServer::SlotFinished()
{
    readyTimer.stop();
    calmTimer.stop();
    if (state == State::Starting || state == State::Ready)
        Died(problem.isEmpty() ? QStringLiteral("版本服务意外停止") : problem);
}

void EmbeddedServer::Died(const QString& reason)
{
    problem = reason;
    if (deaths == int(pauses.size())) {
        SetState(State::Failed);
        return;
    }
    restartTimer.start(pauses.at(size_t(deaths++)));
    SetState(State::Waiting);
    emit SigDied();
}

void EmbeddedServer::SetState(State value)
{
    if (value != State::Ready)
        address.clear();
    if (state != value) {
        state = value;
        emit SigStateChanged(value);
    }
}
