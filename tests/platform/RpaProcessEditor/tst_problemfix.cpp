// SPDX-License-Identifier: Apache-2.0

#include "TestApp.h"
#include "VisualEditorFixture.h"

#include <RpaAppData/RpaAppDataNotify.h>
#include <RpaProblems/RpaProblemFinder.h>
#include <RpaProcessEditor/ProcessProgramEditorWidget.h>

#include <QSignalSpy>
#include <QTest>
#include <QTreeView>

using namespace EditorFixture;

namespace
{
RpaStatement Writes(const QString& id, const QMap<QString, QString>& arguments)
{
    RpaStatement statement = Statement(QStringLiteral("log"), id);
    statement.arguments = arguments;
    return statement;
}

RpaProblem FirstOf(const Editor& editor, const char* rule)
{
    const QVector<RpaProblem> problems = RpaProblemFinder::Find(RpaAppCopy::Of(*editor.app));
    for (const RpaProblem& problem : problems)
        if (problem.rule == QLatin1String(rule))
            return problem;
    return {};
}

void Undo(const Editor& editor)
{
    editor.view->setFocus();
    QTest::keySequence(editor.view, QKeySequence::Undo);
}
} // namespace

// Problems of processes, mended where their statements are edited.
class tst_ProblemFix : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { qRegisterMetaType<RpaAppData*>("RpaAppData*"); }
    void createsAVariableInOneStep();
    void removesAnArgumentInOneStep();
    void isMadeOnce();
    void isNotMadeOfAStatementThatIsGone();
    void editorsTellWhichAppTheyShow();
};

void tst_ProblemFix::createsAVariableInOneStep()
{
    Editor editor({Writes(QStringLiteral("a"), {{QStringLiteral("text"), QStringLiteral("=y")}})});

    QVERIFY(editor.widget.MakeFix(FirstOf(editor, "undefined-variable")));
    QCOMPARE(Main(editor.app)->GetStatementCount(), 2);
    QCOMPARE(FirstOf(editor, "undefined-variable").id, QString());
    QVERIFY(editor.app->GetModified());

    Undo(editor);
    QCOMPARE(Main(editor.app)->GetStatementCount(), 1);
}

void tst_ProblemFix::removesAnArgumentInOneStep()
{
    Editor editor({Writes(QStringLiteral("a"), {{QStringLiteral("text"), QStringLiteral("x")},
                                                {QStringLiteral("colour"), QStringLiteral("red")}})});

    QVERIFY(editor.widget.MakeFix(FirstOf(editor, "unknown-argument")));
    QVERIFY(!editor.Node(QStringLiteral("a"))->GetValues().arguments.contains(QStringLiteral("colour")));

    Undo(editor);
    QVERIFY(editor.Node(QStringLiteral("a"))->GetValues().arguments.contains(QStringLiteral("colour")));
}

void tst_ProblemFix::isMadeOnce()
{
    Editor editor({Writes(QStringLiteral("a"), {{QStringLiteral("text"), QStringLiteral("x")},
                                                {QStringLiteral("colour"), QStringLiteral("red")}})});
    const RpaProblem problem = FirstOf(editor, "unknown-argument");

    QVERIFY(editor.widget.MakeFix(problem));
    QVERIFY(!editor.widget.MakeFix(problem));
}

void tst_ProblemFix::isNotMadeOfAStatementThatIsGone()
{
    Editor editor({Writes(QStringLiteral("a"), {{QStringLiteral("text"), QStringLiteral("=y")}})});
    const RpaProblem problem = FirstOf(editor, "undefined-variable");
    Main(editor.app)->Take(QStringLiteral("a"));

    QVERIFY(!editor.widget.MakeFix(problem));
    QCOMPARE(Main(editor.app)->GetStatementCount(), 0);
}

void tst_ProblemFix::editorsTellWhichAppTheyShow()
{
    const QSignalSpy shown(RpaAppDataNotify::Instance(), &RpaAppDataNotify::SigShown);
    const Editor editor;
    QCOMPARE(shown.count(), 1);
    QCOMPARE(shown.at(0).at(0).value<RpaAppData*>(), editor.app.data());

    ProcessProgramEditorWidget program;
    program.SetRpaAppData(editor.app);
    QCOMPARE(shown.count(), 2);
    QCOMPARE(shown.at(1).at(0).value<RpaAppData*>(), editor.app.data());
    program.SetRpaAppData(nullptr);
    QCOMPARE(shown.count(), 2);
}

RPA_TEST_MAIN(tst_ProblemFix)
#include "tst_problemfix.moc"
