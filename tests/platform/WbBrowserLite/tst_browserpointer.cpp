// SPDX-License-Identifier: Apache-2.0

#include "BrowserFixture.h"
#include "TestApp.h"

#include <WbBrowserLite/IBrowserPointer.h>

#include <QSignalSpy>
#include <QWebEngineView>
#include <QWheelEvent>
#include <QWindow>

namespace
{
// Marks always the same part of the page, and tells what it was asked.
const QString markAll =
    QStringLiteral("(x, y, picked) => ({rect: [40, 100, 80, 60], label: 'it', x, y, picked})");
const QString onlyRight = QStringLiteral("(x, y, picked) => x < 100 ? null : {x, y, picked}");
} // namespace

// The user points at an element of the page that is shown.
class BrowserPointerTest : public QObject
{
    Q_OBJECT

private slots:
    void needsAPageThatIsShown();
    void tellsWhatWasPickedOnWhichPage();
    void nothingIsPickedWhereNothingIs();
    void onlyTheLeftButtonPicks();
    void asksForThePointThatThePageKnows();
    void marksWhatTheMouseIsOver();
    void aNewPageIsNotMarkedYet();
    void thePageScrollsUnderIt();
    void coversThePageHoweverLargeItIs();
    void escapeEndsItWhereverTheKeyboardIs();
    void theKeyboardGoesBackToWhereItWas();
    void endsOnce_data();
    void endsOnce();
    void aNewStartEndsTheOneBefore();

private:
    // A page is shown and pointed at.
    class Pointing : public BrowserFixture
    {
    public:
        explicit Pointing(const QString& describe = markAll)
        {
            server.Put(QStringLiteral("/a"),
                       "<title>A</title><body onmousedown='document.title = \"pressed\"'>"
                       "<div style='height:4000px'>long</div>");
            isOpen = Open(QStringLiteral("/a"));
            window->activateWindow();
            isOpen = isOpen && QTest::qWaitForWindowActive(window.get());
            isOpen = isOpen && Pointer()->Start(describe, QStringLiteral("hint"));
        }

        IBrowserPointer* Pointer() const { return browser->GetPointer(); }
        QWidget* Overlay() const { return Find("browserPointerOverlay"); }

        // Through the window, as the system gives it.
        void Click(const QPoint& place, Qt::MouseButton button = Qt::LeftButton) const
        {
            QTest::mouseClick(window->windowHandle(), button, {}, Overlay()->mapTo(window.get(), place));
        }
        // From elsewhere: a mouse that stays where it was does not move.
        void Move(const QPoint& place) const
        {
            QTest::mouseMove(window->windowHandle(), QPoint(5, 5));
            QTest::mouseMove(window->windowHandle(), Overlay()->mapTo(window.get(), place));
        }

        // Whether the two places look different: the one is marked, then, and the other is not.
        bool Differ(const QPoint& place, const QPoint& other) const
        {
            const QImage image = Overlay()->grab().toImage();
            return image.pixel(place) != image.pixel(other);
        }

        bool isOpen = false;
    };

    static QPointF PointOf(const QSignalSpy& picked, int index)
    {
        const QVariantMap told = picked.value(index).value(0).toMap();
        return QPointF(told.value(QStringLiteral("x")).toReal(), told.value(QStringLiteral("y")).toReal());
    }
};

void BrowserPointerTest::needsAPageThatIsShown()
{
    BrowserFixture author;
    IBrowserPointer* pointer = author.browser->GetPointer();
    QVERIFY(!pointer->Start(markAll, QString()));

    author.server.Put(QStringLiteral("/a"), "<title>A</title>");
    QVERIFY(author.Open(QStringLiteral("/a")));
    author.window->hide();
    QVERIFY(!pointer->Start(markAll, QString()));
    QVERIFY(!pointer->IsActive());

    author.window->show();
    QVERIFY(pointer->Start(markAll, QString()));
    QVERIFY(pointer->IsActive());
}

void BrowserPointerTest::tellsWhatWasPickedOnWhichPage()
{
    Pointing author;
    QVERIFY(author.isOpen);
    QSignalSpy picked(author.Pointer(), &IBrowserPointer::SigPicked);

    author.Click(QPoint(120, 90));

    QTRY_COMPARE(picked.size(), 1);
    QCOMPARE(PointOf(picked, 0), QPointF(120, 90));
    const QVariantMap told = picked.at(0).at(0).toMap();
    QCOMPARE(told.value(QStringLiteral("picked")).toBool(), true);
    QCOMPARE(told.value(QStringLiteral("label")).toString(), QStringLiteral("it"));
    QCOMPARE(picked.at(0).at(1).toUrl(), QUrl(author.server.Url(QStringLiteral("/a"))));
    QVERIFY(author.Pointer()->IsActive());
    QCOMPARE(author.Title(), QStringLiteral("A")); // the page saw no mouse
}

void BrowserPointerTest::nothingIsPickedWhereNothingIs()
{
    Pointing author(onlyRight);
    QVERIFY(author.isOpen);
    QSignalSpy picked(author.Pointer(), &IBrowserPointer::SigPicked);

    author.Click(QPoint(60, 90));
    author.Click(QPoint(220, 90));

    QTRY_COMPARE(PointOf(picked, 0), QPointF(220, 90));
}

void BrowserPointerTest::onlyTheLeftButtonPicks()
{
    Pointing author;
    QVERIFY(author.isOpen);
    QSignalSpy picked(author.Pointer(), &IBrowserPointer::SigPicked);

    author.Click(QPoint(150, 80), Qt::RightButton);
    author.Click(QPoint(160, 90));

    QTRY_COMPARE(PointOf(picked, 0), QPointF(160, 90));
    QCOMPARE(author.Title(), QStringLiteral("A"));
}

void BrowserPointerTest::asksForThePointThatThePageKnows()
{
    Pointing author;
    QVERIFY(author.isOpen);
    QSignalSpy picked(author.Pointer(), &IBrowserPointer::SigPicked);
    author.Find<QWebEngineView>("browserView")->setZoomFactor(2);

    author.Click(QPoint(120, 90));
    QTRY_COMPARE(PointOf(picked, 0), QPointF(60, 45));

    // What is marked is twice as large on the screen, and twice as far: 80, 200 to 240, 320.
    author.Move(QPoint(125, 95));
    QTRY_VERIFY(author.Differ(QPoint(90, 210), QPoint(70, 210)));
    QVERIFY(!author.Differ(QPoint(90, 210), QPoint(230, 310)));
}

void BrowserPointerTest::marksWhatTheMouseIsOver()
{
    Pointing author;
    QVERIFY(author.isOpen);
    const QPoint inside(50, 110);
    const QPoint outside(300, 300);
    QVERIFY(!author.Differ(inside, outside));

    author.Move(QPoint(60, 120));
    QTRY_VERIFY(author.Differ(inside, outside));
    QVERIFY(!author.Differ(inside, QPoint(110, 150)));
    QVERIFY(!author.Differ(QPoint(135, 110), outside));

    QTest::mouseMove(author.window->windowHandle(), QPoint(5, 5)); // the tool bar
    QTRY_VERIFY(!author.Differ(inside, outside));
}

void BrowserPointerTest::aNewPageIsNotMarkedYet()
{
    Pointing author;
    QVERIFY(author.isOpen);
    author.server.Put(QStringLiteral("/b"), "<title>B</title>");
    author.Move(QPoint(60, 120));
    QTRY_VERIFY(author.Differ(QPoint(50, 110), QPoint(300, 300)));

    QVERIFY(author.Open(QStringLiteral("/b")));

    QVERIFY(author.Pointer()->IsActive());
    QVERIFY(!author.Differ(QPoint(50, 110), QPoint(300, 300)));
}

void BrowserPointerTest::thePageScrollsUnderIt()
{
    Pointing author;
    QVERIFY(author.isOpen);
    author.Move(QPoint(60, 120));
    QTRY_VERIFY(author.Differ(QPoint(50, 110), QPoint(300, 300)));

    const QPoint place = author.Overlay()->mapTo(author.window.get(), QPoint(100, 100));
    QWheelEvent wheel(place, author.window->mapToGlobal(place), QPoint(0, -120), QPoint(0, -120),
                      Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(author.window->windowHandle(), &wheel);

    QVERIFY(!author.Differ(QPoint(50, 110), QPoint(300, 300)));
    QTRY_VERIFY(author.Run(QStringLiteral("window.scrollY")).toInt() > 0);
}

void BrowserPointerTest::coversThePageHoweverLargeItIs()
{
    Pointing author;
    QVERIFY(author.isOpen);
    const QSize before = author.Overlay()->size();

    author.window->resize(800, 600);

    QTRY_VERIFY(author.Overlay()->size() != before);
    QTRY_COMPARE(author.Overlay()->geometry(), author.Find("browserView")->geometry());
}

void BrowserPointerTest::escapeEndsItWhereverTheKeyboardIs()
{
    Pointing author;
    QVERIFY(author.isOpen);
    QSignalSpy stopped(author.Pointer(), &IBrowserPointer::SigStopped);
    author.Find("browserAddress")->setFocus();

    QTest::keyClick(author.window->windowHandle(), Qt::Key_Return);
    QVERIFY(author.Pointer()->IsActive());
    QTest::keyClick(author.window->windowHandle(), Qt::Key_Escape);

    QCOMPARE(stopped.size(), 1);
    QVERIFY(!author.Pointer()->IsActive());
    QTRY_VERIFY(!author.Overlay());
}

void BrowserPointerTest::theKeyboardGoesBackToWhereItWas()
{
    Pointing author;
    QVERIFY(author.isOpen);
    author.Pointer()->Stop();
    author.Find("browserPopup")->setFocus();
    QVERIFY(author.Pointer()->Start(markAll, QString()));
    QVERIFY(!author.Find("browserPopup")->hasFocus());

    QTest::keyClick(author.window->windowHandle(), Qt::Key_Escape);

    QVERIFY(author.Find("browserPopup")->hasFocus());
}

void BrowserPointerTest::endsOnce_data()
{
    QTest::addColumn<QString>("how");
    for (const char* how : {"stopped", "hidden", "reset", "destroyed"})
        QTest::newRow(how) << QString::fromLatin1(how);
}

void BrowserPointerTest::endsOnce()
{
    QFETCH(QString, how);
    Pointing author;
    QVERIFY(author.isOpen);
    QSignalSpy stopped(author.Pointer(), &IBrowserPointer::SigStopped);

    if (how == QLatin1String("stopped"))
        author.Pointer()->Stop();
    else if (how == QLatin1String("hidden"))
        author.browser->hide();
    else if (how == QLatin1String("reset"))
        author.browser->Reset();
    else
        author.window.reset();

    QCOMPARE(stopped.size(), 1);
}

void BrowserPointerTest::aNewStartEndsTheOneBefore()
{
    Pointing author;
    QVERIFY(author.isOpen);
    QSignalSpy stopped(author.Pointer(), &IBrowserPointer::SigStopped);
    QSignalSpy picked(author.Pointer(), &IBrowserPointer::SigPicked);
    author.Click(QPoint(120, 90));

    // What the one before was about to hear is nobody's answer now.
    QVERIFY(author.Pointer()->Start(QStringLiteral("(x, y) => ({x: 2 * x, y: 3 * y})"), QString()));
    QCOMPARE(stopped.size(), 1);
    QTRY_COMPARE(author.window->findChildren<QWidget*>(QStringLiteral("browserPointerOverlay")).size(), 1);
    author.Click(QPoint(130, 70));

    QTRY_COMPARE(PointOf(picked, 0), QPointF(260, 210));
}

RPA_TEST_MAIN(BrowserPointerTest)
#include "tst_browserpointer.moc"
