// SPDX-License-Identifier: Apache-2.0

#include "TableForm.h"
#include "ToastWatcher.h"

#include <QClipboard>
#include <QDate>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>

// What a user does with several cells and rows at once, and what each act leaves behind.
class TableActs : public QObject, private TableForm
{
    Q_OBJECT

private slots:
    void init();

    void aNewRowComesBelowTheCursor();
    void severalRowsGoAndComeBackWhereTheyWere();
    void onlyWhatIsSelectedIsCleared();
    void aCopyIsTheAreaAroundTheSelection();
    void aCopyIsOfTheRowsThatAreShown();
    void aKeyBeginsANewText();
    void aValueThatStaysTheSameIsNoStep();
    void aRefusalNamesWhatWasTyped();
    void allThatDidNotFitIsTold();
    void aSwitchIsPressedInItsCell();
    void valuesAreShownByTheirKind();
    void f3GoesOnWithoutTheBar();
    void whatStandsUnderTheCursorIsLookedFor();
    void onlyASelectionCanBeDeleted();
    void resultsOfARunAreNotEdited();

private:
    void Select(std::initializer_list<QPoint> cells) // column, row
    {
        View()->clearSelection();
        for (const QPoint& cell : cells)
            View()->selectionModel()->select(Model()->index(cell.y(), cell.x()), QItemSelectionModel::Select);
    }

    QVariantList Names() const
    {
        QVariantList names;
        for (int row = 0; row < table->GetRowCount(); ++row)
            names << table->GetCell(row, 0);
        return names;
    }

    QString Clipboard() const { return QGuiApplication::clipboard()->text(); }

    QLineEdit* OpenFind()
    {
        QTest::keyClick(View(), Qt::Key_F, Qt::ControlModifier);
        return host->findChild<QLineEdit*>(QStringLiteral("lineEditFind"));
    }
};

void TableActs::init()
{
    Show();
    table->AppendRow({QStringLiteral("李"), 2});
    table->AppendRow({QStringLiteral("张"), 3});
    table->AppendRow({QStringLiteral("赵"), 4});
    View()->setFocus();
}

void TableActs::aNewRowComesBelowTheCursor()
{
    View()->setCurrentIndex(Model()->index(1, 1));

    PressTool("tableAddRow");

    QCOMPARE(Names(), (QVariantList{QStringLiteral("王"), QStringLiteral("李"), QVariant(),
                                    QStringLiteral("张"), QStringLiteral("赵")}));
    QCOMPARE(View()->currentIndex(), Model()->index(2, 0));
    QTRY_COMPARE(host->findChild<QLabel*>(QStringLiteral("tableCount"))->text(), QStringLiteral("共 5 行"));
}

void TableActs::severalRowsGoAndComeBackWhereTheyWere()
{
    const QVariantList all = Names();
    const QVariantList kept{QStringLiteral("李"), QStringLiteral("赵")};
    Select({QPoint(1, 2), QPoint(0, 0), QPoint(1, 0)});

    PressTool("tableDeleteRows");
    QCOMPARE(Names(), kept);
    QTest::keySequence(View(), QKeySequence::Undo);
    QCOMPARE(Names(), all);
    QCOMPARE(table->GetCell(2, 1), QVariant(3.0));
    QTest::keySequence(View(), QKeySequence::Redo);

    QCOMPARE(Names(), kept);
}

void TableActs::onlyWhatIsSelectedIsCleared()
{
    Select({QPoint(0, 1), QPoint(1, 3)});

    QTest::keyClick(View(), Qt::Key_Delete);

    QCOMPARE(table->GetRow(1), (QVariantList{QVariant(), 2.0}));
    QCOMPARE(table->GetRow(3), (QVariantList{QStringLiteral("赵"), QVariant()}));
    QCOMPARE(table->GetRow(2), (QVariantList{QStringLiteral("张"), 3.0}));
    QTest::keySequence(View(), QKeySequence::Undo);
    QCOMPARE(table->GetRow(1), (QVariantList{QStringLiteral("李"), 2.0}));
    QCOMPARE(table->GetRow(3), (QVariantList{QStringLiteral("赵"), 4.0}));
}

void TableActs::aCopyIsTheAreaAroundTheSelection()
{
    Select({QPoint(1, 1), QPoint(0, 2)});
    QTest::keySequence(View(), QKeySequence::Copy);
    QCOMPARE(Clipboard(), QStringLiteral("李\t2\n张\t3"));

    Select({QPoint(1, 3)});
    QTest::keySequence(View(), QKeySequence::Copy);
    QCOMPARE(Clipboard(), QStringLiteral("4"));

    View()->clearSelection();
    QTest::keySequence(View(), QKeySequence::Copy);
    QCOMPARE(Clipboard(), QStringLiteral("4"));
}

void TableActs::aCopyIsOfTheRowsThatAreShown()
{
    table->SetCell(3, 0, QStringLiteral("李四"));
    OpenFind()->setText(QStringLiteral("李"));
    QTest::mouseClick(Part("tableFilter"), Qt::LeftButton, {}, QPoint(8, Part("tableFilter")->height() / 2));
    QTRY_COMPARE(Model()->rowCount(), 2);
    View()->selectAll();

    QTest::keySequence(View(), QKeySequence::Copy);

    QCOMPARE(Clipboard(), QStringLiteral("李\t2\n李四\t4"));
}

void TableActs::aKeyBeginsANewText()
{
    View()->setCurrentIndex(Model()->index(2, 1));

    QTest::keyClick(View(), Qt::Key_7);
    auto* edit = View()->viewport()->findChild<QLineEdit*>();
    QVERIFY(edit);
    QTest::keyClicks(edit, QStringLiteral(".5"));
    QTest::keyClick(edit, Qt::Key_Return);

    QTRY_COMPARE(table->GetCell(2, 1), QVariant(7.5));
}

void TableActs::aValueThatStaysTheSameIsNoStep()
{
    Model()->setData(Model()->index(0, 1), QStringLiteral("8"));
    Model()->setData(Model()->index(0, 1), QStringLiteral("8.0"));

    QTest::keySequence(View(), QKeySequence::Undo);

    QCOMPARE(table->GetCell(0, 1), QVariant(1.0));
}

void TableActs::aRefusalNamesWhatWasTyped()
{
    const ToastWatcher toasts;

    QVERIFY(!Model()->setData(Model()->index(0, 1), QString(50, QLatin1Char('z'))));

    QCOMPARE(toasts.GetTexts(), QStringList{QStringLiteral("“%1”不是有效的%2")
                                                .arg(QString(40, QLatin1Char('z')),
                                                     RpaTableColumn::GetTypeTitle(RpaColumnType::Number))});
}

void TableActs::allThatDidNotFitIsTold()
{
    const ToastWatcher toasts;
    View()->setCurrentIndex(Model()->index(3, 0));
    QGuiApplication::clipboard()->setText(QStringLiteral("a\tb\nc\td\ne\t5\tf"));

    QTest::keySequence(View(), QKeySequence::Paste);

    QCOMPARE(toasts.GetTexts(),
             QStringList{QStringLiteral("2 个单元格与列的类型不符，1 个单元格在最后一列之外，没有粘贴")});
    QCOMPARE(table->GetRow(3), (QVariantList{QStringLiteral("a"), 4.0}));
    QCOMPARE(table->GetRow(5), (QVariantList{QStringLiteral("e"), 5.0}));
}

void TableActs::aSwitchIsPressedInItsCell()
{
    RpaTableColumn done;
    done.name = QStringLiteral("完成");
    done.type = RpaColumnType::Switch;
    table->InsertColumn(0, done);
    const QRect cell = View()->visualRect(Model()->index(1, 0));

    QTest::mouseClick(View()->viewport(), Qt::LeftButton, {}, QPoint(cell.left() + 10, cell.center().y()));
    QCOMPARE(table->GetCell(1, 0), QVariant(true));
    QVERIFY(!table->GetCell(2, 0).toBool());

    widget->SetUserEditable(false);
    QTest::mouseClick(View()->viewport(), Qt::LeftButton, {}, QPoint(cell.left() + 10, cell.center().y()));
    QCOMPARE(table->GetCell(1, 0), QVariant(true));
}

void TableActs::valuesAreShownByTheirKind()
{
    RpaTableColumn day;
    day.name = QStringLiteral("日期");
    day.type = RpaColumnType::Date;
    table->InsertColumn(2, day);
    table->SetCell(0, 2, QDate(2026, 2, 3));
    table->SetCell(0, 1, 0.1);

    QCOMPARE(Model()->index(0, 1).data().toString(), QStringLiteral("0.1"));
    QCOMPARE(Model()->index(0, 2).data().toString(), QStringLiteral("2026-02-03"));
    QVERIFY(Model()->index(0, 1).data(Qt::TextAlignmentRole).toInt() & Qt::AlignRight);
    QVERIFY(Model()->index(0, 2).data(Qt::TextAlignmentRole).toInt() & Qt::AlignLeft);
    QVERIFY(Model()->headerData(1, Qt::Horizontal, Qt::TextAlignmentRole).toInt() & Qt::AlignRight);
}

void TableActs::f3GoesOnWithoutTheBar()
{
    table->SetCell(3, 0, QStringLiteral("李四"));
    View()->setCurrentIndex(Model()->index(0, 0));
    QLineEdit* const edit = OpenFind();
    edit->setText(QStringLiteral("李"));
    QTest::keyClick(edit, Qt::Key_Escape);
    QVERIFY(!edit->isVisible());

    QTest::keyClick(View(), Qt::Key_F3);
    QCOMPARE(View()->currentIndex(), Model()->index(1, 0));
    QTest::keyClick(View(), Qt::Key_F3, Qt::ShiftModifier);
    QCOMPARE(View()->currentIndex(), Model()->index(3, 0));
}

void TableActs::whatStandsUnderTheCursorIsLookedFor()
{
    View()->setCurrentIndex(Model()->index(2, 0));
    QLineEdit* const edit = OpenFind();
    QCOMPARE(edit->text(), QStringLiteral("张"));
    QTest::keyClick(edit, Qt::Key_Escape);

    View()->setCurrentIndex(Model()->index(1, 0));
    QCOMPARE(OpenFind()->text(), QStringLiteral("张")); // what was looked for before
}

void TableActs::onlyASelectionCanBeDeleted()
{
    View()->clearSelection();
    QVERIFY(!Part("tableDeleteRows")->isEnabled());

    Select({QPoint(1, 2)});

    QVERIFY(Part("tableDeleteRows")->isEnabled());
}

void TableActs::resultsOfARunAreNotEdited()
{
    QCOMPARE(widget->AppendRow({QStringLiteral("新"), 7}), 4);

    QTRY_COMPARE(host->findChild<QLabel*>(QStringLiteral("tableCount"))->text(),
                 QStringLiteral("共 5 行，运行结果"));
    QVERIFY(!Part("tableAddRow")->isEnabled());
    QVERIFY(Part("tableExport")->isEnabled());
    Select({QPoint(0, 0)});
    QTest::keyClick(View(), Qt::Key_Delete);
    QTest::keySequence(View(), QKeySequence::Paste);
    QCOMPARE(table->GetCell(0, 0).toString(), QStringLiteral("王"));
    QVERIFY(View()->toolTip().contains(QStringLiteral("运行结果")));
}

QTEST_MAIN(TableActs)
#include "tst_tableacts.moc"
