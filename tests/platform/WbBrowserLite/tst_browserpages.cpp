// SPDX-License-Identifier: Apache-2.0

#include "BrowserFixture.h"
#include "TestApp.h"
#include "ToastWatcher.h"

#include <WbBrowserLite/IBrowserBorderWindow.h>

#include <QAction>
#include <QLabel>
#include <QSignalSpy>
#include <QStackedWidget>

namespace
{
QByteArray Page(const char* title, const char* body = "<p>text</p>")
{
    return QByteArray("<html><head><title>") + title + "</title></head><body>" + body + "</body></html>";
}
} // namespace

class BrowserPagesTest : public QObject
{
    Q_OBJECT

private slots:
    void startsWithoutAnEngineAndSaysWhatItIsFor()
    {
        const BrowserFixture author;

        QVERIFY(!author.Find("browserView"));
        QVERIFY(author.Find("browserNotice")->isVisible());
        QCOMPARE(author.Find<QLabel>("browserNoticeTitle")->text(), QStringLiteral("内置浏览器"));
        QVERIFY(!author.Find("browserBack")->isEnabled());
    }

    void theFirstWordsAreWholeAtEveryWidth()
    {
        BrowserFixture author;
        const auto* text = author.Find<QLabel>("browserNoticeText");
        QVERIFY(text->text().contains(QStringLiteral("捕获")));
        for (const int width : {320, 460, 640, 1000}) {
            author.window->resize(width, 480);
            QTRY_VERIFY2(text->width() <= width && text->width() > width / 3 &&
                             text->height() >= text->heightForWidth(text->width()),
                         qPrintable(QString::number(width)));
        }

        author.browser->SetEmbedded(false);
        QVERIFY(!text->text().contains(QStringLiteral("捕获")));
    }

    void opensWhatIsTypedIntoTheAddressBar()
    {
        BrowserFixture author;
        author.server.Put(QStringLiteral("/a"), Page("A"));

        author.Type(author.server.Url(QStringLiteral("/a")).mid(7));

        QTRY_COMPARE(author.server.GetAsked().value(0), QStringLiteral("/a"));
        QTRY_COMPARE(author.Title(), QStringLiteral("A"));
        QCOMPARE(author.Find<QLineEdit>("browserAddress")->text(), author.server.Url(QStringLiteral("/a")));
        QVERIFY(author.Find("browserView")->isVisible());
    }

    void thePageHasTheKeyboardAfterItsAddressWasTyped()
    {
        BrowserFixture author;
        author.server.Put(QStringLiteral("/a"), Page("A", "<div style='height:4000px'>long</div>"));
        author.window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(author.window.get()));
        author.Find("browserAddress")->setFocus();

        author.Type(author.server.Url(QStringLiteral("/a")));
        QTRY_COMPARE(author.Title(), QStringLiteral("A"));
        QVERIFY(!author.Find("browserAddress")->hasFocus());
        QTest::keyClick(author.window->windowHandle(), Qt::Key_PageDown);

        QTRY_VERIFY(author.Run(QStringLiteral("window.scrollY")).toInt() > 0);
    }

    void goesBackAndForward()
    {
        BrowserFixture author;
        author.server.Put(QStringLiteral("/a"), Page("A"));
        author.server.Put(QStringLiteral("/b"), Page("B"));
        QVERIFY(author.Open(QStringLiteral("/a")));
        QVERIFY(author.Open(QStringLiteral("/b")));

        author.Press("browserBack");
        QTRY_COMPARE(author.Title(), QStringLiteral("A"));
        QTRY_VERIFY(author.Find("browserForward")->isEnabled());
        QVERIFY(!author.Find("browserBack")->isEnabled());

        author.Press("browserForward");
        QTRY_COMPARE(author.Title(), QStringLiteral("B"));
    }

    void loadsAgain()
    {
        BrowserFixture author;
        author.server.Put(QStringLiteral("/a"), Page("A"));
        QVERIFY(author.Open(QStringLiteral("/a")));
        author.server.Put(QStringLiteral("/a"), Page("A again"));

        author.Press("browserReload");

        QTRY_COMPARE(author.Title(), QStringLiteral("A again"));
    }

    void stopsLoading()
    {
        BrowserFixture author;
        author.server.Put(QStringLiteral("/a"), Page("A"));
        author.server.Hold(QStringLiteral("/slow"));
        QVERIFY(author.Open(QStringLiteral("/a")));
        Told told;
        author.Engine()->Open(author.server.Url(QStringLiteral("/slow")), told.Answer());
        QTRY_COMPARE(author.Find<QToolButton>("browserReload")->accessibleName(), QStringLiteral("停止加载"));

        author.Press("browserReload");

        QTRY_COMPARE(told.times, 1);
        QVERIFY(!told.ok);
        QVERIFY(author.Find("browserView")->isVisible());
        QTRY_COMPARE(author.Find<QToolButton>("browserReload")->accessibleName(), QStringLiteral("重新加载"));
    }

    void opensPopUpsInTheSameView()
    {
        BrowserFixture author;
        author.server.Put(QStringLiteral("/a"), Page("A", "<a id=x href=/b target=_blank>go</a>"));
        author.server.Put(QStringLiteral("/b"), Page("B"));
        QVERIFY(author.Open(QStringLiteral("/a")));

        const QVariantList at =
            author.Run(QStringLiteral("(r => [r.left + 3, r.top + 3])(x.getBoundingClientRect())")).toList();
        QWidget* view = author.Find("browserView")->focusProxy();
        QTRY_VERIFY(view->isVisible());
        QTest::mouseClick(view, Qt::LeftButton, {}, QPoint(at.value(0).toInt(), at.value(1).toInt()));

        QTRY_COMPARE(author.Title(), QStringLiteral("B"));
    }

    void refusesWhatIsNoWebAddress_data()
    {
        QTest::addColumn<QString>("url");
        QTest::newRow("file") << QStringLiteral("file:///etc/passwd");
        QTest::newRow("script") << QStringLiteral("javascript:alert(1)");
        QTest::newRow("data") << QStringLiteral("data:text/html,x");
        QTest::newRow("inside of the engine") << QStringLiteral("chrome://version");
        QTest::newRow("source view") << QStringLiteral("view-source:http://127.0.0.1/");
        QTest::newRow("no host") << QStringLiteral("http:///x");
        QTest::newRow("nothing") << QString();
        QTest::newRow("words") << QStringLiteral("two words");
    }
    void refusesWhatIsNoWebAddress()
    {
        QFETCH(QString, url);
        BrowserFixture author;
        const ToastWatcher toasts;
        Told told;

        author.Engine()->Open(url, told.Answer());
        author.Type(url);

        QCOMPARE(told.times, 1);
        QVERIFY(!told.ok);
        QVERIFY(!told.value.toString().isEmpty());
        QVERIFY(!author.Find("browserView"));
        QCOMPARE(toasts.GetTexts().size(), 1);
    }

    void aPageCannotLeaveTheWeb_data()
    {
        QTest::addColumn<QString>("target");
        QTest::newRow("file") << QStringLiteral("file:///etc/passwd");
        QTest::newRow("data") << QStringLiteral("data:text/html,<title>bad</title>");
        QTest::newRow("inside of the engine") << QStringLiteral("chrome://version");
        QTest::newRow("program of the system") << QStringLiteral("mailto:a@b");
    }
    void aPageCannotLeaveTheWeb()
    {
        QFETCH(QString, target);
        BrowserFixture author;
        author.server.Put(QStringLiteral("/a"), Page("A"));
        QVERIFY(author.Open(QStringLiteral("/a")));

        author.Run(QStringLiteral("(() => { const a = document.createElement('a'); a.href = '%1';"
                                  "document.body.append(a); a.click(); })()")
                       .arg(target));
        // What comes next shows that the page is still the same.
        QCOMPARE(author.Run(QStringLiteral("location.pathname")).toString(), QStringLiteral("/a"));
        QCOMPARE(author.Title(), QStringLiteral("A"));
        QVERIFY(author.Open(QStringLiteral("/a")));
    }

    void aRedirectCannotLeaveTheWeb()
    {
        BrowserFixture author;
        author.server.Put(QStringLiteral("/r"), {}, 302, "Location: file:///etc/passwd\r\n");

        QVERIFY(!author.Open(QStringLiteral("/r")));
    }

    void permissionsAndWindowsAreDenied()
    {
        BrowserFixture author;
        author.server.Put(QStringLiteral("/a"),
                          Page("A", "<script>navigator.geolocation.getCurrentPosition("
                                    "() => document.title = 'allowed', () => document.title = 'denied');"
                                    "window.opened = window.open('/b');"
                                    "document.body.dataset.opened = String(window.opened);</script>"));
        QVERIFY(author.Open(QStringLiteral("/a")));

        QTRY_COMPARE(author.Title(), QStringLiteral("denied"));
        QCOMPARE(author.Run(QStringLiteral("document.body.dataset.opened")).toString(),
                 QStringLiteral("null"));
        QVERIFY(!author.server.GetAsked().contains(QStringLiteral("/b")));
        QVERIFY(author.Find("browserView")->isVisible());
    }

    void aPageThatClosesItselfCanBeOpenedAgain()
    {
        BrowserFixture author;
        author.server.Put(QStringLiteral("/a"), Page("A", "<script>window.close();</script>"));
        Told told;
        author.Engine()->Open(author.server.Url(QStringLiteral("/a")), told.Answer());
        QTRY_COMPARE(told.times, 1);
        QTRY_VERIFY(author.Find("browserNotice")->isVisible());

        author.server.Put(QStringLiteral("/a"), Page("B"));
        author.Press("browserRetry");

        QTRY_COMPARE(author.Title(), QStringLiteral("B"));
    }

    void downloadsAreRefused()
    {
        BrowserFixture author;
        const ToastWatcher toasts;
        author.server.Put(QStringLiteral("/a"), Page("A"));
        author.server.Put(QStringLiteral("/file"), "bytes", 200,
                          "Content-Disposition: attachment; filename=x.bin\r\n");
        QVERIFY(author.Open(QStringLiteral("/a")));

        QVERIFY(!author.Open(QStringLiteral("/file")));

        QTRY_VERIFY(toasts.GetTexts().contains(QStringLiteral("内置浏览器不下载文件")));
        QCOMPARE(author.Title(), QStringLiteral("A"));
        QTRY_VERIFY(author.Find("browserView")->isVisible());
    }

    void saysThatAServerIsNotThereAndTriesAgain()
    {
        BrowserFixture author;
        const QString url = author.server.Url(QStringLiteral("/a"));
        const quint16 port = author.server.serverPort();
        author.server.Put(QStringLiteral("/a"), Page("A"));
        author.server.close();

        QVERIFY(!author.OpenUrl(url));
        QTRY_VERIFY(author.Find("browserNotice")->isVisible());
        QCOMPARE(author.Find<QLabel>("browserNoticeTitle")->text(), QStringLiteral("打不开 127.0.0.1"));

        QVERIFY(author.server.listen(QHostAddress::LocalHost, port));
        author.Press("browserRetry");
        QTRY_VERIFY(author.Find("browserView")->isVisible());
        QTRY_COMPARE(author.Title(), QStringLiteral("A"));
    }

    void showsTheWordsOfAServerThatRefuses()
    {
        BrowserFixture author;
        author.server.Put(QStringLiteral("/no"), Page("No", "<p>Not today</p>"), 403);

        QVERIFY(!author.Open(QStringLiteral("/no")));

        QTRY_COMPARE(author.Run(QStringLiteral("document.body.innerText")).toString(),
                     QStringLiteral("Not today"));
        QVERIFY(author.Find("browserView")->isVisible());
    }

    void forgetsEverythingOnReset()
    {
        BrowserFixture author;
        author.server.Put(QStringLiteral("/a"), Page("A"));
        QVERIFY(author.Open(QStringLiteral("/a")));
        author.Run(QStringLiteral("document.cookie = 'who=me'; localStorage.setItem('k', 'v')"));
        QCOMPARE(author.Run(QStringLiteral("document.cookie")).toString(), QStringLiteral("who=me"));

        author.browser->Reset();
        QVERIFY(author.Find("browserNotice")->isVisible());
        QVERIFY(author.Find<QLineEdit>("browserAddress")->text().isEmpty());
        QVERIFY(!author.Find("browserBack")->isEnabled());

        QVERIFY(author.Open(QStringLiteral("/a")));
        QCOMPARE(author.Run(QStringLiteral("document.cookie + localStorage.length")).toString(),
                 QStringLiteral("0"));
    }

    void asksToFoldAndToPopOutAndBack()
    {
        BrowserFixture author;
        QSignalSpy fold(author.browser, &IBrowserWidget::SigFold);
        QSignalSpy popup(author.browser, &IBrowserWidget::SigPopup);

        author.Press("browserFold");
        author.Press("browserPopup");
        QCOMPARE(fold.size(), 1);
        QCOMPARE(popup.at(0).at(0).toBool(), true);

        const std::unique_ptr<IBrowserBorderWindow> border(
            WbBrowserLite::Instance()->CreateBrowserEmbed(nullptr));
        border->SetContent(author.browser);
        border->show();
        QVERIFY(author.browser->findChild<QToolButton*>(QStringLiteral("browserFold"))->isHidden());
        QTest::mouseClick(author.browser->findChild<QToolButton*>(QStringLiteral("browserPopup")),
                          Qt::LeftButton);
        QCOMPARE(popup.at(1).at(0).toBool(), false);
    }

    void showsTheActionsOfOthersInItsToolBar()
    {
        BrowserFixture author;
        QAction tool(QStringLiteral("工具"));
        tool.setObjectName(QStringLiteral("tool"));
        QSignalSpy pressed(&tool, &QAction::triggered);

        author.browser->addAction(&tool);
        author.Press("tool");
        QCOMPARE(pressed.size(), 1);

        author.browser->removeAction(&tool);
        QVERIFY(!author.Find("tool"));
    }
};

RPA_TEST_MAIN(BrowserPagesTest)
#include "tst_browserpages.moc"
