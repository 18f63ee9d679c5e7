// SPDX-License-Identifier: Apache-2.0

#include <WbFoundation/FreeNames.h>

#include <QtTest>

class FreeNamesTest : public QObject
{
    Q_OBJECT

private slots:
    void takesANameOnce();
    void refusesBlankNames();
    void numbersFromTheGivenNumberOn();
    void passesOverNumbersThatAreTaken();
    void numbersManyWithoutTryingThemAllAgain();
    void findsTheFirstFreeNumberWithinTheLength_data();
    void findsTheFirstFreeNumberWithinTheLength();
};

void FreeNamesTest::takesANameOnce()
{
    FreeNames names;
    QVERIFY(names.Take(QStringLiteral("a")));
    QVERIFY(!names.Take(QStringLiteral("a")));
    QVERIFY(names.Take(QStringLiteral("A")));
}

void FreeNamesTest::refusesBlankNames()
{
    FreeNames names;
    QVERIFY(!names.Take(QString()));
    QVERIFY(!names.Take(QStringLiteral(" \t")));
}

void FreeNamesTest::numbersFromTheGivenNumberOn()
{
    FreeNames names;
    QCOMPARE(names.TakeNumbered(QStringLiteral("页")), QStringLiteral("页1"));
    QCOMPARE(names.TakeNumbered(QStringLiteral("页")), QStringLiteral("页2"));
    QCOMPARE(names.TakeNumbered(QStringLiteral("a"), 2), QStringLiteral("a2"));
}

void FreeNamesTest::passesOverNumbersThatAreTaken()
{
    FreeNames names;
    names.Take(QStringLiteral("a1"));
    names.Take(QStringLiteral("a2"));
    QCOMPARE(names.TakeNumbered(QStringLiteral("a")), QStringLiteral("a3"));
    QVERIFY(!names.Take(QStringLiteral("a3")));
}

void FreeNamesTest::numbersManyWithoutTryingThemAllAgain()
{
    constexpr int many = 300000;
    FreeNames names;
    QString last;
    for (int i = 0; i < many; ++i)
        last = names.TakeNumbered(QStringLiteral("a"));
    QCOMPARE(last, QStringLiteral("a300000"));
}

void FreeNamesTest::findsTheFirstFreeNumberWithinTheLength_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QStringList>("taken");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char* tag, const QString& name, int takenToo, const QString& expected) {
        const QStringList taken{name, name + QStringLiteral(" 2")};
        QTest::newRow(tag) << name << QStringList(taken.mid(0, takenToo)) << expected;
    };
    const QString face = QString::fromUtf8("\xF0\x9F\x98\x80");
    row("free", QStringLiteral("abcdef"), 0, QStringLiteral("abcdef"));
    row("taken twice", QStringLiteral("ab"), 2, QStringLiteral("ab 3"));
    row("no room for the number", QStringLiteral("abcdef"), 1, QStringLiteral("abcd 2"));
    row("no half character", QStringLiteral("abc%1d").arg(face), 1, QStringLiteral("abc 2"));
}

void FreeNamesTest::findsTheFirstFreeNumberWithinTheLength()
{
    QFETCH(QString, name);
    QFETCH(QStringList, taken);
    QFETCH(QString, expected);

    QCOMPARE(FreeNames::FirstFree(name, 6, [&](const QString& tried) { return taken.contains(tried); }),
             expected);
}

QTEST_APPLESS_MAIN(FreeNamesTest)
#include "tst_freenames.moc"
