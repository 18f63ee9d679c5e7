// SPDX-License-Identifier: Apache-2.0

#include "TestApp.h"
#include "ToastWatcher.h"
#include "VisualEditorFixture.h"

#include <QAction>
#include <QContextMenuEvent>
#include <QMenu>
#include <QTest>
#include <QTreeView>

using namespace EditorFixture;

namespace
{
QString ShapeOf(const RpaStatementNode& parent)
{
    QStringList parts;
    for (int row = 0; row < parent.GetChildCount(); ++row) {
        const RpaStatementNode& node = *parent.GetChild(row);
        // A statement that was made by the act has an id that nobody can know.
        QString part = node.GetId().size() < 32 ? node.GetId() : node.GetCommand();
        if (!node.GetValues().enabled)
            part.prepend(QLatin1Char('#'));
        if (node.GetChildCount() > 0)
            part += QLatin1Char('(') + ShapeOf(node) + QLatin1Char(')');
        parts.append(part);
    }
    return parts.join(QLatin1Char(' '));
}

QString Shape(const Editor& editor)
{
    return ShapeOf(*Main(editor.app)->GetRoot());
}

RpaStatement Block(const char* command, const char* id, const QVector<RpaStatement>& children = {})
{
    return Statement(QLatin1String(command), QLatin1String(id), children);
}

RpaStatement Line(const char* id)
{
    return Log(QLatin1String(id));
}

RpaStatement Off(RpaStatement statement)
{
    statement.enabled = false;
    return statement;
}

// "l(w x) i(y) n(z)": a loop with a way out of it, a condition with its other branch.
QVector<RpaStatement> LoopAndCondition()
{
    return {Block("loop.count", "l", {Line("w"), Block("loop.break", "x")}), Block("if", "i", {Line("y")}),
            Block("else", "n", {Line("z")})};
}

void Choose(Editor& editor, const QString& ids)
{
    Qt::KeyboardModifiers modifiers = Qt::NoModifier;
    for (const QString& id : ids.split(QLatin1Char(' '))) {
        editor.Click(id, modifiers);
        modifiers = Qt::ControlModifier;
    }
}

QString Selected(const Editor& editor)
{
    QStringList texts;
    const QModelIndexList rows = editor.view->selectionModel()->selectedRows(1);
    for (const QModelIndex& row : rows)
        texts.append(row.data(Qt::DisplayRole).toString());
    return texts.join(QLatin1Char(' '));
}

void ClickIn(const QMenu& menu, QAction* action)
{
    QTest::mouseClick(const_cast<QMenu*>(&menu), Qt::LeftButton, {}, menu.actionGeometry(action).center());
}
} // namespace

// Blocks put around statements, taken away from them, folded and unfolded.
class tst_Wrapping : public QObject
{
    Q_OBJECT

private slots:
    void wrapsByAKey_data();
    void wrapsByAKey();
    void wrapsByTheMenu();
    void takesTheBlockAwayAgain_data();
    void takesTheBlockAwayAgain();
    void saysWhyItCannotBeWrapped_data();
    void saysWhyItCannotBeWrapped();
    void saysWhyABlockCannotBeTakenAway_data();
    void saysWhyABlockCannotBeTakenAway();
    void saysThatItWouldBeTooDeep();
    void foldsAndUnfoldsAll();
    void offersNothingWithoutASelection();
};

void tst_Wrapping::wrapsByAKey_data()
{
    QTest::addColumn<QString>("chosen");
    QTest::addColumn<int>("key");
    QTest::addColumn<QString>("shape");

    QTest::newRow("one in a condition") << "a" << int(Qt::Key_I) << "if(a) b(c d) e";
    QTest::newRow("two in a loop") << "a b" << int(Qt::Key_L) << "loop.count(a b(c d)) e";
    QTest::newRow("chosen backwards") << "e b" << int(Qt::Key_L) << "a loop.count(b(c d) e)";
    QTest::newRow("a try gets its branch") << "d" << int(Qt::Key_T) << "a b(c try(d) except) e";
    QTest::newRow("a block and what is inside it") << "b c" << int(Qt::Key_I) << "a if(b(c d)) e";
    QTest::newRow("everything") << "a b e" << int(Qt::Key_I) << "if(a b(c d) e)";
}

void tst_Wrapping::wrapsByAKey()
{
    QFETCH(QString, chosen);
    QFETCH(int, key);
    QFETCH(QString, shape);
    Editor editor;
    Choose(editor, chosen);

    editor.Key(Qt::Key(key), Qt::ControlModifier);
    QCOMPARE(Shape(editor), shape);
    QCOMPARE(editor.view->selectionModel()->selectedRows(1).size(), 1); // ready for its condition
    QVERIFY(editor.app->GetModified());

    editor.Key(Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(Shape(editor), QStringLiteral("a b(c d) e"));
    QVERIFY(!editor.app->GetModified());
    editor.Key(Qt::Key_Y, Qt::ControlModifier);
    QCOMPARE(Shape(editor), shape);
}

void tst_Wrapping::wrapsByTheMenu()
{
    Editor editor({Line("a"), Off(Line("p")), Statement(QStringLiteral("gone"), QStringLiteral("q"))});
    Choose(editor, QStringLiteral("a p q"));
    QContextMenuEvent asked(QContextMenuEvent::Mouse, QPoint(60, 20),
                            editor.view->viewport()->mapToGlobal(QPoint(60, 20)));
    QCoreApplication::sendEvent(editor.view->viewport(), &asked);
    auto* shapes = editor.Find<QMenu>(QStringLiteral("refactorMenu"));
    auto* menu = qobject_cast<QMenu*>(shapes->parentWidget());
    QTRY_VERIFY(menu->isVisible());

    ClickIn(*menu, shapes->menuAction());
    QTRY_VERIFY(shapes->isVisible());
    ClickIn(*shapes, editor.Find<QAction>(QStringLiteral("actionWrap.loop.list")));

    // What is disabled or unknown goes along as it is.
    QCOMPARE(Shape(editor), QStringLiteral("loop.list(a #p q)"));
    QCOMPARE(Selected(editor), QStringLiteral("循环列表"));
}

void tst_Wrapping::takesTheBlockAwayAgain_data()
{
    QTest::addColumn<QVector<RpaStatement>>("statements");
    QTest::addColumn<QString>("chosen");
    QTest::addColumn<QString>("shape");

    QTest::newRow("a block") << SomeStatements() << "b"
                             << "a c d e";
    QTest::newRow("a try and its empty branches")
        << QVector<RpaStatement>{Block("try", "t", {Line("a")}), Off(Line("p")), Block("except", "u"),
                                 Block("finally", "v"), Line("e")}
        << "t"
        << "a #p e";
    QTest::newRow("a disabled block leaves disabled statements")
        << QVector<RpaStatement>{Off(Block("if", "i", {Line("a"), Off(Line("p"))}))} << "i"
        << "#a #p";
    QTest::newRow("a branch of something disabled stays")
        << QVector<RpaStatement>{Block("if", "i", {Line("a")}), Off(Block("if", "j")),
                                 Off(Block("else", "n"))}
        << "i"
        << "a #j #n";
    QTest::newRow("a loop whose break is of an inner loop")
        << QVector<RpaStatement>{Block("loop.count", "l",
                                       {Block("loop.while", "m", {Block("loop.break", "x")})})}
        << "l"
        << "m(x)";
    QTest::newRow("a condition around a break")
        << QVector<RpaStatement>{Block("loop.count", "l", {Block("if", "i", {Block("loop.break", "x")})})}
        << "i"
        << "l(x)";
}

void tst_Wrapping::takesTheBlockAwayAgain()
{
    QFETCH(QVector<RpaStatement>, statements);
    QFETCH(QString, chosen);
    QFETCH(QString, shape);
    Editor editor(statements);
    const QVector<RpaStatement> before = Main(editor.app)->GetStatements();
    editor.Click(chosen);

    editor.Key(Qt::Key_U, Qt::ControlModifier);
    QCOMPARE(Shape(editor), shape);

    editor.Key(Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(Main(editor.app)->GetStatements(), before);
    editor.Key(Qt::Key_Y, Qt::ControlModifier);
    QCOMPARE(Shape(editor), shape);
}

void tst_Wrapping::saysWhyItCannotBeWrapped_data()
{
    QTest::addColumn<QString>("chosen");
    QTest::addColumn<int>("key");
    QTest::addColumn<QString>("reason");

    QTest::newRow("apart") << "l n" << int(Qt::Key_I) << "请选择同一层中相邻的语句";
    QTest::newRow("of two levels") << "w i" << int(Qt::Key_I) << "请选择同一层中相邻的语句";
    QTest::newRow("a branch without its block")
        << "n" << int(Qt::Key_I) << "“否则”接着前面的步骤，请和那一步一起选择";
    QTest::newRow("a block without its branch")
        << "i" << int(Qt::Key_T) << "后面的“否则”接着所选的步骤，请一起选择";
    QTest::newRow("a way out of the loop around it, in a loop")
        << "x" << int(Qt::Key_L) << "“跳出循环”属于外面的循环，放进新的循环后意思就变了";
}

void tst_Wrapping::saysWhyItCannotBeWrapped()
{
    QFETCH(QString, chosen);
    QFETCH(int, key);
    QFETCH(QString, reason);
    Editor editor(LoopAndCondition());
    Choose(editor, chosen);
    const ToastWatcher toasts;

    editor.Key(Qt::Key(key), Qt::ControlModifier);

    QCOMPARE(toasts.GetTexts(), QStringList{reason});
    QCOMPARE(Shape(editor), QStringLiteral("l(w x) i(y) n(z)"));
    QVERIFY(!editor.app->GetModified());
}

void tst_Wrapping::saysWhyABlockCannotBeTakenAway_data()
{
    QTest::addColumn<QString>("chosen");
    QTest::addColumn<QString>("reason");

    QTest::newRow("no block") << "w"
                              << "请选择一个里面有步骤的语句";
    QTest::newRow("several") << "l i"
                             << "请选择一个里面有步骤的语句";
    QTest::newRow("a branch") << "n"
                              << "“否则”接着前面的步骤，请选择那一步";
    QTest::newRow("a branch with statements") << "i"
                                              << "“否则”里面还有步骤，请先删除或移走它们";
    QTest::newRow("a loop with a way out") << "l"
                                           << "里面的“跳出循环”离不开这个循环，请先删除或移走它";
}

void tst_Wrapping::saysWhyABlockCannotBeTakenAway()
{
    QFETCH(QString, chosen);
    QFETCH(QString, reason);
    Editor editor(LoopAndCondition());
    Choose(editor, chosen);
    const ToastWatcher toasts;

    editor.Key(Qt::Key_U, Qt::ControlModifier);

    QCOMPARE(toasts.GetTexts(), QStringList{reason});
    QCOMPARE(Shape(editor), QStringLiteral("l(w x) i(y) n(z)"));
}

void tst_Wrapping::saysThatItWouldBeTooDeep()
{
    RpaStatement block = Line("a");
    for (int i = 1; i < RpaProcess::maxDepth; ++i)
        block = Statement(QStringLiteral("t-if"), QStringLiteral("b%1").arg(i), {block});
    Editor editor({block});
    const QString before = Shape(editor);
    editor.Click(block.id);
    const ToastWatcher toasts;

    editor.Key(Qt::Key_I, Qt::ControlModifier);

    QCOMPARE(Shape(editor), before);
    QCOMPARE(toasts.GetCount(), 1);
    QVERIFY(toasts.GetTexts().first().startsWith(QStringLiteral("语句最多嵌套 24 层")));
}

void tst_Wrapping::foldsAndUnfoldsAll()
{
    Editor editor;
    editor.Click(QStringLiteral("d"));

    editor.Key(Qt::Key_Left, Qt::ControlModifier);
    QVERIFY(!editor.view->isExpanded(editor.IndexOf(QStringLiteral("b"), 0)));
    QCOMPARE(editor.view->currentIndex().data(Qt::UserRole).toString(), QStringLiteral("b"));

    editor.Key(Qt::Key_Right, Qt::ControlModifier);
    QVERIFY(editor.view->isExpanded(editor.IndexOf(QStringLiteral("b"), 0)));
    QVERIFY(!editor.app->GetModified());
}

void tst_Wrapping::offersNothingWithoutASelection()
{
    Editor editor;
    editor.view->clearSelection();

    QVERIFY(!editor.Find<QAction>(QStringLiteral("actionWrap.if"))->isEnabled());
    QVERIFY(!editor.Find<QAction>(QStringLiteral("actionUnwrap"))->isEnabled());
    QVERIFY(editor.Find<QAction>(QStringLiteral("actionFoldAll"))->isEnabled());
}

RPA_TEST_MAIN(tst_Wrapping)

#include "tst_wrapping.moc"
