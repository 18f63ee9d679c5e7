#include "PostgresProcess.h"
#include "accounts/Sessions.h"
#include "base/Clock.h"
#include "base/Digest.h"
#include "base/Ids.h"
#include "base/Thread.h"
#include "rules/InvitationRules.h"
#include "rules/ReleaseRules.h"
#include "store/Dialect.h"
#include "store/Schema.h"
#include "store/SqlConnection.h"

#include <QSemaphore>
#include <QTemporaryDir>
#include <QTest>

#include <memory>
#include <sodium.h>

using namespace server;

namespace
{
const Account author{
    QStringLiteral("author-1"), QStringLiteral("作者一"), QStringLiteral("v"), {QStringLiteral("author")}};
const Account colleague{
    QStringLiteral("author-2"), QStringLiteral("作者二"), QStringLiteral("v"), {QStringLiteral("author")}};
const Account foreigner{
    QStringLiteral("author-3"), QStringLiteral("作者三"), QStringLiteral("w"), {QStringLiteral("author")}};
const Account administrator{QStringLiteral("admin"),
                            QStringLiteral("管理员"),
                            QStringLiteral("v"),
                            {QStringLiteral("administrator")}};

constexpr qint64 dayMs = 24LL * 60 * 60 * 1000;

VersionDraft DraftOf(const QString& name, const QByteArray& body)
{
    return {name, QStringLiteral("描述"), QStringLiteral("1.2"), Sha256(body), body};
}
} // namespace

// The same tests on both databases; each on a database of its own.
class StoreTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase() { postgres.reset(); }
    void init();
    void cleanup();

    void keepsABodyByteForByte_data() { Databases(); }
    void keepsABodyByteForByte();
    void movesTheHeadAndKeepsTheHistory_data() { Databases(); }
    void movesTheHeadAndKeepsTheHistory();
    void refusesToChangeTheHistory_data() { Databases(); }
    void refusesToChangeTheHistory();
    void refusesADamagedBody_data() { Databases(); }
    void refusesADamagedBody();
    void listsTheNewestVersionFirst_data() { Databases(); }
    void listsTheNewestVersionFirst();
    void undoesAFailedWriteAndKeepsItsNeighbours_data() { Databases(); }
    void undoesAFailedWriteAndKeepsItsNeighbours();
    void commitsWaitingWritesTogether_data() { Databases(); }
    void commitsWaitingWritesTogether();
    void tellsAConflictFromOtherFailures_data() { Databases(); }
    void tellsAConflictFromOtherFailures();
    void restoresADeletedVersionFor30Days_data();
    void restoresADeletedVersionFor30Days();
    void releasesOnlyForward_data() { Databases(); }
    void releasesOnlyForward();
    void showsTheOnlineVersionThatWasReleasedLast_data() { Databases(); }
    void showsTheOnlineVersionThatWasReleasedLast();
    void opensGrayVersionsToWhomeverRedeemsACode_data() { Databases(); }
    void opensGrayVersionsToWhomeverRedeemsACode();
    void refusesAClosedInvitation_data();
    void refusesAClosedInvitation();
    void keepsOneOpenInvitationAcrossGrayReleases_data() { Databases(); }
    void keepsOneOpenInvitationAcrossGrayReleases();
    void notesWhoDidWhat_data() { Databases(); }
    void notesWhoDidWhat();
    void bringsAnOlderStoreUpToDate_data() { Databases(); }
    void bringsAnOlderStoreUpToDate();
    void letsOnlyEditorsOverwrite_data() { Databases(); }
    void letsOnlyEditorsOverwrite();
    void keepsAnAnswerUnderItsKey_data() { Databases(); }
    void keepsAnAnswerUnderItsKey();
    void endsSessionsByIdleTimeAndAge_data() { Databases(); }
    void endsSessionsByIdleTimeAndAge();
    void keepsEverythingWhenOpenedAgain_data() { Databases(); }
    void keepsEverythingWhenOpenedAgain();
    void refusesAStoreOfANewerProgram_data() { Databases(); }
    void refusesAStoreOfANewerProgram();
    void readsInManyThreadsWhileWriting_data() { Databases(); }
    void readsInManyThreadsWhileWriting();
    void comesBackAfterTheDatabaseCutItsConnections_data();
    void comesBackAfterTheDatabaseCutItsConnections();

private:
    void Databases();
    void OpenFresh();
    std::shared_ptr<const IDialect> Dialect() const;
    Version Save(const QString& name, const QByteArray& body);
    Version Released(const QString& name, ReleaseType type, qint64 now);
    Outcome<ReleasedApp> Redeem(const Account& account, const QString& code, qint64 now);

    // Runs a rule in a write and gives its outcome.
    template <typename Rule>
    auto InWrite(const Rule& rule)
    {
        std::optional<decltype(rule(std::declval<ITransaction&>()))> outcome;
        store->SubmitAndWait([&](ITransaction& transaction) { outcome = rule(transaction); });
        return *outcome;
    }

    std::unique_ptr<PostgresProcess> postgres;
    std::unique_ptr<QTemporaryDir> folder;
    QString address;
    std::unique_ptr<IStore> store;
    App app;
};

void StoreTest::initTestCase()
{
    QVERIFY(sodium_init() >= 0);
    if (PostgresProcess::IsInstalled()) {
        postgres = std::make_unique<PostgresProcess>();
        QVERIFY2(postgres->Start(), postgres->ErrorText().constData());
    }
}

void StoreTest::Databases()
{
    QTest::addColumn<QString>("database");
    QTest::newRow("sqlite") << QStringLiteral("sqlite");
    QTest::newRow("postgresql") << QStringLiteral("postgresql");
}

void StoreTest::init()
{
    folder = std::make_unique<QTemporaryDir>();
    QFETCH(QString, database);
    if (database == QLatin1String("postgresql")) {
        if (!postgres)
            QSKIP("PostgreSQL is not installed");
        address = postgres->NewDatabase();
    } else {
        address = QStringLiteral("sqlite:") + folder->filePath(QStringLiteral("versions.db"));
    }
    OpenFresh();
    store->SubmitAndWait([](ITransaction& transaction) {
        for (const Account& account : {author, colleague, foreigner, administrator})
            transaction.UpsertAccount(account, {}, NowMs());
    });
    const auto created =
        InWrite([](ITransaction& t) { return rules::CreateApp(t, author, QStringLiteral("应用"), 0, 1); });
    app = std::get<App>(created);
}

void StoreTest::OpenFresh()
{
    store.reset();
    store = OpenStore(address);
}

void StoreTest::cleanup()
{
    store.reset();
}

std::shared_ptr<const IDialect> StoreTest::Dialect() const
{
    return address.startsWith(QLatin1String("sqlite:")) ? MakeSqliteDialect(address.mid(7))
                                                        : MakePostgresDialect(address);
}

Version StoreTest::Save(const QString& name, const QByteArray& body)
{
    const auto saved = InWrite([&](ITransaction& t) {
        return rules::CreateVersion(t, author, app.id, DraftOf(name, body), NowMs());
    });
    return std::get<Version>(saved);
}

Version StoreTest::Released(const QString& name, ReleaseType type, qint64 now)
{
    const Version version = Save(name, "{}");
    const auto released =
        InWrite([&](ITransaction& t) { return rules::ReleaseVersion(t, author, version.id, 1, type, now); });
    return std::get<ReleaseResult>(released).version;
}

Outcome<ReleasedApp> StoreTest::Redeem(const Account& account, const QString& code, qint64 now)
{
    return InWrite([&](ITransaction& t) { return rules::RedeemInvitation(t, account, code, now); });
}

void StoreTest::keepsABodyByteForByte()
{
    QByteArray body(3 * 1024 * 1024, Qt::Uninitialized);
    for (int i = 0; i < body.size(); ++i)
        body[i] = static_cast<char>((static_cast<unsigned>(i) * 7919u) >> 3);
    const Version version = Save(QStringLiteral("版本1"), body);

    const auto found = store->FindVersion(version.id);
    const QByteArray read = store->ReadBody(version.id, 1);

    QVERIFY(found);
    QCOMPARE(found->name, QStringLiteral("版本1"));
    QCOMPARE(found->description, QStringLiteral("描述"));
    QCOMPARE(found->size, qint64{body.size()});
    QCOMPARE(found->sha256, Sha256(body));
    QVERIFY(read == body);
}

void StoreTest::movesTheHeadAndKeepsTheHistory()
{
    const Version first = Save(QStringLiteral("版本1"), "{\"n\":1}");
    QCOMPARE(store->VersionsOf(app.id)->front().revision, qint64{1});

    const auto outcome = InWrite([&](ITransaction& t) {
        return rules::OverwriteVersion(t, colleague, first.id, 1, DraftOf({}, "{\"n\":2}"), NowMs());
    });

    const Version second = std::get<Version>(outcome);
    QCOMPARE(second.revision, qint64{2});
    QCOMPARE(second.name, first.name);
    QCOMPARE(store->FindVersion(first.id)->pin, colleague.pin);
    QCOMPARE(store->VersionsOf(app.id)->front().revision, qint64{2});
    QCOMPARE(store->ReadBody(first.id, 1), QByteArray("{\"n\":1}"));
    QCOMPARE(store->ReadBody(first.id, 2), QByteArray("{\"n\":2}"));
}

void StoreTest::refusesToChangeTheHistory()
{
    Save(QStringLiteral("版本1"), "{\"n\":1}");
    SqlConnection connection(Dialect());

    QVERIFY_EXCEPTION_THROWN(connection.Execute(QStringLiteral("UPDATE revision SET size = 0")), StoreError);
    QVERIFY_EXCEPTION_THROWN(connection.Execute(QStringLiteral("DELETE FROM revision")), StoreError);
}

void StoreTest::refusesADamagedBody()
{
    const Version version = Save(QStringLiteral("版本1"), "{\"n\":1}");
    {
        SqlConnection connection(Dialect());
        const bool sqlite = store->Kind() == QLatin1String("sqlite");
        connection.Execute(sqlite ? QStringLiteral("DROP TRIGGER revision_stays")
                                  : QStringLiteral("DROP TRIGGER revision_stays ON revision"));
        connection.Change(QStringLiteral("UPDATE revision SET body = ?"), {QByteArray("{\"n\":7}")});
    }

    StoreFault fault = StoreFault::Internal;
    try {
        store->ReadBody(version.id, 1);
        QFAIL("a damaged body was handed out");
    } catch (const StoreError& error) {
        fault = error.Fault();
    }

    QCOMPARE(fault, StoreFault::Corrupt);
}

void StoreTest::listsTheNewestVersionFirst()
{
    const Version first = Save(QStringLiteral("一"), "{}");
    const Version second = Save(QStringLiteral("二"), "{}");
    const Version third = Save(QStringLiteral("三"), "{}");

    const auto list = store->VersionsOf(app.id);

    QCOMPARE(list->size(), std::size_t{3});
    QCOMPARE(list->at(0).id, third.id);
    QCOMPARE(list->at(1).id, second.id);
    QCOMPARE(list->at(2).id, first.id);
}

void StoreTest::undoesAFailedWriteAndKeepsItsNeighbours()
{
    QSemaphore go;
    QSemaphore ended;
    std::exception_ptr failures[3];
    const auto end = [&](int i) {
        return [&, i](const std::exception_ptr& failure) {
            failures[i] = failure;
            ended.release();
        };
    };
    const auto insert = [&](const QString& name, bool fail) {
        return [=](ITransaction& transaction) {
            transaction.InsertApp(
                {NewId(), name, 0, author.pin, author.name, author.venderId, NewId(), 1, 1});
            if (fail)
                throw StoreError(StoreFault::Internal, QStringLiteral("on purpose"));
        };
    };
    store->Submit({[&](ITransaction&) { go.acquire(); }, [](const std::exception_ptr&) {}, 0});
    store->Submit({insert(QStringLiteral("前"), false), end(0), 0});
    store->Submit({insert(QStringLiteral("中"), true), end(1), 0});
    store->Submit({insert(QStringLiteral("后"), false), end(2), 0});

    go.release();
    QVERIFY(ended.tryAcquire(3, 20000));

    QVERIFY(!failures[0]);
    QVERIFY(failures[1]);
    QVERIFY(!failures[2]);
    const auto apps = store->AppsEditableBy(author);
    QStringList names;
    for (const App& found : apps)
        names << found.name;
    names.sort();
    QCOMPARE(names, (QStringList{QStringLiteral("前"), QStringLiteral("后"), QStringLiteral("应用")}));
}

void StoreTest::commitsWaitingWritesTogether()
{
    QSemaphore started;
    QSemaphore go;
    QSemaphore ended;
    const auto hold = [&](ITransaction&) {
        started.release();
        go.acquire();
    };
    store->Submit({hold, [](const std::exception_ptr&) {}, 0});
    QVERIFY(started.tryAcquire(1, 20000));
    const qint64 before = store->Figures().commits;
    for (int i = 0; i < 20; ++i)
        store->Submit({[](ITransaction&) {}, [&](const std::exception_ptr&) { ended.release(); }, 0});

    go.release();
    QVERIFY(ended.tryAcquire(20, 20000));

    QCOMPARE(store->Figures().commits - before, qint64{2}); // the held one and one for all that waited
    QCOMPARE(store->Figures().largestGroup, qint64{20});
}

void StoreTest::tellsAConflictFromOtherFailures()
{
    const App twin{NewId(), app.name, 0, author.pin, author.name, author.venderId, NewId(), 1, 1};
    StoreFault fault = StoreFault::Internal;

    try {
        store->SubmitAndWait([&](ITransaction& transaction) { transaction.InsertApp(twin); });
        QFAIL("two apps of one name");
    } catch (const StoreError& error) {
        fault = error.Fault();
    }

    QCOMPARE(fault, StoreFault::Conflict);
}

void StoreTest::restoresADeletedVersionFor30Days_data()
{
    QTest::addColumn<QString>("database");
    QTest::addColumn<qint64>("later");
    QTest::addColumn<bool>("restorable");
    for (const char* database : {"sqlite", "postgresql"}) {
        QTest::addRow("%s, at once", database) << QString::fromLatin1(database) << qint64{0} << true;
        QTest::addRow("%s, after 30 days", database) << QString::fromLatin1(database) << 30 * dayMs << true;
        QTest::addRow("%s, later", database) << QString::fromLatin1(database) << 30 * dayMs + 1 << false;
    }
}

void StoreTest::restoresADeletedVersionFor30Days()
{
    QFETCH(qint64, later);
    QFETCH(bool, restorable);
    const Version version = Save(QStringLiteral("版本1"), "{\"n\":1}");
    QVERIFY(store->FindVersion(version.id));
    const qint64 deletedAt = NowMs();
    InWrite([&](ITransaction& t) { return rules::DeleteVersion(t, author, version.id, 1, deletedAt); });
    QVERIFY(!store->FindVersion(version.id));
    QVERIFY(store->VersionsOf(app.id)->empty());

    const auto outcome = InWrite([&](ITransaction& t) {
        return rules::RestoreVersion(t, administrator, version.id, deletedAt + later);
    });

    QCOMPARE(std::holds_alternative<Version>(outcome), restorable);
    QCOMPARE(store->FindVersion(version.id).has_value(), restorable);
    QCOMPARE(store->VersionsOf(app.id)->size(), std::size_t(restorable ? 1 : 0));
}

void StoreTest::releasesOnlyForward()
{
    const Version version = Save(QStringLiteral("版本1"), "{\"n\":1}");
    const auto release = [&](ReleaseType type) {
        return std::get<ReleaseResult>(InWrite(
            [&](ITransaction& t) { return rules::ReleaseVersion(t, author, version.id, 1, type, NowMs()); }));
    };

    QVERIFY(release(ReleaseType::Gray).tookEffect);
    QCOMPARE(release(ReleaseType::Gray).message, QStringLiteral("灰度版本不能再次灰度。"));
    QVERIFY(release(ReleaseType::Online).tookEffect);
    QCOMPARE(release(ReleaseType::Gray).message, QStringLiteral("线上版本不能灰度。"));
    QCOMPARE(release(ReleaseType::Online).message, QStringLiteral("线上版本不能再次上线。"));

    QCOMPARE(store->FindVersion(version.id)->state, VersionState::Online);
    SqlConnection connection(Dialect());
    auto rows = connection.Select(
        QStringLiteral("SELECT from_state, to_state, pin FROM release_entry ORDER BY id"), {});
    QVERIFY(rows.Next());
    QCOMPARE(rows.Number(0), qint64{1});
    QCOMPARE(rows.Number(1), qint64{2});
    QCOMPARE(rows.Text(2), author.pin);
    QVERIFY(rows.Next());
    QCOMPARE(rows.Number(0), qint64{2});
    QCOMPARE(rows.Number(1), qint64{3});
    QVERIFY(!rows.Next());
}

void StoreTest::showsTheOnlineVersionThatWasReleasedLast()
{
    const Version first = Released(QStringLiteral("版本1"), ReleaseType::Online, 1000);
    const Version second = Released(QStringLiteral("版本2"), ReleaseType::Online, 2000);

    auto shown = store->OnlineApps(QStringLiteral("v"));
    QCOMPARE(shown.size(), std::size_t{1});
    QCOMPARE(shown.front().version.id, second.id);
    QCOMPARE(shown.front().app.id, app.id);
    QCOMPARE(shown.front().releasedAt, qint64{2000});
    QVERIFY(store->OnlineApps(QStringLiteral("w")).empty());

    // The former one comes back when the newer one is deleted.
    InWrite([&](ITransaction& t) { return rules::DeleteVersion(t, author, second.id, 1, 3000); });
    shown = store->OnlineApps(QStringLiteral("v"));
    QCOMPARE(shown.size(), std::size_t{1});
    QCOMPARE(shown.front().version.id, first.id);
}

void StoreTest::opensGrayVersionsToWhomeverRedeemsACode()
{
    Released(QStringLiteral("版本1"), ReleaseType::Gray, 1000);
    const QString code = store->InvitationsOf(app.id).front().code;
    QVERIFY(store->GrayApps(foreigner.pin).empty());

    const auto typed = code.left(5).toLower() + QStringLiteral(" - ") + code.mid(5);
    const auto redeemed = Redeem(foreigner, typed, 2000);
    const auto again = Redeem(foreigner, code, 2000);

    QVERIFY(std::holds_alternative<ReleasedApp>(redeemed));
    QVERIFY(std::holds_alternative<ReleasedApp>(again));
    QVERIFY(store->HasGrayAccess(app.id, foreigner.pin));
    QVERIFY(!store->HasGrayAccess(app.id, administrator.pin));
    QCOMPARE(store->InvitationsOf(app.id).front().uses, qint64{1});
    // The next gray version reaches the same people.
    const Version next = Released(QStringLiteral("版本2"), ReleaseType::Gray, 3000);
    const auto shown = store->GrayApps(foreigner.pin);
    QCOMPARE(shown.size(), std::size_t{1});
    QCOMPARE(shown.front().version.id, next.id);
}

void StoreTest::refusesAClosedInvitation_data()
{
    QTest::addColumn<QString>("database");
    QTest::addColumn<QString>("how");
    for (const char* database : {"sqlite", "postgresql"}) {
        for (const char* how : {"revoked", "expired", "used up", "without a gray version", "unknown"})
            QTest::addRow("%s, %s", database, how)
                << QString::fromLatin1(database) << QString::fromLatin1(how);
    }
}

void StoreTest::refusesAClosedInvitation()
{
    QFETCH(QString, how);
    constexpr qint64 made = 1000;
    const Version gray = Released(QStringLiteral("版本1"), ReleaseType::Gray, made);
    const auto invitation = std::get<Invitation>(InWrite([&](ITransaction& t) {
        return rules::CreateInvitation(t, author, app.id, {1, 1}, made);
    }));
    QString code = invitation.code;
    qint64 now = made + 1;
    if (how == QLatin1String("revoked"))
        InWrite([&](ITransaction& t) { return rules::RevokeInvitation(t, author, invitation.id, now); });
    else if (how == QLatin1String("expired"))
        now = made + dayMs;
    else if (how == QLatin1String("used up"))
        QVERIFY(std::holds_alternative<ReleasedApp>(Redeem(colleague, code, now)));
    else if (how == QLatin1String("without a gray version"))
        InWrite([&](ITransaction& t) { return rules::DeleteVersion(t, author, gray.id, 1, now); });
    else
        code = QStringLiteral("2222222222");

    const auto outcome = Redeem(foreigner, code, now);

    QVERIFY(std::holds_alternative<Refusal>(outcome));
    QVERIFY(!std::get<Refusal>(outcome).message.isEmpty());
    QVERIFY(!store->HasGrayAccess(app.id, foreigner.pin));
}

void StoreTest::keepsOneOpenInvitationAcrossGrayReleases()
{
    Released(QStringLiteral("版本1"), ReleaseType::Gray, 1000);
    Released(QStringLiteral("版本2"), ReleaseType::Gray, 2000);
    QCOMPARE(store->InvitationsOf(app.id).size(), std::size_t{1});

    const QString id = store->InvitationsOf(app.id).front().id;
    const auto byColleague =
        InWrite([&](ITransaction& t) { return rules::RevokeInvitation(t, colleague, id, 2500); });
    QCOMPARE(std::get<Refusal>(byColleague).status, 403);
    InWrite([&](ITransaction& t) { return rules::RevokeInvitation(t, author, id, 2500); });
    Released(QStringLiteral("版本3"), ReleaseType::Gray, 3000);

    const auto all = store->InvitationsOf(app.id);
    QCOMPARE(all.size(), std::size_t{2});
    QVERIFY(all.front().IsOpen(3000));
    QVERIFY(!all.back().IsOpen(3000));
}

void StoreTest::notesWhoDidWhat()
{
    const Version version = Released(QStringLiteral("版本1"), ReleaseType::Gray, 1000);
    Redeem(foreigner, store->InvitationsOf(app.id).front().code, 2000);
    InWrite([&](ITransaction& t) { return rules::DeleteVersion(t, colleague, version.id, 1, 3000); });

    const auto entries = store->Audit(QStringLiteral("v"), {}, 100);
    const auto older = store->Audit(QStringLiteral("v"), entries.front().id, 1);

    QStringList acts;
    for (const AuditEntry& entry : entries)
        acts << entry.act + QLatin1Char(' ') + entry.pin + QLatin1Char(' ') + QString::number(entry.at);
    QCOMPARE(acts, QStringList({QStringLiteral("version.delete author-2 3000"),
                                QStringLiteral("invitation.redeem author-3 2000"),
                                QStringLiteral("invitation.create author-1 1000"),
                                QStringLiteral("release.gray author-1 1000")}));
    QCOMPARE(older.size(), std::size_t{1});
    QCOMPARE(older.front().id, entries.at(1).id);
    QVERIFY(store->Audit(QStringLiteral("w"), {}, 100).empty());
}

void StoreTest::bringsAnOlderStoreUpToDate()
{
    const Version online = Released(QStringLiteral("版本1"), ReleaseType::Online, 1000);
    store.reset();
    {
        SqlConnection connection(Dialect());
        for (const char* statement :
             {"DROP TABLE gray_access", "DROP TABLE invitation", "DROP TABLE audit_entry",
              "DROP INDEX version_in_state", "UPDATE schema_info SET version = 1"})
            connection.Execute(QString::fromLatin1(statement));
    }

    OpenFresh();

    QCOMPARE(store->OnlineApps(QStringLiteral("v")).front().version.id, online.id);
    const auto entries = store->Audit(QStringLiteral("v"), {}, 100);
    QCOMPARE(entries.size(), std::size_t{1});
    QCOMPARE(entries.front().act, QStringLiteral("release.online"));
    QCOMPARE(entries.front().pin, author.pin);
    Released(QStringLiteral("版本2"), ReleaseType::Gray, 2000);
    QCOMPARE(store->InvitationsOf(app.id).size(), std::size_t{1});
}

void StoreTest::letsOnlyEditorsOverwrite()
{
    const Version version = Save(QStringLiteral("版本1"), "{\"n\":1}");

    const auto outcome = InWrite([&](ITransaction& t) {
        return rules::OverwriteVersion(t, foreigner, version.id, 1, DraftOf({}, "{\"n\":2}"), NowMs());
    });

    QCOMPARE(std::get<Refusal>(outcome).status, 404);
    QCOMPARE(store->FindVersion(version.id)->revision, qint64{1});
}

void StoreTest::keepsAnAnswerUnderItsKey()
{
    const StoredAnswer answer{Sha256("request"), 201, "\"1\"",
                              QStringLiteral("{\"name\":\"版本\"}").toUtf8()};
    store->SubmitAndWait([&](ITransaction& t) { t.InsertAnswer(author.pin, "key-00001", answer, 1000); });

    const auto own = InWrite([](ITransaction& t) { return t.FindAnswer(author.pin, "key-00001"); });
    const auto others = InWrite([](ITransaction& t) { return t.FindAnswer(colleague.pin, "key-00001"); });
    store->SubmitAndWait([](ITransaction& t) { t.RemoveOutdated(0, 1001); });
    const auto outdated = InWrite([](ITransaction& t) { return t.FindAnswer(author.pin, "key-00001"); });

    QVERIFY(own);
    QCOMPARE(own->fingerprint, answer.fingerprint);
    QCOMPARE(own->status, answer.status);
    QCOMPARE(own->etag, answer.etag);
    QCOMPARE(own->body, answer.body);
    QVERIFY(!others);
    QVERIFY(!outdated);
}

void StoreTest::endsSessionsByIdleTimeAndAge()
{
    const qint64 now = NowMs();
    constexpr qint64 hourMs = dayMs / 24;
    const auto insert = [&](const QByteArray& token, qint64 lastUsedAt, qint64 expiresAt) {
        store->SubmitAndWait([&](ITransaction& t) {
            t.InsertSession({Sha256(token), author.pin, now - dayMs, lastUsedAt, expiresAt});
        });
    };
    insert("fresh", now - 11 * hourMs, now + dayMs);
    insert("idle", now - 13 * hourMs, now + dayMs);
    insert("old", now, now - 1);
    Sessions sessions(*store);

    QVERIFY(sessions.Find("fresh"));
    QVERIFY(!sessions.Find("idle"));
    QVERIFY(!sessions.Find("old"));
    QVERIFY(!sessions.Find("unknown"));

    QByteArray token;
    const SignedIn opened = sessions.Open(author, token);
    QVERIFY(opened.expiresAt <= NowMs() + 7 * dayMs);
    QVERIFY(sessions.Find(token));
    sessions.Close(token);
    QVERIFY(!sessions.Find(token));
}

void StoreTest::keepsEverythingWhenOpenedAgain()
{
    const Version version = Save(QStringLiteral("版本1"), "{\"n\":1}");

    OpenFresh();

    QCOMPARE(store->VersionsOf(app.id)->size(), std::size_t{1});
    QCOMPARE(store->ReadBody(version.id, 1), QByteArray("{\"n\":1}"));
}

void StoreTest::refusesAStoreOfANewerProgram()
{
    {
        SqlConnection connection(Dialect());
        connection.Change(QStringLiteral("UPDATE schema_info SET version = ?"), {CurrentSchema() + 1});
    }
    store.reset();

    QVERIFY_EXCEPTION_THROWN(OpenStore(address), StoreError);
}

void StoreTest::readsInManyThreadsWhileWriting()
{
    const QByteArray bodies[2] = {"{\"n\":\"" + QByteArray(20000, 'a') + "\"}",
                                  "{\"n\":\"" + QByteArray(20000, 'b') + "\"}"};
    const Version version = Save(QStringLiteral("版本1"), bodies[1]);
    std::atomic<bool> writing{true};
    std::atomic<int> wrong{0};
    const auto read = [&] {
        while (writing) {
            try {
                const auto head = store->FindVersion(version.id);
                if (store->ReadBody(version.id, head->revision) != bodies[head->revision % 2])
                    ++wrong;
            } catch (const StoreError&) {
                ++wrong;
            }
        }
    };
    std::vector<Thread> readers;
    for (int i = 0; i < 8; ++i)
        readers.emplace_back(read);

    for (qint64 revision = 1; revision <= 20; ++revision)
        InWrite([&](ITransaction& t) {
            return rules::OverwriteVersion(t, author, version.id, revision,
                                           DraftOf({}, bodies[(revision + 1) % 2]), NowMs());
        });
    writing = false;
    for (Thread& reader : readers)
        reader.Join();

    QCOMPARE(wrong.load(), 0);
    QCOMPARE(store->FindVersion(version.id)->revision, qint64{21});
}

void StoreTest::comesBackAfterTheDatabaseCutItsConnections_data()
{
    QTest::addColumn<QString>("database");
    QTest::newRow("postgresql") << QStringLiteral("postgresql");
}

void StoreTest::comesBackAfterTheDatabaseCutItsConnections()
{
    const Version version = Save(QStringLiteral("版本1"), "{\"n\":1}");
    SqlConnection(Dialect()).Execute(
        QStringLiteral("SELECT pg_terminate_backend(pid) FROM pg_stat_activity "
                       "WHERE datname = current_database() AND pid <> pg_backend_pid()"));

    QCOMPARE(store->ReadBody(version.id, 1), QByteArray("{\"n\":1}"));
    std::optional<StoreFault> first;
    try {
        Save(QStringLiteral("版本2"), "{\"n\":2}");
    } catch (const StoreError& error) {
        first = error.Fault();
    }
    if (first) {
        QCOMPARE(*first, StoreFault::Unavailable);
        Save(QStringLiteral("版本2"), "{\"n\":2}");
    }

    QCOMPARE(store->VersionsOf(app.id)->size(), std::size_t{2});
}

QTEST_GUILESS_MAIN(StoreTest)
#include "tst_store.moc"
