// SPDX-License-Identifier: Apache-2.0

#include "RpaVersionItem.h"
#include "TestApp.h"
#include "VersionComboFixture.h"

#include <QLineEdit>
#include <QListWidget>
#include <QSignalSpy>
#include <QWheelEvent>
#include <QtTest>

namespace
{
const QVariant emptyText = QVariant(QString());
} // namespace

// The rows, the current one, and which one is picked.
class TestRpaVersionCombo : public VersionComboFixture
{
    Q_OBJECT

private slots:
    void ignoresTheMouseWheel();
    void closesWithoutASignalWhenTheCurrentRowIsPressed();
    void answersEmptyOutsideTheList_data();
    void answersEmptyOutsideTheList();
    void findsNoIndexOfUnlistedData();
    void clearsFiveRows();

    void selectsOnPressNotOnRelease();
    void picksTheEmptyDefaultRow();
    void setsTheCurrentRowWithoutASignal();
    void setsNothingCurrentForAMissingRow();
    void findsTheFirstRowWithData();
    void removesTheFirstRowOfAName();
    void neverShowsItsTextSelected();
    void keepsItsNameWhenAKeyPicksARow();
    void pickByKeyBehavesLikeAPress();
    void isMadeAsItsStyleSheetExpects();
    void tellsACutNameInAToolTip();
};

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
    QCOMPARE(combo->lineEdit()->placeholderText(), Text("还没有版本"));
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
    QVERIFY(!combo->lineEdit()->hasSelectedText());
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

void TestRpaVersionCombo::neverShowsItsTextSelected()
{
    Fill(1);
    combo->SetCurrentIndex(0);

    combo->lineEdit()->selectAll();

    QVERIFY(!combo->lineEdit()->hasSelectedText());
    QCOMPARE(combo->lineEdit()->cursorPosition(), 0); // a long name is seen from its start
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
        if (IsPopupOpen())
            combo->hidePopup();
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

void TestRpaVersionCombo::isMadeAsItsStyleSheetExpects()
{
    QCOMPARE(combo->view()->objectName(), QStringLiteral("VersionComboBoxView"));
    QCOMPARE(combo->view()->focusPolicy(), Qt::NoFocus);
    QCOMPARE(combo->contextMenuPolicy(), Qt::NoContextMenu);
    QCOMPARE(combo->model(), list->model());
    QVERIFY(combo->lineEdit()->isReadOnly());
    QVERIFY(!combo->completer());
    QCOMPARE(combo->lineEdit()->cursor().shape(), Qt::PointingHandCursor);
    QCOMPARE(combo->lineEdit()->contextMenuPolicy(), Qt::NoContextMenu);
}

void TestRpaVersionCombo::tellsACutNameInAToolTip()
{
    const QString name = QStringLiteral("第四季度供应商发票自动核对的评审版本二");
    combo->AddRow(name, QString(), QStringLiteral("long"), 0);
    combo->resize(150, 30);

    combo->SetCurrentIndex(combo->GetIndexOfData(QStringLiteral("long")));

    QCOMPARE(combo->lineEdit()->toolTip(), name);

    combo->resize(800, 30);

    QTRY_COMPARE(combo->lineEdit()->toolTip(), QString());

    combo->resize(150, 30);
    QTRY_COMPARE(combo->lineEdit()->toolTip(), name);
    combo->Clear();
    QCOMPARE(combo->lineEdit()->toolTip(), QString());
}

RPA_TEST_MAIN(TestRpaVersionCombo)

#include "tst_rpaversioncombo.moc"
