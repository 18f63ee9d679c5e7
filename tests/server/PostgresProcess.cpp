// SPDX-License-Identifier: Apache-2.0

#include "PostgresProcess.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTcpServer>
#include <QUrl>

#include <csignal>
#include <unistd.h>

namespace
{
const QString password = QStringLiteral("only-for-this-test");

QString ProgramFolder()
{
    const QDir versions(QStringLiteral("/usr/lib/postgresql"));
    for (const QString& version :
         versions.entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name | QDir::Reversed)) {
        const QString folder = versions.filePath(version) + QStringLiteral("/bin/");
        if (QFileInfo::exists(folder + QStringLiteral("initdb")))
            return folder;
    }
    return {};
}

int FreePort()
{
    QTcpServer probe;
    return probe.listen(QHostAddress::LocalHost) ? probe.serverPort() : 0;
}
} // namespace

bool PostgresProcess::IsOffered()
{
    return true;
}

// PostgreSQL refuses to run as root, and must not outlive a test that crashes.
void PostgresProcess::RunAsPostgres(QProcess& process, const QString& program, const QStringList& arguments)
{
    QStringList all{QStringLiteral("--pdeathsig=QUIT")};
    if (::geteuid() == 0)
        all << QStringLiteral("--reuid=postgres") << QStringLiteral("--regid=postgres")
            << QStringLiteral("--init-groups");
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.setStandardOutputFile(folder.filePath(QStringLiteral("output")), QIODevice::Append);
    process.start(QStringLiteral("setpriv"), all + QStringList{program} + arguments);
}

QByteArray PostgresProcess::Output() const
{
    QFile output(folder.filePath(QStringLiteral("output")));
    if (ProgramFolder().isEmpty())
        return QByteArrayLiteral("PostgreSQL is not installed (tools/setup.sh test brings it)");
    return output.open(QIODevice::ReadOnly) ? output.readAll() : QByteArray();
}

bool PostgresProcess::Start()
{
    if (ProgramFolder().isEmpty())
        return false;
    // Its files belong to another user, who must be able to come here.
    const QString work = folder.filePath(QStringLiteral("work"));
    QDir().mkpath(work);
    QFile passwordFile(folder.filePath(QStringLiteral("password")));
    if (!passwordFile.open(QIODevice::WriteOnly) || passwordFile.write(password.toUtf8()) < 0)
        return false;
    passwordFile.close();
    if (::geteuid() == 0)
        QProcess::execute(QStringLiteral("chown"),
                          {QStringLiteral("-R"), QStringLiteral("postgres"), folder.path()});
    const QString data = work + QStringLiteral("/data");
    QProcess create;
    RunAsPostgres(create, ProgramFolder() + QStringLiteral("initdb"),
                  {QStringLiteral("-D"), data, QStringLiteral("-U"), QStringLiteral("app"),
                   QStringLiteral("-A"), QStringLiteral("scram-sha-256"),
                   QStringLiteral("--pwfile=") + passwordFile.fileName(), QStringLiteral("-E"),
                   QStringLiteral("UTF8"), QStringLiteral("--locale=C.UTF-8")});
    if (!create.waitForFinished(60000) || create.exitCode() != 0)
        return false;
    port = FreePort();
    // Durability is not what is tried here, so nothing waits for the disk.
    RunAsPostgres(server, ProgramFolder() + QStringLiteral("postgres"),
                  {QStringLiteral("-D"), data, QStringLiteral("-p"), QString::number(port),
                   QStringLiteral("-c"), QStringLiteral("listen_addresses=127.0.0.1"), QStringLiteral("-c"),
                   QStringLiteral("unix_socket_directories=") + work, QStringLiteral("-c"),
                   QStringLiteral("fsync=off")});
    return WaitUntilReady();
}

bool PostgresProcess::WaitUntilReady()
{
    QElapsedTimer elapsed;
    elapsed.start();
    while (elapsed.elapsed() < 30000 && !server.waitForFinished(50))
        if (Output().contains("ready to accept connections"))
            return true;
    return false;
}

const int PostgresProcess::pauseSignal = SIGSTOP;
const int PostgresProcess::resumeSignal = SIGCONT;

// The backends have sessions of their own, so they are not reached as a group.
void PostgresProcess::Signal(int signal)
{
    ::kill(static_cast<pid_t>(server.processId()), signal);
    QFile children(QStringLiteral("/proc/%1/task/%1/children").arg(server.processId()));
    if (!children.open(QIODevice::ReadOnly))
        return;
    const auto pids = children.readAll().simplified().split(' ');
    for (const QByteArray& pid : pids)
        if (const int number = pid.toInt())
            ::kill(static_cast<pid_t>(number), signal);
}

PostgresProcess::~PostgresProcess()
{
    if (server.state() == QProcess::NotRunning)
        return;
    Resume();
    ::kill(static_cast<pid_t>(server.processId()), SIGQUIT);
    server.waitForFinished();
}

QString PostgresProcess::NewDatabase(const QString& keptIn)
{
    const QString name = QStringLiteral("test%1").arg(++databases);
    {
        QSqlDatabase database = QSqlDatabase::addDatabase(QStringLiteral("QPSQL"), QStringLiteral("create"));
        database.setHostName(QStringLiteral("127.0.0.1"));
        database.setPort(port);
        database.setUserName(QStringLiteral("app"));
        database.setPassword(password);
        database.setDatabaseName(QStringLiteral("postgres"));
        database.open();
        QSqlQuery query(database);
        if (!keptIn.isEmpty()) {
            QProcess::execute(QStringLiteral("chown"), {QStringLiteral("postgres"), keptIn});
            query.exec(QStringLiteral("CREATE TABLESPACE %1 LOCATION '%2'").arg(name, keptIn));
        }
        query.exec(QStringLiteral("CREATE DATABASE ") + name +
                   (keptIn.isEmpty() ? QString() : QStringLiteral(" TABLESPACE ") + name));
    }
    QSqlDatabase::removeDatabase(QStringLiteral("create"));
    return QStringLiteral("postgresql://app:%1@127.0.0.1:%2/%3").arg(password).arg(port).arg(name);
}

QString PostgresProcess::NewDatabaseForPrograms(const QString& keptIn)
{
    QUrl address(NewDatabase(keptIn));
    qputenv("PGPASSWORD", address.password().toUtf8());
    address.setPassword({});
    return address.toString();
}
