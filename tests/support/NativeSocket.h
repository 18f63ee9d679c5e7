// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <cstddef>
#include <cstdint>

// TCP on 127.0.0.1 straight from the system, for what Qt's sockets do not offer: blocking calls without an
// event loop, connections that are reset, listeners that accept nothing. One source file per system. Any
// thread.
namespace NativeSocket
{
using Handle = std::intptr_t;
constexpr Handle none = -1;

// A connection without Nagle's delay; `none` when nobody listens.
Handle Connect(unsigned short port);

// A listener with the shortest queue there is; *port becomes its own. `none` when the system gives no port.
Handle Listen(unsigned short* port);

// How many bytes went; at most 0 when the connection is broken or ended.
std::int64_t Send(Handle socket, const char* data, std::size_t size);
std::int64_t Receive(Handle socket, char* data, std::size_t size);

// Nothing goes or comes any more, and a call that waits in another thread returns.
void Shutdown(Handle socket);

// The next close of the connection resets it.
void ResetOnClose(Handle socket);

void Close(Handle socket);
} // namespace NativeSocket
