// SPDX-License-Identifier: Apache-2.0

#include "RpaRunSocket_p.h"

#include <sys/socket.h>

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

// Past Qt's buffer, whose notifier would wake the event loop twice for every frame. What the system does not
// take, and whatever went wrong, goes the usual way.
void RpaRunSockets::SendAtOnce(RpaRunSocket& socket, const QByteArray& bytes)
{
    ssize_t sent = 0;
    if (socket.bytesToWrite() == 0) {
        const int descriptor = static_cast<int>(socket.socketDescriptor());
        sent = ::send(descriptor, bytes.constData(), static_cast<size_t>(bytes.size()),
                      MSG_DONTWAIT | MSG_NOSIGNAL);
    }
    if (sent >= bytes.size())
        return;
    socket.write(sent > 0 ? bytes.mid(static_cast<int>(sent)) : bytes);
    socket.flush();
}
