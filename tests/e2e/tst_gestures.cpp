// SPDX-License-Identifier: Apache-2.0

// Gestures of a real mouse on a real display, where the window system has a say: popups grab the mouse, and a
// double click is two presses and two releases.

#include "MainWindow.h"
#include "RpaVersionCombo.h"
#include "VirtualDisplay.h"

#include <WbBaseUI/WbTheme.h>

#include <QAbstractItemView>
#include <QLineEdit>
#include <QProcess>
#include <QPushButton>
#include <QSignalSpy>
#include <QtTest>

namespace
{
// The mouse of the display. The windows go on while it acts.
void Mouse(const QStringList& acts)
{
    QProcess mouse;
    mouse.start(QStringLiteral("xdotool"), acts);
    QVERIFY2(mouse.waitForStarted(), "is xdotool installed?");
    QTRY_COMPARE(mouse.state(), QProcess::NotRunning); // a move to where the mouse is already never ends
    QCOMPARE(mouse.exitCode(), 0);
}

QStringList MoveTo(const QWidget* widget, const QPoint& place)
{
    const QPoint at = widget->mapToGlobal(place);
    return {QStringLiteral("mousemove"), QStringLiteral("--sync"), QString::number(at.x()),
            QString::number(at.y())};
}

// Counts what reaches a widget, to know when a gesture has arrived.
class Releases : public QObject
{
    Q_OBJECT

public:
    explicit Releases(Qt::MouseButton counted = Qt::LeftButton) : button(counted)
    {
        qApp->installEventFilter(this);
    }
    int count = 0;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (watched->isWindowType() && event->type() == QEvent::MouseButtonRelease)
            count += static_cast<QMouseEvent*>(event)->button() == button;
        return false;
    }

private:
    const Qt::MouseButton button;
};
} // namespace

class tst_Gestures : public QObject
{
    Q_OBJECT

private slots:
    void theVersionBoxOpensByAClickOnItsName();
    void aDoubleClickOnACardPressesNothingOnThePageItOpens();
};

void tst_Gestures::theVersionBoxOpensByAClickOnItsName()
{
    QWidget window;
    window.resize(600, 400);
    RpaVersionCombo combo(&window);
    combo.setGeometry(100, 60, 200, 32);
    for (int i = 0; i < 3; ++i)
        combo.AddRow(QStringLiteral("版本%1").arg(i), QString(), QStringLiteral("id%1").arg(i), 1);
    combo.SetCurrentIndex(0);
    QSignalSpy picked(&combo, &RpaVersionCombo::SigSelectVersion);
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    const Releases releases;
    const QLineEdit* face = combo.lineEdit();
    const auto* grace = combo.findChild<QTimer*>(QString(), Qt::FindDirectChildrenOnly);

    QApplication::setDoubleClickInterval(1); // each click is one of its own, however fast the display is
    Mouse(MoveTo(face, face->rect().center()));
    for (int round = 1; round <= 3; ++round) {
        Mouse({QStringLiteral("click"), QStringLiteral("1")});
        QTRY_COMPARE(releases.count, 2 * round - 1);
        QVERIFY(combo.view()->isVisible());

        Mouse({QStringLiteral("click"), QStringLiteral("1")});
        QTRY_COMPARE(releases.count, 2 * round);
        QVERIFY(!combo.view()->isVisible());
        QTRY_VERIFY(!grace->isActive());
    }
    QCOMPARE(picked.size(), 0);
}

void tst_Gestures::aDoubleClickOnACardPressesNothingOnThePageItOpens()
{
    QApplication::setDoubleClickInterval(1000); // the second press belongs to the first, however slow this is
    MainWindow window;
    auto* card = new QPushButton(QStringLiteral("卡片")); // the window owns its pages
    auto* run = new QPushButton(QStringLiteral("运行"));
    window.AddPage(card, QString());
    window.AddPage(run, QStringLiteral("返回"));
    connect(card, &QPushButton::clicked, &window, [&] { window.ShowPage(run); });
    QSignalSpy opened(card, &QPushButton::clicked);
    QSignalSpy started(run, &QPushButton::pressed);
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    const Releases releases;
    const Releases others(Qt::RightButton);
    Mouse(MoveTo(&window, window.rect().center()));

    for (int round = 1; round <= 3; ++round) {
        Mouse({QStringLiteral("click"), QStringLiteral("--repeat"), QStringLiteral("2"),
               QStringLiteral("--delay"), QStringLiteral("40"), QStringLiteral("1")});
        QTRY_COMPARE(releases.count, 2 * round);
        QCOMPARE(opened.size(), round);
        QCOMPARE(started.size(), 0);
        window.ShowPage(card);
        // Another button ends the row of clicks.
        Mouse({QStringLiteral("click"), QStringLiteral("3")});
        QTRY_COMPARE(others.count, round);
    }
}

int main(int argc, char** argv)
{
    VirtualDisplay display;
    if (!display.Start(1440, 900))
        qFatal("no display: %s", qPrintable(display.GetProblem()));
    QApplication application(argc, argv);
    WbTheme::Instance()->Apply(WbTheme::Scheme::Light);
    tst_Gestures test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_gestures.moc"
