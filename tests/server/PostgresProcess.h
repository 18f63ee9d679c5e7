// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "TestFolder.h"

#include <QByteArray>
#include <QProcess>
#include <QString>

// A PostgreSQL server of its own for one test program: a fresh cluster in a temporary folder, a free port of
// 127.0.0.1.
class PostgresProcess
{
public:
    ~PostgresProcess(); // stops it

    // Whether the server can use PostgreSQL on this system; whether it is installed shows at the start.
    static bool IsOffered();

    bool Start();

    // "postgresql://…" of a database with nothing in it; kept in this folder when one is given.
    QString NewDatabase(const QString& keptIn = {});

    // The same without its password, as programs take it: that is put into the environment of this process.
    QString NewDatabaseForPrograms(const QString& keptIn = {});

    // Stops every process of it, as a machine that hangs would; connections stay open and nothing answers.
    void Pause() { Signal(pauseSignal); }
    void Resume() { Signal(resumeSignal); }

    QByteArray ErrorText() const { return Output(); }

private:
    void RunAsPostgres(QProcess& process, const QString& program, const QStringList& arguments);
    static const int pauseSignal;
    static const int resumeSignal;

    void Signal(int signal);
    QByteArray Output() const;
    bool WaitUntilReady();

    TestFolder folder{QStringLiteral("/tmp/rpa-postgres-XXXXXX")};
    QProcess server;
    int port = 0;
    int databases = 0;
};
