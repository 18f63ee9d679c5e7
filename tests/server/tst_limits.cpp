// SPDX-License-Identifier: Apache-2.0

#include "accounts/LoginLimit.h"
#include "base/TaskPool.h"
#include "http/BodyBudget.h"
#include "transport/PeerAddress.h"

#include <QSemaphore>
#include <QTest>

#include <memory>

using namespace server;

// What a stranger, an account and an address may take of the server, without a network.
class LimitsTest : public QObject
{
    Q_OBJECT

private slots:
    void boundsTheBodiesOfOneAccount();
    void boundsTheBodiesOfOneAddress();
    void boundsAllBodiesTogether();
    void keepsRoomForRequestsWhenAnswersTakeTheirPart();
    void letsSmallBodiesPassWhenNothingIsLeft();
    void keepsWhatItHeldWhenItMayNotGrow();
    void knowsAnAddressByWhatItsClientWasGiven_data();
    void knowsAnAddressByWhatItsClientWasGiven();
    void shutsOutWhoGuesses();
    void letsTheOwnerInWhileAnotherAddressGuesses();
    void letsTheOwnerInWhileAllTheWorldGuesses();
    void boundsTheTriesOfOneAddressOverAllNames();
    void startsAnewAfterTheRightPassword();
    void keepsItsPaceAndSizeWhateverNamesAreTried();
    void countsOnWhenTriesAreForgottenAndMadeAnew();
    void setsNoLimitOfZero();
    void keepsAQueueForThoseItKnows();
};

namespace
{
constexpr qint64 large = BodyBudget::freeBytes + 1000;
const QString anna = QStringLiteral("anna");
const QString bert = QStringLiteral("bert");

using namespace std::chrono_literals;
const TryTable::TimePoint noon{1000h};

int Tries(LoginLimit& limit, const QString& account, const QByteArray& address, int count)
{
    int made = 0;
    for (int i = 0; i < count; ++i)
        made += limit.SecondsToWait(account, address, noon) == 0 ? 1 : 0;
    return made;
}
} // namespace

void LimitsTest::boundsTheBodiesOfOneAccount()
{
    BodyBudget budget({100 * large, 2 * large, 100 * large});
    BodyBudget::Share first(budget, "here");
    BodyBudget::Share second(budget, "there");
    BodyBudget::Share third(budget, "elsewhere");
    QVERIFY(first.HoldRequest(anna, large));
    QVERIFY(second.HoldRequest(anna, large));

    QVERIFY(!third.HoldRequest(anna, large));
    QVERIFY(third.HoldRequest(bert, large));
    first.Release();
    BodyBudget::Share later(budget, "here");
    QVERIFY(later.HoldRequest(anna, large));
}

void LimitsTest::boundsTheBodiesOfOneAddress()
{
    BodyBudget budget({100 * large, 100 * large, 2 * large});
    BodyBudget::Share first(budget, "here");
    BodyBudget::Share second(budget, "here");
    BodyBudget::Share third(budget, "here");
    BodyBudget::Share other(budget, "there");
    QVERIFY(first.HoldRequest(anna, large));
    QVERIFY(second.HoldRequest(bert, large));

    QVERIFY(!third.HoldRequest(QStringLiteral("carl"), large));
    QVERIFY(other.HoldRequest(anna, large));
}

void LimitsTest::boundsAllBodiesTogether()
{
    BodyBudget budget({2 * large, 100 * large, 100 * large});
    auto first = std::make_unique<BodyBudget::Share>(budget, "here");
    BodyBudget::Share second(budget, "there");
    BodyBudget::Share third(budget, "elsewhere");
    QVERIFY(first->HoldRequest(anna, large));
    QVERIFY(second.HoldRequest(bert, large));
    QCOMPARE(budget.Used(), 2 * large);

    QVERIFY(!third.HoldRequest({}, large));
    first.reset();
    QCOMPARE(budget.Used(), large);
    QVERIFY(third.HoldRequest({}, large));
}

void LimitsTest::keepsRoomForRequestsWhenAnswersTakeTheirPart()
{
    BodyBudget budget({4 * large, 100 * large, 100 * large});
    std::vector<std::unique_ptr<BodyBudget::Share>> answers;
    for (int i = 0; i < 3; ++i) {
        answers.push_back(std::make_unique<BodyBudget::Share>(budget, "here"));
        QVERIFY(answers.back()->HoldAnswer(anna, large));
    }
    BodyBudget::Share next(budget, "there");

    QVERIFY(!next.HoldAnswer(bert, large));
    QVERIFY(next.HoldRequest(bert, large));
}

void LimitsTest::letsSmallBodiesPassWhenNothingIsLeft()
{
    BodyBudget budget({large, large, large});
    BodyBudget::Share first(budget, "here");
    BodyBudget::Share second(budget, "here");
    QVERIFY(first.HoldRequest(anna, large));

    QVERIFY(second.HoldRequest(anna, BodyBudget::freeBytes));
    QVERIFY(second.HoldAnswer(anna, BodyBudget::freeBytes));
    QVERIFY(!second.HoldRequest(anna, BodyBudget::freeBytes + 1));
}

void LimitsTest::keepsWhatItHeldWhenItMayNotGrow()
{
    BodyBudget budget({3 * large, 3 * large, 3 * large});
    BodyBudget::Share share(budget, "here");
    QVERIFY(share.HoldRequest(anna, large));
    QVERIFY(share.HoldRequest(anna, 2 * large));

    QVERIFY(!share.HoldRequest(anna, 4 * large));

    QCOMPARE(budget.Used(), 2 * large);
    QVERIFY(share.HoldAnswer(bert, large));
    QCOMPARE(budget.Used(), large);
}

void LimitsTest::knowsAnAddressByWhatItsClientWasGiven_data()
{
    QTest::addColumn<QByteArray>("one");
    QTest::addColumn<QByteArray>("other");
    QTest::addColumn<bool>("same");
    QTest::addColumn<bool>("loopback");
    QTest::newRow("two IPv4 addresses")
        << QByteArray("192.0.2.1") << QByteArray("192.0.2.2") << false << false;
    QTest::newRow("one IPv6 network")
        << QByteArray("2001:db8:1:2::1") << QByteArray("2001:db8:1:2:ff::9") << true << false;
    QTest::newRow("two IPv6 networks")
        << QByteArray("2001:db8:1:2::1") << QByteArray("2001:db8:1:3::1") << false << false;
    QTest::newRow("IPv4 inside IPv6")
        << QByteArray("::ffff:127.0.0.1") << QByteArray("127.0.0.1") << true << true;
    QTest::newRow("two of this machine")
        << QByteArray("127.0.0.1") << QByteArray("127.0.0.2") << false << true;
}

void LimitsTest::knowsAnAddressByWhatItsClientWasGiven()
{
    QFETCH(QByteArray, one);
    QFETCH(QByteArray, other);
    QFETCH(bool, same);
    const PeerAddress first(net::ip::make_address(one.constData()));
    const PeerAddress second(net::ip::make_address(other.constData()));

    QCOMPARE(first.key == second.key, same);
    QTEST(first.isLoopback, "loopback");
}

void LimitsTest::shutsOutWhoGuesses()
{
    LoginLimit limit;
    QCOMPARE(Tries(limit, anna, "here", 6), 5);

    QCOMPARE(limit.SecondsToWait(anna, "here", noon + 10s), 50);
    QCOMPARE(limit.SecondsToWait(anna, "here", noon + 59500ms), 1);
    QCOMPARE(limit.SecondsToWait(anna, "here", noon + 60s), 0);
    QCOMPARE(limit.SecondsToWait(bert, "here", noon + 10s), 0);
}

void LimitsTest::letsTheOwnerInWhileAnotherAddressGuesses()
{
    LoginLimit limit;

    Tries(limit, anna, "there", 1000);

    QCOMPARE(limit.SecondsToWait(anna, "home", noon), 0);
}

void LimitsTest::letsTheOwnerInWhileAllTheWorldGuesses()
{
    LoginLimit limit;
    limit.SecondsToWait(anna, "home", noon - 5min);
    limit.Succeeded(anna, "home");
    int guesses = 0;
    for (int i = 0; i < 100; ++i)
        guesses += Tries(limit, anna, QByteArray::number(i), 5);

    QCOMPARE(guesses, 50);
    QVERIFY(limit.SecondsToWait(anna, "elsewhere", noon) > 0);
    QCOMPARE(limit.SecondsToWait(anna, "home", noon), 0);
}

void LimitsTest::boundsTheTriesOfOneAddressOverAllNames()
{
    LoginLimit limit;
    int made = 0;
    for (int i = 0; i < 100; ++i)
        made += Tries(limit, QString::number(i), "here", 1);

    QCOMPARE(made, 30);
    QCOMPARE(limit.SecondsToWait(QStringLiteral("new"), "there", noon), 0);
}

void LimitsTest::startsAnewAfterTheRightPassword()
{
    LoginLimit limit;
    QCOMPARE(Tries(limit, anna, "here", 5), 5);

    limit.Succeeded(anna, "here");

    QCOMPARE(Tries(limit, anna, "here", 6), 5);
}

// With a table that looks through all its names at each try, this does not end within the test's time.
void LimitsTest::keepsItsPaceAndSizeWhateverNamesAreTried()
{
    constexpr int names = 200000;
    LoginLimit limit;
    TryTable table(5);

    for (int i = 0; i < names; ++i) {
        const QByteArray name = QByteArray::number(i);
        QCOMPARE(limit.SecondsToWait(QString::fromLatin1(name), name, noon), 0);
        table.Count(name, noon);
    }

    QCOMPARE(table.Size(), TryTable::mostTries);
    QCOMPARE(table.SecondsToWait("none", noon + 60s), 0);
    QCOMPARE(table.Size(), std::size_t(0));
}

void LimitsTest::countsOnWhenTriesAreForgottenAndMadeAnew()
{
    TryTable table(2);
    table.Count("key", noon);
    table.Forget("key");
    table.Count("key", noon + 10s);
    table.Count("key", noon + 20s);

    QCOMPARE(table.SecondsToWait("key", noon + 60s), 10);
    QCOMPARE(table.SecondsToWait("key", noon + 70s), 0);
}

void LimitsTest::setsNoLimitOfZero()
{
    LoginLimit limit(LoginRates{0, 0, 0});

    QCOMPARE(Tries(limit, anna, "here", 1000), 1000);
}

void LimitsTest::keepsAQueueForThoseItKnows()
{
    using Queue = TaskPool::Queue;
    QSemaphore started;
    QSemaphore go;
    QByteArray order; // by the one thread
    {
        TaskPool pool(1, 3);
        QVERIFY(pool.TryRun(
            [&] {
                started.release();
                go.acquire();
            },
            Queue::Common));
        QVERIFY(started.tryAcquire(1, 20000));
        for (int i = 0; i < 3; ++i)
            QVERIFY(pool.TryRun([&] { order += 's'; }, Queue::Common));
        QVERIFY(!pool.TryRun([&] { order += 'S'; }, Queue::Common));
        for (int i = 0; i < 3; ++i)
            QVERIFY(pool.TryRun([&] { order += 'k'; }, Queue::Known));
        QVERIFY(!pool.TryRun([&] { order += 'K'; }, Queue::Known));
        go.release();
    }

    QCOMPARE(order, QByteArray("ksksks"));
}

QTEST_GUILESS_MAIN(LimitsTest)
#include "tst_limits.moc"
