// SPDX-License-Identifier: Apache-2.0

#include "PageServer.h"

#include <QTcpSocket>

PageServer::PageServer(QObject* parent) : QTcpServer(parent)
{
    listen(QHostAddress::LocalHost);
    connect(this, &QTcpServer::newConnection, this, &PageServer::Serve);
}

void PageServer::Put(const QString& path, const QByteArray& body, int status, const QByteArray& head)
{
    answers.insert(path, {body, head, status, false});
}

void PageServer::Hold(const QString& path)
{
    answers.insert(path, {{}, {}, 200, true});
}

QString PageServer::Url(const QString& path) const
{
    return QStringLiteral("http://127.0.0.1:%1%2").arg(serverPort()).arg(path);
}

void PageServer::Serve()
{
    while (QTcpSocket* socket = nextPendingConnection()) {
        connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
        connect(socket, &QTcpSocket::readyRead, this, [this, socket] {
            if (!socket->peek(65536).contains("\r\n\r\n"))
                return;
            const QString path = QString::fromLatin1(socket->readAll().split(' ').value(1));
            asked.append(path);
            const Answer answer = answers.value(path, {"<body>missing</body>", {}, 404, false});
            if (answer.held)
                return;
            socket->write("HTTP/1.1 " + QByteArray::number(answer.status) +
                          " Status\r\nContent-Type: text/html; charset=utf-8\r\nConnection: close\r\n" +
                          answer.head + "Content-Length: " + QByteArray::number(answer.body.size()) +
                          "\r\n\r\n" + answer.body);
            socket->disconnectFromHost();
        });
    }
}
