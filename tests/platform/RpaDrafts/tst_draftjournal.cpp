// SPDX-License-Identifier: Apache-2.0

// What the journal writes of work under way, and finds again.
#include "DraftJournalFixture.h"

#include <QFile>
#include <QtTest>

class DraftJournalTest : public DraftJournalFixture
{
    Q_OBJECT

private slots:
    void writesADraftByItself();
    void writesWhileTheAuthorTypesWithoutAPause();
    void writesManyEditsTogether();
    void writesOnlyTheAppThatIsOpen();
    void namesTheRevisionThatASaveWouldBeBasedOn();
    void namesTheRevisionThatItsContentIsBasedOnBeforeAllOthers();
    void writesWhatIsDueWhenTheAppDataGoes();
    void writesWhatIsDueWhenItCloses();

    void findsDraftsNewestFirst();
    void saysWhatCannotBeRead();
    void answersNobodyWhoIsGone();
};

void DraftJournalTest::writesADraftByItself()
{
    // given the delay that the journal has by itself
    journal.reset();
    journal = std::make_unique<RpaDraftJournal>();
    QString problem;
    QVERIFY(journal->Start(path, &problem));
    journal->Open(account, appId);
    const RpaAppDataPtr app = Loaded();

    // when
    Edit(*app, QStringLiteral("a"));

    // then
    QTRY_COMPARE(Names().size(), 1);
    const RpaDraft draft = Only();
    QCOMPARE(draft.account, account);
    QCOMPARE(draft.appId, appId);
    QCOMPARE(draft.versionId, versionId);
    QCOMPARE(draft.baseRevision, 3);
    QCOMPARE(draft.content, app->ToJson());
    QCOMPARE(draft.sha256, Sha256(draft.content));
}

void DraftJournalTest::writesWhileTheAuthorTypesWithoutAPause()
{
    const RpaAppDataPtr app = Loaded();
    QSignalSpy written(journal.get(), &RpaDraftJournal::SigWritten);
    QTimer keys;
    int typed = 0;
    connect(&keys, &QTimer::timeout, this, [&] { Edit(*app, QString(++typed, QLatin1Char('a'))); });
    keys.start(5);

    QTRY_VERIFY(written.size() >= 3);

    QVERIFY(keys.isActive());
}

void DraftJournalTest::writesManyEditsTogether()
{
    const RpaAppDataPtr app = Loaded();
    QSignalSpy written(journal.get(), &RpaDraftJournal::SigWritten);

    for (int i = 0; i < 1000; ++i)
        Edit(*app, QString::number(i));
    QTRY_VERIFY(!written.isEmpty());
    journal->Close();
    journal->Finish();

    QCOMPARE(written.size(), 1);
    QCOMPARE(Only().content, app->ToJson());
}

void DraftJournalTest::writesOnlyTheAppThatIsOpen()
{
    const RpaAppDataPtr other = Loaded();
    other->GetAppExtendInfo()->SetAppId(QStringLiteral("app-2"));
    Edit(*other, QStringLiteral("a"));
    journal->Close();
    const RpaAppDataPtr app = Loaded();
    Edit(*app, QStringLiteral("a"));

    journal->Finish();

    QVERIFY(Names().isEmpty());
}

void DraftJournalTest::namesTheRevisionThatASaveWouldBeBasedOn()
{
    journal->SetBaseQuery([](const QString& version) { return version == versionId ? 7 : 0; });
    const RpaAppDataPtr app = Loaded();
    app->SetOrigin({versionId, 0, QString()});

    Edit(*app, QStringLiteral("a"));
    QTRY_COMPARE(Names().size(), 1);

    QCOMPARE(Only().baseRevision, 7);
}

void DraftJournalTest::namesTheRevisionThatItsContentIsBasedOnBeforeAllOthers()
{
    journal->SetBaseQuery([](const QString&) { return 7; });
    const RpaAppDataPtr app = Loaded();

    Edit(*app, QStringLiteral("a"));
    QTRY_COMPARE(Names().size(), 1);

    QCOMPARE(Only().baseRevision, 3);
}

void DraftJournalTest::writesWhatIsDueWhenTheAppDataGoes()
{
    RpaAppDataPtr app = Loaded();
    Edit(*app, QStringLiteral("a"));
    const QByteArray content = app->ToJson();

    app.reset();

    QCOMPARE(Only().content, content);
}

void DraftJournalTest::writesWhatIsDueWhenItCloses()
{
    const RpaAppDataPtr app = Loaded();
    Edit(*app, QStringLiteral("a"));

    journal->Close();

    QCOMPARE(Only().content, app->ToJson());
}

void DraftJournalTest::findsDraftsNewestFirst()
{
    RpaAppDataPtr first = Loaded();
    Edit(*first, QStringLiteral("a"));
    first.reset();
    journal->Finish();
    RpaAppDataPtr second = Loaded(QStringLiteral("version-2"));
    Edit(*second, QStringLiteral("b"));
    second.reset();

    const QVector<RpaDraft> drafts = All();

    QVERIFY(journal->HasDrafts(account, appId));
    QVERIFY(!journal->HasDrafts(QStringLiteral("同事"), appId));
    QCOMPARE(drafts.size(), 2);
    QCOMPARE(drafts.first().versionId, QStringLiteral("version-2"));
}

void DraftJournalTest::saysWhatCannotBeRead()
{
    RpaAppDataPtr app = Loaded();
    Edit(*app, QStringLiteral("a"));
    app.reset();
    journal->Finish();
    QFile file(path + QLatin1Char('/') + Names().value(0));
    QVERIFY(file.resize(100));

    QStringList refusals;
    const QVector<RpaDraft> drafts = All(&refusals);

    QVERIFY(drafts.isEmpty());
    QCOMPARE(refusals.size(), 1);
    QVERIFY(!journal->HasDrafts(account, appId));
}

void DraftJournalTest::answersNobodyWhoIsGone()
{
    bool answered = false;
    {
        const QObject gone;
        journal->Read(account, appId, const_cast<QObject*>(&gone),
                      [&](const QVector<RpaDraft>&, const QStringList&) { answered = true; });
    }

    journal->Finish();

    QVERIFY(!answered);
}

QTEST_GUILESS_MAIN(DraftJournalTest)
#include "tst_draftjournal.moc"
