// SPDX-License-Identifier: Apache-2.0

#include <OxBase/DpiFollower.h>
#include <OxBase/DpiTool.h>
#include <OxBase/IDpiAdapter.h>

#include <QtTest>

#include <functional>

namespace
{
class Adapter : public IDpiAdapter
{
public:
    Adapter() { DpiTool::Register(this); }
    ~Adapter() override { DpiTool::Unregister(this); }

    void AdjustForDpi() override
    {
        ++calls;
        if (reaction)
            reaction();
    }

    int calls = 0;
    std::function<void()> reaction;
};
} // namespace

class DpiToolTest : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { DpiTool::SetScale(1.0); }
    void scalesLengths_data();
    void scalesLengths();
    void keepsTheScaleWithinItsRange();
    void tellsAdaptersOnlyOfChanges();
    void forgetsAdaptersThatAreGone();
    void copesWithAnAdapterThatRemovesAnother();
    void followsTheScaleAsLongAsTheOwnerLives();
};

void DpiToolTest::scalesLengths_data()
{
    QTest::addColumn<qreal>("scale");
    QTest::addColumn<int>("length");
    QTest::addColumn<int>("expected");

    QTest::newRow("100 %") << 1.0 << 17 << 17;
    QTest::newRow("150 %") << 1.5 << 12 << 18;
    QTest::newRow("rounded up") << 1.25 << 6 << 8;
    QTest::newRow("rounded down") << 1.25 << 5 << 6;
    QTest::newRow("negative") << 2.0 << -3 << -6;
    QTest::newRow("zero") << 3.0 << 0 << 0;
    QTest::newRow("half") << 0.5 << 20 << 10;
}

void DpiToolTest::scalesLengths()
{
    QFETCH(qreal, scale);
    QFETCH(int, length);
    QFETCH(int, expected);

    DpiTool::SetScale(scale);

    QCOMPARE(DpiTool::ScaleDefault(length), expected);
}

void DpiToolTest::keepsTheScaleWithinItsRange()
{
    DpiTool::SetScale(0.1);
    QCOMPARE(DpiTool::GetScale(), 0.5);
    DpiTool::SetScale(9.0);
    QCOMPARE(DpiTool::GetScale(), 4.0);
}

void DpiToolTest::tellsAdaptersOnlyOfChanges()
{
    Adapter adapter;
    DpiTool::Register(&adapter);

    DpiTool::SetScale(2.0);
    DpiTool::SetScale(2.0);

    QCOMPARE(adapter.calls, 1);
}

void DpiToolTest::forgetsAdaptersThatAreGone()
{
    Adapter stays;
    {
        const Adapter goes;
    }

    DpiTool::SetScale(1.5);

    QCOMPARE(stays.calls, 1);
}

void DpiToolTest::copesWithAnAdapterThatRemovesAnother()
{
    Adapter first;
    auto second = std::make_unique<Adapter>();
    first.reaction = [&] { second.reset(); };

    DpiTool::SetScale(1.5);

    QCOMPARE(first.calls, 1);
    QVERIFY(!second);
}

void DpiToolTest::followsTheScaleAsLongAsTheOwnerLives()
{
    int height = 0;
    auto owner = std::make_unique<QObject>();
    DpiFollower::Follow(owner.get(), [&height] { height = DpiTool::ScaleDefault(48); });
    QCOMPARE(height, 48);

    DpiTool::SetScale(1.5);
    QCOMPARE(height, 72);
    owner.reset();
    DpiTool::SetScale(2.0);

    QCOMPARE(height, 72);
}

QTEST_GUILESS_MAIN(DpiToolTest)
#include "tst_dpitool.moc"
