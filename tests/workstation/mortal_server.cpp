// SPDX-License-Identifier: Apache-2.0

// The real version server behind a relay, as one process. Files in its data folder, which it takes away,
// order what becomes of the next save: with "die-at-answer" the server dies between the save and its answer;
// with "hold-answer" the answer never comes, and "answer-held" lies there once the save is done. Arguments
// and input are those of the real one; its ready line names the relay.

#include "ServerRelay.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTimer>
#include <QUrl>

#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <memory>
#include <thread>

namespace
{
QUrl AddressIn(const QByteArray& line)
{
    return QUrl(QJsonDocument::fromJson(line).object().value(QStringLiteral("listening")).toString());
}

void WatchInput(QProcess* server)
{
    std::thread([server] {
        std::cin.ignore(std::numeric_limits<std::streamsize>::max());
        QMetaObject::invokeMethod(server, &QProcess::closeWriteChannel, Qt::QueuedConnection);
    }).detach();
}

void ObeyFile(ServerRelay* relay, const QString& file, void (ServerRelay::*order)(const QByteArray&))
{
    auto* watch = new QTimer(relay);
    QObject::connect(watch, &QTimer::timeout, relay, [relay, file, order] {
        if (QFile::exists(file)) {
            (relay->*order)("PUT");
            QFile::remove(file);
        }
    });
    watch->start(5);
}

void Obey(ServerRelay* relay, const QDir& folder)
{
    ObeyFile(relay, folder.filePath(QStringLiteral("die-at-answer")), &ServerRelay::DieAtAnswerOf);
    ObeyFile(relay, folder.filePath(QStringLiteral("hold-answer")), &ServerRelay::HoldAnswerOf);
    const QString held = folder.filePath(QStringLiteral("answer-held"));
    QObject::connect(relay, &ServerRelay::SigHeld, relay, [held] { QFile(held).open(QIODevice::WriteOnly); });
}
} // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    std::string handshake;
    std::getline(std::cin, handshake);
    QProcess server;
    server.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    server.start(QStringLiteral(SERVER_PROGRAM), QCoreApplication::arguments().mid(1));
    server.write(QByteArray::fromStdString(handshake) + '\n');
    while (!server.canReadLine() && server.waitForReadyRead(20000)) {
    }
    ServerRelay relay(quint16(AddressIn(server.readLine()).port(0)));
    if (!relay.Listen())
        return EXIT_FAILURE;
    QObject::connect(&relay, &ServerRelay::SigDied, &server, [&server] {
        server.kill();
        server.waitForFinished();
        std::_Exit(9);
    });
    QObject::connect(&server, QOverload<int, QProcess::ExitStatus>::of(&QProcess::finished),
                     [] { std::_Exit(EXIT_SUCCESS); });
    WatchInput(&server);
    Obey(&relay, QDir(QCoreApplication::arguments().last()));
    std::cout << R"({"listening":"http://127.0.0.1:)" << relay.GetPort() << R"("})" << std::endl;
    return QCoreApplication::exec();
}
