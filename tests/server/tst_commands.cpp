// SPDX-License-Identifier: Apache-2.0

#include "ProgramFixture.h"

#include <QFile>
#include <QJsonArray>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QTest>

#include <atomic>
#include <thread>

// What an administrator does with stores.
class CommandsTest : public ProgramFixture
{
    Q_OBJECT

private slots:
    void backsUpWhileSavesGoOn_data() { Databases(); }
    void backsUpWhileSavesGoOn();
    void restoresOnlyIntoAnEmptyStore_data() { Databases(); }
    void restoresOnlyIntoAnEmptyStore();
    void restoresABackupOfAnOlderServer_data() { Sqlite(); }
    void restoresABackupOfAnOlderServer();
    void movesAStoreToPostgres_data() { Sqlite(); }
    void movesAStoreToPostgres();
    void movesNothingWhileAServerUsesIt_data() { Sqlite(); }
    void movesNothingWhileAServerUsesIt();
    void findsWhatIsDamaged_data();
    void findsWhatIsDamaged();

private:
    static void Sqlite();
    void ChangeFile(const QString& name, const QStringList& statements);
    QString In(const char* name) const { return folder->filePath(QString::fromLatin1(name)); }
    QString BackupFile() const { return In("backup.db"); }
    QStringList EverythingOf(const QByteArray& appId);
};

void CommandsTest::Sqlite()
{
    QTest::addColumn<QString>("database");
    QTest::newRow("sqlite") << QStringLiteral("sqlite");
}

void CommandsTest::ChangeFile(const QString& name, const QStringList& statements)
{
    {
        QSqlDatabase file = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("change"));
        file.setDatabaseName(name);
        QVERIFY(file.open());
        for (const QString& statement : statements) {
            QSqlQuery query(file);
            QVERIFY2(query.exec(statement), qPrintable(query.lastError().text()));
        }
    }
    QSqlDatabase::removeDatabase(QStringLiteral("change"));
}

// What the server hands out of an app, as texts to compare.
QStringList CommandsTest::EverythingOf(const QByteArray& appId)
{
    const auto list = client->Get("/api/v1/apps/" + appId + "/versions");
    QStringList all{QString::fromUtf8(list.body)};
    for (const auto& version : list.json.value(QLatin1String("versions")).toArray()) {
        const QByteArray id = version.toObject().value(QLatin1String("id")).toString().toLatin1();
        all << QString::fromUtf8(client->Get("/api/v1/versions/" + id + "/data").body);
    }
    for (const char* path : {"/api/v1/online-apps", "/api/v1/gray-apps", "/api/v1/audit"})
        all << QString::fromUtf8(client->Get(path).body);
    all << QString::fromUtf8(client->Get("/api/v1/apps/" + appId + "/invitations").body);
    return all;
}

void CommandsTest::backsUpWhileSavesGoOn()
{
    QVERIFY(Start());
    QVERIFY(SignIn());
    const QByteArray app = NewApp("one");
    const QByteArray token = ApiClient::TokenOf(server->Port(), pin, password);
    std::atomic<bool> ended{false};
    std::atomic<int> saved{0};
    std::atomic<int> refused{0};
    const auto save = [&](const QByteArray& version) {
        ApiClient mine(server->Port(), token);
        for (int revision = 1; !ended; ++revision) {
            const QByteArray body = ApiClient::Body("\"n\":" + QByteArray::number(revision) + ",\"fill\":\"" +
                                                    QByteArray(20000, 'x') + '"');
            if (mine.Overwrite(version, revision, body).status == 200)
                ++saved;
            else
                ++refused;
        }
    };
    constexpr int authorCount = 8; // together they save faster than a backup reads
    std::vector<std::thread> authors;
    for (int i = 0; i < authorCount; ++i)
        authors.emplace_back(save, NewVersion(app, QByteArray::number(i), ApiClient::Body(0)));
    QTRY_VERIFY(saved > 100);

    const int before = saved;
    const int code = Command({QStringLiteral("backup"), BackupFile()});
    const int after = saved;
    ended = true;
    for (std::thread& author : authors)
        author.join();
    qInfo("%d saves went on during the backup", after - before);
    QVERIFY2(code == 0, said.constData());
    QCOMPARE(refused.load(), 0);
    QVERIFY(after > before);
    QCOMPARE(Command({QStringLiteral("backup"), BackupFile()}), 1); // nothing is overwritten

#ifdef Q_OS_UNIX // elsewhere the folder says who may read it
    QCOMPARE(QFile::permissions(BackupFile()) & (QFile::ReadGroup | QFile::ReadOther), QFile::Permissions());
#endif
    // What was saved before the backup began is in it, and it is a store in itself.
    EndServer();
    store = QStringLiteral("sqlite:") + BackupFile();
    QVERIFY2(Command({QStringLiteral("verify")}) == 0, said.constData());
    QVERIFY(Start());
    QVERIFY(SignIn());
    int kept = 0;
    const QJsonObject list = client->Get("/api/v1/apps/" + app + "/versions").json;
    for (const auto& version : list.value(QLatin1String("versions")).toArray()) {
        const int saves = version.toObject().value(QLatin1String("revision")).toInt() - 1;
        const QByteArray id = version.toObject().value(QLatin1String("id")).toString().toLatin1();
        const QByteArray body = client->Get("/api/v1/versions/" + id + "/data").body;
        QVERIFY(saves == 0 || body.contains("\"n\":" + QByteArray::number(saves) + ','));
        kept += saves;
    }
    // A save that is in the store may not have been answered yet.
    QVERIFY2(kept >= before && kept <= after + authorCount, QByteArray::number(kept));
}

void CommandsTest::restoresOnlyIntoAnEmptyStore()
{
    QVERIFY(Start());
    QVERIFY(SignIn());
    const QByteArray app = NewApp("one");
    QCOMPARE(client->Release(NewVersion(app, "gray", ApiClient::Body(1)), 1, 1).status, 200);
    QCOMPARE(client->Release(NewVersion(app, "online", ApiClient::Body(2)), 1, 2).status, 200);
    NewVersion(app, "develop", ApiClient::Body(3));
    const QStringList everything = EverythingOf(app);
    QVERIFY2(Command({QStringLiteral("backup"), BackupFile()}) == 0, said.constData());
    EndServer();

    QCOMPARE(Command({QStringLiteral("restore"), BackupFile()}), 1);
    QVERIFY2(said.contains("not empty"), said.constData());
    store = store.startsWith(QLatin1String("sqlite:")) ? QStringLiteral("sqlite:") + In("fresh.db")
                                                       : postgres->NewDatabaseForPrograms();
    QCOMPARE(Command({QStringLiteral("restore"), In("none.db")}), 1);
    QVERIFY2(Command({QStringLiteral("restore"), BackupFile()}) == 0, said.constData());

    QVERIFY2(Command({QStringLiteral("verify")}) == 0, said.constData());
    QVERIFY(Start());
    QVERIFY(SignIn());
    QCOMPARE(EverythingOf(app), everything);
    // What comes now stands behind what was there.
    const QByteArray next = NewVersion(app, "next", ApiClient::Body(4));
    QCOMPARE(client->Release(next, 1, 2).status, 200);
    QVERIFY(client->Get("/api/v1/online-apps").body.contains("\"next\""));
}

void CommandsTest::restoresABackupOfAnOlderServer()
{
    QVERIFY(Start());
    QVERIFY(SignIn());
    const QByteArray app = NewApp("one");
    NewVersion(app, "one", ApiClient::Body(1));
    const QStringList everything = EverythingOf(app);
    QVERIFY2(Command({QStringLiteral("backup"), BackupFile()}) == 0, said.constData());
    EndServer();
    ChangeFile(BackupFile(),
               {QStringLiteral("DROP TABLE usage_event"), QStringLiteral("DROP TABLE save_note"),
                QStringLiteral("ALTER TABLE account DROP COLUMN closed_at"),
                QStringLiteral("ALTER TABLE version DROP COLUMN withdrawn_at"),
                QStringLiteral("ALTER TABLE audit_entry DROP COLUMN reason"),
                QStringLiteral("ALTER TABLE app DROP COLUMN changed_by"),
                QStringLiteral("ALTER TABLE app DROP COLUMN tags"), QStringLiteral("DROP INDEX app_name"),
                QStringLiteral("ALTER TABLE app DROP COLUMN deleted_at"),
                QStringLiteral("ALTER TABLE app DROP COLUMN deleted_by"),
                QStringLiteral("ALTER TABLE app DROP COLUMN purged_at"),
                QStringLiteral("CREATE UNIQUE INDEX app_name ON app(vender_id, name)"),
                QStringLiteral("UPDATE schema_info SET version = 3")});
    QFile backup(BackupFile());
    QVERIFY(backup.open(QIODevice::ReadOnly));
    const QByteArray before = backup.readAll();

    store = QStringLiteral("sqlite:") + In("fresh.db");
    QVERIFY2(Command({QStringLiteral("restore"), BackupFile()}) == 0, said.constData());

    QVERIFY(Start());
    QVERIFY(SignIn());
    QCOMPARE(EverythingOf(app), everything);
    backup.seek(0);
    QVERIFY(backup.readAll() == before);
}

void CommandsTest::movesAStoreToPostgres()
{
    if (!PostgresProcess::IsOffered())
        QSKIP("this system has no PostgreSQL to offer");
    QVERIFY(Start());
    QVERIFY(SignIn());
    const QByteArray app = NewApp("one");
    const QByteArray version = NewVersion(app, "one", ApiClient::Body(1));
    const QByteArray key = ApiClient::NewKey();
    const auto overwritten = client->Overwrite(version, 1, ApiClient::Body(2), key);
    QCOMPARE(client->Release(version, 2, 2).status, 200);
    const QStringList everything = EverythingOf(app);
    EndServer();

    const QString target = postgres->NewDatabaseForPrograms();
    QVERIFY2(Command({QStringLiteral("move"), target}) == 0, said.constData());
    QCOMPARE(Command({QStringLiteral("move"), target}), 1);

    store = target;
    QVERIFY2(Command({QStringLiteral("verify")}) == 0, said.constData());
    QVERIFY(Start());
    QVERIFY(SignIn());
    QCOMPARE(EverythingOf(app), everything);
    // A save that is repeated after the move is still the same save.
    QCOMPARE(client->Overwrite(version, 1, ApiClient::Body(2), key).body, overwritten.body);
    QCOMPARE(client->Release(NewVersion(app, "next", ApiClient::Body(4)), 1, 2).status, 200);
    QVERIFY(client->Get("/api/v1/online-apps").body.contains("\"next\""));
}

void CommandsTest::movesNothingWhileAServerUsesIt()
{
    QVERIFY(Start());

    QCOMPARE(Command({QStringLiteral("move"), QStringLiteral("sqlite:") + In("other.db")}), 1);
    QVERIFY2(said.contains("another server uses"), said.constData());
    QCOMPARE(Command({QStringLiteral("restore"), In("none.db")}), 1);
    QVERIFY2(said.contains("another server uses"), said.constData());
}

void CommandsTest::findsWhatIsDamaged_data()
{
    QTest::addColumn<QString>("database");
    QTest::addColumn<QString>("statement");
    QTest::addColumn<QByteArray>("named");
    const QString sqlite = QStringLiteral("sqlite");
    QTest::newRow("app data") << sqlite
                              << QStringLiteral("UPDATE revision SET body = x'7b7d' WHERE revision = 1")
                              << QByteArray("/1 is damaged");
    QTest::newRow("a head that is older") << sqlite << QStringLiteral("UPDATE version SET revision = 1")
                                          << QByteArray("is not its newest revision");
    QTest::newRow("a gap in the history")
        << sqlite << QStringLiteral("DELETE FROM revision WHERE revision = 1")
        << QByteArray("lacks revisions");
    QTest::newRow("a version of no app") << sqlite << QStringLiteral("UPDATE version SET app_id = 'none'")
                                         << QByteArray("a row of version refers to nothing");
}

void CommandsTest::findsWhatIsDamaged()
{
    QFETCH(QString, statement);
    QFETCH(QByteArray, named);
    QVERIFY(Start());
    QVERIFY(SignIn());
    const QByteArray app = NewApp("one");
    const QByteArray version = NewVersion(app, "one", ApiClient::Body(1));
    QCOMPARE(client->Overwrite(version, 1, ApiClient::Body(2)).status, 200);
    EndServer();
    QVERIFY2(Command({QStringLiteral("verify")}) == 0, said.constData());

    ChangeFile(store.mid(7), {QStringLiteral("DROP TRIGGER revision_stays"),
                              QStringLiteral("DROP TRIGGER revision_remains"), statement});

    QCOMPARE(Command({QStringLiteral("verify")}), 3);
    QVERIFY2(said.contains(named), said.constData());
}

QTEST_GUILESS_MAIN(CommandsTest)
#include "tst_commands.moc"
