// SPDX-License-Identifier: Apache-2.0

#include <OxBase/OxBlocker.h>

#include <QCloseEvent>
#include <QDialog>
#include <QDragEnterEvent>
#include <QElapsedTimer>
#include <QMimeData>
#include <QPushButton>
#include <QShortcut>
#include <QTimer>
#include <QWheelEvent>
#include <QtTest>

#include <chrono>
#include <memory>

using namespace std::chrono_literals;

namespace
{
// Counts the input that gets through to it.
class Window : public QWidget
{
public:
    Window()
    {
        setAcceptDrops(true);
        button.setGeometry(0, 0, 50, 30);
        connect(&button, &QPushButton::clicked, this, [this] { ++inputs; });
        show();
    }

    int inputs = 0;
    QPushButton button{this};

protected:
    void mousePressEvent(QMouseEvent*) override { ++inputs; }
    void keyPressEvent(QKeyEvent*) override { ++inputs; }
    void wheelEvent(QWheelEvent*) override { ++inputs; }
    void contextMenuEvent(QContextMenuEvent*) override { ++inputs; }
    void dragEnterEvent(QDragEnterEvent*) override { ++inputs; }
    void closeEvent(QCloseEvent*) override { ++inputs; }
};

// As the window system sends it.
void SendSpontaneously(QObject& receiver, QEvent& event)
{
    QSpontaneKeyEvent::setSpontaneous(&event);
    // sendEvent() would take the mark away.
    qApp->notify(&receiver, &event);
}

void UseEveryInput(Window& window)
{
    QTest::mouseClick(&window, Qt::LeftButton, Qt::NoModifier, QPoint(90, 90));
    QTest::mouseDClick(&window, Qt::LeftButton, Qt::NoModifier, QPoint(90, 90));
    QTest::mouseClick(&window.button, Qt::LeftButton);
    QTest::keyClick(&window, Qt::Key_A);
    QTest::keyClick(&window.button, Qt::Key_Space);
    QWheelEvent wheel(QPointF(5, 5), QPointF(5, 5), QPoint(), QPoint(0, 120), Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    SendSpontaneously(window, wheel);
    QContextMenuEvent menu(QContextMenuEvent::Mouse, QPoint(5, 5));
    SendSpontaneously(window, menu);
    const QMimeData data;
    QDragEnterEvent drag(QPoint(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    SendSpontaneously(window, drag);
    QCloseEvent close;
    SendSpontaneously(window, close);
}

// Runs during the wait, as the wait's event loop turns.
void Soon(const std::function<void()>& act)
{
    QTimer::singleShot(0, qApp, act);
}
} // namespace

class OxBlockerTest : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();
    void waitsUntilItIsContinued();
    void carriesTheValueThatEndedTheWait();
    void keepsTheFirstEnd();
    void keepsAnEndThatCameBeforeTheWait();
    void canWaitAgain();
    void endsWithItsTimeLimit();
    void endsWhenNothingIsOutstanding();
    void endsWhenNothingEverWasOutstanding();
    void waitsWhileSomethingIsOutstanding();
    void takesAnAnswerThatPassesThroughTheQueue();
    void endsWhenTheApplicationQuits();
    void endsWhenItIsDestroyed();
    void nests();
    void ignoresASecondWaitOfTheSameBlocker();
    void holdsInputBack();
    void holdsShortcutsBack();
    void letsProgramsCloseTheirWindows();
    void letsTimersAndSignalsRun();
    void letsInputPassToALaterModalDialog();
    void holdsInputToAnEarlierModalDialogBack();
    void tellsThatSomebodyWaits();
};

void OxBlockerTest::cleanup()
{
    OxBlocker::SetOutstandingQuery(nullptr);
}

void OxBlockerTest::waitsUntilItIsContinued()
{
    OxBlocker blocker;
    Soon([&] { blocker.Continue(); });

    blocker.Block(0);

    QVERIFY(!blocker.GetResult().isValid());
}

void OxBlockerTest::carriesTheValueThatEndedTheWait()
{
    OxBlocker blocker;
    Soon([&] { blocker.ContinueWith(true); });

    blocker.Block(0);

    QCOMPARE(blocker.GetResult(), QVariant(true));
}

void OxBlockerTest::keepsTheFirstEnd()
{
    OxBlocker blocker;
    Soon([&] {
        blocker.ContinueWith(1);
        blocker.ContinueWith(2);
        blocker.Continue();
    });

    blocker.Block(0);

    QCOMPARE(blocker.GetResult(), QVariant(1));
}

void OxBlockerTest::keepsAnEndThatCameBeforeTheWait()
{
    OxBlocker blocker;
    blocker.ContinueWith(7);

    blocker.Block(0);

    QCOMPARE(blocker.GetResult(), QVariant(7));
}

void OxBlockerTest::canWaitAgain()
{
    OxBlocker blocker;
    Soon([&] { blocker.ContinueWith(1); });
    blocker.Block(0);
    Soon([&] { blocker.Continue(); });

    blocker.Block(0);

    QVERIFY(!blocker.GetResult().isValid());
}

void OxBlockerTest::endsWithItsTimeLimit()
{
    OxBlocker blocker;
    QElapsedTimer time;
    time.start();

    blocker.Block(30);

    QVERIFY(time.elapsed() >= 25);
    QVERIFY(!blocker.GetResult().isValid());
}

void OxBlockerTest::endsWhenNothingIsOutstanding()
{
    bool outstanding = true;
    OxBlocker::SetOutstandingQuery([&] { return outstanding; });
    OxBlocker blocker;
    Soon([&] { outstanding = false; });

    blocker.Block(0);

    QVERIFY(!blocker.GetResult().isValid());
}

void OxBlockerTest::endsWhenNothingEverWasOutstanding()
{
    OxBlocker::SetOutstandingQuery([] { return false; });
    OxBlocker blocker;
    QElapsedTimer time;
    time.start();

    blocker.Block(0);

    QVERIFY(!blocker.GetResult().isValid());
    QVERIFY(time.elapsed() < 2000);
}

void OxBlockerTest::waitsWhileSomethingIsOutstanding()
{
    int questions = 0;
    OxBlocker blocker;
    OxBlocker::SetOutstandingQuery([&] {
        if (++questions == 4)
            blocker.ContinueWith(true);
        return true;
    });

    blocker.Block(0);

    QCOMPARE(blocker.GetResult(), QVariant(true));
}

void OxBlockerTest::takesAnAnswerThatPassesThroughTheQueue()
{
    // The request leaves the list first, its answer is delivered by the next turn of the loop.
    bool outstanding = true;
    OxBlocker blocker;
    OxBlocker::SetOutstandingQuery([&] {
        if (outstanding) {
            outstanding = false;
            Soon([&] { blocker.ContinueWith(true); });
        }
        return outstanding;
    });

    blocker.Block(0);

    QCOMPARE(blocker.GetResult(), QVariant(true));
}

void OxBlockerTest::endsWhenTheApplicationQuits()
{
    OxBlocker blocker;
    bool returned = false;
    Soon([&] {
        Soon([] { QCoreApplication::quit(); });
        blocker.Block(0);
        returned = true;
    });

    QCoreApplication::exec();

    QVERIFY(returned);
    QVERIFY(!blocker.GetResult().isValid());
}

void OxBlockerTest::endsWhenItIsDestroyed()
{
    auto blocker = std::make_unique<OxBlocker>();
    Soon([&] { blocker.reset(); });

    blocker->Block(0);

    QVERIFY(!blocker);
    QVERIFY(!OxBlocker::IsBlocking());
}

void OxBlockerTest::nests()
{
    OxBlocker outer;
    OxBlocker inner;
    QStringList ends;
    Soon([&] {
        Soon([&] {
            outer.ContinueWith(1);
            Soon([&] { inner.ContinueWith(2); });
        });
        inner.Block(0);
        ends << QStringLiteral("inner");
    });

    outer.Block(0);
    ends << QStringLiteral("outer");

    QCOMPARE(ends, (QStringList{QStringLiteral("inner"), QStringLiteral("outer")}));
    QCOMPARE(outer.GetResult(), QVariant(1));
    QCOMPARE(inner.GetResult(), QVariant(2));
}

void OxBlockerTest::ignoresASecondWaitOfTheSameBlocker()
{
    OxBlocker blocker;
    bool returned = false;
    Soon([&] {
        blocker.Block(0);
        returned = true;
        blocker.Continue();
    });

    blocker.Block(0);

    QVERIFY(returned);
}

void OxBlockerTest::holdsInputBack()
{
    Window window;
    UseEveryInput(window);
    const int before = window.inputs;
    QVERIFY(before >= 8);
    window.show();
    OxBlocker blocker;
    Soon([&] {
        UseEveryInput(window);
        blocker.Continue();
    });

    blocker.Block(0);

    QCOMPARE(window.inputs, before);
    QVERIFY(window.isVisible());
    UseEveryInput(window);
    QCOMPARE(window.inputs, 2 * before);
}

void OxBlockerTest::holdsShortcutsBack()
{
    Window window;
    int activations = 0;
    QShortcut shortcut(QKeySequence(Qt::CTRL + Qt::Key_S), &window);
    connect(&shortcut, &QShortcut::activated, &window, [&] { ++activations; });
    QShortcutEvent pressed(shortcut.key(), shortcut.id());
    OxBlocker blocker;
    Soon([&] {
        QCoreApplication::sendEvent(&shortcut, &pressed);
        blocker.Continue();
    });

    blocker.Block(0);

    QCOMPARE(activations, 0);
    QCoreApplication::sendEvent(&shortcut, &pressed);
    QCOMPARE(activations, 1);
}

void OxBlockerTest::letsProgramsCloseTheirWindows()
{
    Window window;
    OxBlocker blocker;
    Soon([&] {
        window.close();
        blocker.Continue();
    });

    blocker.Block(0);

    QVERIFY(!window.isVisible());
}

void OxBlockerTest::letsTimersAndSignalsRun()
{
    Window window;
    OxBlocker blocker;
    int turns = 0;
    QTimer timer;
    connect(&timer, &QTimer::timeout, &blocker, [&] {
        window.button.click();
        if (++turns == 3)
            blocker.Continue();
    });
    timer.start(1ms);

    blocker.Block(0);

    QCOMPARE(turns, 3);
    QCOMPARE(window.inputs, 3);
}

void OxBlockerTest::letsInputPassToALaterModalDialog()
{
    // The dialog's loop runs inside the wait: without an answer neither could end.
    OxBlocker blocker;
    int answer = 0;
    Soon([&] {
        QDialog dialog;
        QPushButton ok(QStringLiteral("ok"), &dialog);
        connect(&ok, &QPushButton::clicked, &dialog, &QDialog::accept);
        Soon([&] { QTest::mouseClick(&ok, Qt::LeftButton); });
        answer = dialog.exec();
        blocker.Continue();
    });

    blocker.Block(0);

    QCOMPARE(answer, int(QDialog::Accepted));
}

void OxBlockerTest::holdsInputToAnEarlierModalDialogBack()
{
    QDialog dialog;
    QPushButton save(QStringLiteral("save"), &dialog);
    int clicks = 0;
    connect(&save, &QPushButton::clicked, &dialog, [&] {
        ++clicks;
        OxBlocker blocker;
        Soon([&] {
            QTest::mouseClick(&save, Qt::LeftButton);
            blocker.Continue();
        });
        blocker.Block(0);
        dialog.accept();
    });
    Soon([&] { QTest::mouseClick(&save, Qt::LeftButton); });

    QCOMPARE(dialog.exec(), int(QDialog::Accepted));

    QCOMPARE(clicks, 1);
}

void OxBlockerTest::tellsThatSomebodyWaits()
{
    OxBlocker blocker;
    bool during = false;
    Soon([&] {
        during = OxBlocker::IsBlocking();
        blocker.Continue();
    });
    QVERIFY(!OxBlocker::IsBlocking());

    blocker.Block(0);

    QVERIFY(during);
    QVERIFY(!OxBlocker::IsBlocking());
}

QTEST_MAIN(OxBlockerTest)
#include "tst_oxblocker.moc"
