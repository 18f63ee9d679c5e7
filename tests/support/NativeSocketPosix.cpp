// SPDX-License-Identifier: Apache-2.0

#include "NativeSocket.h"

#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <unistd.h>

namespace NativeSocket
{
namespace
{
sockaddr_in Loopback(unsigned short port)
{
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    return address;
}

int Descriptor(Handle socket)
{
    return static_cast<int>(socket);
}
} // namespace

Handle Connect(unsigned short port)
{
    const int descriptor = ::socket(AF_INET, SOCK_STREAM, 0);
    const int on = 1;
    ::setsockopt(descriptor, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
    const sockaddr_in address = Loopback(port);
    if (::connect(descriptor, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0)
        return descriptor;
    ::close(descriptor);
    return none;
}

Handle Listen(unsigned short* port)
{
    const int descriptor = ::socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address = Loopback(0);
    if (::bind(descriptor, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0 ||
        ::listen(descriptor, 0) != 0) {
        ::close(descriptor);
        return none;
    }
    socklen_t length = sizeof address;
    ::getsockname(descriptor, reinterpret_cast<sockaddr*>(&address), &length);
    *port = ntohs(address.sin_port);
    return descriptor;
}

std::int64_t Send(Handle socket, const char* data, std::size_t size)
{
    return ::send(Descriptor(socket), data, size, MSG_NOSIGNAL);
}

std::int64_t Receive(Handle socket, char* data, std::size_t size)
{
    return ::recv(Descriptor(socket), data, size, 0);
}

void Shutdown(Handle socket)
{
    ::shutdown(Descriptor(socket), SHUT_RDWR);
}

void ResetOnClose(Handle socket)
{
    const linger atOnce{1, 0};
    ::setsockopt(Descriptor(socket), SOL_SOCKET, SO_LINGER, &atOnce, sizeof atOnce);
}

void Close(Handle socket)
{
    ::close(Descriptor(socket));
}
} // namespace NativeSocket
