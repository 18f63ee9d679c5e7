#pragma once

#include <QByteArray>
#include <QProcess>
#include <QString>
#include <QTemporaryDir>

// A PostgreSQL server of its own for one test program: a fresh cluster in a temporary folder, a free port of
// 127.0.0.1.
class PostgresProcess
{
public:
    ~PostgresProcess(); // stops it

    // True where PostgreSQL's programs are installed.
    static bool IsInstalled();

    bool Start();

    // "postgresql://…" of a database with nothing in it.
    QString NewDatabase();

    QByteArray ErrorText() const { return Output(); }

private:
    void RunAsPostgres(QProcess& process, const QString& program, const QStringList& arguments);
    QByteArray Output() const;
    bool WaitUntilReady();

    QTemporaryDir folder{QStringLiteral("/tmp/rpa-postgres-XXXXXX")};
    QProcess server;
    int port = 0;
    int databases = 0;
};
