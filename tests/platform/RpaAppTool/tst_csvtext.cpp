// SPDX-License-Identifier: Apache-2.0

#include "CsvText_p.h"

#include <QTest>

using Rows = QVector<QStringList>;

class CsvTextTest : public QObject
{
    Q_OBJECT

private slots:
    void readsWhatSpreadsheetsWrite_data();
    void readsWhatSpreadsheetsWrite();
    void readsChineseInTheNationalEncoding();
    void writtenRowsAreReadBack();
    void writesNoFormulas();
    void theClipboardKeepsTabsAndLineBreaks();
};

void CsvTextTest::readsWhatSpreadsheetsWrite_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<Rows>("rows");

    QTest::newRow("empty") << QByteArray() << Rows();
    QTest::newRow("plain") << QByteArray("a,b\nc,d\n")
                           << Rows{{QStringLiteral("a"), QStringLiteral("b")},
                                   {QStringLiteral("c"), QStringLiteral("d")}};
    QTest::newRow("no line break at the end")
        << QByteArray("a,b") << Rows{{QStringLiteral("a"), QStringLiteral("b")}};
    QTest::newRow("CRLF and BOM") << QByteArray("\xEF\xBB\xBF"
                                                "a,b\r\nc,d\r\n")
                                  << Rows{{QStringLiteral("a"), QStringLiteral("b")},
                                          {QStringLiteral("c"), QStringLiteral("d")}};
    QTest::newRow("semicolons") << QByteArray("a;b\n1,5;2\n")
                                << Rows{{QStringLiteral("a"), QStringLiteral("b")},
                                        {QStringLiteral("1,5"), QStringLiteral("2")}};
    QTest::newRow("tabs") << QByteArray("a\tb\n") << Rows{{QStringLiteral("a"), QStringLiteral("b")}};
    QTest::newRow("quotes") << QByteArray("\"a,1\",\"say \"\"hi\"\"\"\n\"two\nlines\",x\n")
                            << Rows{{QStringLiteral("a,1"), QStringLiteral("say \"hi\"")},
                                    {QStringLiteral("two\nlines"), QStringLiteral("x")}};
    QTest::newRow("empty cells") << QByteArray(",\n,,\n")
                                 << Rows{{QStringLiteral(""), QStringLiteral("")},
                                         {QStringLiteral(""), QStringLiteral(""), QStringLiteral("")}};
    QTest::newRow("unclosed quote") << QByteArray("a,\"b\nc")
                                    << Rows{{QStringLiteral("a"), QStringLiteral("b\nc")}};
}

void CsvTextTest::readsWhatSpreadsheetsWrite()
{
    QFETCH(QByteArray, bytes);
    QFETCH(Rows, rows);

    QCOMPARE(CsvText::Read(bytes), rows);
}

void CsvTextTest::readsChineseInTheNationalEncoding()
{
    const QByteArray nationalBytes("\xD0\xD5\xC3\xFB,1\n");

    QCOMPARE(CsvText::Read(nationalBytes), (Rows{{QStringLiteral("姓名"), QStringLiteral("1")}}));
}

void CsvTextTest::writtenRowsAreReadBack()
{
    const Rows rows{{QStringLiteral("姓名"), QStringLiteral("a,b")},
                    {QStringLiteral("x\"y"), QStringLiteral("1\n2")}};

    const QByteArray bytes = CsvText::Write(rows);

    QVERIFY(bytes.startsWith("\xEF\xBB\xBF"));
    QVERIFY(bytes.endsWith("\r\n"));
    QCOMPARE(CsvText::Read(bytes), rows);
}

void CsvTextTest::writesNoFormulas()
{
    const QByteArray bytes = CsvText::Write(
        {{QStringLiteral("=1+1"), QStringLiteral("-5"), QStringLiteral("@x"), QStringLiteral("+a")}});

    QCOMPARE(CsvText::Read(bytes), (Rows{{QStringLiteral("'=1+1"), QStringLiteral("-5"),
                                          QStringLiteral("'@x"), QStringLiteral("'+a")}}));
}

void CsvTextTest::theClipboardKeepsTabsAndLineBreaks()
{
    const Rows rows{{QStringLiteral("a\tb"), QStringLiteral("c")}, {QStringLiteral("d\ne"), QString()}};

    QCOMPARE(CsvText::ReadClipboard(CsvText::WriteClipboard(rows)), rows);
}

QTEST_APPLESS_MAIN(CsvTextTest)

#include "tst_csvtext.moc"
