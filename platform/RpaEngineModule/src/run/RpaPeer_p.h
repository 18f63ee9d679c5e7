#pragma once

#include <QtGlobal>

class QLocalSocket;

// Process id of the other end of a connected local socket; 0 when the system does not tell.
qint64 PeerPid(const QLocalSocket& socket);
