// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QObject>
#include <QTcpServer>

#include <random>

class QTcpSocket;

// Stands between a workstation and its server and makes weather: passes connections on whole, late, cut or
// not at all, or answers in the server's place. Listens on a free port of 127.0.0.1.
class StormProxy : public QObject
{
    Q_OBJECT

public:
    enum class Weather
    {
        Calm,    // everything passes
        Late,    // answers come up to two seconds late
        Failing, // "out of order" instead of an answer
        Closing, // connections end before an answer
        Cutting, // connections end within an answer
        Silent,  // no answer at all
    };
    static constexpr int weatherCount = 6;

    explicit StormProxy(quint32 seed, QObject* parent = nullptr);

    bool Listen();
    quint16 GetPort() const { return server.serverPort(); }

    // Where connections are passed on to.
    void SetTarget(quint16 port) { target = port; }
    // Of the connections made from now on; those that are open end, unless it clears up.
    void SetWeather(Weather now);

private:
    void SlotConnection();
    void Pass(QTcpSocket* guest);
    void Cut(QTcpSocket* guest, QTcpSocket* host);
    static void Refuse(QTcpSocket* guest);

    QTcpServer server;
    quint16 target = 0;
    Weather weather = Weather::Calm;
    std::mt19937 random;
};
