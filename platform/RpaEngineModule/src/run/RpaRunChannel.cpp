// SPDX-License-Identifier: Apache-2.0

#include "RpaRunChannel_p.h"

#include <WbFoundation/JsonReader.h>
#include <WbFoundation/JsonWriter.h>

#include <QElapsedTimer>
#include <QtEndian>

namespace
{

constexpr int headerBytes = 4;
// Longer than this at a time, and the user would feel a run that floods the log.
constexpr qint64 sliceMs = 4;
// Between two such times: on Windows a timer comes only when nothing else is waiting, and the one that ends a
// stopped run must come.
constexpr int pauseMs = 1;
// What the system may hold for us while we are busy; the child then waits in its write.
constexpr qint64 socketBufferBytes = 1024 * 1024;
} // namespace

RpaRunChannel::RpaRunChannel(QObject* parent) : QObject(parent)
{
    more.setSingleShot(true);
    more.setInterval(pauseMs);
    connect(&handshake, &RpaRunHandshake::SigAdmitted, this, &RpaRunChannel::Take);
    connect(&more, &QTimer::timeout, this, &RpaRunChannel::ReadSome);
}

RpaRunChannel::~RpaRunChannel()
{
    if (socket)
        socket->disconnect(this);
}

void RpaRunChannel::Take(RpaRunSocket* admitted)
{
    socket = admitted;
    socket->setParent(this);
    socket->setReadBufferSize(socketBufferBytes);
    RpaRunSockets::Prepare(*socket);
    connect(admitted, &RpaRunSocket::readyRead, this, [this] {
        if (!more.isActive())
            ReadSome();
    });
    connect(admitted, &RpaRunSocket::disconnected, this, [this] {
        ReadSome();
        if (!more.isActive())
            Close(QString());
    });
    emit SigConnected();
    // It may have said more than its token already.
    ReadSome();
}

void RpaRunChannel::ReadSome()
{
    QElapsedTimer clock;
    clock.start();
    while (socket) {
        // Frames are taken by moving an index; the bytes behind it go once per read, not once per frame.
        received.remove(0, taken);
        taken = 0;
        // Asked for as much as is there: asking for more would make room for all of it each time, and asking
        // a socket that a failed write has closed draws a warning.
        if (const qint64 there = qMin(socket->bytesAvailable(), socketBufferBytes))
            received += socket->read(there);
        bool took = false;
        while (socket && TakeFrame()) {
            took = true;
            if (clock.elapsed() >= sliceMs) {
                more.start();
                return;
            }
        }
        if (!took)
            break;
    }
    if (socket && socket->state() == RpaRunSocket::UnconnectedState)
        Close(QString());
}

bool RpaRunChannel::TakeFrame()
{
    const int available = received.size() - taken;
    if (available < headerBytes)
        return false;
    const auto length = qFromBigEndian<quint32>(received.constData() + taken);
    if (length > maxFrameBytes) {
        Close(QStringLiteral("流程发来的数据超过 16 MB"));
        return false;
    }
    const int total = headerBytes + static_cast<int>(length);
    if (available < total)
        return false;

    const QByteArray body = received.mid(taken + headerBytes, static_cast<int>(length));
    taken += total;
    JsonReader reader(body);
    QVariant value;
    if (!reader.ReadVariant(value) || !reader.Finish() || value.userType() != QMetaType::QVariantMap) {
        Close(QStringLiteral("流程发来的数据无法识别：%1").arg(reader.GetReason()));
        return false;
    }
    emit SigFrame(value.toMap());
    return true;
}

void RpaRunChannel::Send(const QVariantMap& frame)
{
    if (!socket)
        return;
    JsonWriter writer;
    writer.Variant(frame);
    const QByteArray body = writer.Take();
    QByteArray bytes(headerBytes, Qt::Uninitialized);
    qToBigEndian(static_cast<quint32>(body.size()), bytes.data());
    bytes += body;
    RpaRunSockets::SendAtOnce(*socket, bytes);
}

void RpaRunChannel::Close(const QString& reason)
{
    if (!socket)
        return;
    RpaRunSocket* gone = socket;
    socket = nullptr;
    more.stop();
    gone->disconnect(this);
    gone->abort();
    gone->deleteLater();
    emit SigClosed(reason);
}
