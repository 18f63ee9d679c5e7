// SPDX-License-Identifier: Apache-2.0

#include "ProgramFixture.h"

#include <QFile>
#include <QJsonArray>
#include <QTest>

// A clock that is wrong, and one that is put right while the server runs.
class ClockTest : public ProgramFixture
{
    Q_OBJECT

private slots:
    void showsTheVersionThatWasPublishedLast_data() { Databases(); }
    void showsTheVersionThatWasPublishedLast();
    void listsWhatHappenedLastFirstAfterARestart_data() { Databases(); }
    void listsWhatHappenedLastFirstAfterARestart();
    void keepsSessionsWhenItIsPutRight_data();
    void keepsSessionsWhenItIsPutRight();
    void locksNoAccountForLongerWhenItIsPutRight_data() { Databases(); }
    void locksNoAccountForLongerWhenItIsPutRight();

private:
    static constexpr qint64 hourMs = 60 * 60 * 1000;

    void Shift(qint64 milliseconds);
    bool StartShifted(qint64 milliseconds);
    QStringList Values(const QByteArray& path, const char* list, const char* record, const char* member);
};

void ClockTest::Shift(qint64 milliseconds)
{
    QFile file(folder->filePath(QStringLiteral("shift")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(QByteArray::number(milliseconds));
}

bool ClockTest::StartShifted(qint64 milliseconds)
{
    Shift(milliseconds);
    return Start({}, {{QStringLiteral("LD_PRELOAD"), QStringLiteral(CLOCK_SHIM_FILE)},
                      // A sanitizer would rather be loaded first.
                      {QStringLiteral("ASAN_OPTIONS"),
                       qEnvironmentVariable("ASAN_OPTIONS") + QStringLiteral(":verify_asan_link_order=0")},
                      {QStringLiteral("RPA_CLOCK_SHIFT"), folder->filePath(QStringLiteral("shift"))}});
}

// Of each entry of a list the value of a member, of the entry itself when `record` is empty.
QStringList ClockTest::Values(const QByteArray& path, const char* list, const char* record,
                              const char* member)
{
    QStringList values;
    for (const auto& entry : client->Get(path).json.value(QLatin1String(list)).toArray()) {
        const QJsonObject object = entry.toObject();
        const QJsonObject part = *record ? object.value(QLatin1String(record)).toObject() : object;
        values << part.value(QLatin1String(member)).toString();
    }
    return values;
}

void ClockTest::showsTheVersionThatWasPublishedLast()
{
    QVERIFY(StartShifted(0));
    QVERIFY(SignIn());
    const QByteArray app = NewApp("one");
    const QByteArray online = NewVersion(app, "online-old", ApiClient::Body(0));
    const QByteArray gray = NewVersion(app, "gray-old", ApiClient::Body(0));
    QCOMPARE(client->Release(online, 1, 2).status, 200);
    QCOMPARE(client->Release(gray, 1, 1).status, 200);
    const QByteArray code = client->Get("/api/v1/apps/" + app + "/invitations")
                                .json.value(QLatin1String("invitations"))
                                .toArray()
                                .first()
                                .toObject()
                                .value(QLatin1String("code"))
                                .toString()
                                .toLatin1();

    Shift(-24 * hourMs);
    const QByteArray nextOnline = NewVersion(app, "online-new", ApiClient::Body(0));
    const QByteArray nextGray = NewVersion(app, "gray-new", ApiClient::Body(0));
    QCOMPARE(client->Release(nextOnline, 1, 2).status, 200);
    QCOMPARE(client->Release(nextGray, 1, 1).status, 200);
    const auto redeemed = client->Ask("POST", "/api/v1/invitations/redeem", "{\"code\":\"" + code + "\"}",
                                      {{"Idempotency-Key", ApiClient::NewKey()}});

    QCOMPARE(Values("/api/v1/online-apps", "apps", "version", "name"), {QStringLiteral("online-new")});
    QCOMPARE(redeemed.json.value(QLatin1String("version")).toObject().value(QLatin1String("name")).toString(),
             QStringLiteral("gray-new"));
    QCOMPARE(Values("/api/v1/gray-apps", "apps", "version", "name"), {QStringLiteral("gray-new")});
}

void ClockTest::listsWhatHappenedLastFirstAfterARestart()
{
    QVERIFY(StartShifted(0));
    QVERIFY(SignIn());
    const QByteArray app = NewApp("one");
    QCOMPARE(client->Release(NewVersion(app, "first", ApiClient::Body(0)), 1, 2).status, 200);

    server.reset();
    QVERIFY(StartShifted(-2 * hourMs));
    QVERIFY(SignIn());
    QCOMPARE(client->Release(NewVersion(app, "second", ApiClient::Body(0)), 1, 2).status, 200);
    NewVersion(app, "third", ApiClient::Body(0));

    QCOMPARE(Values("/api/v1/apps/" + app + "/versions", "versions", "", "name"),
             QStringList({QStringLiteral("third"), QStringLiteral("second"), QStringLiteral("版本1"),
                          QStringLiteral("first")})); // the first one left a copy to work on
    QCOMPARE(Values("/api/v1/online-apps", "apps", "version", "name"), {QStringLiteral("second")});
    QCOMPARE(Values("/api/v1/audit", "entries", "", "detail"),
             QStringList({QStringLiteral("second"), QStringLiteral("first")}));
    const QStringList ids = Values("/api/v1/audit", "entries", "", "id");
    QCOMPARE(Values("/api/v1/audit?before=" + ids.first().toLatin1(), "entries", "", "detail"),
             {QStringLiteral("first")});
}

void ClockTest::keepsSessionsWhenItIsPutRight_data()
{
    QTest::addColumn<QString>("database");
    QTest::addColumn<int>("hours");
    for (const QByteArray database : {"sqlite", "postgresql"}) {
        for (const int hours : {24, -24, 365 * 24})
            QTest::newRow(database + QByteArray::number(hours).prepend(", hours: "))
                << QString::fromLatin1(database) << hours;
    }
}

void ClockTest::keepsSessionsWhenItIsPutRight()
{
    QFETCH(int, hours);
    QVERIFY(StartShifted(0));
    QVERIFY(SignIn());
    const QByteArray other = ApiClient::TokenOf(server->Port(), pin, password);
    QCOMPARE(client->Get("/api/v1/apps").status, 200);

    Shift(hours * hourMs);

    QCOMPARE(client->Get("/api/v1/apps").status, 200);
    QCOMPARE(ApiClient(server->Port(), other).Get("/api/v1/apps").status, 200);
    // One that is ended elsewhere is not trusted for the hours that the clock was moved either.
    QCOMPARE(Command({QStringLiteral("account"), QStringLiteral("passwd"), QString::fromLatin1(pin)},
                     "another-green-lamp\n"),
             0);
    QTRY_COMPARE_WITH_TIMEOUT(client->Get("/api/v1/apps").status, 401, 20000);
}

void ClockTest::locksNoAccountForLongerWhenItIsPutRight()
{
    QVERIFY(StartShifted(24 * hourMs));
    client = std::make_unique<ApiClient>(server->Port(), QByteArray());
    int status = 0;
    for (int i = 0; i < 6; ++i)
        status = client->SignIn(pin, "wrong-password").status;
    QCOMPARE(status, 429);

    Shift(0);
    const auto refused = client->SignIn(pin, password);

    const int at = refused.head.indexOf("Retry-After: ");
    QCOMPARE(refused.status, 429);
    QVERIFY2(at > 0, refused.head.constData());
    const int seconds = refused.head.mid(at + 13, refused.head.indexOf('\r', at) - at - 13).toInt();
    QVERIFY2(seconds >= 1 && seconds <= 60, refused.head.constData());
}

QTEST_GUILESS_MAIN(ClockTest)
#include "tst_clock.moc"
