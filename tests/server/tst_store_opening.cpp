// SPDX-License-Identifier: Apache-2.0

#include "StoreFixture.h"
#include "base/Clock.h"
#include "sql/Schema.h"
#include "sql/SqlConnection.h"

#include <QTest>

using namespace server;

// A store that is opened again, of another schema, or after its connections were cut.
class StoreOpeningTest : public StoreFixture
{
    Q_OBJECT

private slots:
    void bringsAnOlderStoreUpToDate_data() { Databases(); }
    void bringsAnOlderStoreUpToDate();
    void keepsEverythingWhenOpenedAgain_data() { Databases(); }
    void keepsEverythingWhenOpenedAgain();
    void refusesAStoreOfANewerProgram_data() { Databases(); }
    void refusesAStoreOfANewerProgram();
    void comesBackAfterTheDatabaseCutItsConnections_data();
    void comesBackAfterTheDatabaseCutItsConnections();
};

void StoreOpeningTest::bringsAnOlderStoreUpToDate()
{
    const Version former = Released(QStringLiteral("甲"), ReleaseType::Online, 500);
    const Version online = Released(QStringLiteral("乙"), ReleaseType::Online, 1000);
    InWrite([&](Transaction& t) {
        return rules::CreateVersion(t, colleague, app.id, DraftOf(QStringLiteral("丁"), "{}"),
                                    NowMs() + dayMs);
    });
    const auto unsaved = std::get<App>(
        InWrite([](Transaction& t) { return rules::CreateApp(t, author, QStringLiteral("另一个"), 0, 1); }));
    store.reset();
    {
        SqlConnection connection(Dialect());
        for (const char* statement : {"DROP TABLE usage_event",
                                      "DROP TABLE save_note",
                                      "DROP TABLE gray_access",
                                      "DROP TABLE invitation",
                                      "DROP TABLE audit_entry",
                                      "DROP INDEX version_in_state",
                                      "DROP INDEX version_of_app",
                                      "DROP INDEX version_position",
                                      "ALTER TABLE version DROP COLUMN position",
                                      "CREATE INDEX version_of_app ON version(app_id, created_at)",
                                      "DROP INDEX release_entry_position",
                                      "ALTER TABLE release_entry DROP COLUMN position",
                                      "ALTER TABLE account DROP COLUMN closed_at",
                                      "ALTER TABLE version DROP COLUMN withdrawn_at",
                                      "ALTER TABLE app DROP COLUMN changed_by",
                                      "ALTER TABLE app DROP COLUMN tags",
                                      "DROP INDEX app_name",
                                      "ALTER TABLE app DROP COLUMN deleted_at",
                                      "ALTER TABLE app DROP COLUMN deleted_by",
                                      "ALTER TABLE app DROP COLUMN purged_at",
                                      "CREATE UNIQUE INDEX app_name ON app(vender_id, name)",
                                      "UPDATE schema_info SET version = 1"})
            connection.Execute(QString::fromLatin1(statement));
    }

    OpenFresh();

    QCOMPARE(store->OnlineApps(QStringLiteral("v")).front().version.id, online.id);
    QCOMPARE(store->FindApp(app.id)->changedByName, colleague.name);
    QCOMPARE(store->FindApp(unsaved.id)->changedByName, author.name);
    const auto entries = store->Audit(QStringLiteral("v"), {}, 100);
    QCOMPARE(entries.size(), std::size_t{2});
    QCOMPARE(entries.front().versionId, online.id);
    QCOMPARE(entries.back().versionId, former.id);
    QCOMPARE(entries.front().act, QStringLiteral("release.online"));
    QCOMPARE(entries.front().pin, author.pin);
    Released(QStringLiteral("丙"), ReleaseType::Gray, 2000);
    QCOMPARE(store->InvitationsOf(app.id).size(), std::size_t{1});
}

void StoreOpeningTest::keepsEverythingWhenOpenedAgain()
{
    const Version version = Save(QStringLiteral("版本1"), "{\"n\":1}");

    OpenFresh();

    QCOMPARE(store->VersionsOf(app.id)->size(), std::size_t{1});
    QCOMPARE(store->ReadBody(version.id, 1), QByteArray("{\"n\":1}"));
}

void StoreOpeningTest::refusesAStoreOfANewerProgram()
{
    {
        SqlConnection connection(Dialect());
        connection.Change(QStringLiteral("UPDATE schema_info SET version = ?"), {CurrentSchema() + 1});
    }
    store.reset();

    QVERIFY_EXCEPTION_THROWN(OpenStore(address), StoreError);
}

void StoreOpeningTest::comesBackAfterTheDatabaseCutItsConnections_data()
{
    QTest::addColumn<QString>("database");
    QTest::newRow("postgresql") << QStringLiteral("postgresql");
}

void StoreOpeningTest::comesBackAfterTheDatabaseCutItsConnections()
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

QTEST_GUILESS_MAIN(StoreOpeningTest)

#include "tst_store_opening.moc"
