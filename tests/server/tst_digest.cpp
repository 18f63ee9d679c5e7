// SPDX-License-Identifier: Apache-2.0

#include <QCryptographicHash>
#include <QtTest>

#include <base/Digest.h>

class DigestTest : public QObject
{
    Q_OBJECT

private slots:
    void givesThePublishedValues_data();
    void givesThePublishedValues();
    void agreesWithQtForEveryLengthOfTheLastBlock();
    void aHeaderGivesTheDigestThatWasPutIn();
    void aHeaderIsReadAsItStands_data();
    void aHeaderIsReadAsItStands();
};

namespace
{
// The digest of "abc", as a header has it.
const QByteArray abc = "ungWv48Bz+pBQUDeXa4iI7ADYaOWF3qctBD/YfIAFa0=";
} // namespace

// Examples of FIPS 180-2.
void DigestTest::givesThePublishedValues_data()
{
    QTest::addColumn<QByteArray>("data");
    QTest::addColumn<QByteArray>("hex");

    QTest::newRow("nothing") << QByteArray()
                             << QByteArray(
                                    "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855");
    QTest::newRow("one block") << QByteArray("abc")
                               << QByteArray(
                                      "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
    QTest::newRow("a million bytes")
        << QByteArray(1000000, 'a')
        << QByteArray("cdc76e5c9914fb9281a1c7e284d73e67f1809a48a497200e046d39ccc7112cd0");
}

void DigestTest::givesThePublishedValues()
{
    QFETCH(QByteArray, data);
    QFETCH(QByteArray, hex);

    QCOMPARE(server::Sha256(data).toHex(), hex);
}

void DigestTest::agreesWithQtForEveryLengthOfTheLastBlock()
{
    for (int length = 0; length <= 130; ++length) {
        const QByteArray data(length, char(length));
        QCOMPARE(server::Sha256(data), QCryptographicHash::hash(data, QCryptographicHash::Sha256));
    }
}

void DigestTest::aHeaderGivesTheDigestThatWasPutIn()
{
    const QByteArray sha256 = server::Sha256("abc");

    QCOMPARE(server::ParseContentDigest(server::ContentDigest(sha256)), sha256);
    QVERIFY(server::ParseContentDigest("sha-256=:" + sha256.left(31).toBase64() + ':').isEmpty());
}

void DigestTest::aHeaderIsReadAsItStands_data()
{
    QTest::addColumn<QByteArray>("header");
    QTest::addColumn<bool>("isRead");

    QTest::newRow("as it is written") << server::ContentDigest(server::Sha256("abc")) << true;
    QTest::newRow("alone") << "sha-256=:" + abc + ':' << true;
    QTest::newRow("behind another one") << "sha-512=:AAAA:, sha-256=:" + abc + ':' << true;
    QTest::newRow("before another one") << "sha-256=:" + abc + ": ,md5=:AAAA:" << true;
    QTest::newRow("blanks around") << "  sha-256=:" + abc + ":\t" << true;
    QTest::newRow("nothing") << QByteArray() << false;
    QTest::newRow("of another kind") << "sha-512=:" + abc + ':' << false;
    QTest::newRow("not closed") << "sha-256=:" + abc << false;
    QTest::newRow("not opened") << "sha-256=" + abc + ':' << false;
    QTest::newRow("too short") << QByteArray("sha-256=:AAAA:") << false;
    QTest::newRow("too long") << "sha-256=:" + QByteArray(33, 'x').toBase64() + ':' << false;
    QTest::newRow("a sign that is none of its letters")
        << "sha-256=:" + QByteArray(abc).insert(7, '*') + ':' << false;
}

void DigestTest::aHeaderIsReadAsItStands()
{
    QFETCH(QByteArray, header);
    QFETCH(bool, isRead);

    QCOMPARE(server::ParseContentDigest(header), isRead ? server::Sha256("abc") : QByteArray());
}

QTEST_GUILESS_MAIN(DigestTest)
#include "tst_digest.moc"
