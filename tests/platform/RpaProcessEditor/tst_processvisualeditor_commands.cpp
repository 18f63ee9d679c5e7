// SPDX-License-Identifier: Apache-2.0

#include "TestApp.h"
#include "VisualEditorFixture.h"

#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMimeData>
#include <QTest>
#include <QTreeView>

using namespace EditorFixture;

// Finding a command, and where its new statement goes.
class tst_ProcessVisualEditorCommands : public QObject
{
    Q_OBJECT

private slots:
    void addsACommandByDoubleClick();
    void searchesCommands_data();
    void searchesCommands();
    void saysThatNoCommandFits();
    void quickSearchStaysWhenNothingFits();
    void addsACommandThroughQuickSearch();
    void offersTheCommandOfThatVeryTitleFirst();
    void putsNewStatementsWhereTheAuthorIs();
    void putsElseBehindTheBlockItContinues();
    void acceptsACommandDroppedBetweenStatements();
};

void tst_ProcessVisualEditorCommands::addsACommandByDoubleClick()
{
    Editor editor(noStatements);
    auto* search = editor.Find<QLineEdit>(QStringLiteral("lineEditCommandSearch"));
    auto* list = editor.Find<QListView>(QStringLiteral("commandListView"));
    QTest::keyClicks(search, QStringLiteral("t-log"));
    const QRect rect = list->visualRect(list->currentIndex());

    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, rect.center());
    QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, rect.center());

    QCOMPARE(Main(editor.app)->GetStatementCount(), 1);
    QCOMPARE(Main(editor.app)->GetRoot()->GetChild(0)->GetArgument(QStringLiteral("level")),
             QStringLiteral("info"));
    QVERIFY(editor.app->GetModified());
}

void tst_ProcessVisualEditorCommands::searchesCommands_data()
{
    QTest::addColumn<QString>("words");
    QTest::addColumn<QString>("command");

    QTest::newRow("name") << QStringLiteral("t-read") << QStringLiteral("t-read");
    QTest::newRow("keyword and group") << QStringLiteral("print 测试") << QStringLiteral("t-log");
    QTest::newRow("title") << QStringLiteral("读取文件") << QStringLiteral("t-read");
    QTest::newRow("pinyin") << QStringLiteral("shaixuan") << QStringLiteral("rows.filter");
    QTest::newRow("initials") << QStringLiteral("scwj") << QStringLiteral("file.delete");
    QTest::newRow("other word") << QStringLiteral("过滤") << QStringLiteral("rows.filter");
    QTest::newRow("pinyin of another word") << QStringLiteral("quchong") << QStringLiteral("rows.unique");
    QTest::newRow("pinyin and word") << QStringLiteral("biaoge 排序") << QStringLiteral("rows.sort");
    QTest::newRow("nothing") << QStringLiteral("zzzz") << QString();
}

void tst_ProcessVisualEditorCommands::searchesCommands()
{
    QFETCH(QString, words);
    QFETCH(QString, command);
    Editor editor;
    auto* search = editor.Find<QLineEdit>(QStringLiteral("lineEditCommandSearch"));
    auto* list = editor.Find<QListView>(QStringLiteral("commandListView"));

    search->setText(words);

    const QModelIndexList found =
        list->model()->match(list->model()->index(0, 0), Qt::UserRole, command, 1, Qt::MatchExactly);
    QCOMPARE(!found.isEmpty(), !command.isEmpty());
    if (command.isEmpty())
        QCOMPARE(list->model()->rowCount(), 0);
}

void tst_ProcessVisualEditorCommands::saysThatNoCommandFits()
{
    Editor editor;
    auto* search = editor.Find<QLineEdit>(QStringLiteral("lineEditCommandSearch"));
    auto* list = editor.Find<QListView>(QStringLiteral("commandListView"));
    auto* nothing = editor.Find<QLabel>(QStringLiteral("labelNoCommand"));
    QVERIFY(!nothing->isVisible());

    QTest::keyClicks(search, QStringLiteral("zzzz"));
    QTest::keyClick(search, Qt::Key_Down);
    QTest::keyClick(search, Qt::Key_Return);

    QCOMPARE(nothing->text(), QStringLiteral("没有找到“zzzz”。可以换个说法，也可以输入拼音或首字母"));
    QVERIFY(nothing->isVisible() && !list->isVisible());
    QTRY_VERIFY(nothing->y() < search->geometry().bottom() + 20);
    QVERIFY(!editor.app->GetModified());

    QTest::keyClick(search, Qt::Key_Escape);
    QVERIFY(!nothing->isVisible() && list->isVisible());
}

void tst_ProcessVisualEditorCommands::quickSearchStaysWhenNothingFits()
{
    Editor editor;
    editor.Click(QStringLiteral("a"));
    editor.Key(Qt::Key_Return);
    auto* edit = editor.Find<QLineEdit>(QStringLiteral("lineEditQuickPick"));
    auto* nothing = editor.Find<QLabel>(QStringLiteral("labelNoQuickPick"));

    QTest::keyClicks(edit, QStringLiteral("qqqq"));
    QTest::keyClick(edit, Qt::Key_Return);

    QVERIFY(edit->isVisible() && nothing->isVisible());
    QTRY_VERIFY(nothing->y() < edit->geometry().bottom() + 20);
    QVERIFY(nothing->text().contains(QStringLiteral("“qqqq”")));
    QVERIFY(!editor.app->GetModified());

    edit->setText(QStringLiteral("px")); // "追加一行" has keywords that are read so, too
    QTest::keyClick(edit, Qt::Key_Return);
    QCOMPARE(Main(editor.app)->GetRoot()->GetChild(1)->GetCommand(), QStringLiteral("rows.sort"));
}

void tst_ProcessVisualEditorCommands::addsACommandThroughQuickSearch()
{
    Editor editor;
    editor.Click(QStringLiteral("a"));

    editor.Key(Qt::Key_Return);
    auto* edit = editor.Find<QLineEdit>(QStringLiteral("lineEditQuickPick"));
    QTRY_VERIFY(edit->isVisible());
    QTest::keyClicks(edit, QStringLiteral("t-wait"));
    QTest::keyClick(edit, Qt::Key_Return);

    QCOMPARE(Main(editor.app)->GetRoot()->GetChild(1)->GetCommand(), QStringLiteral("t-wait"));
    QVERIFY(!edit->isVisible());
    QVERIFY(editor.view->hasFocus());
}

void tst_ProcessVisualEditorCommands::offersTheCommandOfThatVeryTitleFirst()
{
    Editor editor;
    editor.Click(QStringLiteral("a"));

    editor.Key(Qt::Key_Return);
    auto* edit = editor.Find<QLineEdit>(QStringLiteral("lineEditQuickPick"));
    edit->setText(QStringLiteral("计算")); // "计算项数" begins with it and comes earlier in the catalogue
    QTest::keyClick(edit, Qt::Key_Return);

    QCOMPARE(Main(editor.app)->GetRoot()->GetChild(1)->GetCommand(), QStringLiteral("number.calculate"));
}

void tst_ProcessVisualEditorCommands::putsNewStatementsWhereTheAuthorIs()
{
    Editor editor;
    const auto addLog = [&editor] {
        editor.Key(Qt::Key_Return);
        auto* edit = editor.Find<QLineEdit>(QStringLiteral("lineEditQuickPick"));
        QTest::keyClicks(edit, QStringLiteral("t-log"));
        QTest::keyClick(edit, Qt::Key_Return);
    };

    editor.Click(QStringLiteral("b"));
    addLog();
    QCOMPARE(editor.Node(QStringLiteral("b"))->GetChildCount(), 3); // inside the open block, first
    QCOMPARE(editor.Node(QStringLiteral("c"))->GetRow(), 1);

    editor.Click(QStringLiteral("d"));
    addLog();
    QCOMPARE(editor.Node(QStringLiteral("b"))->GetChildCount(), 4);

    editor.Click(QStringLiteral("e"));
    addLog();
    QCOMPARE(Main(editor.app)->GetRoot()->GetChildCount(), 4);
}

void tst_ProcessVisualEditorCommands::putsElseBehindTheBlockItContinues()
{
    Editor editor;
    editor.Click(QStringLiteral("d"));

    editor.Key(Qt::Key_Return);
    auto* edit = editor.Find<QLineEdit>(QStringLiteral("lineEditQuickPick"));
    QTest::keyClicks(edit, QStringLiteral("t-else"));
    QTest::keyClick(edit, Qt::Key_Return);

    QCOMPARE(Main(editor.app)->GetRoot()->GetChild(2)->GetCommand(), QStringLiteral("t-else"));
}

void tst_ProcessVisualEditorCommands::acceptsACommandDroppedBetweenStatements()
{
    Editor editor;
    QMimeData mime;
    mime.setData(QStringLiteral("application/x-rpa-command"), "t-wait");
    const QPoint belowA =
        editor.view->visualRect(editor.IndexOf(QStringLiteral("a"))).bottomLeft() + QPoint(40, -1);

    QVERIFY(editor.Drop(mime, belowA, Qt::CopyAction));

    QCOMPARE(Main(editor.app)->GetRoot()->GetChild(1)->GetCommand(), QStringLiteral("t-wait"));
}

RPA_TEST_MAIN(tst_ProcessVisualEditorCommands)

#include "tst_processvisualeditor_commands.moc"
