// SPDX-License-Identifier: Apache-2.0

// How a draft ends: by a save that was confirmed, or given up by its author.
#include "DraftJournalFixture.h"

#include <RpaAppData/RpaSavedState.h>

#include <QtTest>

class DraftEndTest : public DraftJournalFixture
{
    Q_OBJECT

private slots:
    void keepsTheDraftUntilTheSaveIsConfirmed();
    void keepsTheDraftOfASaveThatFailed();
    void keepsWhatWasTypedAfterTheSave();
    void keepsTheDraftWhenOtherContentWasConfirmed();
    void movesToTheVersionThatASaveMade();
    void movesToTheVersionThatAnUneditedAppWasSavedInto();
    void removesTheDraftOfASaveConfirmedAfterTheEditorWent();
    void forgetsWhatTheAuthorGaveUp_data();
    void forgetsWhatTheAuthorGaveUp();
    void forgetsWhatIsGivenUpRightBeforeItGoes();
    void keepsTheDraftOfASaveThatSentNothing();
    void keepsWhatIsTypedAfterGivingUp();
    void goesOnInTheDraftThatWasRestored();
    void forgetsWhatTheAuthorTookBack();
    void keepsTheDraftOfASaveUnderWayWhenEditsAreTakenBack_data();
    void keepsTheDraftOfASaveUnderWayWhenEditsAreTakenBack();
};

void DraftEndTest::keepsTheDraftUntilTheSaveIsConfirmed()
{
    // given
    const RpaAppDataPtr app = Loaded();
    QSignalSpy written(journal.get(), &RpaDraftJournal::SigWritten);
    QSignalSpy removed(journal.get(), &RpaDraftJournal::SigRemoved);
    Edit(*app, QStringLiteral("a"));
    QTRY_COMPARE(written.size(), 1);

    // when
    const QByteArray sent = Send(*app);

    // then the draft is what was sent, and stays
    QTRY_COMPARE(written.size(), 2);
    QCOMPARE(Only().content, sent);
    QVERIFY(removed.isEmpty());

    // when it is confirmed
    journal->Confirm(appId, versionId, 4, Sha256(sent));

    // then
    QTRY_COMPARE(removed.size(), 1);
    QVERIFY(Names().isEmpty());
    QCOMPARE(app->GetOrigin().baseRevision, 4);
}

void DraftEndTest::keepsTheDraftOfASaveThatFailed()
{
    const RpaAppDataPtr app = Loaded();
    Edit(*app, QStringLiteral("a"));

    const QByteArray sent = Send(*app);
    QSignalSpy written(journal.get(), &RpaDraftJournal::SigWritten);
    QTRY_VERIFY(!written.isEmpty());
    journal->Close();

    QCOMPARE(Only().content, sent);
}

void DraftEndTest::keepsWhatWasTypedAfterTheSave()
{
    const RpaAppDataPtr app = Loaded();
    Edit(*app, QStringLiteral("a"));
    QSignalSpy written(journal.get(), &RpaDraftJournal::SigWritten);
    const QByteArray sent = Send(*app);
    QTRY_VERIFY(!written.isEmpty());

    Edit(*app, QStringLiteral("b"));
    journal->Confirm(appId, versionId, 4, Sha256(sent));
    journal->Close();

    const RpaDraft draft = Only();
    QCOMPARE(draft.content, app->ToJson());
    QCOMPARE(draft.baseRevision, 4);
}

void DraftEndTest::keepsTheDraftWhenOtherContentWasConfirmed()
{
    const RpaAppDataPtr app = Loaded();
    Edit(*app, QStringLiteral("a"));
    QTRY_COMPARE(Names().size(), 1);
    QSignalSpy removed(journal.get(), &RpaDraftJournal::SigRemoved);

    journal->Confirm(appId, versionId, 4, Sha256("something else"));
    journal->Confirm(QStringLiteral("app-2"), versionId, 4, Only().sha256);
    journal->Finish();

    QVERIFY(removed.isEmpty());
    QCOMPARE(Names().size(), 1);
}

void DraftEndTest::movesToTheVersionThatASaveMade()
{
    // given work without a version that is being saved
    const RpaAppDataPtr app = Loaded(QString(), 0);
    Edit(*app, QStringLiteral("a"));
    QSignalSpy written(journal.get(), &RpaDraftJournal::SigWritten);
    const QByteArray sent = Send(*app);
    QTRY_VERIFY(!written.isEmpty());

    // when the author goes on typing before the answer comes
    Edit(*app, QStringLiteral("b"));
    journal->Confirm(appId, QStringLiteral("version-9"), 1, Sha256(sent));
    journal->Close();

    // then there is one draft, of the new version
    const RpaDraft draft = Only();
    QCOMPARE(draft.versionId, QStringLiteral("version-9"));
    QCOMPARE(draft.content, app->ToJson());
}

void DraftEndTest::movesToTheVersionThatAnUneditedAppWasSavedInto()
{
    const RpaAppDataPtr app = Loaded();
    const QByteArray sent = Send(*app);

    journal->Confirm(appId, QStringLiteral("version-9"), 5, Sha256(sent));
    Edit(*app, QStringLiteral("a"));
    journal->Close();

    const RpaDraft draft = Only();
    QCOMPARE(draft.versionId, QStringLiteral("version-9"));
    QCOMPARE(draft.baseRevision, 5);
}

void DraftEndTest::removesTheDraftOfASaveConfirmedAfterTheEditorWent()
{
    RpaAppDataPtr app = Loaded();
    Edit(*app, QStringLiteral("a"));
    QSignalSpy written(journal.get(), &RpaDraftJournal::SigWritten);
    const QByteArray sent = Send(*app);
    QTRY_VERIFY(!written.isEmpty());
    app.reset();
    journal->Close();

    journal->Confirm(appId, versionId, 4, Sha256(sent));
    journal->Finish();

    QVERIFY(Names().isEmpty());
}

void DraftEndTest::forgetsWhatTheAuthorGaveUp_data()
{
    QTest::addColumn<bool>("isByMark");

    QTest::newRow("by taking the mark off") << true;
    QTest::newRow("by leaving it") << false;
}

void DraftEndTest::forgetsWhatTheAuthorGaveUp()
{
    // given work that is on the disk, work under way, and work that waits
    QFETCH(const bool, isByMark);
    const RpaAppDataPtr app = Loaded();
    Edit(*app, QStringLiteral("a"));
    QTRY_COMPARE(Names().size(), 1);
    Edit(*app, QStringLiteral("b"));
    Send(*app);
    QCoreApplication::sendPostedEvents();
    Edit(*app, QStringLiteral("c"));
    QCOMPARE(journal->GetLastEdited(), app.data());

    // when
    if (isByMark)
        app->SetModified(false);
    else
        journal->GiveUp();
    QCoreApplication::sendPostedEvents();
    journal->Close();
    journal->Finish();

    // then
    QVERIFY(Names().isEmpty());
}

void DraftEndTest::forgetsWhatIsGivenUpRightBeforeItGoes()
{
    RpaAppDataPtr app = Loaded();
    Edit(*app, QStringLiteral("a"));
    QTRY_COMPARE(Names().size(), 1);
    Edit(*app, QStringLiteral("b"));

    app->SetModified(false);
    app.reset();
    journal->Finish();

    QVERIFY(Names().isEmpty());
    QVERIFY(!journal->GetLastEdited());
}

// Such as one into a version that nobody knows any more.
void DraftEndTest::keepsTheDraftOfASaveThatSentNothing()
{
    const RpaAppDataPtr app = Loaded();
    Edit(*app, QStringLiteral("a"));

    app->CheckPackageInfo();
    app->SetModified(false);
    QCoreApplication::sendPostedEvents();
    journal->Close();

    QCOMPARE(Only().content, app->ToJson());
}

void DraftEndTest::keepsWhatIsTypedAfterGivingUp()
{
    const RpaAppDataPtr app = Loaded();
    Edit(*app, QStringLiteral("a"));
    QTRY_COMPARE(Names().size(), 1);
    journal->GiveUp();

    Edit(*app, QStringLiteral("b"));
    journal->Close();

    QCOMPARE(Only().content, app->ToJson());
}

void DraftEndTest::goesOnInTheDraftThatWasRestored()
{
    // given a draft of an earlier session
    RpaAppDataPtr app = Loaded();
    Edit(*app, QStringLiteral("a"));
    app.reset();
    const RpaDraft draft = Only();
    journal->Close();
    journal->Open(account, appId);

    // when it is restored, edited and given up
    {
        const RpaContentDelivery delivery(draft.content, {draft.versionId, draft.baseRevision, draft.name},
                                          true);
        app = RpaAppDataPtr::create();
        QVERIFY(app->Parse(delivery.GetContent()));
    }
    QVERIFY(app->GetModified());
    Edit(*app, QStringLiteral("b"));
    QTRY_COMPARE(Only().content, app->ToJson());
    QCOMPARE(Only().name, draft.name);
    journal->GiveUp();
    journal->Finish();

    // then
    QVERIFY(Names().isEmpty());
}

void DraftEndTest::forgetsWhatTheAuthorTookBack()
{
    const RpaAppDataPtr app = Loaded();
    RpaSavedState* const state = RpaSavedState::Of(app.data());
    QObject place;
    state->Edited(&place);
    QTRY_COMPARE(Names().size(), 1);

    state->TakenBack(&place);

    QVERIFY(!app->GetModified());
    QTRY_VERIFY(Names().isEmpty());

    // What is done anew is kept again.
    state->Edited(&place);
    QTRY_COMPARE(Names().size(), 1);
}

void DraftEndTest::keepsTheDraftOfASaveUnderWayWhenEditsAreTakenBack_data()
{
    QTest::addColumn<bool>("isAtOnce");

    QTest::newRow("before the draft is written") << true;
    QTest::newRow("when the draft is written") << false;
}

void DraftEndTest::keepsTheDraftOfASaveUnderWayWhenEditsAreTakenBack()
{
    QFETCH(bool, isAtOnce);
    const RpaAppDataPtr app = Loaded();
    RpaSavedState* const state = RpaSavedState::Of(app.data());
    QObject place;
    state->Edited(&place);
    QSignalSpy written(journal.get(), &RpaDraftJournal::SigWritten);
    const QByteArray sent = Send(*app);
    if (!isAtOnce)
        QTRY_VERIFY(!written.isEmpty());
    const int before = written.size();

    state->Edited(&place);
    state->TakenBack(&place);
    QVERIFY(!app->GetModified());
    QTRY_VERIFY(written.size() > before);
    QCOMPARE(Only().content, sent);

    journal->Confirm(appId, versionId, 4, Sha256(sent));
    QTRY_VERIFY(Names().isEmpty());
}

QTEST_GUILESS_MAIN(DraftEndTest)
#include "tst_draftends.moc"
