// SPDX-License-Identifier: Apache-2.0

#include "ModalDriver.h"
#include "TestApp.h"
#include "VisualEditorFixture.h"

#include <RpaProcessEditor/ProcessProgramEditorWidget.h>

#include <QContextMenuEvent>
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>
#include <QTest>
#include <QTextBlock>
#include <QTreeView>
#include <QTreeWidget>

#include <algorithm>

using namespace EditorFixture;

namespace
{
// What the editor's list of breakpoints says: "第 2 行".
QStringList Listed(const QWidget& editor)
{
    QStringList texts;
    const auto* list = editor.findChild<QTreeWidget*>(QStringLiteral("breakpointList"));
    for (int row = 0; row < list->topLevelItemCount(); ++row)
        texts << list->topLevelItem(row)->text(0).section(QLatin1Char(' '), 1);
    return texts;
}

QStringList Lines(std::initializer_list<int> lines)
{
    QStringList texts;
    for (const int line : lines)
        texts << QStringLiteral("第 %1 行").arg(line);
    return texts;
}

struct ProgramEditor
{
    explicit ProgramEditor(const QString& text) : app(App())
    {
        Main(app)->SetProgramText(text);
        app->SetModified(false);
        widget.resize(900, 500);
        widget.SetRpaAppData(app);
        widget.show();
        widget.activateWindow();
        if (!QTest::qWaitForWindowActive(&widget))
            QTest::qFail("the window never became active", __FILE__, __LINE__);
        edit = widget.findChild<QPlainTextEdit*>(QStringLiteral("codeEdit"));
        gutter = widget.findChild<QWidget*>(QStringLiteral("codeGutter"));
        edit->setFocus();
    }

    QPoint PlaceOf(int line, int x) const
    {
        QTextCursor cursor(edit->document()->findBlockByNumber(line - 1));
        return {x, edit->cursorRect(cursor).center().y()};
    }
    void ClickMark(int line) { QTest::mouseClick(gutter, Qt::LeftButton, {}, PlaceOf(line, 8)); }
    void GoTo(int line, bool end = false)
    {
        QTextCursor cursor(edit->document()->findBlockByNumber(line - 1));
        if (end)
            cursor.movePosition(QTextCursor::EndOfBlock);
        edit->setTextCursor(cursor);
    }

    RpaAppDataPtr app;
    ProcessProgramEditorWidget widget;
    QPlainTextEdit* edit = nullptr;
    QWidget* gutter = nullptr;
};

QMenu* OpenMenu(const QWidget& editor)
{
    return editor.findChild<QMenu*>(QStringLiteral("breakpointMenu"));
}
} // namespace

class tst_BreakpointGutter : public QObject
{
    Q_OBJECT

private slots:
    void clickBesideAStatement();
    void clickOnTheNumberSelectsOnly();
    void f9OnTheSelection();
    void menuOfAStatement();
    void clickBesideALine();
    void clickOnALineNumberSelectsOnly();
    void f9InTheText();
    void linesMoveWithTheText();
    void menuOfALine();
    void anotherAppHasOthers();
};

void tst_BreakpointGutter::clickBesideAStatement()
{
    Editor editor;
    const auto press = [&editor](const char* id) {
        const QRect cell = editor.view->visualRect(editor.IndexOf(QLatin1String(id), 0));
        QTest::mouseClick(editor.view->viewport(), Qt::LeftButton, {}, {cell.left() + 8, cell.center().y()});
    };
    const QImage before = editor.view->viewport()->grab().toImage();
    press("e");
    press("c");
    QCOMPARE(Listed(editor.widget), Lines({3, 5}));
    QVERIFY(editor.view->viewport()->grab().toImage() != before);
    QCOMPARE(editor.view->currentIndex().data(Qt::UserRole).toString(), QStringLiteral("a"));
    QVERIFY(!editor.app->GetModified());

    press("e");
    QCOMPARE(Listed(editor.widget), Lines({3}));
}

void tst_BreakpointGutter::clickOnTheNumberSelectsOnly()
{
    Editor editor;
    const QRect cell = editor.view->visualRect(editor.IndexOf(QStringLiteral("e"), 0));
    QTest::mouseClick(editor.view->viewport(), Qt::LeftButton, {}, {cell.right() - 10, cell.center().y()});
    QCOMPARE(Listed(editor.widget), QStringList());
    QCOMPARE(editor.view->currentIndex().data(Qt::UserRole).toString(), QStringLiteral("e"));
}

void tst_BreakpointGutter::f9OnTheSelection()
{
    Editor editor;
    editor.Click(QStringLiteral("c"));
    editor.Key(Qt::Key_F9);
    QCOMPARE(Listed(editor.widget), Lines({3}));
    editor.Click(QStringLiteral("e"), Qt::ControlModifier);
    editor.Key(Qt::Key_F9);
    QCOMPARE(Listed(editor.widget), Lines({3, 5})); // one had none
    editor.Key(Qt::Key_F9);
    QCOMPARE(Listed(editor.widget), QStringList());
}

void tst_BreakpointGutter::menuOfAStatement()
{
    Editor editor;
    const QRect cell = editor.view->visualRect(editor.IndexOf(QStringLiteral("c"), 0));
    const QPoint place(cell.left() + 8, cell.center().y());
    const auto choose = [&](const QString& text) {
        QContextMenuEvent event(QContextMenuEvent::Mouse, place, editor.view->viewport()->mapToGlobal(place));
        QCoreApplication::sendEvent(editor.view->viewport(), &event);
        QMenu* menu = OpenMenu(editor.widget);
        QVERIFY(menu);
        const QList<QAction*> actions = menu->actions();
        const auto found = std::find_if(actions.begin(), actions.end(),
                                        [&text](const QAction* action) { return action->text() == text; });
        QVERIFY2(found != actions.end(), qPrintable(text));
        QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(*found).center());
        QTRY_VERIFY(!OpenMenu(editor.widget));
    };
    choose(QStringLiteral("添加断点"));
    QCOMPARE(Listed(editor.widget), Lines({3}));
    choose(QStringLiteral("停用断点"));
    QVERIFY(editor.IndexOf(QStringLiteral("c"), 0)
                .data(Qt::AccessibleTextRole)
                .toString()
                .contains(QStringLiteral("已停用")));
    ModalDriver modals;
    modals.Then([](QWidget* dialog) {
        Type(dialog->findChild<QLineEdit*>(QStringLiteral("lineEditCondition")), QStringLiteral("x > 3"));
        ModalDriver::Press(dialog, QStringLiteral("确定"));
    });
    choose(QStringLiteral("断点条件…"));
    const auto* list = editor.Find<QTreeWidget>(QStringLiteral("breakpointList"));
    QTRY_COMPARE(list->topLevelItem(0)->text(2), QStringLiteral("条件：x > 3"));
    choose(QStringLiteral("删除断点"));
    QCOMPARE(Listed(editor.widget), QStringList());
}

void tst_BreakpointGutter::clickBesideALine()
{
    ProgramEditor editor(QStringLiteral("a = 1\nb = 2\nc = 3\n"));
    const QImage before = editor.gutter->grab().toImage();
    editor.ClickMark(3);
    editor.ClickMark(2);
    QCOMPARE(Listed(editor.widget), Lines({2, 3}));
    QVERIFY(editor.gutter->grab().toImage() != before);
    QVERIFY(!editor.app->GetModified());
    editor.ClickMark(3);
    QCOMPARE(Listed(editor.widget), Lines({2}));
}

void tst_BreakpointGutter::clickOnALineNumberSelectsOnly()
{
    ProgramEditor editor(QStringLiteral("a = 1\nb = 2\n"));
    QTest::mouseClick(editor.gutter, Qt::LeftButton, {}, editor.PlaceOf(2, editor.gutter->width() - 8));
    QCOMPARE(Listed(editor.widget), QStringList());
    QCOMPARE(editor.edit->textCursor().selectedText(), QStringLiteral("b = 2"));
}

void tst_BreakpointGutter::f9InTheText()
{
    ProgramEditor editor(QStringLiteral("a = 1\nb = 2\n"));
    editor.GoTo(2);
    QTest::keyClick(editor.edit, Qt::Key_F9);
    QCOMPARE(Listed(editor.widget), Lines({2}));
    QTest::keyClick(editor.edit, Qt::Key_F9);
    QCOMPARE(Listed(editor.widget), QStringList());
}

void tst_BreakpointGutter::linesMoveWithTheText()
{
    ProgramEditor editor(QStringLiteral("a = 1\nb = 2\nc = 3\nd = 4"));
    editor.ClickMark(2);
    editor.ClickMark(4);

    editor.GoTo(2, true);
    QTest::keyClick(editor.edit, Qt::Key_Return); // behind it
    QCOMPARE(Listed(editor.widget), Lines({2, 5}));
    editor.GoTo(2);
    QTest::keyClick(editor.edit, Qt::Key_Return); // before it
    QCOMPARE(Listed(editor.widget), Lines({3, 6}));
    editor.GoTo(1, true);
    QTest::keyClick(editor.edit, Qt::Key_Delete);
    QCOMPARE(Listed(editor.widget), Lines({2, 5}));
    editor.GoTo(2);
    QTest::keyClick(editor.edit, Qt::Key_Down, Qt::ShiftModifier); // its whole line
    QTest::keyClick(editor.edit, Qt::Key_Delete);
    QCOMPARE(Listed(editor.widget), Lines({4}));
}

void tst_BreakpointGutter::menuOfALine()
{
    ProgramEditor editor(QStringLiteral("a = 1\nb = 2\n"));
    QTest::mouseClick(editor.gutter, Qt::RightButton, {}, editor.PlaceOf(2, 8));
    QMenu* menu = OpenMenu(editor.widget);
    QVERIFY(menu);
    QAction* first = menu->actions().first();
    QCOMPARE(first->text(), QStringLiteral("添加断点"));
    QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(first).center());
    QCOMPARE(Listed(editor.widget), Lines({2}));
}

void tst_BreakpointGutter::anotherAppHasOthers()
{
    ProgramEditor editor(QStringLiteral("a = 1\nb = 2\n"));
    editor.ClickMark(2);
    const RpaAppDataPtr other = App();
    Main(other)->SetProgramText(QStringLiteral("x = 1\ny = 2\nz = 3\n"));

    editor.widget.SetRpaAppData(other);
    QCOMPARE(Listed(editor.widget), QStringList());
    editor.widget.SetRpaAppData(nullptr);
    QCOMPARE(Listed(editor.widget), QStringList());
    QTest::keyClick(editor.edit, Qt::Key_F9); // nothing to stop in
    QCOMPARE(Listed(editor.widget), QStringList());
}

RPA_TEST_MAIN(tst_BreakpointGutter)
#include "tst_breakpointgutter.moc"
