// SPDX-License-Identifier: Apache-2.0

#include "TestApp.h"
#include "VisualEditorFixture.h"

#include <RpaAppData/RpaAppRunTimeInfo.h>
#include <RpaEngineCore/IProcessLifeCycle.h>
#include <RpaEngineCore/RpaProcessLifeCycleManager.h>

#include <QAction>
#include <QLabel>
#include <QTest>
#include <QToolButton>
#include <QTreeView>

#include <functional>

using namespace EditorFixture;

namespace
{
const char everything[] = "Run RunFree RunToHere RunFromHere RunSelected StepOver StepInto";

void Tell(const std::function<void(IProcessLifeCycle*)>& call)
{
    RpaProcessLifeCycleManager::Instance()->ForEach(call);
}

void TellStart(const QString& appId, const QString& environment)
{
    const RpaRunStart start{appId, environment, QStringLiteral("主流程"), {}};
    Tell([&start](IProcessLifeCycle* listener) { listener->RunStarted(start); });
}

void TellEnd()
{
    Tell([](IProcessLifeCycle* listener) { listener->ProcessFinish(QStringLiteral("主流程")); });
}

void TellWaits(bool waits)
{
    Tell([waits](IProcessLifeCycle* listener) { listener->RunWaits(waits); });
}

// What can be done, in the order of the product.
QString Enabled(const Editor& editor)
{
    QStringList names;
    for (const char* name : {"Run", "RunFree", "RunToHere", "RunFromHere", "RunSelected", "Pause", "StepOver",
                             "StepInto", "StepOut", "Stop"}) {
        const auto* action = editor.Find<QAction>(QStringLiteral("action") + QLatin1String(name));
        if (action->isEnabled())
            names << QLatin1String(name);
        else if (action->property("whyNot").toString().isEmpty())
            names << QStringLiteral("%1 without a reason").arg(QLatin1String(name));
    }
    return names.join(QLatin1Char(' '));
}

void NameApp(const Editor& editor, const char* id)
{
    editor.app->GetRunTimeInfo()->SetAppId(QLatin1String(id));
    editor.app->GetRunTimeInfo()->SetEnvironment(QStringLiteral("develop"));
}
} // namespace

// What the run controls offer follows the runs and the author.
class tst_RunStates : public QObject
{
    Q_OBJECT

private slots:
    void followTheSelection();
    void needAProcess();
    void followARunOfTheApp();
    void leaveOtherRunsAlone_data();
    void leaveOtherRunsAlone();
    void tellTwoEditorsApart();
    void giveUpARunThatWaitsHere();
    void everyButtonSaysWhatItDoes();
};

void tst_RunStates::followTheSelection()
{
    Editor editor;
    QCOMPARE(Enabled(editor), QLatin1String(everything));

    editor.Click(QStringLiteral("a"), Qt::ControlModifier); // takes the selection away
    QCOMPARE(Enabled(editor), QStringLiteral("Run RunFree StepOver StepInto"));
    QCOMPARE(editor.Find<QAction>(QStringLiteral("actionRunToHere"))->property("whyNot").toString(),
             QStringLiteral("先选择语句"));
    editor.Click(QStringLiteral("c"));
    QCOMPARE(Enabled(editor), QLatin1String(everything));

    Editor empty(noStatements);
    QCOMPARE(Enabled(empty), QStringLiteral("Run RunFree StepOver StepInto"));
}

void tst_RunStates::needAProcess()
{
    Editor editor;
    editor.widget.SetRpaAppData(nullptr);

    QCOMPARE(Enabled(editor), QString());
    QCOMPARE(editor.Find<QAction>(QStringLiteral("actionRun"))->property("whyNot").toString(),
             QStringLiteral("还没有流程"));
}

void tst_RunStates::followARunOfTheApp()
{
    Editor editor;
    NameApp(editor, "1");

    TellStart(QStringLiteral("1"), QStringLiteral("develop"));
    QCOMPARE(Enabled(editor), QStringLiteral("Pause Stop"));
    QStringList stopped;
    QObject::connect(&editor.widget, &ProcessVisualEditorWidget::SigStopProcess,
                     [&stopped](const QString& name) { stopped << name; });
    editor.Key(Qt::Key_F5);
    editor.Key(Qt::Key_F5, Qt::ShiftModifier);
    QCOMPARE(stopped, QStringList(QStringLiteral("主流程")));

    TellEnd();
    QCOMPARE(Enabled(editor), QLatin1String(everything));
}

void tst_RunStates::leaveOtherRunsAlone_data()
{
    QTest::addColumn<QString>("app");
    QTest::addColumn<QString>("environment");
    QTest::newRow("another app") << QStringLiteral("2") << QStringLiteral("develop");
    QTest::newRow("its released version") << QStringLiteral("1") << QStringLiteral("online");
}

void tst_RunStates::leaveOtherRunsAlone()
{
    QFETCH(QString, app);
    QFETCH(QString, environment);
    Editor editor;
    NameApp(editor, "1");

    TellStart(app, environment);
    const QString during = Enabled(editor);
    TellEnd();

    QCOMPARE(during, QString());
    QCOMPARE(Enabled(editor), QLatin1String(everything));
}

void tst_RunStates::tellTwoEditorsApart()
{
    Editor first;
    Editor second;
    NameApp(first, "1");
    NameApp(second, "2");

    TellStart(QStringLiteral("2"), QStringLiteral("develop"));
    const QString ofFirst = Enabled(first);
    const QString ofSecond = Enabled(second);
    TellEnd();

    QCOMPARE(ofFirst, QString());
    QCOMPARE(ofSecond, QStringLiteral("Pause Stop"));
}

void tst_RunStates::giveUpARunThatWaitsHere()
{
    Editor editor;
    TellWaits(true); // of a tool's button
    QCOMPARE(Enabled(editor), QString());
    TellWaits(false);
    QObject::connect(&editor.widget, &ProcessVisualEditorWidget::SigRunProcess, [] { TellWaits(true); });

    editor.Key(Qt::Key_F5);

    QCOMPARE(Enabled(editor), QStringLiteral("Stop"));
    QStringList stopped;
    QObject::connect(&editor.widget, &ProcessVisualEditorWidget::SigStopProcess,
                     [&stopped](const QString& name) { stopped << name; });
    QTest::mouseClick(editor.Find<QToolButton>(QStringLiteral("actionStopButton")), Qt::LeftButton);
    QCOMPARE(stopped, QStringList(QStringLiteral("主流程")));
    TellWaits(false);
    QCOMPARE(Enabled(editor), QLatin1String(everything));
}

void tst_RunStates::everyButtonSaysWhatItDoes()
{
    Editor editor;
    const auto buttons = editor.Find<QWidget>(QStringLiteral("runBar"))->findChildren<QToolButton*>();
    QCOMPARE(buttons.size(), 7);
    for (const QToolButton* button : buttons) {
        QVERIFY2(!button->accessibleName().isEmpty(), qPrintable(button->objectName()));
        QVERIFY2(!button->icon().isNull(), qPrintable(button->objectName()));
        QVERIFY2(button->toolTip().startsWith(button->accessibleName()), qPrintable(button->toolTip()));
        QVERIFY2(button->toolTip().contains(QLatin1Char('F')), qPrintable(button->toolTip()));
    }
}

RPA_TEST_MAIN(tst_RunStates)
#include "tst_runstates.moc"
