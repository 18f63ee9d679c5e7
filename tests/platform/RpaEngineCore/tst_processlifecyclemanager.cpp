// SPDX-License-Identifier: Apache-2.0

#include <RpaEngineCore/IProcessLifeCycle.h>
#include <RpaEngineCore/RpaProcessLifeCycleManager.h>

#include <QtTest>

#include <functional>
#include <memory>

namespace
{
// Registered for its life, as every listener is.
class Listener : public IProcessLifeCycle
{
public:
    Listener() { RpaProcessLifeCycleManager::Instance()->AddLifeCycle(this); }
    ~Listener() override { RpaProcessLifeCycleManager::Instance()->RemoveLifeCycle(this); }

    void ProcessStart(const QString& processName) override
    {
        started.append(processName);
        if (onStart)
            onStart();
    }

    QStringList started;
    std::function<void()> onStart;
};

void TellStart(const QString& processName)
{
    RpaProcessLifeCycleManager::Instance()->ForEach(
        [&processName](IProcessLifeCycle* listener) { listener->ProcessStart(processName); });
}
} // namespace

class ProcessLifeCycleManagerTest : public QObject
{
    Q_OBJECT

private slots:
    void tellsEveryListenerInTheOrderOfRegistration()
    {
        QStringList order;
        Listener first;
        Listener second;
        first.onStart = [&order] { order.append(QStringLiteral("first")); };
        second.onStart = [&order] { order.append(QStringLiteral("second")); };

        TellStart(QStringLiteral("主流程"));

        QCOMPARE(order, QStringList({QStringLiteral("first"), QStringLiteral("second")}));
        QCOMPARE(first.started, QStringList(QStringLiteral("主流程")));
    }

    void tellsAListenerOnceHoweverOftenItWasAdded()
    {
        Listener listener;
        RpaProcessLifeCycleManager::Instance()->AddLifeCycle(&listener);

        TellStart(QStringLiteral("p"));

        QCOMPARE(listener.started.size(), 1);
    }

    void skipsAListenerThatAnotherOneDestroyedMeanwhile()
    {
        Listener first;
        auto second = std::make_unique<Listener>();
        first.onStart = [&second] { second.reset(); };

        TellStart(QStringLiteral("p"));

        QVERIFY(!second);
        QCOMPARE(first.started.size(), 1);
    }

    void doesNotTellAListenerThatCameDuringTheTelling()
    {
        Listener first;
        std::unique_ptr<Listener> late;
        first.onStart = [&late] { late = std::make_unique<Listener>(); };

        TellStart(QStringLiteral("p"));

        QVERIFY(late);
        QVERIFY(late->started.isEmpty());
    }

    void ignoresNullAndUnknownListeners()
    {
        RpaProcessLifeCycleManager::Instance()->AddLifeCycle(nullptr);
        RpaProcessLifeCycleManager::Instance()->RemoveLifeCycle(nullptr);
        int told = 0;

        RpaProcessLifeCycleManager::Instance()->ForEach([&told](IProcessLifeCycle*) { ++told; });

        QCOMPARE(told, 0);
    }
};

QTEST_GUILESS_MAIN(ProcessLifeCycleManagerTest)
#include "tst_processlifecyclemanager.moc"
