// SPDX-License-Identifier: Apache-2.0

#include <WbBrowserLite/IBrowserBorderWindow.h>
#include <WbBrowserLite/IBrowserWidget.h>
#include <WbBrowserLite/WbBrowserLite.h>

#include <QSignalSpy>
#include <QToolButton>
#include <QWindow>
#include <QtTest>

#include <memory>

namespace
{
// A browser that shows nothing; only its place matters here.
class EmptyBrowser : public IBrowserWidget
{
public:
    using IBrowserWidget::IBrowserWidget;

    void InitToolBar() override {}
    void SetEmbedded(bool) override {}
    void Reset() override {}
    IBrowserEngine* GetBrowserEngine() override { return nullptr; }
};
} // namespace

class BrowserBorderWindowTest : public QObject
{
    Q_OBJECT

private slots:
    void namesAnEngineWhereItMakesBrowsers()
    {
        const std::unique_ptr<QWidget> browser(WbBrowserLite::Instance()->CreateBrowserWidget(nullptr));

        QCOMPARE(!WbBrowserLite::GetEngineName().isEmpty(), browser != nullptr);
    }

    void isATopLevelWindowWithoutAFrame()
    {
        std::unique_ptr<IBrowserBorderWindow> window(WbBrowserLite::Instance()->CreateBrowserEmbed(nullptr));

        QVERIFY(window->isWindow());
        QVERIFY(window->windowFlags().testFlag(Qt::FramelessWindowHint));
    }

    void takesTheBrowserIn()
    {
        std::unique_ptr<IBrowserBorderWindow> window(WbBrowserLite::Instance()->CreateBrowserEmbed(nullptr));
        auto* browser = new EmptyBrowser;

        window->SetTarget(nullptr, QRect());
        window->SetContent(browser);
        window->resize(400, 300);
        window->show();
        QVERIFY(QTest::qWaitForWindowExposed(window.get()));

        QCOMPARE(browser->window(), static_cast<QWidget*>(window.get()));
        QVERIFY(browser->width() > 380 && browser->width() < 400);
    }

    void isAsSmallAsTheLeastPane()
    {
        const std::unique_ptr<IBrowserBorderWindow> window(
            WbBrowserLite::Instance()->CreateBrowserEmbed(nullptr));
        auto* browser = WbBrowserLite::Instance()->CreateBrowserWidget(nullptr);
        if (!browser)
            browser = new EmptyBrowser; // built without an engine
        browser->InitToolBar();
        browser->SetEmbedded(true);
        const QSize least(browser->minimumWidth(), 200);
        window->SetContent(browser);

        window->setGeometry(QRect(QPoint(30, 40), least));
        window->show();
        QVERIFY(QTest::qWaitForWindowExposed(window.get()));

        QCOMPARE(window->size(), least.expandedTo(QSize(260, 0)));
        QVERIFY(window->rect().contains(QRect(browser->pos(), browser->size())));
    }

    void closingItAsksToTakeTheBrowserBack()
    {
        std::unique_ptr<IBrowserBorderWindow> window(WbBrowserLite::Instance()->CreateBrowserEmbed(nullptr));
        auto* browser = new EmptyBrowser;
        window->SetContent(browser);
        window->show();
        QSignalSpy popup(browser, &IBrowserWidget::SigPopup);

        window->close();

        QCOMPARE(popup.size(), 1);
        QCOMPARE(popup.at(0).at(0).toBool(), false);
        QVERIFY(window->isVisible());
    }

    void theWayBackStandsInItsTitle()
    {
        std::unique_ptr<IBrowserBorderWindow> window(WbBrowserLite::Instance()->CreateBrowserEmbed(nullptr));
        auto* browser = new EmptyBrowser;
        window->SetContent(browser);
        window->show();
        QSignalSpy popup(browser, &IBrowserWidget::SigPopup);

        QTest::mouseClick(window->findChild<QToolButton*>(QStringLiteral("browserDockBack")), Qt::LeftButton);

        QCOMPARE(popup.size(), 1);
        QCOMPARE(popup.at(0).at(0).toBool(), false);
    }

    void movesWithItsTitle()
    {
        const auto window = Shown();
        QWindow* handle = window->windowHandle();

        Drag(handle, QPoint(100, 15), QPoint(130, 40));

        QCOMPARE(window->geometry(), QRect(230, 225, 500, 400));
    }

    void resizesWithItsBorder_data()
    {
        QTest::addColumn<QPoint>("from");
        QTest::addColumn<QPoint>("to");
        QTest::addColumn<QRect>("geometry");
        QTest::newRow("right") << QPoint(498, 200) << QPoint(448, 200) << QRect(200, 200, 450, 400);
        QTest::newRow("bottom") << QPoint(250, 398) << QPoint(250, 348) << QRect(200, 200, 500, 350);
        QTest::newRow("corner") << QPoint(498, 398) << QPoint(488, 388) << QRect(200, 200, 490, 390);
        QTest::newRow("not below the least width")
            << QPoint(498, 200) << QPoint(10, 200) << QRect(200, 200, 260, 400);
    }
    void resizesWithItsBorder()
    {
        QFETCH(QPoint, from);
        QFETCH(QPoint, to);
        QFETCH(QRect, geometry);
        const auto window = Shown();

        Drag(window->windowHandle(), from, to);

        QCOMPARE(window->geometry(), geometry);
    }

    void closesWhenTheBrowserIsGone()
    {
        std::unique_ptr<IBrowserBorderWindow> window(WbBrowserLite::Instance()->CreateBrowserEmbed(nullptr));
        auto* browser = new EmptyBrowser;
        window->SetContent(browser);
        window->show();

        delete browser;
        window->close();

        QVERIFY(!window->isVisible());
    }

    void makesTheBrowserThatAWorkstationBrings()
    {
        QWidget parent;
        WbBrowserLite::Instance()->SetBrowserFactory([](QWidget* pane) { return new EmptyBrowser(pane); });

        const IBrowserWidget* browser = WbBrowserLite::Instance()->CreateBrowserWidget(&parent);
        WbBrowserLite::Instance()->SetBrowserFactory(nullptr);

        QVERIFY(browser);
        QCOMPARE(browser->parentWidget(), &parent);
    }

private:
    static std::unique_ptr<IBrowserBorderWindow> Shown()
    {
        std::unique_ptr<IBrowserBorderWindow> window(WbBrowserLite::Instance()->CreateBrowserEmbed(nullptr));
        window->SetContent(new EmptyBrowser);
        window->setGeometry(200, 200, 500, 400);
        window->show();
        return window;
    }

    // Positions in the window as it was before.
    static void Drag(QWindow* window, const QPoint& from, const QPoint& to)
    {
        QTest::mousePress(window, Qt::LeftButton, {}, from);
        const QPoint onScreen = window->position() + to;
        QTest::mouseMove(window, to);
        QTest::mouseRelease(window, Qt::LeftButton, {}, onScreen - window->position());
    }
};

QTEST_MAIN(BrowserBorderWindowTest)
#include "tst_browserborderwindow.moc"
