// SPDX-License-Identifier: Apache-2.0

#include "ProgramFixture.h"

#include <QDir>
#include <QFile>
#include <QTest>

#include <algorithm>
#include <random>
#include <sys/mount.h>
#include <sys/statvfs.h>

// A disk that is full.
class DiskTest : public ProgramFixture
{
    Q_OBJECT

private slots:
    void cleanup();
    void saysThatTheDiskIsFull_data() { Databases(); }
    void saysThatTheDiskIsFull();

private:
    QString StoreOnASmallDisk();
    void Fill();

    QString disk;
};

void DiskTest::cleanup()
{
    EndServer();
    if (!disk.isEmpty())
        ::umount2(disk.toLocal8Bit().constData(), MNT_DETACH);
    disk.clear();
}

// Empty where nobody may make a disk.
QString DiskTest::StoreOnASmallDisk()
{
    disk = folder->path() + QStringLiteral("/disk");
    QDir().mkpath(disk);
    if (::mount("tmpfs", disk.toLocal8Bit().constData(), "tmpfs", 0, "size=24m,mode=0777") != 0) {
        disk.clear();
        return {};
    }
    QFile::setPermissions(folder->path(),
                          QFile::permissions(folder->path()) | QFile::ReadOther | QFile::ExeOther);
    return store.startsWith(QLatin1String("sqlite:"))
               ? QStringLiteral("sqlite:") + disk + QStringLiteral("/v.db")
               : postgres->NewDatabaseForPrograms(disk);
}

// All but 2 MB.
void DiskTest::Fill()
{
    struct statvfs space;
    QCOMPARE(::statvfs(disk.toLocal8Bit().constData(), &space), 0);
    const qint64 free = static_cast<qint64>(space.f_bavail * space.f_frsize);
    QFile ballast(disk + QStringLiteral("/ballast"));
    QVERIFY(ballast.open(QIODevice::WriteOnly));
    QVERIFY(ballast.write(QByteArray(static_cast<int>(free) - 2 * 1024 * 1024, 'x')) > 0);
}

void DiskTest::saysThatTheDiskIsFull()
{
    store = StoreOnASmallDisk();
    if (store.isEmpty())
        QSKIP("nobody but root may make a small disk");
    QVERIFY2(AddAccount(), said.constData());
    QVERIFY(Start());
    QVERIFY(SignIn());
    const QByteArray app = NewApp("one");
    const QByteArray version = NewVersion(app, "one", ApiClient::Body(1));
    std::mt19937 random(7); // not to be compressed
    QByteArray noise(4 * 1024 * 1024, Qt::Uninitialized);
    std::generate(noise.begin(), noise.end(), [&random] { return static_cast<char>('a' + random() % 26); });

    Fill();
    const auto refused = client->Overwrite(version, 1, ApiClient::Body("\"fill\":\"" + noise + '"'));
    const QByteArray read = client->Get("/api/v1/versions/" + version + "/data").body;

    QCOMPARE(refused.status, 507);
    QCOMPARE(refused.json.value(QLatin1String("code")).toString(), QStringLiteral("disk-full"));
    QVERIFY(refused.json.value(QLatin1String("message")).toString().contains(QStringLiteral("磁盘已满")));
    QCOMPARE(read, ApiClient::Body(1));
    QTRY_VERIFY(server->Log().contains("disk-full"));
    const bool causeIsNamed =
        server->Log().contains("disk is full") || server->Log().contains("No space left on device");
    QVERIFY2(causeIsNamed, server->Log().constData());
    // Room again: nothing else is needed.
    QVERIFY(QFile::remove(disk + QStringLiteral("/ballast")));
    QCOMPARE(client->Overwrite(version, 1, ApiClient::Body("\"fill\":\"" + noise + '"')).status, 200);
}

QTEST_GUILESS_MAIN(DiskTest)
#include "tst_disk.moc"
