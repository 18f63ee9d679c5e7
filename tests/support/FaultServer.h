// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QHash>
#include <QMetaType>
#include <QPair>
#include <QUrl>
#include <QVector>

#include <chrono>
#include <functional>
#include <memory>

// An HTTP server that does what a test tells it to, right or wrong. It runs on a thread of its own, so it
// answers while the test waits in any way. Listens on a free port of 127.0.0.1 from construction to
// destruction.
//
//   FaultServer server;
//   server.Enqueue(FaultServer::Json(200, "{}"));                          // the next request
//   server.SetScript([](const auto&) { return FaultServer::Failing(FaultServer::Fault::Silence); }); // all
//   others
class FaultServer
{
public:
    enum class Fault
    {
        None,
        Silence,             // reads the request and never answers
        Duplicate,           // the answer twice
        CutWithLength,       // half the body announced by Content-Length, then closes
        CutWithoutLength,    // half the body of an answer that ends with the connection
        CutChunk,            // closes within a chunk
        BadChunkHeader,      // a chunk size that is no number
        WrongDigest,         // Content-Digest of other bytes
        WrongEtag,           // an ETag that is no revision
        NoEtag,              // none at all
        Redirect,            // 302 to location
        CompressionBomb,     // few bytes that claim to unpack to many
        TransferCompression, // the same by Transfer-Encoding
        HeaderFlood,         // header lines without end
        InterimFlood,        // "100 Continue" without end
        SlowDrip,            // one byte of the body every few milliseconds
        CloseBeforeAnswer,   // reads the request and closes
        CloseWithinHeader,   // closes after the status line
        Reset,               // TCP reset instead of an answer
        InvalidJson,         // length and digest are right, the JSON is cut
        DeepJson,            // 10,000 nested arrays
        DuplicateKeyJson,    // one member name twice
        HugeContentLength,   // announces a petabyte
        BadContentLength,    // announces "many" bytes
        NotHttp,             // another protocol
    };

    static QVector<Fault> AllFaults();
    static const char* NameOf(Fault fault);

    struct Request
    {
        QByteArray method;
        QByteArray path;                       // with query, as sent
        QHash<QByteArray, QByteArray> headers; // lower-case names
        QByteArray body;
    };

    struct Reply
    {
        int status = 200;
        QVector<QPair<QByteArray, QByteArray>> headers;
        QByteArray body;
        Fault fault = Fault::None;
        // Before the answer.
        std::chrono::milliseconds delay{0};
        // Not answered before AnswerHeld().
        bool isHeld = false;
        // Of Fault::Redirect.
        QByteArray location;
    };

    using Script = std::function<Reply(const Request& request)>;

    // A right answer with a JSON body.
    static Reply Json(int status, const QByteArray& body);
    // A refusal as the version service words it.
    static Reply Refusal(int status, const QByteArray& code, const QString& message);
    // The data of a version: digest, length and ETag fit.
    static Reply Data(const QByteArray& body, int revision);
    // A right answer with this fault worked in.
    static Reply Failing(Fault fault);

    FaultServer();
    ~FaultServer();

    FaultServer(const FaultServer&) = delete;
    FaultServer& operator=(const FaultServer&) = delete;

    // "http://127.0.0.1:PORT"
    QUrl GetUrl() const;

    // Replies for the next requests, in order; they go before the script.
    void Enqueue(const Reply& reply);
    // Answers now what was held, in the order it came.
    void AnswerHeld();
    // Decides about every other request; called on the server's thread. At first everything is answered by
    // 404.
    void SetScript(Script script);

    // All requests read completely so far, in the order they came.
    QVector<Request> GetRequests() const;
    int GetRequestCount() const;
    // Connections that were ever accepted.
    int GetConnectionCount() const;

private:
    class Private;
    const std::unique_ptr<Private> d;
};

Q_DECLARE_METATYPE(FaultServer::Fault)
Q_DECLARE_METATYPE(FaultServer::Reply)
