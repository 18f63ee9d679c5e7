// SPDX-License-Identifier: Apache-2.0

#include "LockRemains.h"
#include "TestFolder.h"

#include <WbCore/IMonitorSystem.h>
#include <WbCore/UsageMonitor.h>
#include <WbCore/WbGlobalData.h>
#include <WbSystem/FileLock.h>

#include <QJsonDocument>
#include <QJsonObject>
#include <QMutex>
#include <QThread>
#include <QThreadStorage>
#include <QtTest>

#include <memory>
#include <thread>

namespace
{
// Receives batches on the monitor's thread.
class Receiver
{
public:
    UsageMonitor::Sink GetSink()
    {
        return [this](const UsageMonitor::Batch& batch) {
            const QMutexLocker locked(&mutex);
            sinkThread = QThread::currentThreadId();
            sizes.append(batch.size());
            if (failures > 0) {
                --failures;
                return false;
            }
            for (const QByteArray& event : batch)
                events.append(QJsonDocument::fromJson(event).object());
            return true;
        };
    }

    QStringList GetNames() const
    {
        const QMutexLocker locked(&mutex);
        QStringList names;
        for (const QJsonObject& event : events)
            names.append(event.value(QStringLiteral("event")).toString());
        return names;
    }

    QVector<int> GetSizes() const
    {
        const QMutexLocker locked(&mutex);
        return sizes;
    }

    mutable QMutex mutex;
    QVector<QJsonObject> events;
    QVector<int> sizes;
    int failures = 0;
    Qt::HANDLE sinkThread = nullptr;
};

void Report(const QString& name)
{
    IMonitorSystem::GetMonitorSystem()->ReportEvent(name, QStringLiteral("page"),
                                                    {QStringLiteral("{\"a\":\"值\"}")});
}
} // namespace

class UsageMonitorTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void sendsEventsInTheirOrderFromItsOwnThread();
    void sendsBatchesOfTheGivenSize();
    void keepsEventsUntilTheyArrive();
    void takesOverWhatAnEarlierRunLeft();
    void passesOverHalfALine();
    void keepsTheNextEventWholeAfterHalfALine();
    void dropsTheOldestWhenItIsFull();
    void keepsQuietWhenTheUserSaysNo();
    void takesEventsFromAnyThread();
    void staysInMemoryWhenTheFolderIsInUse();
    void usesTheFolderThoughALockFileWasLeft_data();
    void usesTheFolderThoughALockFileWasLeft();
    void letsGoOfWhatItsThreadHeldBeforeItStops();
    void keepsTheFileToTheUser();
    void givesWayToAnotherMonitor();
    void knowsWhoIsSignedIn();

private:
    UsageMonitor::Settings MakeSettings() const;
    QString GetFileName() const { return folder->filePath(QStringLiteral("queue/events.jsonl")); }
    int CountLines() const;

    std::unique_ptr<TestFolder> folder;
    std::unique_ptr<Receiver> receiver;
};

void UsageMonitorTest::init()
{
    folder = std::make_unique<TestFolder>();
    receiver = std::make_unique<Receiver>();
}

void UsageMonitorTest::cleanup()
{
    // Whatever a test left in memory must not reach the next one.
    UsageMonitor::Instance()->Start(MakeSettings(), nullptr);
    UsageMonitor::Instance()->SetEnabled(false);
    UsageMonitor::Instance()->Stop();
    UsageMonitor::Instance()->SetEnabled(true);
}

UsageMonitor::Settings UsageMonitorTest::MakeSettings() const
{
    UsageMonitor::Settings settings;
    settings.folder = folder->filePath(QStringLiteral("queue"));
    settings.interval = std::chrono::milliseconds(1);
    settings.maxInterval = std::chrono::milliseconds(4);
    return settings;
}

int UsageMonitorTest::CountLines() const
{
    QFile file(GetFileName());
    return file.open(QIODevice::ReadOnly) ? file.readAll().count('\n') : 0;
}

void UsageMonitorTest::sendsEventsInTheirOrderFromItsOwnThread()
{
    UsageMonitor::Instance()->Start(MakeSettings(), receiver->GetSink());

    Report(QStringLiteral("first"));
    Report(QStringLiteral("second"));

    QTRY_COMPARE(receiver->GetNames(), (QStringList{QStringLiteral("first"), QStringLiteral("second")}));
    QVERIFY(receiver->sinkThread != QThread::currentThreadId());
    const QJsonObject event = receiver->events.first();
    QCOMPARE(event.value(QStringLiteral("page")).toString(), QStringLiteral("page"));
    QVERIFY(!event.contains(QStringLiteral("params")));
    QVERIFY(event.value(QStringLiteral("time")).toDouble() > 0);
    QVERIFY(event.value(QStringLiteral("id")) != receiver->events.last().value(QStringLiteral("id")));
    QTRY_VERIFY(!QFile::exists(GetFileName()));
}

void UsageMonitorTest::sendsBatchesOfTheGivenSize()
{
    UsageMonitor::Settings settings = MakeSettings();
    settings.batchSize = 3;
    for (int i = 0; i < 7; ++i)
        Report(QString::number(i));

    UsageMonitor::Instance()->Start(settings, receiver->GetSink());

    QTRY_COMPARE(receiver->GetNames().size(), 7);
    for (const int size : receiver->GetSizes())
        QVERIFY(size <= 3);
}

void UsageMonitorTest::keepsEventsUntilTheyArrive()
{
    receiver->failures = 3;
    UsageMonitor::Instance()->Start(MakeSettings(), receiver->GetSink());

    Report(QStringLiteral("stubborn"));

    QTRY_COMPARE(receiver->GetNames(), QStringList{QStringLiteral("stubborn")});
    QVERIFY(receiver->GetSizes().size() >= 4);
}

void UsageMonitorTest::takesOverWhatAnEarlierRunLeft()
{
    UsageMonitor::Instance()->Start(MakeSettings(), nullptr);
    Report(QStringLiteral("old"));
    UsageMonitor::Instance()->Stop();
    QCOMPARE(CountLines(), 1);

    Report(QStringLiteral("new"));
    UsageMonitor::Instance()->Start(MakeSettings(), receiver->GetSink());

    QTRY_COMPARE(receiver->GetNames(), (QStringList{QStringLiteral("old"), QStringLiteral("new")}));
}

void UsageMonitorTest::passesOverHalfALine()
{
    UsageMonitor::Instance()->Start(MakeSettings(), nullptr);
    Report(QStringLiteral("whole"));
    UsageMonitor::Instance()->Stop();
    QFile file(GetFileName());
    QVERIFY(file.open(QIODevice::Append));
    file.write(R"({"event":"ha)");
    file.close();

    UsageMonitor::Instance()->Start(MakeSettings(), receiver->GetSink());

    QTRY_COMPARE(receiver->GetNames(), QStringList{QStringLiteral("whole")});
}

void UsageMonitorTest::keepsTheNextEventWholeAfterHalfALine()
{
    QVERIFY(QDir().mkpath(MakeSettings().folder));
    QFile file(GetFileName());
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(R"({"event":"ha)");
    file.close();
    UsageMonitor::Instance()->Start(MakeSettings(), nullptr);
    Report(QStringLiteral("next"));
    UsageMonitor::Instance()->Stop();

    UsageMonitor::Instance()->Start(MakeSettings(), receiver->GetSink());

    QTRY_COMPARE(receiver->GetNames(), QStringList{QStringLiteral("next")});
}

void UsageMonitorTest::dropsTheOldestWhenItIsFull()
{
    UsageMonitor::Settings settings = MakeSettings();
    settings.maxEvents = 5;
    UsageMonitor::Instance()->Start(settings, nullptr);
    for (int i = 0; i < 20; ++i)
        Report(QString::number(i));
    UsageMonitor::Instance()->Stop();
    QCOMPARE(CountLines(), 5);

    UsageMonitor::Instance()->Start(settings, receiver->GetSink());

    QTRY_COMPARE(receiver->GetNames().size(), 5);
    QCOMPARE(receiver->GetNames().first(), QStringLiteral("15"));
}

void UsageMonitorTest::keepsQuietWhenTheUserSaysNo()
{
    UsageMonitor::Instance()->Start(MakeSettings(), nullptr);
    Report(QStringLiteral("before"));
    QTRY_COMPARE(CountLines(), 1);

    UsageMonitor::Instance()->SetEnabled(false);
    Report(QStringLiteral("after"));

    QTRY_VERIFY(!QFile::exists(GetFileName()));
    UsageMonitor::Instance()->Stop();
    QVERIFY(!UsageMonitor::Instance()->IsEnabled());
    QCOMPARE(CountLines(), 0);
}

void UsageMonitorTest::takesEventsFromAnyThread()
{
    UsageMonitor::Instance()->Start(MakeSettings(), receiver->GetSink());
    std::vector<std::thread> threads;
    threads.reserve(4);
    for (int i = 0; i < 4; ++i)
        threads.emplace_back([] {
            for (int k = 0; k < 100; ++k)
                Report(QStringLiteral("e"));
        });
    for (std::thread& thread : threads)
        thread.join();

    QTRY_COMPARE(receiver->GetNames().size(), 400);
}

void UsageMonitorTest::staysInMemoryWhenTheFolderIsInUse()
{
    QDir().mkpath(MakeSettings().folder);
    FileLock other(MakeSettings().folder + QStringLiteral("/events.lock"));
    QCOMPARE(other.TryLock(), FileLock::Result::Locked);

    UsageMonitor::Instance()->Start(MakeSettings(), receiver->GetSink());
    Report(QStringLiteral("a"));

    QTRY_COMPARE(receiver->GetNames().size(), 1);
    QVERIFY(!QFile::exists(GetFileName()));
}

void UsageMonitorTest::usesTheFolderThoughALockFileWasLeft_data()
{
    LockRemains::AddRows();
}

void UsageMonitorTest::usesTheFolderThoughALockFileWasLeft()
{
    QFETCH(QByteArray, content);
    QVERIFY(QDir().mkpath(MakeSettings().folder));
    QVERIFY(LockRemains::Leave(MakeSettings().folder + QStringLiteral("/events.lock"), content));

    UsageMonitor::Instance()->Start(MakeSettings(), [](const UsageMonitor::Batch&) { return false; });
    Report(QStringLiteral("a"));

    QTRY_VERIFY(QFile::exists(GetFileName()));
}

void UsageMonitorTest::letsGoOfWhatItsThreadHeldBeforeItStops()
{
    // Such as a connection of the sink's own to a database.
    static QThreadStorage<std::shared_ptr<int>> ofThread;
    std::weak_ptr<int> watched;
    UsageMonitor::Instance()->Start(MakeSettings(), [this, &watched](const UsageMonitor::Batch& batch) {
        const auto held = std::make_shared<int>(0);
        ofThread.setLocalData(held);
        watched = held;
        return receiver->GetSink()(batch);
    });
    Report(QStringLiteral("one"));
    QTRY_COMPARE(receiver->GetNames().size(), 1);

    UsageMonitor::Instance()->Stop();

    QVERIFY(watched.expired());
}

void UsageMonitorTest::keepsTheFileToTheUser()
{
#ifdef Q_OS_WIN
    QSKIP("Windows has no file modes; the user's profile is closed to others as a whole");
#endif
    UsageMonitor::Instance()->Start(MakeSettings(), nullptr);
    Report(QStringLiteral("a"));
    UsageMonitor::Instance()->Stop();

    const QFile::Permissions others =
        QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther;
    QVERIFY(!(QFile::permissions(GetFileName()) & others));
    QVERIFY(!(QFile::permissions(MakeSettings().folder) & others));
}

void UsageMonitorTest::givesWayToAnotherMonitor()
{
    class Other : public IMonitorSystem
    {
    public:
        void ReportEvent(const QString& eventId, const QString&, const QList<QString>&) override
        {
            events << eventId;
        }
        QStringList events;
    };
    Other other;

    IMonitorSystem::SetMonitorSystem(&other);
    Report(QStringLiteral("a"));
    IMonitorSystem::SetMonitorSystem(nullptr);
    Report(QStringLiteral("b"));

    QCOMPARE(other.events, QStringList{QStringLiteral("a")});
}

void UsageMonitorTest::knowsWhoIsSignedIn()
{
    WbGlobalData* data = WbGlobalData::Instance();
    QVERIFY(data->GetPin().isEmpty());
    QCOMPARE(data->GetVenderId(), qint64(0));

    data->SetPin(QStringLiteral("zhang"));
    data->SetVenderId(Q_INT64_C(9007199254740993));

    QCOMPARE(data->GetPin(), QStringLiteral("zhang"));
    QCOMPARE(data->GetVenderId(), Q_INT64_C(9007199254740993));
}

QTEST_GUILESS_MAIN(UsageMonitorTest)
#include "tst_usagemonitor.moc"
