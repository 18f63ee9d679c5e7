// SPDX-License-Identifier: Apache-2.0

#pragma once

// The folder "local" or "tcp" is searched for it, chosen by CMake.
#include "RpaRunSocketKind_p.h"

#include <QString>

// What the two kinds of socket do differently. RpaRunServer and RpaRunSocket are classes of Qt with the same
// operations.
namespace RpaRunSockets
{

// Listens where no other machine can connect; the folder is for kinds that live in the file system. False
// when the system refuses.
bool Listen(RpaRunServer& server, const QString& folder);

// Of a server that listens, as rpa_child.py takes it.
QString GetAddress(const RpaRunServer& server);

// Before the first byte is written.
void Prepare(RpaRunSocket& socket);

// The program stands still until its answer comes: not only with the next turn of the event loop.
void SendAtOnce(RpaRunSocket& socket, const QByteArray& bytes);

} // namespace RpaRunSockets
