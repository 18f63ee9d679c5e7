#include "LoadClient.h"

#include <algorithm>
#include <arpa/inet.h>
#include <atomic>
#include <cstdlib>
#include <cstring>
#include <mutex>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <stdexcept>
#include <sys/socket.h>
#include <thread>
#include <unistd.h>

namespace
{
using Clock = std::chrono::steady_clock;

constexpr std::size_t readBytes = 256 * 1024;

std::size_t LengthIn(const std::string& head)
{
    const auto at = head.find("Content-Length: ");
    return at == std::string::npos ? 0 : std::strtoull(head.c_str() + at + 16, nullptr, 10);
}
} // namespace

LoadClient::LoadClient(unsigned short port) : socket(::socket(AF_INET, SOCK_STREAM, 0)), buffer(2 * readBytes)
{
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    const int on = 1;
    ::setsockopt(socket, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
    if (::connect(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0)
        throw std::runtime_error("cannot connect");
}

LoadClient::~LoadClient()
{
    ::close(socket);
}

bool LoadClient::ReadMore()
{
    const ssize_t count = ::recv(socket, buffer.data() + filled, buffer.size() - filled, 0);
    if (count <= 0)
        return false;
    filled += static_cast<std::size_t>(count);
    return true;
}

LoadClient::Answer LoadClient::Ask(const std::string& request, bool keepBody)
{
    Answer answer;
    for (std::size_t sent = 0; sent < request.size();) {
        const ssize_t count = ::send(socket, request.data() + sent, request.size() - sent, MSG_NOSIGNAL);
        if (count <= 0)
            return answer;
        sent += static_cast<std::size_t>(count);
    }
    filled = 0;
    std::size_t headEnd = 0;
    while (headEnd == 0) {
        if (!ReadMore())
            return answer;
        const void* end = ::memmem(buffer.data(), filled, "\r\n\r\n", 4);
        headEnd = end ? static_cast<std::size_t>(static_cast<const char*>(end) - buffer.data()) + 4 : 0;
    }
    answer.head.assign(buffer.data(), headEnd);
    answer.bodyBytes = LengthIn(answer.head);
    std::size_t received = filled - headEnd;
    if (keepBody)
        answer.body.assign(buffer.data() + headEnd, received);
    while (received < answer.bodyBytes) {
        filled = 0;
        if (!ReadMore())
            return answer;
        received += filled;
        if (keepBody)
            answer.body.append(buffer.data(), filled);
    }
    answer.status = std::atoi(answer.head.c_str() + 9);
    return answer;
}

LoadFigures RunLoad(unsigned short port, int clients, std::chrono::milliseconds duration, int expected,
                    const std::function<std::string(int, long)>& makeRequest)
{
    std::vector<double> all;
    std::mutex mutex;
    std::atomic<long> failures{0};
    const auto start = Clock::now();
    const auto end = start + duration;
    const auto work = [&](int client) {
        LoadClient connection(port);
        std::vector<double> mine;
        for (long round = 0; Clock::now() < end; ++round) {
            const std::string request = makeRequest(client, round);
            const auto sent = Clock::now();
            if (connection.Ask(request).status != expected)
                ++failures;
            mine.push_back(std::chrono::duration<double, std::milli>(Clock::now() - sent).count());
        }
        const std::lock_guard lock(mutex);
        all.insert(all.end(), mine.begin(), mine.end());
    };
    std::vector<std::thread> threads;
    for (int i = 0; i < clients; ++i)
        threads.emplace_back(work, i);
    for (std::thread& thread : threads)
        thread.join();
    const double seconds = std::chrono::duration<double>(Clock::now() - start).count();

    std::sort(all.begin(), all.end());
    const auto at = [&](double part) {
        return all[static_cast<std::size_t>(static_cast<double>(all.size() - 1) * part)];
    };
    return {static_cast<double>(all.size()) / seconds, at(0.5), at(0.99), failures};
}
