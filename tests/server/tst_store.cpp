// SPDX-License-Identifier: Apache-2.0

#include "StoreFixture.h"
#include "accounts/Sessions.h"
#include "base/Clock.h"
#include "base/Digest.h"
#include "base/Ids.h"
#include "base/Thread.h"
#include "sql/SqlConnection.h"

#include <QSemaphore>
#include <QTest>

using namespace server;

// What a store keeps, and how it writes and reads.
class StoreTest : public StoreFixture
{
    Q_OBJECT

private slots:
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
    void letsOnlyEditorsOverwrite_data() { Databases(); }
    void letsOnlyEditorsOverwrite();
    void keepsAnAnswerUnderItsKey_data() { Databases(); }
    void keepsAnAnswerUnderItsKey();
    void endsSessionsByIdleTimeAndAge_data() { Databases(); }
    void endsSessionsByIdleTimeAndAge();
    void endsSessionsThatStayByAgeOnly_data() { Databases(); }
    void endsSessionsThatStayByAgeOnly();
    void readsInManyThreadsWhileWriting_data() { Databases(); }
    void readsInManyThreadsWhileWriting();
};

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

    const auto outcome = InWrite([&](Transaction& t) {
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
        return [=](Transaction& transaction) {
            transaction.InsertApp(
                {NewId(), name, 0, author.pin, author.name, author.venderId, NewId(), 1, 1});
            if (fail)
                throw StoreError(StoreFault::Internal, QStringLiteral("on purpose"));
        };
    };
    store->Submit({[&](Transaction&) { go.acquire(); }, [](const std::exception_ptr&) {}, 0});
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
    const auto hold = [&](Transaction&) {
        started.release();
        go.acquire();
    };
    store->Submit({hold, [](const std::exception_ptr&) {}, 0});
    QVERIFY(started.tryAcquire(1, 20000));
    const qint64 before = store->Figures().commits;
    for (int i = 0; i < 20; ++i)
        store->Submit({[](Transaction&) {}, [&](const std::exception_ptr&) { ended.release(); }, 0});

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
        store->SubmitAndWait([&](Transaction& transaction) { transaction.InsertApp(twin); });
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
    InWrite([&](Transaction& t) { return rules::DeleteVersion(t, author, version.id, 1, deletedAt); });
    QVERIFY(!store->FindVersion(version.id));
    QVERIFY(store->VersionsOf(app.id)->empty());

    const auto outcome = InWrite([&](Transaction& t) {
        return rules::RestoreVersion(t, administrator, version.id, deletedAt + later);
    });

    QCOMPARE(std::holds_alternative<Version>(outcome), restorable);
    QCOMPARE(store->FindVersion(version.id).has_value(), restorable);
    QCOMPARE(store->VersionsOf(app.id)->size(), std::size_t(restorable ? 1 : 0));
}

void StoreTest::letsOnlyEditorsOverwrite()
{
    const Version version = Save(QStringLiteral("版本1"), "{\"n\":1}");

    const auto outcome = InWrite([&](Transaction& t) {
        return rules::OverwriteVersion(t, foreigner, version.id, 1, DraftOf({}, "{\"n\":2}"), NowMs());
    });

    QCOMPARE(std::get<Refusal>(outcome).status, 404);
    QCOMPARE(store->FindVersion(version.id)->revision, qint64{1});
}

void StoreTest::keepsAnAnswerUnderItsKey()
{
    const StoredAnswer answer{Sha256("request"), 201, "\"1\"",
                              QStringLiteral("{\"name\":\"版本\"}").toUtf8()};
    store->SubmitAndWait([&](Transaction& t) { t.InsertAnswer(author.pin, "key-00001", answer, 1000); });

    const auto own =
        std::get<0>(InWrite([](Transaction& t) { return t.FindAnswer(author.pin, "key-00001"); }));
    const auto others =
        std::get<0>(InWrite([](Transaction& t) { return t.FindAnswer(colleague.pin, "key-00001"); }));
    store->SubmitAndWait([](Transaction& t) { t.RemoveOutdated(0, 1001, 0); });
    const auto outdated =
        std::get<0>(InWrite([](Transaction& t) { return t.FindAnswer(author.pin, "key-00001"); }));

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
        store->SubmitAndWait([&](Transaction& t) {
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
    const SignedIn opened = sessions.Open(author, SessionLife::Usual, token);
    QVERIFY(opened.expiresAt <= NowMs() + 7 * dayMs);
    QVERIFY(sessions.Find(token));
    sessions.Close(token);
    QVERIFY(!sessions.Find(token));
}

void StoreTest::endsSessionsThatStayByAgeOnly()
{
    const qint64 now = NowMs();
    const auto insert = [&](const QByteArray& token, qint64 createdAt) {
        store->SubmitAndWait([&](Transaction& t) {
            t.InsertSession({Sha256(token), author.pin, createdAt, createdAt, createdAt + 30 * dayMs});
        });
    };
    insert("unused for a month", now - 29 * dayMs);
    insert("too old", now - 30 * dayMs - 1);
    Sessions sessions(*store);

    QVERIFY(sessions.Find("unused for a month"));
    QVERIFY(!sessions.Find("too old"));

    QByteArray token;
    const SignedIn opened = sessions.Open(author, SessionLife::Staying, token);
    QVERIFY(opened.expiresAt >= now + 30 * dayMs);
    QVERIFY(opened.expiresAt <= NowMs() + 30 * dayMs);
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
        InWrite([&](Transaction& t) {
            return rules::OverwriteVersion(t, author, version.id, revision,
                                           DraftOf({}, bodies[(revision + 1) % 2]), NowMs());
        });
    writing = false;
    for (Thread& reader : readers)
        reader.Join();

    QCOMPARE(wrong.load(), 0);
    QCOMPARE(store->FindVersion(version.id)->revision, qint64{21});
}

QTEST_GUILESS_MAIN(StoreTest)

#include "tst_store.moc"
