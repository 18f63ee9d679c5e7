// SPDX-License-Identifier: Apache-2.0

#include "TestApp.h"

#include <WbBaseUI/WbEditableCombo.h>
#include <WbBaseUI/WbIcons.h>
#include <WbBaseUI/WbTheme.h>

#include <QAbstractItemView>
#include <QAbstractListModel>
#include <QLineEdit>
#include <QListWidget>
#include <QScrollBar>
#include <QSignalSpy>
#include <QtTest>

#include <memory>

namespace
{
// Counts how often its rows are looked at.
class CountingModel : public QAbstractListModel
{
    Q_OBJECT

public:
    explicit CountingModel(int n) : rows(n) {}

    int rowCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : rows; }
    QVariant data(const QModelIndex& index, int role) const override
    {
        ++reads;
        return role == Qt::DisplayRole ? QStringLiteral("版本%1").arg(index.row()) : QVariant();
    }

    mutable int reads = 0;

private:
    const int rows;
};

// Counts how often it is asked for its size.
class CountingRow : public QWidget
{
    Q_OBJECT

public:
    explicit CountingRow(int* counter) : asked(counter) {}
    QSize sizeHint() const override
    {
        ++*asked;
        return {100, 36};
    }

private:
    int* const asked;
};
} // namespace

class TestComboBox : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();

    void showsTenRowsAndAScrollBar();
    void opensBelowTheBoxAndAtLeastAsWide();
    void widensThePopupForLongRows();
    void cutsNoRowThatHasAnIcon();
    void looksAtFewRowsWhenItOpens();
    void takesAListWithRowWidgetsAsView();
    void opensWithTheKeyboard();
    void neverCompletesTypedText();
    void keepsTypedLetterCaseOnReturn();
    void insertsNothing();
    void limitsTheLength_data();
    void limitsTheLength();
    void showsItsPlaceholder();
    void letsTheStyleSheetReadItsBusinessStyle();
};

void TestComboBox::initTestCase()
{
    WbTheme::Instance()->Apply(WbTheme::Scheme::Light);
}

void TestComboBox::showsTenRowsAndAScrollBar()
{
    WbComboBox combo;
    for (int row = 0; row < 50; ++row)
        combo.addItem(QString::number(row));
    combo.show();

    combo.showPopup();

    QTRY_VERIFY(combo.view()->isVisible());
    const int rowHeight = combo.view()->visualRect(combo.model()->index(0, 0)).height();
    QCOMPARE(combo.view()->viewport()->height() / rowHeight, 10);
    QVERIFY(combo.view()->verticalScrollBar()->isVisible());
}

void TestComboBox::opensBelowTheBoxAndAtLeastAsWide()
{
    WbComboBox combo;
    combo.addItems({QStringLiteral("一"), QStringLiteral("二")});
    combo.resize(260, 32);
    combo.show();
    combo.move(100, 100);
    combo.setCurrentIndex(1);

    combo.showPopup();

    const QRect popup = combo.view()->window()->geometry();
    QVERIFY(popup.top() >= combo.mapToGlobal(combo.rect().bottomLeft()).y());
    QVERIFY(popup.width() >= combo.width());
}

void TestComboBox::widensThePopupForLongRows()
{
    WbComboBox combo;
    combo.addItem(QStringLiteral("一个相当长的版本名称放在窄窄的下拉框里"));
    combo.resize(80, 32);
    combo.show();

    combo.showPopup();

    QVERIFY(combo.view()->window()->width() > 200);
}

void TestComboBox::cutsNoRowThatHasAnIcon()
{
    WbTheme::Instance()->Apply(WbTheme::Scheme::Light);
    WbComboBox combo;
    const QString text = QStringLiteral("下拉选择");
    combo.addItem(WbIcons::Get(QStringLiteral("param-choice")), text);
    combo.resize(60, 32);
    combo.show();

    combo.showPopup();

    const QModelIndex row = combo.model()->index(0, 0);
    constexpr int paddings = 16; // of the theme's rows, both sides
    const int needed =
        combo.view()->iconSize().width() + combo.fontMetrics().horizontalAdvance(text) + paddings;
    QTRY_VERIFY(combo.view()->visualRect(row).width() > needed);
}

void TestComboBox::looksAtFewRowsWhenItOpens()
{
    CountingModel model(100000);
    WbComboBox combo;
    combo.setModel(&model);
    combo.show();
    model.reads = 0;

    combo.showPopup();
    QTRY_VERIFY(combo.view()->isVisible());
    QCoreApplication::processEvents();

    QVERIFY2(model.reads > 0 && model.reads < 5000, qPrintable(QString::number(model.reads)));
}

void TestComboBox::takesAListWithRowWidgetsAsView()
{
    int asked = 0;
    WbComboBox combo;
    auto* list = new QListWidget(&combo);
    combo.setModel(list->model());
    combo.setView(list);
    auto* edit = new QLineEdit(&combo);
    edit->setReadOnly(true);
    combo.setLineEdit(edit);
    constexpr int rows = 3000;
    for (int row = 0; row < rows; ++row) {
        auto* item = new QListWidgetItem(list);
        list->setItemWidget(item, std::make_unique<CountingRow>(&asked).release());
    }
    combo.show();
    asked = 0;

    combo.showPopup();
    QTRY_VERIFY(list->isVisible());

    QVERIFY2(asked < rows, qPrintable(QString::number(asked)));
    QVERIFY(list->verticalScrollBar()->isVisible());
}

void TestComboBox::opensWithTheKeyboard()
{
    WbComboBox combo;
    combo.addItems({QStringLiteral("一"), QStringLiteral("二")});
    combo.show();
    QVERIFY(QTest::qWaitForWindowActive(&combo));
    combo.setFocus();
    QSignalSpy activated(&combo, QOverload<int>::of(&QComboBox::activated));

    QTest::keyClick(&combo, Qt::Key_Space);
    QTRY_VERIFY(combo.view()->isVisible());
    QTest::keyClick(combo.view(), Qt::Key_Down);
    QTest::keyClick(combo.view(), Qt::Key_Return);

    QTRY_COMPARE(activated.count(), 1);
    QCOMPARE(combo.currentIndex(), 1);
}

void TestComboBox::neverCompletesTypedText()
{
    WbEditableCombo combo;
    combo.addItem(QStringLiteral("Version 1"));
    combo.setCurrentIndex(-1);
    combo.show();

    QTest::keyClicks(combo.lineEdit(), QStringLiteral("Ver"));

    QCOMPARE(combo.currentText(), QStringLiteral("Ver"));
}

void TestComboBox::keepsTypedLetterCaseOnReturn()
{
    WbEditableCombo combo;
    combo.addItem(QStringLiteral("version"));
    combo.setCurrentIndex(-1);
    combo.show();
    QSignalSpy activated(&combo, QOverload<int>::of(&QComboBox::activated));

    QTest::keyClicks(combo.lineEdit(), QStringLiteral("Version"));
    QTest::keyClick(combo.lineEdit(), Qt::Key_Return);

    QCOMPARE(combo.currentText(), QStringLiteral("Version"));
    QCOMPARE(activated.count(), 0);
}

void TestComboBox::insertsNothing()
{
    WbEditableCombo combo;
    combo.show();

    QTest::keyClicks(combo.lineEdit(), QStringLiteral("abc"));
    QTest::keyClick(combo.lineEdit(), Qt::Key_Return);

    QCOMPARE(combo.count(), 0);
}

void TestComboBox::limitsTheLength_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<int>("kept");

    QTest::newRow("20 characters") << QString(20, QLatin1Char('x')) << 20;
    QTest::newRow("21 characters") << QString(21, QLatin1Char('x')) << 20;
}

void TestComboBox::limitsTheLength()
{
    QFETCH(QString, typed);
    QFETCH(int, kept);
    WbEditableCombo combo;
    combo.SetMaxLength(20);
    combo.show();

    QTest::keyClicks(combo.lineEdit(), typed);

    QCOMPARE(combo.currentText().size(), kept);
}

void TestComboBox::showsItsPlaceholder()
{
    WbEditableCombo combo;

    combo.SetPlaceholderText(QStringLiteral("输入新版本名称"));

    QCOMPARE(combo.lineEdit()->placeholderText(), QStringLiteral("输入新版本名称"));
}

void TestComboBox::letsTheStyleSheetReadItsBusinessStyle()
{
    WbComboBox combo;
    QCOMPARE(combo.property("businessStyle").toInt(), 0);

    combo.SetBusinessStyle(1);

    QCOMPARE(combo.property("businessStyle").toInt(), 1);
}

RPA_TEST_MAIN(TestComboBox)
#include "tst_combobox.moc"
