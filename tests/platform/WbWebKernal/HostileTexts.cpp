// SPDX-License-Identifier: Apache-2.0

#include "HostileTexts.h"

#include <QBuffer>
#include <QImage>
#include <QRandomGenerator>
#include <QStringList>
#include <QtEndian>

#include <array>

namespace
{
QString Times(const char* piece, int count)
{
    return QString::fromUtf8(piece).repeated(count);
}

QString DataUri(const QByteArray& bytes)
{
    return QLatin1String("data:image/png;base64,") + QString::fromLatin1(bytes.toBase64());
}

QString SolidPicture(int side, int shade)
{
    QImage image(side, side, QImage::Format_Grayscale8);
    image.fill(shade);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return DataUri(bytes);
}

QString Pictures(int count, int side, int shownSide)
{
    QString html;
    for (int i = 0; i < count; ++i)
        html +=
            QStringLiteral("<img src=\"%1\" width=%2 height=%2>").arg(SolidPicture(side, i)).arg(shownSide);
    return html;
}

QString Table(int rows, int columns, const QString& cell)
{
    return QLatin1String("<table>") +
           (QLatin1String("<tr>") +
            (QLatin1String("<td>") + cell + QLatin1String("</td>")).repeated(columns) +
            QLatin1String("</tr>"))
               .repeated(rows) +
           QLatin1String("</table>");
}

QString Coloured(int count)
{
    QString html;
    for (int i = 0; i < count; ++i)
        html += QStringLiteral("<span style=\"color:#%1\">x</span>")
                    .arg(i * 7 % 0xffffff, 6, 16, QLatin1Char('0'));
    return html;
}

quint32 Checksum(const QByteArray& bytes)
{
    quint32 sum = 0xffffffff;
    for (const char byte : bytes) {
        sum ^= quint8(byte);
        for (int bit = 0; bit < 8; ++bit)
            sum = (sum >> 1) ^ (sum & 1 ? 0xedb88320 : 0);
    }
    return ~sum;
}

QByteArray BigEndian(quint32 number)
{
    QByteArray bytes(4, '\0');
    qToBigEndian(number, bytes.data());
    return bytes;
}

template <typename Choices>
auto Any(QRandomGenerator& random, const Choices& choices)
{
    return choices[random.bounded(int(choices.size()))];
}

QString RandomAttribute(QRandomGenerator& random)
{
    static const std::array<const char*, 16> attributes{
        " colspan=%1",
        " rowspan=\"%1\"",
        " width='%1'",
        " height=%1%",
        " style=\"margin-left:%1px;color:red\"",
        " style='display:none;float:left'",
        " style=\"white-space:pre;text-indent:%1px\"",
        " style=\"font-size:%1pt;-qt-block-indent:%1\"",
        " href=\"http://x/%1\"",
        " src=\"file:///dev/zero\"",
        " src=\"http://127.0.0.1:1/%1.png\"",
        " border=%1 cellpadding=%1",
        " align=right",
        " x=\"<b>%1\"",
        " = / \"",
        " onclick='x(%1)'",
    };
    return QString::fromLatin1(Any(random, attributes))
        .replace(QLatin1String("%1"), QString::number(random.bounded(1 << random.bounded(30))));
}

QString RandomPiece(QRandomGenerator& random)
{
    static const std::array<const char*, 36> names{
        "p",  "div", "b",     "i",     "u",   "s",   "span",       "font", "a",  "h1", "h3",   "ul",
        "ol", "li",  "table", "table", "tr",  "td",  "th",         "pre",  "dl", "dt", "dd",   "center",
        "br", "hr",  "img",   "tbody", "svg", "foo", "blockquote", "code", "qt", "li", "body", "address"};
    static const std::array<const char*, 12> words{"x",      "词语", "&amp;", "&#x202e;",  "&nbsp;", "&#0;",
                                                   "a b c ", "\n\n", "<",     "&lt;b&gt;", "<!--",   "]]>"};
    const int kind = random.bounded(10);
    if (kind < 4)
        return QString::fromUtf8(Any(random, words)).repeated(1 + random.bounded(1 << random.bounded(8)));
    QString tag = QLatin1Char('<') + QString(kind == 9 ? QStringLiteral("/") : QString()) +
                  QLatin1String(Any(random, names));
    while (random.bounded(3) == 0)
        tag += RandomAttribute(random);
    return random.bounded(50) == 0 ? tag : tag + QLatin1Char('>');
}
} // namespace

QString HostileTexts::EmptyPicture(quint32 width, quint32 height)
{
    const auto chunk = [](const QByteArray& content) {
        return BigEndian(content.size() - 4) + content + BigEndian(Checksum(content));
    };
    const QByteArray header = "IHDR" + BigEndian(width) + BigEndian(height) + QByteArray("\x08\x02\0\0\0", 5);
    return DataUri(QByteArray("\x89PNG\r\n\x1a\n") + chunk(header) + chunk("IDAT") + chunk("IEND"));
}

QVector<HostileTexts::Text> HostileTexts::BeyondEveryLimit()
{
    return {
        {QStringLiteral("tables in tables"), Times("<table width=\"100%\"><tr><td>", 26) + QLatin1Char('x')},
        {QStringLiteral("tables in tables, endless"), Times("<table><tr><td>", 20000) + QLatin1Char('x')},
        {QStringLiteral("bold in bold"), Times("<b>", 10000) + QLatin1Char('x')},
        {QStringLiteral("quotes in quotes"), Times("<blockquote>", 30000) + QLatin1Char('x')},
        {QStringLiteral("unknown in unknown"), Times("<foo>", 30000) + QLatin1Char('x')},
        {QStringLiteral("lists in lists"), Times("<ul><li>", 20000) + QLatin1Char('x')},
        {QStringLiteral("list of many items"), QLatin1String("<ul>") + Times("<li>x</li>", 20000)},
        {QStringLiteral("numbered list of many items"), QLatin1String("<ol>") + Times("<li>x", 20000)},
        {QStringLiteral("items without a list"), Times("<li>x</li>", 20000)},
        {QStringLiteral("many cells"), Table(2000, 50, QStringLiteral("x"))},
        {QStringLiteral("many columns"), Table(1, 50000, QStringLiteral("x"))},
        {QStringLiteral("few cells in a huge grid"),
         Table(1, 3000, QStringLiteral("x")).chopped(8) + Times("<tr><td>x</td></tr>", 3000)},
        {QStringLiteral("spans over everything"),
         QLatin1String("<table>") + Times("<tr><td colspan=99 rowspan=99>x</td></tr>", 99)},
        {QStringLiteral("spans of many digits"),
         QStringLiteral("<table><tr><td colspan=\"99999999\" rowspan=99999999>x</td></tr></table>")},
        {QStringLiteral("formats in one line"), QLatin1String("<p>") + Times("<b>x</b>y", 100000)},
        {QStringLiteral("formats in many lines"),
         (QLatin1String("<p>") + Times("<b>x</b>y", 1900) + QLatin1String("</p>")).repeated(60)},
        {QStringLiteral("colours"), Coloured(100000)},
        {QStringLiteral("one word"), QLatin1String("<p>") + Times("x", 1000000)},
        {QStringLiteral("one line of entities"), QLatin1String("<p>") + Times("&amp;", 1000000)},
        {QStringLiteral("one plain line"), Times("字", 3000000)},
        {QStringLiteral("long lines"), Times("x", 19000).append(QStringLiteral("<p>")).repeated(200)},
        {QStringLiteral("line breaks"), Times("x<br>", 300000)},
        {QStringLiteral("preformatted lines"), QLatin1String("<pre>") + Times("x\n", 300000)},
        {QStringLiteral("paragraphs"), Times("<p>x</p>", 300000)},
        {QStringLiteral("empty paragraphs"), Times("<p></p>", 400000)},
        {QStringLiteral("attributes"),
         QLatin1String("<p ") + Times("a=b ", 500000) + QLatin1String(">x</p>")},
        {QStringLiteral("styles"),
         QLatin1String("<p style=\"") + Times("color:red;", 200000) + QLatin1String("\">x</p>")},
        {QStringLiteral("open quotes"), Times("<a b=\"<a c='", 200000) + QLatin1Char('x')},
        {QStringLiteral("open tags"), Times("<a ", 500000) + QLatin1Char('x')},
        {QStringLiteral("open brackets"), Times("<", 1000000) + QLatin1Char('x')},
        {QStringLiteral("open comments"), Times("<!--", 500000)},
        {QStringLiteral("open scripts"), Times("<script>", 200000) + QLatin1Char('x')},
        {QStringLiteral("scripts"), Times("<script></script>x", 200000)},
        {QStringLiteral("picture of 30000 by 30000"),
         QStringLiteral("<p>x<img src=\"%1\">y</p>").arg(EmptyPicture(30000, 30000))},
        {QStringLiteral("picture of 4 billion by 1"),
         QStringLiteral("<p>x<img src=\"%1\">y</p>").arg(EmptyPicture(0x7fffffff, 1))},
        {QStringLiteral("pictures without end"), Pictures(42, 1600, 4)},
        {QStringLiteral("large pictures"), Pictures(4, 4000, 400)},
        {QStringLiteral("one picture again and again"),
         QStringLiteral("<img src=\"%1\">").arg(SolidPicture(1600, 1)).repeated(1000)},
    };
}

QVector<HostileTexts::Text> HostileTexts::AtTheLimits()
{
    return {
        {QStringLiteral("cells"), Table(20, 100, QStringLiteral("x"))},
        {QStringLiteral("cells in rows"), Table(2000, 1, QStringLiteral("x"))},
        {QStringLiteral("cells with words"),
         Table(200, 10, QStringLiteral("<p>一格里有一句<b>话</b>，不长也不短。</p>"))},
        {QStringLiteral("cells in cells"), Table(1, 1, Table(1, 1, Table(3, 100, QStringLiteral("x y"))))},
        {QStringLiteral("tables in cells"), Table(2, 5, Table(3, 3, Table(1, 2, QStringLiteral("x y"))))},
        {QStringLiteral("list"), QLatin1String("<ul>") + Times("<li>x</li>", 2000)},
        {QStringLiteral("numbered lists"),
         (QLatin1String("<ol>") + Times("<li>x</li>", 1990) + QLatin1String("</ol>")).repeated(6)},
        {QStringLiteral("one line of formats"), QLatin1String("<p>") + Times("<b>x</b>y", 1990)},
        {QStringLiteral("formats"),
         (QLatin1String("<p>") + Times("<b>x</b>y", 400) + QLatin1String("</p>")).repeated(100)},
        {QStringLiteral("lines of formats"),
         (QLatin1String("<p>") + Times("<b>x</b>y", 1900) + QLatin1String("</p>")).repeated(5)},
        {QStringLiteral("colours"), Coloured(1900)},
        {QStringLiteral("one word"), QLatin1String("<p>") + Times("x", 19990)},
        {QStringLiteral("long words"),
         (QLatin1String("<p>") + Times("x", 19990) + QLatin1String("</p>")).repeated(19)},
        {QStringLiteral("long lines"),
         (QLatin1String("<p>") + Times("字", 19990) + QLatin1String("</p>")).repeated(19)},
        {QStringLiteral("line breaks"), QLatin1String("<p>") + Times("x<br>", 3900)},
        {QStringLiteral("paragraphs"), Times("<p>x</p>", 39000)},
        {QStringLiteral("bold in bold"),
         (QLatin1String("<p>") + Times("<b>", 47) + QLatin1Char('x') + QLatin1String("</p>")).repeated(4000)},
        {QStringLiteral("instructions of 1 MB"),
         Times("<p>一段有<b>格式</b>的说明文字，长度和真实的说明差不多，一共一百来个字符。</p>\n", 22000)},
        {QStringLiteral("pictures"), Pictures(39, 1600, 4)},
        {QStringLiteral("pictures to scale"), Pictures(3, 3200, 400)},
    };
}

HostileTexts::Text HostileTexts::Random(quint32 seed)
{
    QRandomGenerator random(seed);
    QString html;
    const int pieces = 1 + random.bounded(1 << (4 + random.bounded(9)));
    for (int i = 0; i < pieces; ++i) {
        const QString piece = RandomPiece(random);
        html += random.bounded(40) == 0 ? piece.repeated(1 + random.bounded(200)) : piece;
    }
    return {QStringLiteral("seed %1").arg(seed), html};
}
