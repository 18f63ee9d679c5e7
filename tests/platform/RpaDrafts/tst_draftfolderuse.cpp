// SPDX-License-Identifier: Apache-2.0

#include "LockRemains.h"
#include "TestFolder.h"

#include <RpaAppData/RpaAppData.h>
#include <RpaAppData/RpaAppExtendInfo.h>
#include <RpaDrafts/RpaDraftJournal.h>

#include <QtTest>

namespace
{
const QString account = QStringLiteral("作者");
const QString appId = QStringLiteral("app-1");
} // namespace

// Which folder a journal may use, and what it does without one.
class DraftFolderUseTest : public QObject
{
    Q_OBJECT

private slots:
    void refusesAFolderThatAnotherJournalUses();
    void startsThoughALockFileWasLeft_data();
    void startsThoughALockFileWasLeft();
    void keepsNothingWithoutAFolder();
};

void DraftFolderUseTest::refusesAFolderThatAnotherJournalUses()
{
    const TestFolder folder;
    QString problem;
    RpaDraftJournal journal;
    QVERIFY2(journal.Start(folder.path(), &problem), qPrintable(problem));
    RpaDraftJournal other;

    QVERIFY(!other.Start(folder.path(), &problem));

    QVERIFY2(problem.contains(QStringLiteral("正由另一个工作站使用")), qPrintable(problem));
}

void DraftFolderUseTest::startsThoughALockFileWasLeft_data()
{
    LockRemains::AddRows();
}

void DraftFolderUseTest::startsThoughALockFileWasLeft()
{
    QFETCH(QByteArray, content);
    const TestFolder folder;
    QVERIFY(LockRemains::Leave(folder.filePath(QStringLiteral("lock")), content));
    RpaDraftJournal journal;
    QString problem;

    QVERIFY2(journal.Start(folder.path(), &problem), qPrintable(problem));
}

void DraftFolderUseTest::keepsNothingWithoutAFolder()
{
    // given
    RpaDraftJournal idle;
    idle.Open(account, appId);
    RpaAppData app;
    app.InitDefault();
    app.GetAppExtendInfo()->SetAppId(appId);

    // when
    app.SetModified(true);
    idle.Confirm(appId, QStringLiteral("version-1"), 4, "0");
    idle.GiveUp();
    bool answered = false;
    idle.Read(account, appId, this,
              [&](const QVector<RpaDraft>& drafts, const QStringList&) { answered = drafts.isEmpty(); });

    // then
    QTRY_VERIFY(answered);
    QVERIFY(!idle.HasDrafts(account, appId));
    idle.Close();
}

QTEST_GUILESS_MAIN(DraftFolderUseTest)
#include "tst_draftfolderuse.moc"
