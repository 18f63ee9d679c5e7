// SPDX-License-Identifier: Apache-2.0

#include "EngineRunFixture.h"
#include "ModalDriver.h"
#include "TestApp.h"
#include "VisualEditorFixture.h"

#include <QTest>
#include <QTreeView>

using namespace EditorFixture;

namespace
{
RpaStatement Make(const char* command, const char* id, const QMap<QString, QString>& arguments,
                  const QString& output = QString(), const QVector<RpaStatement>& children = {})
{
    RpaStatement statement = Statement(QLatin1String(command), QLatin1String(id), children);
    statement.arguments = arguments;
    statement.output = output;
    return statement;
}

RpaStatement Logging(const char* id, const QString& text)
{
    return Make("log", id,
                {{QStringLiteral("text"), text}, {QStringLiteral("level"), QStringLiteral("info")}});
}

// What a run writes into its log, but for its beginning and its end.
QStringList LogOfRun(const Editor& editor)
{
    EngineRunFixture engine;
    engine.processes.Parse(editor.app->GetProcessDataManager()->ToJson());
    EngineRunFixture::Engine()->GetTranslator()->SetTranslateStatements(true);
    if (!EngineRunFixture::Engine()->Execute(QStringLiteral("主流程")) || !engine.life.WaitUntilOver())
        return {QStringLiteral("no run")};
    return EngineRunFixture::LogTexts().filter(QStringLiteral("值："));
}
} // namespace

// An extracted process means what its statements meant, in the real engine.
class SubProcessRun : public QObject
{
    Q_OBJECT

private slots:
    void anExtractedPartSetsAndReadsTheSameVariables();
};

void SubProcessRun::anExtractedPartSetsAndReadsTheSameVariables()
{
    const RpaStatement number = Make(
        "variable.number", "n",
        {{QStringLiteral("name"), QStringLiteral("和")}, {QStringLiteral("value"), QStringLiteral("0")}});
    const RpaStatement adding = Make(
        "variable.increase", "s",
        {{QStringLiteral("name"), QStringLiteral("和")}, {QStringLiteral("amount"), QStringLiteral("=次")}});
    const RpaStatement loop =
        Make("loop.count", "l", {{QStringLiteral("times"), QStringLiteral("3")}}, QStringLiteral("次"),
             {adding, Logging("t", QStringLiteral("=f\"值：{和}\""))});
    Editor editor({number, loop, Logging("e", QStringLiteral("=f\"值：共{和}\""))});
    const QStringList before = LogOfRun(editor);
    QCOMPARE(before, (QStringList{QStringLiteral("值：1"), QStringLiteral("值：3"), QStringLiteral("值：6"),
                                  QStringLiteral("值：共6")}));
    editor.Click(QStringLiteral("s"));
    editor.Click(QStringLiteral("t"), Qt::ControlModifier);
    ModalDriver modals;
    modals.Then([](QWidget* dialog) { ModalDriver::Press(dialog, QStringLiteral("确定")); });

    editor.Key(Qt::Key_X, Qt::ControlModifier | Qt::ShiftModifier);

    QCOMPARE(editor.app->GetProcessDataManager()->GetCount(), 3);
    QCOMPARE(LogOfRun(editor), before);
}

RPA_TEST_MAIN(SubProcessRun)

#include "tst_subprocessrun.moc"
