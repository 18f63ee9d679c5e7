#include <RpaAppData/RpaAppData.h>
#include <RpaAppData/RpaAppExtendInfo.h>
#include <RpaAppData/RpaDraftJournal.h>

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

namespace
{
const QString account = QStringLiteral("作者");
const QString appId = QStringLiteral("app-1");
const QString versionId = QStringLiteral("version-1");

// As an editor makes it: loaded content of a version.
RpaAppDataPtr Loaded(const QString& version = versionId, int revision = 3)
{
    RpaAppData content;
    content.InitDefault();
    content.GetAppExtendInfo()->SetAppId(appId);
    const RpaContentSource source({version, revision, QString()});
    auto app = RpaAppDataPtr::create();
    app->Parse(content.ToJson());
    return app;
}

void Edit(RpaAppData& app, const QString& text)
{
    app.GetAppExtendInfo()->manual = text;
    app.SetModified(true);
}

QByteArray Sha256(const QByteArray& bytes)
{
    return QCryptographicHash::hash(bytes, QCryptographicHash::Sha256).toHex();
}

// As a save does: the mark goes first, then the content is marked and sent. What was sent.
QByteArray Send(RpaAppData& app)
{
    app.SetModified(false);
    app.SetVersion(QStringLiteral("1.0.0"));
    return app.ToJson();
}
} // namespace

class DraftJournalTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void writesADraftByItself();
    void writesWhileTheAuthorTypesWithoutAPause();
    void writesManyEditsTogether();
    void writesOnlyTheAppThatIsOpen();
    void namesTheRevisionThatASaveWouldBeBasedOn();
    void namesTheRevisionThatItsContentIsBasedOnBeforeAllOthers();
    void writesWhatIsDueWhenTheAppDataGoes();
    void writesWhatIsDueWhenItCloses();

    void keepsTheDraftUntilTheSaveIsConfirmed();
    void keepsTheDraftOfASaveThatFailed();
    void keepsWhatWasTypedAfterTheSave();
    void keepsTheDraftWhenOtherContentWasConfirmed();
    void movesToTheVersionThatASaveMade();
    void movesToTheVersionThatAnUneditedAppWasSavedInto();
    void removesTheDraftOfASaveConfirmedAfterTheEditorWent();
    void forgetsWhatTheAuthorGaveUp();
    void keepsWhatIsTypedAfterGivingUp();
    void goesOnInTheDraftThatWasRestored();

    void findsDraftsNewestFirst();
    void saysWhatCannotBeRead();
    void answersNobodyWhoIsGone();

    void tellsOnceThatTheDiskRefuses();
    void writesAgainWhenTheDiskDoes();

private:
    QStringList Names() const { return QDir(path).entryList({QStringLiteral("*.draft")}); }
    // A folder where the unfinished draft would be.
    QString Obstacle() const { return path + QLatin1Char('/') + Names().value(0) + QStringLiteral(".tmp"); }
    void PutObstacle() const { QVERIFY(QDir().mkpath(Obstacle() + QStringLiteral("/inside"))); }
    RpaDraft Only();
    QVector<RpaDraft> All(QStringList* refusals = nullptr);

    std::unique_ptr<QTemporaryDir> folder;
    QString path;
    std::unique_ptr<RpaDraftJournal> journal;
};

void DraftJournalTest::init()
{
    folder = std::make_unique<QTemporaryDir>();
    path = folder->filePath(QStringLiteral("drafts"));
    journal = std::make_unique<RpaDraftJournal>();
    journal->SetDelay(std::chrono::milliseconds(20));
    QString problem;
    QVERIFY2(journal->Start(path, &problem), qPrintable(problem));
    journal->Open(account, appId);
}

void DraftJournalTest::cleanup()
{
    journal.reset();
}

QVector<RpaDraft> DraftJournalTest::All(QStringList* refusals)
{
    bool answered = false;
    QVector<RpaDraft> found;
    journal->Finish();
    journal->Read(account, appId, this, [&](const QVector<RpaDraft>& drafts, const QStringList& refused) {
        answered = true;
        found = drafts;
        if (refusals)
            *refusals = refused;
    });
    return QTest::qWaitFor([&] { return answered; }) ? found : QVector<RpaDraft>();
}

RpaDraft DraftJournalTest::Only()
{
    const QVector<RpaDraft> drafts = All();
    if (drafts.size() != 1)
        QTest::qFail(qPrintable(QStringLiteral("%1 drafts").arg(drafts.size())), __FILE__, __LINE__);
    return drafts.value(0);
}

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

void DraftJournalTest::keepsTheDraftUntilTheSaveIsConfirmed()
{
    // given
    const RpaAppDataPtr app = Loaded();
    Edit(*app, QStringLiteral("a"));
    QTRY_COMPARE(Names().size(), 1);
    QSignalSpy written(journal.get(), &RpaDraftJournal::SigWritten);
    QSignalSpy removed(journal.get(), &RpaDraftJournal::SigRemoved);

    // when
    const QByteArray sent = Send(*app);

    // then the draft is what was sent, and stays
    QTRY_COMPARE(written.size(), 1);
    QCOMPARE(Only().content, sent);
    QVERIFY(removed.isEmpty());

    // when it is confirmed
    journal->Confirm(appId, versionId, 4, Sha256(sent));

    // then
    QTRY_COMPARE(removed.size(), 1);
    QVERIFY(Names().isEmpty());
    QCOMPARE(app->GetOrigin().baseRevision, 4);
}

void DraftJournalTest::keepsTheDraftOfASaveThatFailed()
{
    const RpaAppDataPtr app = Loaded();
    Edit(*app, QStringLiteral("a"));

    const QByteArray sent = Send(*app);
    QSignalSpy written(journal.get(), &RpaDraftJournal::SigWritten);
    QTRY_VERIFY(!written.isEmpty());
    journal->Close();

    QCOMPARE(Only().content, sent);
}

void DraftJournalTest::keepsWhatWasTypedAfterTheSave()
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

void DraftJournalTest::keepsTheDraftWhenOtherContentWasConfirmed()
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

void DraftJournalTest::movesToTheVersionThatASaveMade()
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

void DraftJournalTest::movesToTheVersionThatAnUneditedAppWasSavedInto()
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

void DraftJournalTest::removesTheDraftOfASaveConfirmedAfterTheEditorWent()
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

void DraftJournalTest::forgetsWhatTheAuthorGaveUp()
{
    // given work that is on the disk, work under way, and work that waits
    const RpaAppDataPtr app = Loaded();
    Edit(*app, QStringLiteral("a"));
    QTRY_COMPARE(Names().size(), 1);
    Edit(*app, QStringLiteral("b"));
    app->SetModified(false);
    QCoreApplication::sendPostedEvents();
    Edit(*app, QStringLiteral("c"));

    // when
    journal->GiveUp();
    app->SetModified(false);
    QCoreApplication::sendPostedEvents();
    journal->Close();
    journal->Finish();

    // then
    QVERIFY(Names().isEmpty());
}

void DraftJournalTest::keepsWhatIsTypedAfterGivingUp()
{
    const RpaAppDataPtr app = Loaded();
    Edit(*app, QStringLiteral("a"));
    QTRY_COMPARE(Names().size(), 1);
    journal->GiveUp();

    Edit(*app, QStringLiteral("b"));
    journal->Close();

    QCOMPARE(Only().content, app->ToJson());
}

void DraftJournalTest::goesOnInTheDraftThatWasRestored()
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
        const RpaContentSource source({draft.versionId, draft.baseRevision, draft.name}, true);
        app = RpaAppDataPtr::create();
        QVERIFY(app->Parse(draft.content));
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

void DraftJournalTest::tellsOnceThatTheDiskRefuses()
{
    // given a draft that cannot be replaced
    RpaAppDataPtr app = Loaded();
    Edit(*app, QStringLiteral("a"));
    QTRY_COMPARE(Names().size(), 1);
    PutObstacle();
    QSignalSpy failed(journal.get(), &RpaDraftJournal::SigFailed);

    // when it is written twice
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("无法写入文件")));
    Edit(*app, QStringLiteral("b"));
    QTRY_COMPARE(failed.size(), 1);
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("无法写入文件")));
    Edit(*app, QStringLiteral("c"));
    app.reset();
    journal->Finish();

    // then the user is told once, and the old draft is still there
    QCOMPARE(failed.size(), 1);
    QVERIFY(failed.first().first().toString().contains(QDir::toNativeSeparators(path)));
    QVERIFY(Only().content.contains("\"a\""));
}

void DraftJournalTest::writesAgainWhenTheDiskDoes()
{
    const RpaAppDataPtr app = Loaded();
    Edit(*app, QStringLiteral("a"));
    QTRY_COMPARE(Names().size(), 1);
    PutObstacle();
    QSignalSpy failed(journal.get(), &RpaDraftJournal::SigFailed);
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("无法写入文件")));
    Edit(*app, QStringLiteral("b"));
    QTRY_COMPARE(failed.size(), 1);

    QVERIFY(QDir(Obstacle()).removeRecursively());
    journal->Close();

    QCOMPARE(Only().content, app->ToJson());
}

QTEST_GUILESS_MAIN(DraftJournalTest)
#include "tst_draftjournal.moc"
