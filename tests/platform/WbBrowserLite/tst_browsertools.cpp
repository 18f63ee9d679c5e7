// SPDX-License-Identifier: Apache-2.0

#include "BrowserFixture.h"
#include "TestApp.h"
#include "ToastWatcher.h"

#include <WbBrowserLite/IBrowserBorderWindow.h>

#include <QAction>
#include <QApplication>
#include <QMenu>
#include <QWebEngineView>
#include <QWindow>

// The tool bar, the keys and the menu of the embedded browser.
class BrowserToolsTest : public QObject
{
    Q_OBJECT

private slots:
    void completesWhatIsTyped_data();
    void completesWhatIsTyped();
    void refusesAWordThatIsNoAddress();
    void keepsWhatIsBeingTypedWhileThePageMovesOn();
    void hasTheUsualKeys();
    void itsKeysCountInItOnly();
    void thePageHasAMenu();
    void theMenuLoadsThePageAgain();
    void foldsAndPopsOutBesideAnEditorOnly();
    void aPoppedOutBrowserOffersTheWayBack();
    void showsToolsFromBeforeAndHidesThemWithTheirAction();

private:
    // The author's window with two pages shown one after the other.
    class TwoPages : public BrowserFixture
    {
    public:
        TwoPages()
        {
            server.Put(QStringLiteral("/a"), "<title>A</title>");
            server.Put(QStringLiteral("/b"), "<title>B</title>");
            isOpen = Open(QStringLiteral("/a")) && Open(QStringLiteral("/b"));
            window->activateWindow();
            isOpen = isOpen && QTest::qWaitForWindowActive(window.get());
            Find("browserAddress")->setFocus();
        }

        void Key(Qt::Key key, Qt::KeyboardModifiers modifiers) const
        {
            QTest::keyClick(window->windowHandle(), key, modifiers);
        }

        QString Address() const { return Find<QLineEdit>("browserAddress")->text(); }

        bool isOpen = false;
    };

    static QMenu* MenuOf(const BrowserFixture& author)
    {
        QWidget* page = author.Find("browserView")->focusProxy();
        QTest::mouseClick(page, Qt::RightButton, {}, QPoint(100, 100));
        const bool isOpen = QTest::qWaitFor([] { return QApplication::activePopupWidget() != nullptr; });
        return isOpen ? qobject_cast<QMenu*>(QApplication::activePopupWidget()) : nullptr;
    }
};

void BrowserToolsTest::completesWhatIsTyped_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("address");
    const auto row = [](const char* name, const char* typed, const char* address) {
        QTest::newRow(name) << QString::fromLatin1(typed) << QString::fromLatin1(address);
    };
    row("a name of the web", "nowhere.invalid/a?b=c", "https://nowhere.invalid/a?b=c");
    row("blanks around", "  nowhere.invalid ", "https://nowhere.invalid");
    row("a port", "nowhere.invalid:1", "http://nowhere.invalid:1");
    row("a machine and its port", "intranet:1/x", "http://intranet:1/x");
    row("a number", "127.0.0.1/x", "http://127.0.0.1/x");
    row("this machine", "localhost", "http://localhost");
    row("said to be insecure", "http://nowhere.invalid", "http://nowhere.invalid");
}

void BrowserToolsTest::completesWhatIsTyped()
{
    QFETCH(QString, typed);
    QFETCH(QString, address);
    BrowserFixture author;

    author.Type(typed);

    QCOMPARE(author.Find<QLineEdit>("browserAddress")->text(), address);
    QVERIFY(author.Find("browserView"));
}

void BrowserToolsTest::refusesAWordThatIsNoAddress()
{
    BrowserFixture author;
    const ToastWatcher toasts;

    author.Type(QStringLiteral("word"));

    QCOMPARE(toasts.GetTexts(),
             QStringList{QStringLiteral("无法打开“word”：内置浏览器只打开 http 和 https 网址")});
    QCOMPARE(author.Find<QLineEdit>("browserAddress")->text(), QStringLiteral("word"));
    QVERIFY(!author.Find("browserView"));
}

void BrowserToolsTest::keepsWhatIsBeingTypedWhileThePageMovesOn()
{
    TwoPages author;
    QVERIFY(author.isOpen);
    QCOMPARE(author.Address(), author.server.Url(QStringLiteral("/b")));
    author.Find<QLineEdit>("browserAddress")->clear();
    QTest::keyClicks(author.Find("browserAddress"), QStringLiteral("half"));

    QVERIFY(author.Open(QStringLiteral("/a")));
    QCOMPARE(author.Address(), QStringLiteral("half"));

    author.Find("browserPopup")->setFocus();
    QVERIFY(author.Open(QStringLiteral("/b")));
    QCOMPARE(author.Address(), author.server.Url(QStringLiteral("/b")));
}

void BrowserToolsTest::hasTheUsualKeys()
{
    TwoPages author;
    QVERIFY(author.isOpen);

    author.Key(Qt::Key_Left, Qt::AltModifier);
    QTRY_COMPARE(author.Title(), QStringLiteral("A"));
    QTRY_VERIFY(author.Find("browserForward")->isEnabled());
    author.Key(Qt::Key_Right, Qt::AltModifier);
    QTRY_COMPARE(author.Title(), QStringLiteral("B"));

    author.server.Put(QStringLiteral("/b"), "<title>B again</title>");
    author.Key(Qt::Key_R, Qt::ControlModifier);
    QTRY_COMPARE(author.Title(), QStringLiteral("B again"));

    author.Find("browserPopup")->setFocus();
    author.Key(Qt::Key_L, Qt::ControlModifier);
    QVERIFY(author.Find("browserAddress")->hasFocus());
    QCOMPARE(author.Find<QLineEdit>("browserAddress")->selectedText(), author.Address());
}

void BrowserToolsTest::itsKeysCountInItOnly()
{
    TwoPages author;
    QVERIFY(author.isOpen);
    QLineEdit elsewhere;
    author.window->layout()->addWidget(&elsewhere);
    elsewhere.setFocus();

    author.Key(Qt::Key_L, Qt::ControlModifier);

    QVERIFY(elsewhere.hasFocus());
}

void BrowserToolsTest::thePageHasAMenu()
{
    TwoPages author;
    QVERIFY(author.isOpen);

    QMenu* const menu = MenuOf(author);
    QVERIFY(menu);

    QStringList offered;
    const QList<QAction*> entries = menu->actions();
    for (const QAction* entry : entries)
        offered.append(entry->isSeparator()
                           ? QStringLiteral("-")
                           : entry->text() + (entry->isEnabled() ? QString() : QStringLiteral("×")));
    QCOMPARE(offered.mid(0, 4), QStringList({QStringLiteral("后退"), QStringLiteral("前进×"),
                                             QStringLiteral("重新加载"), QStringLiteral("-")}));
    QCOMPARE(offered.size(), 8);
    menu->close();
}

void BrowserToolsTest::theMenuLoadsThePageAgain()
{
    TwoPages author;
    QVERIFY(author.isOpen);
    QMenu* const menu = MenuOf(author);
    QVERIFY(menu);
    author.server.Put(QStringLiteral("/b"), "<title>B again</title>");

    QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(menu->actions().at(2)).center());

    QTRY_COMPARE(author.Title(), QStringLiteral("B again"));
}

void BrowserToolsTest::foldsAndPopsOutBesideAnEditorOnly()
{
    BrowserFixture author;
    QVERIFY(author.Find("browserFold")->isVisible());
    QVERIFY(author.Find("browserPopup")->isVisible());

    author.browser->SetEmbedded(false);

    QVERIFY(!author.Find("browserFold")->isVisible());
    QVERIFY(!author.Find("browserPopup")->isVisible());
}

void BrowserToolsTest::aPoppedOutBrowserOffersTheWayBack()
{
    BrowserFixture author;
    const auto* popup = author.Find<QToolButton>("browserPopup");
    QCOMPARE(popup->toolTip(), QStringLiteral("在单独的窗口中显示"));
    const std::unique_ptr<IBrowserBorderWindow> border(
        WbBrowserLite::Instance()->CreateBrowserEmbed(nullptr));
    border->SetContent(author.browser);
    border->show();
    QCOMPARE(popup->toolTip(), QStringLiteral("放回编辑器"));
    const int leastOut = author.browser->minimumWidth();

    author.window->layout()->addWidget(author.browser);

    QCOMPARE(popup->toolTip(), QStringLiteral("在单独的窗口中显示"));
    QVERIFY(!author.Find("browserFold")->isHidden());
    QVERIFY(leastOut < author.browser->minimumWidth());
}

void BrowserToolsTest::showsToolsFromBeforeAndHidesThemWithTheirAction()
{
    QWidget window;
    IBrowserWidget* browser = WbBrowserLite::Instance()->CreateBrowserWidget(&window);
    QAction first(QStringLiteral("捕获"));
    first.setObjectName(QStringLiteral("first"));
    QAction second(QStringLiteral("检查"));
    second.setObjectName(QStringLiteral("second"));
    second.setVisible(false);

    browser->addAction(&first);
    browser->addAction(&second);
    browser->InitToolBar();
    window.show();

    const auto* firstButton = window.findChild<QToolButton*>(QStringLiteral("first"));
    const auto* secondButton = window.findChild<QToolButton*>(QStringLiteral("second"));
    QVERIFY(firstButton->isVisible());
    QCOMPARE(firstButton->accessibleName(), QStringLiteral("捕获"));
    QVERIFY(!secondButton->isVisible());
    second.setVisible(true);
    QVERIFY(secondButton->isVisible());
    first.setVisible(false);
    QVERIFY(!firstButton->isVisible());
}

RPA_TEST_MAIN(BrowserToolsTest)
#include "tst_browsertools.moc"
