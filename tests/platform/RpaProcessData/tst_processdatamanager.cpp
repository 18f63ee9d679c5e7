// SPDX-License-Identifier: Apache-2.0

#include <RpaProcessData/ProcessDataManager.h>
#include <RpaProcessData/RpaPackageInfo.h>
#include <RpaProcessData/RpaProcess.h>

#include <QSignalSpy>
#include <QtTest>

namespace
{
RpaStatement Make(const QString& command, const QMap<QString, QString>& arguments = {})
{
    RpaStatement statement;
    statement.command = command;
    statement.arguments = arguments;
    return statement;
}
} // namespace

class ProcessDataManagerTest : public QObject
{
    Q_OBJECT

private slots:
    void keepsProcessesInOrder();
    void refusesBlankAndTakenNames();
    void takesNamesOfAnyLengthAndScript();
    void renamesTheCallsToo();
    void movesProcesses();
    void namesThePackagesOfEnabledStatements();
    void readsBackWhatItWrote();
    void givesUnreachableProcessesAName();
    void takesManyNamelessProcessesWithoutSearchingForEach();
    void announcesChanges();
};

void ProcessDataManagerTest::keepsProcessesInOrder()
{
    ProcessDataManager manager;
    QVERIFY(manager.GetProcessNameFirst().isEmpty());

    manager.AddProcess(QStringLiteral("甲"));
    manager.AddProcess(QStringLiteral("乙"));
    RpaProcess* first = manager.AddProcess(QStringLiteral("丙"), 0);

    QCOMPARE(manager.GetProcessNames(),
             (QStringList{QStringLiteral("丙"), QStringLiteral("甲"), QStringLiteral("乙")}));
    QCOMPARE(manager.GetProcessNameFirst(), QStringLiteral("丙"));
    QCOMPARE(manager.FindProcess(QStringLiteral("丙")), first);
    QVERIFY(manager.RemoveProcess(QStringLiteral("丙")));
    QVERIFY(!manager.RemoveProcess(QStringLiteral("丙")));
    QCOMPARE(manager.GetProcessNameFirst(), QStringLiteral("甲"));
    QVERIFY(!manager.GetProcess(-1));
    QVERIFY(!manager.GetProcess(2));
}

void ProcessDataManagerTest::refusesBlankAndTakenNames()
{
    ProcessDataManager manager;
    manager.AddProcess(QStringLiteral("a"));
    manager.AddProcess(QStringLiteral("b"));

    QVERIFY(!manager.AddProcess(QString()));
    QVERIFY(!manager.AddProcess(QStringLiteral("  ")));
    QVERIFY(!manager.AddProcess(QStringLiteral("a")));
    QVERIFY(manager.AddProcess(QStringLiteral("A")));
    QVERIFY(!manager.RenameProcess(QStringLiteral("a"), QStringLiteral("b")));
    QVERIFY(!manager.RenameProcess(QStringLiteral("a"), QStringLiteral("a")));
    QVERIFY(!manager.RenameProcess(QStringLiteral("none"), QStringLiteral("c")));
    QCOMPARE(manager.GetCount(), 3);
}

void ProcessDataManagerTest::takesNamesOfAnyLengthAndScript()
{
    const QString name = QString(5000, QChar(0x6D41)) + QStringLiteral(" \"\\/\n😀");
    ProcessDataManager manager;
    QVERIFY(manager.AddProcess(name));

    ProcessDataManager back;
    QVERIFY(back.Parse(manager.ToJson()));

    QCOMPARE(back.GetProcessNameFirst(), name);
}

void ProcessDataManagerTest::renamesTheCallsToo()
{
    ProcessDataManager manager;
    RpaProcess* main = manager.AddProcess(QStringLiteral("主"));
    manager.AddProcess(QStringLiteral("子"));
    const QStringList ids = main->Insert(
        QString(), -1,
        {Make(QStringLiteral("process.run"), {{QStringLiteral("process"), QStringLiteral("子")}}),
         Make(QStringLiteral("process.run"), {{QStringLiteral("process"), QStringLiteral("主")}}),
         Make(QStringLiteral("log"), {{QStringLiteral("text"), QStringLiteral("子")}})});

    QVERIFY(manager.RenameProcess(QStringLiteral("子"), QStringLiteral("孙")));

    QCOMPARE(main->Find(ids.at(0))->GetArgument(QStringLiteral("process")), QStringLiteral("孙"));
    QCOMPARE(main->Find(ids.at(1))->GetArgument(QStringLiteral("process")), QStringLiteral("主"));
    QCOMPARE(main->Find(ids.at(2))->GetArgument(QStringLiteral("text")), QStringLiteral("子"));
}

void ProcessDataManagerTest::movesProcesses()
{
    ProcessDataManager manager;
    for (const QString& name : {QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")})
        manager.AddProcess(name);

    QVERIFY(manager.MoveProcess(0, 2));
    QCOMPARE(manager.GetProcessNames().join(QString()), QStringLiteral("bca"));
    QVERIFY(manager.MoveProcess(2, 0));
    QCOMPARE(manager.GetProcessNames().join(QString()), QStringLiteral("abc"));
    QVERIFY(!manager.MoveProcess(0, 3));
    QVERIFY(!manager.MoveProcess(1, 1));
}

void ProcessDataManagerTest::namesThePackagesOfEnabledStatements()
{
    ProcessDataManager manager;
    RpaProcess* main = manager.AddProcess(QStringLiteral("主"));
    RpaPackageInfo info;
    info.SetListPackageItemPtr(
        {QSharedPointer<PackageItem>::create(PackageItem{QStringLiteral("old"), QString()})});

    QVERIFY(!manager.GetPackageInfo(info));
    QVERIFY(info.IsEmpty());

    RpaStatement disabledBlock = Make(QStringLiteral("if"));
    disabledBlock.enabled = false;
    disabledBlock.children = {Make(QStringLiteral("excel.open"))};
    main->Insert(QString(), -1, {disabledBlock, Make(QStringLiteral("unheard-of"))});
    QVERIFY(!manager.GetPackageInfo(info));

    main->Insert(QString(), -1, {Make(QStringLiteral("excel.open")), Make(QStringLiteral("excel.save"))});
    QVERIFY(manager.GetPackageInfo(info));
    QCOMPARE(info.GetListPackageItemPtr().size(), 1);
    QCOMPARE(info.GetListPackageItemPtr().first()->name, QStringLiteral("openpyxl"));
}

void ProcessDataManagerTest::readsBackWhatItWrote()
{
    ProcessDataManager manager;
    manager.AddProcess(QStringLiteral("甲"))->SetProgramText(QStringLiteral("print(1)\n"));
    manager.AddProcess(QStringLiteral("乙"))->Insert(QString(), -1, {Make(QStringLiteral("log"))});
    const QByteArray json = manager.ToJson();

    ProcessDataManager back;
    back.AddProcess(QStringLiteral("gone"));
    QVERIFY(back.Parse(json));

    QCOMPARE(back.ToJson(), json);
    QCOMPARE(back.GetProcess(0)->GetProgramText(), QStringLiteral("print(1)\n"));
    QVERIFY(!back.Parse("{\"processes\":[{]}"));
    QCOMPARE(back.ToJson(), json);
}

void ProcessDataManagerTest::givesUnreachableProcessesAName()
{
    ProcessDataManager manager;

    QVERIFY(manager.Parse(R"({"processes":[{"name":"a"},{"name":"a","program":"x"},{"name":" "}]})"));

    QCOMPARE(manager.GetProcessNames(),
             (QStringList{QStringLiteral("a"), QStringLiteral("流程1"), QStringLiteral("流程2")}));
    QCOMPARE(manager.GetProcess(1)->GetProgramText(), QStringLiteral("x"));
}

// Searching all others for each of them would take minutes: a file could freeze the editor.
void ProcessDataManagerTest::takesManyNamelessProcessesWithoutSearchingForEach()
{
    constexpr int many = 10000;
    ProcessDataManager manager;
    QVERIFY(manager.Parse("{\"processes\":[" + QByteArray("{},").repeated(many - 1) + "{}]}"));
    QCOMPARE(manager.GetCount(), many);
    QCOMPARE(manager.GetProcess(many - 1)->GetName(), QStringLiteral("流程10000"));
}

void ProcessDataManagerTest::announcesChanges()
{
    ProcessDataManager manager;
    QSignalSpy added(&manager, &ProcessDataManager::SigProcessAdded);
    QSignalSpy renamed(&manager, &ProcessDataManager::SigProcessRenamed);
    QSignalSpy removed(&manager, &ProcessDataManager::SigProcessRemoved);
    QSignalSpy changed(&manager, &ProcessDataManager::SigChanged);

    RpaProcess* process = manager.AddProcess(QStringLiteral("a"));
    QCOMPARE(changed.count(), 1);
    process->Insert(QString(), -1, {Make(QStringLiteral("log"))});
    QCOMPARE(changed.count(), 2);
    process->SetProgramText(QStringLiteral("x"));
    process->SetProgramText(QStringLiteral("x"));
    QCOMPARE(changed.count(), 3);
    manager.RenameProcess(QStringLiteral("a"), QStringLiteral("b"));
    manager.RemoveProcess(QStringLiteral("b"));

    QCOMPARE(added.count(), 1);
    QCOMPARE(renamed.value(0).value(1).toString(), QStringLiteral("a"));
    QCOMPARE(removed.count(), 1);
}

QTEST_GUILESS_MAIN(ProcessDataManagerTest)
#include "tst_processdatamanager.moc"
