// SPDX-License-Identifier: Apache-2.0

#include "ModalDriver.h"
#include "TestFolder.h"
#include "ToastWatcher.h"

#include <RpaAppData/RpaTableData.h>
#include <RpaAppTool/IAppTableWidget.h>
#include <WbFoundation/ContentLimits.h>

#include <QAbstractItemModelTester>
#include <QClipboard>
#include <QFile>
#include <QFileDialog>
#include <QGuiApplication>
#include <QHelpEvent>
#include <QLabel>
#include <QLineEdit>
#include <QTableView>
#include <QTest>
#include <QTimer>
#include <QToolButton>
#include <QToolTip>

class TableWidget : public QObject
{
    Q_OBJECT

private slots:
    void init();
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
    void aFileIsImported();
    void theTableIsExported();
    void itsEndWhileAFileIsChosenIsNoHarm_data();
    void itsEndWhileAFileIsChosenIsNoHarm();
    void aTableThatCameMeanwhileIsNotFilled();
    void aWorkbookGoesOutAndComesIn();
    void aHundredThousandRowsHoldNobodyUp();
    void anImportCanBeCancelled();
    void aRunEndsAnImport();
    void whatLiesBehindTheLastColumnIsTold();
    void aPasteBeginsAtTheCursorAndIsOneStep();
    void findGoesFromCellToCell();
    void onlyMatchingRowsAreShownAndEdited();

private:
    void ImportFrom(const QString& path)
    {
        ModalDriver modals;
        modals.ThenIn<QFileDialog>([path](QFileDialog* files) { Choose(files, path); });
        PressTool("tableImport");
    }
    void ExportTo(const QString& path)
    {
        ModalDriver modals;
        modals.ThenIn<QFileDialog>([path](QFileDialog* files) { Choose(files, path); });
        PressTool("tableExport");
    }
    QWidget* Part(const char* name) { return host->findChild<QWidget*>(QLatin1String(name)); }
    // As many rows as an import should take a while for.
    QString ManyRows()
    {
        QByteArray lines;
        for (int i = 0; i < 100000; ++i)
            lines += "name " + QByteArray::number(i) + "," + QByteArray::number(i) + "\n";
        return SomeCsv(lines);
    }
    void PressFind()
    {
        View()->setFocus();
        QTest::keyClick(View(), Qt::Key_F, Qt::ControlModifier);
    }

    QTableView* View() { return host->findChild<QTableView*>(QStringLiteral("tableView")); }
    QAbstractItemModel* Model() { return View()->model(); }

    void PressTool(const char* name)
    {
        QTest::mouseClick(host->findChild<QToolButton*>(QLatin1String(name)), Qt::LeftButton);
    }
    static void Choose(QFileDialog* files, const QString& path)
    {
        files->selectFile(path);
        QTest::keyClick(files->findChild<QLineEdit*>(QStringLiteral("fileNameEdit")), Qt::Key_Return);
    }
    QString SomeCsv(const QByteArray& content) const
    {
        QFile file(folder.filePath(QStringLiteral("发票.csv")));
        if (!file.open(QIODevice::WriteOnly) || file.write(content) < 0)
            qFatal("no file");
        return file.fileName();
    }

    const TestFolder folder;
    std::unique_ptr<RpaTableData> table;
    std::unique_ptr<QWidget> host;
    IAppTableWidget* widget = nullptr;
    std::unique_ptr<QAbstractItemModelTester> tester;
};

void TableWidget::init()
{
    tester.reset();
    host = std::make_unique<QWidget>();
    widget = IAppTableWidget::CreateTableWidget(host.get());
    table = std::make_unique<RpaTableData>();
    RpaTableColumn name;
    name.name = QStringLiteral("姓名");
    RpaTableColumn amount;
    amount.name = QStringLiteral("金额");
    amount.type = RpaColumnType::Number;
    table->InsertColumn(-1, name);
    table->InsertColumn(-1, amount);
    table->AppendRow({QStringLiteral("王"), 1});
    widget->SetTableData(table.get());
    tester = std::make_unique<QAbstractItemModelTester>(
        Model(), QAbstractItemModelTester::FailureReportingMode::QtTest);
    host->resize(500, 300);
    host->show();
}

void TableWidget::typedCellsFitTheirColumn()
{
    QVERIFY(!Model()->setData(Model()->index(0, 1), QStringLiteral("viel")));
    QVERIFY(Model()->setData(Model()->index(0, 1), QStringLiteral("12.5")));

    QCOMPARE(table->GetCell(0, 1), QVariant(12.5));
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

void TableWidget::aFileIsImported()
{
    const QString path = SomeCsv("张,2\r\n");
    ModalDriver modals;
    modals.ThenIn<QFileDialog>([path](QFileDialog* files) { Choose(files, path); });

    PressTool("tableImport");

    QTRY_COMPARE(table->GetRowCount(), 2);
    QCOMPARE(table->GetCell(1, 0).toString(), QStringLiteral("张"));
    QTest::keyClick(View(), Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(table->GetRowCount(), 1);
}

void TableWidget::theTableIsExported()
{
    const QString path = folder.filePath(QStringLiteral("导出.csv"));
    ModalDriver modals;
    modals.ThenIn<QFileDialog>([path](QFileDialog* files) {
        QCOMPARE(files->acceptMode(), QFileDialog::AcceptSave);
        QCOMPARE(QFileInfo(files->selectedFiles().value(0)).fileName(), QStringLiteral("表格.xlsx"));
        Choose(files, path);
    });

    PressTool("tableExport");

    QTRY_VERIFY(QFile::exists(path));
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray bytes = file.readAll();
    QVERIFY(bytes.startsWith("\xEF\xBB\xBF"));
    QCOMPARE(QString::fromUtf8(bytes), QStringLiteral("姓名,金额\r\n王,1\r\n"));
}

void TableWidget::itsEndWhileAFileIsChosenIsNoHarm_data()
{
    QTest::addColumn<QByteArray>("button");
    QTest::newRow("import") << QByteArray("tableImport");
    QTest::newRow("export") << QByteArray("tableExport");
}

void TableWidget::itsEndWhileAFileIsChosenIsNoHarm()
{
    QFETCH(QByteArray, button);
    ModalDriver modals;
    modals.ThenIn<QFileDialog>([this](QFileDialog*) {
        tester.reset();
        host.reset();
    });

    PressTool(button);

    QVERIFY(!host);
    QCOMPARE(table->GetRowCount(), 1);
}

// The author may be shown another page while the dialog is open.
void TableWidget::aTableThatCameMeanwhileIsNotFilled()
{
    const QString path = SomeCsv("张,2\r\n");
    RpaTableData other;
    other.InsertColumn(-1, RpaTableColumn());
    ModalDriver modals;
    modals.ThenIn<QFileDialog>([&](QFileDialog* files) {
        widget->SetTableData(&other);
        Choose(files, path);
    });

    PressTool("tableImport");

    QCOMPARE(other.GetRowCount(), 0);
    QCOMPARE(table->GetRowCount(), 1);
    widget->SetTableData(nullptr);
}

void TableWidget::aWorkbookGoesOutAndComesIn()
{
    ToastWatcher toasts;
    const QString path = folder.filePath(QStringLiteral("两行.xlsx"));
    QFile::remove(path);
    table->AppendRow({QStringLiteral("李"), 2.5});
    ExportTo(path);
    QTRY_COMPARE(toasts.GetTexts(), QStringList{QStringLiteral("已导出 2 行")});
    table->ClearRows();

    ImportFrom(path);

    QTRY_COMPARE(table->GetRowCount(), 2);
    QCOMPARE(table->GetRow(1), (QVariantList{QStringLiteral("李"), 2.5}));
    QCOMPARE(toasts.GetTexts().last(), QStringLiteral("已导入 2 行"));
    QVERIFY(!Part("transferProgress")->isVisible());
}

void TableWidget::aHundredThousandRowsHoldNobodyUp()
{
    const QString path = ManyRows();
    const QString book = folder.filePath(QStringLiteral("很多.xlsx"));
    tester.reset(); // asks for every row
    int turns = 0;
    QTimer ticks;
    connect(&ticks, &QTimer::timeout, this, [&turns] { ++turns; });
    ticks.start(0);

    ImportFrom(path);
    QVERIFY(Part("transferProgress")->isVisible());
    QVERIFY(!Part("tableAddRow")->isEnabled());
    QTRY_COMPARE_WITH_TIMEOUT(table->GetRowCount(), 100001, 60000);
    QVERIFY(turns > 0);
    QVERIFY(Part("tableAddRow")->isEnabled());
    ExportTo(book);
    QTRY_VERIFY_WITH_TIMEOUT(!Part("transferProgress")->isVisible(), 60000);
    ImportFrom(book);
    QTRY_COMPARE_WITH_TIMEOUT(table->GetRowCount(), 200002, 60000);

    QCOMPARE(table->GetRow(200001), (QVariantList{QStringLiteral("name 99999"), 99999.0}));
    QTest::keyClick(View(), Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(table->GetRowCount(), 100001);
}

void TableWidget::anImportCanBeCancelled()
{
    ToastWatcher toasts;
    ImportFrom(ManyRows());

    QTest::mouseClick(Part("transferCancel"), Qt::LeftButton);

    QTRY_VERIFY(!Part("transferProgress")->isVisible());
    QCOMPARE(table->GetRowCount(), 1);
    QCOMPARE(toasts.GetTexts(), QStringList{QStringLiteral("已取消")});
    QVERIFY(Part("tableAddRow")->isEnabled());
}

void TableWidget::aRunEndsAnImport()
{
    ToastWatcher toasts;
    ImportFrom(ManyRows());

    widget->SetUserEditable(false);

    QTRY_VERIFY(!Part("transferProgress")->isVisible());
    QCOMPARE(table->GetRowCount(), 1);
    QCOMPARE(toasts.GetTexts().first(), QStringLiteral("流程开始运行，导入已取消"));
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
    PressFind();
    auto* edit = host->findChild<QLineEdit*>(QStringLiteral("lineEditFind"));
    QTRY_VERIFY(edit->isVisible());
    edit->clear();
    QTest::keyClicks(edit, QStringLiteral("12"));
    QTRY_COMPARE(host->findChild<QLabel*>(QStringLiteral("labelFindCount"))->text(),
                 QStringLiteral("共 2 处"));

    QTest::keyClick(edit, Qt::Key_Return);
    QCOMPARE(View()->currentIndex(), Model()->index(1, 0));
    QTest::keyClick(edit, Qt::Key_Return);
    QCOMPARE(View()->currentIndex(), Model()->index(2, 1));
    QTest::keyClick(edit, Qt::Key_Return);
    QCOMPARE(View()->currentIndex(), Model()->index(1, 0));
    QTest::keyClick(edit, Qt::Key_Return, Qt::ShiftModifier);
    QCOMPARE(View()->currentIndex(), Model()->index(2, 1));
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
