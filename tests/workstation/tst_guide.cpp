// SPDX-License-Identifier: Apache-2.0

#include "GuideHtml.h"
#include "GuidePages.h"
#include "GuideView.h"
#include "GuideWindow.h"
#include "PageFixture.h"
#include "TestApp.h"

#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QRegularExpression>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextFragment>
#include <QTreeWidget>
#include <QtTest>

// The guide beside the work.
class tst_Guide : public PageFixture
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void showsEveryKindOfLine_data();
    void showsEveryKindOfLine();
    void bringsEveryPageItsLinksAndItsPictures_data();
    void bringsEveryPageItsLinksAndItsPictures();
    void listsPagesAndHeadings();
    void opensWhereTheHeadingStands();
    void followsALink();
    void showsWholePicturesInANarrowWindow();
    void findsAWordOnAnotherPage();
    void goesOnToTheNextPlace();
    void saysWhenAWordIsNowhere();
    void closesWithEscape();

private:
    int WidestPicture() const;

    std::unique_ptr<QWidget> window;
    GuideWindow* guide = nullptr;
    GuideView* view = nullptr;
    QTreeWidget* contents = nullptr;
};

void tst_Guide::init()
{
    window = std::make_unique<QWidget>();
    window->show();
    guide = new GuideWindow(window.get());
    guide->Open(QStringLiteral("README.md"), QString());
    view = guide->findChild<GuideView*>();
    contents = Child<QTreeWidget>(*guide, "listContents");
}

void tst_Guide::cleanup()
{
    window.reset();
}

void tst_Guide::showsEveryKindOfLine_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("html");

    QTest::newRow("heading") << QString::fromUtf8("## 1. 新建") << QString::fromUtf8("<h2>1. 新建</h2>");
    QTest::newRow("list") << QString::fromUtf8("- 一\n- 二\n\n完")
                          << QString::fromUtf8("<ul><li>&#8203;一</li><li>&#8203;二</li></ul><p>完</p>");
    QTest::newRow("numbers") << QString::fromUtf8("1. 一\n2. 二")
                             << QString::fromUtf8("<ol><li>&#8203;一</li><li>&#8203;二</li></ol>");
    QTest::newRow("table")
        << QString::fromUtf8("| 词 | 意思 |\n|---|---|\n| 流程 | 步骤 |")
        << QString::fromUtf8("<table border=\"1\" cellspacing=\"0\" cellpadding=\"6\">"
                             "<tr><th align=\"left\">词</th><th align=\"left\">意思</th></tr>"
                             "<tr><td align=\"left\">流程</td><td align=\"left\">步骤</td></tr></table>");
    QTest::newRow("picture") << QString::fromUtf8("![运行](images/run.png)")
                             << QString::fromUtf8("<p><img src=\"images/run.png\" alt=\"运行\"></p>");
    QTest::newRow("link") << QString::fromUtf8("见[收回](take-back.md)。")
                          << QString::fromUtf8("<p>见<a href=\"take-back.md\">收回</a>。</p>");
    QTest::newRow("code") << QString::fromUtf8("填 `[人[0], a < b](x)`")
                          << QString::fromUtf8("<p>填 <code>[人[0], a &lt; b](x)</code></p>");
    QTest::newRow("marks of its own")
        << QString::fromUtf8("a <b> & c") << QString::fromUtf8("<p>a &lt;b&gt; &amp; c</p>");
}

void tst_Guide::showsEveryKindOfLine()
{
    QFETCH(QString, line);
    QFETCH(QString, html);

    QCOMPARE(GuideHtml::Of(line), html);
}

void tst_Guide::bringsEveryPageItsLinksAndItsPictures_data()
{
    QTest::addColumn<QString>("file");
    for (const GuidePage& page : GuidePages::All())
        QTest::newRow(qPrintable(page.file)) << page.file;
}

void tst_Guide::bringsEveryPageItsLinksAndItsPictures()
{
    QFETCH(QString, file);
    QFile page(QStringLiteral(":/guide/") + file);
    QVERIFY(page.open(QIODevice::ReadOnly));
    const QString text = QString::fromUtf8(page.readAll());

    static const QRegularExpression link(QStringLiteral("\\]\\(([^)]+)\\)"));
    auto links = link.globalMatch(text);
    while (links.hasNext()) {
        const QString target = links.next().captured(1);
        QVERIFY2(QFile::exists(QStringLiteral(":/guide/") + target), qPrintable(target));
    }
}

void tst_Guide::listsPagesAndHeadings()
{
    QCOMPARE(contents->topLevelItemCount(), GuidePages::All().size());
    QCOMPARE(contents->topLevelItem(1)->text(0), QStringLiteral("第一个应用"));
    QCOMPARE(contents->topLevelItem(1)->child(2)->text(0), QStringLiteral("3. 流程设计"));

    contents->setCurrentItem(contents->topLevelItem(1)->child(2));

    QCOMPARE(view->GetPage(), QStringLiteral("first-app.md"));
    QCOMPARE(view->textCursor().block().text(), QStringLiteral("3. 流程设计"));
}

void tst_Guide::opensWhereTheHeadingStands()
{
    guide->Open(QStringLiteral("first-app.md"), QStringLiteral("2. 界面设计"));

    QVERIFY(guide->isVisible());
    QCOMPARE(view->GetPage(), QStringLiteral("first-app.md"));
    QVERIFY(view->verticalScrollBar()->value() > 0);
    QCOMPARE(contents->currentItem()->text(0), QStringLiteral("第一个应用"));
    const QTextCursor top = view->cursorForPosition(QPoint(view->width() / 2, 30));
    QCOMPARE(top.block().text(), QStringLiteral("2. 界面设计"));
}

void tst_Guide::followsALink()
{
    view->setSource(QUrl(QStringLiteral("take-back.md")));

    QCOMPARE(view->GetPage(), QStringLiteral("take-back.md"));
    QVERIFY(!view->toPlainText().isEmpty());
    QCOMPARE(contents->currentItem()->text(0), contents->topLevelItem(4)->text(0));
}

int tst_Guide::WidestPicture() const
{
    int widest = 0;
    for (QTextBlock block = view->document()->begin(); block.isValid(); block = block.next()) {
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            const QTextImageFormat format = it.fragment().charFormat().toImageFormat();
            if (format.isValid()) {
                const auto image = view->document()
                                       ->resource(QTextDocument::ImageResource, QUrl(format.name()))
                                       .value<QImage>();
                widest = qMax(widest, qRound(image.width() / image.devicePixelRatioF()));
            }
        }
    }
    return widest;
}

void tst_Guide::showsWholePicturesInANarrowWindow()
{
    guide->Open(QStringLiteral("first-app.md"), QString());
    for (const int width : {1200, 620}) {
        guide->resize(width, 540);
        QCoreApplication::processEvents();
        QVERIFY(WidestPicture() > 200);
        QVERIFY2(WidestPicture() <= view->viewport()->width() - 20, qPrintable(QString::number(width)));
        QCOMPARE(view->horizontalScrollBar()->maximum(), 0);
    }
}

void tst_Guide::findsAWordOnAnotherPage()
{
    auto* search = Child<QLineEdit>(*guide, "editGuideSearch");
    QTest::keyClick(guide, Qt::Key_F, Qt::ControlModifier);
    QTRY_VERIFY(search->hasFocus());
    search->setText(QStringLiteral("记入操作记录"));
    QTest::keyClick(search, Qt::Key_Return);

    QCOMPARE(view->GetPage(), QStringLiteral("take-back.md"));
    QCOMPARE(view->textCursor().selectedText(), QStringLiteral("记入操作记录"));
    QCOMPARE(contents->currentItem()->text(0), QStringLiteral("收回"));
}

void tst_Guide::goesOnToTheNextPlace()
{
    Child<QLineEdit>(*guide, "editGuideSearch")->setText(QStringLiteral("草稿"));
    Press(*guide, "buttonGuideNext");
    const QString first = view->GetPage();
    const int place = view->textCursor().position();

    Press(*guide, "buttonGuideNext");

    QCOMPARE(view->textCursor().selectedText(), QStringLiteral("草稿"));
    QVERIFY(view->GetPage() != first || view->textCursor().position() > place);
}

void tst_Guide::saysWhenAWordIsNowhere()
{
    auto* search = Child<QLineEdit>(*guide, "editGuideSearch");
    const auto* said = Child<QLabel>(*guide, "labelGuideFound");
    search->setText(QStringLiteral("没有这样的词儿"));
    Press(*guide, "buttonGuideNext");
    QCOMPARE(said->text(), QStringLiteral("没有找到，请换一个词"));

    search->setText(QStringLiteral("邀请码"));

    QCOMPARE(said->text(), QString());
}

void tst_Guide::closesWithEscape()
{
    QTest::keyClick(contents, Qt::Key_Escape);

    QVERIFY(!guide->isVisible());
}

RPA_TEST_MAIN(tst_Guide)

#include "tst_guide.moc"
