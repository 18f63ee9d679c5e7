#include "RpaPeer_p.h"
#include "RpaRunChannel_p.h"

#include <WbFoundation/JsonReader.h>
#include <WbFoundation/JsonWriter.h>

#include <QElapsedTimer>
#include <QLocalSocket>
#include <QRandomGenerator>
#include <QtEndian>

namespace
{

constexpr int HeaderBytes = 4;
// Longer than this at a time, and the user would feel a run that floods the log.
constexpr qint64 SliceMs = 4;
// What the system may hold for us while we are busy; the child then waits in its write.
constexpr qint64 SocketBufferBytes = 1024 * 1024;

QByteArray MakeToken()
{
    quint32 words[8];
    QRandomGenerator::system()->fillRange(words);
    return QByteArray(reinterpret_cast<const char*>(words), sizeof words).toHex();
}

// As long for a nearly right token as for a wrong one.
bool EqualInConstantTime(const QByteArray& a, const QByteArray& b)
{
    if (a.size() != b.size())
        return false;
    int difference = 0;
    for (int i = 0; i < a.size(); ++i)
        difference |= a.at(i) ^ b.at(i);
    return difference == 0;
}

} // namespace

RpaRunChannel::RpaRunChannel(QObject* parent) : QObject(parent), token(MakeToken())
{
    server.setSocketOptions(QLocalServer::UserAccessOption);
    server.setMaxPendingConnections(4);
    more.setSingleShot(true);
    connect(&server, &QLocalServer::newConnection, this, &RpaRunChannel::Accept);
    connect(&more, &QTimer::timeout, this, &RpaRunChannel::ReadSome);
}

RpaRunChannel::~RpaRunChannel()
{
    if (socket)
        socket->disconnect(this);
}

bool RpaRunChannel::Listen(const QString& folder)
{
    return server.listen(folder + QStringLiteral("/run.socket"));
}

QString RpaRunChannel::GetPath() const
{
    return server.fullServerName();
}

void RpaRunChannel::Accept()
{
    while (QLocalSocket* next = server.nextPendingConnection()) {
        if (socket) {
            next->abort();
            next->deleteLater();
            continue;
        }
        socket = next;
        socket->setReadBufferSize(SocketBufferBytes);
        connect(next, &QLocalSocket::readyRead, this, &RpaRunChannel::ReadSome);
        connect(next, &QLocalSocket::disconnected, this, [this] {
            ReadSome();
            if (!more.isActive())
                Close(QString());
        });
    }
}

void RpaRunChannel::ReadSome()
{
    QElapsedTimer clock;
    clock.start();
    while (socket) {
        // Frames are taken by moving an index; the bytes behind it go once per read, not once per frame.
        received.remove(0, taken);
        taken = 0;
        // Asked for as much as is there: asking for more would make room for all of it each time.
        received += socket->read(qMin(socket->bytesAvailable(), SocketBufferBytes));
        bool took = false;
        while (socket && TakeFrame()) {
            took = true;
            if (clock.elapsed() >= SliceMs) {
                more.start();
                return;
            }
        }
        if (!took)
            break;
    }
    if (socket && socket->state() == QLocalSocket::UnconnectedState)
        Close(QString());
}

bool RpaRunChannel::TakeFrame()
{
    const int available = received.size() - taken;
    if (available < HeaderBytes)
        return false;
    const auto length = qFromBigEndian<quint32>(received.constData() + taken);
    if (length > MaxFrameBytes) {
        Close(QStringLiteral("流程发来的数据超过 16 MB"));
        return false;
    }
    const int total = HeaderBytes + static_cast<int>(length);
    if (available < total)
        return false;

    const QByteArray body = received.mid(taken + HeaderBytes, static_cast<int>(length));
    taken += total;
    JsonReader reader(body);
    QVariant value;
    if (!reader.ReadVariant(value) || !reader.Finish() || value.userType() != QMetaType::QVariantMap) {
        Close(QStringLiteral("流程发来的数据无法识别：%1").arg(reader.GetReason()));
        return false;
    }
    if (greeted)
        emit SigFrame(value.toMap());
    else
        TakeHello(value.toMap());
    return true;
}

void RpaRunChannel::TakeHello(const QVariantMap& frame)
{
    if (frame.value(QStringLiteral("t")).toString() != QLatin1String("hello") ||
        !EqualInConstantTime(frame.value(QStringLiteral("token")).toString().toLatin1(), token)) {
        // Somebody else: the real child may still come.
        socket->disconnect(this);
        socket->abort();
        socket->deleteLater();
        socket = nullptr;
        received.clear();
        taken = 0;
        return;
    }
    greeted = true;
    server.close();
    peerPid = PeerPid(*socket);
    emit SigConnected();
}

void RpaRunChannel::Send(const QVariantMap& frame)
{
    if (!socket)
        return;
    JsonWriter writer;
    writer.Variant(frame);
    const QByteArray body = writer.Take();
    QByteArray bytes(HeaderBytes, Qt::Uninitialized);
    qToBigEndian(static_cast<quint32>(body.size()), bytes.data());
    bytes += body;
    socket->write(bytes);
    // The program stands still until its answer comes: not only with the next turn of the event loop.
    socket->flush();
}

void RpaRunChannel::Close(const QString& reason)
{
    if (!socket)
        return;
    QLocalSocket* gone = socket;
    socket = nullptr;
    more.stop();
    gone->disconnect(this);
    gone->abort();
    gone->deleteLater();
    emit SigClosed(reason);
}
