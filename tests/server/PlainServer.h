// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QElapsedTimer>
#include <QProcess>
#include <QProcessEnvironment>
#include <QString>
#include <QStringList>

#include <map>

// The server as an administrator runs it.
class PlainServer
{
public:
    static constexpr int waitMs = 20000;
    using Environment = std::map<QString, QString>;

    // Its log goes to `logFile` when one is given.
    explicit PlainServer(const QStringList& arguments, const Environment& variables = {},
                         const QString& logFile = {})
        : PlainServer(QStringLiteral(RPA_VERSION_SERVER_FILE), arguments, variables, logFile)
    {
    }
    // By way of another program, which gets the arguments.
    PlainServer(const QString& program, const QStringList& arguments, const Environment& variables = {},
                const QString& logFile = {})
    {
        if (!logFile.isEmpty())
            process.setStandardErrorFile(logFile);
        auto environment = QProcessEnvironment::systemEnvironment();
        for (const auto& [name, value] : variables)
            environment.insert(name, value);
        process.setProcessEnvironment(environment);
        process.start(program, arguments);
        process.setReadChannel(QProcess::StandardOutput);
    }
    ~PlainServer()
    {
        process.kill();
        process.waitForFinished(waitMs);
    }

    // A server of this store on a free port.
    static QStringList ServingArguments(const QString& store)
    {
        return {QStringLiteral("--store"), store, QStringLiteral("--listen"), QStringLiteral("127.0.0.1:0")};
    }

    // Runs a command to its end with this standard input; its exit code.
    static int RunCommand(const QStringList& arguments, const QByteArray& input = {},
                          QByteArray* said = nullptr)
    {
        PlainServer command(arguments);
        command.process.write(input);
        command.process.closeWriteChannel();
        const int code = command.ExitCode();
        if (said)
            *said = command.process.readAllStandardOutput() + command.Log();
        return code;
    }

    bool WaitUntilReady()
    {
        while (!process.canReadLine())
            if (!process.waitForReadyRead(waitMs))
                return false;
        ready = process.readLine();
        return ready.startsWith(R"({"listening":"http)");
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
