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

void FreeNamesTest::findsTheFirstFreeNumberWithinTheLength()
{
    const auto free = [](const QString& name, const QStringList& taken) {
        return FreeNames::FirstFree(name, 5,
                                    [&taken](const QString& tried) { return taken.contains(tried); });
    };
    const QString wide = QStringLiteral("ab") + QString::fromUcs4(U"\U0001F600") + QStringLiteral("c");

    QCOMPARE(free(QStringLiteral("abcde"), {}), QStringLiteral("abcde"));
    QCOMPARE(free(QStringLiteral("ab"), {QStringLiteral("ab"), QStringLiteral("ab 2")}),
             QStringLiteral("ab 3"));
    QCOMPARE(free(QStringLiteral("abcde"), {QStringLiteral("abcde")}), QStringLiteral("abc 2"));
    QCOMPARE(free(wide, {wide}), QStringLiteral("ab 2")); // no half characters
}

QTEST_APPLESS_MAIN(FreeNamesTest)
#include "tst_freenames.moc"
