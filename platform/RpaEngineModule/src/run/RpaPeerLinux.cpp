#include "RpaPeer_p.h"

#include <QLocalSocket>

#include <sys/socket.h>

qint64 PeerPid(const QLocalSocket& socket)
{
    ucred credentials{};
    socklen_t size = sizeof credentials;
    const int descriptor = static_cast<int>(socket.socketDescriptor());
    if (getsockopt(descriptor, SOL_SOCKET, SO_PEERCRED, &credentials, &size) != 0)
        return 0;
    return credentials.pid;
}
