// SPDX-License-Identifier: Apache-2.0

// How long the author waits for a save: from RpaEditorLogic over HTTP to the real server's disk and back,
// beside one raw durable insert of the same bytes. Both alternate in one run, so that they meet the same disk
// and the same load.
//
// Pass: median of the save <= 2 x median of the insert + 2 ms.

#include <OxHttp/HttpNotifyManager.h>
#include <OxHttp/HttpObserverBase.h>
#include <RpaEditorCore/RpaSnapshotManager.h>
#include <RpaEditorLogic/RpaEditorLogic.h>
#include <RpaEditorLogic/RpaNotifyId.h>
#include <RpaServiceClient/VersionServiceClient.h>
#include <RpaServiceClient/VersionServiceSettings.h>
#include <RpaServiceClient/apps/CreateAppRequest.h>
#include <RpaServiceClient/sessions/GetCurrentSessionRequest.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <vector>

namespace
{
constexpr int bytesPerSave = 100 * 1000;
constexpr int warmUpRounds = 20;
constexpr int rounds = 300;
const QByteArray token = "benchmark-0123456789abcdef0123456789abcdef0123456789";

class Server
{
public:
    bool Start()
    {
        process.start(QStringLiteral(RPA_VERSION_SERVER_FILE),
                      {QStringLiteral("--embedded"), QStringLiteral("--data"), folder.path()});
        process.write(
            R"({"token":")" + token +
            R"(","account":{"pin":"author","name":"author","venderId":"vender","roles":["author"]}})"
            "\n");
        while (!process.canReadLine())
            if (!process.waitForReadyRead(20000))
                return false;
        const auto line = QJsonDocument::fromJson(process.readLine()).object();
        return VersionServiceSettings::Instance()->SetBaseUrl(
            QUrl(line.value(QLatin1String("listening")).toString()));
    }
    ~Server()
    {
        process.closeWriteChannel();
        process.waitForFinished();
    }

private:
    QTemporaryDir folder;
    QProcess process;
};

// Runs the event loop until the answer to one request is there.
class Waiter : public HttpObserverBase
{
public:
    Waiter()
    {
        HttpNotifyManager::Instance()->AddObserver(this,
                                                   {NotifySaveAppSnapshotInfo, NotifyUpdateAppSnapshotInfo});
    }
    ~Waiter() override { HttpNotifyManager::Instance()->RemoveAllMessage(this); }

    void OnHttpNotify(int, QSharedPointer<IHttpRequest>, QSharedPointer<IHttpResponse> response) override
    {
        succeeded = response->IsSuccess();
        if (!succeeded)
            std::fprintf(stderr, "save failed: %s\n", qPrintable(response->GetErrorDesc()));
        loop.quit();
    }

    bool Wait()
    {
        loop.exec();
        return succeeded;
    }

private:
    QEventLoop loop;
    bool succeeded = false;
};

QString Content(int round)
{
    const QString head = QStringLiteral("{\"round\":%1,\"text\":\"").arg(round);
    return head + QString(bytesPerSave - head.size() - 2, QLatin1Char('x')) + QStringLiteral("\"}");
}

QString CreateApp()
{
    VersionServiceClient client;
    QEventLoop loop;
    QString id;
    client.Send(CreateAppRequest{QStringLiteral("benchmark"), 0}, nullptr, [&](const auto& result) {
        id = result.value.id;
        loop.quit();
    });
    loop.exec();
    return id;
}

double MillisecondsOf(const QElapsedTimer& timer)
{
    return double(timer.nsecsElapsed()) / 1e6;
}

class RawInsert
{
public:
    bool Open()
    {
        database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("raw"));
        database.setDatabaseName(folder.filePath(QStringLiteral("raw.db")));
        QSqlQuery query(database);
        const bool isOpen =
            database.open() && query.exec(QStringLiteral("PRAGMA journal_mode=DELETE")) &&
            query.exec(QStringLiteral("PRAGMA synchronous=EXTRA")) &&
            query.exec(QStringLiteral("CREATE TABLE body(id INTEGER PRIMARY KEY, bytes BLOB NOT NULL)"));
        insert = QSqlQuery(database);
        return isOpen && insert.prepare(QStringLiteral("INSERT INTO body(bytes) VALUES(?)"));
    }

    double Insert(const QByteArray& bytes)
    {
        QElapsedTimer timer;
        timer.start();
        insert.bindValue(0, bytes);
        if (!insert.exec())
            std::fprintf(stderr, "raw insert failed\n");
        return MillisecondsOf(timer);
    }

private:
    QTemporaryDir folder;
    QSqlDatabase database;
    QSqlQuery insert;
};

class Saver
{
public:
    bool Create(const QString& appId)
    {
        record = RpaAppSnapshotPtr::create();
        record->SetAppId(appId);
        record->SetName(QStringLiteral("benchmark"));
        record->SetApiVersion(QStringLiteral("1.0.0"));
        record->SetAppData(Content(-1));
        auto request = QSharedPointer<SaveAppSnapshotInfoRequest>::create();
        request->SetSnapshotInfoPtr(record);
        RpaEditorLogic::Instance()->SaveAppSnapshotInfo(request);
        return waiter.Wait();
    }

    double Save(const QString& content)
    {
        QElapsedTimer timer;
        timer.start();
        record->SetAppData(content);
        auto request = QSharedPointer<UpdateAppSnapshotInfoRequest>::create();
        request->SetSnapshotInfoPtr(record);
        RpaEditorLogic::Instance()->UpdateAppSnapshotInfo(request);
        allSucceeded = waiter.Wait() && allSucceeded;
        return MillisecondsOf(timer);
    }

    bool allSucceeded = true;

private:
    Waiter waiter;
    RpaAppSnapshotPtr record;
};

// A request that touches no disk: what transport and server cost by themselves.
double AskWhoIAm(VersionServiceClient* client)
{
    QEventLoop loop;
    QElapsedTimer timer;
    timer.start();
    client->Send(GetCurrentSessionRequest{}, nullptr, [&loop](const auto&) { loop.quit(); });
    loop.exec();
    return MillisecondsOf(timer);
}

double Quantile(std::vector<double> values, double share)
{
    std::sort(values.begin(), values.end());
    return values.at(size_t(share * double(values.size() - 1)));
}

void Print(const char* name, const std::vector<double>& values)
{
    std::printf("%-34s median %6.2f ms   p99 %6.2f ms\n", name, Quantile(values, 0.5),
                Quantile(values, 0.99));
}
} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    Server server;
    RawInsert raw;
    Saver saver;
    if (!server.Start() || !raw.Open())
        return 2;
    VersionServiceSettings::Instance()->SetToken(token);
    if (!saver.Create(CreateApp()))
        return 2;

    std::vector<double> saves;
    std::vector<double> inserts;
    std::vector<double> questions;
    VersionServiceClient client;
    for (int round = -warmUpRounds; round < rounds; ++round) {
        const QString content = Content(round);
        const double insert = raw.Insert(content.toUtf8());
        const double save = saver.Save(content);
        const double question = AskWhoIAm(&client);
        if (round < 0)
            continue;
        questions.push_back(question);
        inserts.push_back(insert);
        saves.push_back(save);
    }

    Print("request without a write", questions);
    Print("raw durable insert, 100 kB", inserts);
    Print("save round trip, 100 kB", saves);
    const double target = 2 * Quantile(inserts, 0.5) + 2;
    const bool isMet = saver.allSucceeded && Quantile(saves, 0.5) <= target;
    std::printf("target for the median %.2f ms: %s\n", target, isMet ? "met" : "missed");
    return isMet ? 0 : 1;
}
