// SPDX-License-Identifier: Apache-2.0

#include "SecretStore.h"
#include "TestFolder.h"

#include <QFile>
#include <QFileInfo>
#include <QtTest>

#include <sys/stat.h>
#include <unistd.h>

// What keeps others away on Linux: owner and mode of the file.
class tst_SecretSeal : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        QFile::remove(file);
        QVERIFY(SecretStore(file).Write(secret));
    }

    void letsNobodyElseRead();
    void takesAFileOthersCanReachForNone_data();
    void takesAFileOthersCanReachForNone();
    void takesAFileOfAnotherUserForNone();
    void followsNoLink();
    void doesNotWaitForAPipe();

private:
    QByteArray Path() const { return QFile::encodeName(file); }

    TestFolder folder;
    const QString file = folder.filePath(QStringLiteral("secret"));
    const QByteArray secret = QByteArrayLiteral("the secret");
};

void tst_SecretSeal::letsNobodyElseRead()
{
    // Also where the mask of the process would allow it, and a file with wider rights lay there.
    const mode_t before = umask(0);
    QVERIFY(chmod(Path().constData(), 0666) == 0);
    const bool written = SecretStore(file).Write(secret);
    umask(before);
    QVERIFY(written);

    struct stat state = {};
    QCOMPARE(lstat(Path().constData(), &state), 0);

    QCOMPARE(int(state.st_mode & 07777), 0600);
}

void tst_SecretSeal::takesAFileOthersCanReachForNone_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<bool>("usable");
    QTest::newRow("0600") << 0600 << true;
    QTest::newRow("read by the group") << 0640 << false;
    QTest::newRow("read by all") << 0604 << false;
    QTest::newRow("written by the group") << 0620 << false;
    QTest::newRow("written by all") << 0602 << false;
}

void tst_SecretSeal::takesAFileOthersCanReachForNone()
{
    QFETCH(int, mode);
    QFETCH(bool, usable);
    QVERIFY(chmod(Path().constData(), mode_t(mode)) == 0);

    QCOMPARE(SecretStore(file).Read(), usable ? secret : QByteArray());
}

void tst_SecretSeal::takesAFileOfAnotherUserForNone()
{
    if (geteuid() != 0)
        QSKIP("only root can give a file to somebody else");
    QVERIFY(chown(Path().constData(), 12345, 12345) == 0);

    QVERIFY(SecretStore(file).Read().isEmpty());
}

void tst_SecretSeal::followsNoLink()
{
    const QString target = folder.filePath(QStringLiteral("elsewhere"));
    QVERIFY(QFile::rename(file, target));
    QVERIFY(QFile::link(target, file));

    QVERIFY(SecretStore(file).Read().isEmpty());
    QVERIFY(SecretStore(file).Write("new"));

    QVERIFY(!QFileInfo(file).isSymLink());
    QCOMPARE(SecretStore(file).Read(), QByteArray("new"));
    QCOMPARE(SecretStore(target).Read(), secret);
}

void tst_SecretSeal::doesNotWaitForAPipe()
{
    SecretStore store(file);
    store.Remove();
    QVERIFY(mkfifo(Path().constData(), 0600) == 0);

    QVERIFY(store.Read().isEmpty());
    QVERIFY(store.Write(secret));

    QCOMPARE(store.Read(), secret);
}

QTEST_GUILESS_MAIN(tst_SecretSeal)
#include "tst_secretseal_linux.moc"
