// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QHostAddress>
#include <QTcpSocket>

// A client that sends what it is told, byte for byte, and as slowly as it is told.
class RawClient
{
public:
    static constexpr int waitMs = 10000;

    // Connects, from another address of this machine when the test plays several machines.
    explicit RawClient(quint16 port, const QString& from = {})
    {
        if (!from.isEmpty())
            socket.bind(QHostAddress(from));
        socket.connectToHost(QHostAddress::LocalHost, port);
        socket.waitForConnected(waitMs);
    }

    void Send(const QByteArray& text)
    {
        socket.write(text);
        while (socket.bytesToWrite() > 0 && socket.waitForBytesWritten(waitMs)) {
        }
    }

    // Everything up to the end of one answer; what came when the server closed before.
    QByteArray Receive(int patienceMs = waitMs)
    {
        QByteArray answer;
        while (!IsComplete(answer)) {
            if (socket.bytesAvailable() == 0 && !socket.waitForReadyRead(patienceMs))
                break;
            answer += socket.readAll();
        }
        return answer;
    }

    // The status of the next answer; 0 when none comes.
    int ReceiveStatus(int patienceMs = waitMs) { return StatusOf(Receive(patienceMs)); }

    bool WaitUntilClosed()
    {
        while (socket.state() == QAbstractSocket::ConnectedState && socket.waitForReadyRead(waitMs))
            socket.readAll();
        return socket.state() != QAbstractSocket::ConnectedState;
    }

    static int StatusOf(const QByteArray& answer) { return answer.mid(9, 3).toInt(); }

    QTcpSocket socket;

private:
    static bool IsComplete(const QByteArray& answer)
    {
        const int end = answer.indexOf("\r\n\r\n");
        const int at = answer.indexOf("Content-Length: ");
        return end > 0 && at > 0 &&
               answer.size() >= end + 4 + answer.mid(at + 16, answer.indexOf('\r', at) - at - 16).toInt();
    }
};
