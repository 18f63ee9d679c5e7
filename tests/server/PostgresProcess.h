#pragma once

#include <QByteArray>
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

    QByteArray ErrorText() const { return errorText; }

private:
    bool RunAsPostgres(const QString& program, const QStringList& arguments);

    QTemporaryDir folder{QStringLiteral("/tmp/rpa-postgres-XXXXXX")};
    QByteArray errorText;
    int port = 0;
    int databases = 0;
    bool started = false;
};
