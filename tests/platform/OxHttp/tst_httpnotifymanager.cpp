// SPDX-License-Identifier: Apache-2.0

#include "TestApp.h"

#include <OxHttp/HttpNotifyManager.h>
#include <OxHttp/HttpObserverBase.h>
#include <OxHttp/IHttpRequest.h>
#include <OxHttp/IHttpResponse.h>

#include <QtTest>

#include <functional>
#include <new>

namespace
{
constexpr int saved = 10019;
constexpr int deleted = 10021;

class Answer : public IHttpResponse
{
public:
    bool IsSuccess() const override { return true; }
    QString GetErrorDesc() const override { return {}; }
};

// Writes down what it hears, and then does what the test wants.
class Observer : public HttpObserverBase
{
public:
    Observer(const QString& observerName, QStringList* sharedLog, const QList<int>& ids)
        : name(observerName), log(sharedLog)
    {
        HttpNotifyManager::Instance()->AddObserver(this, ids);
    }
    ~Observer() override { HttpNotifyManager::Instance()->RemoveAllMessage(this); }

    void OnHttpNotify(int notifyId, QSharedPointer<IHttpRequest> request,
                      QSharedPointer<IHttpResponse> response) override
    {
        QVERIFY(request && response);
        log->append(QStringLiteral("%1 %2 %3").arg(name).arg(notifyId).arg(request->GetIdentity()));
        if (reaction)
            reaction();
    }

    std::function<void()> reaction;

private:
    const QString name;
    QStringList* const log;
};

// Acts for somebody, as an editor does.
class Party : public QObject, public Observer
{
public:
    Party(const QString& partyName, QStringList* sharedLog, const QList<int>& ids)
        : Observer(partyName, sharedLog, {})
    {
        HttpNotifyManager::Instance()->AddObserver(this, ids);
    }
};

void Deliver(int notifyId, const QString& identity = QStringLiteral("x"))
{
    auto request = QSharedPointer<IHttpRequest>::create();
    request->SetIdentity(identity);
    HttpNotifyManager::Instance()->Notify(notifyId, request, QSharedPointer<Answer>::create());
}
} // namespace

class HttpNotifyManagerTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { log.clear(); }

    void tellsObserversInTheOrderOfTheirRegistration();
    void tellsOnlyThoseWhoWantTheId();
    void keepsTheIdentityOfTheRequest();
    void tellsAnObserverOnceWhenItRegisteredTwice();
    void numbersTheAudiencesOfAnId();
    void addsIdsToAnObserverThatHasSome();
    void skipsAnObserverThatWasRemovedDuringTheDelivery();
    void skipsAnObserverThatWasDestroyedDuringTheDelivery();
    void letsAnObserverDestroyItselfDuringTheDelivery();
    void tellsAnObserverThatCameDuringTheDeliveryTheNextAnswer();
    void tellsAnObserverAtTheAddressOfADeadOneTheNextAnswerOnly();
    void deliversWithinADelivery();
    void forgetsAnObserverThatForgotToUnregister();
    void ignoresNullAndUnknownObservers();
    void leavesOutThePartiesThatAnAnswerIsNotFor();
    void numbersPartiesByTheirFirstRegistration();

private:
    QStringList log;
};

void HttpNotifyManagerTest::leavesOutThePartiesThatAnAnswerIsNotFor()
{
    Party first(QStringLiteral("first"), &log, {saved});
    Observer onlooker(QStringLiteral("onlooker"), &log, {saved});
    Party second(QStringLiteral("second"), &log, {saved});
    const quint64 meant = HttpNotifyManager::Instance()->GetParties(saved).last();

    HttpNotifyManager::Instance()->Notify(saved, QSharedPointer<IHttpRequest>::create(),
                                          QSharedPointer<Answer>::create(),
                                          [meant](quint64 party) { return party == meant; });

    QCOMPARE(log, QStringList({QStringLiteral("onlooker 10019 "), QStringLiteral("second 10019 ")}));
}

void HttpNotifyManagerTest::numbersPartiesByTheirFirstRegistration()
{
    HttpNotifyManager* const manager = HttpNotifyManager::Instance();
    Party first(QStringLiteral("first"), &log, {saved});
    const quint64 before = manager->GetLastSerial();
    Party second(QStringLiteral("second"), &log, {saved, deleted});
    manager->AddObserver(&first, {deleted});

    const QVector<quint64> parties = manager->GetParties(saved);
    QCOMPARE(parties.size(), 2);
    QVERIFY(parties.first() <= before);
    QVERIFY(parties.last() > before);
    QCOMPARE(manager->GetParties(deleted), (QVector<quint64>{parties.last(), parties.first()}));
}

void HttpNotifyManagerTest::tellsObserversInTheOrderOfTheirRegistration()
{
    Observer first(QStringLiteral("first"), &log, {saved});
    Observer second(QStringLiteral("second"), &log, {saved});

    Deliver(saved);

    QCOMPARE(log, QStringList({QStringLiteral("first 10019 x"), QStringLiteral("second 10019 x")}));
}

void HttpNotifyManagerTest::tellsOnlyThoseWhoWantTheId()
{
    Observer saves(QStringLiteral("saves"), &log, {saved});
    Observer deletions(QStringLiteral("deletions"), &log, {deleted});

    Deliver(deleted);

    QCOMPARE(log, QStringList(QStringLiteral("deletions 10021 x")));
}

void HttpNotifyManagerTest::keepsTheIdentityOfTheRequest()
{
    Observer observer(QStringLiteral("a"), &log, {saved});

    Deliver(saved, QStringLiteral("{1234}"));

    QCOMPARE(log, QStringList(QStringLiteral("a 10019 {1234}")));
}

void HttpNotifyManagerTest::tellsAnObserverOnceWhenItRegisteredTwice()
{
    Observer observer(QStringLiteral("a"), &log, {saved});
    HttpNotifyManager::Instance()->AddObserver(&observer, {saved, saved});

    Deliver(saved);

    QCOMPARE(log.size(), 1);
}

void HttpNotifyManagerTest::addsIdsToAnObserverThatHasSome()
{
    Observer observer(QStringLiteral("a"), &log, {saved});
    HttpNotifyManager::Instance()->AddObserver(&observer, {deleted});

    Deliver(saved);
    Deliver(deleted);

    QCOMPARE(log.size(), 2);
}

void HttpNotifyManagerTest::skipsAnObserverThatWasRemovedDuringTheDelivery()
{
    Observer first(QStringLiteral("first"), &log, {saved});
    Observer second(QStringLiteral("second"), &log, {saved});
    first.reaction = [&second] { HttpNotifyManager::Instance()->RemoveAllMessage(&second); };

    Deliver(saved);

    QCOMPARE(log, QStringList(QStringLiteral("first 10019 x")));
}

void HttpNotifyManagerTest::skipsAnObserverThatWasDestroyedDuringTheDelivery()
{
    Observer first(QStringLiteral("first"), &log, {saved});
    auto second = std::make_unique<Observer>(QStringLiteral("second"), &log, QList<int>{saved});
    Observer third(QStringLiteral("third"), &log, {saved});
    first.reaction = [&second] { second.reset(); };

    Deliver(saved);

    QCOMPARE(log, QStringList({QStringLiteral("first 10019 x"), QStringLiteral("third 10019 x")}));
}

void HttpNotifyManagerTest::letsAnObserverDestroyItselfDuringTheDelivery()
{
    auto first = std::make_unique<Observer>(QStringLiteral("first"), &log, QList<int>{saved});
    Observer second(QStringLiteral("second"), &log, {saved});
    // The reaction is a member of what it destroys, so it hands over to a copy.
    first->reaction = [&first] { QTimer::singleShot(0, [&first] { first.reset(); }); };

    Deliver(saved);
    QTRY_VERIFY(!first);
    Deliver(saved);

    QCOMPARE(log.size(), 3);
    QCOMPARE(log.last(), QStringLiteral("second 10019 x"));
}

void HttpNotifyManagerTest::tellsAnObserverThatCameDuringTheDeliveryTheNextAnswer()
{
    std::unique_ptr<Observer> late;
    Observer first(QStringLiteral("first"), &log, {saved});
    first.reaction = [&] {
        if (!late)
            late = std::make_unique<Observer>(QStringLiteral("late"), &log, QList<int>{saved});
    };

    Deliver(saved);
    QCOMPARE(log.size(), 1);
    Deliver(saved);

    QCOMPARE(log.last(), QStringLiteral("late 10019 x"));
}

void HttpNotifyManagerTest::tellsAnObserverAtTheAddressOfADeadOneTheNextAnswerOnly()
{
    // Given: a second observer that is replaced, in its own place, while the first is told
    Observer first(QStringLiteral("first"), &log, {saved});
    alignas(Observer) unsigned char place[sizeof(Observer)];
    auto* second = new (place) Observer(QStringLiteral("old"), &log, {saved});
    first.reaction = [&] {
        second->~Observer();
        second = new (place) Observer(QStringLiteral("new"), &log, {saved});
        first.reaction = nullptr;
    };

    Deliver(saved);
    QCOMPARE(log, QStringList(QStringLiteral("first 10019 x")));
    Deliver(saved);

    QCOMPARE(log.last(), QStringLiteral("new 10019 x"));
    second->~Observer();
}

void HttpNotifyManagerTest::deliversWithinADelivery()
{
    Observer first(QStringLiteral("first"), &log, {saved, deleted});
    Observer second(QStringLiteral("second"), &log, {saved, deleted});
    first.reaction = [&first] {
        first.reaction = nullptr;
        Deliver(deleted);
    };

    Deliver(saved);

    QCOMPARE(log, QStringList({QStringLiteral("first 10019 x"), QStringLiteral("first 10021 x"),
                               QStringLiteral("second 10021 x"), QStringLiteral("second 10019 x")}));
}

void HttpNotifyManagerTest::forgetsAnObserverThatForgotToUnregister()
{
    class Forgetful : public HttpObserverBase
    {
    public:
        Forgetful() { HttpNotifyManager::Instance()->AddObserver(this, {saved}); }
        void OnHttpNotify(int, QSharedPointer<IHttpRequest>, QSharedPointer<IHttpResponse>) override {}
    };
    Observer other(QStringLiteral("other"), &log, {saved});
    std::make_unique<Forgetful>().reset();

    Deliver(saved);

    QCOMPARE(log.size(), 1);
}

void HttpNotifyManagerTest::ignoresNullAndUnknownObservers()
{
    Observer observer(QStringLiteral("a"), &log, {});
    HttpNotifyManager::Instance()->AddObserver(nullptr, {saved});
    HttpNotifyManager::Instance()->RemoveAllMessage(&observer);
    HttpNotifyManager::Instance()->RemoveAllMessage(nullptr);

    Deliver(saved);

    QVERIFY(log.isEmpty());
}

void HttpNotifyManagerTest::numbersTheAudiencesOfAnId()
{
    const auto* manager = HttpNotifyManager::Instance();
    auto first = std::make_unique<Observer>(QStringLiteral("first"), &log, QList<int>{saved});
    auto second = std::make_unique<Observer>(QStringLiteral("second"), &log, QList<int>{saved});
    const quint64 here = manager->GetAudienceNumber(saved);
    const quint64 other = manager->GetAudienceNumber(deleted);

    first.reset();
    QCOMPARE(manager->GetAudienceNumber(saved), here);
    second.reset();
    const quint64 gone = manager->GetAudienceNumber(saved);
    QVERIFY(gone != here);

    const Observer next(QStringLiteral("next"), &log, {saved});
    QCOMPARE(manager->GetAudienceNumber(saved), gone);
    QCOMPARE(manager->GetAudienceNumber(deleted), other);
}

RPA_TEST_MAIN(HttpNotifyManagerTest)
#include "tst_httpnotifymanager.moc"
