// SPDX-License-Identifier: Apache-2.0

#include "ModalDriver.h"
#include "TestApp.h"
#include "ToastWatcher.h"

#include <WbBaseUI/RpaTabBar.h>

#include <QApplication>
#include <QMenu>
#include <QMouseEvent>
#include <QSignalSpy>
#include <QTabBar>
#include <QToolButton>
#include <QtTest>

#include <memory>

namespace
{
// Carries out what the bar announces, as its owner does.
class Owner : public QObject
{
    Q_OBJECT

public:
    Owner(RpaTabBar* b, const QStringList& names) : bar(b), list(names)
    {
        bar->Initialize(list);
        connect(bar, &RpaTabBar::SigTabMoved, this, [this](int from, int to) {
            bar->SwapTab(from, to);
            list.swapItemsAt(from, to);
        });
        connect(bar, &RpaTabBar::SigDeleteTab, this, [this](int index) {
            bar->RemoveTab(index);
            list.removeAt(index);
        });
    }

    RpaTabBar* bar;
    QStringList list;
};

const QStringList threeTabs = {QStringLiteral("开始"), QStringLiteral("登录信息"), QStringLiteral("结果")};

void MoveMouse(QWidget* widget, const QPoint& position)
{
    QMouseEvent move(QEvent::MouseMove, position, widget->mapToGlobal(position), Qt::NoButton, Qt::LeftButton,
                     Qt::NoModifier);
    QApplication::sendEvent(widget, &move);
}
} // namespace

class TestTabBar : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void startsWithTheFirstTab();
    void announcesTheClickedTab();
    void makesAnAddedTabCurrent();
    void asksForANewTab();
    void walksWithTheArrowKeys();
    void asksForARename_data();
    void asksForARename();
    void asksBeforeDeleting_data();
    void asksBeforeDeleting();
    void neverDeletesTheLastTab();
    void announcesTheNeighbourBeforeTheCurrentTabGoes_data();
    void announcesTheNeighbourBeforeTheCurrentTabGoes();
    void removesAnotherTabSilently();
    void keepsTheCurrentTabWhenTabsAreSwapped();
    void movesWithTheKeyboard();
    void movesByDragging();
    void staysWhenTheOwnerRefusesAMove();
    void doesNotMoveOnAClick();
    void offersItsGesturesInAMenu();
    void isTakenAwayWhileItsMenuIsOpen();
    void scrollsInsteadOfGrowing();
    void ignoresIndexesOutOfRange();

private:
    QString TextAt(int index) const { return strip->tabText(index); }
    QStringList Texts() const
    {
        QStringList texts;
        for (int i = 0; i < strip->count(); ++i)
            texts.append(strip->tabText(i));
        return texts;
    }

    std::unique_ptr<RpaTabBar> bar;
    QTabBar* strip = nullptr;
};

void TestTabBar::init()
{
    bar = std::make_unique<RpaTabBar>();
    strip = bar->findChild<QTabBar*>();
    bar->resize(800, 40);
    bar->show();
    QVERIFY(QTest::qWaitForWindowActive(bar.get()));
}

void TestTabBar::startsWithTheFirstTab()
{
    QSignalSpy changed(bar.get(), &RpaTabBar::SigTabChanged);
    QCOMPARE(bar->GetCurrentIndex(), -1);

    bar->Initialize(threeTabs);

    QCOMPARE(bar->GetCurrentIndex(), 0);
    QCOMPARE(Texts(), threeTabs);
    QCOMPARE(changed.count(), 0);
}

void TestTabBar::announcesTheClickedTab()
{
    bar->Initialize(threeTabs);
    QSignalSpy changed(bar.get(), &RpaTabBar::SigTabChanged);

    QTest::mouseClick(strip, Qt::LeftButton, Qt::NoModifier, strip->tabRect(2).center());

    QCOMPARE(changed.count(), 1);
    QCOMPARE(changed.at(0).at(0).toInt(), 2);
    QCOMPARE(bar->GetCurrentIndex(), 2);
}

void TestTabBar::makesAnAddedTabCurrent()
{
    bar->Initialize({});
    QSignalSpy changed(bar.get(), &RpaTabBar::SigTabChanged);

    bar->AddTab(QStringLiteral("一"));
    bar->AddTab(QStringLiteral("二"));

    QCOMPARE(bar->GetCurrentIndex(), 1);
    QCOMPARE(changed.count(), 2);
    QCOMPARE(changed.at(1).at(0).toInt(), 1);
}

void TestTabBar::asksForANewTab()
{
    bar->Initialize(threeTabs);
    QSignalSpy add(bar.get(), &RpaTabBar::SigAddTab);

    auto* button = bar->findChild<QToolButton*>(QStringLiteral("buttonAddTab"));
    QTest::mouseClick(button, Qt::LeftButton);

    QCOMPARE(add.count(), 1);
    QCOMPARE(strip->count(), 3);
    QVERIFY(!button->accessibleName().isEmpty());
}

void TestTabBar::walksWithTheArrowKeys()
{
    bar->Initialize(threeTabs);
    bar->setFocus();
    QTRY_VERIFY(strip->hasFocus());

    QTest::keyClick(strip, Qt::Key_Right);
    QCOMPARE(bar->GetCurrentIndex(), 1);
    QTest::keyClick(strip, Qt::Key_End);
    QCOMPARE(bar->GetCurrentIndex(), 2);
    QTest::keyClick(strip, Qt::Key_Left);
    QCOMPARE(bar->GetCurrentIndex(), 1);
    QTest::keyClick(strip, Qt::Key_Home);
    QCOMPARE(bar->GetCurrentIndex(), 0);
}

void TestTabBar::asksForARename_data()
{
    QTest::addColumn<bool>("byKey");

    QTest::newRow("double click") << false;
    QTest::newRow("F2") << true;
}

void TestTabBar::asksForARename()
{
    QFETCH(bool, byKey);
    bar->Initialize(threeTabs);
    QTest::mouseClick(strip, Qt::LeftButton, Qt::NoModifier, strip->tabRect(1).center());
    QSignalSpy rename(bar.get(), &RpaTabBar::SigRenameTab);

    if (byKey)
        QTest::keyClick(strip, Qt::Key_F2);
    else
        QTest::mouseDClick(strip, Qt::LeftButton, Qt::NoModifier, strip->tabRect(1).center());

    QCOMPARE(rename.count(), 1);
    QCOMPARE(rename.at(0).at(0).toInt(), 1);
    bar->SetTabText(1, QStringLiteral("新名"));
    QCOMPARE(TextAt(1), QStringLiteral("新名"));
}

void TestTabBar::asksBeforeDeleting_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<int>("announced");

    QTest::newRow("yes") << QStringLiteral("是") << 1;
    QTest::newRow("no") << QStringLiteral("否") << 0;
}

void TestTabBar::asksBeforeDeleting()
{
    QFETCH(QString, button);
    QFETCH(int, announced);
    bar->Initialize(threeTabs);
    QSignalSpy deleted(bar.get(), &RpaTabBar::SigDeleteTab);
    ModalDriver modals;
    modals.Then([&](QWidget* box) { QVERIFY(ModalDriver::Press(box, button)); });

    QTest::keyClick(strip, Qt::Key_Delete);

    QCOMPARE(modals.GetSeenCount(), 1);
    QCOMPARE(deleted.count(), announced);
    QCOMPARE(strip->count(), 3);
}

void TestTabBar::neverDeletesTheLastTab()
{
    bar->Initialize({QStringLiteral("唯一")});
    QSignalSpy deleted(bar.get(), &RpaTabBar::SigDeleteTab);
    ToastWatcher toasts;
    ModalDriver modals;

    QTest::keyClick(strip, Qt::Key_Delete);

    QCOMPARE(modals.GetSeenCount(), 0);
    QCOMPARE(deleted.count(), 0);
    QCOMPARE(toasts.GetTexts(), QStringList{QStringLiteral("至少保留一个标签页")});
}

void TestTabBar::announcesTheNeighbourBeforeTheCurrentTabGoes_data()
{
    QTest::addColumn<int>("current");
    QTest::addColumn<int>("announced");
    QTest::addColumn<int>("after");
    QTest::addColumn<QString>("text");

    QTest::newRow("first") << 0 << 1 << 0 << threeTabs.at(1);
    QTest::newRow("middle") << 1 << 2 << 1 << threeTabs.at(2);
    QTest::newRow("last") << 2 << 1 << 1 << threeTabs.at(1);
}

void TestTabBar::announcesTheNeighbourBeforeTheCurrentTabGoes()
{
    QFETCH(int, current);
    QFETCH(int, announced);
    QFETCH(int, after);
    QFETCH(QString, text);
    bar->Initialize(threeTabs);
    QTest::mouseClick(strip, Qt::LeftButton, Qt::NoModifier, strip->tabRect(current).center());
    QSignalSpy changed(bar.get(), &RpaTabBar::SigTabChanged);

    bar->RemoveTab(current);

    QCOMPARE(changed.count(), 1);
    QCOMPARE(changed.at(0).at(0).toInt(), announced);
    QCOMPARE(bar->GetCurrentIndex(), after);
    QCOMPARE(TextAt(after), text);
}

void TestTabBar::removesAnotherTabSilently()
{
    bar->Initialize(threeTabs);
    QTest::mouseClick(strip, Qt::LeftButton, Qt::NoModifier, strip->tabRect(2).center());
    QSignalSpy changed(bar.get(), &RpaTabBar::SigTabChanged);

    bar->RemoveTab(0);

    QCOMPARE(changed.count(), 0);
    QCOMPARE(bar->GetCurrentIndex(), 1);
    QCOMPARE(TextAt(1), threeTabs.at(2));
}

void TestTabBar::keepsTheCurrentTabWhenTabsAreSwapped()
{
    bar->Initialize(threeTabs);
    QSignalSpy changed(bar.get(), &RpaTabBar::SigTabChanged);

    bar->SwapTab(0, 2);

    QCOMPARE(Texts(), (QStringList{threeTabs.at(2), threeTabs.at(1), threeTabs.at(0)}));
    QCOMPARE(bar->GetCurrentIndex(), 2);
    QCOMPARE(changed.count(), 0);
}

void TestTabBar::movesWithTheKeyboard()
{
    const Owner owner(bar.get(), threeTabs);
    QSignalSpy moved(bar.get(), &RpaTabBar::SigTabMoved);

    QTest::keyClick(strip, Qt::Key_PageUp, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(moved.count(), 0);
    QTest::keyClick(strip, Qt::Key_PageDown, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(moved.count(), 1);
    QCOMPARE(Texts(), (QStringList{threeTabs.at(1), threeTabs.at(0), threeTabs.at(2)}));
    QCOMPARE(bar->GetCurrentIndex(), 1);
    QTest::keyClick(strip, Qt::Key_PageUp, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(Texts(), threeTabs);
}

void TestTabBar::movesByDragging()
{
    const Owner owner(bar.get(), threeTabs);
    const QPoint start = strip->tabRect(0).center();
    const QPoint end(strip->tabRect(2).right() - 2, start.y());

    QTest::mousePress(strip, Qt::LeftButton, Qt::NoModifier, start);
    for (int x = start.x(); x <= end.x(); x += 4)
        MoveMouse(strip, QPoint(x, start.y()));
    MoveMouse(strip, end);
    QTest::mouseRelease(strip, Qt::LeftButton, Qt::NoModifier, end);

    const QStringList expected = {threeTabs.at(1), threeTabs.at(2), threeTabs.at(0)};
    QCOMPARE(Texts(), expected);
    QCOMPARE(owner.list, expected);
    QCOMPARE(bar->GetCurrentIndex(), 2);
}

void TestTabBar::staysWhenTheOwnerRefusesAMove()
{
    bar->Initialize(threeTabs);
    const QPoint start = strip->tabRect(0).center();
    const QPoint end = strip->tabRect(2).center();

    QTest::mousePress(strip, Qt::LeftButton, Qt::NoModifier, start);
    MoveMouse(strip, end);
    QTest::mouseRelease(strip, Qt::LeftButton, Qt::NoModifier, end);

    QCOMPARE(Texts(), threeTabs);
}

void TestTabBar::doesNotMoveOnAClick()
{
    const Owner owner(bar.get(), threeTabs);
    QSignalSpy moved(bar.get(), &RpaTabBar::SigTabMoved);
    const QPoint edge(strip->tabRect(0).right() - 1, strip->tabRect(0).center().y());

    QTest::mousePress(strip, Qt::LeftButton, Qt::NoModifier, edge);
    MoveMouse(strip, edge + QPoint(2, 0));
    QTest::mouseRelease(strip, Qt::LeftButton, Qt::NoModifier, edge + QPoint(2, 0));

    QCOMPARE(moved.count(), 0);
}

void TestTabBar::offersItsGesturesInAMenu()
{
    bar->Initialize(threeTabs);
    QSignalSpy rename(bar.get(), &RpaTabBar::SigRenameTab);
    QTimer::singleShot(0, this, [this] {
        auto* menu = bar->findChild<QMenu*>(QStringLiteral("tabMenu"));
        QVERIFY(menu);
        auto* moveLeft = menu->findChild<QAction*>(QStringLiteral("actionMoveLeft"));
        auto* action = menu->findChild<QAction*>(QStringLiteral("actionRename"));
        QVERIFY(moveLeft->isEnabled() == false);
        menu->setActiveAction(action);
        QTest::keyClick(menu, Qt::Key_Return);
    });

    const QPoint onFirst = strip->tabRect(0).center();
    QContextMenuEvent event(QContextMenuEvent::Mouse, onFirst, strip->mapToGlobal(onFirst));
    QApplication::sendEvent(strip, &event);

    QCOMPARE(rename.count(), 1);
    QCOMPARE(rename.at(0).at(0).toInt(), 0);
}

void TestTabBar::isTakenAwayWhileItsMenuIsOpen()
{
    bar->Initialize(threeTabs);
    QTimer::singleShot(0, this, [this] { bar.reset(); });

    const QPoint onFirst = strip->tabRect(0).center();
    QContextMenuEvent event(QContextMenuEvent::Mouse, onFirst, strip->mapToGlobal(onFirst));
    QApplication::sendEvent(strip, &event);

    QVERIFY(!bar);
    QVERIFY(!QApplication::activePopupWidget());
}

void TestTabBar::scrollsInsteadOfGrowing()
{
    QStringList many;
    for (int i = 0; i < 60; ++i)
        many.append(QStringLiteral("界面 %1").arg(i));
    bar->resize(400, 40);

    bar->Initialize(many);

    QVERIFY(bar->minimumSizeHint().width() < 400);
    auto* button = bar->findChild<QToolButton*>(QStringLiteral("buttonAddTab"));
    QTRY_VERIFY(button->geometry().right() < 400);
    QTest::keyClick(strip, Qt::Key_End);
    QTRY_VERIFY(strip->rect().intersects(strip->tabRect(59)));
}

void TestTabBar::ignoresIndexesOutOfRange()
{
    bar->Initialize(threeTabs);

    bar->RemoveTab(-1);
    bar->RemoveTab(3);
    bar->SwapTab(0, 3);
    bar->SetTabText(7, QStringLiteral("x"));

    QCOMPARE(Texts(), threeTabs);
}

RPA_TEST_MAIN(TestTabBar)
#include "tst_tabbar.moc"
