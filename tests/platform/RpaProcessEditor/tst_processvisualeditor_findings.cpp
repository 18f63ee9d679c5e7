// SPDX-License-Identifier: Apache-2.0

#include "TestApp.h"
#include "VisualEditorFixture.h"

#include <RpaEngineCore/IRpaDebugger.h>
#include <RpaEngineModule/RpaEngineModule.h>

#include <QTabBar>
#include <QTest>
#include <QTreeView>
#include <QTreeWidget>

using namespace EditorFixture;

// What a check found, and the way there.
class tst_ProcessVisualEditorFindings : public QObject
{
    Q_OBJECT

private slots:
    void findsReferencesToDisabledStatements();
    void showsFindingsAndGoesThere();
    void showsFindingsWithTheirWholeTexts();
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

void tst_ProcessVisualEditorFindings::showsFindingsAndGoesThere()
{
    Editor editor;
    RpaCheckInfo info;
    info.processName = QStringLiteral("主流程");
    info.statementId = QStringLiteral("d");
    info.message = QStringLiteral("缺少参数");
    info.remedy = QStringLiteral("填写内容");
    RpaCheckInfo foreign = info;
    foreign.statementId = QStringLiteral("of another app");
    editor.view->collapseAll();
    auto* bar = editor.Find<QTabBar>(QStringLiteral("processTabBar"));
    QTest::mouseClick(bar, Qt::LeftButton, {}, bar->tabRect(1).center());

    editor.widget.ShowCheckInfos({info, foreign});
    auto* list = editor.Find<QTreeWidget>(QStringLiteral("checkList"));
    QVERIFY(list->isVisible());
    QCOMPARE(list->topLevelItemCount(), 1);
    QTRY_VERIFY(list->viewport()->height() > list->visualItemRect(list->topLevelItem(0)).bottom());
    const QPoint place = list->visualItemRect(list->topLevelItem(0)).center();
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, place);
    QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, place);

    QCOMPARE(bar->currentIndex(), 0);
    QCOMPARE(editor.view->currentIndex().data(Qt::UserRole).toString(), QStringLiteral("d"));
    QVERIFY(editor.view->visualRect(editor.IndexOf(QStringLiteral("d"))).isValid());

    editor.widget.ShowCheckInfos({});
    QVERIFY(!list->isVisible());
}

void tst_ProcessVisualEditorFindings::showsFindingsWithTheirWholeTexts()
{
    Editor editor;
    editor.widget.resize(860, 560);
    RpaCheckInfo shortOne;
    shortOne.processName = QStringLiteral("主流程");
    shortOne.statementId = QStringLiteral("c");
    shortOne.message = QStringLiteral("缺少参数");
    shortOne.remedy = QStringLiteral("填写内容");
    RpaCheckInfo longOne = shortOne;
    longOne.statementId = QStringLiteral("d");
    longOne.message =
        QStringLiteral("语句“打开网页”的参数“网址”引用了变量“客户地址”，它前面没有语句给它赋值");
    longOne.remedy = QStringLiteral("在它之前用“设置变量”给“客户地址”赋值，或者在属性面板里换成另一个变量");

    editor.widget.ShowCheckInfos({shortOne, longOne});

    auto* list = editor.Find<QTreeWidget>(QStringLiteral("checkList"));
    const int oneLine = list->visualItemRect(list->topLevelItem(0)).height();
    QTRY_VERIFY(list->visualItemRect(list->topLevelItem(1)).height() > oneLine);
    for (const int column : {0, 1}) {
        const QString text = list->topLevelItem(1)->text(column);
        const int frame = column == 0 ? 42 : 16; // icon and padding
        const QRect room(0, 0, list->columnWidth(column) - frame, 1000);
        const int needed = list->fontMetrics().boundingRect(room, Qt::TextWordWrap, text).height();
        QVERIFY(list->visualItemRect(list->topLevelItem(1)).height() >= needed);
        QCOMPARE(list->topLevelItem(1)->toolTip(column), text);
    }
    QVERIFY(list->width() > editor.view->width());
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

    QCOMPARE(editor.Find<QTreeWidget>(QStringLiteral("checkList"))->topLevelItemCount(), 1);
}

RPA_TEST_MAIN(tst_ProcessVisualEditorFindings)

#include "tst_processvisualeditor_findings.moc"
