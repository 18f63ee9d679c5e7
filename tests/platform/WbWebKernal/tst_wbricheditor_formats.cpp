// SPDX-License-Identifier: Apache-2.0

#include "RichEditorFixture.h"
#include "TestApp.h"

#include <QAction>
#include <QComboBox>
#include <QMenu>
#include <QTest>
#include <QTextEdit>
#include <QTextTable>
#include <QToolButton>

using namespace RichEditorFixture;

// Formats, headings, lists and tables.
class tst_WbRichEditorFormats : public QObject
{
    Q_OBJECT

private slots:
    void formatsTheSelection_data();
    void formatsTheSelection();
    void keepsHighlightedTextReadable();
    void makesHeadingsWithTheKeyboard();
    void continuesWithAParagraphBehindAHeading();
    void makesAndLeavesLists();
    void indentsListItemsWithTab();
    void insertsATableAndChangesItsRowsAndColumns();
    void movesThroughTableCellsWithTab();
};

void tst_WbRichEditorFormats::formatsTheSelection_data()
{
    QTest::addColumn<QString>("action");
    QTest::addColumn<QString>("expected");

    QTest::newRow("bold") << QStringLiteral("toolBold") << QStringLiteral("<p><b>字</b></p>");
    QTest::newRow("italic") << QStringLiteral("toolItalic") << QStringLiteral("<p><i>字</i></p>");
    QTest::newRow("underline") << QStringLiteral("toolUnderline") << QStringLiteral("<p><u>字</u></p>");
    QTest::newRow("strike") << QStringLiteral("toolStrike") << QStringLiteral("<p><s>字</s></p>");
    QTest::newRow("bullets") << QStringLiteral("toolBullets") << QStringLiteral("<ul><li>字</li></ul>");
    QTest::newRow("numbers") << QStringLiteral("toolNumbers") << QStringLiteral("<ol><li>字</li></ol>");
    QTest::newRow("indent") << QStringLiteral("toolIndent")
                            << QStringLiteral("<p style=\"margin-left:40px\">字</p>");
    QTest::newRow("centre") << QStringLiteral("toolAlignCentre")
                            << QStringLiteral("<p style=\"text-align:center\">字</p>");
}

void tst_WbRichEditorFormats::formatsTheSelection()
{
    QFETCH(QString, action);
    QFETCH(QString, expected);
    Editor editor;
    editor.widget.Init(QStringLiteral("<p>字</p>"));

    editor.SelectAll();
    if (auto* button = editor.widget.findChild<QToolButton*>(action + QStringLiteral("Button")))
        QTest::mouseClick(button, Qt::LeftButton);
    else
        editor.Press(action); // stands in a menu
    QCOMPARE(editor.Text(), expected);

    QTest::keyClick(editor.view, Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(editor.Text(), QStringLiteral("<p>字</p>"));
}

void tst_WbRichEditorFormats::keepsHighlightedTextReadable()
{
    Editor editor;
    editor.widget.Init(QStringLiteral("<p>字</p>"));
    auto* button = editor.widget.findChild<QToolButton*>(QStringLiteral("toolBackColour"));
    const auto choose = [button](const QString& text) {
        const auto actions = button->menu()->actions();
        for (QAction* action : actions)
            if (action->text() == text)
                action->trigger();
    };
    editor.SelectAll();

    choose(QStringLiteral("浅黄"));
    QCOMPARE(editor.Text(),
             QStringLiteral("<p><span style=\"color:#1f2329;background-color:#ffe58a\">字</span></p>"));

    choose(QStringLiteral("无背景"));
    QCOMPARE(editor.Text(), QStringLiteral("<p>字</p>"));
}

void tst_WbRichEditorFormats::makesHeadingsWithTheKeyboard()
{
    Editor editor;
    editor.widget.Init(QStringLiteral("<p>标题</p>"));
    auto* combo = editor.widget.findChild<QComboBox*>(QStringLiteral("comboHeading"));

    QTest::keyClick(editor.view, Qt::Key_2, Qt::ControlModifier | Qt::AltModifier);
    QCOMPARE(editor.Text(), QStringLiteral("<h2>标题</h2>"));
    QCOMPARE(combo->currentIndex(), 2);

    QTest::keyClick(editor.view, Qt::Key_0, Qt::ControlModifier | Qt::AltModifier);
    QCOMPARE(editor.Text(), QStringLiteral("<p>标题</p>"));
}

void tst_WbRichEditorFormats::continuesWithAParagraphBehindAHeading()
{
    Editor editor;
    editor.widget.Init(QStringLiteral("<h1>标题</h1>"));

    QTest::keyClick(editor.view, Qt::Key_End);
    QTest::keyClick(editor.view, Qt::Key_Return);
    editor.Type(QStringLiteral("x"));

    QCOMPARE(editor.Text(), QStringLiteral("<h1>标题</h1>\n<p>x</p>"));
}

void tst_WbRichEditorFormats::makesAndLeavesLists()
{
    Editor editor;

    editor.Press(QStringLiteral("toolNumbers"));
    editor.Type(QStringLiteral("a"));
    QTest::keyClick(editor.view, Qt::Key_Return);
    editor.Type(QStringLiteral("b"));
    QTest::keyClick(editor.view, Qt::Key_Return);
    QTest::keyClick(editor.view, Qt::Key_Return); // an empty item ends the list
    editor.Type(QStringLiteral("c"));

    QCOMPARE(editor.Text(), QStringLiteral("<ol><li>a</li>\n<li>b</li></ol>\n<p>c</p>"));
}

void tst_WbRichEditorFormats::indentsListItemsWithTab()
{
    Editor editor;
    editor.widget.Init(QStringLiteral("<ul><li>a</li>\n<li>b</li></ul>"));

    QTest::keyClick(editor.view, Qt::Key_End, Qt::ControlModifier);
    QTest::keyClick(editor.view, Qt::Key_Tab);
    QCOMPARE(editor.Text(), QStringLiteral("<ul><li>a<ul><li>b</li></ul></li></ul>"));

    QTest::keyClick(editor.view, Qt::Key_Tab, Qt::ShiftModifier);
    QCOMPARE(editor.Text(), QStringLiteral("<ul><li>a</li>\n<li>b</li></ul>"));
}

void tst_WbRichEditorFormats::insertsATableAndChangesItsRowsAndColumns()
{
    Editor editor;
    auto* picker = editor.widget.findChild<QWidget*>(QStringLiteral("tableSizePicker"));
    QVERIFY(picker);
    QTest::keyClick(picker, Qt::Key_Left);
    QTest::keyClick(picker, Qt::Key_Return);
    QTextTable* table = editor.view->textCursor().currentTable();
    QVERIFY(table);
    QCOMPARE(table->rows(), 3);
    QCOMPARE(table->columns(), 2);

    editor.Press(QStringLiteral("tableRowBelow"));
    editor.Press(QStringLiteral("tableColumnRight"));
    QCOMPARE(table->rows(), 4);
    QCOMPARE(table->columns(), 3);

    editor.Press(QStringLiteral("tableRemoveRow"));
    editor.Press(QStringLiteral("tableRemoveColumn"));
    QCOMPARE(editor.Text().count(QLatin1String("<tr>")), 3);
    QCOMPARE(editor.Text().count(QLatin1String("<td>")), 6);

    editor.view->setTextCursor(table->cellAt(0, 0).firstCursorPosition());
    editor.Press(QStringLiteral("tableRemove"));
    QVERIFY(!editor.Text().contains(QLatin1String("<table")));
}

void tst_WbRichEditorFormats::movesThroughTableCellsWithTab()
{
    Editor editor;
    editor.widget.Init(QStringLiteral("<table><tr><td>a</td><td>b</td></tr></table>"));
    QTextCursor cursor(editor.view->document());
    cursor.movePosition(QTextCursor::Down);
    editor.view->setTextCursor(cursor);
    QTextTable* table = editor.view->textCursor().currentTable();
    QVERIFY(table);

    QTest::keyClick(editor.view, Qt::Key_Tab);
    QCOMPARE(table->cellAt(editor.view->textCursor()).column(), 1);

    QTest::keyClick(editor.view, Qt::Key_Tab); // behind the last cell: a new row
    QCOMPARE(table->rows(), 2);
}

RPA_TEST_MAIN(tst_WbRichEditorFormats)

#include "tst_wbricheditor_formats.moc"
