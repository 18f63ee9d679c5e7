// SPDX-License-Identifier: Apache-2.0

#include "HostileTexts.h"
#include "RichHtmlSanitizer_p.h"
#include "RichImages_p.h"
#include "RichLimits_p.h"
#include "RichWords_p.h"

#include <QRegularExpression>
#include <QtTest>

namespace
{
// What a text that passed the screen asks for, counted without its help.
struct Demands
{
    int depth = 0;
    int tableDepth = 0;
    int tags = 0;
    int cells = 0;
    int widestSpan = 1;
    bool everyTagClosed = true;
};

Demands DemandsOf(const QString& html)
{
    static const QRegularExpression tag(QStringLiteral("<(/?)([a-z0-9]+)([^>\"]|\"[^\"]*\")*>"));
    static const QRegularExpression span(QStringLiteral("(?:col|row)span=\"(\\d+)\""));
    static const QStringList withoutEnd{QStringLiteral("br"), QStringLiteral("hr"), QStringLiteral("img")};
    Demands demands;
    QStringList open;
    auto it = tag.globalMatch(html);
    while (it.hasNext()) {
        const QRegularExpressionMatch match = it.next();
        const QString name = match.captured(2);
        ++demands.tags;
        if (withoutEnd.contains(name))
            continue;
        if (!match.captured(1).isEmpty()) {
            demands.everyTagClosed = demands.everyTagClosed && !open.isEmpty() && open.takeLast() == name;
            continue;
        }
        open.append(name);
        demands.depth = qMax(demands.depth, open.size());
        demands.tableDepth = qMax(demands.tableDepth, open.count(QStringLiteral("table")));
        demands.cells += name == QLatin1String("td") || name == QLatin1String("th");
        auto spans = span.globalMatch(match.captured());
        while (spans.hasNext())
            demands.widestSpan = qMax(demands.widestSpan, spans.next().captured(1).toInt());
    }
    demands.everyTagClosed = demands.everyTagClosed && open.isEmpty();
    return demands;
}

QString Sanitized(const QString& html)
{
    RichImages images;
    return SanitizeHtml(html, images).html;
}

QString ProblemOf(const QString& html)
{
    RichImages images;
    return SanitizeHtml(html, images).tally.GetProblem();
}

QString Times(const char* piece, int count)
{
    return QString::fromUtf8(piece).repeated(count);
}
} // namespace

// What may be laid out at all, and in which form.
class tst_RichHtmlSanitizer : public QObject
{
    Q_OBJECT

private slots:
    void boundsEveryText_data();
    void boundsEveryText();
    void refusesATextBeyondALimit_data();
    void refusesATextBeyondALimit();
    void passesWhatIsJustWithin_data();
    void passesWhatIsJustWithin();
    void closesWhatNobodyClosed_data();
    void closesWhatNobodyClosed();
    void losesNoWords_data();
    void losesNoWords();
    void decodesNoPictureToKnowItsSize();
    void tellsTheWordsOfAText_data();
    void tellsTheWordsOfAText();
    void tellsOnlyTheBeginningOfEndlessWords();
};

void tst_RichHtmlSanitizer::boundsEveryText_data()
{
    QTest::addColumn<QString>("html");

    const QVector<HostileTexts::Text> texts = HostileTexts::BeyondEveryLimit() + HostileTexts::AtTheLimits();
    for (const HostileTexts::Text& text : texts)
        QTest::newRow(qPrintable(text.name)) << text.html;
    for (quint32 seed = 1; seed <= 150; ++seed) {
        const HostileTexts::Text text = HostileTexts::Random(seed);
        QTest::newRow(qPrintable(text.name)) << text.html;
    }
}

void tst_RichHtmlSanitizer::boundsEveryText()
{
    QFETCH(QString, html);
    RichImages images;

    const SanitizedHtml sanitized = SanitizeHtml(html, images);

    // Cells count more in the tally the deeper they are, never less.
    const Demands demands = DemandsOf(sanitized.html);
    QVERIFY(demands.everyTagClosed);
    QVERIFY2(demands.tableDepth <= RichLimits::tableDepth, qPrintable(QString::number(demands.tableDepth)));
    QVERIFY2(demands.depth <= RichLimits::depth + 2 * RichLimits::tableDepth,
             qPrintable(QString::number(demands.depth)));
    QVERIFY(demands.widestSpan <= RichLimits::span);
    QVERIFY(demands.cells <= sanitized.tally.GetCells());
    if (sanitized.tally.GetProblem().isEmpty()) {
        QVERIFY(sanitized.tally.GetCells() <= RichLimits::cells);
        QVERIFY(sanitized.tally.GetParagraphs() <= RichLimits::paragraphs);
        QVERIFY(sanitized.tally.GetLongestParagraph() <= RichLimits::paragraphSize);
        QVERIFY(sanitized.tally.GetLongestList() <= RichLimits::listItems);
        QVERIFY(sanitized.tally.GetLayoutWork() <= RichLimits::layoutWork);
        QVERIFY(sanitized.html.size() <= 4 * html.size() + 10000);
    }
    const RichWords words = WordsOf(html);
    QVERIFY(words.text.size() <= 220 * 1000);
    QVERIFY(words.text.count(QLatin1Char('\n')) <= 10 * 1000);
}

void tst_RichHtmlSanitizer::refusesATextBeyondALimit_data()
{
    QTest::addColumn<QString>("html");
    QTest::addColumn<QString>("reason");

    QTest::newRow("items") << QString(QLatin1String("<ul>") + Times("<li>x</li>", 2001))
                           << QStringLiteral("有一个列表超过 2000 项");
    QTest::newRow("items of a list in a list")
        << QString(QLatin1String("<ul><li>x<ol>") + Times("<li>x", 2001))
        << QStringLiteral("有一个列表超过 2000 项");
    QTest::newRow("items of many lists")
        << QString(QLatin1String("<ul>") + Times("<li>x</li>", 1990) + QLatin1String("</ul>")).repeated(18)
        << QStringLiteral("的长段落和长列表太多");
    QTest::newRow("cells") << QString(QLatin1String("<table>") + Times("<tr><td>x", 2001))
                           << QStringLiteral("的表格太大，单元格超过 2000 个");
    QTest::newRow("cells that no tag names")
        << QString(QLatin1String("<table><tr>") + Times("<td>x", 90) + Times("<tr><td>x", 90))
        << QStringLiteral("的表格太大，单元格超过 2000 个");
    QTest::newRow("cells that rows push aside")
        << QString(QLatin1String("<table>") + Times("<tr><td rowspan=60>x", 80))
        << QStringLiteral("的表格太大，单元格超过 2000 个");
    QTest::newRow("cells of tables in tables")
        << QString(QLatin1String("<table><tr><td><table>") + Times("<tr><td>x", 700))
        << QStringLiteral("的表格太大，单元格超过 2000 个");
    QTest::newRow("columns") << QString(QLatin1String("<table><tr>") + Times("<td>x", 101))
                             << QStringLiteral("有一个表格超过 100 列");
    QTest::newRow("columns by spans") << QString(QLatin1String("<table><tr>") + Times("<td colspan=60>x", 2))
                                      << QStringLiteral("有一个表格超过 100 列");
    QTest::newRow("formats in a line") << QString(QLatin1String("<p>") + Times("<b>x</b>", 2001))
                                       << QStringLiteral("有一段的格式标记超过 4000 个");
    QTest::newRow("formats") << Times("<p><b>x</b></p>", 50001) << QStringLiteral("的段落超过 40000 个");
    QTest::newRow("tags") << Times("<p><b>x</b><i>x</i></p>", 39000)
                          << QStringLiteral("的格式标记超过 200000 个");
    QTest::newRow("characters in a line")
        << QString(QLatin1String("<p>") + Times("x", 20001)) << QStringLiteral("有一段超过 20000 字");
    QTest::newRow("characters in a line of many formats")
        << QString(QLatin1String("<p>") + Times("<b>xxxxxxxxxxx</b>", 1900))
        << QStringLiteral("有一段超过 20000 字");
    QTest::newRow("lines of a text that keeps them")
        << QString(QLatin1String("<pre>") + Times("x\n", 40001)) << QStringLiteral("的段落超过 40000 个");
    QTest::newRow("characters")
        << Times("<p>一二三四五六七八九十</p>", 39999).replace(QStringLiteral("一"), Times("一", 50))
        << QStringLiteral("的文字超过 200 万字");
}

void tst_RichHtmlSanitizer::refusesATextBeyondALimit()
{
    QFETCH(QString, html);
    QFETCH(QString, reason);

    QCOMPARE(ProblemOf(html), reason);
}

void tst_RichHtmlSanitizer::passesWhatIsJustWithin_data()
{
    QTest::addColumn<QString>("html");

    for (const HostileTexts::Text& text : HostileTexts::AtTheLimits())
        QTest::newRow(qPrintable(text.name)) << text.html;
    QTest::newRow("items") << QString(QLatin1String("<ul>") + Times("<li>x</li>", 2000));
    QTest::newRow("cells") << QString(QLatin1String("<table>") + Times("<tr><td>x", 2000));
    QTest::newRow("columns") << QString(QLatin1String("<table><tr>") + Times("<td>x", 100));
    QTest::newRow("formats") << QString(QLatin1String("<p>") + Times("<b>x</b>", 1999));
    QTest::newRow("characters") << QString(QLatin1String("<p>") + Times("x", 20000));
    QTest::newRow("short lines that are kept")
        << QString(QLatin1String("<pre>") + Times("0123456789\n", 4000));
}

void tst_RichHtmlSanitizer::passesWhatIsJustWithin()
{
    QFETCH(QString, html);

    QCOMPARE(ProblemOf(html), QString());
}

void tst_RichHtmlSanitizer::closesWhatNobodyClosed_data()
{
    QTest::addColumn<QString>("html");
    QTest::addColumn<QString>("sanitized");

    const QString table =
        QStringLiteral("<table border=\"1\" cellspacing=\"0\" cellpadding=\"6\" width=\"100%\">");
    QTest::newRow("paragraphs") << QStringLiteral("<p>a<p>b") << QStringLiteral("<p>a</p><p>b</p>");
    QTest::newRow("items") << QStringLiteral("<ul><li>a<li>b<ul><li>c</ul><li>d")
                           << QStringLiteral("<ul><li>a</li><li>b<ul><li>c</li></ul></li><li>d</li></ul>");
    QTest::newRow("cells") << QStringLiteral("<table><tr><td>a<td>b<tr><td>c</table>d")
                           << QString(table + QLatin1String("<tr><td>a</td><td>b</td></tr>"
                                                            "<tr><td>c</td></tr></table>d"));
    QTest::newRow("words between cells")
        << QStringLiteral("<table>a<tr>b<td>c</table>")
        << QString(table + QLatin1String("<tr><td>a</td></tr><tr><td>b</td><td>c</td></tr></table>"));
    QTest::newRow("cells without a table")
        << QStringLiteral("<tr><td>a</td><td>b</td></tr>c") << QStringLiteral("<br> a bc");
    QTest::newRow("crossed formats") << QStringLiteral("<b>a<i>b</b>c</i>d")
                                     << QStringLiteral("<b>a<i>b</i></b>cd");
    QTest::newRow("an end without a beginning")
        << QStringLiteral("a</p></table></td>b") << QStringLiteral("ab");
    QTest::newRow("an end in another cell")
        << QStringLiteral("<b><table><tr><td>a</b>b</td></tr></table></b>")
        << QString(QLatin1String("<b>") + table + QLatin1String("<tr><td>ab</td></tr></table></b>"));
    QTest::newRow("attributes") << QStringLiteral(
                                       "<P Style='color:red; float:left;x:\"' onclick=x() align=center>a")
                                << QStringLiteral("<p style=\"color:red\" align=\"center\">a</p>");
}

void tst_RichHtmlSanitizer::closesWhatNobodyClosed()
{
    QFETCH(QString, html);

    QTEST(Sanitized(html), "sanitized");
}

void tst_RichHtmlSanitizer::losesNoWords_data()
{
    QTest::addColumn<QString>("html");
    QTest::addColumn<QString>("sanitized");

    QTest::newRow("stray bracket") << QStringLiteral("a < b <3 c<") << QStringLiteral("a &lt; b &lt;3 c&lt;");
    QTest::newRow("open tag") << QStringLiteral("a <b c") << QStringLiteral("a &lt;b c");
    QTest::newRow("open quote") << QStringLiteral("a <b c=\"d e") << QStringLiteral("a &lt;b c=\"d e");
    QTest::newRow("unknown tags") << QStringLiteral("<o:p><section>a</section></o:p>b")
                                  << QStringLiteral("<div>a</div>b");
    QTest::newRow("comment") << QStringLiteral("a<!-- <p> -->b<!DOCTYPE x>c") << QStringLiteral("abc");
    QTest::newRow("script") << QStringLiteral("a<script>x<b></script>b<STYLE>y</Style >c")
                            << QStringLiteral("abc");
}

void tst_RichHtmlSanitizer::losesNoWords()
{
    QFETCH(QString, html);

    QTEST(Sanitized(html), "sanitized");
}

void tst_RichHtmlSanitizer::decodesNoPictureToKnowItsSize()
{
    RichImages images;

    // There is nothing to decode: only a picture that is asked for its header alone can be taken in.
    const QString taken =
        SanitizeHtml(QStringLiteral("<img src=\"%1\">").arg(HostileTexts::EmptyPicture(1600, 1600)), images)
            .html;
    const QString refused =
        SanitizeHtml(QStringLiteral("<img src=\"%1\">").arg(HostileTexts::EmptyPicture(30000, 30000)), images)
            .html;

    QVERIFY(taken.startsWith(QLatin1String("<img src=\"picture:")));
    QCOMPARE(refused, QString());
}

void tst_RichHtmlSanitizer::tellsTheWordsOfAText_data()
{
    QTest::addColumn<QString>("html");
    QTest::addColumn<QString>("words");

    QTest::newRow("paragraphs") << QStringLiteral("<h1>a</h1>\n<p>b <b>c</b></p><p>d<br>e</p>")
                                << QStringLiteral("a\nb c\nd\ne");
    QTest::newRow("entities") << QStringLiteral("<p>&lt;a&gt; &amp;&quot;&nbsp;&#20013;&#x6587; &unknown; &")
                              << QStringLiteral("<a> &\" 中文 &unknown; &");
    QTest::newRow("list and table")
        << QStringLiteral(
               "<ul><li>a</li><li>b</li></ul><table><tr><td>c</td><td>d</td></tr><tr><td>e</table>")
        << QStringLiteral("a\nb\nc d \ne");
    QTest::newRow("picture") << QStringLiteral("<p>a<img src=\"data:x\">b</p>") << QStringLiteral("a[图片]b");
    QTest::newRow("script") << QStringLiteral("<p>a<script>x</script>b</p>") << QStringLiteral("ab");
    QTest::newRow("a line that is too long")
        << Times("x", 2001) << QString(Times("x", 2000) + QStringLiteral("\nx"));
}

void tst_RichHtmlSanitizer::tellsTheWordsOfAText()
{
    QFETCH(QString, html);

    const RichWords words = WordsOf(html);

    QTEST(words.text, "words");
    QVERIFY(words.complete);
}

void tst_RichHtmlSanitizer::tellsOnlyTheBeginningOfEndlessWords()
{
    const RichWords many = WordsOf(Times("<p>words</p>", 200000));
    const RichWords lines = WordsOfPlainText(Times("x\n", 30000));

    QVERIFY(!many.complete);
    QVERIFY(many.text.startsWith(QLatin1String("words\nwords\n")));
    QVERIFY(!lines.complete);
}

QTEST_GUILESS_MAIN(tst_RichHtmlSanitizer)

#include "tst_richhtmlsanitizer.moc"
