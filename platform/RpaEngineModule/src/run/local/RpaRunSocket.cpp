#include "RpaRunSocket_p.h"

bool RpaRunSockets::Listen(RpaRunServer& server, const QString& folder)
{
    server.setSocketOptions(QLocalServer::UserAccessOption);
    return server.listen(folder + QStringLiteral("/run.socket"));
}

QString RpaRunSockets::GetAddress(const RpaRunServer& server)
{
    return QStringLiteral("local:") + server.fullServerName();
}

void RpaRunSockets::Prepare(RpaRunSocket&)
{
    // Nothing holds a byte back here.
}
