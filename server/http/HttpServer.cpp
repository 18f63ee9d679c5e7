// SPDX-License-Identifier: Apache-2.0

#include "HttpServer.h"

#include "../base/Thread.h"
#include "../transport/Tls.h"
#include "Connection.h"

#include <stdexcept>
#include <vector>

namespace server
{
namespace
{
constexpr auto acceptPause = std::chrono::milliseconds(100);
}

struct HttpServer::Private
{
    explicit Private(const HttpLimits& limits)
        : pool(limits), acceptor(net::make_strand(context)), acceptTimer(acceptor.get_executor()),
          signalSet(context), hangUpSet(acceptor.get_executor()), intervalTimer(acceptor.get_executor()),
          graceTimer(context)
    {
        pool.onEmptied = [this] { net::post(context, [this] { graceTimer.cancel(); }); };
    }

    void Accept();
    void OnAccepted(Socket socket);
    void AcceptLater(const beast::error_code& reason);
    void TurnAway(Socket& socket);

    using Timer = net::basic_waitable_timer<std::chrono::steady_clock,
                                            net::wait_traits<std::chrono::steady_clock>, Strand>;

    void AwaitHangUp(std::function<void()> act);
    void AwaitInterval(std::chrono::seconds interval, std::function<void()> act);

    ConnectionPool pool;
    std::shared_ptr<Tls> tls;
    net::io_context context;
    net::basic_socket_acceptor<tcp, Strand> acceptor;
    Timer acceptTimer;
    bool paused = false;
    net::signal_set signalSet;
    net::basic_signal_set<Strand> hangUpSet;
    Timer intervalTimer;
    net::steady_timer graceTimer;
};

void HttpServer::Private::Accept()
{
    acceptor.async_accept(net::make_strand(context), [this](beast::error_code ec, Socket socket) {
        if (pool.stopping)
            return;
        if (ec && ec != net::error::connection_aborted)
            return AcceptLater(ec);
        paused = false;
        if (!ec)
            OnAccepted(std::move(socket));
        Accept();
    });
}

// Without descriptors the same connection would be offered again and again, without end.
void HttpServer::Private::AcceptLater(const beast::error_code& reason)
{
    if (!paused)
        pool.handler->OnAcceptPaused(reason.message());
    paused = true;
    acceptTimer.expires_after(acceptPause);
    acceptTimer.async_wait([this](beast::error_code ec) {
        if (!ec && !pool.stopping)
            Accept();
    });
}

void HttpServer::Private::OnAccepted(Socket socket)
{
    beast::error_code ec;
    const PeerAddress peer(socket.remote_endpoint(ec).address());
    if (ec)
        return;
    if (!pool.Admit(peer.key))
        return TurnAway(socket);
    auto transport = tls ? tls->Wrap(std::move(socket)) : MakePlainTransport(std::move(socket));
    std::make_shared<Connection>(pool, std::move(transport), peer)->Start();
}

void HttpServer::Private::TurnAway(Socket& socket)
{
    static const char text[] = "HTTP/1.1 503 Service Unavailable\r\nRetry-After: 2\r\n"
                               "Connection: close\r\nContent-Length: 0\r\n\r\n";
    beast::error_code ignored;
    socket.non_blocking(true, ignored);
    socket.write_some(net::buffer(text, sizeof text - 1), ignored);
    pool.handler->OnRefusedByLimit(503);
}

HttpServer::HttpServer(const HttpLimits& limits) : d(std::make_unique<Private>(limits)) {}

HttpServer::~HttpServer() = default;

quint16 HttpServer::Listen(const std::string& host, quint16 port)
{
    try {
        tcp::resolver resolver(d->context);
        const auto found = resolver.resolve(host, std::to_string(port));
        const tcp::endpoint endpoint = found.begin()->endpoint();
        d->acceptor.open(endpoint.protocol());
#ifndef _WIN32
        // On Windows this option would let a second process take the port.
        d->acceptor.set_option(net::socket_base::reuse_address(true));
#endif
        d->acceptor.bind(endpoint);
        d->acceptor.listen(net::socket_base::max_listen_connections);
        return d->acceptor.local_endpoint().port();
    } catch (const boost::system::system_error& error) {
        throw std::runtime_error(error.what());
    }
}

void HttpServer::Run(IHttpHandler& handler, int threads)
{
    d->pool.handler = &handler;
    net::post(d->acceptor.get_executor(), [this] { d->Accept(); });
    std::vector<Thread> others;
    for (int i = 1; i < threads; ++i)
        others.emplace_back([this] { d->context.run(); });
    d->context.run();
    for (Thread& thread : others)
        thread.Join();
}

void HttpServer::Stop(std::chrono::seconds grace)
{
    net::post(d->acceptor.get_executor(), [this, grace] {
        if (d->pool.stopping.exchange(true))
            return;
        beast::error_code ignored;
        d->acceptor.close(ignored);
        d->acceptTimer.cancel();
        d->hangUpSet.cancel(ignored);
        d->intervalTimer.cancel();
        d->signalSet.cancel(ignored);
        const auto live = d->pool.Live();
        for (const auto& connection : live)
            connection->CloseWhenIdle();
        if (live.empty())
            return;
        d->graceTimer.expires_after(grace);
        d->graceTimer.async_wait([this](beast::error_code ec) {
            if (ec)
                return;
            for (const auto& connection : d->pool.Live())
                connection->CloseNow();
        });
    });
}

void HttpServer::OnTermination(std::function<void()> act)
{
    d->signalSet.add(SIGINT);
    d->signalSet.add(SIGTERM);
    d->signalSet.async_wait([act = std::move(act)](beast::error_code ec, int) {
        if (!ec)
            act();
    });
}

void HttpServer::UseTls(std::shared_ptr<Tls> tls)
{
    d->tls = std::move(tls);
}

void HttpServer::OnHangUp([[maybe_unused]] std::function<void()> act)
{
#ifdef SIGHUP
    d->hangUpSet.add(SIGHUP);
    d->AwaitHangUp(std::move(act));
#endif
}

void HttpServer::Private::AwaitHangUp(std::function<void()> act)
{
    hangUpSet.async_wait([this, act = std::move(act)](beast::error_code ec, int) {
        if (ec || pool.stopping)
            return;
        act();
        AwaitHangUp(act);
    });
}

void HttpServer::Every(std::chrono::seconds interval, std::function<void()> act)
{
    d->AwaitInterval(interval, std::move(act));
}

void HttpServer::Private::AwaitInterval(std::chrono::seconds interval, std::function<void()> act)
{
    intervalTimer.expires_after(interval);
    intervalTimer.async_wait([this, interval, act = std::move(act)](beast::error_code ec) {
        if (ec || pool.stopping)
            return;
        act();
        AwaitInterval(interval, act);
    });
}

int HttpServer::OpenConnections() const
{
    return d->pool.open;
}

std::int64_t HttpServer::BodyBytes() const
{
    return d->pool.budget.Used();
}
} // namespace server
