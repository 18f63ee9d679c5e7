// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "RpaRunHandshake_p.h"

#include <QByteArray>
#include <QObject>
#include <QPointer>
#include <QTimer>
#include <QVariantMap>

// The wire between the editor and one child: frames of a 4-byte big-endian length and a JSON object over the
// one connection that the handshake lets in. What the child sends is not believed: sizes are bounded, frames
// are read in slices so that a chatty child cannot hold up the user, and a frame that is not well-formed ends
// the connection.
class RpaRunChannel : public QObject
{
    Q_OBJECT

public:
    static constexpr int maxFrameBytes = 16 * 1024 * 1024;

    explicit RpaRunChannel(QObject* parent = nullptr);
    ~RpaRunChannel() override;

    // The folder belongs to this run. False when the system refuses.
    bool Listen(const QString& folder) { return handshake.Open(folder); }
    // Of the listener and what the child has to show there, for its command line.
    QString GetAddress() const { return handshake.GetAddress(); }
    QByteArray GetToken() const { return handshake.GetToken(); }

    void Send(const QVariantMap& frame);

    // Whether frames may still come that were sent before the child went away.
    bool HasUnread() const { return !socket.isNull(); }

signals:
    void SigConnected();
    void SigFrame(const QVariantMap& frame);
    // The child closed the connection or broke the rules; nothing follows.
    void SigClosed(const QString& reason);

private:
    void Take(RpaRunSocket* admitted);
    void ReadSome();
    bool TakeFrame();
    void Close(const QString& reason);

    RpaRunHandshake handshake;
    QPointer<RpaRunSocket> socket;
    QByteArray received;
    int taken = 0; // of received
    QTimer more;
};
