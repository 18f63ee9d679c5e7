// SPDX-License-Identifier: Apache-2.0

#include "ColorContrast.h"
#include "CommandTexts_p.h"
#include "EditorFixture.h"
#include "ProcessEdits_p.h"
#include "StatementModel_p.h"
#include "TestApp.h"

#include <RpaProcessData/RpaCommandCatalogue.h>
#include <WbBaseUI/WbIcons.h>
#include <WbBaseUI/WbTheme.h>

#include <QAbstractItemModelTester>
#include <QElapsedTimer>
#include <QMimeData>
#include <QPainter>
#include <QTest>

using namespace EditorFixture;

namespace
{
struct Parts
{
    explicit Parts(const QVector<RpaStatement>& statements = SomeStatements())
        : app(App(statements)), edits(app),
          tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest)
    {
        model.SetProcess(&edits, Main(app));
    }

    RpaProcess& Process() { return *Main(app); }
    QString Shown() { return Outline(Process()); }

    bool Drop(const QStringList& ids, Qt::DropAction action, int row, const QString& parentId)
    {
        QModelIndexList indexes;
        for (const QString& id : ids)
            indexes.append(model.IndexOf(id));
        const std::unique_ptr<QMimeData> mime(model.mimeData(indexes));
        return model.dropMimeData(mime.get(), action, row, 0, model.IndexOf(parentId).siblingAtColumn(0));
    }

    RpaAppDataPtr app;
    ProcessEdits edits;
    StatementModel model;
    QAbstractItemModelTester tester;
};
} // namespace

class tst_StatementModel : public QObject
{
    Q_OBJECT

private slots:
    void showsTheTreeWithLineNumbers();
    void tellsSummaryNoteAndState();
    void keepsFindingsByStatement();
    void hasAnIconForEveryCommand();
    void showsEveryIconOnASelectedRowInTheDark();
    void readsExpressionsWithoutTheirMarker_data();
    void readsExpressionsWithoutTheirMarker();
    void movesByDragging_data();
    void movesByDragging();
    void refusesToMoveABlockIntoItself();
    void copiesWhatComesFromElsewhere();
    void dropsACommandAsANewStatement();
    void ignoresForeignDrops();
    void undoesEveryKindOfStep_data();
    void undoesEveryKindOfStep();
    void joinsWhatIsTypedInOneGo();
    void marksTheAppWithEveryStepBackAndForth();
    void restoresARemovedProcessWithItsStatements();
    void takesAboutAsLongPerStatementForManyStatements();
};

void tst_StatementModel::showsTheTreeWithLineNumbers()
{
    Parts parts;

    QCOMPARE(parts.model.rowCount(), 3);
    const QModelIndex block = parts.model.index(1, 0);
    QCOMPARE(parts.model.rowCount(block), 2);
    QCOMPARE(parts.model.IndexOf(QStringLiteral("d")).data(StatementModel::LineRole).toInt(), 4);
    QCOMPARE(parts.model.index(2, 0).data(StatementModel::LineRole).toInt(), 5);

    parts.edits.Remove(parts.Process(), {QStringLiteral("a")}, QString());
    QCOMPARE(parts.model.IndexOf(QStringLiteral("d")).data(StatementModel::LineRole).toInt(), 3);
}

void tst_StatementModel::tellsSummaryNoteAndState()
{
    Parts parts;
    const QModelIndex a = parts.model.IndexOf(QStringLiteral("a"));
    QCOMPARE(a.data(StatementModel::TitleRole).toString(), QStringLiteral("输出日志"));
    QCOMPARE(a.data(StatementModel::SummaryRole).toString(), QStringLiteral("输出 a，级别 信息"));

    parts.edits.SetEnabled(parts.Process(), {QStringLiteral("b")}, false);
    QVERIFY(!parts.model.IndexOf(QStringLiteral("c")).data(StatementModel::EnabledRole).toBool());
}

void tst_StatementModel::keepsFindingsByStatement()
{
    Parts parts;
    RpaCheckInfo info;
    info.statementId = QStringLiteral("c");
    info.message = QStringLiteral("没有定义变量");

    parts.model.SetFindings({info});
    QCOMPARE(parts.model.IndexOf(QStringLiteral("c")).data(StatementModel::FindingRole).toString(),
             info.message);

    parts.model.SetFindings({});
    QCOMPARE(parts.model.IndexOf(QStringLiteral("c")).data(StatementModel::FindingRole).toString(),
             QString());
}

void tst_StatementModel::hasAnIconForEveryCommand()
{
    const QStringList icons = WbIcons::Names();
    int own = 0;
    for (const RpaCommandInfo& info : RpaCommandCatalogue::Instance()->GetCommands()) {
        if (info.name.startsWith(QLatin1String("t-")))
            continue; // of these tests
        ++own;
        QVERIFY2(icons.contains(info.icon), qPrintable(info.name + QLatin1Char(' ') + info.icon));
    }
    QVERIFY(own > 0);
}

void tst_StatementModel::showsEveryIconOnASelectedRowInTheDark()
{
    WbTheme::Instance()->Apply(WbTheme::Scheme::Dark);
    const QColor row = WbTheme::Instance()->Color(WbColor::Selection);

    for (const RpaCommandInfo& command : RpaCommandCatalogue::Instance()->GetCommands()) {
        QImage image(26, 26, QImage::Format_RGB32);
        image.fill(row);
        QPainter painter(&image);
        CommandTexts::PaintTile(painter, image.rect(), command.name, true);
        painter.end();
        qreal best = 1;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                best = qMax(best, ColorContrast(image.pixelColor(x, y), row));
        QVERIFY2(best >= 3, qPrintable(QStringLiteral("%1: %2").arg(command.name).arg(best)));
    }
    WbTheme::Instance()->Apply(WbTheme::Scheme::Light);
}

void tst_StatementModel::readsExpressionsWithoutTheirMarker_data()
{
    QTest::addColumn<QString>("command");
    QTest::addColumn<QString>("argument");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("expected");

    QTest::newRow("text") << "t-log"
                          << "text"
                          << "=1+2" << QStringLiteral("输出 ƒ 1+2，级别 信息");
    QTest::newRow("literal") << "t-log"
                             << "text"
                             << "1+2" << QStringLiteral("输出 1+2，级别 信息");
    QTest::newRow("quoted literal") << "t-log"
                                    << "text"
                                    << "'=1" << QStringLiteral("输出 '=1，级别 信息");
    QTest::newRow("marker alone") << "t-log"
                                  << "text"
                                  << "=" << QStringLiteral("输出 …，级别 信息");
    QTest::newRow("number") << "t-wait"
                            << "seconds"
                            << "= n * 2" << QStringLiteral("等待 n * 2 秒");
}

void tst_StatementModel::readsExpressionsWithoutTheirMarker()
{
    QFETCH(QString, command);
    QFETCH(QString, argument);
    QFETCH(QString, text);
    RpaStatement statement = Statement(command);
    if (command == QLatin1String("t-log"))
        statement.arguments.insert(QStringLiteral("level"), QStringLiteral("info"));
    statement.arguments.insert(argument, text);

    QTEST(CommandTexts::Summary(statement), "expected");
}

void tst_StatementModel::movesByDragging_data()
{
    QTest::addColumn<QStringList>("ids");
    QTest::addColumn<int>("row");
    QTest::addColumn<QString>("parent");
    QTest::addColumn<QString>("expected");

    const auto ids = [](const char* text) { return QString::fromLatin1(text).split(QLatin1Char(' ')); };
    QTest::newRow("down") << ids("a") << 2 << QString() << QStringLiteral("b(c d) a e");
    QTest::newRow("to the end") << ids("a") << -1 << QString() << QStringLiteral("b(c d) e a");
    QTest::newRow("up") << ids("e") << 0 << QString() << QStringLiteral("e a b(c d)");
    QTest::newRow("into a block") << ids("a") << 1 << QStringLiteral("b") << QStringLiteral("b(c a d) e");
    QTest::newRow("onto a block") << ids("e") << -1 << QStringLiteral("b") << QStringLiteral("a b(c d e)");
    QTest::newRow("out of a block") << ids("d") << 1 << QString() << QStringLiteral("a d b(c) e");
    QTest::newRow("several") << ids("a e") << 1 << QStringLiteral("b") << QStringLiteral("b(c a e d)");
    QTest::newRow("block with its children chosen too")
        << ids("b c d") << 0 << QString() << QStringLiteral("b(c d) a e");
    QTest::newRow("where it is") << ids("a") << 1 << QString() << QStringLiteral("a b(c d) e");
}

void tst_StatementModel::movesByDragging()
{
    QFETCH(QStringList, ids);
    QFETCH(int, row);
    QFETCH(QString, parent);
    QFETCH(QString, expected);
    Parts parts;

    QVERIFY(parts.Drop(ids, Qt::MoveAction, row, parent));
    QCOMPARE(parts.Shown(), expected);

    parts.edits.Stack()->undo();
    QCOMPARE(parts.Shown(), QStringLiteral("a b(c d) e"));
    parts.edits.Stack()->redo();
    QCOMPARE(parts.Shown(), expected);
}

void tst_StatementModel::refusesToMoveABlockIntoItself()
{
    Parts parts;

    QVERIFY(!parts.Drop({QStringLiteral("b")}, Qt::MoveAction, 0, QStringLiteral("b")));

    QCOMPARE(parts.Shown(), QStringLiteral("a b(c d) e"));
    QCOMPARE(parts.edits.Stack()->count(), 0);
}

void tst_StatementModel::copiesWhatComesFromElsewhere()
{
    Parts parts;
    Parts other({Log(QStringLiteral("z"))});
    const std::unique_ptr<QMimeData> mime(other.model.mimeData({other.model.IndexOf(QStringLiteral("z"))}));

    QVERIFY(parts.model.dropMimeData(mime.get(), Qt::MoveAction, 0, 0, QModelIndex()));

    QCOMPARE(parts.Process().GetRoot()->GetChildCount(), 4);
    QCOMPARE(parts.Process().GetRoot()->GetChild(0)->GetArgument(QStringLiteral("text")),
             QStringLiteral("z"));
    QCOMPARE(other.Shown(), QStringLiteral("z"));
}

void tst_StatementModel::dropsACommandAsANewStatement()
{
    Parts parts;
    QMimeData mime;
    mime.setData(StatementModel::CommandMime(), "t-read");

    QVERIFY(parts.model.dropMimeData(&mime, Qt::CopyAction, 0, 0, QModelIndex()));
    QVERIFY(parts.model.dropMimeData(&mime, Qt::CopyAction, 1, 0, QModelIndex()));

    QCOMPARE(parts.Process().GetRoot()->GetChild(0)->GetValues().output, QStringLiteral("content"));
    QCOMPARE(parts.Process().GetRoot()->GetChild(1)->GetValues().output, QStringLiteral("content2"));
}

void tst_StatementModel::ignoresForeignDrops()
{
    Parts parts;
    QMimeData text;
    text.setText(QStringLiteral("[{\"command\":\"t-log\"}]"));
    QMimeData broken;
    broken.setData(StatementModel::StatementsMime(), "[[[[{{{");
    QMimeData unknown;
    unknown.setData(StatementModel::CommandMime(), "no-such-command");

    QVERIFY(!parts.model.dropMimeData(&text, Qt::CopyAction, 0, 0, QModelIndex()));
    QVERIFY(!parts.model.dropMimeData(&broken, Qt::CopyAction, 0, 0, QModelIndex()));
    QVERIFY(!parts.model.dropMimeData(&unknown, Qt::CopyAction, 0, 0, QModelIndex()));

    QCOMPARE(parts.Shown(), QStringLiteral("a b(c d) e"));
}

using Step = std::function<void(Parts&)>;
Q_DECLARE_METATYPE(Step)

void tst_StatementModel::undoesEveryKindOfStep_data()
{
    QTest::addColumn<Step>("step");

    QTest::newRow("insert") << Step([](Parts& p) {
        p.edits.Insert(p.Process(), QStringLiteral("b"), 1,
                       {Statement(QStringLiteral("t-if"), {}, {Log({})})}, {});
    });
    QTest::newRow("remove several") << Step([](Parts& p) {
        p.edits.Remove(p.Process(), {QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("e")}, {});
    });
    QTest::newRow("values") << Step([](Parts& p) {
        RpaStatement values = p.Process().Find(QStringLiteral("a"))->GetValues();
        values.note = QStringLiteral("备注");
        p.edits.SetValues(p.Process(), values, QStringLiteral("note"), {});
    });
    QTest::newRow("disable") << Step([](Parts& p) {
        p.edits.SetEnabled(p.Process(), {QStringLiteral("a"), QStringLiteral("b")}, false);
    });
    QTest::newRow("add process") << Step([](Parts& p) { p.edits.AddProcess(QStringLiteral("新")); });
    QTest::newRow("rename process") << Step(
        [](Parts& p) { p.edits.RenameProcess(QStringLiteral("主流程"), QStringLiteral("新")); });
    QTest::newRow("move process") << Step([](Parts& p) { p.edits.MoveProcess(0, 1); });
}

void tst_StatementModel::undoesEveryKindOfStep()
{
    QFETCH(Step, step);
    Parts parts;
    const ProcessDataManager& manager = *parts.app->GetProcessDataManager();
    const QByteArray before = manager.ToJson();

    step(parts);
    const QByteArray after = manager.ToJson();
    QVERIFY(after != before);

    parts.edits.Stack()->undo();
    QCOMPARE(manager.ToJson(), before);
    parts.edits.Stack()->redo();
    QCOMPARE(manager.ToJson(), after);
}

void tst_StatementModel::joinsWhatIsTypedInOneGo()
{
    Parts parts;
    RpaStatement values = parts.Process().Find(QStringLiteral("a"))->GetValues();
    const auto type = [&parts, &values](const QString& text) {
        values.arguments.insert(QStringLiteral("text"), text);
        parts.edits.SetValues(parts.Process(), values, QStringLiteral("text"), {});
    };

    type(QStringLiteral("x"));
    type(QStringLiteral("xy"));
    QCOMPARE(parts.edits.Stack()->count(), 1);

    parts.edits.EndTyping();
    type(QStringLiteral("xyz"));
    QCOMPARE(parts.edits.Stack()->count(), 2);

    parts.edits.Stack()->undo();
    parts.edits.Stack()->undo();
    QCOMPARE(parts.Process().Find(QStringLiteral("a"))->GetArgument(QStringLiteral("text")),
             QStringLiteral("a"));
}

void tst_StatementModel::marksTheAppWithEveryStepBackAndForth()
{
    Parts parts;
    int edited = 0;
    QObject::connect(parts.app.data(), &RpaAppData::SigEdited, &parts.model, [&edited] { ++edited; });

    parts.edits.SetEnabled(parts.Process(), {QStringLiteral("a")}, false);
    parts.edits.Stack()->undo();
    parts.edits.Stack()->redo();
    parts.edits.SetEnabled(parts.Process(), {QStringLiteral("a")}, false); // changes nothing

    QCOMPARE(edited, 3);
    QVERIFY(parts.app->GetModified());
}

void tst_StatementModel::restoresARemovedProcessWithItsStatements()
{
    Parts parts;
    const ProcessDataManager& manager = *parts.app->GetProcessDataManager();
    RpaProcess* other = manager.GetProcess(1);
    parts.edits.Insert(*other, QString(), -1, {Log(QStringLiteral("q"))}, {});
    const QByteArray before = manager.ToJson();

    parts.edits.RemoveProcess(QStringLiteral("子流程"));
    QCOMPARE(manager.GetCount(), 1);

    parts.edits.Stack()->undo();
    QCOMPARE(manager.ToJson(), before);
    parts.edits.Stack()->undo(); // the step before works on the restored process
    QCOMPARE(manager.GetProcess(1)->GetStatementCount(), 0);
}

void tst_StatementModel::takesAboutAsLongPerStatementForManyStatements()
{
    QVector<RpaStatement> many;
    for (int i = 0; i < 10000; ++i)
        many.append(Log(QString::number(i)));
    const RpaAppDataPtr app = App(many);
    ProcessEdits edits(app);
    StatementModel model;
    QStringList ids;
    for (int i = 0; i < 10000; i += 2)
        ids.append(QString::number(i));
    QElapsedTimer clock;
    clock.start();

    model.SetProcess(&edits, Main(app));
    qInfo("show 10,000: %lld ms", clock.restart());
    edits.Remove(*Main(app), ids, {});
    qInfo("remove 5,000: %lld ms", clock.restart());
    edits.Stack()->undo();
    qInfo("undo: %lld ms", clock.restart());

    QCOMPARE(model.rowCount(), 10000);
}

RPA_TEST_MAIN(tst_StatementModel)

#include "tst_statementmodel.moc"
