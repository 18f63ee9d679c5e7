// SPDX-License-Identifier: Apache-2.0

#include "Connection.h"

#include "Framing.h"
#include "ResponseHead.h"

#include <algorithm>
#ifdef __linux__
#include <netinet/tcp.h>
#endif

namespace server
{
namespace
{
// A client that writes head and body apart waits for our acknowledgement in between, up to 40 ms when it is
// delayed. The kernel takes the option back by itself, hence after each read.
void AcknowledgeAtOnce([[maybe_unused]] Stream& stream)
{
#ifdef TCP_QUICKACK
    const int on = 1;
    ::setsockopt(stream.socket().native_handle(), IPPROTO_TCP, TCP_QUICKACK, &on, sizeof on);
#endif
}
} // namespace

Connection::Connection(ConnectionPool& thePool, std::unique_ptr<Transport> theTransport,
                       const PeerAddress& thePeer)
    : pool(thePool), transport(std::move(theTransport)), peer(thePeer), share(pool.budget, peer.key),
      buffer(largestRead), pace(Lowest(), pool.limits), writer(*transport, pool.limits)
{
    beast::error_code ignored;
    Lowest().socket().set_option(tcp::no_delay(true), ignored);
    AcknowledgeAtOnce(Lowest());
}

Connection::~Connection()
{
    pool.Remove(place, peer.key);
}

void Connection::Start()
{
    place = pool.Add(shared_from_this());
    net::dispatch(Lowest().get_executor(), [self = shared_from_this()] { self->Open(); });
}

void Connection::CloseWhenIdle()
{
    net::dispatch(Lowest().get_executor(), [self = shared_from_this()] {
        if (self->idle)
            self->Close();
    });
}

void Connection::CloseNow()
{
    net::dispatch(Lowest().get_executor(), [self = shared_from_this()] { self->Close(); });
}

std::shared_ptr<Connection::Hold> Connection::HoldThis()
{
    return std::make_shared<Hold>(Hold{net::make_work_guard(Lowest().get_executor()), shared_from_this()});
}

void Connection::Open()
{
    Lowest().expires_after(pool.limits.head);
    transport->Begin([self = shared_from_this()](beast::error_code ec, std::size_t) {
        if (ec)
            return self->Close();
        self->AwaitRequest();
    });
}

void Connection::AwaitRequest()
{
    idle = true;
    if (pool.stopping)
        return Close();
    if (buffer.size() == 0 && buffer.capacity() > smallRead)
        buffer.shrink_to_fit();
    parser.emplace();
    parser->header_limit(pool.limits.headerBytes);
    parser->body_limit(static_cast<std::uint64_t>(pool.limits.bodyBytes));
    if (buffer.size() > 0)
        return OnHeadBytes();
    Lowest().expires_after(pool.limits.idle);
    ReadHead();
}

void Connection::ReadHead()
{
    transport->ReadSome(buffer.prepare(std::min(smallRead, buffer.max_size() - buffer.size())),
                        [self = shared_from_this()](beast::error_code ec, std::size_t count) {
                            if (ec)
                                return self->Close();
                            AcknowledgeAtOnce(self->Lowest());
                            self->buffer.commit(count);
                            self->OnHeadBytes();
                        });
}

void Connection::OnHeadBytes()
{
    // The head's deadline starts with its first byte; until then only the idle limit counts.
    if (idle)
        Lowest().expires_after(pool.limits.head);
    idle = false;
    beast::error_code ec;
    buffer.consume(parser->put(buffer.data(), ec));
    if (ec == http::error::need_more)
        return buffer.size() < buffer.max_size() ? ReadHead() : Refuse(431);
    if (ec)
        return OnParseError(ec);
    OnHead();
}

void Connection::OnParseError(beast::error_code ec)
{
    if (ec == http::error::body_limit)
        return Refuse(413);
    Refuse(ec == http::error::header_limit ? 431 : 400);
}

void Connection::OnHead()
{
    if (const int fault = FaultOf(parser->get(), pool.limits))
        return RefuseAndEnd(fault);
    pendingHead = HeadOf(parser->get());
    pendingHead.fromLoopback = peer.isLoopback;
    pendingHead.peer = peer.key;
    if (const auto length = parser->content_length())
        pendingHead.contentLength = static_cast<qint64>(*length);
    pendingHead.hasBody = parser->chunked() || pendingHead.contentLength.value_or(0) > 0;

    Lowest().expires_never();
    pool.handler->Admit(pendingHead, [hold = HoldThis()](Admission admission) {
        net::dispatch(hold->connection->Lowest().get_executor(),
                      [hold, admission = std::move(admission)]() mutable {
                          hold->connection->OnAdmitted(std::move(admission));
                      });
    });
}

void Connection::OnAdmitted(Admission admission)
{
    if (admission.refusal)
        return RefuseWith(std::move(*admission.refusal));
    body = {};
    received = 0;
    if (parser->is_done())
        return OnRequest();
    const std::int64_t limit = std::min(admission.bodyLimit, pool.limits.bodyBytes);
    const std::int64_t announced = pendingHead.contentLength.value_or(0);
    if (announced > limit)
        return Refuse(413);
    account = admission.account;
    if (!share.HoldRequest(account, announced))
        return Refuse(503);
    parser->body_limit(static_cast<std::uint64_t>(limit));
    pace.Start(pendingHead.contentLength.value_or(limit));
    if (beast::iequals(parser->get()[http::field::expect], "100-continue"))
        return SendContinue();
    ReceiveBody();
}

void Connection::SendContinue()
{
    static const char text[] = "HTTP/1.1 100 Continue\r\n\r\n";
    pace.Next();
    transport->WriteSome({net::buffer(text, sizeof text - 1)},
                         [self = shared_from_this()](beast::error_code ec, std::size_t count) {
                             if (ec || count != sizeof text - 1)
                                 return self->Close();
                             self->ReceiveBody();
                         });
}

void Connection::ReceiveBody()
{
    if (parser->chunked()) {
        parser->eager(true);
        return OnChunkBytes();
    }
    // A body of known length goes where it stays, past the parser.
    body.resize(static_cast<int>(*pendingHead.contentLength));
    const auto here =
        net::buffer_copy(net::buffer(body.data(), static_cast<std::size_t>(body.size())), buffer.data());
    buffer.consume(here);
    received = static_cast<std::int64_t>(here);
    ReceiveRest();
}

void Connection::ReceiveRest()
{
    if (received == body.size())
        return OnRequest();
    pace.Next();
    transport->ReadSome(net::buffer(body.data() + received, static_cast<std::size_t>(body.size() - received)),
                        [self = shared_from_this()](beast::error_code ec, std::size_t count) {
                            if (ec)
                                return self->Close();
                            AcknowledgeAtOnce(self->Lowest());
                            self->received += static_cast<std::int64_t>(count);
                            self->ReceiveRest();
                        });
}

void Connection::ReceiveChunks()
{
    if (buffer.size() == buffer.max_size())
        return Refuse(400);
    pace.Next();
    transport->ReadSome(buffer.prepare(buffer.max_size() - buffer.size()),
                        [self = shared_from_this()](beast::error_code ec, std::size_t count) {
                            if (ec)
                                return self->Close();
                            AcknowledgeAtOnce(self->Lowest());
                            self->buffer.commit(count);
                            self->OnChunkBytes();
                        });
}

void Connection::OnChunkBytes()
{
    beast::error_code ec;
    buffer.consume(parser->put(buffer.data(), ec));
    if (ec && ec != http::error::need_more)
        return OnParseError(ec);
    if (!share.HoldRequest(account, parser->get().body().capacity()))
        return Refuse(503);
    if (!parser->is_done())
        return ReceiveChunks();
    body = std::move(parser->get().body());
    OnRequest();
}

void Connection::OnRequest()
{
    Lowest().expires_never();
    keepAlive = parser->get().keep_alive();
    Request request;
    static_cast<RequestHead&>(request) = std::move(pendingHead);
    request.body = std::move(body);
    body = {};
    pool.handler->Handle(std::move(request), [hold = HoldThis()](Response response) {
        net::dispatch(hold->connection->Lowest().get_executor(),
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

// What follows may be the request's body, whatever its head says.
void Connection::RefuseAndEnd(int status)
{
    pool.handler->OnRefusedByLimit(status);
    keepAlive = false;
    Send(RefusalFor(status));
}

// The rest of the request is unread, so the connection cannot be used again.
void Connection::RefuseWith(Response response)
{
    keepAlive = parser->is_done() && parser->get().keep_alive();
    Send(std::move(response));
}

void Connection::Send(Response response)
{
    if (!share.HoldAnswer(response.account, response.body.size())) {
        pool.handler->OnRefusedByLimit(503);
        share.Release();
        response = RefusalFor(503);
    }
    keepAlive = keepAlive && !pool.stopping;
    writer.Write(std::move(response), keepAlive, parser->get().method() == http::verb::head,
                 [self = shared_from_this()](beast::error_code ec) {
                     if (ec)
                         return self->Close();
                     self->OnSent();
                 });
}

void Connection::OnSent()
{
    share.Release();
    if (keepAlive)
        return AwaitRequest();
    Lowest().expires_after(std::chrono::seconds(2));
    transport->End([self = shared_from_this()](beast::error_code, std::size_t) {
        beast::error_code ignored;
        self->Lowest().socket().shutdown(tcp::socket::shutdown_send, ignored);
        self->Linger();
    });
}

// Closing while the client still sends would reset the connection and could take the refusal from it.
void Connection::Linger()
{
    if (pool.stopping)
        return Close();
    buffer.clear();
    Lowest().async_read_some(buffer.prepare(largestRead),
                             [self = shared_from_this()](beast::error_code ec, std::size_t) {
                                 if (ec)
                                     return self->Close();
                                 self->Linger();
                             });
}

void Connection::Close()
{
    beast::error_code ignored;
    Lowest().socket().shutdown(tcp::socket::shutdown_both, ignored);
    Lowest().close();
}

} // namespace server
