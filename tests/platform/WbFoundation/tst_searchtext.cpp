// SPDX-License-Identifier: Apache-2.0

#include <WbFoundation/SearchText.h>

#include <QtTest>

class SearchTextTest : public QObject
{
    Q_OBJECT

private slots:
    void findsTheWord_data();
    void findsTheWord();
    void findsAllWordsInAnyOfTheTexts();
    void aWordThatIsEndlessIsNotFound();
    void everyCharacterCanBeTyped();
};

void SearchTextTest::findsTheWord_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("word");
    QTest::addColumn<int>("place");

    const QString filter = QStringLiteral("表格筛选");
    QTest::newRow("as it stands") << filter << QStringLiteral("筛选") << 2;
    QTest::newRow("whole readings") << filter << QStringLiteral("shaixuan") << 2;
    QTest::newRow("initials") << filter << QStringLiteral("sx") << 2;
    QTest::newRow("initials of two letters") << filter << QStringLiteral("shx") << 2;
    QTest::newRow("mixed") << filter << QStringLiteral("shaix") << 2;
    QTest::newRow("character and reading") << filter << QStringLiteral("筛xuan") << 2;
    QTest::newRow("last syllable unfinished") << filter << QStringLiteral("biaogeshaixu") << 0;
    QTest::newRow("first syllable unfinished") << filter << QStringLiteral("sha") << 2;
    QTest::newRow("upper case") << filter << QStringLiteral("BGSX") << 0;
    QTest::newRow("a syllable in between left out") << filter << QStringLiteral("bsx") << -1;
    QTest::newRow("the syllable in between unfinished") << filter << QStringLiteral("shaxuan") << -1;
    QTest::newRow("other order") << filter << QStringLiteral("xs") << -1;
    QTest::newRow("longer than the text") << filter << QStringLiteral("shaixuanx") << -1;
    QTest::newRow("one of several readings") << QStringLiteral("重命名") << QStringLiteral("chongmm") << 0;
    QTest::newRow("another of them") << QStringLiteral("重命名") << QStringLiteral("zhongmm") << 0;
    QTest::newRow("v for ü") << QStringLiteral("绿色") << QStringLiteral("lvse") << 0;
    QTest::newRow("Latin letters inside")
        << QStringLiteral("打开Excel文件") << QStringLiteral("dkexcelwj") << 0;
    QTest::newRow("signs inside") << QStringLiteral("折叠 / 展开") << QStringLiteral("zdzk") << 0;
    QTest::newRow("signs do not begin") << QStringLiteral("“展开”") << QStringLiteral("zk") << 1;
    QTest::newRow("Latin text is no reading") << QStringLiteral("workbook") << QStringLiteral("wb") << -1;
    QTest::newRow("empty word") << filter << QString() << 0;
    QTest::newRow("empty text") << QString() << QStringLiteral("a") << -1;
}

void SearchTextTest::findsTheWord()
{
    QFETCH(QString, text);
    QFETCH(QString, word);

    QTEST(SearchText::Find(text, word), "place");
}

void SearchTextTest::findsAllWordsInAnyOfTheTexts()
{
    const QStringList texts{QStringLiteral("筛选行"), QStringLiteral("过滤")};

    QVERIFY(SearchText::HasAll(texts, QStringLiteral("shai guol")));
    QVERIFY(SearchText::HasAll(texts, QStringLiteral("  ")));
    QVERIFY(!SearchText::HasAll(texts, QStringLiteral("shai paixu")));
    QVERIFY(!SearchText::HasAll(texts, QStringLiteral("shaixuanhangguolv")));
}

void SearchTextTest::aWordThatIsEndlessIsNotFound()
{
    const QString text(200, QChar(0x554a));

    QCOMPARE(SearchText::Find(text, QString(63, QLatin1Char('a'))), 0);
    QCOMPARE(SearchText::Find(text, QString(64, QLatin1Char('a'))), -1);
}

// But for ten that only Japanese has.
void SearchTextTest::everyCharacterCanBeTyped()
{
    int missing = 0;
    for (ushort code = 0x4e00; code <= 0x9fa5; ++code) {
        bool isFound = false;
        for (char letter = 'a'; letter <= 'z' && !isFound; ++letter)
            isFound = SearchText::Find(QString(QChar(code)), QString(QLatin1Char(letter))) == 0;
        missing += isFound ? 0 : 1;
    }
    QCOMPARE(missing, 10);
}

QTEST_GUILESS_MAIN(SearchTextTest)
#include "tst_searchtext.moc"
