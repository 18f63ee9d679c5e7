// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "../base/Account.h"

#include <QByteArray>
#include <QString>

#include <functional>
#include <optional>
#include <utility>
#include <vector>

namespace server
{
using Headers = std::vector<std::pair<QByteArray, QByteArray>>;

// What is known of a request before its body is read.
struct RequestHead
{
    QByteArray method;
    QByteArray path;  // as sent, without the query
    QByteArray query; // as sent, without the question mark
    Headers headers;  // names in lower case
    std::optional<qint64> contentLength;
    bool hasBody = false;
    bool fromLoopback = false;
    QByteArray peer; // the client's address as the limits count it

    // The value of a header, given in lower case; null when it is missing.
    QByteArray Header(const char* name) const;

    // The decoded value of a query parameter; null when it is missing.
    QString QueryValue(const char* name) const;
};

struct Request : RequestHead
{
    QByteArray body;
    std::vector<QString> pathValues; // what stands for the {names} of the route's pattern, in their order
    std::optional<Account> account;  // whom the token stands for; set on every route that asks for one
    QByteArray token;

    const QString& PathValue(std::size_t index = 0) const { return pathValues.at(index); }
};

struct Response
{
    int status = 200;
    QByteArray contentType = QByteArrayLiteral("application/json");
    QByteArray body;
    Headers headers;
    QString account; // whose share of the memory the body takes; empty: nobody's
    QString cause;   // of a failure; for the log, not for the client

    static Response Json(int status, QByteArray body);
    static Response Empty(int status = 204);

    // A refusal: a stable name for programs and a text that the author reads.
    static Response Refuse(int status, const char* code, const QString& message);

    Response& With(const char* name, QByteArray value);
    QByteArray Header(const char* name) const;
};

// Answers one request, exactly once, from any thread.
using Reply = std::function<void(Response)>;
} // namespace server
