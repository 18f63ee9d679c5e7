#pragma once

#include <QByteArray>
#include <QLocalServer>
#include <QObject>
#include <QPointer>
#include <QTimer>
#include <QVariantMap>

class QLocalSocket;

// The wire between the editor and one child: frames of a 4-byte big-endian length and a JSON object over a
// local socket in a folder that only this user may enter. One connection is taken, and only with the token.
// What the child sends is not believed: sizes are bounded, frames are read in slices so that a chatty child
// cannot hold up the user, and a frame that is not well-formed ends the connection.
class RpaRunChannel : public QObject
{
    Q_OBJECT

public:
    static constexpr int MaxFrameBytes = 16 * 1024 * 1024;

    explicit RpaRunChannel(QObject* parent = nullptr);
    ~RpaRunChannel() override;

    // Listens below the folder. False when the socket cannot be made.
    bool Listen(const QString& folder);
    QString GetPath() const;
    QByteArray GetToken() const { return token; }

    void Send(const QVariantMap& frame);

    // Process id of the child as this process sees it; 0 before it has connected.
    qint64 GetPeerPid() const { return peerPid; }

    // Whether frames may still come that were sent before the child went away.
    bool HasUnread() const { return !socket.isNull(); }

signals:
    void SigConnected();
    void SigFrame(const QVariantMap& frame);
    // The child closed the connection or broke the rules; nothing follows.
    void SigClosed(const QString& reason);

private:
    void Accept();
    void ReadSome();
    bool TakeFrame();
    void TakeHello(const QVariantMap& frame);
    void Close(const QString& reason);

    QLocalServer server;
    QPointer<QLocalSocket> socket;
    QByteArray token;
    QByteArray received;
    int taken = 0; // of received
    QTimer more;
    qint64 peerPid = 0;
    bool greeted = false;
};
