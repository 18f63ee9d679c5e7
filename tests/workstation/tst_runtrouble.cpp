// SPDX-License-Identifier: Apache-2.0

#include "ModalDriver.h"
#include "PageFixture.h"
#include "RunAside.h"
#include "RunLog.h"
#include "RunPage.h"
#include "RunReport.h"
#include "TestApp.h"
#include "TestFolder.h"

#include <RpaAppData/RpaAppData.h>
#include <RpaAppData/RpaAppExtendInfo.h>
#include <RpaAppData/RpaToolData.h>
#include <RpaAppData/RpaUIData.h>
#include <RpaAppData/RpaUIDataManager.h>
#include <RpaPackage/PackageService.h>
#include <RpaPackage/RpaPackageModule.h>
#include <RpaProcessData/ProcessDataManager.h>
#include <RpaProcessData/RpaPackageInfo.h>
#include <RpaProcessData/RpaProcess.h>
#include <WbBaseUI/WbTheme.h>

#include <QAction>
#include <QClipboard>
#include <QDialog>
#include <QFile>
#include <QFileDialog>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QtTest>

namespace
{
constexpr int longWaitMs = 30000;
constexpr int programKind = 1;

int StartCount()
{
    return RunLog().filter(QStringLiteral("开始运行流程")).size();
}
} // namespace

// The first minute of a user with an app that does not work.
class tst_RunTrouble : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void aFailedRunSaysWhyInWords();
    void aPageWithoutToolsSaysSo();
    void aFailedRunIsTriedAgain();
    void theReportTellsTheAuthorWhatHappened();
    void theReportNamesLevelsAsTheLogDoes();
    void theLogIsSavedAsAFile();
    void packagesThatCannotBeInstalledAreOfferedAgain();
    void contentThatCannotBeReadIsReported();
    void instructionsThatSayNothingTakeNoRoom_data();
    void instructionsThatSayNothingTakeNoRoom();

private:
    void Show(const QString& program, const std::function<void(RpaAppData&)>& change = {});
    void RunUntilTrouble();
    QString Problem() const { return Child<QLabel>(*page, "labelRunProblem")->text(); }

    // On a drive that stands for the root of Linux under wine: its Python knows no drives, and without one a
    // path means the same to both.
    TestFolder folder{QCoreApplication::applicationDirPath() + QStringLiteral("/trouble-XXXXXX")};
    QString noWorkbook;
    std::unique_ptr<RunPage> page;
};

void tst_RunTrouble::initTestCase()
{
    WbTheme::Instance()->Apply(WbTheme::Scheme::Light);
    QCoreApplication::setApplicationVersion(QStringLiteral("9.8.7"));
    noWorkbook = folder.filePath(QStringLiteral("发票.xlsx"));
    QFile file(noWorkbook);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QVERIFY(file.write("no workbook") > 0);
    noWorkbook.remove(0, noWorkbook.indexOf(QLatin1Char('/'))); // the drive
}

void tst_RunTrouble::init()
{
    page = std::make_unique<RunPage>();
    page->resize(1280, 672);
    page->show();
}

void tst_RunTrouble::cleanup()
{
    page.reset();
    RpaPackageModule::Instance()->GetBuiltIn()->Shutdown();
    RpaPackageModule::Instance()->GetBuiltIn()->SetSettings({});
}

void tst_RunTrouble::Show(const QString& program, const std::function<void(RpaAppData&)>& change)
{
    RpaAppData app;
    app.InitDefault();
    app.GetProcessDataManager()->GetProcess(0)->SetProgramText(program);
    if (change)
        change(app);
    VersionServiceReleasedApp released;
    released.app.id = QStringLiteral("a");
    released.app.name = QStringLiteral("报销");
    released.app.kind = programKind;
    released.versionName = QStringLiteral("版本3");
    released.state = 3;
    QVERIFY(page->ShowApp(released, app.ToJson()));
}

void tst_RunTrouble::RunUntilTrouble()
{
    // As the library for workbooks does it, which is not everywhere.
    Show(QStringLiteral("import zipfile\ndef load_workbook(filename):\n    zipfile.ZipFile(filename)\n"
                        "load_workbook('%1')\n")
             .arg(noWorkbook));
    QTest::mouseClick(Child<QPushButton>(*page, "toolButton0"), Qt::LeftButton);
    QTRY_VERIFY_WITH_TIMEOUT(Child<QWidget>(*page, "runNotice")->isVisible(), longWaitMs);
}

void tst_RunTrouble::aFailedRunSaysWhyInWords()
{
    RunUntilTrouble();

    QCOMPARE(Problem(), QStringLiteral("运行失败：该文件不是 Excel 工作簿：%1").arg(noWorkbook));
    auto* details = Child<QPlainTextEdit>(*page, "textRunDetails");
    QVERIFY(!details->isVisible());

    QTest::mouseClick(Child<QPushButton>(*page, "buttonRunDetails"), Qt::LeftButton);

    QVERIFY(details->isVisible());
    QVERIFY(details->toPlainText().contains(QStringLiteral("Traceback")));
}

void tst_RunTrouble::aPageWithoutToolsSaysSo()
{
    Show(QStringLiteral("print('up')"));
    QVERIFY(!Child<QWidget>(*page, "labelNoTools")->isVisible());

    Show(QStringLiteral("print('up')"),
         [](RpaAppData& app) { app.GetUIDataManager()->GetUIData(0)->GetToolData()->SetContent({}); });

    QVERIFY(Child<QWidget>(*page, "labelNoTools")->isVisible());
}

void tst_RunTrouble::aFailedRunIsTriedAgain()
{
    RunUntilTrouble();
    QCOMPARE(StartCount(), 1);
    auto* again = Child<QPushButton>(*page, "buttonRunAgain");
    QCOMPARE(again->text(), QStringLiteral("再次运行"));

    QTest::mouseClick(again, Qt::LeftButton);

    QTRY_COMPARE(StartCount(), 2);
    QTRY_VERIFY_WITH_TIMEOUT(Child<QWidget>(*page, "runNotice")->isVisible(), longWaitMs);
}

void tst_RunTrouble::theReportTellsTheAuthorWhatHappened()
{
    RunUntilTrouble();

    QTest::mouseClick(Child<QPushButton>(*page, "buttonRunReport"), Qt::LeftButton);
    auto* dialog = page->findChild<QDialog*>(QStringLiteral("RunReportDialog"));
    QVERIFY(dialog);
    auto* text = dialog->findChild<QPlainTextEdit*>(QStringLiteral("textReport"));
    const QString report = text->toPlainText();

    for (const QString& part : {QStringLiteral("报销（线上 · 版本3）"), QStringLiteral("9.8.7"), Problem(),
                                QStringLiteral("Traceback"), QStringLiteral("开始运行流程")})
        QVERIFY2(report.contains(part), qPrintable(part));
    text->moveCursor(QTextCursor::Start);
    QTest::keyClicks(text, QStringLiteral("seen "));
    QTest::mouseClick(dialog->findChild<QWidget*>(QStringLiteral("buttonCopyReport")), Qt::LeftButton);
    QCOMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("seen ") + report);
    QVERIFY(!dialog->isVisible());
}

void tst_RunTrouble::theReportNamesLevelsAsTheLogDoes()
{
    RunUntilTrouble();
    IRpaLogManager* const log = RpaEngineModule::Instance()->GetLogManager();
    log->Append(RpaLogLevel::Debug, QStringLiteral("one"));
    log->Append(RpaLogLevel::Info, QStringLiteral("two"));
    log->Append(RpaLogLevel::Warning, QStringLiteral("three"));
    log->Append(RpaLogLevel::Error, QStringLiteral("four"));

    const QString report = RunReportDialog::Write(QStringLiteral("报销"), QString(), QString());

    for (const char* line : {" 调试 one\n", " 信息 two\n", " 警告 three\n", " 错误 four\n"})
        QVERIFY2(report.contains(QString::fromUtf8(line)), qPrintable(report));
}

void tst_RunTrouble::theLogIsSavedAsAFile()
{
    RunUntilTrouble();
    const TestFolder kept;
    const QString path = kept.filePath(QStringLiteral("log.txt"));
    ModalDriver modals;
    modals.ThenIn<QFileDialog>([&path](QFileDialog* files) {
        auto* name = Child<QLineEdit>(*files, "fileNameEdit");
        name->setText(path);
        QTest::keyClick(name, Qt::Key_Return);
    });

    Child<QAction>(*page, "actionLogSave")->trigger();

    QTRY_VERIFY(QFile::exists(path));
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QVERIFY(
        QString::fromUtf8(file.readAll()).contains(QStringLiteral("[错误] 第 3 行 流程“主流程”运行失败")));
    // Nobody could show it, so the user is not asked to look.
    QVERIFY(!Child<QAction>(*page, "actionLogShow")->isVisible());
}

void tst_RunTrouble::packagesThatCannotBeInstalledAreOfferedAgain()
{
    PackageSettings settings;
    settings.dataFolder = folder.filePath(QStringLiteral("packages"));
    settings.python = folder.filePath(QStringLiteral("no-python"));
    PackageService* const service = RpaPackageModule::Instance()->GetBuiltIn();
    service->SetSettings(settings);
    service->SetApp(QStringLiteral("a"));
    QSignalSpy finished(service, &IPackageService::SigInstallFinished);
    Show(QStringLiteral("print('up')"), [](RpaAppData& app) {
        const auto item = QSharedPointer<PackageItem>::create();
        item->name = QStringLiteral("no-such-package-anywhere");
        app.GetPackageInfo()->SetListPackageItemPtr({item});
    });

    QTest::mouseClick(Child<QPushButton>(*page, "toolButton0"), Qt::LeftButton);
    QTRY_VERIFY_WITH_TIMEOUT(Child<QWidget>(*page, "runNotice")->isVisible(), longWaitMs);

    QVERIFY2(Problem().startsWith(QStringLiteral("没有运行，扩展包没有装好：")), qPrintable(Problem()));
    QVERIFY(Problem().size() > 15);
    QCOMPARE(StartCount(), 0);
    auto* again = Child<QPushButton>(*page, "buttonRunAgain");
    QCOMPARE(again->text(), QStringLiteral("重新安装并运行"));
    QTest::mouseClick(again, Qt::LeftButton);
    QTRY_COMPARE_WITH_TIMEOUT(finished.size(), 2, longWaitMs);
    QTRY_VERIFY(Child<QWidget>(*page, "runNotice")->isVisible());
    QCOMPARE(StartCount(), 0);
}

void tst_RunTrouble::contentThatCannotBeReadIsReported()
{
    VersionServiceReleasedApp released;
    released.app.name = QStringLiteral("报销");
    QVERIFY(!page->ShowApp(released, "no app"));

    QTest::mouseClick(Child<QWidget>(*page, "buttonReport"), Qt::LeftButton);

    QVERIFY(page->findChild<QDialog*>(QStringLiteral("RunReportDialog")));
}

void tst_RunTrouble::instructionsThatSayNothingTakeNoRoom_data()
{
    QTest::addColumn<QString>("instructions");
    QTest::addColumn<bool>("shown");

    QTest::newRow("none") << QString() << false;
    QTest::newRow("tags only") << QStringLiteral("<html><head><style>p { margin: 0 }</style></head><body>"
                                                 "<p>&nbsp;<br></p></body></html>")
                               << false;
    QTest::newRow("words") << QStringLiteral("<p>先填写</p>") << true;
    QTest::newRow("plain words") << QStringLiteral("先填写") << true;
    QTest::newRow("a picture") << QStringLiteral("<p><img src=\"data:x\"></p>") << true;
}

void tst_RunTrouble::instructionsThatSayNothingTakeNoRoom()
{
    QFETCH(QString, instructions);
    QFETCH(bool, shown);

    Show(QStringLiteral("print('up')"),
         [&](RpaAppData& app) { app.GetAppExtendInfo()->manual = instructions; });

    QCOMPARE(page->findChild<RunAside*>()->isVisible(), shown);
}

RPA_TEST_MAIN(tst_RunTrouble)

#include "tst_runtrouble.moc"
