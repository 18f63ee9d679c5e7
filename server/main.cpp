// SPDX-License-Identifier: Apache-2.0

#include "app/AccountCommand.h"
#include "app/Service.h"
#include "app/StoreCommand.h"
#include "options/Options.h"
#include "sql/Dialect.h"

#include <QCoreApplication>

#include <cstdio>
#include <sodium.h>

namespace
{
server::Log* libraryLog = nullptr;

// What libraries say goes the way of the log: a worker must not wait until somebody reads standard error.
void NoteLibraryMessage(QtMsgType type, const QMessageLogContext&, const QString& text)
{
    const auto level =
        type == QtDebugMsg || type == QtInfoMsg ? server::LogLevel::Debug : server::LogLevel::Warning;
    if (libraryLog)
        libraryLog->Write(level, "library",
                          [&text](server::JsonText& line) { line.Member("text", text.left(1000)); });
}

int PrintRoutes(server::Options options, server::Log& log)
{
    options.store = QStringLiteral("sqlite::memory:");
    std::printf("%s\n", server::Service(options, log).RouteTable().constData());
    return 0;
}

int PrintVersion()
{
    QStringList databases{server::SqliteName(), server::PostgresName()};
    databases.removeAll(QString());
    const QString tls = server::TlsName();
    std::printf("%s %s\ndatabases: %s\nencryption: %s\n", qPrintable(QCoreApplication::applicationName()),
                qPrintable(QCoreApplication::applicationVersion()),
                qPrintable(databases.join(QStringLiteral(", "))),
                qPrintable(tls.isEmpty() ? QStringLiteral("none") : tls));
    return 0;
}

int Start(const server::Options& options, server::Log& log)
{
    try {
        if (options.printVersion)
            return PrintVersion();
        if (options.printRoutes)
            return PrintRoutes(options, log);
        if (!options.storeCommand.isEmpty())
            return server::RunStoreCommand(options);
        if (options.accountCommand.isEmpty())
            return server::Service(options, log).Run();
        return server::RunAccountCommand(*server::OpenStore(options.store), options);
    } catch (const std::exception& error) {
        log.Write(server::LogLevel::Error, "cannot-start", [&error](server::JsonText& line) {
            line.Member("reason", QString::fromUtf8(error.what()));
        });
        return 1;
    }
}
} // namespace

int main(int argc, char* argv[])
{
    QCoreApplication application(argc, argv); // QtSql finds its drivers through it
    QCoreApplication::setApplicationName(QStringLiteral("rpa-version-server"));
    QCoreApplication::setApplicationVersion(QStringLiteral(RPA_VERSION));
    if (sodium_init() < 0)
        return 1;
    const server::Options options = server::ReadOptions(QCoreApplication::arguments());
    if (!options.error.isEmpty()) {
        std::fprintf(stderr, "%s\n", options.error.toUtf8().constData());
        return 2;
    }
    server::Log log(options.logLevel);
    libraryLog = &log;
    qInstallMessageHandler(NoteLibraryMessage);
    const int code = Start(options, log);
    qInstallMessageHandler(nullptr);
    return code;
}
