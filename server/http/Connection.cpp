#include "Connection.h"

#include <algorithm>
#ifdef __linux__
#include <netinet/tcp.h>
#endif

namespace server
{
namespace
{
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

Connection::Connection(ConnectionPool& thePool, Socket socket)
    : pool(thePool), stream(std::move(socket)), buffer(largestRead)
{
    Tune(stream.socket());
    AcknowledgeAtOnce(stream.socket());
    beast::error_code ec;
    const auto peer = stream.socket().remote_endpoint(ec);
    fromLoopback = !ec && peer.address().is_loopback();
    ++pool.open;
}

Connection::~Connection()
{
    ReturnBudget();
    --pool.open;
    pool.Remove(place);
}

void Connection::Start()
{
    place = pool.Add(shared_from_this());
    net::dispatch(stream.get_executor(), [self = shared_from_this()] { self->AwaitRequest(); });
}

void Connection::CloseWhenIdle()
{
    net::dispatch(stream.get_executor(), [self = shared_from_this()] {
        if (self->idle)
            self->Close();
    });
}

void Connection::CloseNow()
{
    net::dispatch(stream.get_executor(), [self = shared_from_this()] { self->Close(); });
}

std::shared_ptr<Connection::Hold> Connection::HoldThis()
{
    return std::make_shared<Hold>(Hold{net::make_work_guard(stream.get_executor()), shared_from_this()});
}

void Connection::AwaitRequest()
{
    idle = true;
    if (pool.stopping)
        return Close();
    if (buffer.size() == 0 && buffer.capacity() > smallRead)
        buffer.shrink_to_fit();
    buffer.reserve(smallRead);
    parser.emplace();
    parser->header_limit(pool.limits.headerBytes);
    parser->body_limit(static_cast<std::uint64_t>(pool.limits.bodyBytes));
    // The head's deadline starts with its first byte; until then only the idle limit counts.
    stream.expires_after(buffer.size() > 0 ? pool.limits.head : pool.limits.idle);
    http::async_read_some(
        stream, buffer, *parser,
        [self = shared_from_this()](beast::error_code ec, std::size_t) { self->OnFirstBytes(ec); });
}

void Connection::OnFirstBytes(beast::error_code ec)
{
    idle = false;
    if (ec)
        return OnReadError(ec);
    AcknowledgeAtOnce(stream.socket());
    if (parser->is_header_done())
        return OnHead();
    stream.expires_after(pool.limits.head);
    http::async_read_header(stream, buffer, *parser,
                            [self = shared_from_this()](beast::error_code error, std::size_t) {
                                if (error)
                                    return self->OnReadError(error);
                                AcknowledgeAtOnce(self->stream.socket());
                                self->OnHead();
                            });
}

void Connection::OnReadError(beast::error_code ec)
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

void Connection::OnHead()
{
    if (parser->get().target().size() > static_cast<std::size_t>(pool.limits.urlBytes))
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
    pool.handler->Admit(head, [hold = HoldThis()](std::optional<Response> refusal) {
        net::dispatch(hold->connection->stream.get_executor(),
                      [hold, refusal = std::move(refusal)]() mutable {
                          if (refusal)
                              return hold->connection->RefuseWith(std::move(*refusal));
                          hold->connection->ReadBody();
                      });
    });
}

void Connection::ReadBody()
{
    if (parser->is_done())
        return OnRequest();
    const std::int64_t expected = pendingHead.contentLength.value_or(pool.limits.bodyBytes);
    if (!pool.TakeBodyBudget(expected))
        return Refuse(503);
    budget = expected;
    // As much is read at once as the buffer has room for.
    buffer.reserve(static_cast<std::size_t>(std::clamp<std::int64_t>(expected, smallRead, largestRead)));
    stream.expires_after(pool.limits.body +
                         std::chrono::seconds(expected / pool.limits.slowestBytesPerSecond));
    if (beast::iequals(parser->get()[http::field::expect], "100-continue"))
        return SendContinue();
    ReceiveBody();
}

void Connection::SendContinue()
{
    static const char text[] = "HTTP/1.1 100 Continue\r\n\r\n";
    net::async_write(stream, net::buffer(text, sizeof text - 1),
                     [self = shared_from_this()](beast::error_code ec, std::size_t) {
                         if (ec)
                             return self->Close();
                         self->ReceiveBody();
                     });
}

void Connection::ReceiveBody()
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

void Connection::OnRequest()
{
    stream.expires_never();
    keepAlive = parser->get().keep_alive();
    Request request;
    static_cast<RequestHead&>(request) = std::move(pendingHead);
    request.body = std::move(parser->get().body());
    parser->get().body() = {};
    pool.handler->Handle(std::move(request), [hold = HoldThis()](Response response) {
        net::dispatch(hold->connection->stream.get_executor(),
                      [hold, response = std::move(response)]() mutable {
                          hold->connection->Send(std::move(response));
                      });
    });
}

void Connection::Refuse(int status)
{
    pool.handler->OnRefusedByLimit(status);
    RefuseWith(RefusalFor(status));
}

// The rest of the request is unread, so the connection cannot be used again.
void Connection::RefuseWith(Response response)
{
    keepAlive = parser->is_done() && parser->get().keep_alive();
    Send(std::move(response));
}

void Connection::Send(Response response)
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
    message.keep_alive(keepAlive && !pool.stopping);
    const auto size = response.body.size();
    message.body() = std::move(response.body);
    if (response.status != 204)
        message.content_length(static_cast<std::uint64_t>(size));
    stream.expires_after(pool.limits.body + std::chrono::seconds(size / pool.limits.slowestBytesPerSecond));
    http::async_write(stream, message,
                      [self = shared_from_this()](beast::error_code ec, std::size_t) { self->OnSent(ec); });
}

void Connection::OnSent(beast::error_code ec)
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
void Connection::Linger()
{
    if (pool.stopping)
        return Close();
    buffer.clear();
    stream.async_read_some(buffer.prepare(largestRead),
                           [self = shared_from_this()](beast::error_code ec, std::size_t) {
                               if (ec)
                                   return self->Close();
                               self->Linger();
                           });
}

void Connection::ReturnBudget()
{
    pool.ReturnBodyBudget(budget);
    budget = 0;
}

void Connection::Close()
{
    beast::error_code ignored;
    stream.socket().shutdown(tcp::socket::shutdown_both, ignored);
    stream.close();
}
} // namespace server
