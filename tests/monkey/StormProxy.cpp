// SPDX-License-Identifier: Apache-2.0

#include "StormProxy.h"

#include <QHostAddress>
#include <QPointer>
#include <QTcpSocket>
#include <QTimer>

namespace
{
constexpr int latestMs = 2000;
constexpr int longestWholeBytes = 600; // a cut answer ends somewhere before

int UpTo(std::mt19937& random, int most)
{
    return std::uniform_int_distribution<int>(0, most)(random);
}

// Everything that arrives at one end leaves at the other, and both end together.
void Join(QTcpSocket* from, QTcpSocket* to)
{
    const auto pass = [from, to] {
        if (from->isOpen() && to->isOpen())
            to->write(from->readAll());
    };
    QObject::connect(from, &QTcpSocket::readyRead, to, pass);
    QObject::connect(from, &QTcpSocket::disconnected, to, &QTcpSocket::disconnectFromHost);
    pass();
}
} // namespace

StormProxy::StormProxy(quint32 seed, QObject* parent) : QObject(parent), random(seed)
{
    connect(&server, &QTcpServer::newConnection, this, &StormProxy::SlotConnection);
}

bool StormProxy::Listen()
{
    return server.listen(QHostAddress::LocalHost);
}

void StormProxy::SetWeather(Weather now)
{
    weather = now;
    if (now == Weather::Calm)
        return;
    const auto guests = server.findChildren<QTcpSocket*>(QString(), Qt::FindDirectChildrenOnly);
    for (QTcpSocket* guest : guests)
        guest->abort();
}

void StormProxy::SlotConnection()
{
    while (QTcpSocket* guest = server.nextPendingConnection()) {
        connect(guest, &QTcpSocket::disconnected, guest, &QObject::deleteLater);
        switch (weather) {
        case Weather::Silent:
            break;
        case Weather::Failing:
            connect(guest, &QTcpSocket::readyRead, guest, [guest] { Refuse(guest); });
            break;
        case Weather::Closing:
            connect(guest, &QTcpSocket::readyRead, guest, &QTcpSocket::abort);
            break;
        case Weather::Late:
            QTimer::singleShot(UpTo(random, latestMs), guest, [this, guest] { Pass(guest); });
            break;
        case Weather::Cutting:
        case Weather::Calm:
            Pass(guest);
            break;
        }
    }
}

void StormProxy::Pass(QTcpSocket* guest)
{
    auto* host = new QTcpSocket(guest);
    connect(host, QOverload<QAbstractSocket::SocketError>::of(&QTcpSocket::errorOccurred), guest,
            &QTcpSocket::disconnectFromHost);
    host->connectToHost(QHostAddress::LocalHost, target);
    Join(guest, host);
    if (weather == Weather::Cutting)
        Cut(guest, host);
    else
        Join(host, guest);
}

void StormProxy::Cut(QTcpSocket* guest, QTcpSocket* host)
{
    const int whole = UpTo(random, longestWholeBytes);
    connect(host, &QTcpSocket::readyRead, guest, [guest, host, whole] {
        guest->write(host->readAll().left(whole));
        guest->disconnectFromHost();
    });
    connect(host, &QTcpSocket::disconnected, guest, &QTcpSocket::disconnectFromHost);
}

void StormProxy::Refuse(QTcpSocket* guest)
{
    const QByteArray request = guest->readAll();
    if (request.isEmpty())
        return;
    const QByteArray body = R"({"code":"busy","message":"服务器暂时无法处理请求"})";
    guest->write("HTTP/1.1 500 X\r\nContent-Type: application/json\r\nConnection: close\r\nContent-Length: " +
                 QByteArray::number(body.size()) + "\r\n\r\n" + body);
    guest->disconnectFromHost();
}
