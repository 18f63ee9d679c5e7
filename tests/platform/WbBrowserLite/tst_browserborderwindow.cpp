#include <WbBrowserLite/IBrowserBorderWindow.h>
#include <WbBrowserLite/IBrowserWidget.h>
#include <WbBrowserLite/WbBrowserLite.h>

#include <QSignalSpy>
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
};

QTEST_MAIN(BrowserBorderWindowTest)
#include "tst_browserborderwindow.moc"
