// SPDX-License-Identifier: Apache-2.0

// Calls of a run as bars over time: found where they are drawn, chosen by mouse and by keys.

#include "RunTimeline.h"
#include "SpanWords.h"
#include "TestApp.h"

#include <QHelpEvent>
#include <QScrollBar>
#include <QSignalSpy>
#include <QToolTip>
#include <QWheelEvent>
#include <QtTest>

#include <memory>
#include <utility>

namespace
{
constexpr int line1 = 1;
constexpr int line2 = 2;

RpaRunSpan SpanOf(int line, qint64 start, qint64 duration, const QString& input = QString())
{
    RpaRunSpan span;
    span.kind = RpaSpanKind::File;
    span.start = start;
    span.duration = duration;
    span.place = {QStringLiteral("主流程"), QStringLiteral("s%1").arg(line), line,
                  QStringLiteral("读取文本文件")};
    span.call = QStringLiteral("open");
    span.input = input;
    return span;
}

// Two places; the second is called first.
RpaRunSpans Three()
{
    RpaRunSpans spans;
    spans.spans = {SpanOf(line2, 0, 100000, QStringLiteral("/a")),
                   SpanOf(line1, 400000, 200000, QStringLiteral("/b")),
                   SpanOf(line2, 900000, 100000, QStringLiteral("/c"))};
    spans.spans[2].error = QStringLiteral("OSError: no");
    return spans;
}
} // namespace

class tst_RunTimeline : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void hasARowForEachPlaceInTheOrderOfTheRun();
    void drawsBarsWhereTheyAreFound();
    void drawsWhatFailedOtherwise();
    void aClickGoesToThePlace_data();
    void aClickGoesToThePlace();
    void aHoverShowsTheValues();
    void keysGoFromCallToCall();
    void zoomKeepsTheTimeUnderTheMouse();
    void aChosenCallIsBroughtIntoView();
    void saysWhenThereIsNothing();
    void keepsSumsBesideTheirPlace();
    void findsALongCallAmongOverlappingOnes();
    void writesTimes_data();
    void writesTimes();

private:
    QPoint Middle(int row, int span) const { return timeline->RectOf(row, span).center(); }
    void Click(const QPoint& place) { QTest::mouseClick(timeline->viewport(), Qt::LeftButton, {}, place); }
    QString Words(const QSignalSpy& spy) const
    {
        return spy.isEmpty() ? QString() : spy.last().first().toString();
    }

    std::unique_ptr<RunTimeline> timeline;
};

void tst_RunTimeline::init()
{
    timeline = std::make_unique<RunTimeline>();
    timeline->resize(900, 200);
    timeline->ShowSpans(Three());
    timeline->show();
    QVERIFY(QTest::qWaitForWindowExposed(timeline.get()));
}

void tst_RunTimeline::hasARowForEachPlaceInTheOrderOfTheRun()
{
    const QVector<TimelineRow>& rows = timeline->GetRows().GetRows();

    QCOMPARE(rows.size(), 2);
    QCOMPARE(rows.at(0).place.line, line2);
    QCOMPARE(rows.at(0).spans, (QVector<int>{0, 2}));
    QCOMPARE(rows.at(1).place.line, line1);
    QCOMPARE(timeline->GetRows().GetEnd(), qint64(1000000));
}

void tst_RunTimeline::drawsBarsWhereTheyAreFound()
{
    for (const auto& [row, span] : {std::pair{0, 0}, std::pair{1, 1}, std::pair{0, 2}}) {
        QVERIFY(timeline->viewport()->rect().contains(timeline->RectOf(row, span)));
        QCOMPARE(timeline->SpanAt(Middle(row, span)), span);
    }
    const QRect second = timeline->RectOf(1, 1);
    const QRect first = timeline->RectOf(0, 0);
    QVERIFY(second.left() > first.right());
    QVERIFY(qAbs(second.width() - 2 * first.width()) <= 2); // twice as long
    QCOMPARE(timeline->SpanAt((Middle(0, 0) + Middle(0, 2)) / 2), -1);
    const QImage picture = timeline->viewport()->grab().toImage();
    QVERIFY(picture.pixelColor(second.center()) !=
            picture.pixelColor(first.right() + 30, second.center().y()));
}

void tst_RunTimeline::drawsWhatFailedOtherwise()
{
    const QImage picture = timeline->viewport()->grab().toImage();

    QVERIFY(picture.pixelColor(Middle(0, 2)) != picture.pixelColor(Middle(0, 0)));
}

void tst_RunTimeline::aClickGoesToThePlace_data()
{
    QTest::addColumn<bool>("onTitle");
    QTest::newRow("on a bar") << false;
    QTest::newRow("on the title of a row") << true;
}

void tst_RunTimeline::aClickGoesToThePlace()
{
    QFETCH(bool, onTitle);
    RpaRunPlace asked;
    connect(timeline.get(), &RunTimeline::SigShowPlace, this,
            [&](const RpaRunPlace& place) { asked = place; });

    Click(onTitle ? QPoint(10, Middle(1, 1).y()) : Middle(1, 1));

    QCOMPARE(asked.statementId, QStringLiteral("s1"));
    QCOMPARE(timeline->GetSelected(), onTitle ? -1 : 1);
}

void tst_RunTimeline::aHoverShowsTheValues()
{
    const QPoint place = Middle(0, 2);
    QHelpEvent hover(QEvent::ToolTip, place, timeline->viewport()->mapToGlobal(place));

    QCoreApplication::sendEvent(timeline->viewport(), &hover);

    QCOMPARE(QToolTip::text(), QStringLiteral("主流程 第 2 步 读取文本文件\n文件：open  /c\n"
                                              "开始于 900 毫秒，用时 100 毫秒\n失败：OSError: no"));
}

void tst_RunTimeline::keysGoFromCallToCall()
{
    QSignalSpy words(timeline.get(), &RunTimeline::SigSelected);
    RpaRunPlace asked;
    connect(timeline.get(), &RunTimeline::SigShowPlace, this,
            [&](const RpaRunPlace& place) { asked = place; });
    timeline->setFocus();

    QTest::keyClick(timeline.get(), Qt::Key_Down);
    QCOMPARE(timeline->GetSelected(), 0);
    QTest::keyClick(timeline.get(), Qt::Key_Right);
    QCOMPARE(timeline->GetSelected(), 2);
    QTest::keyClick(timeline.get(), Qt::Key_Right);
    QCOMPARE(timeline->GetSelected(), 2);
    QVERIFY(Words(words).contains(QStringLiteral("OSError: no")));
    QTest::keyClick(timeline.get(), Qt::Key_Down);
    QCOMPARE(timeline->GetSelected(), 1);
    QTest::keyClick(timeline.get(), Qt::Key_Up);
    QCOMPARE(timeline->GetSelected(), 0);
    QCOMPARE(asked.line, 0);
    QTest::keyClick(timeline.get(), Qt::Key_Return);
    QCOMPARE(asked.line, line2);
}

void tst_RunTimeline::zoomKeepsTheTimeUnderTheMouse()
{
    const QPoint before = Middle(1, 1);
    const int width = timeline->RectOf(1, 1).width();
    QWheelEvent wheel(before, timeline->viewport()->mapToGlobal(before), {}, {0, 480}, Qt::NoButton,
                      Qt::ControlModifier, Qt::NoScrollPhase, false);

    QCoreApplication::sendEvent(timeline->viewport(), &wheel);

    QVERIFY(timeline->RectOf(1, 1).width() > 2 * width);
    QVERIFY(qAbs(Middle(1, 1).x() - before.x()) <= 3);
    QVERIFY(timeline->horizontalScrollBar()->maximum() > 0);
    QTest::keyClick(timeline.get(), Qt::Key_Minus);
    for (int i = 0; i < 9; ++i)
        QTest::keyClick(timeline.get(), Qt::Key_Minus);
    QCOMPARE(timeline->RectOf(1, 1).width(), width);
    QCOMPARE(timeline->horizontalScrollBar()->maximum(), 0);
}

void tst_RunTimeline::aChosenCallIsBroughtIntoView()
{
    for (int i = 0; i < 6; ++i)
        timeline->Zoom(1.25, Middle(0, 0).x());
    QVERIFY(!timeline->viewport()->rect().contains(Middle(0, 2)));

    timeline->Select(0, 2);

    QVERIFY(timeline->viewport()->rect().contains(Middle(0, 2)));
}

void tst_RunTimeline::saysWhenThereIsNothing()
{
    const QImage before = timeline->viewport()->grab().toImage();
    timeline->ShowSpans({});

    QVERIFY(timeline->GetRows().IsEmpty());
    QVERIFY(timeline->viewport()->grab().toImage() != before);
    QTest::keyClick(timeline.get(), Qt::Key_Down);
    QTest::keyClick(timeline.get(), Qt::Key_Right);
    QTest::keyClick(timeline.get(), Qt::Key_Return);
    Click({300, 100});
    QCOMPARE(timeline->GetSelected(), -1);
}

void tst_RunTimeline::keepsSumsBesideTheirPlace()
{
    RpaRunSpans spans = Three();
    spans.sums = {{RpaSpanKind::File, spans.spans.at(1).place, 7, 2000000, 900000, 2}};
    QSignalSpy words(timeline.get(), &RunTimeline::SigSelected);

    timeline->ShowSpans(spans);
    Click({10, timeline->RectOf(0, 1).center().y()});

    QCOMPARE(timeline->GetRows().GetRows().size(), 2);
    QVERIFY2(
        Words(words).contains(QStringLiteral("较早的 7 次文件调用合计 2.0 秒，最长 900 毫秒，失败 2 次")),
        qPrintable(Words(words)));
}

void tst_RunTimeline::findsALongCallAmongOverlappingOnes()
{
    RpaRunSpans spans;
    spans.spans = {SpanOf(1, 500000, 1000), SpanOf(1, 0, 1000000)}; // of two threads
    timeline->ShowSpans(spans);

    QCOMPARE(timeline->SpanAt((timeline->RectOf(0, 1).topLeft() + QPoint(20, 3))), 1);
}

void tst_RunTimeline::writesTimes_data()
{
    QTest::addColumn<qint64>("time");
    QTest::addColumn<QString>("text");
    QTest::newRow("0") << qint64(0) << QStringLiteral("0 微秒");
    QTest::newRow("999") << qint64(999) << QStringLiteral("999 微秒");
    QTest::newRow("a millisecond") << qint64(1000) << QStringLiteral("1 毫秒");
    QTest::newRow("a second") << qint64(1500000) << QStringLiteral("1.5 秒");
    QTest::newRow("minutes") << qint64(200000000) << QStringLiteral("3 分 20 秒");
}

void tst_RunTimeline::writesTimes()
{
    QFETCH(qint64, time);
    QTEST(SpanWords::Time(time), "text");
}

RPA_TEST_MAIN(tst_RunTimeline)
#include "tst_runtimeline.moc"
