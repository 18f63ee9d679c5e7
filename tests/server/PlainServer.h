#pragma once

#include <QByteArray>
#include <QProcess>
#include <QString>
#include <QStringList>

// The server as an administrator runs it.
class PlainServer
{
public:
    static constexpr int waitMs = 20000;

    explicit PlainServer(const QStringList& arguments)
    {
        process.start(QStringLiteral(RPA_VERSION_SERVER_FILE), arguments);
        process.setReadChannel(QProcess::StandardOutput);
    }
    ~PlainServer()
    {
        process.kill();
        process.waitForFinished(waitMs);
    }

    bool WaitUntilReady()
    {
        while (!process.canReadLine()) {
            if (!process.waitForReadyRead(waitMs))
                return false;
        }
        return process.readLine().startsWith("{\"listening\":\"http://");
    }

    int ExitCode()
    {
        const bool ended = process.state() == QProcess::NotRunning || process.waitForFinished(waitMs);
        return ended && process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    }

    // All that it has said so far.
    QByteArray Log()
    {
        log += process.readAllStandardError();
        return log;
    }

    QProcess process;

private:
    QByteArray log;
};
