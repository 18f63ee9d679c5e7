// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "RawClient.h"
#include "http/HttpServer.h"

#include <atomic>
#include <mutex>
#include <thread>
#include <vector>

// A server without routes and the limits it is tested with.
namespace http_fixture
{
using namespace server;
using namespace std::chrono_literals;
constexpr int largeAnswer = 32 * 1024 * 1024; // more than the system keeps for a reader that does not read

// Answers with the number of body bytes it got; "/held" is answered when the test says so.
class Echo : public IHttpHandler
{
public:
    void Admit(const RequestHead& head, std::function<void(Admission)> decide) override
    {
        if (head.path == "/refused")
            return decide({Response::Refuse(403, "forbidden", QStringLiteral("不行")), 0, {}});
        decide({std::nullopt, head.path == "/short" ? 10 : 1000000, QString::fromLatin1(head.query)});
    }

    void Handle(Request request, Reply reply) override
    {
        ++handled;
        if (request.path == "/large")
            return reply(LargeAnswer(request));
        if (request.path != "/held")
            return reply(Response::Json(200, QByteArray::number(request.body.size())));
        const std::lock_guard lock(mutex);
        held.push_back(std::move(reply));
    }

    void OnRefusedByLimit(int) override { ++refused; }
    void OnAcceptPaused(const std::string&) override {}

    bool AnswerHeld()
    {
        const std::lock_guard lock(mutex);
        if (held.empty())
            return false;
        held.back()(Response::Json(200, "released"));
        held.pop_back();
        return true;
    }

    std::atomic<int> handled{0};
    std::atomic<int> refused{0};

private:
    static Response LargeAnswer(const Request& request)
    {
        Response response = Response::Json(200, QByteArray(largeAnswer, 'x'));
        response.account = QString::fromLatin1(request.query);
        return response;
    }

    std::mutex mutex;
    std::vector<Reply> held;
};

inline HttpLimits SmallLimits()
{
    HttpLimits limits;
    limits.bodyBytes = 100000;
    limits.bodyBytesInFlight = 150000;
    limits.connections = 5;
    limits.head = 1s;
    limits.idle = 2s;
    limits.body = 1s;
    limits.slowestBytesPerSecond = 1000000;
    return limits;
}

class Running
{
public:
    explicit Running(const HttpLimits& limits = SmallLimits())
        : server(limits), port(server.Listen("127.0.0.1", 0)), thread([this] { server.Run(echo, 2); })
    {
    }
    ~Running()
    {
        while (echo.AnswerHeld()) {
        }
        server.Stop(0s);
        thread.join();
    }

    HttpServer server;
    Echo echo;
    quint16 port;
    std::thread thread;
};

inline const QByteArray get = "GET / HTTP/1.1\r\nHost: h\r\n\r\n";
} // namespace http_fixture
