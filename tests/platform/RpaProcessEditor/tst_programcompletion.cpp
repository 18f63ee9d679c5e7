// SPDX-License-Identifier: Apache-2.0

#include "CodeAuthor.h"
#include "TestApp.h"

#include <WbBaseUI/WbEditHistory.h>
#include <WbBaseUI/WbTheme.h>

#include <QAction>
#include <QLineEdit>
#include <QTest>

#include <memory>

// Completions and arguments in the program editor, by keys, with the real jedi.
class tst_ProgramCompletion : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { WbTheme::Instance()->Apply(WbTheme::Scheme::Light); }
    void offersNamesBehindADot();
    void filtersWhatIsTyped();
    void takesANameByKey_data();
    void takesANameByKey();
    void takesANameInOneStep();
    void movesTheSelection();
    void takesANameByMouse();
    void closesByEscapeUntilTheNextName();
    void breaksTheLineBehindAWrittenName();
    void breaksTheLineWhenNamesOnlyContainWhatIsWritten();
    void opensByKeyOnly_data();
    void opensByKeyOnly();
    void offersNamesInChinese();
    void dropsAnAnswerForAnOlderText();
    void closesWhenTheCursorLeaves();
    void closesWithTheFocus();
    void survivesThePageClosingWhileItAsks();
    void staysQuietInComments();
    void showsTheCurrentArgument();
    void closesTheTipBehindTheCall();
    void escapeClosesTheListBeforeTheTip();
    void listsItsKeys();
};

void tst_ProgramCompletion::offersNamesBehindADot()
{
    CodeAuthor author(QStringLiteral("import os\nos"));

    author.Write(QStringLiteral("."));

    QTRY_VERIFY_WITH_TIMEOUT(author.Offers(QStringLiteral("listdir")), CodeAuthor::patienceMs);
    QVERIFY(!author.Offers(QStringLiteral("__name__")));
    QVERIFY(author.edit->hasFocus());
}

void tst_ProgramCompletion::filtersWhatIsTyped()
{
    CodeAuthor author(QStringLiteral("import os\nos"));
    author.Write(QStringLiteral("."));
    QTRY_VERIFY_WITH_TIMEOUT(author.Offers(QStringLiteral("listdir")), CodeAuthor::patienceMs);

    author.Write(QStringLiteral("li"));
    // At once: nobody is asked.
    QCOMPARE(author.Selected(), QStringLiteral("linesep"));
    QVERIFY(author.Offers(QStringLiteral("listdir")));
    QVERIFY(!author.Offers(QStringLiteral("getcwd")));

    author.Key(Qt::Key_Backspace);
    QVERIFY(author.Offers(QStringLiteral("linesep")));
    author.Write(QStringLiteral("zzz"));
    QVERIFY(!author.IsListShown());
}

void tst_ProgramCompletion::takesANameByKey_data()
{
    QTest::addColumn<Qt::Key>("key");

    QTest::newRow("Enter") << Qt::Key_Return;
    QTest::newRow("Enter of the number block") << Qt::Key_Enter;
    QTest::newRow("Tab") << Qt::Key_Tab;
}

void tst_ProgramCompletion::takesANameByKey()
{
    QFETCH(Qt::Key, key);
    CodeAuthor author(QStringLiteral("import os\nos|\nlast"));
    author.Write(QStringLiteral(".listd"));
    QTRY_COMPARE_WITH_TIMEOUT(author.Selected(), QStringLiteral("listdir"), CodeAuthor::patienceMs);

    author.Key(key);

    QCOMPARE(author.Text(), QStringLiteral("import os\nos.listdir\nlast"));
    QCOMPARE(author.TextBeforeCursor(), QStringLiteral("import os\nos.listdir"));
    QVERIFY(!author.IsListShown());
    QCOMPARE(EditorFixture::Main(author.app)->GetProgramText(), author.Text());
}

void tst_ProgramCompletion::takesANameInOneStep()
{
    CodeAuthor author(QStringLiteral("import os\nos.|"));
    author.Write(QStringLiteral("LISTD")); // its own case is another one
    QTRY_COMPARE_WITH_TIMEOUT(author.Selected(), QStringLiteral("listdir"), CodeAuthor::patienceMs);
    author.Key(Qt::Key_Return);
    QCOMPARE(author.Text(), QStringLiteral("import os\nos.listdir"));

    author.Key(Qt::Key_Z, Qt::ControlModifier);

    QCOMPARE(author.Text(), QStringLiteral("import os\nos.LISTD"));
}

void tst_ProgramCompletion::movesTheSelection()
{
    CodeAuthor author(QStringLiteral("import os\nos.|"));
    author.Write(QStringLiteral("li"));
    QTRY_COMPARE_WITH_TIMEOUT(author.Selected(), QStringLiteral("linesep"), CodeAuthor::patienceMs);
    const QStringList offered = author.Offered();

    author.Key(Qt::Key_Down);
    QCOMPARE(author.Selected(), offered.at(1));
    author.Key(Qt::Key_Up);
    author.Key(Qt::Key_Up);
    QCOMPARE(author.Selected(), offered.first());
    author.Key(Qt::Key_PageDown);
    const QString selected = author.Selected();
    QVERIFY(selected != offered.first());
    author.Key(Qt::Key_Return);

    QCOMPARE(author.Text(), QStringLiteral("import os\nos.") + selected); // the keys were the list's
}

void tst_ProgramCompletion::takesANameByMouse()
{
    CodeAuthor author(QStringLiteral("import os\nos.|"));
    author.Write(QStringLiteral("listd"));
    QTRY_COMPARE_WITH_TIMEOUT(author.Selected(), QStringLiteral("listdir"), CodeAuthor::patienceMs);

    const QRect row = author.List()->visualRect(author.List()->model()->index(0, 0));
    QTest::mouseClick(author.List()->viewport(), Qt::LeftButton, Qt::NoModifier, row.center());

    QCOMPARE(author.Text(), QStringLiteral("import os\nos.listdir"));
    QVERIFY(author.edit->hasFocus());
}

void tst_ProgramCompletion::closesByEscapeUntilTheNextName()
{
    CodeAuthor author(QStringLiteral("import os\nos.|"));
    author.Write(QStringLiteral("li"));
    QTRY_VERIFY_WITH_TIMEOUT(author.IsListShown(), CodeAuthor::patienceMs);

    author.Key(Qt::Key_Escape);
    QVERIFY(!author.IsListShown());
    author.Write(QStringLiteral("s"));
    QVERIFY(!author.IsListShown());

    author.Write(QStringLiteral(" + os."));
    QTRY_VERIFY_WITH_TIMEOUT(author.Offers(QStringLiteral("listdir")), CodeAuthor::patienceMs);
}

void tst_ProgramCompletion::breaksTheLineBehindAWrittenName()
{
    CodeAuthor author(QStringLiteral("listing = 1\nlistings = 2\n|"));
    author.Write(QStringLiteral("listing"));
    QTRY_COMPARE_WITH_TIMEOUT(author.Selected(), QStringLiteral("listing"), CodeAuthor::patienceMs);

    author.Key(Qt::Key_Return);

    QCOMPARE(author.Text(), QStringLiteral("listing = 1\nlistings = 2\nlisting\n"));
    QVERIFY(!author.IsListShown());
}

void tst_ProgramCompletion::breaksTheLineWhenNamesOnlyContainWhatIsWritten()
{
    CodeAuthor author(QStringLiteral("backlog = 1\n|"));
    author.Write(QStringLiteral("klo"));
    QTRY_COMPARE_WITH_TIMEOUT(author.Selected(), QStringLiteral("backlog"), CodeAuthor::patienceMs);

    author.Key(Qt::Key_Return);
    QCOMPARE(author.Text(), QStringLiteral("backlog = 1\nklo\n"));

    author.Write(QStringLiteral("klo"));
    QTRY_COMPARE_WITH_TIMEOUT(author.Selected(), QStringLiteral("backlog"), CodeAuthor::patienceMs);
    author.Key(Qt::Key_Down); // chosen
    author.Key(Qt::Key_Return);
    QCOMPARE(author.Text(), QStringLiteral("backlog = 1\nklo\nbacklog"));
}

void tst_ProgramCompletion::opensByKeyOnly_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("name");

    QTest::newRow("where nothing is written") << QStringLiteral("|") << QStringLiteral("print");
    QTest::newRow("in an old name") << QStringLiteral("pri|") << QStringLiteral("print");
    QTest::newRow("behind an old dot") << QStringLiteral("rpa.|") << QStringLiteral("log");
}

void tst_ProgramCompletion::opensByKeyOnly()
{
    QFETCH(QString, text);
    QFETCH(QString, name);
    CodeAuthor author(text);
    QVERIFY(!author.IsListShown());

    author.Key(Qt::Key_Space, Qt::ControlModifier);

    QTRY_VERIFY_WITH_TIMEOUT(author.Offers(name), CodeAuthor::patienceMs);
}

void tst_ProgramCompletion::offersNamesInChinese()
{
    CodeAuthor author(QStringLiteral("订单数量 = 3\n订单金额 = 4\n|"));

    author.Write(QStringLiteral("订单金"));

    QTRY_COMPARE_WITH_TIMEOUT(author.Offered(), QStringList{QStringLiteral("订单金额")},
                              CodeAuthor::patienceMs);
    author.Key(Qt::Key_Return);
    QCOMPARE(author.Text(), QStringLiteral("订单数量 = 3\n订单金额 = 4\n订单金额"));
}

void tst_ProgramCompletion::dropsAnAnswerForAnOlderText()
{
    CodeAuthor author(QStringLiteral("import os\nos|"));

    // Before any answer can come, what stands in front of the dot is another thing.
    author.Write(QStringLiteral("."));
    author.Key(Qt::Key_Backspace);
    author.Key(Qt::Key_Backspace);
    author.Key(Qt::Key_Backspace);
    author.Write(QStringLiteral("rpa."));

    QTRY_VERIFY_WITH_TIMEOUT(author.Offers(QStringLiteral("table_rows")), CodeAuthor::patienceMs);
    QVERIFY(!author.Offers(QStringLiteral("listdir")));
}

void tst_ProgramCompletion::closesWhenTheCursorLeaves()
{
    CodeAuthor author(QStringLiteral("import os\nos.|"));
    author.Write(QStringLiteral("li"));
    QTRY_VERIFY_WITH_TIMEOUT(author.IsListShown(), CodeAuthor::patienceMs);

    author.Key(Qt::Key_Home);

    QVERIFY(!author.IsListShown());
}

void tst_ProgramCompletion::closesWithTheFocus()
{
    CodeAuthor author(QStringLiteral("import os\nos.|"));
    author.Write(QStringLiteral("li"));
    QTRY_VERIFY_WITH_TIMEOUT(author.IsListShown(), CodeAuthor::patienceMs);

    author.Key(Qt::Key_F, Qt::ControlModifier);

    QVERIFY(!author.edit->hasFocus());
    QVERIFY(!author.IsListShown());
}

void tst_ProgramCompletion::survivesThePageClosingWhileItAsks()
{
    auto first = std::make_unique<CodeAuthor>(QStringLiteral("import os\nos|"));
    first->Write(QStringLiteral("."));
    first->Key(Qt::Key_F12);
    first.reset();

    CodeAuthor second(QStringLiteral("rpa|"));
    second.Write(QStringLiteral("."));

    QTRY_VERIFY_WITH_TIMEOUT(second.Offers(QStringLiteral("log")), CodeAuthor::patienceMs);
}

void tst_ProgramCompletion::staysQuietInComments()
{
    CodeAuthor author(QStringLiteral("# |\n"));
    author.Write(QStringLiteral("pri"));
    author.Key(Qt::Key_End);
    author.Key(Qt::Key_Down);

    author.Write(QStringLiteral("pri"));
    // An answer to the first would have come before.
    QTRY_VERIFY_WITH_TIMEOUT(author.Offers(QStringLiteral("print")), CodeAuthor::patienceMs);

    author.Key(Qt::Key_Escape);
    author.Key(Qt::Key_Up);
    author.Key(Qt::Key_Space, Qt::ControlModifier);
    author.Key(Qt::Key_Space, Qt::ControlModifier | Qt::ShiftModifier);
    QVERIFY(!author.IsListShown());
}

void tst_ProgramCompletion::showsTheCurrentArgument()
{
    CodeAuthor author(QStringLiteral("rpa.browser_input|"));

    author.Write(QStringLiteral("("));
    QTRY_VERIFY_WITH_TIMEOUT(author.Tip()->isVisible(), CodeAuthor::patienceMs);
    QVERIFY2(author.Tip()->text().contains(QStringLiteral("<b>element: str</b>")),
             qPrintable(author.Tip()->text()));
    QVERIFY(author.Tip()->text().contains(QStringLiteral("在网页的输入框中填写文字")));

    author.Write(QStringLiteral("'a', "));
    QTRY_VERIFY_WITH_TIMEOUT(author.Tip()->text().contains(QStringLiteral("<b>text: Any</b>")),
                             CodeAuthor::patienceMs);
}

void tst_ProgramCompletion::closesTheTipBehindTheCall()
{
    CodeAuthor author(QStringLiteral("rpa.log|"));
    author.Write(QStringLiteral("("));
    QTRY_VERIFY_WITH_TIMEOUT(author.Tip()->isVisible(), CodeAuthor::patienceMs);

    author.Write(QStringLiteral("1)"));

    QTRY_VERIFY_WITH_TIMEOUT(!author.Tip()->isVisible(), CodeAuthor::patienceMs);
}

void tst_ProgramCompletion::escapeClosesTheListBeforeTheTip()
{
    CodeAuthor author(QStringLiteral("rpa.log|"));
    author.Write(QStringLiteral("("));
    QTRY_VERIFY_WITH_TIMEOUT(author.Tip()->isVisible(), CodeAuthor::patienceMs);
    author.Write(QStringLiteral("pri"));
    QTRY_VERIFY_WITH_TIMEOUT(author.IsListShown() && author.Tip()->isVisible(), CodeAuthor::patienceMs);

    author.Key(Qt::Key_Escape);
    QVERIFY(!author.IsListShown());
    QVERIFY(author.Tip()->isVisible());
    author.Key(Qt::Key_Escape);

    QVERIFY(!author.Tip()->isVisible());
}

// The workstation lists actions that have a text, with their keys.
void tst_ProgramCompletion::listsItsKeys()
{
    const CodeAuthor author{QString()};
    QHash<QString, QKeySequence> keys;
    const auto actions = author.page.actions();
    for (const QAction* action : actions)
        keys.insert(action->text(), action->shortcut());

    QCOMPARE(keys.value(QStringLiteral("补全名称")), QKeySequence(Qt::CTRL + Qt::Key_Space));
    QCOMPARE(keys.value(QStringLiteral("参数提示")), QKeySequence(Qt::CTRL + Qt::SHIFT + Qt::Key_Space));
    QCOMPARE(keys.value(QStringLiteral("名称的说明")), QKeySequence(Qt::CTRL + Qt::Key_I));
    QCOMPARE(keys.value(QStringLiteral("转到定义")), QKeySequence(Qt::Key_F12));
    QCOMPARE(keys.value(QStringLiteral("重命名…")), QKeySequence(Qt::Key_F2));
}

RPA_TEST_MAIN(tst_ProgramCompletion)

#include "tst_programcompletion.moc"
