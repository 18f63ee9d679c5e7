#include "HttpServer.h"

#include "../base/Thread.h"

#include <algorithm>
#include <boost/asio.hpp>
#include <boost/beast/core.hpp>
#include <boost/beast/http.hpp>
#include <list>
#include <mutex>
#include <stdexcept>
#include <vector>
#ifdef __linux__
#include <netinet/tcp.h>
#endif

namespace server
{
namespace
{
namespace beast = boost::beast;
namespace http = beast::http;
namespace net = boost::asio;
using tcp = net::ip::tcp;
using Strand = net::strand<net::io_context::executor_type>;
using Socket = net::basic_stream_socket<tcp, Strand>;
using Stream = beast::basic_stream<tcp, Strand>;

// A body that is received into, and sent from, a shared QByteArray: a stored version is never copied on its
// way out.
struct ByteArrayBody
{
    using value_type = QByteArray;

    static std::uint64_t size(const value_type& body) { return static_cast<std::uint64_t>(body.size()); }

    class reader
    {
    public:
        template <bool isRequest, class Fields>
        reader(http::header<isRequest, Fields>&, value_type& target) : body(target)
        {
        }

        void init(const boost::optional<std::uint64_t>& length, beast::error_code& ec)
        {
            if (length)
                body.reserve(static_cast<int>(*length));
            ec = {};
        }

        template <class Buffers>
        std::size_t put(const Buffers& buffers, beast::error_code& ec)
        {
            ec = {};
            std::size_t taken = 0;
            for (const auto buffer : beast::buffers_range_ref(buffers)) {
                body.append(static_cast<const char*>(buffer.data()), static_cast<int>(buffer.size()));
                taken += buffer.size();
            }
            return taken;
        }

        void finish(beast::error_code& ec) { ec = {}; }

    private:
        value_type& body;
    };

    class writer
    {
    public:
        using const_buffers_type = net::const_buffer;

        template <bool isRequest, class Fields>
        writer(const http::header<isRequest, Fields>&, const value_type& source) : body(source)
        {
        }

        void init(beast::error_code& ec) { ec = {}; }

        boost::optional<std::pair<const_buffers_type, bool>> get(beast::error_code& ec)
        {
            ec = {};
            return {{const_buffers_type(body.constData(), static_cast<std::size_t>(body.size())), false}};
        }

    private:
        const value_type& body;
    };
};

using Parser = http::request_parser<ByteArrayBody>;

QByteArray ToBytes(beast::string_view text)
{
    return QByteArray(text.data(), static_cast<int>(text.size()));
}

RequestHead HeadOf(const http::request<ByteArrayBody>& message, bool fromLoopback)
{
    RequestHead head;
    head.method = ToBytes(message.method_string());
    const QByteArray target = ToBytes(message.target());
    const int mark = target.indexOf('?');
    head.path = mark < 0 ? target : target.left(mark);
    head.query = mark < 0 ? QByteArray() : target.mid(mark + 1);
    head.fromLoopback = fromLoopback;
    for (const auto& field : message)
        head.headers.emplace_back(ToBytes(field.name_string()).toLower(), ToBytes(field.value()));
    return head;
}

Response RefusalFor(int status)
{
    switch (status) {
    case 413:
        return Response::Refuse(413, "body-too-large", QStringLiteral("内容超过大小上限，无法提交。"));
    case 414:
        return Response::Refuse(414, "url-too-long", QStringLiteral("请求地址过长。"));
    case 431:
        return Response::Refuse(431, "header-too-large", QStringLiteral("请求头过大。"));
    case 503:
        return Response::Refuse(503, "busy", QStringLiteral("服务繁忙，请稍后重试。"))
            .With("Retry-After", "2");
    default:
        return Response::Refuse(400, "bad-request", QStringLiteral("请求格式不正确。"));
    }
}

void Tune(Socket& socket)
{
    beast::error_code ignored;
    socket.set_option(tcp::no_delay(true), ignored);
}

// A client that writes head and body apart waits for our acknowledgement in between, up to 40 ms when it is
// delayed. The kernel takes the option back by itself, hence after each read.
void AcknowledgeAtOnce([[maybe_unused]] Socket& socket)
{
#ifdef TCP_QUICKACK
    const int on = 1;
    ::setsockopt(socket.native_handle(), IPPROTO_TCP, TCP_QUICKACK, &on, sizeof on);
#endif
}
} // namespace

class Connection;

// What the connections of one server share.
struct HttpServer::Private
{
    explicit Private(const HttpLimits& theLimits)
        : limits(theLimits), acceptor(context), signalSet(context), graceTimer(context)
    {
    }

    void Accept();
    void OnAccepted(Socket socket);
    std::vector<std::shared_ptr<Connection>> LiveConnections();
    void Forget(std::list<std::weak_ptr<Connection>>::iterator place);

    bool TakeBodyBudget(std::int64_t bytes)
    {
        if (bodyBytes.fetch_add(bytes) + bytes <= limits.bodyBytesInFlight)
            return true;
        bodyBytes -= bytes;
        return false;
    }

    IHttpHandler* handler = nullptr; // while it runs
    const HttpLimits limits;
    net::io_context context;
    tcp::acceptor acceptor;
    net::signal_set signalSet;
    net::steady_timer graceTimer;
    std::atomic<bool> stopping{false};
    std::atomic<int> open{0};
    std::atomic<std::int64_t> bodyBytes{0};
    std::mutex connectionsMutex;
    std::list<std::weak_ptr<Connection>> connections;
};

// One client. Everything of it runs on its strand; it lives as long as one of its operations is under way.
class Connection : public std::enable_shared_from_this<Connection>
{
public:
    Connection(HttpServer::Private& theServer, Socket socket)
        : server(theServer), stream(std::move(socket)), buffer(largestRead)
    {
        beast::error_code ec;
        const auto peer = stream.socket().remote_endpoint(ec);
        fromLoopback = !ec && peer.address().is_loopback();
        ++server.open;
    }

    ~Connection()
    {
        ReturnBudget();
        --server.open;
        server.Forget(place);
    }

    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    void Start()
    {
        net::dispatch(stream.get_executor(), [self = shared_from_this()] { self->AwaitRequest(); });
    }

    void CloseWhenIdle()
    {
        net::dispatch(stream.get_executor(), [self = shared_from_this()] {
            if (self->idle)
                self->Close();
        });
    }

    void CloseNow()
    {
        net::dispatch(stream.get_executor(), [self = shared_from_this()] { self->Close(); });
    }

    std::list<std::weak_ptr<Connection>>::iterator place;

private:
    static constexpr std::size_t smallRead = 4 * 1024; // what an idle connection may hold
    static constexpr std::size_t largestRead = 64 * 1024;

    // Held by a callback that others keep: the network threads run, also while the server stops, until the
    // answer is written. The connection goes before the guard that lets them end.
    struct Hold
    {
        net::executor_work_guard<Strand> guard;
        std::shared_ptr<Connection> connection;
    };

    std::shared_ptr<Hold> HoldThis()
    {
        return std::make_shared<Hold>(Hold{net::make_work_guard(stream.get_executor()), shared_from_this()});
    }

    void AwaitRequest()
    {
        idle = true;
        if (server.stopping)
            return Close();
        if (buffer.size() == 0 && buffer.capacity() > smallRead)
            buffer.shrink_to_fit();
        buffer.reserve(smallRead);
        parser.emplace();
        parser->header_limit(server.limits.headerBytes);
        parser->body_limit(static_cast<std::uint64_t>(server.limits.bodyBytes));
        // The head's deadline starts with its first byte; until then only the idle limit counts.
        stream.expires_after(buffer.size() > 0 ? server.limits.head : server.limits.idle);
        http::async_read_some(
            stream, buffer, *parser,
            [self = shared_from_this()](beast::error_code ec, std::size_t) { self->OnFirstBytes(ec); });
    }

    void OnFirstBytes(beast::error_code ec)
    {
        idle = false;
        if (ec)
            return OnReadError(ec);
        AcknowledgeAtOnce(stream.socket());
        if (parser->is_header_done())
            return OnHead();
        stream.expires_after(server.limits.head);
        http::async_read_header(stream, buffer, *parser,
                                [self = shared_from_this()](beast::error_code error, std::size_t) {
                                    if (error)
                                        return self->OnReadError(error);
                                    AcknowledgeAtOnce(self->stream.socket());
                                    self->OnHead();
                                });
    }

    void OnReadError(beast::error_code ec)
    {
        if (ec == http::error::body_limit)
            return Refuse(413);
        if (ec == http::error::header_limit)
            return Refuse(431);
        const bool clientGone = ec == http::error::end_of_stream || ec == http::error::partial_message ||
                                ec == beast::error::timeout ||
                                ec.category() != make_error_code(http::error::bad_method).category();
        if (clientGone)
            return Close();
        Refuse(400);
    }

    void OnHead()
    {
        if (parser->get().target().size() > static_cast<std::size_t>(server.limits.urlBytes))
            return Refuse(414);
        if (parser->get().version() != 11 && parser->get().version() != 10)
            return Refuse(400);
        RequestHead head = HeadOf(parser->get(), fromLoopback);
        const auto length = parser->content_length();
        if (length)
            head.contentLength = static_cast<qint64>(*length);
        head.hasBody = parser->chunked() || (length && *length > 0);

        stream.expires_never();
        pendingHead = head;
        server.handler->Admit(head, [hold = HoldThis()](std::optional<Response> refusal) {
            net::dispatch(hold->connection->stream.get_executor(),
                          [hold, refusal = std::move(refusal)]() mutable {
                              if (refusal)
                                  return hold->connection->RefuseWith(std::move(*refusal));
                              hold->connection->ReadBody();
                          });
        });
    }

    void ReadBody()
    {
        if (parser->is_done())
            return OnRequest();
        const std::int64_t expected = pendingHead.contentLength.value_or(server.limits.bodyBytes);
        if (!server.TakeBodyBudget(expected))
            return Refuse(503);
        budget = expected;
        // As much is read at once as the buffer has room for.
        buffer.reserve(static_cast<std::size_t>(std::clamp<std::int64_t>(expected, smallRead, largestRead)));
        stream.expires_after(server.limits.body +
                             std::chrono::seconds(expected / server.limits.slowestBytesPerSecond));
        if (beast::iequals(parser->get()[http::field::expect], "100-continue"))
            return SendContinue();
        ReceiveBody();
    }

    void SendContinue()
    {
        static const char text[] = "HTTP/1.1 100 Continue\r\n\r\n";
        net::async_write(stream, net::buffer(text, sizeof text - 1),
                         [self = shared_from_this()](beast::error_code ec, std::size_t) {
                             if (ec)
                                 return self->Close();
                             self->ReceiveBody();
                         });
    }

    void ReceiveBody()
    {
        http::async_read_some(stream, buffer, *parser,
                              [self = shared_from_this()](beast::error_code ec, std::size_t) {
                                  if (ec)
                                      return self->OnReadError(ec);
                                  AcknowledgeAtOnce(self->stream.socket());
                                  if (self->parser->is_done())
                                      return self->OnRequest();
                                  self->ReceiveBody();
                              });
    }

    void OnRequest()
    {
        stream.expires_never();
        keepAlive = parser->get().keep_alive();
        Request request;
        static_cast<RequestHead&>(request) = std::move(pendingHead);
        request.body = std::move(parser->get().body());
        parser->get().body() = {};
        server.handler->Handle(std::move(request), [hold = HoldThis()](Response response) {
            net::dispatch(hold->connection->stream.get_executor(),
                          [hold, response = std::move(response)]() mutable {
                              hold->connection->Send(std::move(response));
                          });
        });
    }

    void Refuse(int status)
    {
        server.handler->OnRefusedByLimit(status);
        RefuseWith(RefusalFor(status));
    }

    // The rest of the request is unread, so the connection cannot be used again.
    void RefuseWith(Response response)
    {
        keepAlive = parser->is_done() && parser->get().keep_alive();
        Send(std::move(response));
    }

    void Send(Response response)
    {
        ReturnBudget();
        outgoing.emplace();
        auto& message = *outgoing;
        message.version(11);
        message.result(static_cast<unsigned>(response.status));
        if (!response.contentType.isEmpty())
            message.set(http::field::content_type, response.contentType.constData());
        message.set(http::field::cache_control, "no-store");
        message.set("X-Content-Type-Options", "nosniff");
        for (const auto& [name, value] : response.headers)
            message.set(beast::string_view(name.constData(), static_cast<std::size_t>(name.size())),
                        beast::string_view(value.constData(), static_cast<std::size_t>(value.size())));
        message.keep_alive(keepAlive && !server.stopping);
        const auto size = response.body.size();
        message.body() = std::move(response.body);
        if (response.status != 204)
            message.content_length(static_cast<std::uint64_t>(size));
        stream.expires_after(server.limits.body +
                             std::chrono::seconds(size / server.limits.slowestBytesPerSecond));
        http::async_write(stream, message, [self = shared_from_this()](beast::error_code ec, std::size_t) {
            self->OnSent(ec);
        });
    }

    void OnSent(beast::error_code ec)
    {
        const bool again = !ec && outgoing->keep_alive();
        outgoing.reset();
        if (ec)
            return Close();
        if (again)
            return AwaitRequest();
        beast::error_code ignored;
        stream.socket().shutdown(tcp::socket::shutdown_send, ignored);
        stream.expires_after(std::chrono::seconds(2));
        Linger();
    }

    // Closing while the client still sends would reset the connection and could take the refusal from it.
    void Linger()
    {
        if (server.stopping)
            return Close();
        buffer.clear();
        stream.async_read_some(buffer.prepare(largestRead),
                               [self = shared_from_this()](beast::error_code ec, std::size_t) {
                                   if (ec)
                                       return self->Close();
                                   self->Linger();
                               });
    }

    void ReturnBudget()
    {
        server.bodyBytes -= budget;
        budget = 0;
    }

    void Close()
    {
        beast::error_code ignored;
        stream.socket().shutdown(tcp::socket::shutdown_both, ignored);
        stream.close();
    }

    HttpServer::Private& server;
    Stream stream;
    beast::flat_buffer buffer;
    boost::optional<Parser> parser;
    std::optional<http::response<ByteArrayBody>> outgoing;
    RequestHead pendingHead;
    std::int64_t budget = 0;
    bool fromLoopback = false;
    bool keepAlive = false;
    bool idle = true;
};

void HttpServer::Private::Accept()
{
    acceptor.async_accept(net::make_strand(context), [this](beast::error_code ec, Socket socket) {
        if (stopping)
            return;
        if (!ec)
            OnAccepted(std::move(socket));
        Accept();
    });
}

void HttpServer::Private::OnAccepted(Socket socket)
{
    Tune(socket);
    AcknowledgeAtOnce(socket);
    if (open >= limits.connections) {
        static const char text[] = "HTTP/1.1 503 Service Unavailable\r\nRetry-After: 2\r\n"
                                   "Connection: close\r\nContent-Length: 0\r\n\r\n";
        beast::error_code ignored;
        socket.non_blocking(true, ignored);
        socket.write_some(net::buffer(text, sizeof text - 1), ignored);
        handler->OnRefusedByLimit(503);
        return;
    }
    const auto connection = std::make_shared<Connection>(*this, std::move(socket));
    {
        const std::lock_guard lock(connectionsMutex);
        connection->place = connections.insert(connections.end(), connection);
    }
    connection->Start();
}

// Strong references are let go outside the lock, since the last one takes the lock again in Forget().
std::vector<std::shared_ptr<Connection>> HttpServer::Private::LiveConnections()
{
    std::vector<std::shared_ptr<Connection>> live;
    const std::lock_guard lock(connectionsMutex);
    for (const auto& weak : connections) {
        if (auto connection = weak.lock())
            live.push_back(std::move(connection));
    }
    return live;
}

void HttpServer::Private::Forget(std::list<std::weak_ptr<Connection>>::iterator place)
{
    const std::lock_guard lock(connectionsMutex);
    connections.erase(place);
    if (stopping && connections.empty())
        net::post(context, [this] { graceTimer.cancel(); });
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
    d->handler = &handler;
    d->Accept();
    std::vector<Thread> others;
    for (int i = 1; i < threads; ++i)
        others.emplace_back([this] { d->context.run(); });
    d->context.run();
    for (Thread& thread : others)
        thread.Join();
}

void HttpServer::Stop(std::chrono::seconds grace)
{
    net::post(d->context, [this, grace] {
        if (d->stopping.exchange(true))
            return;
        beast::error_code ignored;
        d->acceptor.close(ignored);
        d->signalSet.cancel(ignored);
        const auto live = d->LiveConnections();
        for (const auto& connection : live)
            connection->CloseWhenIdle();
        if (live.empty())
            return;
        d->graceTimer.expires_after(grace);
        d->graceTimer.async_wait([this](beast::error_code ec) {
            if (ec)
                return;
            for (const auto& connection : d->LiveConnections())
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

int HttpServer::OpenConnections() const
{
    return d->open;
}
} // namespace server
