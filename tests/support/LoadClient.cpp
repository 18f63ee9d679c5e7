// SPDX-License-Identifier: Apache-2.0

#include "LoadClient.h"

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <mutex>
#include <stdexcept>
#include <string_view>
#include <thread>

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

LoadClient::LoadClient(unsigned short port) : socket(NativeSocket::Connect(port)), buffer(2 * readBytes)
{
    if (socket == NativeSocket::none)
        throw std::runtime_error("cannot connect");
}

LoadClient::~LoadClient()
{
    NativeSocket::Close(socket);
}

void LoadClient::End()
{
    NativeSocket::Shutdown(socket);
}

bool LoadClient::ReadMore()
{
    const auto count = NativeSocket::Receive(socket, buffer.data() + filled, buffer.size() - filled);
    if (count <= 0)
        return false;
    filled += static_cast<std::size_t>(count);
    return true;
}

LoadClient::Answer LoadClient::Ask(const std::string& request, bool keepBody)
{
    Answer answer;
    for (std::size_t sent = 0; sent < request.size();) {
        const auto count = NativeSocket::Send(socket, request.data() + sent, request.size() - sent);
        if (count <= 0)
            return answer;
        sent += static_cast<std::size_t>(count);
    }
    filled = 0;
    std::size_t headEnd = 0;
    while (headEnd == 0) {
        if (!ReadMore())
            return answer;
        const auto end = std::string_view(buffer.data(), filled).find("\r\n\r\n");
        headEnd = end == std::string_view::npos ? 0 : end + 4;
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
    threads.reserve(std::size_t(clients));
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
