// SPDX-License-Identifier: Apache-2.0

#include "PostgresProcess.h"

// Where the server is built without PostgreSQL.
PostgresProcess::~PostgresProcess() = default;

bool PostgresProcess::IsOffered()
{
    return false;
}

bool PostgresProcess::Start()
{
    return false;
}

QString PostgresProcess::NewDatabase(const QString&)
{
    return {};
}

QString PostgresProcess::NewDatabaseForPrograms(const QString&)
{
    return {};
}

const int PostgresProcess::pauseSignal = 0;
const int PostgresProcess::resumeSignal = 0;

void PostgresProcess::Signal(int) {}

QByteArray PostgresProcess::Output() const
{
    return QByteArrayLiteral("PostgreSQL is not offered on this system");
}
