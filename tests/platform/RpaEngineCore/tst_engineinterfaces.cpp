// SPDX-License-Identifier: Apache-2.0

#include <RpaEngineCore/IAppParamEngine.h>
#include <RpaEngineCore/IProcessLifeCycle.h>
#include <RpaEngineCore/RpaLogLevelTitle.h>
#include <RpaEngineCore/RpaProcessLifeCycleManager.h>

#include <QtTest>

#include <functional>

namespace
{
// Nothing but what must be written.
class PlainParameters : public IAppParamEngine
{
public:
    QStringList GetParamNames() const override { return {QStringLiteral("a")}; }
    QVariant GetParam(const QString&) const override { return 1; }
    bool SetParam(const QString&, const QVariant&) override { return true; }
};

// Counts how often it was told, and may do something then.
class Counter : public IProcessLifeCycle
{
public:
    void ApiExecute(const QString& statementId) override
    {
        told << statementId;
        if (then)
            then();
    }

    QStringList told;
    std::function<void()> then;
};

void TellOf(const QString& statementId)
{
    RpaProcessLifeCycleManager::Instance()->ForEach(
        [&statementId](IProcessLifeCycle* listener) { listener->ApiExecute(statementId); });
}
} // namespace

// What those who implement the interfaces of the engine may leave out, and what they may do meanwhile.
class EngineInterfacesTest : public QObject
{
    Q_OBJECT

private slots:
    void levelsHaveTheirTitles_data()
    {
        QTest::addColumn<int>("level");
        QTest::addColumn<QString>("title");
        QTest::newRow("debug") << int(RpaLogLevel::Debug) << QStringLiteral("调试");
        QTest::newRow("info") << int(RpaLogLevel::Info) << QStringLiteral("信息");
        QTest::newRow("warning") << int(RpaLogLevel::Warning) << QStringLiteral("警告");
        QTest::newRow("error") << int(RpaLogLevel::Error) << QStringLiteral("错误");
    }
    void levelsHaveTheirTitles()
    {
        QFETCH(int, level);

        QTEST(RpaLogLevelTitle(RpaLogLevel(level)), "title");
    }

    void parametersAreNeitherSecretNorDemandedUnlessSaid()
    {
        PlainParameters parameters;

        QVERIFY(parameters.GetSecretParamNames().isEmpty());
        QVERIFY(parameters.DemandValues().isEmpty());
    }

    void aListenerMayRemoveItselfWhileItIsTold()
    {
        auto* const manager = RpaProcessLifeCycleManager::Instance();
        Counter once;
        Counter always;
        once.then = [&] { manager->RemoveLifeCycle(&once); };
        manager->AddLifeCycle(&once);
        manager->AddLifeCycle(&always);

        TellOf(QStringLiteral("1"));
        TellOf(QStringLiteral("2"));
        manager->RemoveLifeCycle(&always);
        TellOf(QStringLiteral("3"));

        QCOMPARE(once.told, QStringList{QStringLiteral("1")});
        QCOMPARE(always.told, (QStringList{QStringLiteral("1"), QStringLiteral("2")}));
    }

    void aListenerThatCameBackIsToldLast()
    {
        auto* const manager = RpaProcessLifeCycleManager::Instance();
        QStringList order;
        Counter first;
        Counter second;
        first.then = [&order] { order << QStringLiteral("first"); };
        second.then = [&order] { order << QStringLiteral("second"); };
        manager->AddLifeCycle(&first);
        manager->AddLifeCycle(&second);

        manager->RemoveLifeCycle(&first);
        manager->AddLifeCycle(&first);
        TellOf(QStringLiteral("1"));
        manager->RemoveLifeCycle(&first);
        manager->RemoveLifeCycle(&second);

        QCOMPARE(order, (QStringList{QStringLiteral("second"), QStringLiteral("first")}));
    }
};

QTEST_GUILESS_MAIN(EngineInterfacesTest)
#include "tst_engineinterfaces.moc"
