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
        ready = process.readLine();
        return ready.startsWith("{\"listening\":\"http");
    }

    // The port that it said it listens on.
    quint16 Port() const { return ready.mid(ready.lastIndexOf(':') + 1).split('"').first().toUShort(); }

    // Adds an author to the store of a folder that no server uses yet.
    static bool AddAuthor(const QString& folder, const QString& pin, const QByteArray& password)
    {
        PlainServer command({QStringLiteral("--data"), folder, QStringLiteral("account"),
                             QStringLiteral("add"), pin, QStringLiteral("--name"), pin,
                             QStringLiteral("--vender"), QStringLiteral("acme"), QStringLiteral("--roles"),
                             QStringLiteral("author")});
        if (!command.process.waitForStarted(waitMs))
            return false;
        command.process.write(password + '\n');
        command.process.closeWriteChannel();
        return command.ExitCode() == 0;
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
    QByteArray ready;
    QByteArray log;
};
