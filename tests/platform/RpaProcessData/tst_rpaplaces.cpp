// SPDX-License-Identifier: Apache-2.0

#include <RpaProcessData/RpaPlaces.h>

#include <QtTest>

class RpaPlacesTest : public QObject
{
    Q_OBJECT

private slots:
    void fillsEachPlaceOnce_data();
    void fillsEachPlaceOnce();
    void leavesAValueThatHoldsAPlace();
};

void RpaPlacesTest::fillsEachPlaceOnce_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("filled");

    const auto row = [](const char* name, const char* text, const char* filled) {
        QTest::newRow(name) << QString::fromLatin1(text) << QString::fromLatin1(filled);
    };
    row("none", "a $b {c}", "a $b {c}");
    row("two", "${x} and ${y}!", "<x> and <y>!");
    row("side by side", "${x}${x}", "<x><x>");
    row("without a name", "a${}b", "a<>b");
    row("not closed", "${x} ${y", "<x> ${y");
    row("place within a place", "${${x} ${x}", "<${x> <x>");
}

void RpaPlacesTest::fillsEachPlaceOnce()
{
    QFETCH(QString, text);

    QTEST(RpaPlaces::Fill(text, [](const QString& name) { return QStringLiteral("<%1>").arg(name); }),
          "filled");
}

void RpaPlacesTest::leavesAValueThatHoldsAPlace()
{
    const auto again = [](const QString&) { return QStringLiteral("${x}"); };

    QCOMPARE(RpaPlaces::Fill(QStringLiteral("a ${x} b"), again), QStringLiteral("a ${x} b"));
}

QTEST_APPLESS_MAIN(RpaPlacesTest)
#include "tst_rpaplaces.moc"
