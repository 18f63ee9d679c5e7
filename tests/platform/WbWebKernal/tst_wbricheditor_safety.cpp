// SPDX-License-Identifier: Apache-2.0

#include "RichEditorFixture.h"
#include "TestApp.h"

#include <QMimeData>
#include <QTest>
#include <QTextEdit>

using namespace RichEditorFixture;

// Text from elsewhere is cleaned before it is shown.
class tst_WbRichEditorSafety : public QObject
{
    Q_OBJECT

private slots:
    void keepsOutWhatIsUnsafe_data();
    void keepsOutWhatIsUnsafe();
    void boundsHostileTables();
    void cleansPastedHtml();
};

void tst_WbRichEditorSafety::keepsOutWhatIsUnsafe_data()
{
    QTest::addColumn<QString>("html");

    QTest::newRow("script") << QStringLiteral("<p>ok</p><script>alert(1)</script>");
    QTest::newRow("javascript link") << QStringLiteral("<a href=\"javascript:alert(1)\">ok</a>");
    QTest::newRow("javascript link in disguise")
        << QStringLiteral("<a href=\" jav&#x09;ascript:alert(1)\">ok</a>");
    QTest::newRow("file link") << QStringLiteral("<a href=\"file:///etc/passwd\">ok</a>");
    QTest::newRow("data link") << QStringLiteral("<a href=\"data:text/html,<b>x</b>\">ok</a>");
    QTest::newRow("file picture") << QStringLiteral(
        "<p>ok<img src=\"file:///usr/share/pixmaps/debian-logo.png\"></p>");
    QTest::newRow("web picture") << QStringLiteral("<p>ok<img src='http://127.0.0.1:1/x.png'></p>");
    QTest::newRow("picture that is html")
        << QStringLiteral("<p>ok<img src=\"data:text/html;base64,PGI+\"></p>");
    QTest::newRow("svg picture") << QStringLiteral(
        "<p>ok<img src=\"data:image/svg+xml;base64,PHN2Zy8+\"></p>");
    QTest::newRow("style sheet") << QStringLiteral(
        "<link rel=stylesheet href=\"file:///etc/x.css\"><p>ok</p>");
    QTest::newRow("handler") << QStringLiteral("<p onclick=\"alert(1)\">ok</p>");
    QTest::newRow("frame") << QStringLiteral("<p><iframe src=\"https://example.com\">x</iframe>ok</p>");
}

void tst_WbRichEditorSafety::keepsOutWhatIsUnsafe()
{
    QFETCH(QString, html);
    Editor editor;
    editor.widget.Init(html);

    QTest::keyClick(editor.view, Qt::Key_End, Qt::ControlModifier);
    editor.Type(QStringLiteral("!"));

    QCOMPARE(editor.Text(), QStringLiteral("<p>ok!</p>"));
}

void tst_WbRichEditorSafety::boundsHostileTables()
{
    Editor editor;
    const QString wide =
        QStringLiteral("<table><tr><td colspan=\"99999999\" rowspan=99999999>a</td></tr></table>");
    const QString deep = QStringLiteral("<table><tr><td>").repeated(20000) + QStringLiteral("x");

    // Not held to their word, they would take all memory.
    editor.widget.Init(wide);
    editor.widget.Init(deep);

    QVERIFY(editor.view->toPlainText().contains(QLatin1Char('x')));
}

void tst_WbRichEditorSafety::cleansPastedHtml()
{
    Editor editor;
    auto* data = new QMimeData;
    data->setText(QStringLiteral("x"));
    data->setHtml(QStringLiteral(
        "<html><head><style>p.a{font-size:90pt}</style></head><body><!--StartFragment-->"
        "<p class=a style='font-family:Wingdings;color:black;background:white'>a<b>b</b></p>"
        "<p style='color:#cc0000'>c<img src='http://127.0.0.1:1/t.gif'><a href='javascript:x()'>d</a></p>"
        "<!--EndFragment--></body></html>"));

    editor.Paste(data);

    QCOMPARE(editor.Text(),
             QStringLiteral("<p>a<b>b</b></p>\n<p><span style=\"color:#cc0000\">c</span>d</p>"));
}

RPA_TEST_MAIN(tst_WbRichEditorSafety)

#include "tst_wbricheditor_safety.moc"
