// SPDX-License-Identifier: Apache-2.0

#include "FaultServer.h"

#include "FaultConnection_p.h"

#include <QCryptographicHash>
#include <QHostAddress>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMutex>
#include <QMutexLocker>
#include <QQueue>
#include <QTcpServer>
#include <QTcpSocket>
#include <QThread>

namespace
{
struct FaultName
{
    FaultServer::Fault fault;
    const char* name;
};

using Fault = FaultServer::Fault;

constexpr FaultName faultNames[] = {
    {Fault::None, "none"},
    {Fault::Silence, "silence"},
    {Fault::Duplicate, "duplicate"},
    {Fault::CutWithLength, "cut with length"},
    {Fault::CutWithoutLength, "cut without length"},
    {Fault::CutChunk, "cut chunk"},
    {Fault::BadChunkHeader, "bad chunk header"},
    {Fault::WrongDigest, "wrong digest"},
    {Fault::WrongEtag, "wrong etag"},
    {Fault::NoEtag, "no etag"},
    {Fault::Redirect, "redirect"},
    {Fault::CompressionBomb, "compression bomb"},
    {Fault::TransferCompression, "transfer compression"},
    {Fault::HeaderFlood, "header flood"},
    {Fault::InterimFlood, "interim flood"},
    {Fault::SlowDrip, "slow drip"},
    {Fault::CloseBeforeAnswer, "close before answer"},
    {Fault::CloseWithinHeader, "close within header"},
    {Fault::Reset, "reset"},
    {Fault::InvalidJson, "invalid json"},
    {Fault::DeepJson, "deep json"},
    {Fault::DuplicateKeyJson, "duplicate key json"},
    {Fault::HugeContentLength, "huge content length"},
    {Fault::BadContentLength, "bad content length"},
    {Fault::NotHttp, "not http"},
};
} // namespace

class FaultServer::Private
{
public:
    Private()
    {
        script = [](const Request&) {
            return Refusal(404, "not-found", QStringLiteral("没有为此请求准备回答"));
        };
        thread.setObjectName(QStringLiteral("FaultServer"));
        root.moveToThread(&thread);
        thread.start();
        QMetaObject::invokeMethod(
            &root, [this] { Listen(); }, Qt::BlockingQueuedConnection);
    }

    ~Private()
    {
        QMetaObject::invokeMethod(
            &root, [this] { server.reset(); }, Qt::BlockingQueuedConnection);
        thread.quit();
        thread.wait();
    }

    void Listen()
    {
        server = std::make_unique<QTcpServer>();
        QObject::connect(server.get(), &QTcpServer::newConnection, server.get(), [this] { Accept(); });
        if (!server->listen(QHostAddress::LocalHost))
            qFatal("the fault server cannot listen");
        port = server->serverPort();
    }

    void Accept()
    {
        while (QTcpSocket* socket = server->nextPendingConnection()) {
            {
                const QMutexLocker lock(&mutex);
                ++connectionCount;
            }
            new FaultConnection(
                socket, [this](const Request& request) { return Handle(request); }, &gate, socket);
        }
    }

    Reply Handle(const Request& request)
    {
        Script current;
        {
            const QMutexLocker lock(&mutex);
            requests.append(request);
            if (!queue.isEmpty())
                return queue.dequeue();
            current = script;
        }
        return current(request);
    }

    mutable QMutex mutex;
    QQueue<Reply> queue;
    Script script;
    QVector<Request> requests;
    int connectionCount = 0;
    quint16 port = 0;
    QThread thread;
    QObject root; // lives on thread
    FaultGate gate;
    std::unique_ptr<QTcpServer> server;
};

QVector<Fault> FaultServer::AllFaults()
{
    QVector<Fault> faults;
    for (const auto& entry : faultNames)
        faults.append(entry.fault);
    return faults;
}

const char* FaultServer::NameOf(Fault fault)
{
    for (const auto& entry : faultNames)
        if (entry.fault == fault)
            return entry.name;
    return "?";
}

FaultServer::Reply FaultServer::Json(int status, const QByteArray& body)
{
    Reply reply;
    reply.status = status;
    reply.headers = {qMakePair(QByteArray("Content-Type"), QByteArray("application/json"))};
    reply.body = body;
    return reply;
}

FaultServer::Reply FaultServer::Refusal(int status, const QByteArray& code, const QString& message)
{
    const QJsonObject body{{QStringLiteral("code"), QString::fromLatin1(code)},
                           {QStringLiteral("message"), message}};
    return Json(status, QJsonDocument(body).toJson(QJsonDocument::Compact));
}

FaultServer::Reply FaultServer::Data(const QByteArray& body, int revision)
{
    Reply reply = Json(200, body);
    const auto digest = QCryptographicHash::hash(body, QCryptographicHash::Sha256).toBase64();
    reply.headers.append(qMakePair(QByteArray("Content-Digest"), "sha-256=:" + digest + ":"));
    reply.headers.append(qMakePair(QByteArray("ETag"), '"' + QByteArray::number(revision) + '"'));
    return reply;
}

FaultServer::Reply FaultServer::Failing(Fault fault)
{
    Reply reply = Data(R"({"name":"内容","list":[1,2,3,4,5,6,7,8,9]})", 1);
    reply.fault = fault;
    reply.location = "http://127.0.0.1:1/elsewhere";
    return reply;
}

FaultServer::FaultServer() : d(std::make_unique<Private>()) {}

FaultServer::~FaultServer() = default;

QUrl FaultServer::GetUrl() const
{
    return QUrl(QStringLiteral("http://127.0.0.1:%1").arg(d->port));
}

void FaultServer::Enqueue(const Reply& reply)
{
    const QMutexLocker lock(&d->mutex);
    d->queue.enqueue(reply);
}

void FaultServer::SetScript(Script script)
{
    const QMutexLocker lock(&d->mutex);
    d->script = std::move(script);
}

QVector<FaultServer::Request> FaultServer::GetRequests() const
{
    const QMutexLocker lock(&d->mutex);
    return d->requests;
}

void FaultServer::AnswerHeld()
{
    emit d->gate.SigOpened();
}

int FaultServer::GetRequestCount() const
{
    const QMutexLocker lock(&d->mutex);
    return d->requests.size();
}

int FaultServer::GetConnectionCount() const
{
    const QMutexLocker lock(&d->mutex);
    return d->connectionCount;
}
