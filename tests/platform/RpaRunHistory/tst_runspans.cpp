// SPDX-License-Identifier: Apache-2.0

// What runs did outside stays readable, bounded and whole on the disk.

#include "RunDatabase_p.h"
#include "SpanBlock_p.h"
#include "TestFolder.h"

#include <QtTest>

#include <memory>

namespace
{
RpaRunSpan SpanOf(int number, RpaSpanKind kind = RpaSpanKind::File)
{
    RpaRunSpan span;
    span.kind = kind;
    span.start = number * qint64(1000);
    span.duration = number % 7 + 1;
    span.place = {QStringLiteral("主流程"), QStringLiteral("s%1").arg(number % 3), number % 3 + 1,
                  QStringLiteral("读取文本文件")};
    span.call = QStringLiteral("open");
    span.input = QStringLiteral("/data/%1.txt").arg(number);
    span.result = QStringLiteral("7");
    if (number % 5 == 0)
        span.error = QStringLiteral("OSError");
    return span;
}

RpaRunSpans SpansOf(int from, int to)
{
    RpaRunSpans spans;
    for (int number = from; number < to; ++number)
        spans.spans.append(SpanOf(number));
    return spans;
}

QStringList Told(const RpaRunSpan& span)
{
    return {QString::number(int(span.kind)),
            QString::number(span.start),
            QString::number(span.duration),
            span.place.processName,
            span.place.statementId,
            QString::number(span.place.line),
            span.place.title,
            span.call,
            span.input,
            span.result,
            span.error};
}
} // namespace

class tst_RunSpans : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void readsWhatWasWritten();
    void keepsTheNewestAndAddsTheOldestUp();
    void addsSumsOfTheRunToItsOwn();
    void startsAnewForEachRun();
    void goesWithItsRun();
    void keepsHowARunFailed();
    void readsDamagedBytesAsNothing_data();
    void readsDamagedBytesAsNothing();
    void sumsAreOfABoundedNumberOfPlaces();

private:
    qint64 Begin()
    {
        RpaRunRecord run;
        run.appId = QStringLiteral("a1");
        run.started = QDateTime::currentDateTimeUtc();
        const bool begun = database->Begin(&run, &problem);
        return begun ? run.id : 0;
    }
    RpaRunSpans Read(qint64 run) { return database->GetSpans()->Read(run, &problem).spans; }

    std::unique_ptr<TestFolder> folder;
    std::unique_ptr<RunDatabase> database;
    QString problem;
};

void tst_RunSpans::init()
{
    database.reset();
    folder = std::make_unique<TestFolder>();
    RunLimits limits;
    limits.spansOfABlock = 10;
    limits.blocksOfARun = 3;
    database = std::make_unique<RunDatabase>(limits);
    QVERIFY2(database->Open(folder->path(), &problem), qPrintable(problem));
}

void tst_RunSpans::readsWhatWasWritten()
{
    const qint64 run = Begin();
    QVERIFY(database->GetSpans()->Add(run, SpansOf(1, 5), &problem));
    QVERIFY(database->GetSpans()->Add(run, SpansOf(5, 24), &problem));

    const RpaRunSpans read = Read(run);

    QCOMPARE(read.spans.size(), 23);
    for (int i = 0; i < read.spans.size(); ++i)
        QCOMPARE(Told(read.spans.at(i)), Told(SpanOf(i + 1)));
    QVERIFY(read.sums.isEmpty());
    QCOMPARE(problem, QString());
}

void tst_RunSpans::keepsTheNewestAndAddsTheOldestUp()
{
    const qint64 run = Begin();
    for (int first = 0; first < 1000; first += 25)
        QVERIFY(database->GetSpans()->Add(run, SpansOf(first, first + 25), &problem));

    const RpaRunSpans read = Read(run);

    QVERIFY2(read.spans.size() >= 30 && read.spans.size() <= 40,
             qPrintable(QString::number(read.spans.size())));
    QCOMPARE(Told(read.spans.constLast()), Told(SpanOf(999)));
    qint64 count = read.spans.size();
    qint64 total = 0;
    qint64 failures = 0;
    for (const RpaRunSpanSum& sum : read.sums) {
        count += sum.count;
        total += sum.total;
        failures += sum.failures;
        QCOMPARE(sum.longest, qint64(7));
    }
    QCOMPARE(count, qint64(1000));
    QCOMPARE(read.sums.size(), 3);
    for (const RpaRunSpan& span : read.spans) {
        total += span.duration;
        failures += span.error.isEmpty() ? 0 : 1;
    }
    QCOMPARE(failures, qint64(200));
    qint64 expected = 0;
    for (int number = 0; number < 1000; ++number)
        expected += SpanOf(number).duration;
    QCOMPARE(total, expected);
}

void tst_RunSpans::addsSumsOfTheRunToItsOwn()
{
    const qint64 run = Begin();
    const RpaRunPlace place{QStringLiteral("主流程"), QStringLiteral("s1"), 2};
    RpaRunSpans news;
    news.sums = {{RpaSpanKind::File, place, 5, 100, 40, 1}};
    QVERIFY(database->GetSpans()->Add(run, news, &problem));
    news.sums = {{RpaSpanKind::File, place, 2, 70, 60, 0}, {RpaSpanKind::Http, place, 1, 9, 9, 0}};
    QVERIFY(database->GetSpans()->Add(run, news, &problem));

    const QVector<RpaRunSpanSum> sums = Read(run).sums;

    QCOMPARE(sums.size(), 2);
    QCOMPARE(sums.first().count, qint64(7));
    QCOMPARE(sums.first().total, qint64(170));
    QCOMPARE(sums.first().longest, qint64(60));
    QCOMPARE(sums.first().failures, qint64(1));
    QVERIFY(sums.first().place == place);
    QVERIFY(sums.at(1).kind == RpaSpanKind::Http);
}

void tst_RunSpans::startsAnewForEachRun()
{
    const qint64 run = Begin();
    QVERIFY(database->GetSpans()->Add(run, SpansOf(0, 95), &problem));
    const qint64 next = Begin();
    QVERIFY(database->GetSpans()->Add(next, SpansOf(0, 4), &problem));

    QCOMPARE(Read(next).spans.size(), 4);
    QVERIFY(Read(next).sums.isEmpty());
    QVERIFY(!Read(run).sums.isEmpty());
}

void tst_RunSpans::goesWithItsRun()
{
    const qint64 run = Begin();
    QVERIFY(database->GetSpans()->Add(run, SpansOf(0, 95), &problem));
    QVERIFY(database->GetSpans()->SetFailure(run, {{{QStringLiteral("f"), {}}}, {}}, "x", &problem));

    QVERIFY(database->Remove(run, &problem));

    const RpaRunDetails details = database->GetSpans()->Read(run, &problem);
    QVERIFY(details.spans.IsEmpty() && details.failure.IsEmpty() && details.picture.isEmpty());
}

void tst_RunSpans::keepsHowARunFailed()
{
    const qint64 run = Begin();
    RpaRunFailure failure;
    failure.stack = {{QStringLiteral("look"), {QStringLiteral("主流程"), {}, 3}},
                     {QStringLiteral("<module>"), {QStringLiteral("主流程"), {}, 9}}};
    failure.scopes = {
        {QStringLiteral("局部变量"), {{QStringLiteral("n"), QStringLiteral("int"), QStringLiteral("5")}}},
        {QStringLiteral("全局变量"), {}}};
    QVERIFY(database->GetSpans()->SetFailure(run, failure, QByteArray("PNG\0x", 5), &problem));

    const RpaRunDetails read = database->GetSpans()->Read(run, &problem);

    QCOMPARE(read.failure.stack.size(), 2);
    QCOMPARE(read.failure.stack.at(1).functionName, QStringLiteral("<module>"));
    QCOMPARE(read.failure.stack.at(1).place.line, 9);
    QCOMPARE(read.failure.scopes.size(), 2);
    QCOMPARE(read.failure.scopes.first().variables.first().type, QStringLiteral("int"));
    QCOMPARE(read.failure.scopes.at(1).title, QStringLiteral("全局变量"));
    QCOMPARE(read.picture, QByteArray("PNG\0x", 5));
}

void tst_RunSpans::readsDamagedBytesAsNothing_data()
{
    QTest::addColumn<QByteArray>("bytes");
    const QByteArray whole = SpanBlock::Pack(SpansOf(0, 10).spans);
    QCOMPARE(SpanBlock::Unpack(whole).size(), 10);
    QTest::newRow("none") << QByteArray();
    QTest::newRow("text") << QByteArray("these are no spans at all");
    QTest::newRow("another format") << QByteArray(whole).replace(0, 4, QByteArray("\0\0\0\2", 4));
    QTest::newRow("cut") << whole.left(whole.size() - 1);
    QTest::newRow("cut in its texts") << whole.left(20);
    QTest::newRow("more texts than bytes") << QByteArray("\0\0\0\1\xff\xff\xff\xff", 8);
    QTest::newRow("a text beyond its end") << QByteArray("\0\0\0\1\0\0\0\1\x7f\xff\xff\xfe", 12);
    QTest::newRow("more entries than bytes") << QByteArray("\0\0\0\1\0\0\0\0\0\x0f\x00\x00", 12);
    QTest::newRow("entries without end") << QByteArray("\0\0\0\1\0\0\0\0\xff\xff\xff\xff", 12);
}

void tst_RunSpans::readsDamagedBytesAsNothing()
{
    QFETCH(QByteArray, bytes);

    QCOMPARE(SpanBlock::Unpack(bytes).size(), 0);
    QCOMPARE(SpanBlock::UnpackSums(bytes).size(), 0);
}

void tst_RunSpans::sumsAreOfABoundedNumberOfPlaces()
{
    SpanSums sums;
    for (int i = 0; i < SpanSums::placesAtMost + 10; ++i)
        sums.Add({RpaSpanKind::File, {QStringLiteral("p"), {}, i}, 1, 1, 1, 0});
    sums.Add({RpaSpanKind::File, {QStringLiteral("p"), {}, 3}, 4, 1, 1, 0});

    QCOMPARE(sums.Get().size(), SpanSums::placesAtMost);
    QCOMPARE(sums.Get().at(3).count, qint64(5));
}

QTEST_GUILESS_MAIN(tst_RunSpans)
#include "tst_runspans.moc"
