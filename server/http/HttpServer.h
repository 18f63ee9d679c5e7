// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "../base/Log.h"
#include "Request.h"

#include <atomic>
#include <chrono>
#include <memory>
#include <optional>
#include <string>

namespace server
{
class Tls;

struct HttpLimits
{
    std::uint32_t headerBytes = 16 * 1024;
    std::int64_t bodyBytes = 64LL * 1024 * 1024;
    // Bodies being received, worked on or sent, beyond those that are too small to count (BodyBudget).
    std::int64_t bodyBytesInFlight = 1024LL * 1024 * 1024;
    std::int64_t bodyBytesPerAccount = 256LL * 1024 * 1024;
    std::int64_t bodyBytesPerAddress = 512LL * 1024 * 1024;
    int urlBytes = 4 * 1024;
    bool loopbackHostsOnly = false; // refuses requests to any name but those of this machine
    int connections = 2000;
    int connectionsPerAddress = 256;
    std::chrono::seconds head{15};
    std::chrono::seconds idle{75};                     // between two requests of a connection
    std::chrono::seconds body{15};                     // plus the time that the size needs at
    std::int64_t slowestBytesPerSecond = 256LL * 1024; // this rate
    std::chrono::milliseconds stall{10000};            // without a byte of a body in either direction
};

// What becomes of a request, decided on its head alone.
struct Admission
{
    std::optional<Response> refusal; // given at once; nothing of the body is read
    std::int64_t bodyLimit = 0;      // bytes that the body may have
    QString account;                 // whose body it is; empty: nobody's
};

// What the HTTP layer asks of the layer above. Called on the network threads; must not block.
class IHttpHandler
{
public:
    virtual ~IHttpHandler() = default;

    // Called once the head is known; the body is read only when `decide` lets it. `decide` is called exactly
    // once, from any thread.
    virtual void Admit(const RequestHead& head, std::function<void(Admission)> decide) = 0;

    virtual void Handle(Request request, Reply reply) = 0;

    // The request broke a limit or was no HTTP at all; nothing of it reached Handle.
    virtual void OnRefusedByLimit(int status) = 0;

    // No connection can be accepted for now, for this reason of the system; those that stand go on.
    virtual void OnAcceptPaused(const std::string& reason) = 0;
};

// The HTTP/1.1 server: connections, limits, deadlines. Knows nothing of routes.
class HttpServer
{
public:
    // Must outlive every thread that may still hold the Reply of one of its requests.
    explicit HttpServer(const HttpLimits& limits);
    ~HttpServer();

    // Binds and returns the port, which is a free one for port 0. Throws std::runtime_error.
    quint16 Listen(const std::string& host, quint16 port);

    // Encrypts every connection that comes from now on. Before Run().
    void UseTls(std::shared_ptr<Tls> tls);

    // Serves with `handler` on `threads` threads until Stop() was called and the requests in flight are
    // answered.
    void Run(IHttpHandler& handler, int threads);

    // No new connections; idle ones close, requests in flight are answered (at most `grace`). Any thread.
    void Stop(std::chrono::seconds grace);

    // Calls `act` when the process is asked to end (SIGINT, SIGTERM).
    void OnTermination(std::function<void()> act);

    // Calls `act` when the process gets SIGHUP, where there is such a thing, and at each interval while the
    // server runs; from one thread at a time, which must not be kept long. Before Run().
    void OnHangUp(std::function<void()> act);
    void Every(std::chrono::seconds interval, std::function<void()> act);

    int OpenConnections() const;

    // What the bodies in flight take of their budget.
    std::int64_t BodyBytes() const;

    struct Private;

private:
    std::unique_ptr<Private> d;
};
} // namespace server
