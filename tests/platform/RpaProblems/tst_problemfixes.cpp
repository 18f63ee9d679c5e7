// SPDX-License-Identifier: Apache-2.0

#include <RpaAppData/RpaAppData.h>
#include <RpaAppData/RpaToolData.h>
#include <RpaAppData/RpaUIData.h>
#include <RpaAppData/RpaUIDataManager.h>
#include <RpaProblems/RpaProblemFinder.h>
#include <RpaProblems/RpaProblemFixes.h>
#include <RpaProcessData/ProcessDataManager.h>
#include <RpaProcessData/RpaPackageInfo.h>
#include <RpaProcessData/RpaProcess.h>

#include <QtTest>

namespace
{
struct App
{
    App()
    {
        app.InitDefault();
        Main()->SetStatements({});
    }

    RpaProcess* Main() const { return app.GetProcessDataManager()->GetProcess(0); }
    QVector<RpaProblem> Problems() const { return RpaProblemFinder::Find(RpaAppCopy::Of(app)); }
    RpaProblem First() const { return Problems().value(0); }
    QStringList Packages() const
    {
        QStringList names;
        const auto items = app.GetPackageInfo()->GetListPackageItemPtr();
        for (const QSharedPointer<PackageItem>& item : items)
            names.append(item->name);
        return names;
    }

    RpaAppData app;
};

RpaStatement Step(const char* command, const QMap<QString, QString>& arguments)
{
    RpaStatement statement;
    statement.command = QLatin1String(command);
    statement.arguments = arguments;
    return statement;
}
} // namespace

// Each fix makes the problem that offers it go away, and is made once.
class ProblemFixesTest : public QObject
{
    Q_OBJECT

private slots:
    void listsAPackage();
    void takesAPackageOut();
    void clearsTheProcessOfATool();
    void leavesAToolThatRunsSomethingElseByNow();
    void removesAnArgument();
    void createsAVariable();
};

void ProblemFixesTest::listsAPackage()
{
    App app;
    RpaProblem problem;
    problem.fix = RpaProblemFix::ListPackage;
    problem.subject = QStringLiteral("numpy");

    QVERIFY(RpaProblemFixes::MakeInApp(app.app, problem));
    QCOMPARE(app.Packages(), QStringList{QStringLiteral("numpy")});
    QVERIFY(app.app.GetModified());
    QVERIFY(!RpaProblemFixes::MakeInApp(app.app, problem));
}

void ProblemFixesTest::takesAPackageOut()
{
    App app;
    app.app.GetPackageInfo()->SetListPackageItemPtr(
        {QSharedPointer<PackageItem>::create(PackageItem{QStringLiteral("zzz"), QString()}),
         QSharedPointer<PackageItem>::create(PackageItem{QStringLiteral("Numpy"), QString()})});
    const RpaProblem problem = app.Problems().value(1);

    QVERIFY(RpaProblemFixes::MakeInApp(app.app, problem));
    QCOMPARE(app.Packages(), QStringList{QStringLiteral("zzz")});
    QVERIFY(!RpaProblemFixes::MakeInApp(app.app, problem));
}

void ProblemFixesTest::clearsTheProcessOfATool()
{
    App app;
    RpaToolData* tools = app.app.GetUIDataManager()->GetUIData(0)->GetToolData();
    RpaToolItem tool = tools->GetItem(0);
    tool.processName = QStringLiteral("无");
    tools->SetItem(0, tool);
    const RpaProblem problem = app.First();
    QCOMPARE(problem.rule, QStringLiteral("tool-missing-process"));

    QVERIFY(RpaProblemFixes::MakeInApp(app.app, problem));
    QCOMPARE(tools->GetItem(0).processName, QString());
}

void ProblemFixesTest::leavesAToolThatRunsSomethingElseByNow()
{
    App app;
    RpaToolData* tools = app.app.GetUIDataManager()->GetUIData(0)->GetToolData();
    RpaToolItem tool = tools->GetItem(0);
    tool.processName = QStringLiteral("无");
    tools->SetItem(0, tool);
    const RpaProblem problem = app.First();
    tool.processName = app.Main()->GetName();
    tools->SetItem(0, tool);

    QVERIFY(!RpaProblemFixes::MakeInApp(app.app, problem));
    QCOMPARE(tools->GetItem(0).processName, app.Main()->GetName());
}

void ProblemFixesTest::removesAnArgument()
{
    App app;
    RpaStatement statement = Step("log", {{QStringLiteral("text"), QStringLiteral("x")},
                                          {QStringLiteral("colour"), QStringLiteral("red")}});
    app.Main()->SetStatements({statement});
    const RpaProblem problem = app.First();

    QVERIFY(RpaProblemFixes::MakeInStatement(statement, problem));
    app.Main()->SetStatements({statement});

    QVERIFY(app.Problems().isEmpty());
    QVERIFY(!RpaProblemFixes::MakeInStatement(statement, problem));
}

void ProblemFixesTest::createsAVariable()
{
    App app;
    const RpaStatement reads = Step("log", {{QStringLiteral("text"), QStringLiteral("=a")}});
    app.Main()->SetStatements({reads});

    app.Main()->SetStatements({RpaProblemFixes::MakeVariable(app.First()), reads});

    QVERIFY(app.Problems().isEmpty());
}

QTEST_GUILESS_MAIN(ProblemFixesTest)
#include "tst_problemfixes.moc"
