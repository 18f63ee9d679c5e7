// SPDX-License-Identifier: Apache-2.0

#include "AppExport.h"
#include "AppImport.h"
#include "ReleaseFixture.h"
#include "SmallApp.h"
#include "TestApp.h"
#include "TestFolder.h"
#include "TransferController.h"

#include <RpaServiceClient/VersionServiceClient.h>
#include <RpaServiceClient/versions/CreateVersionRequest.h>

#include <QJsonArray>
#include <QSignalSpy>
#include <QtTest>

namespace
{
VersionServiceContent Version(const QString& name, int number)
{
    return {name, QStringLiteral("说明\n") + name, QStringLiteral("1.%1").arg(number),
            SmallApp(number).toUtf8()};
}

QByteArray FileOf(const AppFile::Head& head, const QVector<VersionServiceContent>& versions,
                  const QString& path)
{
    QString problem;
    {
        AppFile::Writer writer;
        writer.Begin(path, head, &problem);
        for (const auto& version : versions)
            writer.Add(version, &problem);
        writer.Finish(&problem);
    }
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}
} // namespace

// An app goes into a file and comes back from one, which may be anybody's.
class tst_AppTransfer : public ReleaseFixture
{
    Q_OBJECT

private slots:
    void init() { SignIn("author-1"); }
    void appComesBackAsItWas();
    void strangeFileIsRefused_data();
    void strangeFileIsRefused();
    void unfinishedImportLeavesNothing();
    void cancelledExportLeavesTheFileAsItWas();
    void fileNameFitsEverySystem();

private:
    QJsonArray Versions(const QString& app)
    {
        return Send("GET", QStringLiteral("/api/v1/apps/%1/versions").arg(app), {})
            .value(QLatin1String("versions"))
            .toArray();
    }
    int Count(const QString& path)
    {
        return Send("GET", path, {}).value(QLatin1String("apps")).toArray().size();
    }
    // Problem and app id.
    static QStringList Run(AppTransfer* transfer)
    {
        QSignalSpy ended(transfer, &AppTransfer::SigEnded);
        transfer->Start();
        if (ended.isEmpty())
            ended.wait(10000);
        return ended.size() == 1 ? QStringList{ended.first().at(0).toString(), ended.first().at(1).toString()}
                                 : QStringList();
    }
    QStringList Import(const QByteArray& content)
    {
        QFile file(Path("import.rpaapp"));
        file.open(QIODevice::WriteOnly);
        file.write(content);
        file.close();
        AppImport import(file.fileName());
        return Run(&import);
    }
    QString Path(const char* name) const { return folder.filePath(QLatin1String(name)); }

    TestFolder folder;
};

void tst_AppTransfer::appComesBackAsItWas()
{
    const QString app = Release(QStringLiteral("搬家"), 2); // leaves a copy to work on
    Send("PATCH", QStringLiteral("/api/v1/apps/") + app, R"({"tags":["财务"]})");
    VersionServiceClient client;
    bool isSaved = false;
    client.Send(CreateVersionRequest{app, Version(QStringLiteral("v1"), 7)}, this,
                [&isSaved](const auto& result) { isSaved = result.success; });
    QTRY_VERIFY(isSaved);
    AppRecord record;
    record.id = app;
    record.name = QStringLiteral("搬家");
    record.kind = 1;
    record.tags = QStringList{QStringLiteral("财务")};
    AppExport exported(record, Path("export.rpaapp"));
    QSignalSpy progress(&exported, &AppTransfer::SigProgress);

    QCOMPARE(Run(&exported), QStringList({QString(), QString()}));
    QCOMPARE(progress.size(), 4);
    QCOMPARE(progress.last(), QVariantList({3, 3}));
    AppImport import(Path("export.rpaapp"));
    const QStringList outcome = Run(&import);

    QCOMPARE(outcome.value(0), QString());
    const QJsonObject made = Send("GET", QStringLiteral("/api/v1/apps/") + outcome.value(1), {});
    QCOMPARE(made.value(QLatin1String("name")).toString(), QStringLiteral("搬家 2"));
    QCOMPARE(made.value(QLatin1String("kind")).toInt(), 1);
    QCOMPARE(made.value(QLatin1String("tags")).toArray(), QJsonArray{QStringLiteral("财务")});
    const QJsonArray before = Versions(app);
    const QJsonArray after = Versions(outcome.value(1));
    QCOMPARE(after.size(), 3);
    for (int i = 0; i < after.size(); ++i) {
        for (const char* same : {"sha256", "description", "apiVersion"})
            QCOMPARE(after.at(i).toObject().value(QLatin1String(same)),
                     before.at(i).toObject().value(QLatin1String(same)));
        QCOMPARE(after.at(i).toObject().value(QLatin1String("state")).toInt(), 1);
    }
    QCOMPARE(after.at(0).toObject().value(QLatin1String("name")).toString(), QStringLiteral("v1 2"));
    QCOMPARE(after.at(2).toObject().value(QLatin1String("name")).toString(), QStringLiteral("v1"));
}

void tst_AppTransfer::strangeFileIsRefused_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("says");
    const AppFile::Head head{QStringLiteral("甲"), 0, {QStringLiteral("财务")}, 2};
    const QVector<VersionServiceContent> two{Version(QStringLiteral("一"), 1),
                                             Version(QStringLiteral("二"), 2)};
    const auto file = [this](const AppFile::Head& told, const QVector<VersionServiceContent>& versions) {
        return FileOf(told, versions, Path("made.rpaapp"));
    };
    const auto row = [](const char* name, const QByteArray& content, const char* says) {
        QTest::newRow(name) << content << QString::fromUtf8(says);
    };
    const QByteArray good = file(head, two);
    row("empty", {}, "这不是导出的应用文件");
    row("another format", QByteArray(good).replace("rpa-app", "another"), "这不是导出的应用文件");
    row("a newer format", QByteArray(good).replace("\"formatVersion\":1", "\"formatVersion\":2"),
        "请先更新本程序");
    row("no end of the line", QByteArray(100000, ' '), "这不是导出的应用文件");
    row("cut", good.left(good.size() - 2), "第 2 个版本的内容不完整");
    row("something behind", good + "x", "末尾有多余的内容");
    row("a byte changed", QByteArray(good).replace("\"n\":2", "\"n\":3"), "第 2 个版本的内容不完整");
    row("fewer versions than told", file(head, {two.first()}), "第 2 个版本的名称或描述不正确");
    row("no kind", file({head.name, 2, {}, 2}, two), "名称、类型或标签不正确");
    row("a long name", file({QString(51, QLatin1Char('x')), 0, {}, 2}, two), "名称、类型或标签不正确");
    row("eleven tags",
        file({head.name, 0, QString(11, QLatin1Char('a')).split(QString(), Qt::SkipEmptyParts), 2}, two),
        "名称、类型或标签不正确");
    row("too many versions", file({head.name, 0, {}, 501}, two), "名称、类型或标签不正确");
    row("one name twice", file(head, {two.first(), two.first()}), "第 2 个版本的名称或描述不正确");
    row("no app", file(head, {two.first(), {QStringLiteral("二"), {}, {}, "{}"}}), "第 2 个版本不是应用");
    row("a huge size", QByteArray(good).replace("\"size\":", "\"size\":9999999"), "超过 64 MB");
}

void tst_AppTransfer::strangeFileIsRefused()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, says);
    const int before = Count(QStringLiteral("/api/v1/apps"));

    const QStringList outcome = Import(content);

    QVERIFY2(outcome.value(0).contains(says), qPrintable(outcome.value(0)));
    QCOMPARE(outcome.value(1), QString());
    QCOMPARE(Count(QStringLiteral("/api/v1/apps")), before);
    QCOMPARE(Count(QStringLiteral("/api/v1/deleted-apps")), 0);
}

void tst_AppTransfer::unfinishedImportLeavesNothing()
{
    const QByteArray file =
        FileOf({QStringLiteral("半途"), 0, {}, 2},
               {Version(QStringLiteral("一"), 1), Version(QStringLiteral("二"), 2)}, Path("made.rpaapp"));
    QVERIFY(!file.isEmpty());
    const int before = Count(QStringLiteral("/api/v1/apps"));
    AppImport import(Path("made.rpaapp"));
    connect(&import, &AppTransfer::SigProgress, this, [&import](int done) {
        if (done == 1)
            import.Cancel();
    });

    QCOMPARE(Run(&import).value(0), QStringLiteral("已取消"));

    QCOMPARE(Count(QStringLiteral("/api/v1/apps")), before);
    QCOMPARE(Count(QStringLiteral("/api/v1/deleted-apps")), 0);
}

void tst_AppTransfer::cancelledExportLeavesTheFileAsItWas()
{
    AppRecord record;
    record.id = Release(QStringLiteral("不走"), 1);
    record.name = QStringLiteral("不走");
    QFile file(Path("kept.rpaapp"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("former");
    file.close();
    {
        AppExport exported(record, file.fileName());
        connect(&exported, &AppTransfer::SigProgress, this, [&exported](int done) {
            if (done == 1)
                exported.Cancel();
        });
        QCOMPARE(Run(&exported).value(0), QStringLiteral("已取消"));
    }

    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), QByteArray("former"));
}

void tst_AppTransfer::fileNameFitsEverySystem()
{
    QCOMPARE(TransferController::FileNameOf(QStringLiteral("a/b:c?\"<x>|*\\d. ")),
             QStringLiteral("a_b_c___x____d.rpaapp"));
    QCOMPARE(TransferController::FileNameOf(QStringLiteral("...")), QStringLiteral("应用.rpaapp"));
}

RPA_TEST_MAIN(tst_AppTransfer)
#include "tst_apptransfer.moc"
