// SPDX-License-Identifier: Apache-2.0

#include "CaptureFixture.h"
#include "TestApp.h"
#include "ToastWatcher.h"

#include <QLineEdit>
#include <QSignalSpy>
#include <QToolButton>

namespace
{
constexpr auto form = R"(<html><head><title>Form</title></head><body style="margin:0">
<script>
window.seen = 0;
for (const kind of ["click", "mousedown", "mouseup", "mousemove", "pointerdown", "pointermove", "mouseover"])
    window.addEventListener(kind, () => { document.body.dataset.seen = ++window.seen; }, true);
</script>
<form onsubmit="return false">
<label for="user-name">用户名</label><input id="user-name" value="secret">
<input id="a84620193bc7" type="password" placeholder="密码" value="hidden">
<button class="x">登录 &quot;now's&quot;</button>
</form>
<ul><li>一</li><li>二</li><li><span>三</span></li></ul>
<div id="list"><p>p1</p><p>p2</p></div>
<a href="/next">下一页</a>
<svg width="40" height="40"><rect width="40" height="40" fill="red"></rect></svg>
<iframe src="about:blank" width="60" height="40"></iframe>
</body></html>)";
} // namespace

class ElementCaptureTest : public QObject
{
    Q_OBJECT

private slots:
    void capturesTheElementThatWasPressed()
    {
        CaptureFixture author;
        author.server.Put(QStringLiteral("/form"), form);
        QVERIFY(author.Open(QStringLiteral("/form")));
        QSignalSpy captured(CaptureFixture::Inspector(), &IRpaInspector::SigCaptured);

        const RpaNode node = author.Capture(QStringLiteral("#user-name"));

        QCOMPARE(node.name, QStringLiteral("用户名输入框"));
        QCOMPARE(node.css, QStringLiteral("#user-name"));
        QCOMPARE(node.pageUrl, author.server.Url(QStringLiteral("/form")));
        QCOMPARE(node.attributes.value(QStringLiteral("tag")), QStringLiteral("input"));
        QCOMPARE(captured.size(), 1);
        QCOMPARE(captured.at(0).at(0).toString(), node.id);
        QVERIFY(!CaptureFixture::Inspector()->IsCapturing());
    }

    void findsTheElementAgainByWhatItStored_data()
    {
        QTest::addColumn<QString>("css");
        QTest::newRow("field with an id") << QStringLiteral("#user-name");
        QTest::newRow("field with a made id") << QStringLiteral("#a84620193bc7");
        QTest::newRow("button with quotes in its text") << QStringLiteral("button");
        QTest::newRow("list item") << QStringLiteral("li:nth-child(2)");
        QTest::newRow("inside of a list item") << QStringLiteral("li span");
        QTest::newRow("below an element with an id") << QStringLiteral("#list p:nth-child(2)");
        QTest::newRow("link") << QStringLiteral("a");
        QTest::newRow("drawing") << QStringLiteral("svg rect");
    }
    void findsTheElementAgainByWhatItStored()
    {
        QFETCH(QString, css);
        CaptureFixture author;
        author.server.Put(QStringLiteral("/form"), form);
        QVERIFY(author.Open(QStringLiteral("/form")));

        const RpaNode node = author.Capture(css);

        const auto quoted = [](QString text) {
            return QLatin1Char('`') + text.replace(QLatin1Char('\\'), QLatin1String("\\\\")) +
                   QLatin1Char('`');
        };
        QVERIFY2(author
                     .Run(QStringLiteral("document.querySelector(%1) === document.querySelector(%2)")
                              .arg(quoted(node.css), quoted(css)))
                     .toBool(),
                 qPrintable(node.css));
        QVERIFY2(author
                     .Run(QStringLiteral("document.evaluate(%1, document, null, 9).singleNodeValue === "
                                         "document.querySelector(%2)")
                              .arg(quoted(node.xpath), quoted(css)))
                     .toBool(),
                 qPrintable(node.xpath));
        QVERIFY(!node.css.contains(QLatin1String("a84620193bc7")));
    }

    void thePageDoesNotNoticeIt()
    {
        CaptureFixture author;
        author.server.Put(QStringLiteral("/form"), form);
        author.server.Put(QStringLiteral("/next"), "<title>Next</title>");
        QVERIFY(author.Open(QStringLiteral("/form")));
        const QString before = author.Run(QStringLiteral("document.documentElement.outerHTML")).toString();

        QCOMPARE(author.Capture(QStringLiteral("a")).name, QStringLiteral("下一页链接"));

        QCOMPARE(author.Run(QStringLiteral("document.body.dataset.seen")), QVariant());
        QCOMPARE(author.Run(QStringLiteral("document.documentElement.outerHTML")).toString(), before);
        QCOMPARE(author.Run(QStringLiteral("location.pathname")).toString(), QStringLiteral("/form"));
    }

    void keepsNothingThatWasTypedIntoAField()
    {
        CaptureFixture author;
        author.server.Put(QStringLiteral("/form"), form);
        QVERIFY(author.Open(QStringLiteral("/form")));

        const RpaNode node = author.Capture(QStringLiteral("#a84620193bc7"));

        QCOMPARE(node.name, QStringLiteral("密码框"));
        for (const QString& value : node.attributes)
            QVERIFY(!value.contains(QLatin1String("hidden")));
    }

    void isNamedByItsWordsOnce_data()
    {
        QTest::addColumn<QString>("html");
        QTest::addColumn<QString>("name");
        QTest::newRow("the kind is in the label")
            << QStringLiteral("<label>登录密码框 <input id=it type=password></label>")
            << QStringLiteral("登录密码框");
        QTest::newRow("the kind begins with the label")
            << QStringLiteral("<label>密码<input id=it type=password></label>") << QStringLiteral("密码框");
        QTest::newRow("a label with a colon and a star")
            << QStringLiteral("<label for=it>姓名* ：</label><input id=it>") << QStringLiteral("姓名输入框");
        QTest::newRow("a label around its choices")
            << QStringLiteral("<label>部门 <select id=it><option>财务<option>人事</select></label>")
            << QStringLiteral("部门下拉框");
        QTest::newRow("a label around a long text")
            << QStringLiteral("<label>备注 <textarea id=it>秘密</textarea></label>")
            << QStringLiteral("备注输入框");
        QTest::newRow("characters of two units")
            << QStringLiteral("<button id=it>一二三四五六七八九十一二三四五六七八九😀尾</button>")
            << QStringLiteral("一二三四五六七八九十一二三四五六七八九😀按钮");
        QTest::newRow("a button that says so")
            << QStringLiteral("<button id=it>确定按钮</button>") << QStringLiteral("确定按钮");
    }
    void isNamedByItsWordsOnce()
    {
        QFETCH(QString, html);
        CaptureFixture author;
        author.server.Put(
            QStringLiteral("/named"),
            QStringLiteral("<meta charset=utf-8><body style='padding:60px'>%1").arg(html).toUtf8());
        QVERIFY(author.Open(QStringLiteral("/named")));

        QTEST(author.Capture(QStringLiteral("#it")).name, "name");
    }

    void storesAnElementOnce()
    {
        CaptureFixture author;
        author.server.Put(QStringLiteral("/form"), form);
        QVERIFY(author.Open(QStringLiteral("/form")));
        const QString first = author.Capture(QStringLiteral("a")).id;
        QSignalSpy captured(CaptureFixture::Inspector(), &IRpaInspector::SigCaptured);

        QVERIFY(CaptureFixture::Inspector()->StartCapture());
        author.Click(QStringLiteral("a"));

        QTRY_COMPARE(captured.size(), 1);
        QCOMPARE(captured.at(0).at(0).toString(), first);
        QCOMPARE(author.nodes.GetCount(), 1);
    }

    void doesNotCaptureInsideOfAFrame()
    {
        CaptureFixture author;
        const ToastWatcher toasts;
        author.server.Put(QStringLiteral("/form"), form);
        QVERIFY(author.Open(QStringLiteral("/form")));
        QVERIFY(CaptureFixture::Inspector()->StartCapture());

        author.Click(QStringLiteral("iframe"));

        QTRY_VERIFY(
            toasts.GetTexts().contains(QStringLiteral("这里是网页中嵌入的另一个网页，不能捕获其中的元素")));
        QCOMPARE(author.nodes.GetCount(), 0);
        QVERIFY(CaptureFixture::Inspector()->IsCapturing());
    }

    void escapeEndsIt()
    {
        CaptureFixture author;
        author.server.Put(QStringLiteral("/form"), form);
        QVERIFY(author.Open(QStringLiteral("/form")));
        QVERIFY(CaptureFixture::Inspector()->StartCapture());
        QVERIFY(author.Glass()->isVisible());
        QSignalSpy changed(CaptureFixture::Inspector(), &IRpaInspector::SigCapturingChanged);

        QTest::keyClick(author.window->windowHandle(), Qt::Key_Escape);

        QVERIFY(!CaptureFixture::Inspector()->IsCapturing());
        QCOMPARE(changed.size(), 1);
        QCOMPARE(changed.at(0).at(0).toBool(), false);
        QTRY_VERIFY(!author.Glass());
        QCOMPARE(author.nodes.GetCount(), 0);
    }

    void theKeyboardGoesBackToWhereItWas()
    {
        CaptureFixture author;
        author.server.Put(QStringLiteral("/form"), form);
        QVERIFY(author.Open(QStringLiteral("/form")));
        author.window->layout()->addWidget(new QLineEdit);
        auto* field = new QLineEdit;
        author.window->layout()->addWidget(field);
        author.window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(author.window.get()));
        QTRY_VERIFY(field->isVisible());
        field->setFocus();
        QVERIFY(field->hasFocus());

        QVERIFY(CaptureFixture::Inspector()->StartCapture());
        QVERIFY(author.Glass()->hasFocus());
        QTest::keyClick(author.window->windowHandle(), Qt::Key_Escape);

        QVERIFY(field->hasFocus());
    }

    void goesOnWhenThePageChanges()
    {
        CaptureFixture author;
        author.server.Put(QStringLiteral("/form"), form);
        author.server.Put(QStringLiteral("/next"), "<button id=go style='margin:80px'>去</button>");
        QVERIFY(author.Open(QStringLiteral("/form")));
        QVERIFY(CaptureFixture::Inspector()->StartCapture());

        QVERIFY(author.Open(QStringLiteral("/next")));
        QVERIFY(CaptureFixture::Inspector()->IsCapturing());
        author.Click(QStringLiteral("#go"));

        QTRY_COMPARE(author.nodes.GetCount(), 1);
        QCOMPARE(author.nodes.GetNode(0).name, QStringLiteral("去按钮"));
        QCOMPARE(author.nodes.GetNode(0).pageUrl, author.server.Url(QStringLiteral("/next")));
    }

    void endsWithThePage_data()
    {
        QTest::addColumn<int>("how");
        QTest::newRow("browser reset") << 0;
        QTest::newRow("browser hidden") << 1;
        QTest::newRow("browser destroyed") << 2;
        QTest::newRow("app closed") << 3;
    }
    void endsWithThePage()
    {
        QFETCH(int, how);
        CaptureFixture author;
        author.server.Put(QStringLiteral("/form"), form);
        QVERIFY(author.Open(QStringLiteral("/form")));
        QVERIFY(CaptureFixture::Inspector()->StartCapture());

        if (how == 0)
            author.browser->Reset();
        else if (how == 1)
            author.browser->hide();
        else if (how == 2)
            author.window.reset();
        else
            CaptureFixture::Inspector()->SetNodeManager(nullptr);

        QVERIFY(!CaptureFixture::Inspector()->IsCapturing());
    }

    void saysThatAPageMustBeOpenFirst()
    {
        CaptureFixture author;
        const ToastWatcher toasts;

        QVERIFY(!CaptureFixture::Inspector()->StartCapture());

        QCOMPARE(toasts.GetTexts(), QStringList{QStringLiteral("请先在浏览器窗口中打开网页，再捕获元素")});
    }

    void saysThatAFoldedBrowserMustBeShownFirst()
    {
        CaptureFixture author;
        const ToastWatcher toasts;
        author.server.Put(QStringLiteral("/form"), form);
        QVERIFY(author.Open(QStringLiteral("/form")));
        author.browser->hide();

        QVERIFY(!CaptureFixture::Inspector()->StartCapture());

        QCOMPARE(toasts.GetTexts(), QStringList{QStringLiteral("请先展开浏览器窗口，再捕获元素")});
    }

    void theButtonGoesWithTheStoreOfTheApp()
    {
        CaptureFixture author;
        author.server.Put(QStringLiteral("/form"), form);
        QVERIFY(author.Open(QStringLiteral("/form")));
        auto store = std::make_unique<RpaHtmlNodeManager>();
        CaptureFixture::Inspector()->SetNodeManager(store.get());
        const auto* button = author.window->findChild<QToolButton*>(QStringLiteral("browserCapture"));
        QVERIFY(button->isVisible());
        QVERIFY(CaptureFixture::Inspector()->StartCapture());

        store.reset();

        QVERIFY(!button->isVisible());
        QVERIFY(!CaptureFixture::Inspector()->IsCapturing());
    }

    void isStartedAndStoppedInTheToolBar()
    {
        CaptureFixture author;
        author.server.Put(QStringLiteral("/form"), form);
        QVERIFY(author.Open(QStringLiteral("/form")));
        auto* button = author.window->findChild<QToolButton*>(QStringLiteral("browserCapture"));
        QVERIFY(button->isVisible());

        QTest::mouseClick(button, Qt::LeftButton);
        QVERIFY(CaptureFixture::Inspector()->IsCapturing());
        QVERIFY(button->isChecked());

        QTest::mouseClick(button, Qt::LeftButton);
        QVERIFY(!CaptureFixture::Inspector()->IsCapturing());
        QVERIFY(!button->isChecked());
    }
};

RPA_TEST_MAIN(ElementCaptureTest)
#include "tst_elementcapture.moc"
