// SPDX-License-Identifier: Apache-2.0

#include "TestApp.h"
#include "VisualEditorFixture.h"

#include <RpaProcessData/ProcessDataManager.h>
#include <RpaProcessData/RpaProcessCheck.h>

#include <QTabBar>
#include <QTest>
#include <QTreeView>

using namespace EditorFixture;

namespace
{
RpaStatement Writes(const QString& id, const QString& text)
{
    RpaStatement statement = Log(id);
    statement.arguments.insert(QStringLiteral("text"), text);
    return statement;
}

RpaStatement Calls(const QString& id)
{
    RpaStatement statement = Statement(QStringLiteral("t-call"), id);
    statement.arguments.insert(QStringLiteral("process"), QStringLiteral("子流程"));
    return statement;
}

RpaStatement Sets(const QString& id, const QString& variable)
{
    RpaStatement statement = Statement(QStringLiteral("t-set"), id);
    statement.arguments = {{QStringLiteral("variable"), variable},
                           {QStringLiteral("value"), QStringLiteral("1")}};
    return statement;
}
} // namespace

// Marks of findings, and what becomes of them when their causes are mended.
class tst_MendedFindings : public QObject
{
    Q_OBJECT

private slots:
    void goWhenTheStatementIsMended();
    void goWhenAnotherStatementMendsThem();
    void goWhenTheStatementGoes();
    void aFailedStatementIsMarkedUntilItDoesSomethingElse();
    void ofAProcessThatIsRunByAnotherGoWithThatOne();

private:
    // Of the process that is shown, in the order of the tree.
    static QStringList Marked(const Editor& editor)
    {
        constexpr int findingRole = Qt::UserRole + 7;
        const ProcessDataManager* processes = editor.app->GetProcessDataManager();
        QStringList ids;
        processes->FindProcess(editor.widget.GetShownProcess())->ForEach([&](const RpaStatementNode& node) {
            if (!editor.IndexOf(node.GetId()).data(findingRole).toString().isEmpty())
                ids.append(node.GetId());
        });
        return ids;
    }
    static void Check(Editor& editor)
    {
        editor.widget.ShowCheckInfos(
            RpaProcessCheck(*editor.app->GetProcessDataManager()).Check(QStringLiteral("主流程")));
    }
};

void tst_MendedFindings::goWhenTheStatementIsMended()
{
    Editor editor(
        {Writes(QStringLiteral("u"), QStringLiteral("=x")), Writes(QStringLiteral("m"), QString())});
    Check(editor);
    QCOMPARE(Marked(editor), QStringList({QStringLiteral("u"), QStringLiteral("m")}));

    Main(editor.app)->SetArgument(QStringLiteral("u"), QStringLiteral("text"), QStringLiteral("fine"));
    QTRY_COMPARE(Marked(editor), QStringList({QStringLiteral("m")}));

    Main(editor.app)->SetArgument(QStringLiteral("m"), QStringLiteral("text"), QStringLiteral("fine, too"));
    QTRY_COMPARE(Marked(editor), QStringList());
}

void tst_MendedFindings::goWhenAnotherStatementMendsThem()
{
    Editor editor({Writes(QStringLiteral("u"), QStringLiteral("=x")),
                   Writes(QStringLiteral("v"), QStringLiteral("=y"))});
    Check(editor);
    QCOMPARE(Marked(editor), QStringList({QStringLiteral("u"), QStringLiteral("v")}));

    Main(editor.app)->Insert(QString(), 0, {Sets(QStringLiteral("s"), QStringLiteral("x"))});

    QTRY_COMPARE(Marked(editor), QStringList({QStringLiteral("v")}));
}

void tst_MendedFindings::goWhenTheStatementGoes()
{
    Editor editor({Writes(QStringLiteral("u"), QStringLiteral("=x")),
                   Writes(QStringLiteral("v"), QStringLiteral("=y"))});
    Check(editor);

    Main(editor.app)->Take(QStringLiteral("v"));

    QTRY_COMPARE(Marked(editor), QStringList({QStringLiteral("u")}));
}

void tst_MendedFindings::aFailedStatementIsMarkedUntilItDoesSomethingElse()
{
    Editor editor({Writes(QStringLiteral("u"), QStringLiteral("=x")),
                   Writes(QStringLiteral("f"), QStringLiteral("a"))});
    QList<RpaCheckInfo> found =
        RpaProcessCheck(*editor.app->GetProcessDataManager()).Check(QStringLiteral("主流程"));
    QCOMPARE(found.size(), 1);
    RpaCheckInfo failed = found.first();
    failed.statementId = QStringLiteral("f");
    failed.rule = QStringLiteral("run-failed");
    editor.widget.ShowCheckInfos({found.first(), failed});
    RpaStatement noted = editor.Node(QStringLiteral("f"))->GetValues();
    noted.note = QStringLiteral("look into it");
    noted.breakpoint = true;

    Main(editor.app)->SetValues(QStringLiteral("f"), noted);
    Main(editor.app)->SetArgument(QStringLiteral("u"), QStringLiteral("text"), QStringLiteral("fine"));
    QTRY_COMPARE(Marked(editor), QStringList({QStringLiteral("f")}));

    Main(editor.app)->SetArgument(QStringLiteral("f"), QStringLiteral("text"), QStringLiteral("b"));
    QTRY_COMPARE(Marked(editor), QStringList());
}

void tst_MendedFindings::ofAProcessThatIsRunByAnotherGoWithThatOne()
{
    Editor editor({Calls(QStringLiteral("p"))});
    RpaProcess* second = editor.app->GetProcessDataManager()->FindProcess(QStringLiteral("子流程"));
    second->SetStatements({Writes(QStringLiteral("u"), QStringLiteral("=x"))});
    Check(editor);
    auto* bar = editor.Find<QTabBar>(QStringLiteral("processTabBar"));
    QTest::mouseClick(bar, Qt::LeftButton, {}, bar->tabRect(1).center());
    QCOMPARE(Marked(editor), QStringList({QStringLiteral("u")}));

    // Set by the process that runs it.
    Main(editor.app)->Insert(QString(), 0, {Sets(QStringLiteral("s"), QStringLiteral("x"))});

    QTRY_COMPARE(Marked(editor), QStringList());
}

RPA_TEST_MAIN(tst_MendedFindings)

#include "tst_mendedfindings.moc"
