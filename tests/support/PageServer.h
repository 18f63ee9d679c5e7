// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>
#include <QStringList>
#include <QTcpServer>

// Web pages for tests, on 127.0.0.1.
class PageServer : public QTcpServer
{
    Q_OBJECT

public:
    explicit PageServer(QObject* parent = nullptr);

    // body: HTML in UTF-8. head: more header lines, each ended by CR LF.
    void Put(const QString& path, const QByteArray& body, int status = 200, const QByteArray& head = {});
    // A path whose answer never comes.
    void Hold(const QString& path);

    QString Url(const QString& path) const;
    // Paths as they were asked for.
    QStringList GetAsked() const { return asked; }

private:
    struct Answer
    {
        QByteArray body;
        QByteArray head;
        int status = 200;
        bool held = false;
    };

    void Serve();

    QHash<QString, Answer> answers;
    QStringList asked;
};
