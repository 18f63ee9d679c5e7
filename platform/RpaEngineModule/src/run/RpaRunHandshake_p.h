// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "RpaRunSocket_p.h"

#include <QByteArray>
#include <QObject>
#include <QVector>

// Lets in the child of one run: the first connection that begins with the run's token. Whoever says anything
// else, says nothing for some seconds or leaves is turned away; of a stranger no more is read than a token is
// long. When many wait, the one that has waited longest makes room.
class RpaRunHandshake : public QObject
{
    Q_OBJECT

public:
    static constexpr int patienceMs = 5000;
    static constexpr int placesAtMost = 8;

    explicit RpaRunHandshake(QObject* parent = nullptr);
    ~RpaRunHandshake() override;

    // See RpaRunSockets::Listen().
    bool Open(const QString& folder) { return RpaRunSockets::Listen(server, folder); }
    QString GetAddress() const { return RpaRunSockets::GetAddress(server); }
    // What the child has to send before anything else: 64 letters and digits.
    QByteArray GetToken() const { return token; }

signals:
    // Once; the socket is closed and everybody else turned away. The socket belongs to the receiver and may
    // hold bytes that came behind the token.
    void SigAdmitted(RpaRunSocket* socket);

private:
    void Accept();
    void Look(RpaRunSocket* guest);
    void TurnAway(RpaRunSocket* guest);
    void Close();

    RpaRunServer server;
    const QByteArray token;
    QVector<RpaRunSocket*> guests; // longest waiting first
};
