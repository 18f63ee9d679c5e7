// SPDX-License-Identifier: Apache-2.0

#include <RpaAppData/RpaToolData.h>
#include <RpaAppTool/IAppToolWidget.h>
#include <RpaEngineCore/IProcessLifeCycle.h>
#include <RpaEngineCore/RpaProcessLifeCycleManager.h>

#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

class ToolWidget : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void aClickAsksForTheToolsProcess();
    void theRunningToolStopsItsProcess();
    void aRunThatWaitsIsStoppedByItsTool();
    void aRunThatWaitsElsewhereIsNotStoppedHere();
    void aToolWithoutAProcessCannotBePressed();
    void runsWhatItIsToldTo_data();
    void runsWhatItIsToldTo();
    void runsNothingWithoutAProcess();
    void stopsWhatRunsOnly();
    void changesOfTheToolsAreShown();

private:
    QPushButton* Button(int index)
    {
        return widget->findChild<QPushButton*>(QStringLiteral("toolButton%1").arg(index));
    }
    static void Tell(const std::function<void(IProcessLifeCycle*)>& call)
    {
        RpaProcessLifeCycleManager::Instance()->ForEach(call);
    }

    std::unique_ptr<RpaToolData> tools;
    std::unique_ptr<QWidget> host;
    IAppToolWidget* widget = nullptr;
};

void ToolWidget::init()
{
    host = std::make_unique<QWidget>();
    widget = IAppToolWidget::CreateToolEditor(host.get());
    tools = std::make_unique<RpaToolData>();
    tools->InsertItem(-1, {QString(), QStringLiteral("导入"), QString(), QStringLiteral("主流程"), {}});
    tools->InsertItem(-1, {QString(), QStringLiteral("空"), QString(), QString(), {}});
    widget->SetToolData(tools.get());
    host->resize(300, 100);
    host->show();
}

void ToolWidget::aClickAsksForTheToolsProcess()
{
    QSignalSpy runs(widget, &IAppToolWidget::SigRunProcess);

    QTest::mouseClick(Button(0), Qt::LeftButton);

    QCOMPARE(runs.size(), 1);
    QCOMPARE(runs.first().first().toString(), QStringLiteral("主流程"));
}

void ToolWidget::theRunningToolStopsItsProcess()
{
    QSignalSpy stops(widget, &IAppToolWidget::SigStopProcess);
    QTest::mouseClick(Button(0), Qt::LeftButton);
    Tell([](IProcessLifeCycle* listener) { listener->ProcessStart(QStringLiteral("主流程")); });
    QCOMPARE(Button(0)->text(), QStringLiteral("停止"));

    QTest::mouseClick(Button(0), Qt::LeftButton);
    QCOMPARE(stops.size(), 1);
    QCOMPARE(stops.first().first().toString(), QStringLiteral("主流程"));
    Tell([](IProcessLifeCycle* listener) { listener->ProcessFinish(QStringLiteral("主流程")); });

    QCOMPARE(Button(0)->text(), QStringLiteral("导入"));
}

void ToolWidget::aRunThatWaitsIsStoppedByItsTool()
{
    const auto wait = [](bool waits) {
        Tell([waits](IProcessLifeCycle* listener) { listener->RunWaits(waits); });
    };
    tools->InsertItem(-1, {QString(), QStringLiteral("导出"), QString(), QStringLiteral("导出流程"), {}});
    QSignalSpy runs(widget, &IAppToolWidget::SigRunProcess);
    QSignalSpy stops(widget, &IAppToolWidget::SigStopProcess);
    connect(widget, &IAppToolWidget::SigRunProcess, this, [&wait] { wait(true); });

    QTest::mouseClick(Button(2), Qt::LeftButton);
    QCOMPARE(Button(2)->text(), QStringLiteral("停止"));
    QVERIFY(!Button(0)->isEnabled());
    QTest::mouseClick(Button(2), Qt::LeftButton);

    QCOMPARE(runs.size(), 1);
    QCOMPARE(stops.size(), 1);
    QCOMPARE(stops.first().first().toString(), QStringLiteral("导出流程"));
    wait(false);
    QCOMPARE(Button(2)->text(), QStringLiteral("导出"));
    QVERIFY(Button(0)->isEnabled());
}

void ToolWidget::aRunThatWaitsElsewhereIsNotStoppedHere()
{
    QTest::mouseClick(Button(0), Qt::LeftButton); // came to nothing

    Tell([](IProcessLifeCycle* listener) { listener->RunWaits(true); });

    QCOMPARE(Button(0)->text(), QStringLiteral("导入"));
    QVERIFY(!Button(0)->isEnabled());
}

void ToolWidget::aToolWithoutAProcessCannotBePressed()
{
    QVERIFY(!Button(1)->isEnabled());
    QVERIFY(Button(0)->isEnabled());
}

void ToolWidget::changesOfTheToolsAreShown()
{
    tools->InsertItem(0, {QString(), QStringLiteral("新"), QString(), QStringLiteral("主流程"), {}});
    QCOMPARE(Button(0)->text(), QStringLiteral("新"));
    QVERIFY(Button(2));

    tools.reset();

    QTRY_VERIFY(!Button(0));
}

void ToolWidget::runsWhatItIsToldTo_data()
{
    QTest::addColumn<QString>("told");
    QTest::addColumn<QString>("runs");
    QTest::addColumn<int>("tool");
    QTest::newRow("nothing") << QString() << QStringLiteral("主流程") << 0;
    QTest::newRow("a tool's process") << QStringLiteral("导出流程") << QStringLiteral("导出流程") << 2;
    QTest::newRow("no tool's process") << QStringLiteral("检查流程") << QStringLiteral("检查流程") << -1;
}

void ToolWidget::runsWhatItIsToldTo()
{
    QFETCH(QString, told);
    QFETCH(QString, runs);
    QFETCH(int, tool);
    tools->InsertItem(-1, {QString(), QStringLiteral("导出"), QString(), QStringLiteral("导出流程"), {}});
    QSignalSpy asked(widget, &IAppToolWidget::SigRunProcess);

    QVERIFY(widget->Run(told));

    QCOMPARE(asked.size(), 1);
    QCOMPARE(asked.first().first().toString(), runs);
    Tell([&runs](IProcessLifeCycle* listener) { listener->ProcessStart(runs); });
    for (int index : {0, 2})
        QCOMPARE(Button(index)->text() == QStringLiteral("停止"), index == tool);
    QVERIFY(!widget->Run(told));
    Tell([&runs](IProcessLifeCycle* listener) { listener->ProcessFinish(runs); });
}

void ToolWidget::runsNothingWithoutAProcess()
{
    tools->RemoveItem(0);
    QSignalSpy asked(widget, &IAppToolWidget::SigRunProcess);

    QVERIFY(!widget->Run(QString()));

    QCOMPARE(asked.size(), 0);
}

void ToolWidget::stopsWhatRunsOnly()
{
    QSignalSpy stops(widget, &IAppToolWidget::SigStopProcess);
    QVERIFY(!widget->Stop());

    widget->Run(QStringLiteral("检查流程"));
    Tell([](IProcessLifeCycle* listener) { listener->RunWaits(true); });
    QVERIFY(widget->Stop());
    Tell([](IProcessLifeCycle* listener) { listener->RunWaits(false); });

    QCOMPARE(stops.size(), 1);
    QCOMPARE(stops.first().first().toString(), QStringLiteral("检查流程"));
    QVERIFY(!widget->IsBusy());
}

QTEST_MAIN(ToolWidget)

#include "tst_toolwidget.moc"
