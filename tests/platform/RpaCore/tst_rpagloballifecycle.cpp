// SPDX-License-Identifier: Apache-2.0

#include <RpaCore/IRpaLifeCycle.h>
#include <RpaCore/RpaGlobalDataManager.h>
#include <RpaCore/RpaGlobalLifeCycle.h>
#include <RpaCore/RpaSuperDir.h>

#include <QtTest>

#include <functional>
#include <memory>

namespace
{
class Logic : public IRpaLifeCycle
{
public:
    explicit Logic(BeforeCloseResult result = BeforeCloseResult::NothingPending) : answer(result)
    {
        RpaGlobalLifeCycle::Instance()->AddLogic(this);
    }
    ~Logic() override { RpaGlobalLifeCycle::Instance()->RemoveLogic(this); }

    BeforeCloseResult BeforeClose() override
    {
        ++questions;
        if (meanwhile)
            meanwhile();
        return answer;
    }

    BeforeCloseResult answer;
    int questions = 0;
    std::function<void()> meanwhile;
};
} // namespace

class RpaGlobalLifeCycleTest : public QObject
{
    Q_OBJECT

private slots:
    void closesWhenNobodyIsThere();
    void closesUnlessSomebodyRefuses_data();
    void closesUnlessSomebodyRefuses();
    void stopsAtTheFirstRefusal();
    void asksInTheOrderOfRegistration();
    void asksAgainAfterARefusal();
    void asksOnceHoweverOftenALogicWasAdded();
    void skipsALogicThatGoesAwayMeanwhile();
    void refusesASecondCloseDuringTheFirst();
    void knowsTheFactsOfTheWorkstation();
};

void RpaGlobalLifeCycleTest::closesWhenNobodyIsThere()
{
    QVERIFY(RpaGlobalLifeCycle::Instance()->BeforeClose());
    RpaGlobalLifeCycle::Instance()->AddLogic(nullptr);
    QVERIFY(RpaGlobalLifeCycle::Instance()->BeforeClose());
}

void RpaGlobalLifeCycleTest::closesUnlessSomebodyRefuses_data()
{
    QTest::addColumn<int>("answer");
    QTest::addColumn<bool>("closes");

    QTest::newRow("nothing pending") << 0 << true;
    QTest::newRow("resolved") << 1 << true;
    QTest::newRow("refused") << 2 << false;
}

void RpaGlobalLifeCycleTest::closesUnlessSomebodyRefuses()
{
    QFETCH(int, answer);
    QFETCH(bool, closes);
    const Logic logic(static_cast<BeforeCloseResult>(answer));

    QCOMPARE(RpaGlobalLifeCycle::Instance()->BeforeClose(), closes);

    QCOMPARE(logic.questions, 1);
}

void RpaGlobalLifeCycleTest::stopsAtTheFirstRefusal()
{
    const Logic first;
    const Logic second(BeforeCloseResult::Refused);
    const Logic third;

    QVERIFY(!RpaGlobalLifeCycle::Instance()->BeforeClose());

    QCOMPARE(first.questions, 1);
    QCOMPARE(second.questions, 1);
    QCOMPARE(third.questions, 0);
}

void RpaGlobalLifeCycleTest::asksInTheOrderOfRegistration()
{
    QStringList order;
    Logic first;
    Logic second;
    first.meanwhile = [&order] { order << QStringLiteral("first"); };
    second.meanwhile = [&order] { order << QStringLiteral("second"); };

    QVERIFY(RpaGlobalLifeCycle::Instance()->BeforeClose());

    QCOMPARE(order, (QStringList{QStringLiteral("first"), QStringLiteral("second")}));
}

void RpaGlobalLifeCycleTest::asksAgainAfterARefusal()
{
    Logic logic(BeforeCloseResult::Refused);
    QVERIFY(!RpaGlobalLifeCycle::Instance()->BeforeClose());
    logic.answer = BeforeCloseResult::Resolved;

    QVERIFY(RpaGlobalLifeCycle::Instance()->BeforeClose());

    QCOMPARE(logic.questions, 2);
}

void RpaGlobalLifeCycleTest::asksOnceHoweverOftenALogicWasAdded()
{
    Logic logic;
    RpaGlobalLifeCycle::Instance()->AddLogic(&logic);

    QVERIFY(RpaGlobalLifeCycle::Instance()->BeforeClose());

    QCOMPARE(logic.questions, 1);
}

void RpaGlobalLifeCycleTest::skipsALogicThatGoesAwayMeanwhile()
{
    Logic first;
    auto second = std::make_unique<Logic>(BeforeCloseResult::Refused);
    first.meanwhile = [&] { second.reset(); };

    QVERIFY(RpaGlobalLifeCycle::Instance()->BeforeClose());
}

void RpaGlobalLifeCycleTest::refusesASecondCloseDuringTheFirst()
{
    Logic logic;
    bool second = true;
    logic.meanwhile = [&] { second = RpaGlobalLifeCycle::Instance()->BeforeClose(); };

    QVERIFY(RpaGlobalLifeCycle::Instance()->BeforeClose());

    QVERIFY(!second);
    QCOMPARE(logic.questions, 1);
}

void RpaGlobalLifeCycleTest::knowsTheFactsOfTheWorkstation()
{
    RpaGlobalDataManager* data = RpaGlobalDataManager::Instance();
    QVERIFY(!data->GetSuperAdmin());
    QCOMPARE(data->GetApiVersion(), QStringLiteral("1.0.0"));
    data->SetSuperAdmin(true);
    QVERIFY(data->GetSuperAdmin());

    RpaSuperDir* folders = RpaSuperDir::Instance();
    QVERIFY(folders->GetVisualTemplateDir().isEmpty());
    folders->SetTemplateDirs(QStringLiteral("/v"), QStringLiteral("/p"));
    QCOMPARE(folders->GetVisualTemplateDir(), QStringLiteral("/v"));
    QCOMPARE(folders->GetProgramTemplateDir(), QStringLiteral("/p"));
}

QTEST_GUILESS_MAIN(RpaGlobalLifeCycleTest)
#include "tst_rpagloballifecycle.moc"
