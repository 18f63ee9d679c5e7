// SPDX-License-Identifier: Apache-2.0

// Rates and latencies of the version server and, beside it, of a plain service over the same network library
// and database that does nothing but move the bytes: one durable commit per save, no groups, no checks.

#include "LoadClient.h"
#include "ServerProcess.h"

#include <QCryptographicHash>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>

#include <cstdio>

namespace
{
constexpr int versionsInList = 20;

// The numbers of clients to run a load with: none for one that RPA_BENCH_ONLY does not name.
std::vector<int> Wanted(const QByteArray& load)
{
    const QByteArray only = qgetenv("RPA_BENCH_ONLY");
    if (!only.isEmpty() && !load.contains(only))
        return {};
    const int clients = qEnvironmentVariableIntValue("RPA_BENCH_CLIENTS");
    return clients > 0 ? std::vector<int>{clients} : std::vector<int>{1, 8, 64};
}

std::chrono::milliseconds Duration()
{
    const int given = qEnvironmentVariableIntValue("RPA_BENCH_MS");
    return std::chrono::milliseconds(given > 0 ? given : 3000);
}

QByteArray AppDataOf(int bytes)
{
    QByteArray text = R"({"processData":{"processes":[]},"uiData":{"pages":[)";
    while (text.size() < bytes - 80)
        text += R"({"name":"界面","width":320,"enabled":true,"items":["a","b"]},)";
    text += R"({}]},"fill":")";
    text += QByteArray(qMax(0, bytes - text.size() - 2), 'x');
    return text + "\"}";
}

void Print(const char* what, int clients, const LoadFigures& figures)
{
    std::printf("%-34s %3d clients  %9.0f/s  p50 %8.3f ms  p99 %8.3f ms%s\n", what, clients,
                figures.perSecond, figures.p50Ms, figures.p99Ms, figures.failures ? "  WITH FAILURES" : "");
    std::fflush(stdout);
}

class Bench
{
public:
    explicit Bench(ServerProcess& theServer)
        : server(theServer),
          authorization(
              ("Authorization: Bearer " + server.Token(QStringLiteral("author-1")) + "\r\n").toStdString())
    {
    }

    void Run()
    {
        appId = Create(Post("/api/v1/apps", R"({"name":"bench","kind":0})", ""));
        for (int i = 0; i < versionsInList; ++i)
            versionId = Create(Save(AppDataOf(1000000), i));
        const std::string list = Get("/api/v1/apps/" + appId + "/versions");
        const std::string data = Get("/api/v1/versions/" + versionId + "/data");
        const QByteArray saved = AppDataOf(100000);
        for (const int clients : Wanted("list"))
            Print("list of 20 versions", clients,
                  RunLoad(server.Port(), clients, Duration(), 200,
                          [&](int, long) -> const std::string& { return list; }));
        for (const int clients : Wanted("read"))
            Print("read 1 MB", clients,
                  RunLoad(server.Port(), clients, Duration(), 200,
                          [&](int, long) -> const std::string& { return data; }));
        for (const int clients : Wanted("save"))
            Print("save 100 kB", clients, Saves(clients, saved));
    }

private:
    LoadFigures Saves(int clients, const QByteArray& body)
    {
        std::vector<std::string> versions;
        versions.reserve(std::size_t(clients));
        for (int i = 0; i < clients; ++i)
            versions.push_back(Create(Save(body, ++names)));
        ++series;
        const std::string digest = Digest(body);
        const double commits = Figure("rpa_store_commits_total");
        const double writes = Figure("rpa_store_writes_total");
        const auto figures = RunLoad(server.Port(), clients, Duration(), 200, [&](int client, long round) {
            return Head("PUT", "/api/v1/versions/" + versions[static_cast<std::size_t>(client)]) +
                   "If-Match: \"" + std::to_string(round + 1) + "\"\r\nIdempotency-Key: bench-" +
                   std::to_string(series) + '-' + std::to_string(client) + '-' + std::to_string(round) +
                   "\r\n" + digest + Body(body);
        });
        std::printf("%.1f saves per commit\n", (Figure("rpa_store_writes_total") - writes) /
                                                   (Figure("rpa_store_commits_total") - commits));
        return figures;
    }

    double Figure(const std::string& name)
    {
        const std::string text = LoadClient(server.Port()).Ask(Get("/metrics"), true).body;
        const auto at = text.find('\n' + name + ' ');
        return at == std::string::npos ? 0 : std::atof(text.c_str() + at + name.size() + 2);
    }

    std::string Head(const char* method, const std::string& path) const
    {
        return std::string(method) + ' ' + path + " HTTP/1.1\r\nHost: localhost\r\n" + authorization;
    }
    std::string Get(const std::string& path) const { return Head("GET", path) + "\r\n"; }
    static std::string Body(const QByteArray& body)
    {
        return "Content-Length: " + std::to_string(body.size()) + "\r\n\r\n" + body.toStdString();
    }
    static std::string Digest(const QByteArray& body)
    {
        return "Content-Digest: sha-256=:" +
               QCryptographicHash::hash(body, QCryptographicHash::Sha256).toBase64().toStdString() + ":\r\n";
    }
    std::string Post(const std::string& path, const QByteArray& body, const std::string& headers)
    {
        return Head("POST", path) + "Idempotency-Key: create-" + std::to_string(++keys) + "\r\n" + headers +
               Body(body);
    }
    std::string Save(const QByteArray& body, int number)
    {
        return Post("/api/v1/apps/" + appId + "/versions", body,
                    "Version-Name: v" + std::to_string(number + 1000 * series) + "\r\n" + Digest(body));
    }
    std::string Create(const std::string& request)
    {
        LoadClient client(server.Port());
        const auto answer = client.Ask(request, true);
        if (answer.status != 201)
            qFatal("%s", answer.body.c_str());
        return QJsonDocument::fromJson(QByteArray::fromStdString(answer.body))
            .object()
            .value(QLatin1String("id"))
            .toString()
            .toStdString();
    }

    ServerProcess& server;
    const std::string authorization;
    std::string appId;
    std::string versionId;
    int keys = 10000000;
    int names = 100;
    int series = 0;
};

// The plain service: its paths are /list, /read, /save.
class PlainService
{
public:
    bool Start()
    {
        process.start(QStringLiteral(RPA_PLAIN_SERVICE_FILE), {folder.filePath(QStringLiteral("plain.db"))});
        if (!process.waitForStarted() || !process.waitForReadyRead())
            return false;
        port = process.readLine().trimmed().toUShort();
        return port != 0;
    }
    ~PlainService()
    {
        process.kill();
        process.waitForFinished();
    }

    void Run()
    {
        const QByteArray saved = AppDataOf(100000);
        const std::string save =
            "POST /save HTTP/1.1\r\nHost: localhost\r\nContent-Length: " + std::to_string(saved.size()) +
            "\r\n\r\n" + saved.toStdString();
        Run("plain: list of 20 records", "GET /list HTTP/1.1\r\nHost: localhost\r\n\r\n");
        Run("plain: read 1 MB", "GET /read HTTP/1.1\r\nHost: localhost\r\n\r\n");
        Run("plain: save 100 kB, one commit each", save);
    }

private:
    void Run(const char* what, const std::string& request)
    {
        for (const int clients : Wanted(what))
            Print(what, clients, RunLoad(port, clients, Duration(), 200, [&](int, long) { return request; }));
    }

    QTemporaryDir folder;
    QProcess process;
    quint16 port = 0;
};
} // namespace

int main()
{
    {
        ServerProcess server;
        if (!server.Start())
            qFatal("%s", server.ErrorText());
        Bench(server).Run();
        std::printf("stopped gracefully: %s\n", server.Stop() ? "yes" : "no");
    }
    PlainService plain;
    if (!plain.Start())
        qFatal("the plain service does not start");
    plain.Run();
    return 0;
}
