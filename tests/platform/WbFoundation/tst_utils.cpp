// SPDX-License-Identifier: Apache-2.0

#include <WbFoundation/Utils.h>

#include <QtTest>

class UtilsTest : public QObject
{
    Q_OBJECT

private slots:
    void comparesVersionsPartByPart_data();
    void comparesVersionsPartByPart();
};

void UtilsTest::comparesVersionsPartByPart_data()
{
    QTest::addColumn<QString>("a");
    QTest::addColumn<QString>("b");
    QTest::addColumn<int>("expected");

    const auto row = [](const char* name, const char* a, const char* b, int expected) {
        QTest::newRow(name) << QString::fromLatin1(a) << QString::fromLatin1(b) << expected;
    };
    row("equal", "1.2.3", "1.2.3", 0);
    row("numbers, not letters", "1.10", "1.9", 1);
    row("a missing part counts as zero", "1.0", "1", 0);
    row("a longer version is newer", "1.0.1", "1", 1);
    row("leading zeros do not count", "01.002", "1.2", 0);
    row("older", "2.9.9", "3.0.0", -1);
    row("empty is oldest", "", "0", -1);
    row("both empty", "", "", 0);
    row("a suffix does not count", "1.2-beta", "1.2", 0);
    row("more digits than an integer holds", "1.99999999999999999999", "1.100000000000000000000", -1);
    row("blanks around", " 1.2 ", "1.2", 0);
}

void UtilsTest::comparesVersionsPartByPart()
{
    QFETCH(QString, a);
    QFETCH(QString, b);
    QFETCH(int, expected);

    const auto sign = [](int order) { return int(order > 0) - int(order < 0); };

    QCOMPARE(sign(Utils::CompareVersion(a, b)), expected);
    QCOMPARE(sign(Utils::CompareVersion(b, a)), -expected);
}

QTEST_GUILESS_MAIN(UtilsTest)
#include "tst_utils.moc"
