// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QHash>
#include <QObject>
#include <QTcpServer>

class QTcpSocket;

// Stands between a client and a real server, and plays a server that dies: between the work and its answer,
// or before the work. To the client it is the server. Lives on the thread that made it, which must run an
// event loop.
//
//   ServerRelay relay(server.Port());
//   QVERIFY(relay.Listen());
//   relay.DieAtAnswerOf("PUT");     // the server will have done it
class ServerRelay : public QObject
{
    Q_OBJECT

public:
    explicit ServerRelay(quint16 serverPort, QObject* parent = nullptr);
    ~ServerRelay() override;

    // On a free port of 127.0.0.1, after a death on the port it had. False when that is not possible.
    bool Listen();
    quint16 GetPort() const { return port; }

    // The next request of this method is the last: it reaches the server, its answer reaches nobody.
    void DieAtAnswerOf(const QByteArray& method);
    // The next request of this method is the last, and reaches nobody.
    void DieAtRequestOf(const QByteArray& method);
    // The answer of the next request of this method waits here until answers are released, once the server
    // has done it (SigHeld); all others pass.
    void HoldAnswerOf(const QByteArray& method);
    // Every connection breaks off and no new one is taken.
    void Die();

    // Answers wait here until they are released.
    void HoldAnswers();
    void ReleaseAnswers();

signals:
    void SigDied();
    // The server has done it.
    void SigHeld();

private:
    enum class Fate
    {
        Lives,
        DiesAtAnswer,
        DiesAtRequest,
        HoldsAnswer,
    };

    void SlotConnected();
    void PassOn(QTcpSocket* from, QTcpSocket* to, bool isRequest);

    const quint16 serverPort;
    quint16 port = 0;
    QTcpServer listener;
    QHash<QTcpSocket*, QTcpSocket*> clients; // by their connection to the server
    bool holdsAnswers = false;
    Fate fate = Fate::Lives;
    QByteArray method;
};
