// SPDX-License-Identifier: Apache-2.0

// Saves per second of one version server and of two on the same PostgreSQL, in turns, with as many clients.

#include "ApiClient.h"
#include "PlainServer.h"
#include "PostgresProcess.h"

#include <QCoreApplication>
#include <QJsonObject>

#include <atomic>
#include <cstdio>
#include <thread>
#include <vector>

namespace
{
using Clock = std::chrono::steady_clock;

constexpr int clients = 32;
constexpr int rounds = 3;
const QByteArray pin = QByteArrayLiteral("zhang");
const QByteArray password = QByteArrayLiteral("nine-green-lamps");

std::chrono::milliseconds Duration()
{
    const int given = qEnvironmentVariableIntValue("RPA_BENCH_MS");
    return std::chrono::milliseconds(given > 0 ? given : 5000);
}

QByteArray AppDataOf(int bytes)
{
    const QByteArray start = R"({"processData":{"processes":[]},"uiData":{"pages":[]},"fill":")";
    return start + QByteArray(bytes - start.size() - 2, 'x') + "\"}";
}

// One author who saves a version of an app of their own again and again.
struct Author
{
    std::unique_ptr<ApiClient> client;
    QByteArray version;
    qint64 revision = 1;
};

class Bench
{
public:
    bool Start()
    {
        if (!postgres.Start())
            return false;
        const QString store = postgres.NewDatabaseForPrograms();
        const QStringList add{QStringLiteral("--store"), store,
                              QStringLiteral("account"), QStringLiteral("add"),
                              QString::fromLatin1(pin),  QStringLiteral("--vender"),
                              QStringLiteral("acme"),    QStringLiteral("--roles"),
                              QStringLiteral("author")};
        if (PlainServer::RunCommand(add, password + '\n') != 0)
            return false;
        for (auto& server : servers) {
            server = std::make_unique<PlainServer>(PlainServer::ServingArguments(store));
            if (!server->WaitUntilReady())
                return false;
            tokens.push_back(ApiClient::TokenOf(server->Port(), pin, password));
        }
        return true;
    }

    // Saves per second with the clients spread over the first so many servers.
    double Measure(std::size_t serverCount)
    {
        std::vector<Author> authors(clients);
        for (std::size_t i = 0; i < authors.size(); ++i)
            Prepare(authors[i], i % serverCount);
        std::atomic<long> saves{0};
        const auto end = Clock::now() + Duration();
        std::vector<std::thread> threads;
        threads.reserve(authors.size());
        for (Author& author : authors)
            threads.emplace_back([&, this] { Save(author, end, saves); });
        for (auto& thread : threads)
            thread.join();
        return static_cast<double>(saves) * 1000 / static_cast<double>(Duration().count());
    }

private:
    void Prepare(Author& author, std::size_t server)
    {
        author.client = std::make_unique<ApiClient>(servers[server]->Port(), tokens[server]);
        const auto idOf = [](const ApiClient::Reply& reply) {
            return reply.json.value(QLatin1String("id")).toString().toLatin1();
        };
        const QByteArray app = idOf(author.client->CreateApp("bench " + QByteArray::number(++apps)));
        author.version = idOf(author.client->Create(app, "v", body));
    }

    void Save(Author& author, Clock::time_point end, std::atomic<long>& saves) const
    {
        while (Clock::now() < end) {
            const auto reply = author.client->Overwrite(author.version, author.revision, body);
            if (reply.status != 200)
                qFatal("a save was answered with %d: %s", reply.status, reply.body.constData());
            ++author.revision;
            ++saves;
        }
    }

    const QByteArray body = AppDataOf(100000);
    PostgresProcess postgres;
    std::unique_ptr<PlainServer> servers[2];
    std::vector<QByteArray> tokens;
    int apps = 0;
};
} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    Bench bench;
    if (!bench.Start())
        qFatal("PostgreSQL or the servers do not start");
    for (int round = 1; round <= rounds; ++round) {
        const double one = bench.Measure(1);
        const double two = bench.Measure(2);
        std::printf("save 100 kB, %d clients: one server %6.0f/s, two %6.0f/s, %.2f times\n", clients, one,
                    two, two / one);
        std::fflush(stdout);
    }
    return 0;
}
