// SPDX-License-Identifier: Apache-2.0

#include <RpaRunHistory/RpaRunComparison.h>

#include <QtTest>

namespace
{
RpaRunSpan SpanOf(int line, const QString& input, qint64 duration = 10)
{
    RpaRunSpan span;
    span.kind = RpaSpanKind::File;
    span.place = {QStringLiteral("主流程"), QStringLiteral("s%1").arg(line), line};
    span.call = QStringLiteral("open");
    span.input = input;
    span.duration = duration;
    return span;
}

RpaRunDetails DetailsOf(const QStringList& inputs)
{
    RpaRunDetails details;
    for (int i = 0; i < inputs.size(); ++i)
        details.spans.spans.append(SpanOf(i + 1, inputs.at(i)));
    return details;
}
} // namespace

class tst_RunComparison : public QObject
{
    Q_OBJECT

private slots:
    void findsTheFirstCallThatDiffers_data();
    void findsTheFirstCallThatDiffers();
    void durationsAndPositionsAreNoDifference();
    void whatCameOfACallIsADifference_data();
    void whatCameOfACallIsADifference();
    void tellsParametersThatDiffer();
    void tellsThePlacesThatTookLongerFirst();
    void saysWhenTheFirstCallsAreSumsOnly();
};

void tst_RunComparison::findsTheFirstCallThatDiffers_data()
{
    QTest::addColumn<QStringList>("before");
    QTest::addColumn<QStringList>("after");
    QTest::addColumn<int>("spanBefore");
    QTest::addColumn<int>("spanAfter");
    const QStringList abc{QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")};
    const QStringList axc{QStringLiteral("a"), QStringLiteral("x"), QStringLiteral("c")};
    QTest::newRow("none") << abc << abc << -1 << -1;
    QTest::newRow("in the middle") << abc << axc << 1 << 1;
    QTest::newRow("the later one ends earlier") << abc << QStringList(abc.mid(0, 2)) << 2 << -1;
    QTest::newRow("the earlier one ends earlier") << QStringList(abc.mid(0, 1)) << abc << -1 << 1;
    QTest::newRow("no calls") << QStringList() << QStringList() << -1 << -1;
    QTest::newRow("calls of one only") << QStringList() << abc << -1 << 0;
}

void tst_RunComparison::findsTheFirstCallThatDiffers()
{
    QFETCH(QStringList, before);
    QFETCH(QStringList, after);

    const RpaRunComparison comparison = RpaRunComparison::Of({}, DetailsOf(before), {}, DetailsOf(after));

    QTEST(comparison.spanBefore, "spanBefore");
    QTEST(comparison.spanAfter, "spanAfter");
    QVERIFY(!comparison.isPartial);
}

void tst_RunComparison::durationsAndPositionsAreNoDifference()
{
    RpaRunDetails before = DetailsOf({QStringLiteral("a"), QStringLiteral("b")});
    RpaRunDetails after = before;
    after.spans.spans[0].duration = 99;
    after.spans.spans[1].start = 77;
    RpaRunSpan position;
    position.place = {QStringLiteral("主流程"), {}, 5};
    after.spans.spans.insert(1, position);

    const RpaRunComparison comparison = RpaRunComparison::Of({}, before, {}, after);

    QCOMPARE(comparison.spanBefore, -1);
    QCOMPARE(comparison.spanAfter, -1);
    QCOMPARE(comparison.spansAfter.size(), 2);
}

void tst_RunComparison::whatCameOfACallIsADifference_data()
{
    QTest::addColumn<QString>("result");
    QTest::addColumn<QString>("error");
    QTest::newRow("its result") << QStringLiteral("404") << QString();
    QTest::newRow("its failure") << QString() << QStringLiteral("OSError");
}

void tst_RunComparison::whatCameOfACallIsADifference()
{
    QFETCH(QString, result);
    QFETCH(QString, error);
    const RpaRunDetails before = DetailsOf({QStringLiteral("a"), QStringLiteral("b")});
    RpaRunDetails after = before;
    after.spans.spans[1].result = result;
    after.spans.spans[1].error = error;

    QCOMPARE(RpaRunComparison::Of({}, before, {}, after).spanAfter, 1);
}

void tst_RunComparison::tellsParametersThatDiffer()
{
    RpaRunRecord before;
    before.parameters = {{QStringLiteral("月"), QStringLiteral("5")},
                         {QStringLiteral("部门"), QStringLiteral("财务")},
                         {QStringLiteral("旧"), QStringLiteral("x")}};
    RpaRunRecord after;
    after.parameters = {{QStringLiteral("部门"), QStringLiteral("财务")},
                        {QStringLiteral("月"), QStringLiteral("6")},
                        {QStringLiteral("新"), QString()}};

    const QVector<RpaParameterDifference> differences =
        RpaRunComparison::Of(before, {}, after, {}).parameters;

    QStringList told;
    for (const RpaParameterDifference& difference : differences)
        told << difference.name + QLatin1Char(':') + difference.before + QLatin1Char('/') + difference.after;
    QCOMPARE(told, (QStringList{QStringLiteral("月:5/6"), QStringLiteral("新:/"), QStringLiteral("旧:x/")}));
}

void tst_RunComparison::tellsThePlacesThatTookLongerFirst()
{
    RpaRunDetails before;
    before.spans.spans = {SpanOf(1, QStringLiteral("a"), 10), SpanOf(2, QStringLiteral("b"), 10)};
    before.spans.sums = {{RpaSpanKind::File, SpanOf(2, {}).place, 4, 100, 50, 0}};
    RpaRunDetails after;
    after.spans.spans = {SpanOf(1, QStringLiteral("a"), 30), SpanOf(1, QStringLiteral("a"), 5),
                         SpanOf(3, QStringLiteral("c"), 1)};

    const QVector<RpaPlaceDifference> places = RpaRunComparison::Of({}, before, {}, after).places;

    QCOMPARE(places.size(), 3);
    QCOMPARE(places.at(0).place.line, 2);
    QCOMPARE(places.at(0).timeBefore, qint64(110));
    QCOMPARE(places.at(0).countBefore, qint64(5));
    QCOMPARE(places.at(0).countAfter, qint64(0));
    QCOMPARE(places.at(1).place.line, 1);
    QCOMPARE(places.at(1).timeAfter, qint64(35));
    QCOMPARE(places.at(2).place.line, 3);
}

void tst_RunComparison::saysWhenTheFirstCallsAreSumsOnly()
{
    RpaRunDetails after;
    after.spans.sums = {{RpaSpanKind::File, SpanOf(2, {}).place, 4, 100, 50, 0}};

    QVERIFY(RpaRunComparison::Of({}, {}, {}, after).isPartial);
    QVERIFY(RpaRunComparison::Of({}, after, {}, {}).isPartial);
}

QTEST_GUILESS_MAIN(tst_RunComparison)
#include "tst_runcomparison.moc"
