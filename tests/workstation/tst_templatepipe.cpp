// SPDX-License-Identifier: Apache-2.0

// Pipes among the templates, where the system has such files.
#include "TemplateFile.h"
#include "TemplateKeeper.h"
#include "TestFolder.h"

#include <QDir>
#include <QFile>
#include <QtTest>

#include <sys/stat.h>

class tst_TemplatePipe : public QObject
{
    Q_OBJECT

private slots:
    void leavesOutPipesAndLinksToThemWithoutWaitingForAWriter();
};

// Whoever opened one to read it would wait until somebody opens it to write.
void tst_TemplatePipe::leavesOutPipesAndLinksToThemWithoutWaitingForAWriter()
{
    const TestFolder home;
    const QString folder = home.filePath(QStringLiteral("visual"));
    QVERIFY(QDir().mkpath(folder));
    TemplateKeeper keeper({folder}, home.filePath(QStringLiteral("data")));
    TemplateRecord record;
    record.name = QStringLiteral("甲");
    record.appData = "{}";
    QFile file(folder + QStringLiteral("/a"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QVERIFY(file.write(TemplateFile::Encode(record)) > 0);
    file.close();
    QCOMPARE(::mkfifo(QFile::encodeName(folder + QStringLiteral("/b")).constData(), 0600), 0);
    QVERIFY(QFile::link(folder + QStringLiteral("/b"), folder + QStringLiteral("/c")));

    bool looked = false;
    keeper.LookThen([&] { looked = true; });

    QTRY_VERIFY(looked);
    QCOMPARE(
        QDir(keeper.GetFitFolder(folder)).entryList(QDir::NoDotAndDotDot | QDir::AllEntries | QDir::System),
        QStringList{QStringLiteral("a")});
    QCOMPARE(QDir(keeper.GetKeptFolder()).entryList(QDir::Files).size(), 1);
}

QTEST_GUILESS_MAIN(tst_TemplatePipe)
#include "tst_templatepipe.moc"
