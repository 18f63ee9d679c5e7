// SPDX-License-Identifier: Apache-2.0

#include "DebugStatements.h"
#include "EngineRunFixture.h"
#include "TestApp.h"
#include "VisualEditorFixture.h"

#include <RpaEngineModule/RpaDebugSession.h>
#include <RpaProcessEditor/ProcessProgramEditorWidget.h>

#include <QHelpEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTabBar>
#include <QTest>
#include <QTextBlock>
#include <QToolTip>
#include <QTreeView>
#include <QTreeWidget>

using namespace EditorFixture;

namespace
{
RpaDebugSession* Session()
{
    return EngineRunFixture::Engine()->GetDebugSession();
}

bool IsPaused()
{
    return Session()->GetState() == RpaDebugSession::State::Paused;
}

// The row of a variable below any of the headings.
QModelIndex Variable(const QWidget& editor, const QString& name)
{
    const QAbstractItemModel* model = editor.findChild<QTreeView*>(QStringLiteral("variableView"))->model();
    const QModelIndexList found =
        model->match(model->index(0, 0), Qt::DisplayRole, name, 1, Qt::MatchExactly | Qt::MatchRecursive);
    return found.isEmpty() ? QModelIndex() : found.first();
}

QString ValueOf(const QWidget& editor, const QString& name)
{
    return Variable(editor, name).siblingAtColumn(1).data().toString();
}

void ClickStack(const QWidget& editor, int row)
{
    auto* bar = editor.findChild<QTabBar*>(QStringLiteral("tabBarPanes"));
    QTest::mouseClick(bar, Qt::LeftButton, {}, bar->tabRect(2).center());
    auto* list = editor.findChild<QTreeWidget*>(QStringLiteral("stackList"));
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {},
                      list->visualItemRect(list->topLevelItem(row)).center());
}
} // namespace

// Breakpoints, stops and values of real runs, as the author sees them in the editors.
class tst_DebugRun : public QObject
{
    Q_OBJECT

private slots:
    void aProgramStopsShowsValuesAndTakesOthers();
    void aVisualProcessStopsInASubProcess();
};

void tst_DebugRun::aProgramStopsShowsValuesAndTakesOthers()
{
    const RpaAppDataPtr app = App();
    Main(app)->SetProgramText(QStringLiteral("def add(a, b):\n    total = a + b\n    return total\n"
                                             "result = add(1, 2)\nprint('结果', result)\n"));
    ProcessProgramEditorWidget editor;
    editor.resize(1000, 700);
    editor.SetRpaAppData(app);
    editor.show();
    QVERIFY(QTest::qWaitForWindowExposed(&editor));
    auto* edit = editor.findChild<QPlainTextEdit*>(QStringLiteral("codeEdit"));
    edit->setTextCursor(QTextCursor(edit->document()->findBlockByNumber(2)));
    QTest::keyClick(edit, Qt::Key_F9);
    auto* view = editor.findChild<QTreeView*>(QStringLiteral("variableView"));
    QVERIFY(!view->isVisible());

    EngineRunFixture engine;
    engine.Engine()->SetProcessDataManager(app->GetProcessDataManager());
    engine.Engine()->GetTranslator()->SetTranslateStatements(false);
    QVERIFY(engine.Engine()->Execute(QStringLiteral("主流程")));
    QTRY_VERIFY_WITH_TIMEOUT(IsPaused(), 30000);
    QTRY_VERIFY(view->isVisible());
    QTRY_COMPARE(ValueOf(editor, QStringLiteral("total")), QStringLiteral("3"));

    // A value under the pointer.
    QTextCursor word(edit->document()->findBlockByNumber(1));
    word.setPosition(word.position() + 5);
    const QPoint place = edit->cursorRect(word).center();
    QHelpEvent hover(QEvent::ToolTip, place, edit->viewport()->mapToGlobal(place));
    QCoreApplication::sendEvent(edit->viewport(), &hover);
    QTRY_VERIFY(QToolTip::text().contains(QStringLiteral("total = 3")));
    QToolTip::hideText();

    // Another value.
    view->setFocus();
    view->setCurrentIndex(Variable(editor, QStringLiteral("total")));
    QTest::keyClick(view, Qt::Key_Return);
    auto* field = view->findChild<QLineEdit*>();
    QVERIFY(field);
    field->selectAll();
    QTest::keyClicks(field, QStringLiteral("total + 40"));
    QTest::keyClick(field, Qt::Key_Return);
    QTRY_COMPARE(ValueOf(editor, QStringLiteral("total")), QStringLiteral("43"));

    // The calling frame has no such variable.
    ClickStack(editor, 1);
    QTRY_VERIFY(!Variable(editor, QStringLiteral("total")).isValid());
    QTRY_VERIFY(Variable(editor, QStringLiteral("add")).isValid() || view->model()->rowCount() > 0);
    QCOMPARE(edit->textCursor().blockNumber(), 3);

    QVERIFY(Session()->Resume(RpaDebugStep::Continue));
    QVERIFY(engine.life.WaitUntilOver());
    QVERIFY2(engine.LogHas(QStringLiteral("结果 43")), qPrintable(engine.LogTexts().join(QLatin1Char('\n'))));
    QTRY_COMPARE(view->model()->rowCount(), 0);
}

void tst_DebugRun::aVisualProcessStopsInASubProcess()
{
    using namespace DebugStatements;
    Editor editor({Set("和", "1"), Call("子流程"), DebugStatements::Log("str(和)")});
    RpaProcess* inner = editor.app->GetProcessDataManager()->GetProcess(1);
    inner->SetStatements({Set("积", "7")});
    const QString innerId = inner->GetRoot()->GetChild(0)->GetId();
    const QString callId = Main(editor.app)->GetRoot()->GetChild(1)->GetId();
    QVERIFY(editor.widget.ShowStatement(QStringLiteral("子流程"), innerId));
    editor.Key(Qt::Key_F9);
    editor.widget.SwitchMainPage();

    EngineRunFixture engine;
    engine.Engine()->SetProcessDataManager(editor.app->GetProcessDataManager());
    engine.Engine()->GetTranslator()->SetTranslateStatements(true);
    QVERIFY(engine.Engine()->Execute(QStringLiteral("主流程")));
    QTRY_VERIFY_WITH_TIMEOUT(IsPaused(), 30000);

    // The other tab, with the statement marked.
    QTRY_COMPARE(editor.widget.GetShownProcess(), QStringLiteral("子流程"));
    const auto stopsAt = [&editor](const QString& id) {
        return editor.IndexOf(id)
            .data(Qt::AccessibleTextRole)
            .toString()
            .contains(QStringLiteral("停在这里"));
    };
    QVERIFY(stopsAt(innerId));
    QTRY_COMPARE(ValueOf(editor.widget, QStringLiteral("和")), QStringLiteral("1"));

    QCOMPARE(editor.Find<QTreeWidget>(QStringLiteral("stackList"))->topLevelItemCount(), 2);
    ClickStack(editor.widget, 1);
    QCOMPARE(editor.widget.GetShownProcess(), QStringLiteral("主流程"));
    QVERIFY(stopsAt(callId));

    QVERIFY(Session()->Resume(RpaDebugStep::Continue));
    QVERIFY(engine.life.WaitUntilOver());
    QVERIFY(engine.LogHas(QStringLiteral("1")));
    QTRY_VERIFY(!stopsAt(callId));
}

RPA_TEST_MAIN(tst_DebugRun)
#include "tst_debugrun.moc"
