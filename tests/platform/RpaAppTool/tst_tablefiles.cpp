// SPDX-License-Identifier: Apache-2.0

#include "ModalDriver.h"
#include "TableForm.h"
#include "TestFolder.h"
#include "ToastWatcher.h"

#include <QFile>
#include <QFileDialog>
#include <QLineEdit>
#include <QTimer>

// Files that the table of a page is filled from and written to.
class TableFiles : public QObject, private TableForm
{
    Q_OBJECT

private slots:
    void init() { Show(); }

    void aFileIsImported();
    void theTableIsExported();
    void itsEndWhileAFileIsChosenIsNoHarm_data();
    void itsEndWhileAFileIsChosenIsNoHarm();
    void aTableThatCameMeanwhileIsNotFilled();
    void aWorkbookGoesOutAndComesIn();
    void aHundredThousandRowsHoldNobodyUp();
    void anImportCanBeCancelled();
    void aRunEndsAnImport();

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
    // As many rows as an import should take a while for.
    QString ManyRows() const
    {
        QByteArray lines;
        for (int i = 0; i < 100000; ++i)
            lines += "name " + QByteArray::number(i) + "," + QByteArray::number(i) + "\n";
        return SomeCsv(lines);
    }

    TestFolder folder;
};

void TableFiles::aFileIsImported()
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

void TableFiles::theTableIsExported()
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

void TableFiles::itsEndWhileAFileIsChosenIsNoHarm_data()
{
    QTest::addColumn<QByteArray>("button");
    QTest::newRow("import") << QByteArray("tableImport");
    QTest::newRow("export") << QByteArray("tableExport");
}

void TableFiles::itsEndWhileAFileIsChosenIsNoHarm()
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
void TableFiles::aTableThatCameMeanwhileIsNotFilled()
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

void TableFiles::aWorkbookGoesOutAndComesIn()
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

void TableFiles::aHundredThousandRowsHoldNobodyUp()
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

void TableFiles::anImportCanBeCancelled()
{
    ToastWatcher toasts;
    ImportFrom(ManyRows());

    QTest::mouseClick(Part("transferCancel"), Qt::LeftButton);

    QTRY_VERIFY(!Part("transferProgress")->isVisible());
    QCOMPARE(table->GetRowCount(), 1);
    QCOMPARE(toasts.GetTexts(), QStringList{QStringLiteral("已取消")});
    QVERIFY(Part("tableAddRow")->isEnabled());
}

void TableFiles::aRunEndsAnImport()
{
    ToastWatcher toasts;
    ImportFrom(ManyRows());

    widget->SetUserEditable(false);

    QTRY_VERIFY(!Part("transferProgress")->isVisible());
    QCOMPARE(table->GetRowCount(), 1);
    QCOMPARE(toasts.GetTexts().first(), QStringLiteral("流程开始运行，导入已取消"));
}

QTEST_MAIN(TableFiles)

#include "tst_tablefiles.moc"
