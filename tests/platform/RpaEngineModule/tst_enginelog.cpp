// SPDX-License-Identifier: Apache-2.0

#include <RpaEngineCore/IRpaLogManager.h>
#include <RpaEngineModule/RpaEngineModule.h>

#include <QSignalSpy>
#include <QtTest>

namespace
{
IRpaLogManager* Log()
{
    return RpaEngineModule::Instance()->GetLogManager();
}

IRpaLogDataSource* Source()
{
    return Log()->GetLogDataSource();
}

void AppendLines(int count)
{
    for (int i = 0; i < count; ++i)
        Log()->Append(RpaLogLevel::Info, QString::number(i));
}
} // namespace

class EngineLogTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { Source()->Initialize(); }

    void keepsWhatWasWritten()
    {
        Log()->Append(RpaLogLevel::Warning, QStringLiteral("找不到按钮"), QStringLiteral("s7"));

        const QVector<RpaLogLine> lines = Source()->GetLines();

        QCOMPARE(lines.size(), 1);
        QCOMPARE(lines.at(0).number, 1);
        QCOMPARE(lines.at(0).level, RpaLogLevel::Warning);
        QCOMPARE(lines.at(0).text, QStringLiteral("找不到按钮"));
        QCOMPARE(lines.at(0).statementId, QStringLiteral("s7"));
        QVERIFY(lines.at(0).time.isValid());
    }

    void announcesTheLinesOfOneTurnTogether()
    {
        QSignalSpy added(Source(), &IRpaLogDataSource::SigLinesAdded);

        AppendLines(100);
        QCOMPARE(added.size(), 0);
        QTRY_COMPARE(added.size(), 1);

        QCOMPARE(added.at(0).at(0).value<QVector<RpaLogLine>>().size(), 100);
    }

    void announcesEveryLineOnce()
    {
        QSignalSpy added(Source(), &IRpaLogDataSource::SigLinesAdded);

        AppendLines(2);
        QTRY_COMPARE(added.size(), 1);
        AppendLines(1);
        QTRY_COMPARE(added.size(), 2);

        const auto second = added.at(1).at(0).value<QVector<RpaLogLine>>();
        QCOMPARE(second.size(), 1);
        QCOMPARE(second.at(0).number, 3);
    }

    void dropsTheOldestLinesOfAFlood()
    {
        QSignalSpy added(Source(), &IRpaLogDataSource::SigLinesAdded);

        AppendLines(25000);
        QTRY_COMPARE(added.size(), 1);

        const QVector<RpaLogLine> lines = Source()->GetLines();
        QCOMPARE(lines.size(), 10000);
        QCOMPARE(lines.first().number, 15001);
        QCOMPARE(lines.last().number, 25000);
        QCOMPARE(added.at(0).at(0).value<QVector<RpaLogLine>>().first().number, 15001);
    }

    void cutsALineThatWouldFillTheMemory()
    {
        Log()->Append(RpaLogLevel::Info, QString(1000000, QLatin1Char('x')));

        QVERIFY(Source()->GetLines().at(0).text.size() < 20000);
    }

    void beginsAnewWhenInitialised()
    {
        AppendLines(3);
        QSignalSpy initialised(Source(), &IRpaLogDataSource::SigInitialized);
        QSignalSpy added(Source(), &IRpaLogDataSource::SigLinesAdded);

        Source()->Initialize();
        AppendLines(1);
        QTRY_COMPARE(added.size(), 1);

        QCOMPARE(initialised.size(), 1);
        QCOMPARE(Source()->GetLines().size(), 1);
        QCOMPARE(Source()->GetLines().at(0).number, 1);
        QCOMPARE(added.at(0).at(0).value<QVector<RpaLogLine>>().size(), 1);
    }
};

QTEST_GUILESS_MAIN(EngineLogTest)
#include "tst_enginelog.moc"
