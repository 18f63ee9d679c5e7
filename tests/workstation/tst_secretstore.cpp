// SPDX-License-Identifier: Apache-2.0

#include "KeptSignIn.h"
#include "SecretStore.h"
#include "TestFolder.h"

#include <QDir>
#include <QFile>
#include <QtTest>

namespace
{
const QUrl server(QStringLiteral("https://rpa.example.com:8443"));
const QByteArray token = QByteArrayLiteral("abcdefghijklmnopqrstuvwxyz_-0123456789ABCDEF");

QByteArray ContentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// Over the same file, so that its owner and mode stay.
bool Put(const QString& path, const QByteArray& content)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly | QIODevice::Truncate) &&
           file.setPermissions(QFile::ReadOwner | QFile::WriteOwner) && file.write(content) == content.size();
}
} // namespace

class tst_SecretStore : public QObject
{
    Q_OBJECT

private slots:
    void init() { QFile::remove(File()); }

    void givesBackWhatWasWritten_data();
    void givesBackWhatWasWritten();
    void keepsTheLastOneOnly();
    void hasNothingBeforeTheFirstAndAfterRemoval();
    void keepsNothingWhereItCannotWrite();
    void takesAFileThatWasCutForNone();
    void takesAFileWithAWrongByteForNone();
    void takesWhatIsNotItsOwnForNone_data();
    void takesWhatIsNotItsOwnForNone();
    void survivesAFolderInItsPlace();

    void givesTheTokenToItsServerOnly_data();
    void givesTheTokenToItsServerOnly();
    void keepsNoTextThatIsNoToken_data();
    void keepsNoTextThatIsNoToken();
    void takesASecretOfAnotherKindForNoSignIn_data();
    void takesASecretOfAnotherKindForNoSignIn();

private:
    QString File() const { return folder.filePath(QStringLiteral("保持登录")); }

    TestFolder folder;
};

void tst_SecretStore::givesBackWhatWasWritten_data()
{
    QTest::addColumn<QByteArray>("secret");
    QTest::newRow("one byte") << QByteArray("x");
    QTest::newRow("a token") << token;
    QTest::newRow("all bytes") << [] {
        QByteArray all;
        for (int i = 0; i < 256; ++i)
            all.append(char(i));
        return all;
    }();
    QTest::newRow("16 kB") << QByteArray(16 * 1024, 's');
}

void tst_SecretStore::givesBackWhatWasWritten()
{
    QFETCH(QByteArray, secret);

    QVERIFY(SecretStore(File()).Write(secret));

    QCOMPARE(SecretStore(File()).Read(), secret);
}

void tst_SecretStore::keepsTheLastOneOnly()
{
    SecretStore store(File());
    QVERIFY(store.Write("the first, which is the longer one"));

    QVERIFY(store.Write("second"));

    QCOMPARE(store.Read(), QByteArray("second"));
    QVERIFY(!ContentOf(File()).contains("first"));
    QCOMPARE(QDir(folder.path()).entryList(QDir::Files).size(), 1);
}

void tst_SecretStore::hasNothingBeforeTheFirstAndAfterRemoval()
{
    SecretStore store(File());
    QVERIFY(store.Read().isEmpty());
    QVERIFY(store.Write(token));

    store.Remove();

    QVERIFY(store.Read().isEmpty());
    QVERIFY(!QFile::exists(File()));
}

void tst_SecretStore::keepsNothingWhereItCannotWrite()
{
    QVERIFY(!SecretStore(folder.filePath(QStringLiteral("missing/secret"))).Write(token));
    QVERIFY(!SecretStore(File()).Write(QByteArray()));
    QVERIFY(!SecretStore(File()).Write(QByteArray(1024 * 1024, 's')));

    QVERIFY(!QFile::exists(File()));
}

void tst_SecretStore::takesAFileThatWasCutForNone()
{
    SecretStore store(File());
    QVERIFY(store.Write(token));
    const QByteArray whole = ContentOf(File());
    QVERIFY(whole.size() > token.size());

    for (int length = 0; length < whole.size(); ++length) {
        QVERIFY(Put(File(), whole.left(length)));
        QVERIFY2(store.Read().isEmpty(), QByteArray::number(length).constData());
    }
}

void tst_SecretStore::takesAFileWithAWrongByteForNone()
{
    SecretStore store(File());
    QVERIFY(store.Write(token));
    const QByteArray whole = ContentOf(File());

    int refused = 0;
    for (int at = 0; at < whole.size(); ++at) {
        QByteArray wrong = whole;
        wrong[at] = char(wrong.at(at) ^ 0x20);
        QVERIFY(Put(File(), wrong));
        const QByteArray read = store.Read();
        // A byte that seals nothing, such as one of a description, may change; the secret never does.
        QVERIFY2(read.isEmpty() || read == token, QByteArray::number(at).constData());
        refused += read.isEmpty() ? 1 : 0;
    }
    QVERIFY(refused >= token.size());
}

void tst_SecretStore::takesWhatIsNotItsOwnForNone_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("nothing") << QByteArray();
    QTest::newRow("the bare secret") << token;
    QTest::newRow("a picture") << QByteArray("\x89PNG\r\n\x1a\n\0\0\0\rIHDR", 16);
    QTest::newRow("its mark alone") << QByteArray("RPA-SECRET-1\n");
    QTest::newRow("zeros") << QByteArray(4096, '\0');
    QTest::newRow("1 MB") << QByteArray(1024 * 1024, 'x');
}

void tst_SecretStore::takesWhatIsNotItsOwnForNone()
{
    QFETCH(QByteArray, content);
    QVERIFY(Put(File(), content));

    QVERIFY(SecretStore(File()).Read().isEmpty());
}

void tst_SecretStore::survivesAFolderInItsPlace()
{
    const QString path = folder.filePath(QStringLiteral("a folder"));
    QVERIFY(QDir().mkdir(path));
    SecretStore store(path);

    QVERIFY(store.Read().isEmpty());
    QVERIFY(!store.Write(token));
    store.Remove();

    QVERIFY(QFileInfo(path).isDir());
}

void tst_SecretStore::givesTheTokenToItsServerOnly_data()
{
    QTest::addColumn<QUrl>("asking");
    QTest::addColumn<bool>("given");
    QTest::newRow("the server") << server << true;
    QTest::newRow("another machine") << QUrl(QStringLiteral("https://rpa.example.org:8443")) << false;
    QTest::newRow("another port") << QUrl(QStringLiteral("https://rpa.example.com")) << false;
    QTest::newRow("without encryption") << QUrl(QStringLiteral("http://rpa.example.com:8443")) << false;
    QTest::newRow("none") << QUrl() << false;
}

void tst_SecretStore::givesTheTokenToItsServerOnly()
{
    QFETCH(QUrl, asking);
    QFETCH(bool, given);
    QVERIFY(KeptSignIn(File()).Keep(server, token));

    QCOMPARE(KeptSignIn(File()).GetToken(asking), given ? token : QByteArray());
}

void tst_SecretStore::keepsNoTextThatIsNoToken_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("nothing") << QByteArray();
    QTest::newRow("too short") << QByteArray("short");
    QTest::newRow("a line feed") << token + "\r\nX-Evil: 1";
    QTest::newRow("a line feed at the end") << token + "\n";
    QTest::newRow("a blank") << "Bearer " + token;
    QTest::newRow("too long") << QByteArray(513, 'a');
}

void tst_SecretStore::keepsNoTextThatIsNoToken()
{
    QFETCH(QByteArray, text);
    KeptSignIn kept(File());
    QVERIFY(kept.Keep(server, token));

    QVERIFY(!kept.Keep(server, text));

    QVERIFY(kept.GetToken(server).isEmpty());
    QVERIFY(!QFile::exists(File()));
}

void tst_SecretStore::takesASecretOfAnotherKindForNoSignIn_data()
{
    const QByteArray address = server.toString().toLatin1();
    QTest::addColumn<QByteArray>("secret");
    QTest::newRow("no JSON") << token;
    QTest::newRow("a list") << QByteArray("[1]");
    QTest::newRow("no token") << QByteArray("{\"server\":\"" + address + "\"}");
    QTest::newRow("no server") << QByteArray("{\"token\":\"" + token + "\"}");
    QTest::newRow("a token for a header of its own")
        << QByteArray("{\"server\":\"" + address + "\",\"token\":\"" + token + "\\r\\nX-Evil: 1\"}");
    QTest::newRow("a number") << QByteArray("{\"server\":\"" + address +
                                            "\",\"token\":12345678901234567890}");
}

void tst_SecretStore::takesASecretOfAnotherKindForNoSignIn()
{
    QFETCH(QByteArray, secret);
    QVERIFY(SecretStore(File()).Write(secret));

    QVERIFY(KeptSignIn(File()).GetToken(server).isEmpty());
}

QTEST_GUILESS_MAIN(tst_SecretStore)
#include "tst_secretstore.moc"
