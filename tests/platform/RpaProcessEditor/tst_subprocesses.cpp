// SPDX-License-Identifier: Apache-2.0

#include "ModalDriver.h"
#include "TestApp.h"
#include "ToastWatcher.h"
#include "VisualEditorFixture.h"

#include <QLineEdit>
#include <QTabBar>
#include <QTest>
#include <QTreeView>

using namespace EditorFixture;

namespace
{
constexpr Qt::KeyboardModifiers controlShift = Qt::ControlModifier | Qt::ShiftModifier;

RpaStatement Part(const char* command, const char* id, const QVector<RpaStatement>& children = {})
{
    return Statement(QLatin1String(command), QLatin1String(id), children);
}

RpaStatement Call(const char* id, const QString& process)
{
    RpaStatement call = Part("process.run", id);
    call.arguments.insert(QStringLiteral("process"), process);
    return call;
}

RpaStatement Disabled(RpaStatement statement)
{
    statement.enabled = false;
    return statement;
}

QStringList Names(const Editor& editor)
{
    return editor.app->GetProcessDataManager()->GetProcessNames();
}

RpaProcess* Process(const Editor& editor, int index)
{
    return editor.app->GetProcessDataManager()->GetProcess(index);
}

// The commands of a process in outline, "#" before disabled ones.
QString Commands(const RpaStatementNode& parent)
{
    QStringList parts;
    for (int row = 0; row < parent.GetChildCount(); ++row) {
        const RpaStatementNode& node = *parent.GetChild(row);
        QString part = node.GetCommand() + node.GetArgument(QStringLiteral("text"));
        if (!node.GetValues().enabled)
            part.prepend(QLatin1Char('#'));
        if (node.GetChildCount() > 0)
            part += QLatin1Char('(') + Commands(node) + QLatin1Char(')');
        parts.append(part);
    }
    return parts.join(QLatin1Char(' '));
}

void SelectAlso(Editor& editor, const QStringList& ids)
{
    for (const QString& id : ids)
        editor.Click(id, id == ids.first() ? Qt::NoModifier : Qt::ControlModifier);
}
} // namespace

// Statements that become a process of their own and come back.
class tst_SubProcesses : public QObject
{
    Q_OBJECT

private slots:
    void extractsTheSelection();
    void keepsWhatIsDisabledUnknownAndNested();
    void extractsNothingWithoutAName();
    void saysWhyItCannotBeExtracted_data();
    void saysWhyItCannotBeExtracted();
    void mayHoldItsOwnLoopAndBranches();
    void theDialogIsTakenAwayWithItsEditor();
    void putsAProcessInThePlaceOfItsCall();
    void aDisabledCallLeavesDisabledStatements();
    void comesBackAsItWas();
    void saysWhyItCannotBePutIn_data();
    void saysWhyItCannotBePutIn();
};

void tst_SubProcesses::extractsTheSelection()
{
    Editor editor;
    SelectAlso(editor, {QStringLiteral("a"), QStringLiteral("b")});
    ModalDriver modals;
    modals.Then([](QWidget* dialog) {
        auto* name = dialog->findChild<QLineEdit*>(QStringLiteral("lineEditProcessName"));
        QCOMPARE(name->text(), QStringLiteral("子流程1"));
        QCOMPARE(dialog->focusWidget(), name);
        QTest::keyClicks(name, QStringLiteral("login"));
        QTest::keyClick(name, Qt::Key_Return);
    });

    editor.Key(Qt::Key_X, controlShift);

    QCOMPARE(Names(editor),
             (QStringList{QStringLiteral("主流程"), QStringLiteral("子流程"), QStringLiteral("login")}));
    QCOMPARE(Outline(*Process(editor, 2)), QStringLiteral("a b(c d)"));
    const RpaStatementNode* call = Main(editor.app)->GetRoot()->GetChild(0);
    QCOMPARE(call->GetCommand(), QStringLiteral("process.run"));
    QCOMPARE(call->GetArgument(QStringLiteral("process")), QStringLiteral("login"));
    QCOMPARE(Main(editor.app)->GetRoot()->GetChildCount(), 2);
    QCOMPARE(editor.widget.GetShownProcess(), QStringLiteral("主流程"));
    QCOMPARE(editor.view->currentIndex().data(Qt::UserRole).toString(), call->GetId());
    const QVector<RpaStatement> extracted = Main(editor.app)->GetStatements();

    editor.widget.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&editor.widget));
    editor.view->setFocus();
    editor.Key(Qt::Key_Z, Qt::ControlModifier); // one step
    QCOMPARE(editor.Shown(), QStringLiteral("a b(c d) e"));
    QCOMPARE(Names(editor).size(), 2);
    QCOMPARE(editor.widget.GetShownProcess(), QStringLiteral("主流程"));
    QVERIFY(!editor.app->GetModified());

    editor.Key(Qt::Key_Y, Qt::ControlModifier);
    QCOMPARE(Main(editor.app)->GetStatements(), extracted);
    QCOMPARE(Outline(*Process(editor, 2)), QStringLiteral("a b(c d)"));
}

void tst_SubProcesses::keepsWhatIsDisabledUnknownAndNested()
{
    const QVector<RpaStatement> chosen{Disabled(Log(QStringLiteral("p"))), Part("of.tomorrow", "q"),
                                       Part("if", "i", {Log(QStringLiteral("x"))}), Part("else", "n")};
    Editor editor(chosen);
    SelectAlso(editor, {QStringLiteral("p"), QStringLiteral("q"), QStringLiteral("i"), QStringLiteral("n")});
    ModalDriver modals;
    modals.Then([](QWidget* dialog) { ModalDriver::Press(dialog, QStringLiteral("确定")); });

    editor.Key(Qt::Key_X, controlShift);

    QCOMPARE(Process(editor, 2)->GetStatements(), chosen);
    QCOMPARE(Commands(*Main(editor.app)->GetRoot()), QStringLiteral("process.run"));
}

void tst_SubProcesses::extractsNothingWithoutAName()
{
    Editor editor;
    editor.Click(QStringLiteral("a"));
    ModalDriver modals;
    modals.Then([](QWidget* dialog) { ModalDriver::Reject(dialog); });

    editor.Key(Qt::Key_X, controlShift);

    QCOMPARE(editor.Shown(), QStringLiteral("a b(c d) e"));
    QCOMPARE(Names(editor).size(), 2);
    QVERIFY(!editor.app->GetModified());
}

void tst_SubProcesses::saysWhyItCannotBeExtracted_data()
{
    QTest::addColumn<QStringList>("chosen");
    QTest::addColumn<QString>("reason");

    QTest::newRow("apart") << QStringList{QStringLiteral("l"), QStringLiteral("n")}
                           << "请选择同一层中相邻的语句";
    QTest::newRow("a branch without its block")
        << QStringList{QStringLiteral("n")} << "“否则”接着前面的步骤，请和那一步一起选择";
    QTest::newRow("a block without its branch")
        << QStringList{QStringLiteral("i")} << "后面的“否则”接着所选的步骤，请一起选择";
    QTest::newRow("the break of a loop")
        << QStringList{QStringLiteral("c")} << "“跳出循环”属于外面的循环，不能移到子流程中";
    QTest::newRow("the end of the process") << QStringList{QStringLiteral("i"), QStringLiteral("n")}
                                            << "“结束当前流程”移到子流程后只会结束子流程，请不要选择它";
}

void tst_SubProcesses::saysWhyItCannotBeExtracted()
{
    QFETCH(QStringList, chosen);
    QFETCH(QString, reason);
    Editor editor({Part("loop.count", "l", {Part("if", "c", {Part("loop.break", "x")})}),
                   Part("if", "i", {Part("process.return", "r")}), Part("else", "n")});
    SelectAlso(editor, chosen);
    const ToastWatcher toasts;

    editor.Key(Qt::Key_X, controlShift);

    QCOMPARE(toasts.GetTexts(), QStringList{reason});
    QCOMPARE(Names(editor).size(), 2);
    QVERIFY(!editor.app->GetModified());
}

void tst_SubProcesses::mayHoldItsOwnLoopAndBranches()
{
    Editor editor({Part("loop.count", "l", {Part("if", "c", {Part("loop.break", "x")})}),
                   Part("try", "t", {Disabled(Part("process.return", "r"))}), Part("except", "u")});
    SelectAlso(editor, {QStringLiteral("l"), QStringLiteral("t"), QStringLiteral("u")});
    ModalDriver modals;
    modals.Then([](QWidget* dialog) { ModalDriver::Press(dialog, QStringLiteral("确定")); });

    editor.Key(Qt::Key_X, controlShift);

    QCOMPARE(Outline(*Process(editor, 2)), QStringLiteral("l(c(x)) t(r) u"));
}

void tst_SubProcesses::theDialogIsTakenAwayWithItsEditor()
{
    auto editor = std::make_unique<Editor>();
    const RpaAppDataPtr app = editor->app;
    editor->Click(QStringLiteral("a"));
    ModalDriver modals;
    modals.Then([&editor](QWidget*) { editor.reset(); });

    editor->Key(Qt::Key_X, controlShift);

    QVERIFY(!editor);
    QCOMPARE(app->GetProcessDataManager()->GetCount(), 2);
}

void tst_SubProcesses::putsAProcessInThePlaceOfItsCall()
{
    Editor editor({Log(QStringLiteral("a")), Call("k", QStringLiteral("子流程")), Log(QStringLiteral("e"))});
    Process(editor, 1)->SetStatements(SomeStatements());
    editor.app->SetModified(false);
    editor.Click(QStringLiteral("k"));

    editor.Key(Qt::Key_V, controlShift);
    const QString inside = QStringLiteral("t-loga t-loga t-if(t-logc t-logd) t-loge t-loge");
    QCOMPARE(Commands(*Main(editor.app)->GetRoot()), inside);
    QCOMPARE(Outline(*Process(editor, 1)), QStringLiteral("a b(c d) e")); // it stays, with its ids
    QVERIFY(!Main(editor.app)->Find(QStringLiteral("c")));
    QCOMPARE(Names(editor).size(), 2);

    editor.Key(Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(editor.Shown(), QStringLiteral("a k e"));
    QVERIFY(!editor.app->GetModified());
    editor.Key(Qt::Key_Y, Qt::ControlModifier);
    QCOMPARE(Commands(*Main(editor.app)->GetRoot()), inside);
}

void tst_SubProcesses::aDisabledCallLeavesDisabledStatements()
{
    Editor editor({Disabled(Call("k", QStringLiteral("子流程")))});
    Process(editor, 1)->SetStatements({Log(QStringLiteral("s")), Disabled(Log(QStringLiteral("p")))});
    editor.Click(QStringLiteral("k"));

    editor.Key(Qt::Key_V, controlShift);

    QCOMPARE(Commands(*Main(editor.app)->GetRoot()), QStringLiteral("#t-logs #t-logp"));
}

void tst_SubProcesses::comesBackAsItWas()
{
    Editor editor;
    const QString before = Commands(*Main(editor.app)->GetRoot());
    SelectAlso(editor, {QStringLiteral("c"), QStringLiteral("d")});
    ModalDriver modals;
    modals.Then([](QWidget* dialog) { ModalDriver::Press(dialog, QStringLiteral("确定")); });
    editor.Key(Qt::Key_X, controlShift);
    QCOMPARE(Commands(*Main(editor.app)->GetRoot()), QStringLiteral("t-loga t-if(process.run) t-loge"));
    editor.widget.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&editor.widget));
    editor.view->setFocus();

    editor.Key(Qt::Key_V, controlShift);

    QCOMPARE(Commands(*Main(editor.app)->GetRoot()), before);
}

void tst_SubProcesses::saysWhyItCannotBePutIn_data()
{
    QTest::addColumn<QVector<RpaStatement>>("called");
    QTest::addColumn<QString>("chosen");
    QTest::addColumn<QString>("reason");

    const QVector<RpaStatement> logs{Log(QStringLiteral("s"))};
    QTest::newRow("no call") << logs << "a"
                             << "请选择一个“运行子流程”语句";
    QTest::newRow("no such process") << logs << "gone"
                                     << "没有流程“不在”";
    QTest::newRow("itself") << logs << "self"
                            << "流程不能展开到它自己里面";
    QTest::newRow("nothing in it") << noStatements << "k"
                                   << "流程“子流程”里面没有步骤";
    QTest::newRow("it ends itself") << QVector<RpaStatement>{Part("if", "i", {Part("process.return", "r")})}
                                    << "k"
                                    << "流程“子流程”中的“结束当前流程”展开后会结束外面的流程";
}

void tst_SubProcesses::saysWhyItCannotBePutIn()
{
    QFETCH(QVector<RpaStatement>, called);
    QFETCH(QString, chosen);
    QFETCH(QString, reason);
    Editor editor({Log(QStringLiteral("a")), Call("gone", QStringLiteral("不在")),
                   Call("self", QStringLiteral("主流程")), Call("k", QStringLiteral("子流程"))});
    Process(editor, 1)->SetStatements(called);
    editor.Click(chosen);
    const ToastWatcher toasts;

    editor.Key(Qt::Key_V, controlShift);

    QCOMPARE(toasts.GetTexts(), QStringList{reason});
    QCOMPARE(editor.Shown(), QStringLiteral("a gone self k"));
}

RPA_TEST_MAIN(tst_SubProcesses)

#include "tst_subprocesses.moc"
