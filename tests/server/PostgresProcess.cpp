#include "PostgresProcess.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTcpServer>

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

bool PostgresProcess::IsInstalled()
{
    return !ProgramFolder().isEmpty();
}

// PostgreSQL refuses to run as root.
bool PostgresProcess::RunAsPostgres(const QString& program, const QStringList& arguments)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.setStandardOutputFile(folder.filePath(QStringLiteral("output")), QIODevice::Append);
    if (::geteuid() == 0)
        process.start(QStringLiteral("setpriv"),
                      QStringList{QStringLiteral("--reuid=postgres"), QStringLiteral("--regid=postgres"),
                                  QStringLiteral("--init-groups"), program} +
                          arguments);
    else
        process.start(program, arguments);
    if (process.waitForFinished(60000) && process.exitCode() == 0)
        return true;
    QFile output(folder.filePath(QStringLiteral("output")));
    errorText = output.open(QIODevice::ReadOnly) ? output.readAll() : process.errorString().toUtf8();
    return false;
}

bool PostgresProcess::Start()
{
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
    if (!RunAsPostgres(ProgramFolder() + QStringLiteral("initdb"),
                       {QStringLiteral("-D"), data, QStringLiteral("-U"), QStringLiteral("app"),
                        QStringLiteral("-A"), QStringLiteral("scram-sha-256"),
                        QStringLiteral("--pwfile=") + passwordFile.fileName(), QStringLiteral("-E"),
                        QStringLiteral("UTF8"), QStringLiteral("--locale=C.UTF-8")}))
        return false;
    port = FreePort();
    const QString options =
        QStringLiteral("-p %1 -c fsync=off -c listen_addresses=127.0.0.1 -c unix_socket_directories=%2")
            .arg(port)
            .arg(work);
    started = RunAsPostgres(ProgramFolder() + QStringLiteral("pg_ctl"),
                            {QStringLiteral("-D"), data, QStringLiteral("-w"), QStringLiteral("-l"),
                             work + QStringLiteral("/log"), QStringLiteral("-o"), options,
                             QStringLiteral("start")});
    return started;
}

PostgresProcess::~PostgresProcess()
{
    if (started)
        RunAsPostgres(ProgramFolder() + QStringLiteral("pg_ctl"),
                      {QStringLiteral("-D"), folder.filePath(QStringLiteral("work/data")),
                       QStringLiteral("-m"), QStringLiteral("immediate"), QStringLiteral("-w"),
                       QStringLiteral("stop")});
}

QString PostgresProcess::NewDatabase()
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
        QSqlQuery(database).exec(QStringLiteral("CREATE DATABASE ") + name);
    }
    QSqlDatabase::removeDatabase(QStringLiteral("create"));
    return QStringLiteral("postgresql://app:%1@127.0.0.1:%2/%3").arg(password).arg(port).arg(name);
}
