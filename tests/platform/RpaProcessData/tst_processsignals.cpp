// SPDX-License-Identifier: Apache-2.0

#include <RpaProcessData/ProcessDataManager.h>
#include <RpaProcessData/RpaProcess.h>

#include <QSignalSpy>
#include <QtTest>

namespace
{
RpaStatement Named(const QString& id, const QVector<RpaStatement>& children = {})
{
    RpaStatement statement;
    statement.id = id;
    statement.command = QStringLiteral("if");
    statement.children = children;
    return statement;
}
} // namespace

// What is announced of each change, in which order, and how things stand then.
class ProcessSignalsTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void insertingTellsTheRowsAroundIt();
    void takingTellsTheRowAroundIt();
    void movingTellsPlacesAsTheyWereBefore_data();
    void movingTellsPlacesAsTheyWereBefore();
    void aNewTreeIsToldAsAWhole();
    void aChangedStatementIsToldWithItsNewValues();
    void theProgramIsToldWhenItIsAnother();
    void processesComeAndGo();
    void aRenamedProcessIsToldWithItsFormerName();
    void aNameThatIsTakenChangesNothing();
    void aReadAppIsToldAsAWhole();
    void aClearedAppHasNoProcess();

private:
    void Record(RpaProcess& told);
    void Record(ProcessDataManager& told);
    QString Ids() const;
    QStringList Taken() { return std::exchange(record, {}); }

    std::unique_ptr<ProcessDataManager> manager;
    RpaProcess* process = nullptr;
    QStringList record; // "signal parent first last: the tree at that moment"
};

void ProcessSignalsTest::init()
{
    manager = std::make_unique<ProcessDataManager>();
    process = manager->AddProcess(QStringLiteral("主流程"));
    process->SetStatements(
        {Named(QStringLiteral("a"), {Named(QStringLiteral("b")), Named(QStringLiteral("c"))}),
         Named(QStringLiteral("d"))});
    record.clear();
    Record(*process);
}

void ProcessSignalsTest::Record(RpaProcess& told)
{
    const auto rows = [this](const char* name) {
        return [this, name](const RpaStatementNode* parent, int first, int last) {
            record << QStringLiteral("%1 %2 %3 %4: %5")
                          .arg(QLatin1String(name), parent->GetId(), QString::number(first),
                               QString::number(last), Ids());
        };
    };
    const auto move = [this](const char* name) {
        return [this, name](const RpaStatementNode* from, int row, const RpaStatementNode* to, int newRow) {
            record << QStringLiteral("%1 %2 %3 %4 %5: %6")
                          .arg(QLatin1String(name), from->GetId(), QString::number(row), to->GetId(),
                               QString::number(newRow), Ids());
        };
    };
    const auto plain = [this](const char* name) {
        return [this, name] { record << QLatin1String(name) + QStringLiteral(": ") + Ids(); };
    };
    connect(&told, &RpaProcess::SigAboutToInsert, this, rows("to insert"));
    connect(&told, &RpaProcess::SigInserted, this, rows("inserted"));
    connect(&told, &RpaProcess::SigAboutToRemove, this, rows("to remove"));
    connect(&told, &RpaProcess::SigRemoved, this, rows("removed"));
    connect(&told, &RpaProcess::SigAboutToMove, this, move("to move"));
    connect(&told, &RpaProcess::SigMoved, this, move("moved"));
    connect(&told, &RpaProcess::SigAboutToReset, this, plain("to reset"));
    connect(&told, &RpaProcess::SigReset, this, plain("reset"));
    connect(&told, &RpaProcess::SigChanged, this, plain("changed"));
}

void ProcessSignalsTest::Record(ProcessDataManager& told)
{
    const auto one = [this](const char* name) {
        return [this, name](int index) {
            record << QStringLiteral("%1 %2: %3")
                          .arg(QLatin1String(name), QString::number(index),
                               manager->GetProcessNames().join(QLatin1Char(' ')));
        };
    };
    connect(&told, &ProcessDataManager::SigProcessAdded, this, one("added"));
    connect(&told, &ProcessDataManager::SigProcessAboutToBeRemoved, this, one("to remove"));
    connect(&told, &ProcessDataManager::SigProcessRemoved, this, one("removed"));
    connect(&told, &ProcessDataManager::SigProcessMoved, this,
            [this](int from, int to) { record << QStringLiteral("moved %1 %2").arg(from).arg(to); });
    connect(&told, &ProcessDataManager::SigProcessRenamed, this, [this](int index, const QString& former) {
        record << QStringLiteral("renamed %1 from %2").arg(index).arg(former);
    });
    connect(&told, &ProcessDataManager::SigAboutToReset, this, [one] { one("to reset")(-1); });
    connect(&told, &ProcessDataManager::SigReset, this, [one] { one("reset")(-1); });
}

// Every statement with what is below it in brackets.
QString ProcessSignalsTest::Ids() const
{
    QString ids;
    process->ForEach([&ids](const RpaStatementNode& node) {
        int depth = 0;
        for (const RpaStatementNode* at = node.GetParent(); at && !at->IsRoot(); at = at->GetParent())
            ++depth;
        ids += QString(depth, QLatin1Char('.')) + node.GetId();
    });
    return ids;
}

void ProcessSignalsTest::insertingTellsTheRowsAroundIt()
{
    const QStringList ids =
        process->Insert(QStringLiteral("a"), 1, {Named(QStringLiteral("x")), Named(QStringLiteral("y"))});

    QCOMPARE(ids, (QStringList{QStringLiteral("x"), QStringLiteral("y")}));
    QCOMPARE(Taken(), (QStringList{QStringLiteral("to insert a 1 2: a.b.cd"),
                                   QStringLiteral("inserted a 1 2: a.b.x.y.cd"),
                                   QStringLiteral("changed: a.b.x.y.cd")}));
    process->Insert(QString(), -1, {Named(QStringLiteral("z"))});
    QCOMPARE(Taken().first(), QStringLiteral("to insert  2 2: a.b.x.y.cd"));
}

void ProcessSignalsTest::takingTellsTheRowAroundIt()
{
    const RpaStatement taken = process->Take(QStringLiteral("c"));

    QCOMPARE(taken.id, QStringLiteral("c"));
    QCOMPARE(Taken(), (QStringList{QStringLiteral("to remove a 1 1: a.b.cd"),
                                   QStringLiteral("removed a 1 1: a.bd"), QStringLiteral("changed: a.bd")}));
    process->Take(QStringLiteral("a"));
    QVERIFY(!process->Find(QStringLiteral("b")));
    QCOMPARE(Taken().last(), QStringLiteral("changed: d"));
    process->Take(QStringLiteral("a"));
    QVERIFY(Taken().isEmpty());
}

void ProcessSignalsTest::movingTellsPlacesAsTheyWereBefore_data()
{
    QTest::addColumn<QString>("id");
    QTest::addColumn<QString>("parent");
    QTest::addColumn<int>("row");
    QTest::addColumn<QString>("place");
    QTest::addColumn<QString>("after");
    const auto row = [](const char* name, const char* id, const char* parent, int place, const char* told,
                        const char* after) {
        QTest::newRow(name) << QString::fromLatin1(id) << QString::fromLatin1(parent) << place
                            << QString::fromLatin1(told) << QString::fromLatin1(after);
    };
    row("down beside it", "b", "a", 2, "a 0 a 2", "a.c.bd");
    row("up beside it", "c", "a", 0, "a 1 a 0", "a.c.bd");
    row("out of its block", "b", "", 1, "a 0  1", "a.cbd");
    row("into a block", "d", "a", 1, " 1 a 1", "a.b.d.c");
    row("to the end of a block", "d", "b", -1, " 1 b 0", "a.b..d.c");
    row("a block with what is in it", "a", "d", 7, " 0 d 0", "d.a..b..c");
}

void ProcessSignalsTest::movingTellsPlacesAsTheyWereBefore()
{
    QFETCH(QString, id);
    QFETCH(QString, parent);
    QFETCH(int, row);
    QFETCH(QString, place);
    QFETCH(QString, after);

    QVERIFY(process->Move(id, parent, row));

    QCOMPARE(Taken(), (QStringList{QStringLiteral("to move %1: a.b.cd").arg(place),
                                   QStringLiteral("moved %1: %2").arg(place, after),
                                   QStringLiteral("changed: ") + after}));
}

void ProcessSignalsTest::aNewTreeIsToldAsAWhole()
{
    process->SetStatements({Named(QStringLiteral("d"), {Named(QStringLiteral("a"))})});

    QCOMPARE(Taken(), (QStringList{QStringLiteral("to reset: a.b.cd"), QStringLiteral("reset: d.a"),
                                   QStringLiteral("changed: d.a")}));
    QCOMPARE(process->GetStatementCount(), 2);
    QVERIFY(!process->Find(QStringLiteral("b")));
}

void ProcessSignalsTest::aChangedStatementIsToldWithItsNewValues()
{
    QStringList told;
    connect(process, &RpaProcess::SigStatementChanged, this, [&told](const RpaStatementNode* node) {
        told << node->GetId() + node->GetArgument(QStringLiteral("k")) +
                    (node->GetValues().enabled ? QStringLiteral("+") : QStringLiteral("-"));
    });

    process->SetArgument(QStringLiteral("c"), QStringLiteral("k"), QStringLiteral("v"));
    process->SetEnabled(QStringLiteral("c"), false);
    process->SetEnabled(QStringLiteral("c"), false);

    QCOMPARE(told, (QStringList{QStringLiteral("cv+"), QStringLiteral("cv-")}));
    QCOMPARE(Taken().size(), 2);
}

void ProcessSignalsTest::theProgramIsToldWhenItIsAnother()
{
    process->SetProgramText(QStringLiteral("x"));
    process->SetProgramText(QStringLiteral("x"));

    QCOMPARE(Taken().size(), 1);
}

void ProcessSignalsTest::processesComeAndGo()
{
    Record(*manager);
    manager->AddProcess(QStringLiteral("b"), 0);
    manager->AddProcess(QStringLiteral("c"), 9);
    manager->MoveProcess(0, 2);
    manager->RemoveProcess(QStringLiteral("c"));

    QCOMPARE(Taken(), (QStringList{QStringLiteral("added 0: b 主流程"), QStringLiteral("added 2: b 主流程 c"),
                                   QStringLiteral("moved 0 2"), QStringLiteral("to remove 1: 主流程 c b"),
                                   QStringLiteral("removed 1: 主流程 b")}));
}

void ProcessSignalsTest::aRenamedProcessIsToldWithItsFormerName()
{
    manager->AddProcess(QStringLiteral("b"));
    Record(*manager);
    RpaStatement call;
    call.id = QStringLiteral("call");
    call.command = QStringLiteral("process.run");
    call.arguments.insert(QStringLiteral("process"), QStringLiteral("b"));
    process->Insert(QString(), 0, {call});
    record.clear();

    QVERIFY(manager->RenameProcess(QStringLiteral("b"), QStringLiteral("c")));

    QCOMPARE(Taken().last(), QStringLiteral("renamed 1 from b"));
    QCOMPARE(process->Find(QStringLiteral("call"))->GetArgument(QStringLiteral("process")),
             QStringLiteral("c"));
    QCOMPARE(manager->MakeFreeName(QStringLiteral("c")), QStringLiteral("c1"));
}

void ProcessSignalsTest::aNameThatIsTakenChangesNothing()
{
    manager->AddProcess(QStringLiteral("b"));
    Record(*manager);

    QVERIFY(!manager->RenameProcess(QStringLiteral("b"), QStringLiteral("主流程")));
    QVERIFY(!manager->AddProcess(QStringLiteral("b")));
    QVERIFY(!manager->MoveProcess(0, 0));
    QVERIFY(!manager->RemoveProcess(QStringLiteral("c")));

    QVERIFY(Taken().isEmpty());
}

void ProcessSignalsTest::aReadAppIsToldAsAWhole()
{
    process->disconnect(this);
    QVERIFY(!manager->Parse(R"({"processes":[{"name":"x"}]} y)"));
    QCOMPARE(manager->GetProcessNameFirst(), QStringLiteral("主流程"));
    QStringList told;
    const auto names = [this] { return manager->GetProcessNames().join(QLatin1Char(' ')); };
    connect(manager.get(), &ProcessDataManager::SigAboutToReset, this, [&] { told << names(); });
    connect(manager.get(), &ProcessDataManager::SigReset, this, [&] { told << names(); });

    QVERIFY(manager->Parse(R"({"processes":[{"name":"x"},{"name":"y"}]})"));

    QCOMPARE(told, (QStringList{QStringLiteral("主流程"), QStringLiteral("x y")}));
}

void ProcessSignalsTest::aClearedAppHasNoProcess()
{
    process->disconnect(this);
    QSignalSpy changed(manager.get(), &ProcessDataManager::SigChanged);

    manager->Clear();

    QCOMPARE(manager->GetCount(), 0);
    QVERIFY(!manager->GetProcess(0));
    QVERIFY(manager->GetProcessNameFirst().isEmpty());
    QCOMPARE(changed.size(), 1);
}

QTEST_GUILESS_MAIN(ProcessSignalsTest)
#include "tst_processsignals.moc"
