// SPDX-License-Identifier: Apache-2.0

#include "DraftFile_p.h"
#include "DraftFolder_p.h"
#include "TestFolder.h"

#include <QDir>
#include <QFile>
#include <QtTest>

namespace
{
RpaDraft Draft(const QByteArray& content = "{\"a\":1}")
{
    RpaDraft draft;
    draft.account = QStringLiteral("作者");
    draft.appId = QStringLiteral("app-1");
    draft.versionId = QStringLiteral("version-1");
    draft.baseRevision = 3;
    draft.writtenAt = QDateTime(QDate(2026, 1, 2), QTime(3, 4, 5, 678), Qt::UTC);
    draft.content = content;
    return draft;
}

QByteArray File(RpaDraft draft = Draft())
{
    return DraftFile::Encode(&draft);
}

// A file whose digests fit, whatever its header says.
QByteArray FileWithHeader(const QByteArray& header, const QByteArray& content)
{
    QByteArray file("RPADRAFT\0\0\0\1", 12);
    file += QByteArray("\0\0", 2) + char(header.size() >> 8) + char(header.size() & 0xff) + header;
    file += QByteArray::fromHex(DraftFile::Sha256Of(file));
    return file + content;
}
} // namespace

class DraftFileTest : public QObject
{
    Q_OBJECT

private slots:
    void readsWhatWasWritten();
    void keepsTheNewestUnsettledSaves();
    void passesOverUnsettledSavesThatAreNone();
    void refusesWhatIsNoWholeDraft_data();
    void refusesWhatIsNoWholeDraft();
    void refusesEveryCutFile();
    void refusesEveryChangedByte();

    void keepsDraftsOfDifferentOwnersApart();
    void replacesADraftOfTheSameName();
    void keepsAnUndecidedDraftBesideANewOne();
    void setsTheOldestOfTooManyAside();
    void movesADraftToItsVersion();
    void setsAForeignFileAsideAndKeepsIt();
    void setsADraftUnderAnotherNameAside();
    void setsContentThatIsNoJsonAside();
    void setsAsideWhatIsNoFile();
    void refusesAnAppThatIsTooLarge();
};

void DraftFileTest::readsWhatWasWritten()
{
    RpaDraft written = Draft();
    const QByteArray file = DraftFile::Encode(&written);
    RpaDraft read;
    read.name = QStringLiteral("a.draft");
    QString problem;

    QVERIFY2(DraftFile::Decode(file, &read, &problem), qPrintable(problem));

    QCOMPARE(read.name, QStringLiteral("a.draft"));
    QCOMPARE(read.account, written.account);
    QCOMPARE(read.appId, written.appId);
    QCOMPARE(read.versionId, written.versionId);
    QCOMPARE(read.baseRevision, 3);
    QCOMPARE(read.writtenAt, written.writtenAt);
    QCOMPARE(read.content, written.content);
    QCOMPARE(read.sha256, written.sha256);
    QCOMPARE(read.sha256, DraftFile::Sha256Of(written.content));
}

void DraftFileTest::keepsTheNewestUnsettledSaves()
{
    RpaDraft written = Draft();
    for (int save = 0; save < DraftFile::mostInDoubt + 2; ++save)
        DraftFile::NoteUnsettled(&written, DraftFile::Sha256Of(QByteArray::number(save)));
    DraftFile::NoteUnsettled(&written, DraftFile::Sha256Of("2")); // again
    RpaDraft read;
    QString problem;

    QVERIFY2(DraftFile::Decode(DraftFile::Encode(&written), &read, &problem), qPrintable(problem));

    QCOMPARE(read.inDoubt.size(), DraftFile::mostInDoubt);
    QCOMPARE(read.inDoubt.first(), DraftFile::Sha256Of("3"));
    QCOMPARE(read.inDoubt.last(), DraftFile::Sha256Of("2"));
    QCOMPARE(read.inDoubt, written.inDoubt);
}

void DraftFileTest::passesOverUnsettledSavesThatAreNone()
{
    const QByteArray sha = DraftFile::Sha256Of("x");
    const QByteArray file = FileWithHeader(
        R"({"appId":"a","writtenAt":"2026-01-02T03:04:05.678Z","length":1,"unsettled":[7,"","y",")" + sha +
            R"(",[]],"sha256":")" + sha + "\"}",
        "x");
    RpaDraft read;
    QString problem;

    QVERIFY2(DraftFile::Decode(file, &read, &problem), qPrintable(problem));

    QCOMPARE(read.inDoubt, QByteArrayList{sha});
}

void DraftFileTest::refusesWhatIsNoWholeDraft_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<QString>("reason");

    const QByteArray sha = DraftFile::Sha256Of("x");
    const QByteArray rest = R"(,"writtenAt":"2026-01-02T03:04:05.678Z","length":1,"sha256":")" + sha + "\"}";
    QByteArray newer = File();
    newer[11] = 2;
    QByteArray huge = File();
    huge[12] = char(0xff);

    QTest::newRow("nothing") << QByteArray() << QStringLiteral("不是草稿文件");
    QTest::newRow("another kind of file") << QByteArray("PK\3\4 something") << QStringLiteral("不是草稿文件");
    QTest::newRow("a newer format") << newer << QStringLiteral("草稿由其他版本的工作站写入，无法读取");
    QTest::newRow("a header of 4 GB") << huge << QStringLiteral("草稿文件不完整");
    QTest::newRow("more than it says") << File() + "x" << QStringLiteral("草稿文件不完整");
    QTest::newRow("a header that is no JSON")
        << FileWithHeader("{", "x") << QStringLiteral("草稿文件的说明无法读取");
    QTest::newRow("a header without an app")
        << FileWithHeader("{\"baseRevision\":1" + rest, "x") << QStringLiteral("草稿文件的说明无法读取");
    QTest::newRow("a negative revision") << FileWithHeader(R"({"appId":"a","baseRevision":-1)" + rest, "x")
                                         << QStringLiteral("草稿文件的说明无法读取");
    QTest::newRow("a negative length")
        << FileWithHeader(R"({"appId":"a","writtenAt":"2026-01-02T03:04:05.678Z","length":-1})", "x")
        << QStringLiteral("草稿文件的说明无法读取");
    QTest::newRow("no time") << FileWithHeader(R"({"appId":"a","length":1,"sha256":")" + sha + "\"}", "x")
                             << QStringLiteral("草稿文件的说明无法读取");
    QTest::newRow("other content") << FileWithHeader(R"({"appId":"a")" + rest, "y")
                                   << QStringLiteral("草稿的内容已损坏");
}

void DraftFileTest::refusesWhatIsNoWholeDraft()
{
    QFETCH(QByteArray, file);
    QFETCH(QString, reason);
    RpaDraft draft = Draft();
    QString problem;

    QVERIFY(!DraftFile::Decode(file, &draft, &problem));

    QCOMPARE(problem, reason);
    QCOMPARE(draft.content, Draft().content);
}

void DraftFileTest::refusesEveryCutFile()
{
    const QByteArray file = File();
    for (int size = 0; size < file.size(); ++size) {
        RpaDraft draft;
        QString problem;
        QVERIFY2(!DraftFile::Decode(file.left(size), &draft, &problem), qPrintable(QString::number(size)));
        QVERIFY(!problem.isEmpty());
    }
}

void DraftFileTest::refusesEveryChangedByte()
{
    const QByteArray file = File();
    for (int at = 0; at < file.size(); ++at) {
        QByteArray changed = file;
        changed[at] = char(changed.at(at) ^ 0x20);
        RpaDraft draft;
        QString problem;
        QVERIFY2(!DraftFile::Decode(changed, &draft, &problem), qPrintable(QString::number(at)));
        QVERIFY(!problem.isEmpty());
    }
}

void DraftFileTest::keepsDraftsOfDifferentOwnersApart()
{
    // given
    const TestFolder place;
    const DraftFolder folder(place.path());
    QString problem;
    RpaDraft own = Draft();
    RpaDraft otherAccount = Draft();
    otherAccount.account = QStringLiteral("同事");
    RpaDraft otherApp = Draft();
    otherApp.appId = QStringLiteral("app-2");
    RpaDraft otherVersion = Draft();
    otherVersion.versionId.clear();

    // when
    for (RpaDraft* draft : {&own, &otherAccount, &otherApp, &otherVersion})
        QVERIFY2(folder.Write(draft, &problem), qPrintable(problem));

    // then
    QStringList names = folder.NamesOf(own.account, own.appId);
    names.sort();
    QStringList expected{own.name, otherVersion.name};
    expected.sort();
    QCOMPARE(names, expected);
    QVERIFY(!own.name.contains(own.appId));
}

void DraftFileTest::replacesADraftOfTheSameName()
{
    const TestFolder place;
    const DraftFolder folder(place.path());
    QString problem;
    RpaDraft draft = Draft();
    QVERIFY(folder.Write(&draft, &problem));
    const QString name = draft.name;
    draft.content = "{\"b\":2}";

    QVERIFY(folder.Write(&draft, &problem));

    QCOMPARE(draft.name, name);
    RpaDraft read;
    QVERIFY(folder.Read(name, &read, &problem));
    QCOMPARE(read.content, draft.content);
    QCOMPARE(folder.NamesOf(draft.account, draft.appId).size(), 1);
}

void DraftFileTest::keepsAnUndecidedDraftBesideANewOne()
{
    const TestFolder place;
    const DraftFolder folder(place.path());
    QString problem;
    RpaDraft undecided = Draft("{\"undecided\":1}");
    QVERIFY(folder.Write(&undecided, &problem));
    RpaDraft next = Draft("{\"next\":1}");

    QVERIFY(folder.Write(&next, &problem));

    QVERIFY(next.name != undecided.name);
    RpaDraft read;
    QVERIFY(folder.Read(undecided.name, &read, &problem));
    QCOMPARE(read.content, undecided.content);
}

void DraftFileTest::setsTheOldestOfTooManyAside()
{
    // given
    const TestFolder place;
    const DraftFolder folder(place.path());
    QString problem;
    RpaDraft oldest;
    for (int i = 0; i < DraftFolder::mostPerVersion; ++i) {
        RpaDraft draft = Draft("{\"number\":" + QByteArray::number(i) + '}');
        QVERIFY(folder.Write(&draft, &problem));
        QFile file(place.filePath(draft.name));
        QVERIFY(file.open(QIODevice::ReadWrite));
        QVERIFY(file.setFileTime(QDateTime::currentDateTime().addDays(i - 10),
                                 QFileDevice::FileModificationTime));
        if (i == 0)
            oldest = draft;
    }
    RpaDraft draft = Draft("{\"last\":1}");

    // when
    QVERIFY2(folder.Write(&draft, &problem), qPrintable(problem));

    // then
    QCOMPARE(draft.name, oldest.name);
    QCOMPARE(folder.NamesOf(draft.account, draft.appId).size(), int(DraftFolder::mostPerVersion));
    QFile kept(place.filePath(oldest.name + QStringLiteral(".kept1")));
    QVERIFY(kept.open(QIODevice::ReadOnly));
    QVERIFY(kept.readAll().endsWith(oldest.content));
}

void DraftFileTest::movesADraftToItsVersion()
{
    // given a draft of an app without a version
    const TestFolder place;
    const DraftFolder folder(place.path());
    QString problem;
    RpaDraft draft = Draft();
    draft.versionId.clear();
    QVERIFY(folder.Write(&draft, &problem));
    const QString before = draft.name;

    // when it was saved as one
    draft.versionId = QStringLiteral("version-9");
    QVERIFY(folder.Write(&draft, &problem));

    // then
    QVERIFY(draft.name != before);
    QCOMPARE(folder.NamesOf(draft.account, draft.appId), QStringList{draft.name});
}

void DraftFileTest::setsAForeignFileAsideAndKeepsIt()
{
    // given
    const TestFolder place;
    const DraftFolder folder(place.path());
    QString problem;
    RpaDraft draft = Draft();
    QVERIFY(folder.Write(&draft, &problem));
    QFile file(place.filePath(draft.name));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("something else");
    file.close();

    // when
    RpaDraft read;
    QVERIFY(!folder.Read(draft.name, &read, &problem));

    // then
    QVERIFY2(problem.startsWith(QStringLiteral("不是草稿文件，已另存为“")), qPrintable(problem));
    QVERIFY(folder.NamesOf(draft.account, draft.appId).isEmpty());
    QFile kept(place.filePath(draft.name + QStringLiteral(".kept1")));
    QVERIFY(kept.open(QIODevice::ReadOnly));
    QCOMPARE(kept.readAll(), QByteArray("something else"));
}

void DraftFileTest::setsADraftUnderAnotherNameAside()
{
    const TestFolder place;
    const DraftFolder folder(place.path());
    QString problem;
    RpaDraft own = Draft();
    RpaDraft other = Draft();
    other.account = QStringLiteral("同事");
    QVERIFY(folder.Write(&own, &problem));
    QVERIFY(folder.Write(&other, &problem));
    QVERIFY(QFile::remove(place.filePath(own.name)));
    QVERIFY(QFile::rename(place.filePath(other.name), place.filePath(own.name)));

    RpaDraft read;
    QVERIFY(!folder.Read(own.name, &read, &problem));

    QVERIFY2(problem.startsWith(QStringLiteral("草稿属于其他账号、应用或版本")), qPrintable(problem));
}

void DraftFileTest::setsContentThatIsNoJsonAside()
{
    const TestFolder place;
    const DraftFolder folder(place.path());
    QString problem;
    RpaDraft draft = Draft("{\"a\":");
    QVERIFY(folder.Write(&draft, &problem));

    RpaDraft read;
    QVERIFY(!folder.Read(draft.name, &read, &problem));

    QVERIFY2(problem.startsWith(QStringLiteral("草稿的内容无法读取：")), qPrintable(problem));
}

void DraftFileTest::setsAsideWhatIsNoFile()
{
    const TestFolder place;
    const DraftFolder folder(place.path());
    QString problem;
    RpaDraft draft = Draft();
    QVERIFY(folder.Write(&draft, &problem));
    QVERIFY(QFile::remove(place.filePath(draft.name)));
    QVERIFY(QDir(place.path()).mkpath(draft.name));

    RpaDraft read;
    QVERIFY(!folder.Read(draft.name, &read, &problem));

    QVERIFY2(problem.startsWith(QStringLiteral("草稿不是普通文件，已另存为“")), qPrintable(problem));
    QVERIFY(folder.NamesOf(draft.account, draft.appId).isEmpty());
}

void DraftFileTest::refusesAnAppThatIsTooLarge()
{
    const TestFolder place;
    const DraftFolder folder(place.path());
    QString problem;
    RpaDraft draft = Draft(QByteArray(DraftFile::largestContent + 1, ' '));

    QVERIFY(!folder.Write(&draft, &problem));

    QVERIFY(!problem.isEmpty());
    QVERIFY(QDir(place.path()).isEmpty());
}

QTEST_GUILESS_MAIN(DraftFileTest)
#include "tst_draftfile.moc"
