// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "../accounts/LoginLimit.h"
#include "../base/Log.h"
#include "../http/HttpServer.h"
#include "../transport/Tls.h"

#include <QString>
#include <QStringList>

#include <chrono>

namespace server
{
struct Options
{
    QString store;
    QString host = QStringLiteral("127.0.0.1");
    quint16 port = 8640;
    QString dataDir;
    bool embedded = false;
    bool printRoutes = false;
    bool printVersion = false;
    LogLevel logLevel = LogLevel::Info;
    TlsFiles tls; // both empty: plain HTTP
    HttpLimits http;
    LoginRates login;
    QByteArray metricsToken;    // stands for the right to read the figures; empty: there is none
    QStringList storeCommand;   // "backup", "verify", "restore" or "move" and its argument
    QStringList accountCommand; // "add", "list", "password"… and its arguments; both empty: serve
    QString passwordFile;       // empty: standard input
    std::chrono::seconds tidyEvery{600};
    QString accountName;
    QString accountVender;
    QString accountRoles;
    QString error; // why the command line was not understood
};

// Reads the command line. Ends the process itself for --help.
Options ReadOptions(const QStringList& arguments);
} // namespace server
