// SPDX-License-Identifier: Apache-2.0

#include "TestFolder.h"

#include <WbSystem/DurableFile.h>

#include <QDir>
#include <QFile>
#include <QTest>

class DurableFileTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void writesANewFile();
    void replacesAFile();
    void writesAnEmptyFile();
    void writesBelowANameOfAnyScript();
    void leavesNothingBesideTheFile();
    void writesOverWhatAnInterruptedWriteLeft();
    void createsAFolderWithItsParents();
    void acceptsAFolderThatIsThere();
    void refusesAFolderWhereAFileStands();
    void saysWhichPathCannotBeWritten();
    void keepsTheOldContentWhenTheNewCannotBePutThere();
    void renamesOverAnotherFile();
    void saysWhatCannotBeRenamed();
    void removesAFile();
    void takesAMissingFileAsRemoved();
    void saysWhatCannotBeRemoved();

private:
    QString Path(const QString& name) const { return folder->filePath(name); }
    static QByteArray ContentOf(const QString& path);
    QStringList Names() const
    {
        return QDir(folder->path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot);
    }

    std::unique_ptr<TestFolder> folder;
};

void DurableFileTest::init()
{
    folder = std::make_unique<TestFolder>();
    QVERIFY(folder->isValid());
}

QByteArray DurableFileTest::ContentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("cannot be read");
}

void DurableFileTest::writesANewFile()
{
    const QByteArray bytes(3 << 20, 'a');
    QString problem;

    QVERIFY2(DurableFile::Write(Path(QStringLiteral("a")), bytes, &problem), qPrintable(problem));

    QCOMPARE(ContentOf(Path(QStringLiteral("a"))), bytes);
    QVERIFY(problem.isEmpty());
}

void DurableFileTest::replacesAFile()
{
    QString problem;
    QVERIFY(DurableFile::Write(Path(QStringLiteral("a")), "a long first content", &problem));

    QVERIFY(DurableFile::Write(Path(QStringLiteral("a")), "second", &problem));

    QCOMPARE(ContentOf(Path(QStringLiteral("a"))), QByteArray("second"));
}

void DurableFileTest::writesAnEmptyFile()
{
    QString problem;

    QVERIFY(DurableFile::Write(Path(QStringLiteral("a")), QByteArray(), &problem));

    QCOMPARE(ContentOf(Path(QStringLiteral("a"))), QByteArray());
}

void DurableFileTest::writesBelowANameOfAnyScript()
{
    QString problem;
    const QString below = Path(QStringLiteral("我的 草稿"));
    QVERIFY(DurableFile::CreateFolder(below, &problem));

    QVERIFY2(DurableFile::Write(below + QStringLiteral("/版本1"), "x", &problem), qPrintable(problem));

    QCOMPARE(ContentOf(below + QStringLiteral("/版本1")), QByteArray("x"));
}

void DurableFileTest::leavesNothingBesideTheFile()
{
    QString problem;

    QVERIFY(DurableFile::Write(Path(QStringLiteral("a")), "x", &problem));

    QCOMPARE(Names(), QStringList{QStringLiteral("a")});
}

void DurableFileTest::writesOverWhatAnInterruptedWriteLeft()
{
    // given
    QFile left(Path(QStringLiteral("a.tmp")));
    QVERIFY(left.open(QIODevice::WriteOnly));
    left.write("half of something longer than the new content");
    left.close();
    QString problem;

    // when
    QVERIFY(DurableFile::Write(Path(QStringLiteral("a")), "whole", &problem));

    // then
    QCOMPARE(ContentOf(Path(QStringLiteral("a"))), QByteArray("whole"));
    QCOMPARE(Names(), QStringList{QStringLiteral("a")});
}

void DurableFileTest::createsAFolderWithItsParents()
{
    QString problem;

    QVERIFY2(DurableFile::CreateFolder(Path(QStringLiteral("a/b/c")), &problem), qPrintable(problem));

    QVERIFY(QDir(Path(QStringLiteral("a/b/c"))).exists());
}

void DurableFileTest::acceptsAFolderThatIsThere()
{
    QString problem;

    QVERIFY(DurableFile::CreateFolder(folder->path(), &problem));
}

void DurableFileTest::refusesAFolderWhereAFileStands()
{
    QString problem;
    QVERIFY(DurableFile::Write(Path(QStringLiteral("a")), "x", &problem));

    QVERIFY(!DurableFile::CreateFolder(Path(QStringLiteral("a")), &problem));

    QVERIFY2(problem.contains(QDir::toNativeSeparators(Path(QStringLiteral("a")))), qPrintable(problem));
}

void DurableFileTest::saysWhichPathCannotBeWritten()
{
    const QString path = Path(QStringLiteral("missing/a"));
    QString problem;

    QVERIFY(!DurableFile::Write(path, "x", &problem));

    QVERIFY2(problem.startsWith(QStringLiteral("无法写入文件“")), qPrintable(problem));
    QVERIFY2(problem.contains(QDir::toNativeSeparators(path)), qPrintable(problem));
    QVERIFY2(problem.endsWith(QStringLiteral("文件夹不存在")), qPrintable(problem));
}

void DurableFileTest::keepsTheOldContentWhenTheNewCannotBePutThere()
{
    // given a folder that stands where the unfinished file would be
    QString problem;
    QVERIFY(DurableFile::Write(Path(QStringLiteral("a")), "old", &problem));
    QVERIFY(QDir(folder->path()).mkpath(QStringLiteral("a.tmp/inside")));

    // when
    QVERIFY(!DurableFile::Write(Path(QStringLiteral("a")), "new", &problem));

    // then
    QVERIFY(!problem.isEmpty());
    QCOMPARE(ContentOf(Path(QStringLiteral("a"))), QByteArray("old"));
}

void DurableFileTest::renamesOverAnotherFile()
{
    QString problem;
    QVERIFY(DurableFile::Write(Path(QStringLiteral("a")), "from a", &problem));
    QVERIFY(DurableFile::Write(Path(QStringLiteral("b")), "from b", &problem));

    QVERIFY(DurableFile::Rename(Path(QStringLiteral("a")), Path(QStringLiteral("b")), &problem));

    QCOMPARE(Names(), QStringList{QStringLiteral("b")});
    QCOMPARE(ContentOf(Path(QStringLiteral("b"))), QByteArray("from a"));
}

void DurableFileTest::saysWhatCannotBeRenamed()
{
    QString problem;

    QVERIFY(!DurableFile::Rename(Path(QStringLiteral("a")), Path(QStringLiteral("b")), &problem));

    QVERIFY2(problem.contains(QDir::toNativeSeparators(Path(QStringLiteral("b")))), qPrintable(problem));
}

void DurableFileTest::removesAFile()
{
    QString problem;
    QVERIFY(DurableFile::Write(Path(QStringLiteral("a")), "x", &problem));

    QVERIFY(DurableFile::Remove(Path(QStringLiteral("a")), &problem));

    QVERIFY(Names().isEmpty());
}

void DurableFileTest::takesAMissingFileAsRemoved()
{
    QString problem;

    QVERIFY(DurableFile::Remove(Path(QStringLiteral("a")), &problem));
    QVERIFY(problem.isEmpty());
}

void DurableFileTest::saysWhatCannotBeRemoved()
{
    QVERIFY(QDir(folder->path()).mkpath(QStringLiteral("a/inside")));
    QString problem;

    QVERIFY(!DurableFile::Remove(Path(QStringLiteral("a")), &problem));

    QVERIFY2(problem.contains(QDir::toNativeSeparators(Path(QStringLiteral("a")))), qPrintable(problem));
}

QTEST_GUILESS_MAIN(DurableFileTest)
#include "tst_durablefile.moc"
