// SPDX-License-Identifier: Apache-2.0

// The draft journal on disks and folders that somebody else spoils.
#include "DraftJournalFixture.h"

#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <QtTest>

#include <csignal>
#include <sys/resource.h>
#include <sys/stat.h>

namespace
{
// While it lives, no file of this process grows beyond so many bytes.
class FullDisk
{
public:
    explicit FullDisk(rlim_t bytes)
    {
        std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &before);
        const rlimit limit{bytes, before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FullDisk() { setrlimit(RLIMIT_FSIZE, &before); }
    Q_DISABLE_COPY(FullDisk)

private:
    rlimit before{};
};
} // namespace

class DraftDiskTest : public DraftJournalFixture
{
    Q_OBJECT

private slots:
    void keepsTheDraftThatIsThereWhenTheDiskIsFull();
    void setsALinkToAPipeAsideWithoutWaiting();
    void writesBesideAFolderOfTheDraftsName();
    void makesTheFolderAgainWhenItWentAway();
    void offersDraftsFromAClockThatWasWrong();
};

void DraftDiskTest::keepsTheDraftThatIsThereWhenTheDiskIsFull()
{
    // given
    QSignalSpy written(journal.get(), &RpaDraftJournal::SigWritten);
    QSignalSpy failed(journal.get(), &RpaDraftJournal::SigFailed);
    const RpaAppDataPtr app = Loaded();
    Edit(*app, QStringLiteral("first"));
    QTRY_COMPARE(written.size(), 1);

    // when the disk takes only part of the next one, twice
    {
        const FullDisk full(4096);
        for (int i = 0; i < 2; ++i)
            QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("文件超过允许的大小")));
        Edit(*app, QString(100000, QLatin1Char('x')));
        QTRY_COMPARE(failed.size(), 1);
        Edit(*app, QString(200000, QLatin1Char('y')));
        journal->Close();
        journal->Finish();
    }

    // then the author was told once, the first is whole, and no rest is left
    QCOMPARE(failed.size(), 1);
    QStringList refusals;
    QVector<RpaDraft> drafts = All(&refusals);
    QCOMPARE(refusals, QStringList());
    QCOMPARE(drafts.size(), 1);
    QVERIFY(drafts.first().content.contains("\"first\""));
    QCOMPARE(QDir(path).entryList({QStringLiteral("*.tmp")}).size(), 0);

    // when there is room again
    journal->Open(account, appId);
    Edit(*app, QStringLiteral("last"));
    QTRY_COMPARE(written.size(), 2);

    // then
    drafts = All();
    QVERIFY(std::any_of(drafts.begin(), drafts.end(),
                        [&](const RpaDraft& draft) { return draft.content == app->ToJson(); }));
}

void DraftDiskTest::setsALinkToAPipeAsideWithoutWaiting()
{
    QSignalSpy written(journal.get(), &RpaDraftJournal::SigWritten);
    const RpaAppDataPtr app = Loaded();
    Edit(*app, QStringLiteral("own"));
    QTRY_COMPARE(written.size(), 1);
    const QString pipe = folder->filePath(QStringLiteral("pipe"));
    QCOMPARE(::mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    const QString name = path + QLatin1Char('/') + Names().first();
    QString link = name;
    link.replace(QStringLiteral("-0.draft"), QStringLiteral("-1.draft"));
    QString direct = name;
    direct.replace(QStringLiteral("-0.draft"), QStringLiteral("-2.draft"));
    QVERIFY(QFile::link(pipe, link));
    QCOMPARE(::mkfifo(QFile::encodeName(direct).constData(), 0600), 0);

    QStringList refusals;
    const QVector<RpaDraft> drafts = All(&refusals);

    QCOMPARE(drafts.size(), 1);
    QCOMPARE(refusals.size(), 2);
    QVERIFY(QFileInfo(link + QStringLiteral(".kept1")).isSymLink());
}

void DraftDiskTest::writesBesideAFolderOfTheDraftsName()
{
    QSignalSpy written(journal.get(), &RpaDraftJournal::SigWritten);
    QSignalSpy failed(journal.get(), &RpaDraftJournal::SigFailed);
    const RpaAppDataPtr app = Loaded();
    Edit(*app, QStringLiteral("first"));
    QTRY_COMPARE(written.size(), 1);
    const QString name = path + QLatin1Char('/') + Names().first();
    QVERIFY(QFile::remove(name));
    QVERIFY(QDir().mkpath(name + QStringLiteral("/inside")));

    Edit(*app, QStringLiteral("second"));
    QTRY_COMPARE(written.size(), 2);

    QCOMPARE(failed.size(), 0);
    QStringList refusals;
    const QVector<RpaDraft> drafts = All(&refusals);
    QCOMPARE(drafts.size(), 1);
    QCOMPARE(drafts.first().content, app->ToJson());
    QCOMPARE(refusals.size(), 1);
    QVERIFY(QFile::exists(name + QStringLiteral(".kept1/inside")));
}

void DraftDiskTest::makesTheFolderAgainWhenItWentAway()
{
    QSignalSpy written(journal.get(), &RpaDraftJournal::SigWritten);
    QSignalSpy failed(journal.get(), &RpaDraftJournal::SigFailed);
    const RpaAppDataPtr app = Loaded();
    Edit(*app, QStringLiteral("first"));
    QTRY_COMPARE(written.size(), 1);
    QVERIFY(path.startsWith(folder->path()) && QDir(path).removeRecursively());

    Edit(*app, QStringLiteral("second"));
    QTRY_COMPARE(written.size(), 2);

    QCOMPARE(failed.size(), 0);
    const QVector<RpaDraft> drafts = All();
    QCOMPARE(drafts.size(), 1);
    QCOMPARE(drafts.first().content, app->ToJson());
    QCOMPARE(QFile::permissions(path) & (QFile::ReadGroup | QFile::ReadOther), QFile::Permissions());
}

// Files from the year 2050 and from 1980: the time orders drafts, and takes none away.
void DraftDiskTest::offersDraftsFromAClockThatWasWrong()
{
    QSignalSpy written(journal.get(), &RpaDraftJournal::SigWritten);
    const RpaAppDataPtr app = Loaded();
    Edit(*app, QStringLiteral("first"));
    QTRY_COMPARE(written.size(), 1);
    journal->Finish();
    for (const int year : {2050, 1980}) {
        QFile file(path + QLatin1Char('/') + Names().first());
        QVERIFY(file.open(QIODevice::ReadWrite));
        QVERIFY(file.setFileTime(QDateTime(QDate(year, 1, 1), QTime(1, 0), Qt::UTC),
                                 QFileDevice::FileModificationTime));
        file.close();
        QCOMPARE(All().size(), 1);

        const int before = written.size();
        Edit(*app, QString::number(year));
        QTRY_COMPARE(written.size(), before + 1);
        const QVector<RpaDraft> drafts = All();
        QCOMPARE(drafts.size(), 1);
        QCOMPARE(drafts.first().content, app->ToJson());
    }
}

QTEST_GUILESS_MAIN(DraftDiskTest)
#include "tst_draftdisk_linux.moc"
