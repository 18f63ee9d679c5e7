#include "PostgresProcess.h"

// Where the server is built without PostgreSQL.
PostgresProcess::~PostgresProcess() = default;

bool PostgresProcess::IsInstalled()
{
    return false;
}

bool PostgresProcess::Start()
{
    return false;
}

QString PostgresProcess::NewDatabase()
{
    return {};
}

QByteArray PostgresProcess::Output() const
{
    return QByteArrayLiteral("PostgreSQL is not offered on this system");
}
