// SPDX-License-Identifier: Apache-2.0

#include "NativeSocket.h"

#include <algorithm>
#include <winsock2.h>

namespace NativeSocket
{
namespace
{
constexpr std::size_t mostAtOnce = 1 << 30;
constexpr timeval lookEvery{0, 100000};

SOCKET Descriptor(Handle socket)
{
    return static_cast<SOCKET>(socket);
}

SOCKET NewSocket()
{
    // Counted by the system: once more than Qt does no harm, and without Qt nobody has done it.
    static WSADATA data;
    static const int started = ::WSAStartup(MAKEWORD(2, 2), &data);
    return started == 0 ? ::socket(AF_INET, SOCK_STREAM, IPPROTO_TCP) : INVALID_SOCKET;
}

sockaddr_in Loopback(unsigned short port)
{
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    return address;
}

// Connections do not block: under wine a call that does may never learn that its connection ended.
void Unblock(SOCKET socket)
{
    u_long on = 1;
    ::ioctlsocket(socket, FIONBIO, &on);
}

bool WouldBlock(int count)
{
    return count == SOCKET_ERROR && ::WSAGetLastError() == WSAEWOULDBLOCK;
}

fd_set SetOf(SOCKET socket)
{
    fd_set set;
    FD_ZERO(&set);
    set.fd_array[set.fd_count++] = socket;
    return set;
}

void AwaitSpace(SOCKET socket)
{
    fd_set set = SetOf(socket);
    timeval patience = lookEvery;
    ::select(0, nullptr, &set, nullptr, &patience);
}

void AwaitData(SOCKET socket)
{
    fd_set set = SetOf(socket);
    timeval patience = lookEvery;
    ::select(0, &set, nullptr, nullptr, &patience);
}

template <typename Value>
void Set(SOCKET socket, int level, int option, const Value& value)
{
    ::setsockopt(socket, level, option, reinterpret_cast<const char*>(&value), sizeof value);
}
} // namespace

Handle Connect(unsigned short port)
{
    const SOCKET descriptor = NewSocket();
    Set(descriptor, IPPROTO_TCP, TCP_NODELAY, int(1));
    const sockaddr_in address = Loopback(port);
    if (::connect(descriptor, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0) {
        Unblock(descriptor);
        return static_cast<Handle>(descriptor);
    }
    ::closesocket(descriptor);
    return none;
}

Handle Listen(unsigned short* port)
{
    const SOCKET descriptor = NewSocket();
    sockaddr_in address = Loopback(0);
    if (::bind(descriptor, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0 ||
        ::listen(descriptor, 0) != 0) {
        ::closesocket(descriptor);
        return none;
    }
    int length = sizeof address;
    ::getsockname(descriptor, reinterpret_cast<sockaddr*>(&address), &length);
    *port = ntohs(address.sin_port);
    return static_cast<Handle>(descriptor);
}

std::int64_t Send(Handle socket, const char* data, std::size_t size)
{
    const int most = static_cast<int>(std::min(size, mostAtOnce));
    int count = 0;
    while (WouldBlock(count = ::send(Descriptor(socket), data, most, 0)))
        AwaitSpace(Descriptor(socket));
    return count;
}

std::int64_t Receive(Handle socket, char* data, std::size_t size)
{
    const int most = static_cast<int>(std::min(size, mostAtOnce));
    int count = 0;
    while (WouldBlock(count = ::recv(Descriptor(socket), data, most, 0)))
        AwaitData(Descriptor(socket));
    return count;
}

void Shutdown(Handle socket)
{
    ::shutdown(Descriptor(socket), SD_BOTH);
}

void ResetOnClose(Handle socket)
{
    Set(Descriptor(socket), SOL_SOCKET, SO_LINGER, linger{1, 0});
}

void Close(Handle socket)
{
    ::closesocket(Descriptor(socket));
}
} // namespace NativeSocket
