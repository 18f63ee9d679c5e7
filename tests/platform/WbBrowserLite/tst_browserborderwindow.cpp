// SPDX-License-Identifier: Apache-2.0

#include "EmptyBrowser.h"

#include <WbBrowserLite/IBrowserBorderWindow.h>
#include <WbBrowserLite/WbBrowserLite.h>

#include <QSignalSpy>
#include <QToolButton>
#include <QWindow>
#include <QtTest>

#include <memory>

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
        QTest::newRow("left") << QPoint(1, 200) << QPoint(31, 200) << QRect(230, 200, 470, 400);
        QTest::newRow("top") << QPoint(250, 1) << QPoint(250, 51) << QRect(200, 250, 500, 350);
        QTest::newRow("first corner") << QPoint(1, 1) << QPoint(21, 11) << QRect(220, 210, 480, 390);
        QTest::newRow("not below the least width")
            << QPoint(498, 200) << QPoint(10, 200) << QRect(200, 200, 260, 400);
        QTest::newRow("the right edge stays at the least width")
            << QPoint(1, 200) << QPoint(490, 200) << QRect(440, 200, 260, 400);
        QTest::newRow("not below the least height")
            << QPoint(250, 398) << QPoint(250, 5) << QRect(200, 200, 500, 160);
        QTest::newRow("the bottom stays at the least height")
            << QPoint(250, 1) << QPoint(250, 390) << QRect(200, 440, 500, 160);
        QTest::newRow("the browser itself moves nothing")
            << QPoint(250, 200) << QPoint(280, 230) << QRect(200, 200, 500, 400);
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

    void onlyTheLeftButtonDrags()
    {
        const auto window = Shown();
        QWindow* handle = window->windowHandle();

        QTest::mousePress(handle, Qt::RightButton, {}, QPoint(498, 200));
        QTest::mouseMove(handle, QPoint(448, 200));
        QTest::mouseRelease(handle, Qt::RightButton, {}, QPoint(448, 200));

        QCOMPARE(window->geometry(), QRect(200, 200, 500, 400));
    }

    void stopsWhenTheButtonIsReleased()
    {
        const auto window = Shown();
        Drag(window->windowHandle(), QPoint(498, 200), QPoint(448, 200));

        QTest::mouseMove(window->windowHandle(), QPoint(380, 15)); // over the title, which tells the window

        QCOMPARE(window->geometry(), QRect(200, 200, 450, 400));
    }

    void theCursorTellsWhichWayTheBorderGoes_data()
    {
        QTest::addColumn<QPoint>("place");
        QTest::addColumn<Qt::CursorShape>("shape");
        QTest::newRow("left") << QPoint(1, 200) << Qt::SizeHorCursor;
        QTest::newRow("right") << QPoint(498, 200) << Qt::SizeHorCursor;
        QTest::newRow("top") << QPoint(250, 1) << Qt::SizeVerCursor;
        QTest::newRow("bottom") << QPoint(250, 398) << Qt::SizeVerCursor;
        QTest::newRow("top left") << QPoint(1, 1) << Qt::SizeFDiagCursor;
        QTest::newRow("bottom right") << QPoint(498, 398) << Qt::SizeFDiagCursor;
        QTest::newRow("top right") << QPoint(498, 1) << Qt::SizeBDiagCursor;
        QTest::newRow("bottom left") << QPoint(1, 398) << Qt::SizeBDiagCursor;
    }
    void theCursorTellsWhichWayTheBorderGoes()
    {
        QFETCH(QPoint, place);
        QFETCH(Qt::CursorShape, shape);
        const auto window = Shown();

        QTest::mouseMove(window->windowHandle(), place);

        QTRY_COMPARE(window->cursor().shape(), shape);
    }

    void theCursorOfTheBorderStaysThere()
    {
        const auto window = Shown();
        for (const QPoint& place : {QPoint(250, 200), QPoint(250, 15)}) {
            QTest::mouseMove(window->windowHandle(), QPoint(1, 200));
            QTRY_COMPARE(window->cursor().shape(), Qt::SizeHorCursor);

            QTest::mouseMove(window->windowHandle(), place);

            QCOMPARE(window->childAt(place)->cursor().shape(), Qt::ArrowCursor);
        }
    }

    void aDoubleClickOnTheTitleFillsTheScreenAndBack()
    {
        const auto window = Shown();

        QTest::mouseDClick(window->windowHandle(), Qt::LeftButton, {}, QPoint(250, 200));
        QVERIFY(!window->isMaximized());
        QTest::mouseDClick(window->windowHandle(), Qt::LeftButton, {}, QPoint(250, 15));
        QVERIFY(window->isMaximized());
        QTest::mouseDClick(window->windowHandle(), Qt::LeftButton, {}, QPoint(250, 15));
        QVERIFY(!window->isMaximized());
    }

    void coversThePartThatItIsGiven()
    {
        const auto window = Shown();
        QWidget target;
        target.setGeometry(40, 60, 700, 500);
        target.show();

        window->SetTarget(&target, QRect(15, 25, 310, 220));
        QCOMPARE(window->geometry(), QRect(target.mapToGlobal(QPoint(15, 25)), QSize(310, 220)));

        const QRect covered = window->geometry();
        window->SetTarget(&target, QRect());
        QCOMPARE(window->geometry(), covered);
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
