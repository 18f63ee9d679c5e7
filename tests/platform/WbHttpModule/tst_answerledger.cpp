// SPDX-License-Identifier: Apache-2.0

#include "FaultServer.h"
#include "TestApp.h"

#include <WbHttpModule/WbHttpClient.h>

#include <QRandomGenerator>
#include <QThread>
#include <QtTest>

#include <vector>

using namespace std::chrono_literals;
using Fault = FaultServer::Fault;

namespace
{
constexpr qint64 toleranceMilliseconds = 250;
constexpr int requestsPerClient = 50;

int RequestCount()
{
    const int wanted = qEnvironmentVariableIntValue("RPA_LEDGER_REQUESTS");
    return wanted > 0 ? wanted : 2000;
}

// How much more time everything gets; for where connections are slow.
int Slowness()
{
    return std::max(1, qEnvironmentVariableIntValue("RPA_LEDGER_SLOWNESS"));
}

quint32 Seed()
{
    bool ok = false;
    const quint32 given = qEnvironmentVariable("RPA_LEDGER_SEED").toUInt(&ok);
    return ok ? given : QRandomGenerator::global()->generate();
}

// What the ledger holds of one request.
struct Entry
{
    Fault fault = Fault::None;
    QElapsedTimer sent;
    qint64 deadline = 0; // milliseconds after sent
    int answers = 0;
    qint64 answeredAfter = 0;
    bool onRightThread = false;
    WbHttpAnswer answer;
};
} // namespace

// Requests against a server that misbehaves in every way it knows, from clients that are destroyed at any
// moment, some requests cancelled: each is answered once, on the thread of its client, by its deadline, and
// none that met a fault counts as a success.
class AnswerLedgerTest : public QObject
{
    Q_OBJECT

private slots:
    void answersEachRequestOnceAndInTime();

private:
    void RunClient(QRandomGenerator* random, const FaultServer& server, int count);
    void SendOne(WbHttpClient* client, QRandomGenerator* random, const FaultServer& server, Entry* entry);
    void Verify(const Entry& entry);

    int verified = 0;
    int successes = 0;
};

// The path names the fault, so that the server needs no state.
static FaultServer::Reply ReplyFor(const FaultServer::Request& request)
{
    const int index = request.path.mid(1, request.path.indexOf('/', 1) - 1).toInt();
    auto reply = FaultServer::Failing(FaultServer::AllFaults().value(index));
    reply.delay = std::chrono::milliseconds(request.path.mid(request.path.lastIndexOf('/') + 1).toInt());
    return reply;
}

void AnswerLedgerTest::answersEachRequestOnceAndInTime()
{
    const quint32 seed = Seed();
    qInfo("seed %u (RPA_LEDGER_SEED repeats it)", seed);
    QRandomGenerator random(seed);
    FaultServer server;
    server.SetScript(ReplyFor);

    for (int left = RequestCount(); left > 0 && !QTest::currentTestFailed(); left -= requestsPerClient)
        RunClient(&random, server, std::min(left, requestsPerClient));

    QCOMPARE(verified, RequestCount());
    // Right answers come through all that.
    QVERIFY(successes > RequestCount() / 50);
}

void AnswerLedgerTest::RunClient(QRandomGenerator* random, const FaultServer& server, int count)
{
    std::vector<Entry> ledger(static_cast<size_t>(count));
    auto client = std::make_unique<WbHttpClient>();
    for (Entry& entry : ledger)
        SendOne(client.get(), random, server, &entry);

    // Half the clients go while requests are on their way, the others may finish.
    if (random->bounded(2) == 0) {
        QElapsedTimer life;
        life.start();
        const int milliseconds = random->bounded(40) * Slowness();
        while (life.elapsed() < milliseconds)
            QCoreApplication::processEvents(QEventLoop::AllEvents, 1);
    } else {
        QTRY_COMPARE(client->GetOutstandingCount(), 0);
    }
    client.reset();

    for (const Entry& entry : ledger)
        Verify(entry);
}

void AnswerLedgerTest::SendOne(WbHttpClient* client, QRandomGenerator* random, const FaultServer& server,
                               Entry* entry)
{
    const int index = random->bounded(FaultServer::AllFaults().size());
    entry->fault = FaultServer::AllFaults().at(index);
    const int delay = random->bounded(4) == 0 ? random->bounded(60) : 0;

    WbHttpRequest request;
    request.url = server.GetUrl();
    request.url.setPath(QStringLiteral("/%1/%2").arg(index).arg(delay));
    request.expectation = {true, true};
    request.limits.connect = 500ms;
    request.limits.inactivity = std::chrono::milliseconds(30 + random->bounded(60)) * Slowness();
    request.limits.total = std::chrono::milliseconds(60 + random->bounded(60)) * Slowness();
    request.limits.slowestBytesPerSecond = 1024 * 1024;
    if (random->bounded(3) == 0) {
        request.method = "PUT";
        request.body = QByteArray(random->bounded(20000), 'b');
        request.digestBody = true;
    }
    entry->deadline = request.limits.total.count() + 100; // bodies of at most 70 kB at 1 MB/s
    entry->sent.start();

    const auto id = client->Send(request, [this, entry](const WbHttpAnswer& answer) {
        ++entry->answers;
        entry->answeredAfter = entry->sent.elapsed();
        entry->onRightThread = QThread::currentThread() == thread();
        entry->answer = answer;
    });
    if (random->bounded(10) == 0)
        client->Cancel(id);
}

void AnswerLedgerTest::Verify(const Entry& entry)
{
    const char* name = FaultServer::NameOf(entry.fault);
    QVERIFY2(entry.answers == 1, name);
    QVERIFY2(entry.onRightThread, name);
    QVERIFY2(entry.answeredAfter <= entry.deadline + toleranceMilliseconds, name);
    if (entry.answer.IsSuccess()) {
        const bool isHarmless = entry.fault == Fault::None || entry.fault == Fault::Duplicate ||
                                entry.fault == Fault::WrongEtag || entry.fault == Fault::NoEtag ||
                                entry.fault == Fault::SlowDrip;
        QVERIFY2(isHarmless, name);
        QVERIFY2(entry.answer.body.endsWith("8,9]}"), name);
        ++successes;
    } else {
        QVERIFY2(!entry.answer.errorText.isEmpty(), name);
        QVERIFY2(entry.answer.body.isEmpty(), name);
    }
    ++verified;
}

RPA_TEST_MAIN(AnswerLedgerTest)
#include "tst_answerledger.moc"
