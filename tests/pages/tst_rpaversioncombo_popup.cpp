// SPDX-License-Identifier: Apache-2.0

#include "RpaVersionItem.h"
#include "TestApp.h"
#include "VersionComboFixture.h"

#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTimer>
#include <QtTest>

// When the popup opens and closes, and what it shows.
class TestRpaVersionComboPopup : public VersionComboFixture
{
    Q_OBJECT

private slots:
    void togglesThePopupByItsFace();
    void togglesThePopupByWholeClicksOnItsName();
    void picksTheRowThatIsClickedInTheOpenList();
    void outlivesOnlyTheReleaseOfThePressThatOpenedIt();
    void opensByKey_data();
    void opensByKey();
    void leavesOtherKeysToItsWindow();
    void marksNoRowAfterItWasCleared();

    void closesThePopupBeforeItAnnouncesADeletion();
    void keepsItsNameAfterADeletionPress();
    void forgetsAnOutsideCloseAfterItsGrace();
    void opensWithAStoppedTimer();
    void reopensAtTheTop();
    void opensForTheLeftButtonOnly();
    void leavesThePressToItsLineEdit();
    void staysClosedWhileDisabled();
    void marksTheCurrentRowInThePopup();
    void showsEveryRowThatIsScrolledTo();
    void showsRowsThatWereAddedWhileItWasOpen();
    void buildsOnlyTheRowsThatWereSeen();
};

void TestRpaVersionComboPopup::togglesThePopupByItsFace()
{
    // given
    Fill(3);
    PressFace();
    QVERIFY(IsPopupOpen());

    // when Qt closes the popup for the press outside it, and then hands the press to the line edit
    combo->hidePopup();
    PressFace();

    // then
    QVERIFY(!IsPopupOpen());
    PressFace();
    QVERIFY(IsPopupOpen());
    // A press while it is open closes it as well.
    PressFace();
    QVERIFY(!IsPopupOpen());
}

void TestRpaVersionComboPopup::togglesThePopupByWholeClicksOnItsName()
{
    // given
    Fill(3);
    combo->SetCurrentIndex(1);
    QVERIFY(QTest::qWaitForWindowExposed(combo.get()));
    QSignalSpy selected(combo.get(), &RpaVersionCombo::SigSelectVersion);
    const QPoint name = combo->lineEdit()->geometry().center();
    const auto* grace = combo->findChild<QTimer*>(QString(), Qt::FindDirectChildrenOnly);

    for (int round = 0; round < 3; ++round) {
        // when
        QTest::mouseClick(combo->windowHandle(), Qt::LeftButton, Qt::NoModifier, name);

        // then
        QVERIFY2(IsPopupOpen(), qPrintable(QString::number(round)));
        QTest::mouseClick(combo->windowHandle(), Qt::LeftButton, Qt::NoModifier, name);
        QVERIFY(!IsPopupOpen());
        QTRY_VERIFY(!grace->isActive());
    }
    QCOMPARE(selected.size(), 0);
    QCOMPARE(combo->lineEdit()->text(), Text("版本1"));
}

void TestRpaVersionComboPopup::picksTheRowThatIsClickedInTheOpenList()
{
    // given
    Fill(3);
    combo->SetCurrentIndex(1);
    QSignalSpy selected(combo.get(), &RpaVersionCombo::SigSelectVersion);
    ClickFace();

    // when
    QTest::mouseClick(list->window()->windowHandle(), Qt::LeftButton, Qt::NoModifier,
                      list->viewport()->mapTo(list->window(), list->visualItemRect(list->item(2)).center()));

    // then
    QVERIFY(!IsPopupOpen());
    QCOMPARE(selected.size(), 1);
    QCOMPARE(selected.constFirst().constFirst(), QVariant(QStringLiteral("id2")));
    QCOMPARE(combo->lineEdit()->text(), Text("版本2"));
}

void TestRpaVersionComboPopup::outlivesOnlyTheReleaseOfThePressThatOpenedIt()
{
    // given
    Fill(3);
    ClickFace();
    QVERIFY(IsPopupOpen());

    // when a later release comes to the popup beside its rows
    QMouseEvent release(QEvent::MouseButtonRelease, QPointF(-5, -5), Qt::LeftButton, Qt::NoButton,
                        Qt::NoModifier);
    QApplication::sendEvent(list->window(), &release);

    // then
    QVERIFY(!IsPopupOpen());
}

void TestRpaVersionComboPopup::opensByKey_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<bool>("isOpen");
    QTest::newRow("up") << int(Qt::Key_Up) << true;
    QTest::newRow("down") << int(Qt::Key_Down) << true;
    QTest::newRow("F4") << int(Qt::Key_F4) << true;
    QTest::newRow("space") << int(Qt::Key_Space) << true;
    QTest::newRow("a letter") << int(Qt::Key_A) << false;
    QTest::newRow("page down") << int(Qt::Key_PageDown) << false;
}

void TestRpaVersionComboPopup::opensByKey()
{
    QFETCH(int, key);
    QFETCH(bool, isOpen);
    Fill(3);

    QTest::keyClick(combo.get(), Qt::Key(key));

    QCOMPARE(IsPopupOpen(), isOpen);
}

void TestRpaVersionComboPopup::leavesOtherKeysToItsWindow()
{
    QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
    escape.accept();
    QApplication::sendEvent(combo.get(), &escape);
    QVERIFY(!escape.isAccepted());

    QKeyEvent down(QEvent::KeyPress, Qt::Key_Down, Qt::NoModifier);
    QApplication::sendEvent(combo.get(), &down);
    QVERIFY(down.isAccepted());
}

void TestRpaVersionComboPopup::marksNoRowAfterItWasCleared()
{
    // given
    Fill(3);
    combo->SetCurrentIndex(1);
    combo->showPopup();
    QCOMPARE(list->currentRow(), 1);
    combo->hidePopup();

    // when
    combo->Clear();
    Fill(3);
    combo->showPopup();

    // then
    QCOMPARE(list->currentRow(), -1);
}

void TestRpaVersionComboPopup::closesThePopupBeforeItAnnouncesADeletion()
{
    // given
    Fill(1);
    combo->showPopup();
    bool openThen = true;
    QVariant announced;
    connect(combo.get(), &RpaVersionCombo::SigDeleteVersion, this, [&](const QVariant& data) {
        openThen = IsPopupOpen();
        announced = data;
    });
    QEvent enter(QEvent::Enter);
    QApplication::sendEvent(Row(0), &enter);

    // when
    QTest::mouseClick(Row(0)->findChild<QPushButton*>(QStringLiteral("rpa_version_combo_delete")),
                      Qt::LeftButton);

    // then
    QCOMPARE(announced, QVariant(QStringLiteral("id0")));
    QVERIFY(!openThen);
    QCOMPARE(combo->GetRowCount(), 1);
}

void TestRpaVersionComboPopup::keepsItsNameAfterADeletionPress()
{
    // given
    Fill(2);
    combo->SetCurrentIndex(1);
    QSignalSpy selected(combo.get(), &RpaVersionCombo::SigSelectVersion);
    combo->showPopup();

    // when
    emit Row(0)->SigDelete(Row(0)->GetData());

    // then
    QVERIFY(!combo->findChild<QTimer*>(QString(), Qt::FindDirectChildrenOnly)->isActive());
    QCOMPARE(selected.size(), 0);
    QCOMPARE(combo->lineEdit()->text(), Text("版本1"));
    PressFace();
    QVERIFY(IsPopupOpen());
}

void TestRpaVersionComboPopup::forgetsAnOutsideCloseAfterItsGrace()
{
    // given
    Fill(2);
    auto* timer = combo->findChild<QTimer*>(QString(), Qt::FindDirectChildrenOnly);
    combo->showPopup();

    // when
    combo->hidePopup();

    // then
    QVERIFY(timer->isActive());
    QCOMPARE(timer->interval(), 100);
    QTRY_VERIFY(!timer->isActive());
    PressFace();
    QVERIFY(IsPopupOpen());
}

void TestRpaVersionComboPopup::opensWithAStoppedTimer()
{
    // given
    Fill(2);
    auto* timer = combo->findChild<QTimer*>(QString(), Qt::FindDirectChildrenOnly);
    combo->showPopup();
    combo->hidePopup();
    QVERIFY(timer->isActive());

    // when
    combo->showPopup();

    // then
    QVERIFY(!timer->isActive());
    PressRow(0);
    QVERIFY(!timer->isActive());
}

void TestRpaVersionComboPopup::reopensAtTheTop()
{
    // given
    Fill(60);
    combo->showPopup();
    list->verticalScrollBar()->setValue(list->verticalScrollBar()->maximum());

    // when
    combo->hidePopup();

    // then
    QCOMPARE(list->verticalScrollBar()->value(), 0);
}

void TestRpaVersionComboPopup::opensForTheLeftButtonOnly()
{
    Fill(1);

    QTest::mousePress(combo->lineEdit(), Qt::RightButton);

    QVERIFY(!IsPopupOpen());
}

void TestRpaVersionComboPopup::leavesThePressToItsLineEdit()
{
    // given
    Fill(1);
    combo->SetCurrentIndex(0);
    QCOMPARE(combo->lineEdit()->cursorPosition(), 0);

    // when
    QTest::mouseClick(combo->lineEdit(), Qt::LeftButton, {},
                      combo->lineEdit()->rect().center() + QPoint(combo->lineEdit()->width() / 3, 0));

    // then
    QCOMPARE(combo->lineEdit()->cursorPosition(), Text("版本0").size());
}

void TestRpaVersionComboPopup::staysClosedWhileDisabled()
{
    Fill(1);
    combo->setEnabled(false);

    QMouseEvent press(QEvent::MouseButtonPress, QPointF(2, 2), Qt::LeftButton, Qt::LeftButton,
                      Qt::NoModifier);
    QApplication::sendEvent(combo->lineEdit(), &press);

    QVERIFY(!IsPopupOpen());
}

void TestRpaVersionComboPopup::marksTheCurrentRowInThePopup()
{
    // given
    Fill(60);
    combo->SetCurrentIndex(40);

    // when
    combo->showPopup();

    // then
    QCOMPARE(list->currentRow(), 40);
    QCOMPARE(list->selectedItems(), QList<QListWidgetItem*>{list->item(40)});
    QCOMPARE(list->verticalScrollBar()->value(), 0);
    combo->hidePopup();
    combo->RemoveRow(Text("版本3"));
    combo->showPopup();
    QCOMPARE(list->currentRow(), 39);
    combo->hidePopup();
    combo->SetCurrentIndex(-1);
    combo->showPopup();
    QCOMPARE(list->currentRow(), -1);
}

void TestRpaVersionComboPopup::showsEveryRowThatIsScrolledTo()
{
    // given
    Fill(200);
    combo->showPopup();

    for (int value : {0, 1, 57, 120, list->verticalScrollBar()->maximum(), 3}) {
        // when
        list->verticalScrollBar()->setValue(value);

        // then
        for (int i = 0; i < list->count(); ++i) {
            const QRect place = list->visualItemRect(list->item(i));
            const bool inSight = place.intersects(list->viewport()->rect());
            QCOMPARE(Row(i)->isVisible(), inSight);
            if (inSight)
                QCOMPARE(Row(i)->geometry(), place);
        }
    }
}

void TestRpaVersionComboPopup::showsRowsThatWereAddedWhileItWasOpen()
{
    // given
    Fill(3);
    combo->showPopup();

    // when
    combo->AddRow(Text("新的"), QString(), QStringLiteral("new"), 1);
    combo->hidePopup();
    combo->showPopup();

    // then
    QTRY_VERIFY(Row(3)->isVisible());
    QCOMPARE(Row(3)->geometry(), list->visualItemRect(list->item(3)));
}

void TestRpaVersionComboPopup::buildsOnlyTheRowsThatWereSeen()
{
    // given
    Fill(300);
    QCoreApplication::processEvents();

    // when
    combo->showPopup();

    // then
    int built = 0;
    for (int i = 0; i < list->count(); ++i)
        built += Row(i)->findChild<QLabel*>() ? 1 : 0;
    QVERIFY2(built >= 1 && built <= 12, qPrintable(QString::number(built)));
}

RPA_TEST_MAIN(TestRpaVersionComboPopup)

#include "tst_rpaversioncombo_popup.moc"
