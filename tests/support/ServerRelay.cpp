// SPDX-License-Identifier: Apache-2.0

#include "ServerRelay.h"

#include <QHostAddress>
#include <QTcpSocket>

namespace
{
const char* const lastRequest = "lastRequest";
const char* const isHeld = "isHeld";
} // namespace

ServerRelay::ServerRelay(quint16 servedPort, QObject* parent)
    : QObject(parent), serverPort(servedPort), listener(this)
{
    connect(&listener, &QTcpServer::newConnection, this, &ServerRelay::SlotConnected);
}

ServerRelay::~ServerRelay() = default;

bool ServerRelay::Listen()
{
    const bool listens = listener.listen(QHostAddress::LocalHost, port);
    port = listens ? listener.serverPort() : port;
    return listens;
}

void ServerRelay::DieAtAnswerOf(const QByteArray& lastMethod)
{
    fate = Fate::DiesAtAnswer;
    method = lastMethod;
}

void ServerRelay::DieAtRequestOf(const QByteArray& lastMethod)
{
    fate = Fate::DiesAtRequest;
    method = lastMethod;
}

void ServerRelay::HoldAnswerOf(const QByteArray& lastMethod)
{
    fate = Fate::HoldsAnswer;
    method = lastMethod;
}

void ServerRelay::Die()
{
    fate = Fate::Lives;
    clients.clear();
    listener.close();
    const auto sockets = findChildren<QTcpSocket*>();
    for (QTcpSocket* socket : sockets) {
        socket->disconnect(this);
        socket->abort();
        socket->deleteLater();
    }
    emit SigDied();
}

void ServerRelay::HoldAnswers()
{
    holdsAnswers = true;
}

void ServerRelay::ReleaseAnswers()
{
    holdsAnswers = false;
    for (auto pair = clients.cbegin(); pair != clients.cend(); ++pair) {
        pair.key()->setProperty(isHeld, false);
        PassOn(pair.key(), pair.value(), false);
    }
}

void ServerRelay::SlotConnected()
{
    while (QTcpSocket* client = listener.nextPendingConnection()) {
        client->setParent(this);
        auto* server = new QTcpSocket(this);
        clients.insert(server, client);
        connect(client, &QTcpSocket::readyRead, this, [=] { PassOn(client, server, true); });
        connect(server, &QTcpSocket::connected, this, [=] { PassOn(client, server, true); });
        connect(server, &QTcpSocket::readyRead, this, [=] { PassOn(server, client, false); });
        connect(client, &QTcpSocket::disconnected, server, &QTcpSocket::disconnectFromHost);
        connect(server, &QTcpSocket::disconnected, client, &QTcpSocket::disconnectFromHost);
        server->connectToHost(QHostAddress::LocalHost, serverPort);
    }
}

void ServerRelay::PassOn(QTcpSocket* from, QTcpSocket* to, bool isRequest)
{
    if (to->state() != QAbstractSocket::ConnectedState || (!isRequest && holdsAnswers))
        return; // comes again when it is connected, or released
    if (!isRequest && fate == Fate::HoldsAnswer && from->property(lastRequest).toBool()) {
        fate = Fate::Lives;
        from->setProperty(lastRequest, false);
        from->setProperty(isHeld, true);
        emit SigHeld();
    }
    if (!isRequest && from->property(isHeld).toBool())
        return;
    const QByteArray bytes = from->readAll();
    if (isRequest && fate != Fate::Lives && bytes.startsWith(method + ' ')) {
        if (fate == Fate::DiesAtRequest) {
            Die();
            return;
        }
        to->setProperty(lastRequest, true);
    }
    if (!isRequest && from->property(lastRequest).toBool()) {
        Die();
        return;
    }
    to->write(bytes);
}
