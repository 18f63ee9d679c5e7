// SPDX-License-Identifier: Apache-2.0

#include "TestApp.h"
#include "ToastWatcher.h"
#include "VisualEditorFixture.h"

#include <RpaAppData/RpaParamData.h>
#include <RpaAppData/RpaTableData.h>
#include <RpaAppData/RpaToolData.h>
#include <RpaAppData/RpaUIData.h>
#include <RpaAppData/RpaUIDataManager.h>

#include <QAbstractItemView>
#include <QApplication>
#include <QCalendarWidget>
#include <QClipboard>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>
#include <QTableWidget>
#include <QTest>
#include <QTextEdit>
#include <QToolButton>
#include <QTreeView>

using namespace EditorFixture;

// Texts with variables, and lists and tables as grids.
class tst_ProcessVisualEditorValues : public QObject
{
    Q_OBJECT

private slots:
    void insertsAVariableIntoAText();
    void typesAroundAVariable();
    void copiesAVariableWithItsText();
    void showsTheSameBehindFx();
    void saysWhyATextStaysPython();
    void offersParametersColumnsAndDates();
    void editsAListByKeys();
    void movesAndRemovesItemsByMouse();
    void labelsTheRowOfATableByItsColumns();
    void editsADictionary();
    void takesCellsOfASpreadsheet();
    void refusesATableThatBelongsIntoAFile();
    void picksAVariableForANumber();
    void leavesAnUntouchedGridAsItIs();
};

namespace
{
RpaStatement With(const QString& command, const QString& argument, const QString& text)
{
    RpaStatement statement = Statement(command, QStringLiteral("s"));
    statement.arguments.insert(argument, text);
    return statement;
}

// One statement of a command, and the variables 编号 and 姓名.
struct Values : Editor
{
    Values(const QString& command, const QString& name, const QString& text = QString())
        : Editor({Named(QStringLiteral("编号")), Named(QStringLiteral("姓名")), With(command, name, text)}),
          argument(name)
    {
        Click(QStringLiteral("s"));
    }

    static RpaStatement Named(const QString& variable)
    {
        RpaStatement statement = With(QStringLiteral("t-set"), QStringLiteral("variable"), variable);
        statement.id = variable;
        return statement;
    }
    QWidget* Whole() const { return widget.findChild<QWidget*>(QStringLiteral("field_") + argument); }
    QTextEdit* Pieces() const { return Editor::Field<QTextEdit>(argument); }
    QTableWidget* Grid() const { return Whole()->findChild<QTableWidget*>(QStringLiteral("valueGrid")); }
    QString Stored() const { return Node(QStringLiteral("s"))->GetArgument(argument); }
    QString Hint() const
    {
        const auto* label = Whole()->findChild<QLabel*>(QStringLiteral("labelHint"));
        return label->isVisible() ? label->text() : QString();
    }
    void Press(const char* button) const
    {
        // The buttons of a text stand above it even while a grid with its own is shown.
        for (QToolButton* found : Whole()->findChildren<QToolButton*>(QLatin1String(button)))
            if (found->isVisible())
                return QTest::mouseClick(found, Qt::LeftButton);
        QFAIL(button);
    }
    QMenu* OpenMenu() const
    {
        Press("pickButton");
        return qobject_cast<QMenu*>(QApplication::activePopupWidget());
    }
    void Pick(const QString& title) const
    {
        QMenu* menu = OpenMenu();
        QVERIFY(menu);
        ChooseIn(menu, title);
        // Offscreen nothing makes the window active again when a menu closes.
        QApplication::setActiveWindow(Whole()->window());
    }
    static void ChooseIn(QMenu* menu, const QString& title)
    {
        for (QAction* action : menu->actions()) {
            if (action->text() == title) {
                QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(action).center());
                return;
            }
        }
        QFAIL(qPrintable(QStringLiteral("no ") + title));
    }
    void Enter(int row, int column, const QString& text) const
    {
        Grid()->setFocus();
        Grid()->setCurrentCell(row, column);
        QTest::keyClick(Grid(), Qt::Key_F2);
        auto* edit = Grid()->findChild<QTextEdit*>(QStringLiteral("cellEdit"));
        QVERIFY(edit);
        EditorFixture::Type(edit, text);
        QTest::keyClick(edit, Qt::Key_Return);
        QTRY_VERIFY(!Grid()->findChild<QTextEdit*>(QStringLiteral("cellEdit")));
    }

    const QString argument;
};

QString Shown(const QTextEdit* edit)
{
    return edit->toPlainText().replace(QChar::ObjectReplacementCharacter, QLatin1String("{}"));
}
} // namespace

void tst_ProcessVisualEditorValues::insertsAVariableIntoAText()
{
    Values editor(QStringLiteral("t-log"), QStringLiteral("text"), QStringLiteral("订单号"));
    auto* line = editor.Field<QLineEdit>(QStringLiteral("text"));
    line->setFocus();
    line->setCursorPosition(2);

    editor.Pick(QStringLiteral("编号"));

    QTRY_VERIFY(editor.Pieces());
    QCOMPARE(Shown(editor.Pieces()), QStringLiteral("订单{}号"));
    QCOMPARE(editor.Stored(), QStringLiteral("=f\"订单{编号}号\""));
    QTRY_VERIFY(editor.Pieces()->hasFocus());
    QTest::keyClick(editor.Pieces(), Qt::Key_Backspace);

    QCOMPARE(editor.Stored(), QStringLiteral("订单号"));
}

void tst_ProcessVisualEditorValues::typesAroundAVariable()
{
    Values editor(QStringLiteral("t-log"), QStringLiteral("text"), QStringLiteral("=编号"));
    QTextEdit* edit = editor.Pieces();
    QVERIFY(edit);
    edit->setFocus();

    QTest::keyClick(edit, Qt::Key_End);
    EditorFixture::Type(edit, QStringLiteral("x{"));
    QCOMPARE(editor.Stored(), QStringLiteral("=f\"{编号}x{{\""));
    QTest::keyClick(edit, Qt::Key_Home);
    EditorFixture::Type(edit, QStringLiteral("\""));

    QCOMPARE(editor.Stored(), QStringLiteral("=f\"\\\"{编号}x{{\""));
    QCOMPARE(Shown(edit), QStringLiteral("\"{}x{"));
    QTest::keyClick(edit, Qt::Key_Return);
    QCOMPARE(Shown(edit), QStringLiteral("\"{}x{"));
}

void tst_ProcessVisualEditorValues::copiesAVariableWithItsText()
{
    Values editor(QStringLiteral("t-log"), QStringLiteral("text"), QStringLiteral("=f\"a{编号}\""));
    QTextEdit* edit = editor.Pieces();
    edit->setFocus();
    QTest::keyClick(edit, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(edit, Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("a{编号}"));

    QTest::keyClick(edit, Qt::Key_End);
    QTest::keyClick(edit, Qt::Key_V, Qt::ControlModifier);

    QCOMPARE(editor.Stored(), QStringLiteral("=f\"a{编号}a{编号}\""));
}

void tst_ProcessVisualEditorValues::showsTheSameBehindFx()
{
    Values editor(QStringLiteral("t-log"), QStringLiteral("text"), QStringLiteral("订\"单"));

    editor.Press("pythonButton");
    auto* line = editor.Field<QLineEdit>(QStringLiteral("text"));
    QCOMPARE(line->text(), QStringLiteral("\"订\\\"单\""));
    QCOMPARE(editor.Stored(), QStringLiteral("订\"单"));
    QVERIFY(!editor.app->GetModified());
    line->clear();
    EditorFixture::Type(line, QStringLiteral("f\"订单{编号}\""));
    editor.Press("pythonButton");

    QTRY_VERIFY(editor.Pieces());
    QCOMPARE(Shown(editor.Pieces()), QStringLiteral("订单{}"));
    QCOMPARE(editor.Stored(), QStringLiteral("=f\"订单{编号}\""));
}

void tst_ProcessVisualEditorValues::saysWhyATextStaysPython()
{
    Values editor(QStringLiteral("t-log"), QStringLiteral("text"), QStringLiteral("=编号 * 2"));
    QCOMPARE(editor.Field<QLineEdit>(QStringLiteral("text"))->text(), QStringLiteral("编号 * 2"));
    QVERIFY(editor.Hint().contains(QStringLiteral("计算")));

    editor.Press("pythonButton");

    QVERIFY(editor.Whole()->findChild<QToolButton*>(QStringLiteral("pythonButton"))->isChecked());
    QCOMPARE(editor.Stored(), QStringLiteral("=编号 * 2"));
}

void tst_ProcessVisualEditorValues::offersParametersColumnsAndDates()
{
    RpaStatement loop = With(QStringLiteral("loop.list"), QStringLiteral("list"), QStringLiteral("编号"));
    loop.output = QStringLiteral("人");
    loop.children = {With(QStringLiteral("t-log"), QStringLiteral("text"), QString())};
    loop.children.first().id = QStringLiteral("in");
    Editor editor({loop});
    RpaUIDataManager* pages = editor.app->GetUIDataManager();
    RpaUIData* page =
        pages->GetCount() > 0 ? pages->GetUIData(0) : pages->AddUIData(QStringLiteral("页面"), RpaToolItem());
    RpaParamItem parameter;
    parameter.name = QStringLiteral("时薪");
    page->GetParamData()->InsertItem(0, parameter);
    RpaTableColumn column;
    column.name = QStringLiteral("金额");
    page->GetTableData()->InsertColumn(0, column);
    editor.Click(QStringLiteral("in"));
    auto* field = editor.Find<QWidget>(QStringLiteral("field_text"));
    const auto pick = [&](const QString& part, const QString& title) {
        QTest::mouseClick(field->findChild<QToolButton*>(QStringLiteral("pickButton")), Qt::LeftButton);
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        QVERIFY(menu);
        Values::ChooseIn(menu, part);
        QTRY_VERIFY(QApplication::activePopupWidget() != menu);
        Values::ChooseIn(qobject_cast<QMenu*>(QApplication::activePopupWidget()), title);
        QTRY_VERIFY(!QApplication::activePopupWidget());
    };
    const auto stored = [&] {
        return editor.Node(QStringLiteral("in"))->GetArgument(QStringLiteral("text"));
    };

    pick(QStringLiteral("参数"), QStringLiteral("时薪"));
    QCOMPARE(stored(), QStringLiteral("=rpa.get_param(\"时薪\")"));
    auto* pieces = editor.Field<QTextEdit>(QStringLiteral("text"));
    QTest::keyClick(pieces, Qt::Key_Backspace);
    pick(QStringLiteral("表格列"), QStringLiteral("人 的 金额"));
    QCOMPARE(stored(), QStringLiteral("=人[\"金额\"]"));
    QTest::keyClick(pieces, Qt::Key_Backspace);

    QTest::mouseClick(field->findChild<QToolButton*>(QStringLiteral("pickButton")), Qt::LeftButton);
    Values::ChooseIn(qobject_cast<QMenu*>(QApplication::activePopupWidget()), QStringLiteral("日期"));
    QCalendarWidget* calendar = nullptr;
    QTRY_VERIFY((calendar = QApplication::activePopupWidget()->findChild<QCalendarWidget*>()));
    calendar->setSelectedDate(QDate(2026, 2, 3));
    auto* days = calendar->findChild<QAbstractItemView*>(QStringLiteral("qt_calendar_calendarview"));
    days->setFocus();
    QTest::keyClick(days, Qt::Key_Right);
    QTest::keyClick(days, Qt::Key_Return);

    QTRY_COMPARE(stored(), QStringLiteral("2026-02-04"));
}

void tst_ProcessVisualEditorValues::editsAListByKeys()
{
    Values editor(QStringLiteral("list.create"), QStringLiteral("items"), QStringLiteral("[]"));
    QCOMPARE(editor.Grid()->rowCount(), 1);

    editor.Enter(0, 0, QStringLiteral("甲"));
    QCOMPARE(editor.Stored(), QStringLiteral("[\"甲\"]"));
    QTest::keyClick(editor.Grid(), Qt::Key_Return, Qt::ControlModifier);
    QCOMPARE(editor.Grid()->currentRow(), 1);
    editor.Enter(1, 0, QStringLiteral("3"));
    QTest::keyClick(editor.Grid(), Qt::Key_Return, Qt::ControlModifier);
    editor.Enter(2, 0, QStringLiteral("姓名"));

    QCOMPARE(editor.Stored(), QStringLiteral("[\"甲\", 3, 姓名]"));
    QTest::keyClick(editor.Grid(), Qt::Key_Up, Qt::AltModifier);
    QCOMPARE(editor.Stored(), QStringLiteral("[\"甲\", 姓名, 3]"));
    QTest::keyClick(editor.Grid(), Qt::Key_Delete);
    QCOMPARE(editor.Stored(), QStringLiteral("[\"甲\", \"\", 3]"));
    QTest::keyClick(editor.Grid(), Qt::Key_Delete, Qt::ControlModifier);
    QCOMPARE(editor.Stored(), QStringLiteral("[\"甲\", 3]"));
}

void tst_ProcessVisualEditorValues::movesAndRemovesItemsByMouse()
{
    Values editor(QStringLiteral("list.create"), QStringLiteral("items"), QStringLiteral("[1, 2, 3]"));
    const auto click = [&editor](int row) {
        QTest::mouseClick(editor.Grid()->viewport(), Qt::LeftButton, {},
                          editor.Grid()->visualItemRect(editor.Grid()->item(row, 0)).center());
    };

    click(2);
    editor.Press("rowUp");
    QCOMPARE(editor.Stored(), QStringLiteral("[1, 3, 2]"));
    editor.Press("rowDown");
    QCOMPARE(editor.Stored(), QStringLiteral("[1, 2, 3]"));
    click(0);
    editor.Press("removeRow");
    QCOMPARE(editor.Stored(), QStringLiteral("[2, 3]"));
    click(0);
    editor.Press("addRow");
    editor.Pick(QStringLiteral("姓名"));

    QTRY_COMPARE(editor.Stored(), QStringLiteral("[2, 姓名, 3]"));
}

void tst_ProcessVisualEditorValues::labelsTheRowOfATableByItsColumns()
{
    Values editor(QStringLiteral("table.append"), QStringLiteral("values"), QStringLiteral("[]"));
    RpaUIDataManager* pages = editor.app->GetUIDataManager();
    RpaUIData* page =
        pages->GetCount() > 0 ? pages->GetUIData(0) : pages->AddUIData(QStringLiteral("页面"), RpaToolItem());
    for (const QString& name : {QStringLiteral("工号"), QStringLiteral("金额")}) {
        RpaTableColumn column;
        column.name = name;
        page->GetTableData()->InsertColumn(page->GetTableData()->GetColumnCount(), column);
    }
    editor.Click(QStringLiteral("编号"));
    editor.Click(QStringLiteral("s"));

    QStringList names;
    for (int row = 0; row < editor.Grid()->rowCount(); ++row)
        names << editor.Grid()->verticalHeaderItem(row)->text();
    const int amount = names.indexOf(QStringLiteral("金额"));
    QVERIFY(amount > 0);
    QVERIFY(names.contains(QStringLiteral("工号")));
    editor.Enter(amount, 0, QStringLiteral("12.5"));

    QVERIFY2(editor.Stored().endsWith(QStringLiteral("\"\", 12.5]")), qPrintable(editor.Stored()));
}

void tst_ProcessVisualEditorValues::editsADictionary()
{
    Values editor(QStringLiteral("http.request"), QStringLiteral("headers"), QStringLiteral("{}"));

    editor.Enter(0, 0, QStringLiteral("令牌"));
    editor.Enter(0, 1, QStringLiteral("编号"));

    QCOMPARE(editor.Stored(), QStringLiteral("{\"令牌\": 编号}"));
}

void tst_ProcessVisualEditorValues::takesCellsOfASpreadsheet()
{
    Values editor(QStringLiteral("csv.write"), QStringLiteral("rows"), QString());
    editor.Grid()->setFocus();
    editor.Grid()->setCurrentCell(0, 0);
    QGuiApplication::clipboard()->setText(QStringLiteral("甲\t1\r\n乙\t2.5\r\n"));

    QTest::keyClick(editor.Grid(), Qt::Key_V, Qt::ControlModifier);

    QCOMPARE(editor.Stored(), QStringLiteral("[[\"甲\", 1], [\"乙\", 2.5]]"));
}

void tst_ProcessVisualEditorValues::refusesATableThatBelongsIntoAFile()
{
    Values editor(QStringLiteral("csv.write"), QStringLiteral("rows"), QStringLiteral("[[7]]"));
    ToastWatcher toasts;
    editor.Grid()->setFocus();
    editor.Grid()->setCurrentCell(0, 0);
    QGuiApplication::clipboard()->setText(QStringLiteral("1\n").repeated(501));

    QTest::keyClick(editor.Grid(), Qt::Key_V, Qt::ControlModifier);

    QCOMPARE(editor.Stored(), QStringLiteral("[[7]]"));
    QTRY_VERIFY(toasts.GetTexts().filter(QStringLiteral("500 行")).size() == 1);
}

void tst_ProcessVisualEditorValues::picksAVariableForANumber()
{
    Values editor(QStringLiteral("t-wait"), QStringLiteral("seconds"), QStringLiteral("2*"));
    auto* line = editor.Field<QLineEdit>(QStringLiteral("seconds"));
    line->setFocus();
    line->setCursorPosition(2);

    editor.Pick(QStringLiteral("编号"));

    QTRY_COMPARE(editor.Stored(), QStringLiteral("2*编号"));
    QCOMPARE(line->text(), QStringLiteral("2*编号"));
}

void tst_ProcessVisualEditorValues::leavesAnUntouchedGridAsItIs()
{
    const QString python = QStringLiteral("[ 编号 , 'a',len(姓名)]");
    Values editor(QStringLiteral("list.create"), QStringLiteral("items"), python);
    editor.Grid()->setFocus();
    editor.Grid()->setCurrentCell(1, 0);
    QTest::keyClick(editor.Grid(), Qt::Key_F2);
    QTest::keyClick(editor.Grid()->findChild<QTextEdit*>(QStringLiteral("cellEdit")), Qt::Key_Return);
    editor.view->setFocus();

    QCOMPARE(editor.Stored(), python);
    QVERIFY(!editor.app->GetModified());
}

RPA_TEST_MAIN(tst_ProcessVisualEditorValues)

#include "tst_processvisualeditor_values.moc"
