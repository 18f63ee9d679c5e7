// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "../transport/PeerAddress.h"
#include "../transport/Transport.h"
#include "AnswerWriter.h"
#include "BodyBudget.h"
#include "ByteArrayBody.h"
#include "ConnectionPool.h"
#include "Pace.h"
#include "Request.h"

#include <memory>

namespace server
{
// One client. Everything of it runs on its strand; it lives as long as one of its operations is under way.
class Connection : public std::enable_shared_from_this<Connection>
{
public:
    Connection(ConnectionPool& pool, std::unique_ptr<Transport> transport, const PeerAddress& peer);

    ~Connection();

    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    // Enters the pool and serves the client until one of both closes.
    void Start();
    void CloseWhenIdle();
    void CloseNow();

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

    Stream& Lowest() const { return transport->Lowest(); }
    std::shared_ptr<Hold> HoldThis();
    void Open();
    void AwaitRequest();
    void ReadHead();
    void OnHeadBytes();
    void OnParseError(beast::error_code ec);
    void OnHead();
    void OnAdmitted(Admission admission);
    void SendContinue();
    void ReceiveBody();
    void ReceiveChunks();
    void OnChunkBytes();
    void ReceiveRest();
    void OnRequest();
    void Refuse(int status);
    void RefuseAndEnd(int status);
    void RefuseWith(Response response);
    void Send(Response response);
    void OnSent();
    void Linger();
    void Close();

    ConnectionPool& pool;
    ConnectionPool::Place place;
    const std::unique_ptr<Transport> transport;
    const PeerAddress peer;
    BodyBudget::Share share;
    beast::flat_buffer buffer;
    boost::optional<http::request_parser<ByteArrayBody>> parser;
    RequestHead pendingHead;
    QString account;           // whose body it is; empty: nobody's
    QByteArray body;           // that is being received
    std::int64_t received = 0; // of a body whose length was announced
    Pace pace;                 // of the body that is being received
    AnswerWriter writer;
    bool keepAlive = false;
    bool idle = true;
};
} // namespace server
