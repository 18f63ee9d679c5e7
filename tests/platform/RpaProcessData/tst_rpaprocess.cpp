// SPDX-License-Identifier: Apache-2.0

#include <RpaProcessData/ProcessDataManager.h>
#include <RpaProcessData/RpaProcess.h>

#include <QRandomGenerator>
#include <QSignalSpy>
#include <QtTest>

Q_DECLARE_METATYPE(const RpaStatementNode*)

namespace
{
RpaStatement Make(const QString& command, const QVector<RpaStatement>& children = {})
{
    RpaStatement statement;
    statement.command = command;
    statement.children = children;
    return statement;
}

RpaStatement Nested(int levels)
{
    const QVector<RpaStatement> children =
        levels > 1 ? QVector<RpaStatement>{Nested(levels - 1)} : QVector<RpaStatement>();
    return Make(QStringLiteral("if"), children);
}

// Follows a process by its signals alone, as a view does.
class Mirror
{
public:
    explicit Mirror(const RpaProcess& process)
    {
        QObject::connect(&process, &RpaProcess::SigInserted, &process,
                         [this](const RpaStatementNode* parent, int first, int last) {
                             for (int row = first; row <= last; ++row) {
                                 const RpaStatement added = parent->GetChild(row)->ToStatement();
                                 Children(parent).insert(row, added);
                             }
                         });
        QObject::connect(&process, &RpaProcess::SigRemoved, &process,
                         [this](const RpaStatementNode* parent, int first, int last) {
                             Children(parent).remove(first, last - first + 1);
                         });
        QObject::connect(&process, &RpaProcess::SigAboutToMove, &process,
                         [this](const RpaStatementNode* parent, int row, const RpaStatementNode*, int) {
                             moved = Children(parent).at(row);
                         });
        QObject::connect(
            &process, &RpaProcess::SigMoved, &process,
            [this](const RpaStatementNode* parent, int row, const RpaStatementNode* newParent, int newRow) {
                const int place = parent == newParent && newRow > row ? newRow - 1 : newRow;
                RemoveById(top, moved.id);
                Children(newParent).insert(place, moved);
            });
        QObject::connect(&process, &RpaProcess::SigStatementChanged, &process,
                         [this](const RpaStatementNode* node) {
                             RpaStatement& copy = Children(node->GetParent())[node->GetRow()];
                             const QVector<RpaStatement> children = copy.children;
                             copy = node->GetValues();
                             copy.children = children;
                         });
    }

    QVector<RpaStatement> top;

private:
    QVector<RpaStatement>& Children(const RpaStatementNode* node)
    {
        if (node->IsRoot())
            return top;
        return FindById(top, node->GetId())->children;
    }

    static RpaStatement* FindById(QVector<RpaStatement>& list, const QString& id)
    {
        for (RpaStatement& statement : list) {
            if (statement.id == id)
                return &statement;
            if (RpaStatement* found = FindById(statement.children, id))
                return found;
        }
        return nullptr;
    }

    static bool RemoveById(QVector<RpaStatement>& list, const QString& id)
    {
        for (int i = 0; i < list.size(); ++i) {
            if (list.at(i).id == id) {
                list.removeAt(i);
                return true;
            }
            if (RemoveById(list[i].children, id))
                return true;
        }
        return false;
    }

    RpaStatement moved;
};
} // namespace

class RpaProcessTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void insertsWithFreshIds();
    void keepsGivenIdsUnlessTaken();
    void insertsAtTheEndWhenTheRowIsBeyond_data();
    void insertsAtTheEndWhenTheRowIsBeyond();
    void takesAndPutsBackTheSame();
    void moves_data();
    void moves();
    void refusesImpossibleMoves();
    void refusesWhatIsTooDeep();
    void changesValuesButNeitherIdNorChildren();
    void tellsRowsAfterEveryKindOfChange();
    void tellsWhetherABlockAroundIsDisabled();
    void announcesChangesSoThatAViewCanFollow();
    void carriesStatementsThroughTheClipboard();
    void isFastWithManyStatements();

private:
    std::unique_ptr<ProcessDataManager> manager;
    RpaProcess* process = nullptr;
};

void RpaProcessTest::init()
{
    manager = std::make_unique<ProcessDataManager>();
    process = manager->AddProcess(QStringLiteral("主流程"));
}

void RpaProcessTest::insertsWithFreshIds()
{
    const QStringList ids = process->Insert(
        QString(), -1, {Make(QStringLiteral("a"), {Make(QStringLiteral("b"))}), Make(QStringLiteral("c"))});

    QCOMPARE(ids.size(), 2);
    QCOMPARE(process->GetStatementCount(), 3);
    QVERIFY(!process->Find(ids.first())->GetChild(0)->GetId().isEmpty());
    QCOMPARE(process->Find(ids.last())->GetCommand(), QStringLiteral("c"));
    QVERIFY(!process->Find(QString()));
    QVERIFY(process->Insert(QStringLiteral("unknown"), 0, {Make(QStringLiteral("x"))}).isEmpty());
    QVERIFY(process->Insert(QString(), 0, {}).isEmpty());
}

void RpaProcessTest::keepsGivenIdsUnlessTaken()
{
    RpaStatement statement = Make(QStringLiteral("a"));
    statement.id = QStringLiteral("mine");

    const QStringList ids = process->Insert(QString(), -1, {statement, statement});

    QCOMPARE(ids.first(), QStringLiteral("mine"));
    QVERIFY(ids.last() != ids.first());
}

void RpaProcessTest::insertsAtTheEndWhenTheRowIsBeyond_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<int>("expected");

    QTest::newRow("first") << 0 << 0;
    QTest::newRow("between") << 1 << 1;
    QTest::newRow("at the end") << 2 << 2;
    QTest::newRow("minus one") << -1 << 2;
    QTest::newRow("far beyond") << 99 << 2;
}

void RpaProcessTest::insertsAtTheEndWhenTheRowIsBeyond()
{
    QFETCH(int, row);
    QFETCH(int, expected);
    process->Insert(QString(), -1, {Make(QStringLiteral("a")), Make(QStringLiteral("b"))});

    const QString id = process->Insert(QString(), row, {Make(QStringLiteral("new"))}).value(0);

    QCOMPARE(process->Find(id)->GetRow(), expected);
}

void RpaProcessTest::takesAndPutsBackTheSame()
{
    RpaStatement child = Make(QStringLiteral("b"));
    child.note = QStringLiteral("注");
    const QStringList ids =
        process->Insert(QString(), -1, {Make(QStringLiteral("a"), {child}), Make(QStringLiteral("c"))});
    const QVector<RpaStatement> before = process->GetStatements();

    const RpaStatement taken = process->Take(ids.first());
    QCOMPARE(process->GetStatementCount(), 1);
    QVERIFY(!process->Find(ids.first()));
    process->Insert(QString(), 0, {taken});

    QCOMPARE(process->GetStatements(), before);
    QVERIFY(process->Take(QStringLiteral("unknown")).id.isEmpty());
}

void RpaProcessTest::moves_data()
{
    QTest::addColumn<int>("from");
    QTest::addColumn<int>("to");
    QTest::addColumn<QString>("order");

    QTest::newRow("down") << 0 << 2 << QStringLiteral("bac");
    QTest::newRow("to the end") << 0 << 3 << QStringLiteral("bca");
    QTest::newRow("to the end by minus one") << 0 << -1 << QStringLiteral("bca");
    QTest::newRow("up") << 2 << 0 << QStringLiteral("cab");
}

void RpaProcessTest::moves()
{
    QFETCH(int, from);
    QFETCH(int, to);
    QFETCH(QString, order);
    const QStringList ids = process->Insert(
        QString(), -1, {Make(QStringLiteral("a")), Make(QStringLiteral("b")), Make(QStringLiteral("c"))});

    QVERIFY(process->Move(ids.at(from), QString(), to));

    QString commands;
    process->ForEach([&](const RpaStatementNode& node) { commands += node.GetCommand(); });
    QCOMPARE(commands, order);
}

void RpaProcessTest::refusesImpossibleMoves()
{
    const QString block =
        process->Insert(QString(), -1, {Make(QStringLiteral("a"), {Make(QStringLiteral("b"))})}).value(0);
    const QString inner = process->Find(block)->GetChild(0)->GetId();
    QSignalSpy changed(process, &RpaProcess::SigChanged);

    QVERIFY(!process->Move(block, block, 0));
    QVERIFY(!process->Move(block, inner, 0));
    QVERIFY(!process->Move(block, QString(), 0));
    QVERIFY(!process->Move(block, QString(), 1));
    QVERIFY(!process->Move(QStringLiteral("unknown"), QString(), 0));
    QVERIFY(!process->Move(block, QStringLiteral("unknown"), 0));
    QVERIFY(!process->Move(QString(), QString(), 0));

    QCOMPARE(changed.count(), 0);
    QVERIFY(process->Move(inner, QString(), 0));
    QCOMPARE(process->GetRoot()->GetChildCount(), 2);
}

void RpaProcessTest::refusesWhatIsTooDeep()
{
    QVERIFY(!process->Fits(QString(), {Nested(RpaProcess::maxDepth + 1)}));
    QVERIFY(!process->Fits(QStringLiteral("unknown"), {Nested(1)}));
    QVERIFY(process->Fits(QString(), {Nested(RpaProcess::maxDepth)}));
    QVERIFY(process->Insert(QString(), -1, {Nested(RpaProcess::maxDepth + 1)}).isEmpty());
    const QString deep = process->Insert(QString(), -1, {Nested(RpaProcess::maxDepth)}).value(0);
    QVERIFY(!deep.isEmpty());
    const QString other = process->Insert(QString(), -1, {Make(QStringLiteral("if"))}).value(0);

    QVERIFY(!process->Move(deep, other, 0));

    // Whatever may be built can be loaded again.
    ProcessDataManager back;
    QVERIFY(back.Parse("{\"processes\":[]}"));
    QVERIFY(back.Parse(manager->ToJson()));
    QCOMPARE(back.GetProcess(0)->GetStatements(), process->GetStatements());
}

void RpaProcessTest::changesValuesButNeitherIdNorChildren()
{
    const QString id =
        process->Insert(QString(), -1, {Make(QStringLiteral("a"), {Make(QStringLiteral("b"))})}).value(0);
    QSignalSpy changed(process, &RpaProcess::SigStatementChanged);
    RpaStatement values = Make(QStringLiteral("new"));
    values.id = QStringLiteral("other");
    values.output = QStringLiteral("x");

    QVERIFY(process->SetValues(id, values));
    QVERIFY(!process->SetValues(id, values));
    QVERIFY(process->SetArgument(id, QStringLiteral("k"), QStringLiteral("v")));
    QVERIFY(process->SetEnabled(id, false));
    QVERIFY(!process->SetEnabled(QStringLiteral("unknown"), false));

    QCOMPARE(changed.count(), 3);
    const RpaStatementNode* node = process->Find(id);
    QCOMPARE(node->GetCommand(), QStringLiteral("new"));
    QCOMPARE(node->GetArgument(QStringLiteral("k")), QStringLiteral("v"));
    QCOMPARE(node->GetChildCount(), 1);
    QVERIFY(!node->GetValues().enabled);
}

void RpaProcessTest::tellsRowsAfterEveryKindOfChange()
{
    QStringList ids;
    for (int i = 0; i < 10; ++i)
        ids += process->Insert(QString(), 0, {Make(QString::number(i))});
    process->Take(ids.at(5));
    process->Move(ids.at(0), QString(), 2);
    process->Insert(QString(), 4, {Make(QStringLiteral("x")), Make(QStringLiteral("y"))});

    const RpaStatementNode* root = process->GetRoot();
    for (int row = root->GetChildCount() - 1; row >= 0; --row)
        QCOMPARE(root->GetChild(row)->GetRow(), row);
    QVERIFY(!root->GetChild(-1));
    QVERIFY(!root->GetChild(root->GetChildCount()));
}

void RpaProcessTest::tellsWhetherABlockAroundIsDisabled()
{
    const QString id =
        process->Insert(QString(), -1, {Make(QStringLiteral("a"), {Make(QStringLiteral("b"))})}).value(0);
    const RpaStatementNode* inner = process->Find(id)->GetChild(0);
    QVERIFY(inner->IsEffectivelyEnabled());

    process->SetEnabled(id, false);

    QVERIFY(!inner->IsEffectivelyEnabled());
    QVERIFY(inner->GetValues().enabled);
}

void RpaProcessTest::announcesChangesSoThatAViewCanFollow()
{
    const Mirror mirror(*process);
    QRandomGenerator random(20240229);
    for (int step = 0; step < 2000; ++step) {
        QStringList ids{QString()};
        process->ForEach([&](const RpaStatementNode& node) { ids.append(node.GetId()); });
        const QString one = ids.at(random.bounded(ids.size()));
        const QString other = ids.at(random.bounded(ids.size()));
        switch (random.bounded(ids.size() > 60 ? 5 : 4)) {
        case 0:
        case 1:
            process->Insert(one, random.bounded(5),
                            {Make(QString::number(step), {Make(QStringLiteral("in"))})});
            break;
        case 2:
            process->Move(one, other, random.bounded(5));
            break;
        case 3:
            process->SetArgument(one, QStringLiteral("k"), QString::number(step));
            break;
        default:
            process->Take(one);
        }
        QCOMPARE(mirror.top, process->GetStatements());
    }
}

void RpaProcessTest::carriesStatementsThroughTheClipboard()
{
    RpaStatement statement = Make(QStringLiteral("if"), {Make(QStringLiteral("log"))});
    statement.arguments = {{QStringLiteral("条件"), QStringLiteral("a > \"1\"\n")}};
    statement.enabled = false;
    statement.breakpoint = true;
    statement.unknown = "\"later\":[1]";

    QCOMPARE(RpaStatement::FromJson(RpaStatement::ToJson({statement})), QVector<RpaStatement>{statement});
    QVERIFY(RpaStatement::FromJson("text from elsewhere").isEmpty());
    QVERIFY(RpaStatement::FromJson("{}").isEmpty());
}

void RpaProcessTest::isFastWithManyStatements()
{
    QVector<RpaStatement> many;
    for (int i = 0; i < 20000; ++i)
        many.append(Make(QStringLiteral("log")));
    process->SetStatements(many);
    const RpaStatementNode* root = process->GetRoot();

    // Would take minutes if each question searched the list.
    for (int round = 0; round < 50; ++round) {
        process->Insert(QString(), 0, {Make(QStringLiteral("first"))});
        for (int row = 0; row < root->GetChildCount(); ++row)
            QCOMPARE(root->GetChild(row)->GetRow(), row);
    }

    QCOMPARE(process->GetStatementCount(), 20050);
}

QTEST_GUILESS_MAIN(RpaProcessTest)
#include "tst_rpaprocess.moc"
