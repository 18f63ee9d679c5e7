// SPDX-License-Identifier: Apache-2.0

#include "TestFolder.h"

#include <WbSystem/RegularFile.h>

#include <QDir>
#include <QFile>
#include <QtTest>

#include <sys/stat.h>

class RegularFileTest : public QObject
{
    Q_OBJECT

private slots:
    void opensAFile();
    void refusesWhatIsNoFileWithoutWaiting_data();
    void refusesWhatIsNoFileWithoutWaiting();
};

void RegularFileTest::opensAFile()
{
    const TestFolder place;
    QFile written(place.filePath(QStringLiteral("文件")));
    QVERIFY(written.open(QIODevice::WriteOnly));
    written.write("content");
    written.close();
    QFile file;
    QString problem;

    QVERIFY2(RegularFile::Open(&file, place.filePath(QStringLiteral("文件")), &problem), qPrintable(problem));

    QCOMPARE(file.size(), qint64(7));
    QCOMPARE(file.readAll(), QByteArray("content"));
}

void RegularFileTest::refusesWhatIsNoFileWithoutWaiting_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("expected");
    QTest::newRow("nothing") << QStringLiteral("nothing") << QStringLiteral("无法打开：");
    for (const char* name : {"pipe", "link to a pipe", "folder", "link to a file", "link to nothing"})
        QTest::newRow(name) << QString::fromLatin1(name) << QStringLiteral("不是普通文件");
}

void RegularFileTest::refusesWhatIsNoFileWithoutWaiting()
{
    QFETCH(QString, name);
    QFETCH(QString, expected);
    const TestFolder place;
    const QString pipe = place.filePath(QStringLiteral("pipe"));
    QCOMPARE(::mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    QVERIFY(QDir(place.path()).mkdir(QStringLiteral("folder")));
    QFile target(place.filePath(QStringLiteral("file")));
    QVERIFY(target.open(QIODevice::WriteOnly));
    QVERIFY(QFile::link(pipe, place.filePath(QStringLiteral("link to a pipe"))));
    QVERIFY(QFile::link(target.fileName(), place.filePath(QStringLiteral("link to a file"))));
    QVERIFY(QFile::link(place.filePath(QStringLiteral("gone")),
                        place.filePath(QStringLiteral("link to nothing"))));
    QFile file;
    QString problem;

    QVERIFY(!RegularFile::Open(&file, place.filePath(name), &problem));

    QVERIFY2(problem.startsWith(expected), qPrintable(problem));
    QVERIFY(!file.isOpen());
}

QTEST_GUILESS_MAIN(RegularFileTest)
#include "tst_regularfile_linux.moc"
