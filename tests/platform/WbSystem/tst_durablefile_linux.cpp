// SPDX-License-Identifier: Apache-2.0

#include "TestFolder.h"

#include <WbSystem/DurableFile.h>

#include <QFile>
#include <QTest>

#include <csignal>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{
mode_t ModeOf(const QString& path)
{
    struct stat facts = {};
    return stat(QFile::encodeName(path).constData(), &facts) == 0 ? facts.st_mode & 0777 : 0;
}

// No file of this process may grow beyond the size, as on a disk that is full.
class FullDisk
{
public:
    explicit FullDisk(rlim_t bytes)
    {
        std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &before);
        rlimit now = before;
        now.rlim_cur = bytes;
        setrlimit(RLIMIT_FSIZE, &now);
    }
    ~FullDisk() { setrlimit(RLIMIT_FSIZE, &before); }
    Q_DISABLE_COPY(FullDisk)

private:
    rlimit before = {};
};
} // namespace

class DurableFileLinuxTest : public QObject
{
    Q_OBJECT

private slots:
    void givesFilesToTheirOwnerAlone();
    void givesFoldersToTheirOwnerAlone();
    void closesAFolderThatWasOpenToOthers();
    void writesBesideALinkAndNotThroughIt();
    void keepsTheOldContentOnAFullDisk();
};

void DurableFileLinuxTest::givesFilesToTheirOwnerAlone()
{
    const TestFolder folder;
    const mode_t before = umask(0);
    QString problem;

    QVERIFY(DurableFile::Write(folder.filePath(QStringLiteral("a")), "x", &problem));
    umask(before);

    QCOMPARE(ModeOf(folder.filePath(QStringLiteral("a"))), mode_t(0600));
}

void DurableFileLinuxTest::givesFoldersToTheirOwnerAlone()
{
    const TestFolder folder;
    QString problem;

    QVERIFY(DurableFile::CreateFolder(folder.filePath(QStringLiteral("a")), &problem));

    QCOMPARE(ModeOf(folder.filePath(QStringLiteral("a"))), mode_t(0700));
}

void DurableFileLinuxTest::closesAFolderThatWasOpenToOthers()
{
    const TestFolder folder;
    QCOMPARE(chmod(QFile::encodeName(folder.path()).constData(), 0777), 0);
    QString problem;

    QVERIFY(DurableFile::CreateFolder(folder.path(), &problem));

    QCOMPARE(ModeOf(folder.path()), mode_t(0700));
}

void DurableFileLinuxTest::writesBesideALinkAndNotThroughIt()
{
    // given a link, under the name of the unfinished file, to a file of somebody else
    const TestFolder folder;
    const QString other = folder.filePath(QStringLiteral("other"));
    QString problem;
    QVERIFY(DurableFile::Write(other, "untouched", &problem));
    QVERIFY(QFile::link(other, folder.filePath(QStringLiteral("a.tmp"))));

    // when
    QVERIFY(DurableFile::Write(folder.filePath(QStringLiteral("a")), "new", &problem));

    // then
    QFile file(other);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), QByteArray("untouched"));
}

void DurableFileLinuxTest::keepsTheOldContentOnAFullDisk()
{
    // given
    const TestFolder folder;
    const QString path = folder.filePath(QStringLiteral("a"));
    QString problem;
    QVERIFY(DurableFile::Write(path, "old", &problem));

    // when
    bool written = true;
    {
        const FullDisk full(100000);
        written = DurableFile::Write(path, QByteArray(1 << 20, 'n'), &problem);
    }

    // then
    QVERIFY(!written);
    QVERIFY2(problem.contains(path), qPrintable(problem));
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), QByteArray("old"));
    QVERIFY(!QFile::exists(path + QStringLiteral(".tmp")));
}

QTEST_GUILESS_MAIN(DurableFileLinuxTest)
#include "tst_durablefile_linux.moc"
