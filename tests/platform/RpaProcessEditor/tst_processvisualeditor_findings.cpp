// SPDX-License-Identifier: Apache-2.0

#include "TestApp.h"
#include "VisualEditorFixture.h"

#include <RpaEngineCore/IRpaDebugger.h>
#include <RpaEngineModule/RpaEngineModule.h>

#include <QTest>

using namespace EditorFixture;

namespace
{
QString FindingOf(const Editor& editor, const char* id)
{
    constexpr int findingRole = Qt::UserRole + 7;
    return editor.IndexOf(QLatin1String(id)).data(findingRole).toString();
}
} // namespace

// What a check found, on the statements.
class tst_ProcessVisualEditorFindings : public QObject
{
    Q_OBJECT

private slots:
    void findsReferencesToDisabledStatements();
    void marksFindings();
    void hearsTheDebugger();
};

void tst_ProcessVisualEditorFindings::findsReferencesToDisabledStatements()
{
    RpaStatement set = Statement(QStringLiteral("t-set"), QStringLiteral("s"));
    set.arguments = {{QStringLiteral("variable"), QStringLiteral("x")},
                     {QStringLiteral("value"), QStringLiteral("1")}};
    RpaStatement use = Log(QStringLiteral("u"));
    use.arguments.insert(QStringLiteral("text"), QStringLiteral("=x"));
    Editor editor({set, use});
    QList<RpaCheckInfo> list{RpaCheckInfo()};

    QVERIFY(!editor.widget.CheckComment(list));
    QVERIFY(list.isEmpty());

    editor.Click(QStringLiteral("s"));
    editor.Key(Qt::Key_Slash, Qt::ControlModifier);
    QVERIFY(editor.widget.CheckComment(list));
    QCOMPARE(list.size(), 1);
    QCOMPARE(list.first().statementId, QStringLiteral("u"));
}

void tst_ProcessVisualEditorFindings::marksFindings()
{
    Editor editor;
    RpaCheckInfo info;
    info.processName = QStringLiteral("主流程");
    info.statementId = QStringLiteral("d");
    info.message = QStringLiteral("缺少参数");
    info.remedy = QStringLiteral("填写内容");
    RpaCheckInfo foreign = info;
    foreign.statementId = QStringLiteral("of another app");

    editor.widget.ShowCheckInfos({info, foreign});
    QVERIFY(FindingOf(editor, "d").contains(QStringLiteral("缺少参数")));
    QCOMPARE(FindingOf(editor, "a"), QString());

    editor.widget.ShowCheckInfos({});
    QCOMPARE(FindingOf(editor, "d"), QString());
}

void tst_ProcessVisualEditorFindings::hearsTheDebugger()
{
    Editor editor;
    IRpaDebugger* debugger = RpaEngineModule::Instance()->GetEngineDebugger();
    QVERIFY(debugger);
    RpaCheckInfo info;
    info.processName = QStringLiteral("主流程");
    info.statementId = QStringLiteral("a");
    info.message = QStringLiteral("缺少参数");

    emit debugger->SigCheckNode({info});

    QVERIFY(FindingOf(editor, "a").contains(QStringLiteral("缺少参数")));
}

RPA_TEST_MAIN(tst_ProcessVisualEditorFindings)

#include "tst_processvisualeditor_findings.moc"
