// SPDX-License-Identifier: Apache-2.0

#include "ApiClient.h"
#include "PlainServer.h"
#include "RawClient.h"
#include "TestFolder.h"

#include <QElapsedTimer>
#include <QFile>
#include <QTest>

#include <memory>
#include <sys/resource.h>
#include <unistd.h>
#include <vector>

// What the server does when the system gives it no more files and connections.
class DescriptorsTest : public QObject
{
    Q_OBJECT

private slots:
    void savesOnOldConnectionsWhileOthersTakeAllThatIsLeft();
    void restsWhileNothingCanBeAccepted();
};

namespace
{
constexpr int fewDescriptors = 64;

// A server that may have few files open, with one author who is signed in.
class PoorServer
{
public:
    bool Start()
    {
        if (!PlainServer::AddAuthor(folder.path(), QStringLiteral("author"), "secret word"))
            return false;
        const QString line = QStringLiteral("ulimit -n %1; exec \"$0\" \"$@\"").arg(fewDescriptors);
        server = std::make_unique<PlainServer>(
            QStringLiteral("/bin/sh"),
            QStringList{QStringLiteral("-c"), line, QStringLiteral(RPA_VERSION_SERVER_FILE),
                        QStringLiteral("--data"), folder.path(), QStringLiteral("--listen"),
                        QStringLiteral("127.0.0.1:0")});
        if (!server->WaitUntilReady())
            return false;
        const auto session =
            ApiClient(Port(), {})
                .Ask("POST", "/api/v1/sessions", R"({"account":"author","password":"secret word"})");
        token = session.json.value(QLatin1String("token")).toString().toLatin1();
        return session.status == 201;
    }

    quint16 Port() const { return server->Port(); }
    pid_t Id() const { return static_cast<pid_t>(server->process.processId()); }

    double CpuSeconds() const
    {
        QFile file(QStringLiteral("/proc/%1/stat").arg(Id()));
        if (!file.open(QIODevice::ReadOnly))
            return -1;
        const QList<QByteArray> fields = file.readAll().split(')').last().simplified().split(' ');
        return (fields.at(11).toDouble() + fields.at(12).toDouble()) /
               static_cast<double>(sysconf(_SC_CLK_TCK));
    }

    void LimitDescriptors(int count)
    {
        const rlimit limit{static_cast<rlim_t>(count), fewDescriptors};
        ::prlimit(Id(), RLIMIT_NOFILE, &limit, nullptr);
    }

    QByteArray token;

private:
    TestFolder folder;
    std::unique_ptr<PlainServer> server;
};
} // namespace

void DescriptorsTest::savesOnOldConnectionsWhileOthersTakeAllThatIsLeft()
{
    PoorServer server;
    QVERIFY(server.Start());
    ApiClient author(server.Port(), server.token);
    const auto app = author.CreateApp("app");
    QCOMPARE(app.status, 201);
    const QByteArray appId = app.json.value(QLatin1String("id")).toString().toLatin1();

    std::vector<std::unique_ptr<RawClient>> others;
    for (int i = 0; i < 2 * fewDescriptors; ++i) {
        others.push_back(std::make_unique<RawClient>(server.Port()));
        others.back()->Send("GET /api/v1/health HTTP/1.1\r\nHost: localhost\r\n\r\n");
    }
    // The last one is turned away, so nothing is left.
    QCOMPARE(others.back()->ReceiveStatus(), 503);

    for (const char* name : {"first", "second", "third"})
        QCOMPARE(author.Create(appId, name, ApiClient::Body(1)).status, 201);
}

void DescriptorsTest::restsWhileNothingCanBeAccepted()
{
    PoorServer server;
    QVERIFY(server.Start());
    server.LimitDescriptors(3); // standard input, output and error have these

    // Nothing that needs the store, which has no descriptors either.
    RawClient waiting(server.Port());
    waiting.Send("GET /nowhere HTTP/1.1\r\nHost: localhost\r\n\r\n");
    const double before = server.CpuSeconds();
    QElapsedTimer elapsed;
    elapsed.start();
    QCOMPARE(waiting.ReceiveStatus(1500), 0);
    const double used = server.CpuSeconds() - before;

    QVERIFY2(used * 1000 < 0.2 * static_cast<double>(elapsed.elapsed()),
             qPrintable(QStringLiteral("%1 s of processor in %2 ms").arg(used).arg(elapsed.elapsed())));
    server.LimitDescriptors(fewDescriptors);
    QCOMPARE(waiting.ReceiveStatus(), 404);
}

QTEST_GUILESS_MAIN(DescriptorsTest)
#include "tst_descriptors.moc"
