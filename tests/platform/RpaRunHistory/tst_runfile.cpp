// SPDX-License-Identifier: Apache-2.0

// A run goes to another author as a file, and a file that is none is refused or read in bounds.

#include "TestFolder.h"

#include <RpaRunHistory/RpaRunFile.h>

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QtTest>

#include <memory>

namespace
{
RpaRunFile FileOf()
{
    RpaRunFile file;
    file.record.appId = QStringLiteral("a1");
    file.record.appName = QStringLiteral("对账");
    file.record.versionName = QStringLiteral("版本3");
    file.record.revision = 7;
    file.record.account = QStringLiteral("zhang");
    file.record.origin = RpaRunOrigin::Page;
    file.record.processName = QStringLiteral("主流程");
    file.record.parameters = {{QStringLiteral("口令"), QStringLiteral("••••")}};
    file.record.packages = QStringList{QStringLiteral("openpyxl 3.1")};
    file.record.started = QDateTime::fromMSecsSinceEpoch(1700000000123, Qt::UTC);
    file.record.duration = 4200;
    file.record.result = RpaRunResult::Failed;
    file.record.reason = QStringLiteral("除数不能为零");
    file.record.failedLine = 3;
    RpaLogLine line;
    line.number = 5;
    line.time = QDateTime::fromMSecsSinceEpoch(1700000000500);
    line.level = RpaLogLevel::Warning;
    line.text = QStringLiteral("一行");
    line.line = 2;
    file.log = {line};
    RpaRunSpan span;
    span.kind = RpaSpanKind::Http;
    span.duration = 12;
    span.input = QStringLiteral("GET http://x");
    file.details.spans.spans = {span};
    file.details.spans.sums = {{RpaSpanKind::File, {QStringLiteral("主流程"), {}, 1}, 9, 8, 7, 6}};
    file.details.failure.scopes = {
        {QStringLiteral("全局变量"), {{QStringLiteral("x"), QStringLiteral("int"), QStringLiteral("5")}}}};
    file.details.picture = QByteArray("PNG\0x", 5);
    return file;
}
} // namespace

class tst_RunFile : public QObject
{
    Q_OBJECT

private slots:
    void init() { folder = std::make_unique<TestFolder>(); }
    void readsWhatWasWritten();
    void refusesWhatIsNone_data();
    void refusesWhatIsNone();
    void readsHostileValuesInBounds();
    void saysWhenItCannotBeWrittenOrRead();

private:
    QString Path() const { return folder->filePath(QStringLiteral("a.rparun")); }
    void Put(const QByteArray& bytes)
    {
        QFile file(Path());
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write(bytes), qint64(bytes.size()));
    }

    std::unique_ptr<TestFolder> folder;
    QString problem;
};

void tst_RunFile::readsWhatWasWritten()
{
    const RpaRunFile written = FileOf();
    QVERIFY2(written.Write(Path(), &problem), qPrintable(problem));
    RpaRunFile read;
    QVERIFY2(read.Read(Path(), &problem), qPrintable(problem));

    QCOMPARE(read.record.appName, written.record.appName);
    QCOMPARE(read.record.versionName, written.record.versionName);
    QCOMPARE(read.record.revision, 7);
    QCOMPARE(read.record.account, written.record.account);
    QVERIFY(read.record.origin == RpaRunOrigin::Page);
    QCOMPARE(read.record.parameters.value(0).text, QStringLiteral("••••"));
    QCOMPARE(read.record.packages, written.record.packages);
    QCOMPARE(read.record.started, written.record.started);
    QCOMPARE(read.record.duration, qint64(4200));
    QVERIFY(read.record.result == RpaRunResult::Failed);
    QCOMPARE(read.record.reason, written.record.reason);
    QCOMPARE(read.record.failedLine, 3);
    QCOMPARE(read.log.size(), 1);
    QCOMPARE(read.log.first().text, QStringLiteral("一行"));
    QVERIFY(read.log.first().level == RpaLogLevel::Warning);
    QCOMPARE(read.log.first().time, written.log.first().time);
    QCOMPARE(read.details.spans.spans.value(0).input, QStringLiteral("GET http://x"));
    QCOMPARE(read.details.spans.sums.value(0).count, qint64(9));
    QCOMPARE(read.details.failure.scopes.value(0).variables.value(0).text, QStringLiteral("5"));
    QCOMPARE(read.details.picture, written.details.picture);
}

void tst_RunFile::refusesWhatIsNone_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("reason");
    const QString none = QStringLiteral("这个文件不是运行记录");
    QTest::newRow("empty") << QByteArray() << none;
    QTest::newRow("no JSON") << QByteArray("PK\3\4") << none;
    QTest::newRow("another format") << QByteArray("{\"format\": \"app\"}") << none;
    QTest::newRow("a list") << QByteArray("[]") << none;
    QTest::newRow("of a later workstation") << QByteArray("{\"format\": \"rpa-run\", \"formatVersion\": 2}")
                                            << QStringLiteral("这个文件来自更新的工作站，请先升级");
}

void tst_RunFile::refusesWhatIsNone()
{
    QFETCH(QByteArray, bytes);
    Put(bytes);
    RpaRunFile file = FileOf();

    QVERIFY(!file.Read(Path(), &problem));

    QTEST(problem, "reason");
    QCOMPARE(file.record.appName, QStringLiteral("对账"));
}

void tst_RunFile::readsHostileValuesInBounds()
{
    QByteArray bomb = qCompress(QByteArray(100, 'x'));
    bomb.replace(0, 4, QByteArray("\x7f\xff\xff\xff", 4)); // says that it is two gigabytes
    QJsonObject run{{QStringLiteral("result"), 99},
                    {QStringLiteral("origin"), -4},
                    {QStringLiteral("revision"), -7},
                    {QStringLiteral("duration"), -1},
                    {QStringLiteral("parameters"), 5},
                    {QStringLiteral("packages"), QStringLiteral("x")},
                    {QStringLiteral("reason"), QString(100000, QLatin1Char('r'))}};
    const QJsonObject document{{QStringLiteral("format"), QStringLiteral("rpa-run")},
                               {QStringLiteral("formatVersion"), 1},
                               {QStringLiteral("run"), run},
                               {QStringLiteral("log"), QStringLiteral("none")},
                               {QStringLiteral("spans"), QString::fromLatin1(bomb.toBase64())},
                               {QStringLiteral("sums"), QStringLiteral("!!!!")},
                               {QStringLiteral("failure"), 12}};
    Put(QJsonDocument(document).toJson());
    RpaRunFile file = FileOf();

    QVERIFY2(file.Read(Path(), &problem), qPrintable(problem));

    QVERIFY(file.record.result == RpaRunResult::Lost);
    QCOMPARE(file.record.revision, 0);
    QCOMPARE(file.record.duration, qint64(0));
    QVERIFY(file.record.parameters.isEmpty() && file.record.packages.isEmpty() && file.log.isEmpty());
    QVERIFY(file.record.reason.size() <= 64 * 1024);
    QVERIFY(file.details.spans.IsEmpty() && file.details.failure.IsEmpty());
}

void tst_RunFile::saysWhenItCannotBeWrittenOrRead()
{
    RpaRunFile file = FileOf();

    QVERIFY(!file.Write(folder->filePath(QStringLiteral("no/such/a.rparun")), &problem));
    QVERIFY(problem.startsWith(QStringLiteral("无法写入文件")));
    QVERIFY(!file.Read(folder->filePath(QStringLiteral("missing.rparun")), &problem));
    QVERIFY(problem.startsWith(QStringLiteral("无法读取文件")));
}

QTEST_GUILESS_MAIN(tst_RunFile)
#include "tst_runfile.moc"
