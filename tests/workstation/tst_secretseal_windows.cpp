// SPDX-License-Identifier: Apache-2.0

#include "SecretStore.h"
#include "TestFolder.h"

#include <QFile>
#include <QtTest>
#include <qt_windows.h>

#include <wincrypt.h>

namespace
{
// As another program of the same user would seal it.
QByteArray SealedFor(const QByteArray& purpose, const QByteArray& plain)
{
    const auto blobOf = [](const QByteArray& bytes) {
        return DATA_BLOB{DWORD(bytes.size()), reinterpret_cast<BYTE*>(const_cast<char*>(bytes.constData()))};
    };
    DATA_BLOB in = blobOf(plain);
    DATA_BLOB entropy = blobOf(purpose);
    DATA_BLOB out{};
    if (!CryptProtectData(&in, nullptr, purpose.isEmpty() ? nullptr : &entropy, nullptr, nullptr,
                          CRYPTPROTECT_UI_FORBIDDEN, &out))
        return {};
    const QByteArray sealed(reinterpret_cast<const char*>(out.pbData), int(out.cbData));
    LocalFree(out.pbData);
    return sealed;
}
} // namespace

// What keeps others away on Windows: the system's encryption for the user.
class tst_SecretSeal : public QObject
{
    Q_OBJECT

private slots:
    void init() { QFile::remove(file); }

    void writesNothingInTheClear();
    void sealsTheSameSecretDifferentlyEachTime();
    void takesWhatAnotherProgramSealedForNone_data();
    void takesWhatAnotherProgramSealedForNone();

private:
    QByteArray Content() const
    {
        QFile source(file);
        return source.open(QIODevice::ReadOnly) ? source.readAll() : QByteArray();
    }

    TestFolder folder;
    const QString file = folder.filePath(QStringLiteral("secret"));
    const QByteArray secret = QByteArrayLiteral("the secret that nobody may read");
};

void tst_SecretSeal::writesNothingInTheClear()
{
    QVERIFY(SecretStore(file).Write(secret));

    QVERIFY(!Content().isEmpty());
    QVERIFY(!Content().contains(secret));
    QVERIFY(!Content().contains(secret.left(10)));
}

void tst_SecretSeal::sealsTheSameSecretDifferentlyEachTime()
{
    QVERIFY(SecretStore(file).Write(secret));
    const QByteArray first = Content();

    QVERIFY(SecretStore(file).Write(secret));

    QVERIFY(Content() != first);
    QCOMPARE(SecretStore(file).Read(), secret);
}

void tst_SecretSeal::takesWhatAnotherProgramSealedForNone_data()
{
    QTest::addColumn<QByteArray>("purpose");
    QTest::newRow("for no purpose") << QByteArray();
    QTest::newRow("for another purpose") << QByteArray("another program");
}

void tst_SecretSeal::takesWhatAnotherProgramSealedForNone()
{
    QFETCH(QByteArray, purpose);
    // Framed as the store frames it, so that the seal alone tells.
    const QByteArray frame =
        "RPA-SECRET-1\n" + QCryptographicHash::hash(secret, QCryptographicHash::Sha256) + secret;
    const QByteArray sealed = SealedFor(purpose, frame);
    QVERIFY(!sealed.isEmpty());
    QFile foreign(file);
    QVERIFY(foreign.open(QIODevice::WriteOnly));
    QCOMPARE(foreign.write(sealed), qint64(sealed.size()));
    foreign.close();

    QVERIFY(SecretStore(file).Read().isEmpty());
}

QTEST_GUILESS_MAIN(tst_SecretSeal)
#include "tst_secretseal_windows.moc"
