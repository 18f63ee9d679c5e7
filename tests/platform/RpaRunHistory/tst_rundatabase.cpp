// SPDX-License-Identifier: Apache-2.0

#include "RunDatabase_p.h"
#include "TestFolder.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QtTest>

#include <memory>

namespace
{
RpaRunRecord RunOf(const QString& appId, const QString& processName = QStringLiteral("主流程"))
{
    RpaRunRecord run;
    run.appId = appId;
    run.processName = processName;
    run.started = QDateTime::fromMSecsSinceEpoch(1700000000123, Qt::UTC);
    return run;
}

QVector<RpaLogLine> Lines(qint64 from, qint64 to, const QString& text = QStringLiteral("第 %1 行"))
{
    QVector<RpaLogLine> lines;
    for (qint64 number = from; number <= to; ++number) {
        RpaLogLine line;
        line.number = number;
        line.time = QDateTime::fromMSecsSinceEpoch(1700000000000 + number);
        line.text = text.contains(QLatin1String("%1")) ? text.arg(number) : text;
        lines.append(line);
    }
    return lines;
}
} // namespace

class tst_RunDatabase : public QObject
{
    Q_OBJECT

private slots:
    void init() { folder = std::make_unique<TestFolder>(); }
    void readsWhatWasWritten();
    void findsByFilter_data();
    void findsByFilter();
    void keepsTheNewestRunsOfEachApp();
    void keepsTheLastLinesOfAFlood();
    void keepsWithinItsSize();
    void callsARunLostThatNeverEnded();
    void setsADamagedFileAside_data();
    void setsADamagedFileAside();
    void leavesAFileThatCannotBeOpened();
    void saysWhenTheFolderCannotBeMade();
    void removesARunWithItsLog();
    void givesTheSpaceOfRemovedRunsBack_data();
    void givesTheSpaceOfRemovedRunsBack();
    void readsNumbersOfALaterVersion();

private:
    QString FilePath() const { return folder->filePath(QStringLiteral("runs.sqlite")); }
    void End(RunDatabase* database, RpaRunRecord run, RpaRunResult result = RpaRunResult::Succeeded)
    {
        run.result = result;
        QVERIFY2(database->End(run, &problem), qPrintable(problem));
    }

    std::unique_ptr<TestFolder> folder;
    QString problem;
};

void tst_RunDatabase::readsWhatWasWritten()
{
    RpaRunRecord run = RunOf(QStringLiteral("a1"));
    run.appName = QStringLiteral("对账");
    run.versionId = QStringLiteral("v7");
    run.versionName = QStringLiteral("版本3");
    run.revision = 12;
    run.account = QStringLiteral("zhang");
    run.origin = RpaRunOrigin::Page;
    run.parameters = {{QStringLiteral("部门"), QStringLiteral("财务")}, {QStringLiteral("口令"), QString()}};
    run.packages = QStringList{QStringLiteral("openpyxl 3.1"), QStringLiteral("requests 2.28")};
    {
        RunDatabase database;
        QVERIFY2(database.Open(folder->path(), &problem), qPrintable(problem));
        QVERIFY2(database.Begin(&run, &problem), qPrintable(problem));
        QVERIFY(run.id > 0);
        QVERIFY2(database.AddLines(run.id, Lines(4, 6), &problem), qPrintable(problem));
        run.duration = 1234;
        run.reason = QStringLiteral("找不到文件");
        run.trace = QStringLiteral("Traceback");
        run.failedProcess = QStringLiteral("子流程");
        run.failedStatement = QStringLiteral("s5");
        run.failedLine = 9;
        run.missingLines = 3;
        End(&database, run, RpaRunResult::Failed);
    }

    RunDatabase database;
    QVERIFY2(database.Open(folder->path(), &problem), qPrintable(problem));
    const RpaRunRecord read = database.Read(run.id, &problem);
    QCOMPARE(read.id, run.id);
    QCOMPARE(read.appId, run.appId);
    QCOMPARE(read.appName, run.appName);
    QCOMPARE(read.versionId, run.versionId);
    QCOMPARE(read.versionName, run.versionName);
    QCOMPARE(read.revision, 12);
    QCOMPARE(read.account, run.account);
    QCOMPARE(read.origin, RpaRunOrigin::Page);
    QCOMPARE(read.processName, run.processName);
    QCOMPARE(read.parameters.size(), 2);
    QCOMPARE(read.parameters.at(0).name, QStringLiteral("部门"));
    QCOMPARE(read.parameters.at(0).text, QStringLiteral("财务"));
    QCOMPARE(read.packages, run.packages);
    QCOMPARE(read.started, run.started);
    QCOMPARE(read.duration, 1234);
    QCOMPARE(read.result, RpaRunResult::Failed);
    QCOMPARE(read.reason, run.reason);
    QCOMPARE(read.trace, run.trace);
    QCOMPARE(read.failedProcess, run.failedProcess);
    QCOMPARE(read.failedStatement, run.failedStatement);
    QCOMPARE(read.failedLine, 9);
    QCOMPARE(read.missingLines, 3);
    const QVector<RpaLogLine> log = database.ReadLog(run.id, &problem);
    QCOMPARE(log.size(), 3);
    QCOMPARE(log.at(0).number, 4);
    QCOMPARE(log.at(2).text, QStringLiteral("第 6 行"));
    QCOMPARE(log.at(2).time.toMSecsSinceEpoch(), 1700000000006);
#ifdef Q_OS_UNIX
    QCOMPARE(QFile::permissions(FilePath()) & (QFile::ReadGroup | QFile::ReadOther), QFile::Permissions());
#endif
}

void tst_RunDatabase::findsByFilter_data()
{
    QTest::addColumn<QString>("versionName");
    QTest::addColumn<QVector<int>>("results");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("most");
    QTest::addColumn<QString>("found"); // the newest first

    const QString any;
    const QVector<int> all;
    QTest::newRow("all of the app") << any << all << any << 200 << "丙乙甲";
    QTest::newRow("the newest") << any << all << any << 1 << "丙";
    QTest::newRow("none wanted") << any << all << any << 0 << "";
    QTest::newRow("version") << "试用" << all << any << 200 << "丙乙";
    QTest::newRow("failed") << any << QVector<int>{2} << any << 200 << "乙";
    QTest::newRow("failed or stopped") << any << QVector<int>{2, 3} << any << 200 << "丙乙";
    QTest::newRow("version and result") << "正式" << QVector<int>{2} << any << 200 << "";
    QTest::newRow("process") << any << all << "甲" << 200 << "甲";
    QTest::newRow("part of the version") << any << all << "正" << 200 << "甲";
    QTest::newRow("account") << any << all << "wang" << 200 << "甲";
    QTest::newRow("reason") << any << all << "超时" << 200 << "乙";
    QTest::newRow("log") << any << all << "第 2 行" << 200 << "乙";
    QTest::newRow("percent is a letter") << any << all << "50%" << 200 << "丙";
    QTest::newRow("percent is no wildcard") << any << all << "5%" << 200 << "";
    QTest::newRow("underscore is a letter") << any << all << "a_b" << 200 << "甲";
    QTest::newRow("backslash is a letter") << any << all << "\\" << 200 << "";
}

void tst_RunDatabase::findsByFilter()
{
    QFETCH(const QString, versionName);
    QFETCH(const QVector<int>, results);
    QFETCH(const QString, text);
    QFETCH(const int, most);
    QFETCH(const QString, found);
    RunDatabase database;
    QVERIFY2(database.Open(folder->path(), &problem), qPrintable(problem));
    struct Planned
    {
        const char* app;
        const char* process;
        const char* version;
        const char* versionName;
        const char* account;
        const char* reason;
        RpaRunResult result;
        const char* line;
    };
    const QVector<Planned> plan{
        {"a1", "甲", "v1", "正式", "wang", "", RpaRunResult::Succeeded, "axb a_b"},
        {"a1", "乙", "v2", "试用", "zhang", "连接超时", RpaRunResult::Failed, "第 2 行"},
        {"a2", "甲", "v1", "候选", "wang", "连接超时", RpaRunResult::Failed, "第 2 行"},
        {"a1", "丙", "v2", "试用", "zhang候选", "", RpaRunResult::Stopped, "完成 50%"}};
    for (const Planned& planned : plan) {
        RpaRunRecord run = RunOf(QString::fromUtf8(planned.app), QString::fromUtf8(planned.process));
        run.versionId = QString::fromUtf8(planned.version);
        run.versionName = QString::fromUtf8(planned.versionName);
        run.account = QString::fromUtf8(planned.account);
        QVERIFY2(database.Begin(&run, &problem), qPrintable(problem));
        QVERIFY2(database.AddLines(run.id, Lines(1, 1, QString::fromUtf8(planned.line)), &problem),
                 qPrintable(problem));
        run.reason = QString::fromUtf8(planned.reason);
        End(&database, run, planned.result);
    }

    RpaRunFilter filter{QStringLiteral("a1"), versionName, {}, text, most};
    for (const int result : results)
        filter.results.append(RpaRunResult(result));
    QString names;
    for (const RpaRunRecord& run : database.List(filter, &problem))
        names += run.processName;

    QVERIFY2(problem.isEmpty(), qPrintable(problem));
    QCOMPARE(names, found);
}

void tst_RunDatabase::keepsTheNewestRunsOfEachApp()
{
    RunDatabase database(RunLimits{3, 100, 1 << 30});
    QVERIFY2(database.Open(folder->path(), &problem), qPrintable(problem));
    RpaRunRecord other = RunOf(QStringLiteral("other"));
    QVERIFY(database.Begin(&other, &problem));
    End(&database, other);
    for (int i = 1; i <= 5; ++i) {
        RpaRunRecord run = RunOf(QStringLiteral("a1"), QString::number(i));
        QVERIFY(database.Begin(&run, &problem));
        QVERIFY(database.AddLines(run.id, Lines(1, 2), &problem));
        End(&database, run);
    }

    QStringList names;
    for (const RpaRunRecord& run : database.List({QStringLiteral("a1"), {}, {}, {}, 200}, &problem))
        names.append(run.processName);
    QCOMPARE(names.join(QString()), QStringLiteral("543"));
    QCOMPARE(database.List({QStringLiteral("other"), {}, {}, {}, 200}, &problem).size(), 1);
    QVERIFY(database.ReadLog(other.id + 1, &problem).isEmpty());
    QCOMPARE(database.ReadLog(other.id + 5, &problem).size(), 2);
}

void tst_RunDatabase::keepsTheLastLinesOfAFlood()
{
    RunDatabase database(RunLimits{200, 100, 1 << 30});
    QVERIFY2(database.Open(folder->path(), &problem), qPrintable(problem));
    RpaRunRecord run = RunOf(QStringLiteral("a1"));
    QVERIFY(database.Begin(&run, &problem));

    for (int from = 1; from <= 991; from += 10)
        QVERIFY2(database.AddLines(run.id, Lines(from, from + 9), &problem), qPrintable(problem));
    run.missingLines = 5;
    End(&database, run);

    const QVector<RpaLogLine> log = database.ReadLog(run.id, &problem);
    QVERIFY(log.size() >= 100 && log.size() <= 120);
    QCOMPARE(log.constLast().number, 1000);
    QCOMPARE(log.constFirst().number, 1000 - log.size() + 1);
    QCOMPARE(database.Read(run.id, &problem).missingLines, 1000 - log.size() + 5);
}

void tst_RunDatabase::keepsWithinItsSize()
{
    auto database = std::make_unique<RunDatabase>(RunLimits{200, 10000, 2 * 1024 * 1024});
    QVERIFY2(database->Open(folder->path(), &problem), qPrintable(problem));
    const QString long1000(1000, QLatin1Char('x'));
    qint64 last = 0;
    for (int i = 0; i < 30; ++i) {
        RpaRunRecord run = RunOf(QStringLiteral("a%1").arg(i % 7));
        QVERIFY(database->Begin(&run, &problem));
        QVERIFY(database->AddLines(run.id, Lines(1, 200, long1000), &problem));
        End(database.get(), run);
        last = run.id;
    }

    QCOMPARE(database->ReadLog(last, &problem).size(), 200);
    QCOMPARE(database->Read(1, &problem).id, 0);
    database.reset(); // what was written beside the file comes into it
    QVERIFY(QFileInfo(FilePath()).size() < 3 * 1024 * 1024);
}

void tst_RunDatabase::callsARunLostThatNeverEnded()
{
    RpaRunRecord run = RunOf(QStringLiteral("a1"));
    RpaRunRecord ended = RunOf(QStringLiteral("a1"));
    {
        RunDatabase database;
        QVERIFY(database.Open(folder->path(), &problem));
        QVERIFY(database.Begin(&ended, &problem));
        End(&database, ended, RpaRunResult::Stopped);
        QVERIFY(database.Begin(&run, &problem));
        QCOMPARE(database.Read(run.id, &problem).result, RpaRunResult::Running);
    }

    RunDatabase database;
    QVERIFY(database.Open(folder->path(), &problem));

    QCOMPARE(database.Read(run.id, &problem).result, RpaRunResult::Lost);
    QCOMPARE(database.Read(ended.id, &problem).result, RpaRunResult::Stopped);
}

void tst_RunDatabase::setsADamagedFileAside_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("no database")
        << QByteArray("hello, this is a text and no database at all\n").repeated(200);
    QTest::newRow("header alone") << QByteArray("SQLite format 3\0", 16) + QByteArray(8000, 'z');
}

void tst_RunDatabase::setsADamagedFileAside()
{
    QFETCH(const QByteArray, content);
    QFile file(FilePath());
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(content);
    file.close();

    RunDatabase database;
    QVERIFY2(database.Open(folder->path(), &problem), qPrintable(problem));

    QVERIFY2(problem.isEmpty(), qPrintable(problem));
    RpaRunRecord run = RunOf(QStringLiteral("a1"));
    QVERIFY(database.Begin(&run, &problem));
    QFile aside(FilePath() + QStringLiteral(".damaged"));
    QVERIFY(aside.open(QIODevice::ReadOnly));
    QCOMPARE(aside.readAll(), content);
}

// What is no file of ours is left alone.
void tst_RunDatabase::leavesAFileThatCannotBeOpened()
{
    QVERIFY(QDir(folder->path()).mkdir(QStringLiteral("runs.sqlite")));

    RunDatabase database;
    QVERIFY(!database.Open(folder->path(), &problem));

    QVERIFY(!problem.isEmpty());
    QVERIFY(QFileInfo(FilePath()).isDir());
}

void tst_RunDatabase::saysWhenTheFolderCannotBeMade()
{
    QFile file(folder->filePath(QStringLiteral("taken")));
    QVERIFY(file.open(QIODevice::WriteOnly));

    RunDatabase database;
    QVERIFY(!database.Open(folder->filePath(QStringLiteral("taken/inside")), &problem));

    QVERIFY2(problem.contains(QStringLiteral("无法创建文件夹")), qPrintable(problem));
}

void tst_RunDatabase::removesARunWithItsLog()
{
    RunDatabase database;
    QVERIFY(database.Open(folder->path(), &problem));
    QVector<qint64> ids;
    for (const char* app : {"a1", "a1", "a2"}) {
        RpaRunRecord run = RunOf(QLatin1String(app));
        QVERIFY(database.Begin(&run, &problem));
        QVERIFY(database.AddLines(run.id, Lines(1, 3), &problem));
        End(&database, run);
        ids.append(run.id);
    }

    QVERIFY(database.Remove(ids.at(0), &problem));
    QCOMPARE(database.Read(ids.at(0), &problem).id, 0);
    QVERIFY(database.ReadLog(ids.at(0), &problem).isEmpty());
    QCOMPARE(database.ReadLog(ids.at(1), &problem).size(), 3);

    QVERIFY(database.RemoveAll(QStringLiteral("a1"), &problem));
    QCOMPARE(database.Read(ids.at(1), &problem).id, 0);
    QCOMPARE(database.Read(ids.at(2), &problem).id, ids.at(2));
}

void tst_RunDatabase::givesTheSpaceOfRemovedRunsBack_data()
{
    QTest::addColumn<bool>("all");
    QTest::newRow("one run") << false;
    QTest::newRow("all of the app") << true;
}

void tst_RunDatabase::givesTheSpaceOfRemovedRunsBack()
{
    QFETCH(const bool, all);
    auto database = std::make_unique<RunDatabase>();
    QVERIFY(database->Open(folder->path(), &problem));
    RpaRunRecord run = RunOf(QStringLiteral("a1"));
    QVERIFY(database->Begin(&run, &problem));
    QVERIFY(database->AddLines(run.id, Lines(1, 4000, QString(1000, QLatin1Char('x'))), &problem));
    End(database.get(), run);

    QVERIFY(all ? database->RemoveAll(run.appId, &problem) : database->Remove(run.id, &problem));

    database.reset(); // what was written beside the file comes into it
    QVERIFY(QFileInfo(FilePath()).size() < 200 * 1024);
}

void tst_RunDatabase::readsNumbersOfALaterVersion()
{
    RpaRunRecord run = RunOf(QStringLiteral("a1"));
    RunDatabase database;
    QVERIFY(database.Open(folder->path(), &problem));
    QVERIFY(database.Begin(&run, &problem));
    End(&database, run, RpaRunResult(77));

    QCOMPARE(database.Read(run.id, &problem).result, RpaRunResult::Lost);
}

QTEST_GUILESS_MAIN(tst_RunDatabase)
#include "tst_rundatabase.moc"
