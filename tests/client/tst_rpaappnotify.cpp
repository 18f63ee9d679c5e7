// SPDX-License-Identifier: Apache-2.0

#include "RpaAppNotify.h"

#include <QSignalSpy>
#include <QtTest>

#include <atomic>
#include <thread>
#include <vector>

class TestRpaAppNotify : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { RpaAppNotify::Release(); }

    void isOneObjectForTheWholeProcess();
    void isMadeOnceByRacingFirstCalls();
    void isReleasedTwiceWithoutHarm();
    void forgetsItsListenersWhenReleased();
    void tellsThePickedPage();
};

void TestRpaAppNotify::isOneObjectForTheWholeProcess()
{
    QVERIFY(RpaAppNotify::Instance());
    QCOMPARE(RpaAppNotify::Instance(), RpaAppNotify::Instance());
    QVERIFY(!RpaAppNotify::Instance()->parent());
}

void TestRpaAppNotify::isMadeOnceByRacingFirstCalls()
{
    constexpr int rounds = 200;
    constexpr int racers = 2;
    for (int round = 0; round < rounds; ++round) {
        // given
        RpaAppNotify::Release();
        std::atomic<int> ready{0};
        std::vector<RpaAppNotify*> seen(racers);

        // when
        std::vector<std::thread> threads;
        threads.reserve(racers);
        for (int i = 0; i < racers; ++i) {
            threads.emplace_back([&ready, &seen, i] {
                ++ready;
                while (ready < racers) {
                }
                seen[std::size_t(i)] = RpaAppNotify::Instance();
            });
        }
        for (std::thread& thread : threads)
            thread.join();

        // then
        QVERIFY(seen.front());
        QCOMPARE(seen.front(), seen.back());
    }
}

void TestRpaAppNotify::isReleasedTwiceWithoutHarm()
{
    RpaAppNotify::Instance();
    RpaAppNotify::Release();
    RpaAppNotify::Release();

    QVERIFY(RpaAppNotify::Instance());
}

void TestRpaAppNotify::forgetsItsListenersWhenReleased()
{
    // given
    QObject editor;
    int heard = 0;
    connect(RpaAppNotify::Instance(), &RpaAppNotify::SigEditorTabChanged, &editor, [&heard] { ++heard; });
    emit RpaAppNotify::Instance()->SigEditorTabChanged(1);
    QCOMPARE(heard, 1);

    // when
    RpaAppNotify::Release();
    emit RpaAppNotify::Instance()->SigEditorTabChanged(1);

    // then
    QCOMPARE(heard, 1);
}

void TestRpaAppNotify::tellsThePickedPage()
{
    QSignalSpy spy(RpaAppNotify::Instance(), &RpaAppNotify::SigEditorTabChanged);

    emit RpaAppNotify::Instance()->SigEditorTabChanged(2);

    QCOMPARE(spy.size(), 1);
    QCOMPARE(spy.constFirst().constFirst().toInt(), 2);
}

QTEST_GUILESS_MAIN(TestRpaAppNotify)

#include "tst_rpaappnotify.moc"
