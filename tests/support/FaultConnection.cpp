// SPDX-License-Identifier: Apache-2.0

#include "FaultConnection_p.h"
#include "NativeSocket.h"

#include <QCryptographicHash>
#include <QTcpSocket>
#include <QTimer>

#include <memory>

using Fault = FaultServer::Fault;

namespace
{
constexpr int dripMilliseconds = 5;
constexpr int floodBytes = 4 * 1024 * 1024;

QByteArray StatusLine(int status)
{
    return "HTTP/1.1 " + QByteArray::number(status) + " X\r\n";
}

QByteArray HeaderBlock(const FaultServer::Reply& reply)
{
    QByteArray block;
    for (const auto& header : reply.headers)
        block += header.first + ": " + header.second + "\r\n";
    return block;
}

QByteArray WithLength(const FaultServer::Reply& reply, const QByteArray& length)
{
    return StatusLine(reply.status) + HeaderBlock(reply) + "Content-Length: " + length + "\r\n\r\n";
}

QByteArray Whole(const FaultServer::Reply& reply)
{
    if (reply.status == 204)
        return StatusLine(reply.status) + HeaderBlock(reply) + "\r\n";
    return WithLength(reply, QByteArray::number(reply.body.size())) + reply.body;
}

QByteArray Chunked(const FaultServer::Reply& reply, const QByteArray& encoding, const QByteArray& rest)
{
    return StatusLine(reply.status) + HeaderBlock(reply) + "Transfer-Encoding: " + encoding + "\r\n\r\n" +
           QByteArray::number(reply.body.size(), 16) + "\r\n" + rest;
}

QByteArray Half(const QByteArray& body)
{
    return body.left(body.size() / 2);
}

void SetHeader(FaultServer::Reply* reply, const QByteArray& name, const QByteArray& value)
{
    for (auto& header : reply->headers) {
        if (header.first.toLower() == name.toLower()) {
            header.second = value;
            return;
        }
    }
    reply->headers.append(qMakePair(name, value));
}

void RemoveHeader(FaultServer::Reply* reply, const QByteArray& name)
{
    for (int i = reply->headers.size() - 1; i >= 0; --i)
        if (reply->headers.at(i).first.toLower() == name.toLower())
            reply->headers.remove(i);
}

QByteArray DigestOf(const QByteArray& body)
{
    return "sha-256=:" + QCryptographicHash::hash(body, QCryptographicHash::Sha256).toBase64() + ":";
}

void ReplaceBody(FaultServer::Reply* reply, const QByteArray& body)
{
    reply->body = body;
    SetHeader(reply, "Content-Digest", DigestOf(body));
}

void SendReset(QTcpSocket* socket)
{
    NativeSocket::ResetOnClose(socket->socketDescriptor());
    socket->abort();
}

QByteArray Bomb()
{
    constexpr int unpackedBytes = 16 * 1024 * 1024;
    constexpr int lengthPrefix = 4; // of qCompress; the rest is what "deflate" means
    static const QByteArray bomb = qCompress(QByteArray(unpackedBytes, '0'), 1).mid(lengthPrefix);
    return bomb;
}
} // namespace

FaultConnection::FaultConnection(QTcpSocket* tcpSocket, Handler requestHandler, FaultGate* answerGate,
                                 QObject* parent)
    : QObject(parent), socket(tcpSocket), handler(std::move(requestHandler)), gate(answerGate)
{
    connect(socket, &QTcpSocket::readyRead, this, &FaultConnection::SlotRead);
    connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
}

void FaultConnection::SlotRead()
{
    received += socket->readAll();
    FaultServer::Request request;
    while (TakeRequest(&request)) {
        const auto reply = handler(request);
        if (reply.isHeld)
            Hold(reply);
        else if (reply.delay.count() > 0)
            QTimer::singleShot(reply.delay, this, [this, reply] { Answer(reply); });
        else
            Answer(reply);
    }
}

void FaultConnection::Hold(const FaultServer::Reply& reply)
{
    const auto held = std::make_shared<QMetaObject::Connection>();
    *held = connect(gate, &FaultGate::SigOpened, this, [this, held, reply] {
        disconnect(*held);
        Answer(reply);
    });
}

bool FaultConnection::TakeRequest(FaultServer::Request* request)
{
    const int end = received.indexOf("\r\n\r\n");
    if (end < 0)
        return false;
    const QList<QByteArray> lines = received.left(end).split('\n');
    const QList<QByteArray> words = lines.first().trimmed().split(' ');
    *request = {};
    request->method = words.value(0);
    request->path = words.value(1);
    for (const QByteArray& line : lines.mid(1)) {
        const int colon = line.indexOf(':');
        request->headers.insert(line.left(colon).trimmed().toLower(), line.mid(colon + 1).trimmed());
    }
    const int bodyStart = end + 4;
    const int bodyBytes = request->headers.value("content-length").toInt();
    if (received.size() < bodyStart + bodyBytes)
        return false;
    request->body = received.mid(bodyStart, bodyBytes);
    received.remove(0, bodyStart + bodyBytes);
    return true;
}

void FaultConnection::Answer(const FaultServer::Reply& reply)
{
    if (socket->state() != QAbstractSocket::ConnectedState)
        return;
    if (!WriteBroken(reply))
        WriteWhole(reply);
}

// Faults within an answer that HTTP itself finds right.
void FaultConnection::WriteWhole(FaultServer::Reply reply)
{
    switch (reply.fault) {
    case Fault::WrongDigest:
        SetHeader(&reply, "Content-Digest", DigestOf(reply.body + "x"));
        break;
    case Fault::WrongEtag:
        SetHeader(&reply, "ETag", "\"oops\"");
        break;
    case Fault::NoEtag:
        RemoveHeader(&reply, "ETag");
        break;
    case Fault::Redirect:
        reply.status = 302;
        SetHeader(&reply, "Location", reply.location);
        break;
    case Fault::CompressionBomb:
        SetHeader(&reply, "Content-Encoding", "deflate");
        ReplaceBody(&reply, Bomb());
        break;
    case Fault::InvalidJson:
        ReplaceBody(&reply, R"({"versions":[{"id":)");
        break;
    case Fault::DeepJson:
        ReplaceBody(&reply, QByteArray(10000, '[') + QByteArray(10000, ']'));
        break;
    case Fault::DuplicateKeyJson:
        ReplaceBody(&reply, R"({"a":{"b":1},"a":{"b":2}})");
        break;
    default:
        break;
    }
    const QByteArray bytes = Whole(reply);
    socket->write(reply.fault == Fault::Duplicate ? bytes + bytes : bytes);
}

// Faults below that; false when the reply has none of them.
bool FaultConnection::WriteBroken(const FaultServer::Reply& reply)
{
    const QByteArray length = QByteArray::number(reply.body.size());
    switch (reply.fault) {
    case Fault::Silence:
        return true;
    case Fault::CutWithLength:
        WriteAndClose(WithLength(reply, length) + Half(reply.body));
        return true;
    case Fault::CutWithoutLength:
        WriteAndClose(StatusLine(reply.status) + HeaderBlock(reply) + "Connection: close\r\n\r\n" +
                      Half(reply.body));
        return true;
    case Fault::CutChunk:
        WriteAndClose(Chunked(reply, "chunked", Half(reply.body)));
        return true;
    case Fault::BadChunkHeader:
        WriteAndClose(Chunked(reply, "chunked", reply.body + "\r\nZZ\r\n"));
        return true;
    case Fault::TransferCompression:
        WriteAndClose(StatusLine(reply.status) + "Transfer-Encoding: deflate\r\n\r\n" + Bomb());
        return true;
    case Fault::HeaderFlood:
        Flood(StatusLine(reply.status), "X-Flood: " + QByteArray(1000, 'x') + "\r\n");
        return true;
    case Fault::InterimFlood:
        Flood({}, "HTTP/1.1 100 Continue\r\n\r\n");
        return true;
    case Fault::SlowDrip:
        socket->write(WithLength(reply, length));
        Drip(reply.body);
        return true;
    case Fault::CloseBeforeAnswer:
        WriteAndClose({});
        return true;
    case Fault::CloseWithinHeader:
        WriteAndClose(StatusLine(reply.status) + "Content-Le");
        return true;
    case Fault::Reset:
        SendReset(socket);
        return true;
    case Fault::HugeContentLength:
        socket->write(WithLength(reply, "1000000000000000") + reply.body);
        return true;
    case Fault::BadContentLength:
        socket->write(WithLength(reply, "many") + reply.body);
        return true;
    case Fault::NotHttp:
        WriteAndClose("SSH-2.0-OpenSSH_9.2\r\n");
        return true;
    default:
        return false;
    }
}

void FaultConnection::WriteAndClose(const QByteArray& bytes)
{
    socket->write(bytes);
    socket->disconnectFromHost();
}

void FaultConnection::Drip(const QByteArray& bytes)
{
    if (bytes.isEmpty() || socket->state() != QAbstractSocket::ConnectedState)
        return;
    socket->write(bytes.left(1));
    QTimer::singleShot(dripMilliseconds, this, [this, bytes] { Drip(bytes.mid(1)); });
}

void FaultConnection::Flood(const QByteArray& start, const QByteArray& line)
{
    socket->write(start);
    socket->write(line.repeated(floodBytes / line.size()));
}
