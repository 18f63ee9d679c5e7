// SPDX-License-Identifier: Apache-2.0

#include "TableForm.h"
#include "ToastWatcher.h"

#include <WbFoundation/ContentLimits.h>

#include <QClipboard>
#include <QGuiApplication>
#include <QHelpEvent>
#include <QLabel>
#include <QLineEdit>
#include <QScrollBar>
#include <QToolTip>

// What a user and a run do in the table of a page.
class TableWidget : public QObject, private TableForm
{
    Q_OBJECT

private slots:
    void init() { Show(); }

    void typedCellsFitTheirColumn();
    void aRangeIsPastedWithNewRowsAndUndone();
    void aTextThatIsTooLongIsNotPastedAndTheAuthorIsTold();
    void editingALongCellKeepsAllOfIt();
    void copyGivesWhatPasteTakes();
    void deleteClearsCells();
    void rowsAreAddedAndRemovedByTheToolBar();
    void aRunFillsTheTable();
    void whileLockedTheUserChangesNothing();
    void aTableThatGoesAwayLeavesAnEmptyView();
    void aCutCellTellsItsWholeText();
    void columnsHaveTheWidthsOfTheirAuthor();
    void columnsShareWhatIsMissingByALittle();
    void columnsKeepTheirWidthsWhereMuchIsMissing();
    void anEmptyTableSaysWhatToDo();
    void whatLiesBehindTheLastColumnIsTold();
    void aPasteBeginsAtTheCursorAndIsOneStep();
    void findGoesFromCellToCell();
    void onlyMatchingRowsAreShownAndEdited();

private:
    void PressFind()
    {
        View()->setFocus();
        QTest::keyClick(View(), Qt::Key_F, Qt::ControlModifier);
    }
};

void TableWidget::typedCellsFitTheirColumn()
{
    QVERIFY(!Model()->setData(Model()->index(0, 1), QStringLiteral("viel")));
    QVERIFY(Model()->setData(Model()->index(0, 1), QStringLiteral("12.5")));

    QCOMPARE(table->GetCell(0, 1), QVariant(12.5));
    QVERIFY(Model()->setData(Model()->index(0, 1), QStringLiteral("4001234567890")));
    QVERIFY(Model()->setData(Model()->index(0, 1), QStringLiteral("4001234567891")));
    QVERIFY(table->GetCell(0, 1).toDouble() > 4001234567890);
}

void TableWidget::aRangeIsPastedWithNewRowsAndUndone()
{
    View()->setCurrentIndex(Model()->index(0, 0));
    QGuiApplication::clipboard()->setText(QStringLiteral("李\t2\n张\tx\n赵\t4\n"));

    QTest::keyClick(View(), Qt::Key_V, Qt::ControlModifier);

    QCOMPARE(table->GetRowCount(), 3);
    QCOMPARE(table->GetCell(0, 0).toString(), QStringLiteral("李"));
    QVERIFY(!table->GetCell(1, 1).isValid());
    QCOMPARE(table->GetCell(2, 1), QVariant(4.0));
    QTest::keyClick(View(), Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(table->GetRowCount(), 1);
    QCOMPARE(table->GetCell(0, 0).toString(), QStringLiteral("王"));
}

void TableWidget::aTextThatIsTooLongIsNotPastedAndTheAuthorIsTold()
{
    ToastWatcher toasts;
    View()->setCurrentIndex(Model()->index(0, 0));
    QGuiApplication::clipboard()->setText(QString(ContentLimits::textBytes + 1, QLatin1Char('x')) +
                                          QStringLiteral("\t2\n"));

    QTest::keyClick(View(), Qt::Key_V, Qt::ControlModifier);

    QCOMPARE(table->GetCell(0, 0).toString(), QStringLiteral("王"));
    QCOMPARE(table->GetCell(0, 1), QVariant(2.0));
    QCOMPARE(toasts.GetTexts(), QStringList{QStringLiteral("1 个单元格的文字超过 16 MB，没有粘贴")});
}

void TableWidget::editingALongCellKeepsAllOfIt()
{
    const QString text(100000, QLatin1Char('x'));
    QVERIFY(table->SetCell(0, 0, text));
    View()->setCurrentIndex(Model()->index(0, 0));
    View()->setFocus();

    QTest::keyClick(View(), Qt::Key_F2);
    QTRY_VERIFY(View()->viewport()->findChild<QLineEdit*>());
    auto* edit = View()->viewport()->findChild<QLineEdit*>();
    QTest::keyClick(edit, Qt::Key_End);
    QTest::keyClicks(edit, QStringLiteral("y"));
    QTest::keyClick(edit, Qt::Key_Return);

    QTRY_VERIFY(table->GetCell(0, 0).toString() == text + QLatin1Char('y'));
    QVERIFY(table->SetCell(0, 0, QString(2000000, QLatin1Char('x'))));
    QVERIFY(!Model()->flags(Model()->index(0, 0)).testFlag(Qt::ItemIsEditable));
}

void TableWidget::copyGivesWhatPasteTakes()
{
    View()->selectAll();

    QTest::keyClick(View(), Qt::Key_C, Qt::ControlModifier);

    QCOMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("王\t1"));
}

void TableWidget::deleteClearsCells()
{
    View()->setCurrentIndex(Model()->index(0, 0));

    QTest::keyClick(View(), Qt::Key_Delete);

    QVERIFY(!table->GetCell(0, 0).isValid());
    QTest::keyClick(View(), Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(table->GetCell(0, 0).toString(), QStringLiteral("王"));
}

void TableWidget::rowsAreAddedAndRemovedByTheToolBar()
{
    QTest::mouseClick(host->findChild<QToolButton*>(QStringLiteral("tableAddRow")), Qt::LeftButton);
    QCOMPARE(table->GetRowCount(), 2);
    View()->selectAll();

    QTest::mouseClick(host->findChild<QToolButton*>(QStringLiteral("tableDeleteRows")), Qt::LeftButton);

    QCOMPARE(table->GetRowCount(), 0);
    QTest::keyClick(View(), Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(table->GetRowCount(), 2);
    QCOMPARE(table->GetCell(0, 0).toString(), QStringLiteral("王"));
}

void TableWidget::aRunFillsTheTable()
{
    QCOMPARE(widget->AppendRow({QStringLiteral("新"), 7}), 1);
    QCOMPARE(widget->AppendRow({QStringLiteral("坏"), QStringLiteral("七")}), -1);
    QVERIFY(widget->SetCell(0, 1, 9));

    QCOMPARE(widget->GetRowCount(), 2);
    QCOMPARE(widget->GetCell(0, 1), QVariant(9.0));
    widget->ClearRows();
    QCOMPARE(Model()->rowCount(), 0);
}

void TableWidget::whileLockedTheUserChangesNothing()
{
    widget->SetUserEditable(false);

    QVERIFY(!(Model()->flags(Model()->index(0, 0)) & Qt::ItemIsEditable));
    QVERIFY(!host->findChild<QToolButton*>(QStringLiteral("tableAddRow"))->isEnabled());
    View()->setCurrentIndex(Model()->index(0, 0));
    QTest::keyClick(View(), Qt::Key_Delete);
    QCOMPARE(table->GetCell(0, 0).toString(), QStringLiteral("王"));
    QVERIFY(widget->SetCell(0, 1, 3));
}

void TableWidget::aTableThatGoesAwayLeavesAnEmptyView()
{
    table.reset();

    QCOMPARE(Model()->rowCount(), 0);
    QCOMPARE(widget->GetRowCount(), 0);
    QCOMPARE(widget->AppendRow({}), -1);
}

void TableWidget::aCutCellTellsItsWholeText()
{
    const QString text = QStringLiteral("<b>一家名字很长很长很长很长很长很长的有限责任公司</b>");
    QVERIFY(table->SetCell(0, 0, text));
    View()->setColumnWidth(0, 80);
    const auto hoverOver = [this](int column) {
        const QPoint place = View()->visualRect(Model()->index(0, column)).center();
        QHelpEvent help(QEvent::ToolTip, place, View()->viewport()->mapToGlobal(place));
        QCoreApplication::sendEvent(View()->viewport(), &help);
    };

    hoverOver(0);
    QVERIFY(QToolTip::text().contains(text.toHtmlEscaped()));

    QToolTip::hideText();
    hoverOver(1);
    QTRY_VERIFY(QToolTip::text().isEmpty());
    QCOMPARE(Model()->headerData(0, Qt::Horizontal, Qt::ToolTipRole).toString(), QStringLiteral("姓名"));
}

void TableWidget::columnsHaveTheWidthsOfTheirAuthor()
{
    RpaTableColumn wide;
    wide.name = QStringLiteral("地址");
    wide.width = 260;
    RpaTableColumn last;
    last.name = QStringLiteral("备注");
    table->InsertColumn(-1, wide);
    table->InsertColumn(-1, last);
    QCOMPARE(View()->columnWidth(2), 260);

    widget->SetTableData(nullptr);
    widget->SetTableData(table.get());

    QCOMPARE(View()->columnWidth(0), 140);
    QCOMPARE(View()->columnWidth(2), 260);
}

void TableWidget::columnsShareWhatIsMissingByALittle()
{
    RpaTableColumn last;
    last.name = QStringLiteral("备注");
    last.width = 200;
    table->InsertColumn(-1, last);
    widget->resize(widget->width() + 470 - View()->viewport()->width(), widget->height());

    QTRY_COMPARE(View()->viewport()->width(), 470); // 480 are wanted
    QTRY_VERIFY(!View()->horizontalScrollBar()->isVisible());
    for (int column = 0; column < 3; ++column)
        QVERIFY(View()->columnWidth(column) >= 130);
    widget->resize(widget->width() + 200, widget->height());
    QTRY_COMPARE(View()->columnWidth(0), 140);
}

void TableWidget::columnsKeepTheirWidthsWhereMuchIsMissing()
{
    RpaTableColumn last;
    last.name = QStringLiteral("备注");
    last.width = 300;
    table->InsertColumn(-1, last);

    QTRY_VERIFY(View()->horizontalScrollBar()->isVisible());
    QCOMPARE(View()->columnWidth(0), 140);
    QCOMPARE(View()->columnWidth(2), 300);
}

void TableWidget::anEmptyTableSaysWhatToDo()
{
    const auto* hint = View()->findChild<QLabel*>(QStringLiteral("emptyHint"));
    QVERIFY(hint && !hint->isVisible());

    table->ClearRows();

    QTRY_VERIFY(hint->isVisible());
    QVERIFY(hint->text().contains(QStringLiteral("添加行")));
    PressTool("tableAddRow");
    QTRY_VERIFY(!hint->isVisible());
    table->ClearRows();
    QTRY_VERIFY(hint->isVisible());
    table->RemoveColumn(1);
    table->RemoveColumn(0);
    QTRY_VERIFY(!hint->isVisible());
}

void TableWidget::whatLiesBehindTheLastColumnIsTold()
{
    ToastWatcher toasts;
    View()->setCurrentIndex(Model()->index(0, 1));
    QGuiApplication::clipboard()->setText(QStringLiteral("5\t6\t\t7"));

    QTest::keyClick(View(), Qt::Key_V, Qt::ControlModifier);

    QCOMPARE(table->GetRow(0), (QVariantList{QStringLiteral("王"), 5.0}));
    QCOMPARE(toasts.GetTexts(), QStringList{QStringLiteral("2 个单元格在最后一列之外，没有粘贴")});
}

void TableWidget::aPasteBeginsAtTheCursorAndIsOneStep()
{
    table->AppendRow({QStringLiteral("李"), 2});
    View()->setCurrentIndex(Model()->index(1, 0));
    QGuiApplication::clipboard()->setText(QStringLiteral("\"a\tb\nc\"\"\"\t8\r\nd\t9\r\n"));

    QTest::keyClick(View(), Qt::Key_V, Qt::ControlModifier);

    QCOMPARE(table->GetRowCount(), 3);
    QCOMPARE(table->GetRow(0), (QVariantList{QStringLiteral("王"), 1.0}));
    QCOMPARE(table->GetRow(1), (QVariantList{QStringLiteral("a\tb\nc\""), 8.0}));
    QCOMPARE(table->GetRow(2), (QVariantList{QStringLiteral("d"), 9.0}));
    QTest::keyClick(View(), Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(table->GetRowCount(), 2);
    QCOMPARE(table->GetRow(1), (QVariantList{QStringLiteral("李"), 2.0}));
}

void TableWidget::findGoesFromCellToCell()
{
    table->AppendRow({QStringLiteral("Li 12"), 34});
    table->AppendRow({QStringLiteral("张"), 12});
    table->AppendRow({QStringLiteral("赵12"), 56});
    PressFind();
    auto* edit = host->findChild<QLineEdit*>(QStringLiteral("lineEditFind"));
    QTRY_VERIFY(edit->isVisible());
    edit->clear();
    QTest::keyClicks(edit, QStringLiteral("12"));
    QTRY_COMPARE(host->findChild<QLabel*>(QStringLiteral("labelFindCount"))->text(),
                 QStringLiteral("共 3 处"));

    for (const QModelIndex& next :
         {Model()->index(1, 0), Model()->index(2, 1), Model()->index(3, 0), Model()->index(1, 0)}) {
        QTest::keyClick(edit, Qt::Key_Return);
        QCOMPARE(View()->currentIndex(), next);
    }
    QTest::keyClick(edit, Qt::Key_Return, Qt::ShiftModifier);
    QCOMPARE(View()->currentIndex(), Model()->index(3, 0));
    QTest::keyClick(edit, Qt::Key_Escape);
    QVERIFY(!edit->isVisible());
}

void TableWidget::onlyMatchingRowsAreShownAndEdited()
{
    table->AppendRow({QStringLiteral("李一"), 21});
    table->AppendRow({QStringLiteral("张"), 22});
    table->AppendRow({QStringLiteral("李二"), 23});
    View()->setColumnWidth(0, 77);
    PressFind();
    auto* edit = host->findChild<QLineEdit*>(QStringLiteral("lineEditFind"));
    edit->setText(QStringLiteral("李"));
    QTest::mouseClick(Part("tableFilter"), Qt::LeftButton, {}, QPoint(8, Part("tableFilter")->height() / 2));

    QTRY_COMPARE(Model()->rowCount(), 2);
    QCOMPARE(Model()->headerData(1, Qt::Vertical).toInt(), 4);
    QCOMPARE(View()->columnWidth(0), 77);
    View()->setCurrentIndex(Model()->index(0, 1));
    QGuiApplication::clipboard()->setText(QStringLiteral("5\n6\n7"));
    QTest::keyClick(View(), Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(table->GetCell(1, 1), QVariant(5.0));
    QCOMPARE(table->GetCell(2, 1), QVariant(22.0));
    QCOMPARE(table->GetCell(3, 1), QVariant(6.0));
    QCOMPARE(table->GetCell(4, 1), QVariant(7.0));
    View()->selectionModel()->select(Model()->index(1, 0), QItemSelectionModel::ClearAndSelect);
    QTest::mouseClick(Part("tableDeleteRows"), Qt::LeftButton);
    QCOMPARE(table->GetRowCount(), 4);
    QCOMPARE(table->GetCell(2, 1), QVariant(22.0));
    QCOMPARE(table->GetCell(3, 1), QVariant(7.0));

    QTest::keyClick(edit, Qt::Key_Escape);
    QCOMPARE(Model()->rowCount(), 4);
}

QTEST_MAIN(TableWidget)

#include "tst_tablewidget.moc"
