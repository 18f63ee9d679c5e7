// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "FaultServer.h"

#include <QObject>

#include <functional>

class QTcpSocket;

// What holds answers back until it opens.
class FaultGate : public QObject
{
    Q_OBJECT

signals:
    void SigOpened();
};

// One connection of the FaultServer: reads requests, writes what the reply says. Deletes itself with its
// socket.
class FaultConnection : public QObject
{
    Q_OBJECT

public:
    using Handler = std::function<FaultServer::Reply(const FaultServer::Request& request)>;

    FaultConnection(QTcpSocket* socket, Handler handler, FaultGate* gate, QObject* parent);

private:
    void SlotRead();
    void Hold(const FaultServer::Reply& reply);
    bool TakeRequest(FaultServer::Request* request);
    void Answer(const FaultServer::Reply& reply);
    void WriteWhole(FaultServer::Reply reply);
    bool WriteBroken(const FaultServer::Reply& reply);
    void WriteAndClose(const QByteArray& bytes);
    void Drip(const QByteArray& bytes);
    void Flood(const QByteArray& start, const QByteArray& line);

    QTcpSocket* const socket; // owns this object
    const Handler handler;
    FaultGate* const gate;
    QByteArray received;
};
