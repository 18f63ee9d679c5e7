// SPDX-License-Identifier: Apache-2.0

#include "Service.h"

#include "../base/Loopback.h"
#include "../routes/Dispatcher.h"
#include "../routes/Services.h"
#include "../store/Store.h"
#include "CertificateKeeper.h"
#include "Descriptors.h"
#include "Embedding.h"
#include "Housekeeper.h"
#include "StoreLock.h"

#include <algorithm>
#include <cstdio>
#include <thread>

namespace server
{
namespace
{
constexpr int passwordsAtOnce = 4;
constexpr std::size_t passwordsWaiting = 64;
constexpr auto certificateLook = std::chrono::seconds(2);
constexpr auto grace = std::chrono::seconds(10);

int NetworkThreads()
{
    return 2;
}

int Workers()
{
    return static_cast<int>(std::max(4u, std::thread::hardware_concurrency()));
}

HttpLimits FittingLimits(const Options& options)
{
    HttpLimits limits = options.http;
    limits.loopbackHostsOnly = options.embedded;
    limits.connections = ConnectionsThatFit(limits.connections, Workers());
    return limits;
}

void AddRoutes(Router& router, Services& services, std::function<QByteArray()> figures)
{
    AddHealthRoutes(router, services);
    AddMetricsRoutes(router, std::move(figures));
    AddSessionRoutes(router, services);
    AddAppRoutes(router, services);
    AddVersionRoutes(router, services);
    AddReleaseRoutes(router, services);
    AddInvitationRoutes(router, services);
    AddSaveRoutes(router, services);
    AddBinRoutes(router, services);
    AddReaderRoutes(router, services);
    AddUsageRoutes(router, services);
}

const char* NameOf(Access access)
{
    switch (access) {
    case Access::Public:
        return "public";
    case Access::Monitoring:
        return "monitoring";
    case Access::SignedIn:
        return "signed-in";
    case Access::Administrator:
        return "administrator";
    }
    return "";
}

// A stop that comes after the service is gone does nothing.
struct StopHandle
{
    std::mutex mutex;
    HttpServer* server = nullptr;

    void Stop()
    {
        const std::lock_guard lock(mutex);
        if (server)
            server->Stop(grace);
    }
};
} // namespace

// In the order of their use: what stands above outlives what stands below.
struct Service::Parts
{
    explicit Parts(const Options& options, Log& log)
        : lock(LockStore(options.store)), server(FittingLimits(options)), loginLimit(options.login),
          store(OpenStore(options.store)), sessions(*store), passwordPool(passwordsAtOnce, passwordsWaiting),
          services{*store, sessions, loginLimit, redeemLimit, passwordPool, log, QStringLiteral(RPA_VERSION)},
          dispatcher((AddRoutes(router, services, [this] { return dispatcher.Figures().Text(); }), router),
                     sessions, log, {Workers(), 4000, options.metricsToken})
    {
        Metrics& figures = dispatcher.Figures();
        figures.AddGauge("rpa_connections", "Open connections.", "gauge",
                         [this] { return static_cast<double>(server.OpenConnections()); });
        figures.AddGauge("rpa_body_bytes", "Memory that larger bodies in flight take.", "gauge",
                         [this] { return static_cast<double>(server.BodyBytes()); });
        AddWriterFigure("rpa_store_commits_total", "Committed groups of writes.", "counter",
                        &WriterFigures::commits);
        AddWriterFigure("rpa_store_writes_total", "Writes in those groups.", "counter",
                        &WriterFigures::writes);
        AddWriterFigure("rpa_store_write_failures_total", "Writes that failed.", "counter",
                        &WriterFigures::failures);
        AddWriterFigure("rpa_store_largest_group", "Most writes in one group.", "gauge",
                        &WriterFigures::largestGroup);
    }

    void AddWriterFigure(const char* name, const char* help, const char* type, qint64 WriterFigures::*figure)
    {
        dispatcher.Figures().AddGauge(
            name, help, type, [this, figure] { return static_cast<double>(store->Figures().*figure); });
    }

    const std::unique_ptr<FileLock> lock;
    HttpServer server; // threads of the parts below may hold its requests to the last
    Router router;
    LoginLimit loginLimit;
    LoginLimit redeemLimit; // by account alone
    std::unique_ptr<Store> store;
    Sessions sessions;
    TaskPool passwordPool;
    Services services;
    Dispatcher dispatcher;
    std::shared_ptr<StopHandle> stopHandle = std::make_shared<StopHandle>();
};

Service::Service(const Options& theOptions, Log& theLog)
    : options(theOptions), log(theLog), parts(std::make_unique<Parts>(theOptions, theLog))
{
}

Service::~Service() = default;

int Service::Run()
{
    std::string address;
    if (!Begin(address))
        return 1;
    parts->store->Watch();
    const Housekeeper housekeeper(*parts->store, log, options.tidyEvery);
    StopWhenAsked();
    log.Write(LogLevel::Info, "listening",
              [&](JsonText& line) { line.Member("address", QString::fromStdString(address)); });
    std::printf("{\"listening\":\"%s\"}\n", address.c_str());
    std::fflush(stdout);
    parts->server.Run(parts->dispatcher, NetworkThreads());
    {
        const std::lock_guard lock(parts->stopHandle->mutex);
        parts->stopHandle->server = nullptr;
    }
    log.Write(LogLevel::Info, "stopped");
    return 0;
}

bool Service::Begin(std::string& address)
{
    const bool loopback = IsLoopback(options.host);
    if (options.embedded && !loopback) {
        log.Write(LogLevel::Error, "embedded-needs-loopback");
        return false;
    }
    if (options.embedded && !AdmitWorkstation(ReadInputLine(), *parts->store, parts->sessions)) {
        log.Write(LogLevel::Error, "bad-embedding-line");
        return false;
    }
    if (!options.tls.key.isEmpty())
        Encrypt();
    else if (!loopback)
        log.Write(LogLevel::Warning, "not-loopback", [](JsonText& line) {
            line.Member("advice",
                        QStringLiteral("other machines can connect and nothing is encrypted: passwords, "
                                       "tokens and apps can be read and changed on the way; give "
                                       "--tls-certificate and --tls-key"));
        });
    const quint16 port = parts->server.Listen(options.host.toStdString(), options.port);
    const std::string host = options.host.contains(QLatin1Char(':')) ? '[' + options.host.toStdString() + ']'
                                                                     : options.host.toStdString();
    address = (options.tls.key.isEmpty() ? "http://" : "https://") + host + ':' + std::to_string(port);
    return true;
}

void Service::Encrypt()
{
    const auto keeper = std::make_shared<CertificateKeeper>(options.tls, log);
    parts->server.UseTls(keeper->Current());
    parts->server.OnHangUp([keeper] { keeper->Reload(); });
    parts->server.Every(certificateLook, [keeper] { keeper->ReloadWhenChanged(); });
}

void Service::StopWhenAsked()
{
    parts->stopHandle->server = &parts->server;
    const auto stop = [handle = parts->stopHandle] { handle->Stop(); };
    parts->server.OnTermination(stop);
    if (options.embedded)
        OnInputEnd(stop);
}

QByteArray Service::RouteTable() const
{
    JsonText text;
    text.BeginArray();
    for (const Route& route : parts->router.Routes())
        text.BeginObject()
            .Member("method", QString::fromLatin1(route.method))
            .Member("path", QString::fromLatin1(route.pattern))
            .Member("access", QString::fromLatin1(NameOf(route.access)))
            .Member("bodyLimit", route.bodyLimit)
            .EndObject();
    return text.EndArray().Take();
}
} // namespace server
