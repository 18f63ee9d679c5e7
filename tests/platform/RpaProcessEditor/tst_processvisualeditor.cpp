#include "EditorFixture.h"
#include "ModalDriver.h"
#include "TestApp.h"

#include <OxBase/OxBlocker.h>
#include <RpaEngineCore/IRpaDebugger.h>
#include <RpaEngineModule/RpaEngineModule.h>
#include <RpaProcessEditor/ProcessVisualEditorWidget.h>

#include <QAction>
#include <QClipboard>
#include <QComboBox>
#include <QDropEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTabBar>
#include <QTest>
#include <QTimer>
#include <QToolButton>
#include <QTreeView>
#include <QTreeWidget>

using namespace EditorFixture;

namespace
{
// "a b(c d) e"
QVector<RpaStatement> SomeStatements()
{
    RpaStatement block = Statement(QStringLiteral("t-if"), QStringLiteral("b"),
                                   {Log(QStringLiteral("c")), Log(QStringLiteral("d"))});
    block.arguments.insert(QStringLiteral("condition"), QStringLiteral("x > 1"));
    return {Log(QStringLiteral("a")), block, Log(QStringLiteral("e"))};
}

const QVector<RpaStatement> noStatements;

struct Editor
{
    explicit Editor(const QVector<RpaStatement>& statements = SomeStatements()) : app(App(statements))
    {
        widget.resize(1280, 640);
        widget.SetRpaAppData(app);
        widget.show();
        widget.activateWindow();
        if (!QTest::qWaitForWindowActive(&widget))
            QTest::qFail("the window never became active", __FILE__, __LINE__);
        view = widget.findChild<QTreeView*>(QStringLiteral("statementView"));
        view->setFocus();
    }

    template <typename Widget>
    Widget* Find(const QString& name) const
    {
        return widget.findChild<Widget*>(name);
    }

    // The editor inside the field of an argument.
    template <typename Widget>
    Widget* Field(const QString& argument) const
    {
        const QWidget* field = widget.findChild<QWidget*>(QStringLiteral("field_") + argument);
        return field ? field->findChild<Widget*>(QStringLiteral("editor")) : nullptr;
    }

    void Key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(view, key, modifiers);
    }

    QModelIndex IndexOf(const QString& id, int column = 1) const
    {
        const QModelIndexList found = view->model()->match(view->model()->index(0, 1), Qt::UserRole, id, 1,
                                                           Qt::MatchExactly | Qt::MatchRecursive);
        return found.isEmpty() ? QModelIndex() : found.first().siblingAtColumn(column);
    }

    void Click(const QString& id, Qt::KeyboardModifiers modifiers = Qt::NoModifier, int column = 1)
    {
        view->scrollTo(IndexOf(id));
        const QRect rect = view->visualRect(IndexOf(id, column));
        QTest::mouseClick(view->viewport(), Qt::LeftButton, modifiers, rect.center());
    }

    QString Shown() const { return Outline(*Main(app)); }
    const RpaStatementNode* Node(const QString& id) const { return Main(app)->Find(id); }

    RpaAppDataPtr app;
    ProcessVisualEditorWidget widget;
    QTreeView* view = nullptr;
};

bool DropOn(QTreeView& view, QMimeData& mime, const QPoint& place, Qt::DropAction action)
{
    QDragEnterEvent enter(place, action, &mime, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(view.viewport(), &enter);
    QDragMoveEvent move(place, action, &mime, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(view.viewport(), &move);
    QDropEvent drop(place, action, &mime, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(view.viewport(), &drop);
    return drop.isAccepted();
}
} // namespace

class tst_ProcessVisualEditor : public QObject
{
    Q_OBJECT

private slots:
    void opensTheMainProcessWithoutMarkingTheApp();
    void saysWhatToDoFirst();
    void isEmptyWithoutAnApp();
    void addsACommandByDoubleClick();
    void searchesCommands_data();
    void searchesCommands();
    void addsACommandThroughQuickSearch();
    void offersTheCommandOfThatVeryTitleFirst();
    void putsNewStatementsWhereTheAuthorIs();
    void putsElseBehindTheBlockItContinues();
    void acceptsACommandDroppedBetweenStatements();
    void movesStatementsByDropping();
    void deletesAndUndoes();
    void copiesAndPastesBetweenApps();
    void cutsAndPastes();
    void duplicatesTheSelection();
    void commentsOutAndBack();
    void movesWithAltArrows();
    void setsBreakpointsByKeyAndInTheGutter();
    void findsStatementsInBothDirections();
    void editsArgumentsAsTyped();
    void undoesTypingInOneField();
    void turnsALeadingEqualsSignIntoAnExpression();
    void keepsALeadingQuoteLiteral();
    void tellsWhatIsWrongWithAnArgument();
    void offersChoicesProcessesAndSwitches();
    void editsOutputAndNote();
    void saysHowManyAreSelected();
    void addsRenamesAndDeletesProcesses();
    void refusesBlankAndTakenProcessNames();
    void keepsTheMainProcessFirst();
    void switchesToTheMainProcess();
    void showsTheProcessThatAnUndoneStepBelongsTo();
    void forgetsUndoWithAnotherApp();
    void followsAModelThatIsReadAnew();
    void findsReferencesToDisabledStatements();
    void showsFindingsAndGoesThere();
    void showsFindingsWithTheirWholeTexts();
    void keepsToolsAndTabNamesWholeBesideTheBrowser();
    void movesTheToolsBelowTheTabsRatherThanHideATab();
    void hearsTheDebugger();
    void asksToSaveOnControlS();
    void asksForNoSaveWhileABlockingSaveWaits();
    void keepsStatementsOfUnknownCommands();
};

void tst_ProcessVisualEditor::opensTheMainProcessWithoutMarkingTheApp()
{
    Editor editor;

    QCOMPARE(editor.view->model()->rowCount(), 3);
    QVERIFY(editor.IndexOf(QStringLiteral("d")).isValid());
    QVERIFY(editor.view->visualRect(editor.IndexOf(QStringLiteral("d"))).isValid()); // opened
    QVERIFY(!editor.app->GetModified());
}

void tst_ProcessVisualEditor::saysWhatToDoFirst()
{
    Editor empty(noStatements);
    const QImage withHint = empty.view->viewport()->grab().toImage();
    empty.widget.SetRpaAppData(nullptr);

    QVERIFY(empty.view->viewport()->grab().toImage() != withHint);
}

void tst_ProcessVisualEditor::isEmptyWithoutAnApp()
{
    Editor editor;

    editor.widget.SetRpaAppData(nullptr);
    editor.Key(Qt::Key_Return);
    editor.Key(Qt::Key_Delete);
    editor.widget.SwitchMainPage();
    QList<RpaCheckInfo> list;

    QVERIFY(!editor.widget.CheckComment(list));
    QCOMPARE(editor.view->model()->rowCount(), 0);
    QCOMPARE(editor.Shown(), QStringLiteral("a b(c d) e"));
}

void tst_ProcessVisualEditor::addsACommandByDoubleClick()
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

void tst_ProcessVisualEditor::searchesCommands_data()
{
    QTest::addColumn<QString>("words");
    QTest::addColumn<QString>("command");

    QTest::newRow("name") << QStringLiteral("t-read") << QStringLiteral("t-read");
    QTest::newRow("keyword and group") << QStringLiteral("print 测试") << QStringLiteral("t-log");
    QTest::newRow("title") << QStringLiteral("读取文件") << QStringLiteral("t-read");
    QTest::newRow("nothing") << QStringLiteral("zzzz") << QString();
}

void tst_ProcessVisualEditor::searchesCommands()
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

void tst_ProcessVisualEditor::addsACommandThroughQuickSearch()
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

void tst_ProcessVisualEditor::offersTheCommandOfThatVeryTitleFirst()
{
    Editor editor;
    editor.Click(QStringLiteral("a"));

    editor.Key(Qt::Key_Return);
    auto* edit = editor.Find<QLineEdit>(QStringLiteral("lineEditQuickPick"));
    edit->setText(QStringLiteral("计算")); // "计算项数" begins with it and comes earlier in the catalogue
    QTest::keyClick(edit, Qt::Key_Return);

    QCOMPARE(Main(editor.app)->GetRoot()->GetChild(1)->GetCommand(), QStringLiteral("number.calculate"));
}

void tst_ProcessVisualEditor::putsNewStatementsWhereTheAuthorIs()
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

void tst_ProcessVisualEditor::putsElseBehindTheBlockItContinues()
{
    Editor editor;
    editor.Click(QStringLiteral("d"));

    editor.Key(Qt::Key_Return);
    auto* edit = editor.Find<QLineEdit>(QStringLiteral("lineEditQuickPick"));
    QTest::keyClicks(edit, QStringLiteral("t-else"));
    QTest::keyClick(edit, Qt::Key_Return);

    QCOMPARE(Main(editor.app)->GetRoot()->GetChild(2)->GetCommand(), QStringLiteral("t-else"));
}

void tst_ProcessVisualEditor::acceptsACommandDroppedBetweenStatements()
{
    Editor editor;
    QMimeData mime;
    mime.setData(QStringLiteral("application/x-rpa-command"), "t-wait");
    const QPoint belowA =
        editor.view->visualRect(editor.IndexOf(QStringLiteral("a"))).bottomLeft() + QPoint(40, -1);

    QVERIFY(DropOn(*editor.view, mime, belowA, Qt::CopyAction));

    QCOMPARE(Main(editor.app)->GetRoot()->GetChild(1)->GetCommand(), QStringLiteral("t-wait"));
}

void tst_ProcessVisualEditor::movesStatementsByDropping()
{
    Editor editor;
    const std::unique_ptr<QMimeData> mime(
        editor.view->model()->mimeData({editor.IndexOf(QStringLiteral("e"))}));
    const QPoint onB = editor.view->visualRect(editor.IndexOf(QStringLiteral("b"))).center();

    QVERIFY(DropOn(*editor.view, *mime, onB, Qt::MoveAction));
    QCOMPARE(editor.Shown(), QStringLiteral("a b(c d e)"));

    editor.Key(Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(editor.Shown(), QStringLiteral("a b(c d) e"));
}

void tst_ProcessVisualEditor::deletesAndUndoes()
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

void tst_ProcessVisualEditor::copiesAndPastesBetweenApps()
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

void tst_ProcessVisualEditor::cutsAndPastes()
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

void tst_ProcessVisualEditor::duplicatesTheSelection()
{
    Editor editor;
    editor.Click(QStringLiteral("c"));

    editor.Key(Qt::Key_D, Qt::ControlModifier);

    QCOMPARE(editor.Node(QStringLiteral("b"))->GetChildCount(), 3);
    QCOMPARE(editor.Node(QStringLiteral("b"))->GetChild(1)->GetArgument(QStringLiteral("text")),
             QStringLiteral("c"));
}

void tst_ProcessVisualEditor::commentsOutAndBack()
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

void tst_ProcessVisualEditor::movesWithAltArrows()
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

void tst_ProcessVisualEditor::setsBreakpointsByKeyAndInTheGutter()
{
    Editor editor;
    editor.Click(QStringLiteral("c"));

    editor.Key(Qt::Key_F9);
    QVERIFY(editor.Node(QStringLiteral("c"))->GetValues().breakpoint);

    editor.Click(QStringLiteral("c"), {}, 0);
    QVERIFY(!editor.Node(QStringLiteral("c"))->GetValues().breakpoint);
}

void tst_ProcessVisualEditor::findsStatementsInBothDirections()
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

void tst_ProcessVisualEditor::editsArgumentsAsTyped()
{
    Editor editor;
    editor.Click(QStringLiteral("a"));
    auto* text = editor.Field<QLineEdit>(QStringLiteral("text"));
    QVERIFY(text);
    QCOMPARE(text->text(), QStringLiteral("a"));

    text->setFocus();
    QTest::keyClick(text, Qt::Key_End);
    QTest::keyClicks(text, QStringLiteral("bc"));

    QCOMPARE(editor.Node(QStringLiteral("a"))->GetArgument(QStringLiteral("text")), QStringLiteral("abc"));
    QVERIFY(text->hasFocus());
    QVERIFY(editor.app->GetModified());
}

void tst_ProcessVisualEditor::undoesTypingInOneField()
{
    Editor editor;
    editor.Click(QStringLiteral("a"));
    auto* text = editor.Field<QLineEdit>(QStringLiteral("text"));
    text->setFocus();
    QTest::keyClicks(text, QStringLiteral("xyz"));

    editor.view->setFocus();
    editor.Key(Qt::Key_Z, Qt::ControlModifier);

    QCOMPARE(editor.Node(QStringLiteral("a"))->GetArgument(QStringLiteral("text")), QStringLiteral("a"));
    QCOMPARE(editor.Field<QLineEdit>(QStringLiteral("text"))->text(), QStringLiteral("a"));
}

void tst_ProcessVisualEditor::turnsALeadingEqualsSignIntoAnExpression()
{
    Editor editor;
    editor.Click(QStringLiteral("a"));
    auto* text = editor.Field<QLineEdit>(QStringLiteral("text"));
    text->setFocus();
    text->selectAll();

    QTest::keyClicks(text, QStringLiteral("="));
    QTRY_COMPARE(editor.widget.findChildren<QLineEdit*>(QStringLiteral("editor")).size(), 1);
    auto* expression = editor.Field<QLineEdit>(QStringLiteral("text"));
    QVERIFY(expression->hasFocus());
    QTest::keyClicks(expression, QStringLiteral("1+2"));

    QCOMPARE(editor.Node(QStringLiteral("a"))->GetArgument(QStringLiteral("text")), QStringLiteral("=1+2"));
    QCOMPARE(expression->text(), QStringLiteral("1+2"));
}

void tst_ProcessVisualEditor::keepsALeadingQuoteLiteral()
{
    Editor editor;
    editor.Click(QStringLiteral("a"));
    auto* text = editor.Field<QLineEdit>(QStringLiteral("text"));
    text->setFocus();
    text->selectAll();

    QTest::keyClicks(text, QStringLiteral("'=s"));

    QCOMPARE(editor.Node(QStringLiteral("a"))->GetArgument(QStringLiteral("text")), QStringLiteral("''=s"));
    QCOMPARE(text->text(), QStringLiteral("'=s"));
}

void tst_ProcessVisualEditor::tellsWhatIsWrongWithAnArgument()
{
    RpaStatement wait = Statement(QStringLiteral("t-wait"), QStringLiteral("w"));
    Editor editor({wait, Statement(QStringLiteral("t-log"), QStringLiteral("l"))});
    const auto problem = [&editor](const char* field) {
        const auto* widget =
            editor.widget.findChild<QWidget*>(QLatin1String("field_") + QLatin1String(field));
        const auto* label = widget->findChild<QLabel*>(QStringLiteral("labelProblem"));
        return label->isVisible() ? label->text() : QString();
    };

    editor.Click(QStringLiteral("w"));
    QCOMPARE(problem("seconds"), QString());
    QTest::keyClicks(editor.Field<QLineEdit>(QStringLiteral("seconds")), QStringLiteral("wait["));
    QVERIFY(problem("seconds").contains(QStringLiteral("括号")));

    editor.Click(QStringLiteral("l"));
    QCOMPARE(problem("text"), QStringLiteral("必须填写"));
}

void tst_ProcessVisualEditor::offersChoicesProcessesAndSwitches()
{
    Editor editor({Statement(QStringLiteral("t-call"), QStringLiteral("p")),
                   Statement(QStringLiteral("t-wait"), QStringLiteral("w"))});

    editor.Click(QStringLiteral("p"));
    auto* process = editor.Field<QComboBox>(QStringLiteral("process"));
    QCOMPARE(process->count(), 2);
    process->setFocus();
    QTest::keyClick(process, Qt::Key_Down);
    QTest::keyClick(process, Qt::Key_Down);
    QCOMPARE(editor.Node(QStringLiteral("p"))->GetArgument(QStringLiteral("process")),
             QStringLiteral("子流程"));

    editor.Click(QStringLiteral("w"));
    auto* quiet = editor.Field<QComboBox>(QStringLiteral("quiet"));
    quiet->setFocus();
    QTest::keyClick(quiet, Qt::Key_Down);
    QCOMPARE(editor.Node(QStringLiteral("w"))->GetArgument(QStringLiteral("quiet")), QStringLiteral("true"));
}

void tst_ProcessVisualEditor::editsOutputAndNote()
{
    Editor editor({Statement(QStringLiteral("t-read"), QStringLiteral("r"))});
    editor.Click(QStringLiteral("r"));
    auto* output = editor.Find<QLineEdit>(QStringLiteral("lineEditOutput"));
    auto* problem = editor.Find<QLabel>(QStringLiteral("labelOutputProblem"));
    QVERIFY(problem->isVisible()); // the output is required

    QTest::keyClicks(output, QStringLiteral("9x"));
    QVERIFY(problem->isVisible());
    output->clear();
    QTest::keyClicks(output, QStringLiteral("x9"));
    QVERIFY(!problem->isVisible());
    QTest::keyClicks(editor.Find<QPlainTextEdit>(QStringLiteral("textEditNote")), QStringLiteral("why"));

    QCOMPARE(editor.Node(QStringLiteral("r"))->GetValues().output, QStringLiteral("x9"));
    QCOMPARE(editor.Node(QStringLiteral("r"))->GetValues().note, QStringLiteral("why"));
}

void tst_ProcessVisualEditor::saysHowManyAreSelected()
{
    Editor editor;
    editor.Click(QStringLiteral("a"));

    editor.Click(QStringLiteral("e"), Qt::ControlModifier);

    QVERIFY(!editor.Field<QWidget>(QStringLiteral("text")));
    const auto labels = editor.Find<QWidget>(QStringLiteral("propertyPanel"))->findChildren<QLabel*>();
    QVERIFY(std::any_of(labels.begin(), labels.end(),
                        [](const QLabel* label) { return label->text().contains(QStringLiteral("2")); }));
}

void tst_ProcessVisualEditor::addsRenamesAndDeletesProcesses()
{
    Editor editor;
    const ProcessDataManager& manager = *editor.app->GetProcessDataManager();
    auto* bar = editor.Find<QTabBar>(QStringLiteral("processTabBar"));
    ModalDriver modals;
    const auto enterName = [](const QString& name) {
        return [name](QWidget* dialog) {
            auto* edit = dialog->findChild<QLineEdit*>(QStringLiteral("lineEditProcessName"));
            edit->setText(name);
            QTest::keyClick(edit, Qt::Key_Return);
        };
    };
    modals.Then(enterName(QStringLiteral("登录")));
    modals.Then(enterName(QStringLiteral("登录系统")));
    modals.Then([](QWidget* box) { ModalDriver::Press(box, QStringLiteral("确定")); });

    QTest::mouseClick(editor.Find<QToolButton>(QStringLiteral("processAddButton")), Qt::LeftButton);
    QCOMPARE(manager.GetProcessNames().last(), QStringLiteral("登录"));
    QCOMPARE(bar->currentIndex(), 2);

    QTest::keyClick(bar, Qt::Key_F2);
    QCOMPARE(manager.GetProcessNames().last(), QStringLiteral("登录系统"));
    QCOMPARE(bar->tabText(2), QStringLiteral("登录系统"));

    QTest::keyClick(bar, Qt::Key_Delete);
    QCOMPARE(manager.GetCount(), 2);
    QVERIFY(editor.app->GetModified());
}

void tst_ProcessVisualEditor::refusesBlankAndTakenProcessNames()
{
    Editor editor;
    ModalDriver modals;
    QStringList problems;
    modals.Then([&problems](QWidget* dialog) {
        auto* edit = dialog->findChild<QLineEdit*>(QStringLiteral("lineEditProcessName"));
        auto* problem = dialog->findChild<QLabel*>(QStringLiteral("labelNameProblem"));
        for (const QString& name : {QStringLiteral("  "), QStringLiteral("子流程"), QStringLiteral("新的")}) {
            edit->setText(name);
            problems.append(problem->text());
        }
        ModalDriver::Reject(dialog);
    });

    QTest::mouseClick(editor.Find<QToolButton>(QStringLiteral("processAddButton")), Qt::LeftButton);

    QCOMPARE(problems, (QStringList{QStringLiteral("请填写名称"), QStringLiteral("名称已存在"), QString()}));
    QCOMPARE(editor.app->GetProcessDataManager()->GetCount(), 2);
}

void tst_ProcessVisualEditor::keepsTheMainProcessFirst()
{
    Editor editor;
    auto* bar = editor.Find<QTabBar>(QStringLiteral("processTabBar"));

    bar->moveTab(1, 0);

    QCOMPARE(editor.app->GetProcessDataManager()->GetProcessNameFirst(), QStringLiteral("主流程"));
    QCOMPARE(bar->tabText(0), QStringLiteral("主流程"));
}

void tst_ProcessVisualEditor::switchesToTheMainProcess()
{
    Editor editor;
    auto* bar = editor.Find<QTabBar>(QStringLiteral("processTabBar"));
    QTest::mouseClick(bar, Qt::LeftButton, {}, bar->tabRect(1).center());
    QCOMPARE(editor.view->model()->rowCount(), 0);

    editor.widget.SwitchMainPage();

    QCOMPARE(bar->currentIndex(), 0);
    QCOMPARE(editor.view->model()->rowCount(), 3);
}

void tst_ProcessVisualEditor::showsTheProcessThatAnUndoneStepBelongsTo()
{
    Editor editor;
    auto* bar = editor.Find<QTabBar>(QStringLiteral("processTabBar"));
    editor.Click(QStringLiteral("a"));
    editor.Key(Qt::Key_Delete);
    QTest::mouseClick(bar, Qt::LeftButton, {}, bar->tabRect(1).center());

    editor.view->setFocus();
    editor.Key(Qt::Key_Z, Qt::ControlModifier);

    QCOMPARE(bar->currentIndex(), 0);
    QCOMPARE(editor.view->currentIndex().data(Qt::UserRole).toString(), QStringLiteral("a"));
}

void tst_ProcessVisualEditor::forgetsUndoWithAnotherApp()
{
    Editor editor;
    editor.Click(QStringLiteral("a"));
    editor.Key(Qt::Key_Delete);
    const RpaAppDataPtr other = App(SomeStatements());

    editor.widget.SetRpaAppData(other);
    editor.Key(Qt::Key_Z, Qt::ControlModifier);

    QCOMPARE(editor.Shown(), QStringLiteral("b(c d) e"));
    QVERIFY(!other->GetModified());
}

void tst_ProcessVisualEditor::followsAModelThatIsReadAnew()
{
    Editor editor;
    const RpaAppDataPtr other = App({Log(QStringLiteral("n"))});

    QVERIFY(editor.app->GetProcessDataManager()->Parse(other->GetProcessDataManager()->ToJson()));

    QCOMPARE(editor.view->model()->rowCount(), 1);
    editor.view->setFocus();
    editor.Key(Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(editor.Shown(), QStringLiteral("n"));
}

void tst_ProcessVisualEditor::findsReferencesToDisabledStatements()
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

void tst_ProcessVisualEditor::showsFindingsAndGoesThere()
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

void tst_ProcessVisualEditor::showsFindingsWithTheirWholeTexts()
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

void tst_ProcessVisualEditor::keepsToolsAndTabNamesWholeBesideTheBrowser()
{
    Editor editor;
    for (const char* name : {"读取每日工时", "汇总到报表", "发送通知邮件"})
        editor.app->GetProcessDataManager()->AddProcess(QString::fromUtf8(name));

    editor.widget.resize(760, 480);

    const auto* bar = editor.Find<QWidget>(QStringLiteral("processToolBar"));
    const QList<QToolButton*> tools = bar->findChildren<QToolButton*>();
    QCOMPARE(tools.size(), 9);
    for (const QToolButton* tool : tools) {
        QTRY_VERIFY2(bar->rect().contains(tool->geometry()), qPrintable(tool->objectName()));
        QVERIFY(tool->width() >= tool->sizeHint().width());
    }
    auto* tabs = editor.Find<QTabBar>(QStringLiteral("processTabBar"));
    for (int i = 0; i < tabs->count(); ++i)
        QVERIFY(tabs->tabRect(i).width() > tabs->fontMetrics().horizontalAdvance(tabs->tabText(i)));
    tabs->setCurrentIndex(tabs->count() - 1);
    QTRY_VERIFY(tabs->rect().contains(tabs->tabRect(tabs->count() - 1).center()));
    const QRect view(editor.view->mapTo(&editor.widget, QPoint(0, 0)), editor.view->size());
    QVERIFY(editor.widget.rect().contains(view));
}

void tst_ProcessVisualEditor::movesTheToolsBelowTheTabsRatherThanHideATab()
{
    Editor editor;
    editor.widget.resize(1240, 480);
    const auto* tabs = editor.Find<QTabBar>(QStringLiteral("processTabBar"));
    const auto* bar = editor.Find<QWidget>(QStringLiteral("processToolBar"));
    const auto topOf = [&editor](const QWidget* part) { return part->mapTo(&editor.widget, QPoint()).y(); };
    QTRY_VERIFY(topOf(bar) < topOf(tabs) + tabs->height());

    for (const char* name : {"读取每日工时", "汇总到报表", "发送通知邮件", "整理附件"})
        editor.app->GetProcessDataManager()->AddProcess(QString::fromUtf8(name));

    QTRY_VERIFY(topOf(bar) >= topOf(tabs) + tabs->height());
    QTRY_VERIFY(tabs->rect().contains(tabs->tabRect(0)));
    QVERIFY(tabs->rect().contains(tabs->tabRect(tabs->count() - 1)));
}

void tst_ProcessVisualEditor::hearsTheDebugger()
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

void tst_ProcessVisualEditor::asksToSaveOnControlS()
{
    Editor editor;
    QSignalSpy saves(&editor.widget, &ProcessVisualEditorWidget::SigSaveCode);

    editor.Key(Qt::Key_S, Qt::ControlModifier);
    editor.Click(QStringLiteral("a"));
    auto* text = editor.Field<QLineEdit>(QStringLiteral("text"));
    text->setFocus();
    QTest::keyClick(text, Qt::Key_S, Qt::ControlModifier);

    QCOMPARE(saves.count(), 2);
}

void tst_ProcessVisualEditor::asksForNoSaveWhileABlockingSaveWaits()
{
    Editor editor;
    QSignalSpy saves(&editor.widget, &ProcessVisualEditorWidget::SigSaveCode);
    OxBlocker blocker;
    bool wasBlocking = false;
    QTimer::singleShot(0, &blocker, [&] {
        wasBlocking = OxBlocker::IsBlocking();
        editor.Find<QAction>(QStringLiteral("actionSave"))->trigger();
        blocker.Continue();
    });

    blocker.Block(5000);

    QVERIFY(wasBlocking);
    QCOMPARE(saves.count(), 0);
}

void tst_ProcessVisualEditor::keepsStatementsOfUnknownCommands()
{
    RpaStatement strange =
        Statement(QStringLiteral("from-the-future"), QStringLiteral("f"), {Log(QStringLiteral("g"))});
    strange.arguments.insert(QStringLiteral("x"), QStringLiteral("1"));
    Editor editor({strange});

    editor.Click(QStringLiteral("f"));
    editor.Key(Qt::Key_D, Qt::ControlModifier);

    QCOMPARE(Main(editor.app)->GetRoot()->GetChildCount(), 2);
    QCOMPARE(Main(editor.app)->GetRoot()->GetChild(1)->GetArgument(QStringLiteral("x")), QStringLiteral("1"));
    QCOMPARE(Main(editor.app)->GetRoot()->GetChild(1)->GetChildCount(), 1);
}

RPA_TEST_MAIN(tst_ProcessVisualEditor)

#include "tst_processvisualeditor.moc"
