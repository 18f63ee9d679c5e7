// SPDX-License-Identifier: Apache-2.0

#include "RpaRunSocket_p.h"

#include <QHostAddress>
#include <QNetworkProxy>

// Every program of this machine can connect here, other users' included, so the token alone decides who is
// let in. Whose process the other end is would be no better witness: programs that guard a machine relay
// local connections through processes of their own.

bool RpaRunSockets::Listen(RpaRunServer& server, const QString&)
{
    // A proxy of the application would have the server listen elsewhere.
    server.setProxy(QNetworkProxy::NoProxy);
    return server.listen(QHostAddress::LocalHost, 0);
}

QString RpaRunSockets::GetAddress(const RpaRunServer& server)
{
    return QStringLiteral("tcp:%1").arg(server.serverPort());
}

void RpaRunSockets::Prepare(RpaRunSocket& socket)
{
    // An answer is a small packet, and the program stands still until it is there.
    socket.setSocketOption(QAbstractSocket::LowDelayOption, 1);
}

void RpaRunSockets::SendAtOnce(RpaRunSocket& socket, const QByteArray& bytes)
{
    socket.write(bytes);
    socket.flush();
}
