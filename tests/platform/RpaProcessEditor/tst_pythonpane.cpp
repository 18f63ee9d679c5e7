// SPDX-License-Identifier: Apache-2.0

#include "TestApp.h"
#include "VisualEditorFixture.h"

#include <QClipboard>
#include <QPlainTextEdit>
#include <QTabBar>
#include <QTest>
#include <QTextBlock>
#include <QToolButton>
#include <QTreeView>

using namespace EditorFixture;

namespace
{
// An editor whose Python is shown.
struct Shown : Editor
{
    explicit Shown(const QVector<RpaStatement>& statements = SomeStatements()) : Editor(statements)
    {
        Key(Qt::Key_P, Qt::ControlModifier | Qt::AltModifier);
        code = Find<QPlainTextEdit>(QStringLiteral("codeOfSteps"));
    }

    QString Text() const { return code->toPlainText(); }

    // Texts of the lines that are marked as the current statement's.
    QStringList Marked() const
    {
        QStringList lines;
        const QList<QTextEdit::ExtraSelection> marks = code->extraSelections();
        for (const QTextEdit::ExtraSelection& mark : marks)
            if (mark.format.boolProperty(QTextFormat::FullWidthSelection) &&
                mark.cursor.block() != code->textCursor().block())
                lines << mark.cursor.block().text().trimmed();
        return lines;
    }

    void ClickLine(const QString& text)
    {
        const QTextCursor found = code->document()->find(text);
        QVERIFY(!found.isNull());
        code->setTextCursor(QTextCursor(code->document()));
        QTest::mouseClick(code->viewport(), Qt::LeftButton, {}, code->cursorRect(found).center());
    }

    QPlainTextEdit* code;
};

RpaStatement Call(const QString& process)
{
    RpaStatement call = Statement(QStringLiteral("t-call"), QStringLiteral("call"));
    call.arguments.insert(QStringLiteral("process"), process);
    return call;
}
} // namespace

class tst_PythonPane : public QObject
{
    Q_OBJECT

private slots:
    void opensAndClosesByItsKey();
    void showsTheProcessThatIsShown();
    void followsWhatTheAuthorChanges();
    void marksTheLineOfTheCurrentStatement();
    void choosesTheStatementOfALine();
    void leavesTheCursorInTheLineThatIsRead();
    void choosesTheStatementOfAnotherProcess();
    void copiesTheProgram();
    void showsTheNextAppOnly();
};

void tst_PythonPane::opensAndClosesByItsKey()
{
    Shown editor;
    QVERIFY(editor.code->isVisible());
    QVERIFY(editor.code->isReadOnly());

    editor.Key(Qt::Key_P, Qt::ControlModifier | Qt::AltModifier);
    QVERIFY(!editor.code->isVisible());

    editor.Key(Qt::Key_P, Qt::ControlModifier | Qt::AltModifier);
    QTest::mouseClick(editor.Find<QWidget>(QStringLiteral("pythonPane"))
                          ->findChild<QToolButton*>(QStringLiteral("buttonClose")),
                      Qt::LeftButton);
    QVERIFY(!editor.code->isVisible());
}

void tst_PythonPane::showsTheProcessThatIsShown()
{
    Shown editor;
    editor.app->GetProcessDataManager()->GetProcess(1)->SetStatements({Log(QStringLiteral("inner"))});
    QTRY_VERIFY(editor.Text().contains(QStringLiteral("if x > 1:\n        print(\"c\", \"info\")")));
    QVERIFY(!editor.Text().contains(QStringLiteral("inner")));

    auto* tabs = editor.Find<QTabBar>(QStringLiteral("processTabBar"));
    QTest::mouseClick(tabs, Qt::LeftButton, {}, tabs->tabRect(1).center());

    QTRY_VERIFY(editor.Text().contains(QStringLiteral("print(\"inner\", \"info\")")));
    QVERIFY(!editor.Text().contains(QStringLiteral("x > 1")));
}

void tst_PythonPane::followsWhatTheAuthorChanges()
{
    Shown editor;
    QTRY_VERIFY(editor.Text().contains(QStringLiteral("print(\"e\", \"info\")")));

    editor.Click(QStringLiteral("e"));
    editor.Key(Qt::Key_Slash, Qt::ControlModifier);

    QTRY_VERIFY(!editor.Text().contains(QStringLiteral("print(\"e\", \"info\")")));
    QVERIFY(editor.Text().contains(QStringLiteral("print(\"d\", \"info\")")));

    editor.Key(Qt::Key_Z, Qt::ControlModifier);
    QTRY_VERIFY(editor.Text().contains(QStringLiteral("print(\"e\", \"info\")")));
    QVERIFY(editor.Text().endsWith(QStringLiteral("process_1()\n")));
}

void tst_PythonPane::marksTheLineOfTheCurrentStatement()
{
    Shown editor;
    QTRY_VERIFY(!editor.Text().isEmpty());

    editor.code->setFocus(); // the cursor, which has a mark of its own, stays where it is
    editor.view->setFocus();
    editor.Click(QStringLiteral("d"));
    QVERIFY(editor.code->textCursor().block().text().contains(QStringLiteral("\"d\"")));

    editor.Key(Qt::Key_Up);
    QVERIFY(editor.code->textCursor().block().text().contains(QStringLiteral("\"c\"")));
    QVERIFY(editor.view->hasFocus());
}

void tst_PythonPane::choosesTheStatementOfALine()
{
    Shown editor;
    QTRY_VERIFY(!editor.Text().isEmpty());
    editor.Click(QStringLiteral("a"));

    editor.ClickLine(QStringLiteral("print(\"d\", \"info\")"));

    QCOMPARE(editor.view->currentIndex().data(Qt::UserRole).toString(), QStringLiteral("d"));
    QVERIFY(editor.code->hasFocus());
    QVERIFY(editor.code->textCursor().block().text().contains(QStringLiteral("\"d\"")));
    // A line of no statement chooses none.
    editor.ClickLine(QStringLiteral("def process_1"));
    QCOMPARE(editor.view->currentIndex().data(Qt::UserRole).toString(), QStringLiteral("d"));
    // What the author chooses in the tree is marked where she reads.
    editor.Click(QStringLiteral("e"));
    editor.code->setFocus();
    editor.ClickLine(QStringLiteral("def process_1"));
    QCOMPARE(editor.Marked(), QStringList(QStringLiteral("print(\"e\", \"info\")")));
}

void tst_PythonPane::leavesTheCursorInTheLineThatIsRead()
{
    RpaStatement twoLines = Statement(QStringLiteral("t-set"), QStringLiteral("s"));
    twoLines.arguments = {{QStringLiteral("variable"), QStringLiteral("pair")},
                          {QStringLiteral("value"), QStringLiteral("[1,\n2]")}};
    Shown editor({Log(QStringLiteral("a")), twoLines});
    QTRY_VERIFY(!editor.Text().isEmpty());

    editor.code->setFocus();
    editor.ClickLine(QStringLiteral("2]"));

    QCOMPARE(editor.view->currentIndex().data(Qt::UserRole).toString(), QStringLiteral("s"));
    QCOMPARE(editor.code->textCursor().block().text().trimmed(), QStringLiteral("2])"));
}

void tst_PythonPane::choosesTheStatementOfAnotherProcess()
{
    Shown editor({Call(QStringLiteral("子流程")), Log(QStringLiteral("a"))});
    editor.app->GetProcessDataManager()->GetProcess(1)->SetStatements(
        {Log(QStringLiteral("first")), Log(QStringLiteral("second"))});
    QTRY_VERIFY(editor.Text().contains(QStringLiteral("print(\"second\", \"info\")")));

    editor.ClickLine(QStringLiteral("print(\"second\", \"info\")"));

    auto* tabs = editor.Find<QTabBar>(QStringLiteral("processTabBar"));
    QCOMPARE(tabs->currentIndex(), 1);
    QCOMPARE(editor.view->currentIndex().data(Qt::UserRole).toString(), QStringLiteral("second"));
}

void tst_PythonPane::copiesTheProgram()
{
    QApplication::clipboard()->clear();
    Shown editor;
    QTRY_VERIFY(!editor.Text().isEmpty());

    QTest::mouseClick(editor.Find<QToolButton>(QStringLiteral("buttonCopy")), Qt::LeftButton);

    QCOMPARE(QApplication::clipboard()->text(), editor.Text());
}

void tst_PythonPane::showsTheNextAppOnly()
{
    Shown editor;
    const RpaAppDataPtr second = App({Log(QStringLiteral("second"))});
    const RpaAppDataPtr third = App({Log(QStringLiteral("third"))});

    editor.widget.SetRpaAppData(second);
    editor.widget.SetRpaAppData(third);

    QTRY_VERIFY(editor.Text().contains(QStringLiteral("print(\"third\", \"info\")")));
    QVERIFY(!editor.Text().contains(QStringLiteral("second")));
    // A change of an app that is no longer shown.
    Main(second)->SetStatements({Log(QStringLiteral("late"))});

    editor.widget.SetRpaAppData(nullptr);
    QTRY_VERIFY(editor.Text().isEmpty());
    QVERIFY(!editor.Find<QToolButton>(QStringLiteral("buttonCopy"))->isEnabled());
}

RPA_TEST_MAIN(tst_PythonPane)
#include "tst_pythonpane.moc"
