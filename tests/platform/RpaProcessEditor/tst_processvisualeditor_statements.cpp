// SPDX-License-Identifier: Apache-2.0

#include "TestApp.h"
#include "ToastWatcher.h"
#include "VisualEditorFixture.h"

#include <QAction>
#include <QClipboard>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QTest>
#include <QTreeView>

using namespace EditorFixture;

namespace
{
const QString ifCommand = QStringLiteral("t-if");

// Empty blocks in each other: b1, in it b2, and so on.
RpaStatement Blocks(int count)
{
    RpaStatement block = Statement(ifCommand, QStringLiteral("b%1").arg(count));
    for (int i = count - 1; i > 0; --i)
        block = Statement(ifCommand, QStringLiteral("b%1").arg(i), {block});
    return block;
}
} // namespace

// Moving, copying, finding and marking statements.
class tst_ProcessVisualEditorStatements : public QObject
{
    Q_OBJECT

private slots:
    void whatIsTakenBackToTheSavedStateIsNotModified();
    void anotherEditKeepsTheMarkOfUnsavedWork();
    void leavingTheEditorTakesNothingBack();
    void movesStatementsByDropping();
    void keepsWhatIsDroppedTooDeep();
    void saysThatItIsTooDeepToPaste();
    void deletesAndUndoes();
    void goesOnWithTheNextStatement_data();
    void goesOnWithTheNextStatement();
    void copiesAndPastesBetweenApps();
    void cutsAndPastes();
    void duplicatesTheSelection();
    void commentsOutAndBack();
    void movesWithAltArrows();
    void setsBreakpointsWithoutChangingTheApp();
    void findsStatementsInBothDirections();
};

void tst_ProcessVisualEditorStatements::movesStatementsByDropping()
{
    Editor editor;
    const std::unique_ptr<QMimeData> mime(
        editor.view->model()->mimeData({editor.IndexOf(QStringLiteral("e"))}));
    const QPoint onB = editor.view->visualRect(editor.IndexOf(QStringLiteral("b"))).center();

    QVERIFY(editor.Drop(*mime, onB, Qt::MoveAction));
    QCOMPARE(editor.Shown(), QStringLiteral("a b(c d e)"));

    editor.Key(Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(editor.Shown(), QStringLiteral("a b(c d) e"));
}

void tst_ProcessVisualEditorStatements::keepsWhatIsDroppedTooDeep()
{
    // given a block of two levels, and blocks to the last level but one
    Editor editor({Blocks(RpaProcess::maxDepth - 1),
                   Statement(ifCommand, QStringLiteral("x"), {Log(QStringLiteral("y"))})});
    const QString before = editor.Shown();
    editor.view->expandAll();
    const QModelIndex innermost = editor.IndexOf(QStringLiteral("b%1").arg(RpaProcess::maxDepth - 1));
    editor.view->scrollTo(innermost);
    ToastWatcher toasts;

    // when
    const std::unique_ptr<QMimeData> mime(
        editor.view->model()->mimeData({editor.IndexOf(QStringLiteral("x"))}));
    editor.Drop(*mime, editor.view->visualRect(innermost).center(), Qt::MoveAction);

    // then
    QCOMPARE(editor.Shown(), before);
    QCOMPARE(toasts.GetCount(), 1);
    QVERIFY(toasts.GetTexts().first().startsWith(QStringLiteral("语句最多嵌套 24 层，没有放到这里")));

    // and what still fits is moved without a word
    const std::unique_ptr<QMimeData> log(
        editor.view->model()->mimeData({editor.IndexOf(QStringLiteral("y"))}));
    QVERIFY(editor.Drop(*log, editor.view->visualRect(innermost).center(), Qt::MoveAction));
    QCOMPARE(editor.Node(QStringLiteral("y"))->GetParent()->GetId(),
             QStringLiteral("b%1").arg(RpaProcess::maxDepth - 1));
    QCOMPARE(toasts.GetCount(), 1);
}

void tst_ProcessVisualEditorStatements::saysThatItIsTooDeepToPaste()
{
    Editor editor({Log(QStringLiteral("a")), Blocks(RpaProcess::maxDepth)});
    const QString before = editor.Shown();
    editor.view->expandAll();
    editor.widget.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&editor.widget));
    editor.Click(QStringLiteral("a"));
    editor.Key(Qt::Key_C, Qt::ControlModifier);
    const QString innermost = QStringLiteral("b%1").arg(RpaProcess::maxDepth);
    editor.view->scrollTo(editor.IndexOf(innermost));
    editor.Click(innermost);
    ToastWatcher toasts;

    editor.Key(Qt::Key_V, Qt::ControlModifier);

    QCOMPARE(editor.Shown(), before);
    QCOMPARE(toasts.GetCount(), 1);
    QVERIFY(toasts.GetTexts().first().startsWith(QStringLiteral("语句最多嵌套 24 层，没有放到这里")));
}

void tst_ProcessVisualEditorStatements::deletesAndUndoes()
{
    Editor editor;
    editor.Click(QStringLiteral("a"));
    editor.Click(QStringLiteral("b"), Qt::ControlModifier);

    editor.Key(Qt::Key_Delete);
    QCOMPARE(editor.Shown(), QStringLiteral("e"));

    editor.Key(Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(editor.Shown(), QStringLiteral("a b(c d) e"));
    editor.Key(Qt::Key_Y, Qt::ControlModifier);
    QCOMPARE(editor.Shown(), QStringLiteral("e"));
}

void tst_ProcessVisualEditorStatements::goesOnWithTheNextStatement_data()
{
    QTest::addColumn<QStringList>("chosen");
    QTest::addColumn<QString>("next");

    QTest::newRow("below") << QStringList{QStringLiteral("a")} << "b";
    QTest::newRow("below a block") << QStringList{QStringLiteral("b")} << "e";
    QTest::newRow("below in a block") << QStringList{QStringLiteral("c")} << "d";
    QTest::newRow("above in a block") << QStringList{QStringLiteral("d")} << "c";
    QTest::newRow("above at the end") << QStringList{QStringLiteral("e")} << "b";
    QTest::newRow("the block whose all are gone")
        << QStringList{QStringLiteral("c"), QStringLiteral("d")} << "b";
    QTest::newRow("above what is chosen apart")
        << QStringList{QStringLiteral("a"), QStringLiteral("e")} << "b";
    QTest::newRow("nothing is left") << QStringList{QStringLiteral("a"), QStringLiteral("b"),
                                                    QStringLiteral("e")}
                                     << "";
}

void tst_ProcessVisualEditorStatements::goesOnWithTheNextStatement()
{
    QFETCH(QStringList, chosen);
    QFETCH(QString, next);
    Editor editor;
    editor.Click(chosen.first());
    for (const QString& id : chosen.mid(1))
        editor.Click(id, Qt::ControlModifier);

    editor.Key(Qt::Key_Delete);

    const auto selected = editor.view->selectionModel()->selectedRows(1);
    QCOMPARE(selected.size(), next.isEmpty() ? 0 : 1);
    QVERIFY(next.isEmpty() || selected.first() == editor.IndexOf(next));
    QVERIFY(next.isEmpty() || editor.view->currentIndex() == editor.IndexOf(next));
}

void tst_ProcessVisualEditorStatements::copiesAndPastesBetweenApps()
{
    Editor editor;
    Editor other(noStatements);
    editor.widget.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&editor.widget));
    editor.view->setFocus();
    editor.Click(QStringLiteral("b"));
    editor.Key(Qt::Key_C, Qt::ControlModifier);
    QVERIFY(QGuiApplication::clipboard()->text().contains(QStringLiteral("如果")));

    other.widget.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&other.widget));
    other.view->setFocus();
    other.Key(Qt::Key_V, Qt::ControlModifier);

    QCOMPARE(Main(other.app)->GetStatementCount(), 3);
    QCOMPARE(Main(other.app)->GetRoot()->GetChild(0)->GetCommand(), QStringLiteral("t-if"));
}

void tst_ProcessVisualEditorStatements::cutsAndPastes()
{
    Editor editor;
    editor.Click(QStringLiteral("a"));

    editor.Key(Qt::Key_X, Qt::ControlModifier);
    QCOMPARE(editor.Shown(), QStringLiteral("b(c d) e"));
    editor.Click(QStringLiteral("e"));
    editor.Key(Qt::Key_V, Qt::ControlModifier);

    QCOMPARE(Main(editor.app)->GetRoot()->GetChild(2)->GetArgument(QStringLiteral("text")),
             QStringLiteral("a"));
}

void tst_ProcessVisualEditorStatements::duplicatesTheSelection()
{
    Editor editor;
    editor.Click(QStringLiteral("c"));

    editor.Key(Qt::Key_D, Qt::ControlModifier);

    QCOMPARE(editor.Node(QStringLiteral("b"))->GetChildCount(), 3);
    QCOMPARE(editor.Node(QStringLiteral("b"))->GetChild(1)->GetArgument(QStringLiteral("text")),
             QStringLiteral("c"));
}

void tst_ProcessVisualEditorStatements::commentsOutAndBack()
{
    Editor editor;
    editor.Click(QStringLiteral("a"));
    editor.Click(QStringLiteral("e"), Qt::ControlModifier);

    editor.Key(Qt::Key_Slash, Qt::ControlModifier);
    QVERIFY(!editor.Node(QStringLiteral("a"))->GetValues().enabled);
    QVERIFY(!editor.Node(QStringLiteral("e"))->GetValues().enabled);

    editor.Key(Qt::Key_Slash, Qt::ControlModifier);
    QVERIFY(editor.Node(QStringLiteral("a"))->GetValues().enabled);
}

void tst_ProcessVisualEditorStatements::movesWithAltArrows()
{
    Editor editor;
    editor.Click(QStringLiteral("d"));

    editor.Key(Qt::Key_Up, Qt::AltModifier);
    QCOMPARE(editor.Shown(), QStringLiteral("a b(d c) e"));
    editor.Key(Qt::Key_Up, Qt::AltModifier); // out of the block
    QCOMPARE(editor.Shown(), QStringLiteral("a d b(c) e"));
    editor.Key(Qt::Key_Down, Qt::AltModifier);
    QCOMPARE(editor.Shown(), QStringLiteral("a b(c) d e"));
}

void tst_ProcessVisualEditorStatements::setsBreakpointsWithoutChangingTheApp()
{
    RpaStatement stored = Log(QStringLiteral("stored"));
    stored.breakpoint = true;
    Editor editor({stored, Log(QStringLiteral("other"))});
    const auto isStored = [&editor](const char* id) {
        return editor.Node(QLatin1String(id))->GetValues().breakpoint;
    };

    for (const char* id : {"stored", "other"}) {
        editor.Click(QLatin1String(id), {}, 0);
        editor.Key(Qt::Key_F9);
    }

    // The flag in the app is the one that it came with; the breakpoints are the author's own.
    QVERIFY(isStored("stored"));
    QVERIFY(!isStored("other"));
    QVERIFY(!editor.app->GetModified());
    const auto gutter = [&editor](const char* id) {
        return editor.IndexOf(QLatin1String(id), 0).data(Qt::AccessibleTextRole).toString();
    };
    QCOMPARE(gutter("stored"), QStringLiteral("第 1 行"));
    QCOMPARE(gutter("other"), QStringLiteral("第 2 行，断点"));
}

void tst_ProcessVisualEditorStatements::findsStatementsInBothDirections()
{
    Editor editor({Log(QStringLiteral("one")), Log(QStringLiteral("two")), Log(QStringLiteral("one more"))});
    const auto current = [&editor] { return editor.view->currentIndex().data(Qt::UserRole).toString(); };
    editor.Click(QStringLiteral("two"));

    editor.Key(Qt::Key_F, Qt::ControlModifier);
    auto* edit = editor.Find<QLineEdit>(QStringLiteral("lineEditFind"));
    QTRY_VERIFY(edit->hasFocus());
    QTest::keyClicks(edit, QStringLiteral("one"));
    QCOMPARE(editor.Find<QLabel>(QStringLiteral("labelFindCount"))->text(), QStringLiteral("共 2 处"));
    QCOMPARE(current(), QStringLiteral("one more"));

    QTest::keyClick(edit, Qt::Key_Return); // around the end
    QCOMPARE(current(), QStringLiteral("one"));
    QTest::keyClick(edit, Qt::Key_Return, Qt::ShiftModifier);
    QCOMPARE(current(), QStringLiteral("one more"));
    QVERIFY(edit->hasFocus());

    QTest::keyClick(edit, Qt::Key_Escape);
    QVERIFY(editor.view->hasFocus());
}

void tst_ProcessVisualEditorStatements::whatIsTakenBackToTheSavedStateIsNotModified()
{
    Editor editor;
    editor.Click(QStringLiteral("a"));
    editor.Key(Qt::Key_Delete);
    QVERIFY(editor.app->GetModified());
    editor.Key(Qt::Key_Z, Qt::ControlModifier);
    QVERIFY(!editor.app->GetModified());

    editor.Key(Qt::Key_Y, Qt::ControlModifier);
    QVERIFY(editor.app->GetModified());
    editor.app->SetModified(false); // saved without the statement
    editor.Key(Qt::Key_Z, Qt::ControlModifier);
    QVERIFY(editor.app->GetModified());
    editor.Key(Qt::Key_Y, Qt::ControlModifier);
    QVERIFY(!editor.app->GetModified());
}

void tst_ProcessVisualEditorStatements::anotherEditKeepsTheMarkOfUnsavedWork()
{
    Editor editor;
    editor.Click(QStringLiteral("a"));
    editor.Key(Qt::Key_Delete);
    editor.app->SetModified(true); // somewhere else in the app
    editor.Key(Qt::Key_Z, Qt::ControlModifier);
    QVERIFY(editor.app->GetModified());

    editor.app->SetModified(false);
    editor.Click(QStringLiteral("a"));
    editor.Key(Qt::Key_Delete);
    editor.app->GetProcessDataManager()->Clear(); // no step leads back
    QVERIFY(editor.app->GetModified());
}

void tst_ProcessVisualEditorStatements::leavingTheEditorTakesNothingBack()
{
    RpaAppDataPtr app;
    {
        Editor editor;
        app = editor.app;
        editor.Click(QStringLiteral("a"));
        editor.Key(Qt::Key_Delete);
    }
    QVERIFY(app->GetModified());

    Editor editor;
    editor.app = app;
    editor.widget.SetRpaAppData(app);
    editor.Click(QStringLiteral("b"));
    editor.Key(Qt::Key_Delete);
    editor.Key(Qt::Key_Z, Qt::ControlModifier);
    QVERIFY(app->GetModified());
}

RPA_TEST_MAIN(tst_ProcessVisualEditorStatements)

#include "tst_processvisualeditor_statements.moc"
