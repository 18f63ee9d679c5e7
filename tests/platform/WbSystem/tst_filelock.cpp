// SPDX-License-Identifier: Apache-2.0

#include "LockRemains.h"
#include "TestFolder.h"

#include <WbSystem/FileLock.h>

#include <QDir>
#include <QElapsedTimer>
#include <QProcess>
#include <QtTest>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <thread>

using namespace std::chrono_literals;
using Result = FileLock::Result;

namespace
{
const QString holdCommand = QStringLiteral("--hold");
}

class FileLockTest : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void makesTheFileAndLetsGo();
    void keepsASecondLockOut();
    void isTakenByOneOfTwoNames();
    void locksWhateverTheFileHolds_data();
    void locksWhateverTheFileHolds();
    void waitsForAnotherToLetGo();
    void failsWithoutAFolder();
    void failsOnAFolder();
    void keepsAnotherProcessOut();
    void goesWithAProcessThatIsKilled();
    void staysLockedWhenItIsTriedAgain();

private:
    std::unique_ptr<QProcess> Holder() const;

    std::unique_ptr<TestFolder> folder;
    QString file;
};

void FileLockTest::init()
{
    folder = std::make_unique<TestFolder>();
    file = folder->filePath(QStringLiteral("锁"));
}

// Another process that holds the lock until it is killed.
std::unique_ptr<QProcess> FileLockTest::Holder() const
{
    auto process = std::make_unique<QProcess>();
    process->start(QCoreApplication::applicationFilePath(), {holdCommand, file});
    if (!process->waitForReadyRead(20000))
        process.reset();
    return process;
}

void FileLockTest::makesTheFileAndLetsGo()
{
    {
        FileLock lock(file);
        QVERIFY(!lock.IsLocked());
        QCOMPARE(lock.TryLock(), Result::Locked);
        QVERIFY(lock.IsLocked());
        QVERIFY(QFile::exists(file));
    }

    FileLock next(file);
    QCOMPARE(next.TryLock(), Result::Locked);
}

void FileLockTest::keepsASecondLockOut()
{
    FileLock first(file);
    FileLock second(file);
    QCOMPARE(first.TryLock(), Result::Locked);

    QCOMPARE(second.TryLock(), Result::Taken);
    QVERIFY(!second.IsLocked());

    first.Unlock();
    QVERIFY(!first.IsLocked());
    QCOMPARE(second.TryLock(), Result::Locked);
}

void FileLockTest::isTakenByOneOfTwoNames()
{
    // Given: two locks of different files
    FileLock first(file);
    FileLock other(folder->filePath(QStringLiteral("other")));

    QCOMPARE(first.TryLock(), Result::Locked);

    QCOMPARE(other.TryLock(), Result::Locked);
}

void FileLockTest::locksWhateverTheFileHolds_data()
{
    LockRemains::AddRows();
}

void FileLockTest::locksWhateverTheFileHolds()
{
    QFETCH(QByteArray, content);
    QVERIFY(LockRemains::Leave(file, content));
    FileLock lock(file);

    QCOMPARE(lock.TryLock(), Result::Locked);
}

void FileLockTest::waitsForAnotherToLetGo()
{
    FileLock first(file);
    FileLock second(file);
    QCOMPARE(first.TryLock(), Result::Locked);
    QElapsedTimer waited;
    waited.start();
    QCOMPARE(second.TryLock(60ms), Result::Taken);
    QVERIFY(waited.elapsed() >= 60);

    Result result = Result::Failed;
    std::thread waiting([&] { result = second.TryLock(60s); });
    first.Unlock();
    waiting.join();

    QCOMPARE(result, Result::Locked);
}

void FileLockTest::failsWithoutAFolder()
{
    FileLock lock(folder->filePath(QStringLiteral("none/lock")));

    QCOMPARE(lock.TryLock(60s), Result::Failed);
}

void FileLockTest::failsOnAFolder()
{
    QVERIFY(QDir().mkpath(file));
    FileLock lock(file);

    QCOMPARE(lock.TryLock(), Result::Failed);
}

void FileLockTest::keepsAnotherProcessOut()
{
    const auto holder = Holder();
    QVERIFY(holder);
    FileLock lock(file);

    QCOMPARE(lock.TryLock(), Result::Taken);

    holder->kill();
    holder->waitForFinished();
}

void FileLockTest::goesWithAProcessThatIsKilled()
{
    const auto holder = Holder();
    QVERIFY(holder);
    holder->kill();
    QVERIFY(holder->waitForFinished());
    FileLock lock(file);

    QCOMPARE(lock.TryLock(5s), Result::Locked);
}

void FileLockTest::staysLockedWhenItIsTriedAgain()
{
    FileLock lock(file);
    QCOMPARE(lock.TryLock(), Result::Locked);

    QCOMPARE(lock.TryLock(), Result::Locked);

    lock.Unlock();
    FileLock other(file);
    QCOMPARE(other.TryLock(), Result::Locked);
}

namespace
{
int Hold(const QString& file)
{
    FileLock lock(file);
    if (lock.TryLock() != Result::Locked)
        return EXIT_FAILURE;
    std::puts("held");
    std::fflush(stdout);
    std::getchar(); // nothing comes: until somebody ends it
    return EXIT_SUCCESS;
}
} // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.value(1) == holdCommand)
        return Hold(arguments.value(2));
    FileLockTest test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_filelock.moc"
