// SPDX-License-Identifier: Apache-2.0

#include "RpaTemplateData.h"
#include "RpaTemplateFile.h"
#include "RunPage.h"
#include "ShippedTemplates.h"
#include "TestApp.h"
#include "TestFolder.h"

#include <RpaAppData/RpaAppData.h>
#include <RpaAppData/RpaAppExtendInfo.h>
#include <RpaAppData/RpaToolData.h>
#include <RpaAppData/RpaUIData.h>
#include <RpaAppData/RpaUIDataManager.h>
#include <RpaAppTool/IAppParamWidget.h>
#include <RpaAppTool/IAppTableWidget.h>
#include <RpaEngineCore/IRpaLogManager.h>
#include <RpaEngineModule/RpaEngineModule.h>
#include <RpaPackage/PackageService.h>
#include <RpaPackage/RpaPackageModule.h>
#include <RpaProcessData/ProcessDataManager.h>
#include <RpaProcessData/RpaHtmlNodeManager.h>
#include <RpaProcessData/RpaPackageInfo.h>
#include <RpaProcessData/RpaProcess.h>
#include <RpaProcessData/RpaProcessCheck.h>
#include <WbSystem/PythonInterpreter.h>

#include <QDir>
#include <QFile>
#include <QLabel>
#include <QProcess>
#include <QSignalSpy>
#include <QTcpServer>
#include <QTcpSocket>
#include <QtTest>

namespace
{
QByteArray ReadFile(const QString& name)
{
    QFile file(name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void WriteFile(const QString& name, const QByteArray& content)
{
    QFile file(name);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(content), qint64{content.size()});
}

QString LogText()
{
    QString text;
    for (const RpaLogLine& line :
         RpaEngineModule::Instance()->GetLogManager()->GetLogDataSource()->GetLines())
        text += line.text + QLatin1Char('\n');
    return text;
}

// What the program prints, or what it complains of.
QString Python(const QString& folder, const QString& program)
{
    QProcess python;
    python.setWorkingDirectory(folder);
    python.setProcessChannelMode(QProcess::MergedChannels);
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("PYTHONUTF8"), QStringLiteral("1"));
    python.setProcessEnvironment(environment);
    python.start(PythonInterpreter::Find(), {QStringLiteral("-c"), program});
    python.waitForFinished();
    return QString::fromUtf8(python.readAll());
}

// The Python of tests under wine is Linux' own and knows no drives; without one a path means the same to
// both.
QString WithoutDrive(const QString& path)
{
    return path.mid(path.indexOf(QLatin1Char('/')));
}

RpaTemplateData* Read(const QString& file, QObject* parent)
{
    auto* record = new RpaTemplateData(parent);
    RpaTemplateFile::Decode(ReadFile(QStringLiteral(":/templates/") + file), *record);
    return record;
}
} // namespace

class tst_ShippedTemplates : public QObject
{
    Q_OBJECT

private slots:
    void everyTemplateIsACompleteApp_data();
    void everyTemplateIsACompleteApp();
    void totalsACsvFile();
    void renamesFilesOnlyAfterTheTrialRun();
    void reportsOnACsvFile();
    void fetchesJsonOverHttp();
    void mergesExcelWorkbooks();
    void installsEachTemplateOnce();
    void keepsWhatTheAuthorMadeOfATemplate();

private:
    // Opens the template on the page as a user meets it.
    void Open(const QString& file);
    bool Set(const char* param, const QVariant& value);
    void Run();
    QVariant Cell(int row, int column) const { return Table()->GetCell(row, column); }
    IAppTableWidget* Table() const { return page->findChild<IAppTableWidget*>(); }

    std::unique_ptr<RunPage> page;
    TestFolder folder{QCoreApplication::applicationDirPath() + QStringLiteral("/shipped-XXXXXX")};
};

void tst_ShippedTemplates::Open(const QString& file)
{
    const RpaTemplateData* record = Read(file, this);
    page = std::make_unique<RunPage>();
    page->resize(1280, 672);
    page->show();
    VersionServiceReleasedApp app;
    app.app.kind = file.startsWith(QLatin1String("visual")) ? 0 : 1;
    app.app.id = QStringLiteral("app");
    app.state = 3;
    QVERIFY(page->ShowApp(app, record->GetAppData()));
    RpaEngineModule::Instance()->GetLogManager()->GetLogDataSource()->Initialize();
}

bool tst_ShippedTemplates::Set(const char* param, const QVariant& value)
{
    return page->findChild<IAppParamWidget*>()->SetParam(QString::fromUtf8(param), value);
}

void tst_ShippedTemplates::Run()
{
    auto* runner = page->findChild<AppRunner*>();
    QVERIFY(runner);
    QSignalSpy ended(runner, &AppRunner::SigEnded);
    runner->Run(QStringLiteral("主流程"));
    QTRY_COMPARE_WITH_TIMEOUT(ended.size(), 1, 30000);
}

void tst_ShippedTemplates::everyTemplateIsACompleteApp_data()
{
    QTest::addColumn<QString>("file");
    for (const QString& kind : {QStringLiteral("visual"), QStringLiteral("program")}) {
        const QStringList files = QDir(QStringLiteral(":/templates/") + kind).entryList(QDir::Files);
        QCOMPARE(files.size(), 3);
        for (const QString& file : files)
            QTest::newRow(qPrintable(kind + QLatin1Char(' ') + file)) << kind + QLatin1Char('/') + file;
    }
}

void tst_ShippedTemplates::everyTemplateIsACompleteApp()
{
    QFETCH(QString, file);

    const RpaTemplateData* record = Read(file, this);
    RpaAppData app;

    QVERIFY(!record->GetTemplateName().isEmpty());
    QVERIFY(!record->GetTemplateDirection().isEmpty());
    QVERIFY(app.Parse(record->GetAppData()));
    QCOMPARE(app.GetAppExtendInfo()->GetAppKind(), file.startsWith(QLatin1String("visual")) ? 0 : 1);
    QVERIFY(!app.GetAppExtendInfo()->GetManual().isEmpty());
    QCOMPARE(app.GetUIDataManager()->GetCount(), 1);
    const RpaToolItem tool = app.GetUIDataManager()->GetUIData(0)->GetToolData()->GetItem(0);
    QVERIFY(app.GetProcessDataManager()->FindProcess(tool.processName));
    RpaProcessCheck check(*app.GetProcessDataManager());
    QStringList elements;
    for (const RpaNode& node : app.GetHtmlNodeManager()->GetNodes())
        elements << node.id;
    check.SetElementIds(elements);
    QStringList findings;
    for (const RpaCheckInfo& finding : check.Check(tool.processName))
        findings << finding.statementId + QLatin1Char(' ') + finding.message;
    QCOMPARE(findings, QStringList());
}

void tst_ShippedTemplates::totalsACsvFile()
{
    const QString file = folder.filePath(QStringLiteral("账目.csv"));
    WriteFile(file, QStringLiteral("类别,金额\n办公,10.5\n差旅,3\n办公,2\n").toUtf8());
    Open(QStringLiteral("visual/CSV 分组汇总"));
    QVERIFY(Set("文件", WithoutDrive(file)));

    Run();

    QVERIFY2(Table()->GetRowCount() == 2, qPrintable(LogText()));
    QCOMPARE(Cell(0, 0).toString(), QStringLiteral("办公"));
    QCOMPARE(Cell(0, 1).toDouble(), 12.5);
    QCOMPARE(Cell(0, 2).toInt(), 2);
    QCOMPARE(Cell(1, 1).toDouble(), 3.0);
}

void tst_ShippedTemplates::renamesFilesOnlyAfterTheTrialRun()
{
    const QString place = folder.filePath(QStringLiteral("改名"));
    QVERIFY(QDir().mkpath(place));
    WriteFile(place + QStringLiteral("/a.txt"), "a");
    WriteFile(place + QStringLiteral("/b.txt"), "b");
    Open(QStringLiteral("visual/文件批量改名"));
    QVERIFY(Set("文件夹", WithoutDrive(place)));

    Run();

    const QStringList before{QStringLiteral("a.txt"), QStringLiteral("b.txt")};
    QVERIFY2(Table()->GetRowCount() == 2, qPrintable(LogText()));
    QCOMPARE(QDir(place).entryList(QDir::Files, QDir::Name), before);

    QVERIFY(Set("试运行", false));
    Run();

    const QStringList after{QStringLiteral("文件_001_a.txt"), QStringLiteral("文件_002_b.txt")};
    QCOMPARE(QDir(place).entryList(QDir::Files, QDir::Name), after);
    QCOMPARE(ReadFile(place + QStringLiteral("/文件_001_a.txt")), QByteArray("a"));
}

void tst_ShippedTemplates::reportsOnACsvFile()
{
    const QString file = folder.filePath(QStringLiteral("工单.csv"));
    WriteFile(file, QStringLiteral("编号,状态\n1,完成\n2,处理中\n3,完成\n").toUtf8());
    Open(QStringLiteral("program/CSV 报表"));
    QVERIFY(Set("文件", WithoutDrive(file)));

    Run();

    QVERIFY2(Table()->GetRowCount() == 2, qPrintable(LogText()));
    QCOMPARE(Cell(0, 0).toString(), QStringLiteral("完成"));
    QCOMPARE(Cell(0, 1).toInt(), 2);
    QCOMPARE(QString::fromUtf8(ReadFile(folder.filePath(QStringLiteral("工单-报表.txt")))),
             QStringLiteral("完成\t2\n处理中\t1\n"));
}

void tst_ShippedTemplates::fetchesJsonOverHttp()
{
    QTcpServer server;
    QVERIFY(server.listen(QHostAddress::LocalHost));
    connect(&server, &QTcpServer::newConnection, this, [&server] {
        QTcpSocket* socket = server.nextPendingConnection();
        connect(socket, &QTcpSocket::readyRead, socket, [socket] {
            const QByteArray body = R"([{"name":"a","value":1},{"name":"b","value":2.5}])";
            socket->write("HTTP/1.0 200 OK\r\nContent-Length: " + QByteArray::number(body.size()) +
                          "\r\n\r\n" + body);
            socket->disconnectFromHost();
        });
    });
    Open(QStringLiteral("program/HTTP 数据抓取"));
    QVERIFY(Set("接口地址", QStringLiteral("http://127.0.0.1:%1/").arg(server.serverPort())));

    Run();

    QVERIFY2(Table()->GetRowCount() == 2, qPrintable(LogText()));
    QCOMPARE(Cell(1, 0).toString(), QStringLiteral("b"));
    QCOMPARE(Cell(1, 1).toDouble(), 2.5);
}

void tst_ShippedTemplates::mergesExcelWorkbooks()
{
    const QString place = folder.filePath(QStringLiteral("工作簿"));
    QVERIFY(QDir().mkpath(place));
    const QString make = QStringLiteral(R"(
import openpyxl
for name, rows in (("一月.xlsx", [["甲", 1], ["乙", 2.5]]), ("二月.xlsx", [["丙", 3]])):
    book = openpyxl.Workbook()
    for row in [["姓名", "金额"]] + rows:
        book.active.append(row)
    book.save(name)
open("说明.txt", "w").close()
)");
    QCOMPARE(Python(place, make), QString());
    PackageSettings packages;
    packages.dataFolder = folder.filePath(QStringLiteral("packages"));
    RpaPackageModule::Instance()->GetBuiltIn()->SetSettings(packages);
    Open(QStringLiteral("program/Excel 工作簿合并"));
    QVERIFY(Set("文件夹", WithoutDrive(place)));

    Run();
    Run(); // the result of the first run lies in the folder now, and is no source

    QVERIFY2(Table()->GetRowCount() == 2, qPrintable(LogText()));
    QCOMPARE(Cell(0, 0).toString(), QStringLiteral("一月.xlsx"));
    QCOMPARE(Cell(0, 1).toInt(), 2);
    QCOMPARE(Cell(1, 1).toInt(), 1);
    const QString read = QStringLiteral(R"(
import openpyxl
for row in openpyxl.load_workbook("合并结果.xlsx").active.iter_rows(values_only=True):
    print(*row)
)");
    QCOMPARE(Python(place, read), QStringLiteral("来源 姓名 金额\n"
                                                 "一月.xlsx 甲 1\n"
                                                 "一月.xlsx 乙 2.5\n"
                                                 "二月.xlsx 丙 3\n"));
}

void tst_ShippedTemplates::installsEachTemplateOnce()
{
    const QString visual = folder.filePath(QStringLiteral("once/visual"));
    const QString program = folder.filePath(QStringLiteral("once/program"));
    QVERIFY(QDir().mkpath(visual) && QDir().mkpath(program));

    QVERIFY(ShippedTemplates::Install(visual, program, folder.filePath(QStringLiteral("once"))));

    QCOMPARE(QDir(visual).entryList(QDir::Files).size(), 3);
    QCOMPARE(QDir(program).entryList(QDir::Files).size(), 3);

    QVERIFY(QFile::remove(visual + QStringLiteral("/CSV 分组汇总")));
    QVERIFY(ShippedTemplates::Install(visual, program, folder.filePath(QStringLiteral("once"))));

    QCOMPARE(QDir(visual).entryList(QDir::Files).size(), 2);
}

void tst_ShippedTemplates::keepsWhatTheAuthorMadeOfATemplate()
{
    const QString visual = folder.filePath(QStringLiteral("kept/visual"));
    const QString program = folder.filePath(QStringLiteral("kept/program"));
    QVERIFY(QDir().mkpath(visual) && QDir().mkpath(program));
    WriteFile(visual + QStringLiteral("/CSV 分组汇总"), "mine");

    QVERIFY(ShippedTemplates::Install(visual, program, folder.filePath(QStringLiteral("kept"))));

    QCOMPARE(ReadFile(visual + QStringLiteral("/CSV 分组汇总")), QByteArray("mine"));
}

RPA_TEST_MAIN(tst_ShippedTemplates)

#include "tst_shippedtemplates.moc"
