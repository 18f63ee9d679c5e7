// SPDX-License-Identifier: Apache-2.0

#include "HostileTexts.h"
#include "RichEditorFixture.h"
#include "TestApp.h"

#include <WbWebKernal/WbRichReader.h>

#include <QAbstractTextDocumentLayout>
#include <QDesktopServices>
#include <QLabel>
#include <QPalette>
#include <QTest>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTextFrame>

using namespace RichEditorFixture;

namespace
{
struct Reader
{
    Reader()
    {
        widget.resize(600, 400);
        widget.show();
        view = widget.findChild<QTextBrowser*>(QStringLiteral("viewManual"));
        notice = widget.findChild<QLabel*>(QStringLiteral("richNoticeText"));
    }

    WbRichReader widget;
    QTextBrowser* view;
    QLabel* notice;
};

int FrameDepth(const QTextFrame* frame)
{
    int depth = 0;
    for (const QTextFrame* child : frame->childFrames())
        depth = qMax(depth, 1 + FrameDepth(child));
    return depth;
}

// Takes the addresses that would be opened in a browser.
class Browser : public QObject
{
    Q_OBJECT

public:
    Browser()
    {
        for (const char* scheme : {"http", "file", "javascript"})
            QDesktopServices::setUrlHandler(QLatin1String(scheme), this, "Take");
    }
    ~Browser() override
    {
        for (const char* scheme : {"http", "file", "javascript"})
            QDesktopServices::unsetUrlHandler(QLatin1String(scheme));
    }

    QStringList opened;

public slots:
    void Take(const QUrl& url) { opened << url.toString(); }
};

void ClickStart(Reader& reader)
{
    const QRect start = reader.view->cursorRect();
    QTest::mouseClick(reader.view->viewport(), Qt::LeftButton, Qt::NoModifier, start.center() + QPoint(6, 0));
}
} // namespace

// What a reader sees of usage instructions.
class tst_WbRichReader : public QObject
{
    Q_OBJECT

private slots:
    void showsWhatTheAuthorWrote();
    void opensEveryHostileText_data();
    void opensEveryHostileText();
    void showsTheWordsAndSaysWhy();
    void showsTheNextTextWithoutTheReason();
    void opensLinksOfTheWebOnly();
    void fetchesNothing();
    void decodesAPictureWhenItIsShown();
    void recoloursItsLinks();
};

void tst_WbRichReader::showsWhatTheAuthorWrote()
{
    Reader reader;

    reader.widget.ShowText(QStringLiteral("<h1>标题</h1>\n<p>一<b>二</b></p>\n<ul><li>三</li></ul>"));

    QCOMPARE(reader.view->toPlainText(), QStringLiteral("标题\n一二\n三"));
    QCOMPARE(reader.view->document()->begin().blockFormat().headingLevel(), 1);
    QVERIFY(reader.view->document()->lastBlock().textList());
    QVERIFY(reader.view->isReadOnly());
    QVERIFY(!reader.notice->isVisible());
}

void tst_WbRichReader::opensEveryHostileText_data()
{
    QTest::addColumn<QString>("html");

    const QVector<HostileTexts::Text> texts = HostileTexts::BeyondEveryLimit();
    for (const HostileTexts::Text& text : texts)
        QTest::newRow(qPrintable(text.name)) << text.html;
    for (quint32 seed = 1000; seed < 1020; ++seed) {
        const HostileTexts::Text text = HostileTexts::Random(seed);
        QTest::newRow(qPrintable(text.name)) << text.html;
    }
}

void tst_WbRichReader::opensEveryHostileText()
{
    QFETCH(QString, html);
    TestApp::ExpectWarning(QStringLiteral("libpng"));
    Reader reader;

    reader.widget.ShowText(html);
    reader.widget.grab();

    QVERIFY(FrameDepth(reader.view->document()->rootFrame()) <= 3);
    QVERIFY(reader.view->document()->blockCount() <= 2 * 40000);
    int longest = 0;
    for (QTextBlock block = reader.view->document()->begin(); block.isValid(); block = block.next())
        longest = qMax(longest, block.length());
    QVERIFY2(longest <= 20001, qPrintable(QString::number(longest)));
}

void tst_WbRichReader::showsTheWordsAndSaysWhy()
{
    Reader reader;

    reader.widget.ShowText(QLatin1String("<ol>") + QStringLiteral("<li>步骤</li>").repeated(5000));

    QVERIFY(reader.notice->isVisible());
    QCOMPARE(reader.notice->text(), QStringLiteral("使用说明有一个列表超过 2000 项，这里只显示它的文字。"));
    QVERIFY(reader.view->toPlainText().startsWith(QStringLiteral("步骤\n步骤\n")));
}

void tst_WbRichReader::showsTheNextTextWithoutTheReason()
{
    Reader reader;
    reader.widget.ShowText(QLatin1String("<p>") + QString(30000, QLatin1Char('x')));
    QVERIFY(reader.notice->isVisible());

    reader.widget.ShowText(QStringLiteral("<p>好的</p>"));

    QVERIFY(!reader.notice->isVisible());
    QCOMPARE(reader.view->toPlainText(), QStringLiteral("好的"));
    reader.widget.ShowText(QString());
    QCOMPARE(reader.view->toPlainText(), QString());
}

void tst_WbRichReader::opensLinksOfTheWebOnly()
{
    Browser browser;
    Reader reader;

    for (const char* address : {"file:///etc/passwd", "javascript:x()", "http://example.org/a"}) {
        reader.widget.ShowText(
            QStringLiteral("<p><a href=\"%1\">链接链接</a></p>").arg(QLatin1String(address)));
        ClickStart(reader);
    }

    QCOMPARE(browser.opened, QStringList{QStringLiteral("http://example.org/a")});
}

void tst_WbRichReader::fetchesNothing()
{
    Reader reader;
    reader.widget.ShowText(QStringLiteral("<p>x<img src=\"file:///usr/share/pixmaps/debian-logo.png\"></p>"));

    QCOMPARE(reader.view->toPlainText(), QStringLiteral("x"));
    for (const int type : {int(QTextDocument::ImageResource), int(QTextDocument::StyleSheetResource),
                           int(QTextDocument::HtmlResource)}) {
        const QUrl file(QStringLiteral("file:///etc/passwd"));
        QVERIFY(reader.view->document()->resource(type, file).value<QImage>().isNull());
        QVERIFY(reader.view->document()->resource(type, file).toByteArray().isEmpty());
        QVERIFY(!reader.view->loadResource(type, file).isValid());
    }
}

void tst_WbRichReader::decodesAPictureWhenItIsShown()
{
    Reader reader;

    reader.widget.ShowText(QStringLiteral("<p><img src=\"%1\" width=\"40\" height=\"20\"></p>")
                               .arg(DataUriOf(SomePicture(40, 20))));

    const QTextFragment picture = reader.view->document()->begin().begin().fragment();
    const QUrl name(picture.charFormat().toImageFormat().name());
    QCOMPARE(reader.view->document()->resource(QTextDocument::ImageResource, name).value<QImage>().size(),
             QSize(40, 20));
    const QImage shown = reader.view->viewport()->grab().toImage();
    const QRect at = reader.view->cursorRect();
    QCOMPARE(shown.pixelColor(at.left() + 30, at.bottom() - 5), QColor(60, 130, 246));
}

void tst_WbRichReader::recoloursItsLinks()
{
    Reader reader;
    reader.widget.ShowText(QStringLiteral("<p><a href=\"http://example.org\">链接</a></p>"));

    QPalette palette = reader.widget.palette();
    palette.setColor(QPalette::Link, QColor(12, 200, 90));
    reader.widget.setPalette(palette);

    const QTextFragment link = reader.view->document()->begin().begin().fragment();
    QCOMPARE(link.charFormat().foreground().color(), QColor(12, 200, 90));
}

RPA_TEST_MAIN(tst_WbRichReader)

#include "tst_wbrichreader.moc"
