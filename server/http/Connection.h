#pragma once

#include "BeastTypes.h"
#include "ByteArrayBody.h"
#include "ConnectionPool.h"
#include "Request.h"

#include <memory>
#include <optional>

namespace server
{
// One client. Everything of it runs on its strand; it lives as long as one of its operations is under way.
class Connection : public std::enable_shared_from_this<Connection>
{
public:
    Connection(ConnectionPool& pool, Socket socket);

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

    std::shared_ptr<Hold> HoldThis();
    void AwaitRequest();
    void OnFirstBytes(beast::error_code ec);
    void OnReadError(beast::error_code ec);
    void OnHead();
    void ReadBody();
    void SendContinue();
    void ReceiveBody();
    void OnRequest();
    void Refuse(int status);
    void RefuseWith(Response response);
    void Send(Response response);
    void OnSent(beast::error_code ec);
    void Linger();
    void ReturnBudget();
    void Close();

    ConnectionPool& pool;
    ConnectionPool::Place place;
    Stream stream;
    beast::flat_buffer buffer;
    boost::optional<http::request_parser<ByteArrayBody>> parser;
    std::optional<http::response<ByteArrayBody>> outgoing;
    RequestHead pendingHead;
    std::int64_t budget = 0;
    bool fromLoopback = false;
    bool keepAlive = false;
    bool idle = true;
};
} // namespace server
