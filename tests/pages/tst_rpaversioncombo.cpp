#include "OrderRecorder.h"
#include "RpaVersionCombo.h"
#include "RpaVersionItem.h"
#include "TestApp.h"

#include <OxBase/DpiTool.h>

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTimer>
#include <QWheelEvent>
#include <QtTest>

#include <memory>

namespace
{

QString Text(const char* utf8)
{
    return QString::fromUtf8(utf8);
}

const QVariant emptyText = QVariant(QString());

} // namespace

class TestRpaVersionCombo : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void ignoresTheMouseWheel();
    void closesWithoutASignalWhenTheCurrentRowIsPressed();
    void answersEmptyOutsideTheList_data();
    void answersEmptyOutsideTheList();
    void findsNoIndexOfUnlistedData();
    void clearsFiveRows();
    void togglesThePopupByItsFace();

    void selectsOnPressNotOnRelease();
    void picksTheEmptyDefaultRow();
    void setsTheCurrentRowWithoutASignal();
    void setsNothingCurrentForAMissingRow();
    void findsTheFirstRowWithData();
    void removesTheFirstRowOfAName();
    void closesThePopupBeforeItAnnouncesADeletion();
    void keepsItsNameAfterADeletionPress();
    void forgetsAnOutsideCloseAfterItsGrace();
    void opensWithAStoppedTimer();
    void reopensAtTheTop();
    void neverShowsItsTextSelected();
    void opensForTheLeftButtonOnly();
    void staysClosedWhileDisabled();
    void keepsItsNameWhenAKeyPicksARow();
    void pickByKeyBehavesLikeAPress();
    void marksTheCurrentRowInThePopup();
    void isMadeAsItsStyleSheetExpects();
    void showsEveryRowThatIsScrolledTo();
    void showsRowsThatWereAddedWhileItWasOpen();
    void buildsOnlyTheRowsThatWereSeen();

private:
    void Fill(int rows);
    RpaVersionItem* Row(int index) const;
    void PressRow(int index) const;
    void PressFace() const { QTest::mousePress(combo->lineEdit(), Qt::LeftButton); }
    bool IsPopupOpen() const { return list->isVisible(); }

    std::unique_ptr<RpaVersionCombo> combo;
    QListWidget* list = nullptr;
};

void TestRpaVersionCombo::init()
{
    combo = std::make_unique<RpaVersionCombo>();
    combo->resize(200, 30);
    list = qobject_cast<QListWidget*>(combo->view());
    combo->show();
}

void TestRpaVersionCombo::cleanup()
{
    combo.reset();
}

void TestRpaVersionCombo::Fill(int rows)
{
    for (int i = 0; i < rows; ++i) {
        combo->AddRow(Text("版本%1").arg(i), Text("说明%1").arg(i), QStringLiteral("id%1").arg(i), 1 + i % 3);
    }
}

RpaVersionItem* TestRpaVersionCombo::Row(int index) const
{
    return qobject_cast<RpaVersionItem*>(list->itemWidget(list->item(index)));
}

void TestRpaVersionCombo::PressRow(int index) const
{
    QTest::mousePress(list->viewport(), Qt::LeftButton, Qt::NoModifier,
                      list->visualItemRect(list->item(index)).center());
}

void TestRpaVersionCombo::ignoresTheMouseWheel()
{
    // given
    Fill(3);
    combo->SetCurrentIndex(1);
    QSignalSpy selected(combo.get(), &RpaVersionCombo::SigSelectVersion);

    // when
    for (int delta : {-120, 120}) {
        QWheelEvent wheel(QPointF(5, 5), combo->mapToGlobal(QPoint(5, 5)), QPoint(), QPoint(0, delta),
                          Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(combo.get(), &wheel);
    }

    // then
    QCOMPARE(combo->GetCurrentData(), QVariant(QStringLiteral("id1")));
    QCOMPARE(combo->lineEdit()->text(), Text("版本1"));
    QCOMPARE(selected.size(), 0);
}

void TestRpaVersionCombo::closesWithoutASignalWhenTheCurrentRowIsPressed()
{
    // given
    Fill(3);
    combo->SetCurrentIndex(1);
    QSignalSpy selected(combo.get(), &RpaVersionCombo::SigSelectVersion);
    combo->showPopup();
    QVERIFY(IsPopupOpen());

    // when
    PressRow(1);

    // then
    QVERIFY(!IsPopupOpen());
    QCOMPARE(selected.size(), 0);
    QCOMPARE(combo->GetCurrentName(), Text("版本1"));
}

void TestRpaVersionCombo::answersEmptyOutsideTheList_data()
{
    QTest::addColumn<int>("index");
    QTest::newRow("the count") << 3;
    QTest::newRow("beyond") << 300;
    QTest::newRow("negative") << -1;
}

void TestRpaVersionCombo::answersEmptyOutsideTheList()
{
    QFETCH(int, index);
    Fill(3);

    QCOMPARE(combo->GetDataAt(index), emptyText);
    QVERIFY(combo->GetDataAt(index).isValid());
    QCOMPARE(combo->GetNameAt(index), QString());
}

void TestRpaVersionCombo::findsNoIndexOfUnlistedData()
{
    Fill(3);

    QCOMPARE(combo->GetIndexOfData(QStringLiteral("id9")), -1);
}

void TestRpaVersionCombo::clearsFiveRows()
{
    // given
    Fill(5);
    combo->SetCurrentIndex(2);

    // when
    combo->Clear();

    // then
    QCOMPARE(combo->GetRowCount(), 0);
    QCOMPARE(combo->GetCurrentName(), QString());
    QVERIFY(!combo->GetCurrentData().isValid());
    QCOMPARE(combo->lineEdit()->text(), QString());
}

void TestRpaVersionCombo::togglesThePopupByItsFace()
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

void TestRpaVersionCombo::selectsOnPressNotOnRelease()
{
    // given
    Fill(3);
    combo->SetCurrentIndex(0);
    QSignalSpy selected(combo.get(), &RpaVersionCombo::SigSelectVersion);
    combo->showPopup();

    // when
    PressRow(2);

    // then
    QCOMPARE(selected.size(), 1);
    QCOMPARE(selected.constFirst().constFirst(), QVariant(QStringLiteral("id2")));
    QVERIFY(!IsPopupOpen());
    QCOMPARE(combo->lineEdit()->text(), Text("版本2"));
    QCOMPARE(combo->GetCurrentData(), QVariant(QStringLiteral("id2")));
    QTest::mouseRelease(list->viewport(), Qt::LeftButton);
    QCOMPARE(selected.size(), 1);
    QCOMPARE(combo->lineEdit()->text(), Text("版本2"));
}

void TestRpaVersionCombo::picksTheEmptyDefaultRow()
{
    // given
    combo->AddRow(Text("版本1"), Text("默认开发版本"), QString(), 1);
    combo->AddRow(Text("【灰度】版本0"), QString(), QStringLiteral("id0"), 2);
    combo->SetCurrentIndex(1);
    QSignalSpy selected(combo.get(), &RpaVersionCombo::SigSelectVersion);
    combo->showPopup();

    // when
    PressRow(0);

    // then
    QCOMPARE(selected.size(), 1);
    QCOMPARE(selected.constFirst().constFirst(), emptyText);
    QCOMPARE(combo->GetCurrentName(), Text("版本1"));
}

void TestRpaVersionCombo::setsTheCurrentRowWithoutASignal()
{
    Fill(3);
    QSignalSpy selected(combo.get(), &RpaVersionCombo::SigSelectVersion);

    combo->SetCurrentIndex(2);

    QCOMPARE(combo->GetCurrentName(), Text("版本2"));
    QCOMPARE(combo->GetCurrentData(), QVariant(QStringLiteral("id2")));
    QCOMPARE(combo->lineEdit()->text(), Text("版本2"));
    QCOMPARE(combo->lineEdit()->cursorPosition(), 0);
    QCOMPARE(selected.size(), 0);
}

void TestRpaVersionCombo::setsNothingCurrentForAMissingRow()
{
    Fill(3);
    combo->SetCurrentIndex(2);

    combo->SetCurrentIndex(-1);

    QCOMPARE(combo->GetCurrentName(), QString());
    QCOMPARE(combo->GetCurrentData(), emptyText);
    QVERIFY(combo->GetCurrentData().isValid());
    QCOMPARE(combo->lineEdit()->text(), QString());
    QCOMPARE(combo->GetRowCount(), 3);
}

void TestRpaVersionCombo::findsTheFirstRowWithData()
{
    Fill(3);
    combo->AddRow(Text("又一个"), QString(), QStringLiteral("id1"), 1);

    QCOMPARE(combo->GetIndexOfData(QStringLiteral("id1")), 1);
    QCOMPARE(combo->GetDataAt(3), QVariant(QStringLiteral("id1")));
    QCOMPARE(combo->GetNameAt(3), Text("又一个"));
}

void TestRpaVersionCombo::removesTheFirstRowOfAName()
{
    // given
    Fill(3);
    combo->AddRow(Text("版本1"), QString(), QStringLiteral("id9"), 1);
    combo->SetCurrentIndex(0);
    QSignalSpy selected(combo.get(), &RpaVersionCombo::SigSelectVersion);
    QSignalSpy deleted(combo.get(), &RpaVersionCombo::SigDeleteVersion);

    // when
    combo->RemoveRow(Text("版本1"));
    combo->RemoveRow(Text("没有"));

    // then
    QCOMPARE(combo->GetRowCount(), 3);
    QCOMPARE(combo->GetIndexOfData(QStringLiteral("id1")), -1);
    QCOMPARE(combo->GetIndexOfData(QStringLiteral("id9")), 2);
    QCOMPARE(combo->lineEdit()->text(), Text("版本0"));
    QCOMPARE(selected.size() + deleted.size(), 0);
}

void TestRpaVersionCombo::closesThePopupBeforeItAnnouncesADeletion()
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

void TestRpaVersionCombo::keepsItsNameAfterADeletionPress()
{
    // given
    Fill(2);
    combo->SetCurrentIndex(1);
    QSignalSpy selected(combo.get(), &RpaVersionCombo::SigSelectVersion);
    combo->showPopup();

    // when
    emit Row(0)->SigDelete(Row(0)->GetData());

    // then
    QCOMPARE(selected.size(), 0);
    QCOMPARE(combo->lineEdit()->text(), Text("版本1"));
    PressFace();
    QVERIFY(IsPopupOpen());
}

void TestRpaVersionCombo::forgetsAnOutsideCloseAfterItsGrace()
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

void TestRpaVersionCombo::opensWithAStoppedTimer()
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

void TestRpaVersionCombo::reopensAtTheTop()
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

void TestRpaVersionCombo::neverShowsItsTextSelected()
{
    Fill(1);
    combo->SetCurrentIndex(0);

    combo->lineEdit()->selectAll();

    QVERIFY(!combo->lineEdit()->hasSelectedText());
}

void TestRpaVersionCombo::opensForTheLeftButtonOnly()
{
    Fill(1);

    QTest::mousePress(combo->lineEdit(), Qt::RightButton);

    QVERIFY(!IsPopupOpen());
}

void TestRpaVersionCombo::staysClosedWhileDisabled()
{
    Fill(1);
    combo->setEnabled(false);

    QMouseEvent press(QEvent::MouseButtonPress, QPointF(2, 2), Qt::LeftButton, Qt::LeftButton,
                      Qt::NoModifier);
    QApplication::sendEvent(combo->lineEdit(), &press);

    QVERIFY(!IsPopupOpen());
}

void TestRpaVersionCombo::keepsItsNameWhenAKeyPicksARow()
{
    // given
    Fill(3);
    combo->SetCurrentIndex(1);
    QSignalSpy selected(combo.get(), &RpaVersionCombo::SigSelectVersion);

    // when
    for (int key : {Qt::Key_Down, Qt::Key_End, Qt::Key_Up, Qt::Key_Home, Qt::Key_PageDown}) {
        QTest::keyClick(combo->lineEdit(), Qt::Key(key));
        if (IsPopupOpen()) {
            combo->hidePopup();
        }
    }

    // then
    QCOMPARE(combo->lineEdit()->text(), Text("版本1"));
    QCOMPARE(combo->GetCurrentData(), QVariant(QStringLiteral("id1")));
    QCOMPARE(selected.size(), 0);
}

void TestRpaVersionCombo::pickByKeyBehavesLikeAPress()
{
    // given
    Fill(3);
    combo->SetCurrentIndex(0);
    QSignalSpy selected(combo.get(), &RpaVersionCombo::SigSelectVersion);
    QTest::keyClick(combo->lineEdit(), Qt::Key_Down);
    QVERIFY(IsPopupOpen());
    list->setCurrentRow(2);

    // when
    QTest::keyClick(list, Qt::Key_Return);

    // then
    QVERIFY(!IsPopupOpen());
    QCOMPARE(selected.size(), 1);
    QCOMPARE(selected.constFirst().constFirst(), QVariant(QStringLiteral("id2")));
    QCOMPARE(combo->lineEdit()->text(), Text("版本2"));
}

void TestRpaVersionCombo::marksTheCurrentRowInThePopup()
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

void TestRpaVersionCombo::isMadeAsItsStyleSheetExpects()
{
    QCOMPARE(combo->view()->objectName(), QStringLiteral("VersionComboBoxView"));
    QCOMPARE(combo->view()->focusPolicy(), Qt::NoFocus);
    QCOMPARE(combo->contextMenuPolicy(), Qt::NoContextMenu);
    QCOMPARE(combo->model(), list->model());
    QVERIFY(combo->lineEdit()->isReadOnly());
    QCOMPARE(combo->lineEdit()->cursor().shape(), Qt::PointingHandCursor);
    QCOMPARE(combo->lineEdit()->contextMenuPolicy(), Qt::NoContextMenu);
}

void TestRpaVersionCombo::showsEveryRowThatIsScrolledTo()
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
            if (inSight) {
                QCOMPARE(Row(i)->geometry(), place);
            }
        }
    }
}

void TestRpaVersionCombo::showsRowsThatWereAddedWhileItWasOpen()
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

void TestRpaVersionCombo::buildsOnlyTheRowsThatWereSeen()
{
    // given
    Fill(300);
    QCoreApplication::processEvents();

    // when
    combo->showPopup();

    // then
    int built = 0;
    for (int i = 0; i < list->count(); ++i) {
        built += Row(i)->findChild<QLabel*>() ? 1 : 0;
    }
    QVERIFY2(built >= 1 && built <= 12, qPrintable(QString::number(built)));
}

RPA_TEST_MAIN(TestRpaVersionCombo)

#include "tst_rpaversioncombo.moc"
