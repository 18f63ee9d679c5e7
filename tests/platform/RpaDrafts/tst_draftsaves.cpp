// SPDX-License-Identifier: Apache-2.0

// What drafts say of saves whose outcome nobody has heard.
#include "DraftJournalFixture.h"

#include <QtTest>

class DraftSaveTest : public DraftJournalFixture
{
    Q_OBJECT

private slots:
    void namesUnansweredSavesInDraftsOfLaterWork();
    void namesAnUnansweredSaveWhoseOwnDraftWasPassedOver();
    void forgetsUnansweredSavesThatAConfirmedOneReplaced();
    void forgetsUnansweredSavesWhenOtherContentIsLoaded();
    void goesOnNamingUnansweredSavesOfARestoredDraft();
};

void DraftSaveTest::namesUnansweredSavesInDraftsOfLaterWork()
{
    const RpaAppDataPtr app = Loaded();
    QSignalSpy written(journal.get(), &RpaDraftJournal::SigWritten);
    Edit(*app, QStringLiteral("a"));
    const QByteArray first = Send(*app);
    QTRY_VERIFY(!written.isEmpty());
    Edit(*app, QStringLiteral("b"));
    const QByteArray second = Send(*app);
    journal->Finish();
    QTRY_COMPARE(Only().content, second);

    Edit(*app, QStringLiteral("c"));
    journal->Close();

    const RpaDraft draft = Only();
    QCOMPARE(draft.content, app->ToJson());
    QCOMPARE(draft.baseRevision, 3);
    QCOMPARE(draft.inDoubt, (QByteArrayList{Sha256(first), Sha256(second)}));
}

void DraftSaveTest::namesAnUnansweredSaveWhoseOwnDraftWasPassedOver()
{
    // given a save that waits for the disk
    const RpaAppDataPtr app = Loaded();
    QSignalSpy written(journal.get(), &RpaDraftJournal::SigWritten);
    Edit(*app, QStringLiteral("a"));
    Send(*app);
    QCoreApplication::sendPostedEvents();
    Edit(*app, QStringLiteral("b"));
    const QByteArray sent = Send(*app);
    QCoreApplication::sendPostedEvents();

    // when later work takes its place
    Edit(*app, QStringLiteral("c"));
    journal->Close();
    const RpaDraft draft = Only();

    QCOMPARE(written.size(), 2);
    QCOMPARE(draft.content, app->ToJson());
    QCOMPARE(draft.inDoubt.size(), 2);
    QCOMPARE(draft.inDoubt.last(), Sha256(sent));
}

void DraftSaveTest::forgetsUnansweredSavesThatAConfirmedOneReplaced()
{
    const RpaAppDataPtr app = Loaded();
    QSignalSpy written(journal.get(), &RpaDraftJournal::SigWritten);
    Edit(*app, QStringLiteral("a"));
    Send(*app);
    QTRY_VERIFY(!written.isEmpty());
    Edit(*app, QStringLiteral("b"));
    const QByteArray sent = Send(*app);
    QTRY_COMPARE(Only().content, sent);
    Edit(*app, QStringLiteral("c"));

    journal->Confirm(appId, versionId, 4, Sha256(sent));
    journal->Close();

    QCOMPARE(Only().baseRevision, 4);
    QCOMPARE(Only().inDoubt, QByteArrayList());
}

void DraftSaveTest::forgetsUnansweredSavesWhenOtherContentIsLoaded()
{
    const RpaAppDataPtr app = Loaded();
    QSignalSpy written(journal.get(), &RpaDraftJournal::SigWritten);
    Edit(*app, QStringLiteral("a"));
    const QByteArray sent = Send(*app);
    QTRY_VERIFY(!written.isEmpty());

    {
        const RpaContentDelivery delivery(sent, {QStringLiteral("version-2"), 7, QString()});
        QVERIFY(app->Parse(delivery.GetContent()));
    }
    Edit(*app, QStringLiteral("b"));
    journal->Close();

    const QVector<RpaDraft> drafts = All();
    QVERIFY(!drafts.isEmpty());
    QCOMPARE(drafts.first().versionId, QStringLiteral("version-2"));
    QCOMPARE(drafts.first().inDoubt, QByteArrayList());
}

void DraftSaveTest::goesOnNamingUnansweredSavesOfARestoredDraft()
{
    const QByteArrayList inDoubt{Sha256("one"), Sha256("two")};
    RpaAppDataPtr app = Loaded();
    app->SetOrigin({versionId, 3, QStringLiteral("a.draft"), inDoubt});

    Edit(*app, QStringLiteral("a"));
    journal->Close();

    QCOMPARE(Only().inDoubt, inDoubt);
}

QTEST_GUILESS_MAIN(DraftSaveTest)
#include "tst_draftsaves.moc"
