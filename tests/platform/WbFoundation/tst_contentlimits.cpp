// SPDX-License-Identifier: Apache-2.0

#include <WbFoundation/ContentLimits.h>
#include <WbFoundation/JsonGuard.h>
#include <WbFoundation/JsonWriter.h>

#include <QtTest>

class ContentLimitsTest : public QObject
{
    Q_OBJECT

private slots:
    void countsTextsAsTheyAreWritten_data();
    void countsTextsAsTheyAreWritten();
    void takesWhatAReaderTakes_data();
    void takesWhatAReaderTakes();
};

void ContentLimitsTest::countsTextsAsTheyAreWritten_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("empty") << QString();
    QTest::newRow("Latin") << QStringLiteral("abc");
    QTest::newRow("two bytes each") << QStringLiteral("äöü");
    QTest::newRow("Chinese") << QStringLiteral("流程");
    QTest::newRow("pairs") << QString::fromUtf8("\xF0\x9F\x98\x80x\xF0\x9F\x98\x80");
    QTest::newRow("the first half of a pair") << QString(QChar(0xD83D)) + QLatin1Char('a');
    QTest::newRow("the first half at the end") << QString(QChar(0xD83D));
    QTest::newRow("the second half of a pair") << QString(QChar(0xDE00));
}

void ContentLimitsTest::countsTextsAsTheyAreWritten()
{
    QFETCH(QString, text);

    JsonWriter writer;
    writer.String(text);
    const int quotes = 2;
    QCOMPARE(ContentLimits::BytesOf(text), qint64(writer.Take().size() - quotes));
}

void ContentLimitsTest::takesWhatAReaderTakes_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("fits");
    const int most = ContentLimits::textBytes;
    const QChar han(0x6D41);
    QTest::newRow("short") << QStringLiteral("x") << true;
    QTest::newRow("Latin, as long as may be") << QString(most, QLatin1Char('x')) << true;
    QTest::newRow("Latin, one too many") << QString(most + 1, QLatin1Char('x')) << false;
    QTest::newRow("Chinese, as long as may be") << QString(most / 3, han) + QLatin1Char('x') << true;
    QTest::newRow("Chinese, one too many") << QString(most / 3 + 1, han) << false;
}

// The same figure in both places is what keeps a text from being accepted here and refused there.
void ContentLimitsTest::takesWhatAReaderTakes()
{
    QFETCH(QString, text);
    QFETCH(bool, fits);

    QCOMPARE(ContentLimits::Fits(text), fits);
    QCOMPARE(JsonGuard::Check('"' + text.toUtf8() + '"'), fits);
}

QTEST_GUILESS_MAIN(ContentLimitsTest)
#include "tst_contentlimits.moc"
