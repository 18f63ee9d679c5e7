#include "NativeSocket.h"

#include <algorithm>
#include <winsock2.h>

namespace NativeSocket
{
namespace
{
constexpr std::size_t mostAtOnce = 1 << 30;

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
    if (::connect(descriptor, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0)
        return static_cast<Handle>(descriptor);
    ::closesocket(descriptor);
    return none;
}

Handle Listen(unsigned short* port)
{
    const SOCKET descriptor = NewSocket();
    sockaddr_in address = Loopback(0);
    ::bind(descriptor, reinterpret_cast<const sockaddr*>(&address), sizeof address);
    ::listen(descriptor, 0);
    int length = sizeof address;
    ::getsockname(descriptor, reinterpret_cast<sockaddr*>(&address), &length);
    *port = ntohs(address.sin_port);
    return static_cast<Handle>(descriptor);
}

std::int64_t Send(Handle socket, const char* data, std::size_t size)
{
    return ::send(Descriptor(socket), data, static_cast<int>(std::min(size, mostAtOnce)), 0);
}

std::int64_t Receive(Handle socket, char* data, std::size_t size)
{
    return ::recv(Descriptor(socket), data, static_cast<int>(std::min(size, mostAtOnce)), 0);
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
