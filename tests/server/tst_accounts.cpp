// SPDX-License-Identifier: Apache-2.0

#include "ProgramFixture.h"

#include <QFile>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTest>
#include <QUrl>
#include <QVariant>

// Accounts, as their administrator keeps them while the server runs, and what is cleared away by itself.
class AccountsTest : public ProgramFixture
{
    Q_OBJECT

private slots:
    void refusesPasswordsThatAreNoGood_data();
    void refusesPasswordsThatAreNoGood();
    void takesAPasswordFromAFile_data() { Databases(); }
    void takesAPasswordFromAFile();
    void closesAnAccount_data() { Databases(); }
    void closesAnAccount();
    void changesRoles_data() { Databases(); }
    void changesRoles();
    void clearsOutdatedAnswersAndSessionsWhileItRuns_data() { Databases(); }
    void clearsOutdatedAnswersAndSessionsWhileItRuns();

private:
    int Account(const QStringList& arguments, const QByteArray& input = {})
    {
        return Command(QStringList{QStringLiteral("account")} + arguments, input);
    }
    qint64 Ask(const QString& statement);

    const QString name = QString::fromLatin1(pin);
};

// The only number of the answer, by a connection of somebody else.
qint64 AccountsTest::Ask(const QString& statement)
{
    qint64 number = -1;
    {
        const bool isPostgres = store.startsWith(QLatin1String("postgresql:"));
        const QUrl url(store);
        QSqlDatabase database = QSqlDatabase::addDatabase(
            isPostgres ? QStringLiteral("QPSQL") : QStringLiteral("QSQLITE"), QStringLiteral("ask"));
        database.setHostName(url.host());
        database.setPort(url.port());
        database.setUserName(url.userName());
        database.setPassword(url.password());
        database.setDatabaseName(isPostgres ? url.path().mid(1) : store.mid(7));
        QSqlQuery query(database.open() ? database : QSqlDatabase());
        if (query.exec(statement))
            number = query.next() ? query.value(0).toLongLong() : query.numRowsAffected();
    }
    QSqlDatabase::removeDatabase(QStringLiteral("ask"));
    return number;
}

void AccountsTest::refusesPasswordsThatAreNoGood_data()
{
    QTest::addColumn<QString>("database");
    QTest::addColumn<QByteArray>("given");
    QTest::addColumn<QByteArray>("why");
    const QString sqlite = QStringLiteral("sqlite");
    QTest::newRow("7 bytes") << sqlite << QByteArray("grün-7") << QByteArray("at least 8");
    QTest::newRow("1025 bytes") << sqlite << QByteArray(1025, 'k') << QByteArray("at most 1024");
    QTest::newRow("common") << sqlite << QByteArray("12345678") << QByteArray("commonest");
    QTest::newRow("common in other letters") << sqlite << QByteArray("PassWord1") << QByteArray("commonest");
    QTest::newRow("far down the list") << sqlite << QByteArray("karamelka") << QByteArray("commonest");
    QTest::newRow("none") << sqlite << QByteArray() << QByteArray("at least 8");
}

void AccountsTest::refusesPasswordsThatAreNoGood()
{
    QFETCH(QByteArray, given);
    QFETCH(QByteArray, why);

    const int changed = Account({QStringLiteral("password"), name}, given + '\n');
    const QByteArray changedSaid = said;
    const int added = Account(
        {QStringLiteral("add"), QStringLiteral("li"), QStringLiteral("--vender"), QStringLiteral("acme")},
        given + '\n');

    QCOMPARE(changed, 1);
    QVERIFY2(changedSaid.contains(why), changedSaid.constData());
    QCOMPARE(added, 1);
    QCOMPARE(Ask(QStringLiteral("SELECT COUNT(*) FROM account")), qint64{1});
    QVERIFY(Start());
    QVERIFY(SignIn());
}

void AccountsTest::takesAPasswordFromAFile()
{
    QFile file(folder->filePath(QStringLiteral("password")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(QByteArray(1024, 'k') + "\nmore\n");
    file.close();

    QVERIFY2(
        Account({QStringLiteral("password"), name, QStringLiteral("--password-file"), file.fileName()}) == 0,
        said.constData());

    QVERIFY(Start());
    QCOMPARE(ApiClient(server->Port(), {}).SignIn(pin, password).status, 401);
    QCOMPARE(ApiClient(server->Port(), {}).SignIn(pin, QByteArray(1024, 'k')).status, 201);
}

void AccountsTest::closesAnAccount()
{
    QVERIFY(Start());
    QVERIFY(SignIn());
    QVERIFY(!NewApp("one").isEmpty());

    QVERIFY2(Account({QStringLiteral("close"), name}) == 0, said.constData());

    QTRY_COMPARE_WITH_TIMEOUT(client->Get("/api/v1/apps").status, 401, 20000);
    QCOMPARE(ApiClient(server->Port(), {}).SignIn(pin, password).status, 401);
    QCOMPARE(Account({QStringLiteral("password"), name}, "another-green-lamp\n"), 1);
    QCOMPARE(Account({QStringLiteral("list")}), 0);
    QVERIFY2(said.contains("\tclosed"), said.constData());
    QCOMPARE(Account({QStringLiteral("reopen"), name}), 0);
    QCOMPARE(ApiClient(server->Port(), {}).SignIn(pin, password).status, 201);
    QCOMPARE(Account({QStringLiteral("close"), QStringLiteral("nobody")}), 1);
}

void AccountsTest::changesRoles()
{
    QVERIFY(Start());
    QVERIFY(SignIn());
    QCOMPARE(client->Get("/api/v1/audit").status, 200);

    QCOMPARE(Account({QStringLiteral("roles"), name, QStringLiteral("author,king")}), 1);
    QCOMPARE(client->Get("/api/v1/audit").status, 200);
    QVERIFY2(Account({QStringLiteral("roles"), name, QStringLiteral("author")}) == 0, said.constData());

    QTRY_COMPARE_WITH_TIMEOUT(client->Get("/api/v1/audit").status, 403, 20000);
    QVERIFY(!NewApp("one").isEmpty());
}

void AccountsTest::clearsOutdatedAnswersAndSessionsWhileItRuns()
{
    QVERIFY(Start({QStringLiteral("--tidy-every"), QStringLiteral("1")}));
    QVERIFY(SignIn());
    const QByteArray app = NewApp("one");
    for (int i = 0; i < 5; ++i)
        QVERIFY(!NewVersion(app, "v" + QByteArray::number(i), ApiClient::Body(i)).isEmpty());
    ApiClient::TokenOf(server->Port(), pin, password);
    QCOMPARE(Ask(QStringLiteral("SELECT COUNT(*) FROM answer")), qint64{6});
    QCOMPARE(Ask(QStringLiteral("SELECT COUNT(*) FROM session")), qint64{2});

    // Of 91 and of 89 days ago.
    for (const char* row : {"'a', 'e', day - 91", "'b', 'e', day - 89"})
        QCOMPARE(
            Ask(QStringLiteral("INSERT INTO usage_event (pin, id, event, day) SELECT pin, %1 FROM (SELECT "
                               "pin, created_at / 86400000 AS day FROM session ORDER BY created_at "
                               "DESC LIMIT 1) AS last")
                    .arg(QString::fromLatin1(row))),
            qint64{1});

    // Eight days old, all but one.
    QCOMPARE(Ask(QStringLiteral("UPDATE answer SET answered_at = answered_at - 691200000 "
                                "WHERE answered_at < (SELECT MAX(answered_at) FROM answer)")),
             qint64{5});
    QCOMPARE(Ask(QStringLiteral("UPDATE session SET expires_at = 1 "
                                "WHERE created_at = (SELECT MAX(created_at) FROM session)")),
             qint64{1});

    QTRY_COMPARE_WITH_TIMEOUT(Ask(QStringLiteral("SELECT COUNT(*) FROM answer")), qint64{1}, 20000);
    QTRY_COMPARE_WITH_TIMEOUT(Ask(QStringLiteral("SELECT COUNT(*) FROM session")), qint64{1}, 20000);
    QTRY_COMPARE_WITH_TIMEOUT(Ask(QStringLiteral("SELECT COUNT(*) FROM usage_event")), qint64{1}, 20000);
    QCOMPARE(client->Get("/api/v1/apps").status, 200);
}

QTEST_GUILESS_MAIN(AccountsTest)
#include "tst_accounts.moc"
