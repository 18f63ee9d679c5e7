// SPDX-License-Identifier: Apache-2.0

#include "BrowserProcess.h"
#include "TestApp.h"

namespace
{
constexpr auto page = R"html(<html><body>
<input id="who"><button id="go" onclick="greet()">问好</button><p id="out"></p>
<table id="t"><tr><th>名</th><th>数</th></tr><tr><td>甲</td><td>1</td></tr></table>
<script>function greet() { setTimeout(() => out.innerText = "你好，" + who.value, 300); }</script>
</body></html>)html";
} // namespace

class BrowserRunTest : public QObject
{
    Q_OBJECT

private slots:
    void aProcessOpensFillsClicksAndReads()
    {
        CaptureFixture author;
        author.server.Put(QStringLiteral("/page"), page);
        QVERIFY(author.Open(QStringLiteral("/page")));
        const QString who = author.Capture(QStringLiteral("#who")).id;
        const QString go = author.Capture(QStringLiteral("#go")).id;
        const QString table = author.Capture(QStringLiteral("#t td")).id;
        const QString out = author.nodes.AddNode([] {
            RpaNode node;
            node.name = QStringLiteral("结果");
            node.css = QStringLiteral("#out:not(:empty)");
            return node;
        }());
        author.browser->Reset();
        BrowserProcess process(author);

        const QStringList log =
            process.RunText(QStringLiteral("rpa.browser_open('%1')\n"
                                           "rpa.browser_input('%2', '小明')\n"
                                           "print('按钮', rpa.browser_read('%3'))\n"
                                           "rpa.browser_click('%3')\n"
                                           "print(rpa.browser_read('%4'))\n"
                                           "print(rpa.browser_table('%5'))\n")
                                .arg(author.server.Url(QStringLiteral("/page")), who, go, out, table));

        const QString all = log.join(QLatin1Char('\n'));
        QVERIFY2(all.contains(QStringLiteral("按钮 问好")), qPrintable(all));
        QVERIFY2(all.contains(QStringLiteral("你好，小明")), qPrintable(all));
        QVERIFY2(all.contains(QStringLiteral("[['名', '数'], ['甲', '1']]")), qPrintable(all));
    }

    void aProcessIsToldWhyAPageDidNotOpen()
    {
        CaptureFixture author;
        BrowserProcess process(author);

        const QStringList log = process.RunText(QStringLiteral("rpa.browser_open('file:///etc/passwd')\n"));

        QVERIFY2(!log.filter(QStringLiteral("只打开 http 和 https 网址")).isEmpty(),
                 qPrintable(log.join(QLatin1Char('\n'))));
    }

    void aProcessIsToldThatAnElementIsNotThere()
    {
        CaptureFixture author;
        author.server.Put(QStringLiteral("/page"), page);
        RpaNode node;
        node.name = QStringLiteral("不在的按钮");
        node.css = QStringLiteral("#nowhere");
        const QString id = author.nodes.AddNode(node);
        BrowserProcess process(author);

        const QStringList log = process.RunText(QStringLiteral("rpa.browser_open('%1')\n"
                                                               "rpa.browser_click('%2', 0.2)\n")
                                                    .arg(author.server.Url(QStringLiteral("/page")), id));

        QVERIFY2(!log.filter(QStringLiteral("网页上找不到元素“不在的按钮”")).isEmpty(),
                 qPrintable(log.join(QLatin1Char('\n'))));
    }
};

RPA_TEST_MAIN(BrowserRunTest)
#include "tst_browserrun.moc"
