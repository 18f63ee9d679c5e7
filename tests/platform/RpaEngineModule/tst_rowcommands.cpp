// SPDX-License-Identifier: Apache-2.0

#include "EngineRunFixture.h"

#include <RpaEngineCore/IAppTableEngine.h>
#include <RpaProcessData/RpaCommandCatalogue.h>

#include <QTest>

namespace
{

// A table of the page; cells of the second column are numbers only.
class PageTable : public IAppTableEngine
{
public:
    QStringList GetColumnNames() const override { return {QStringLiteral("姓名"), QStringLiteral("金额")}; }
    int GetRowCount() const override { return rows.size(); }
    QVariant GetCell(int row, int column) const override { return rows.value(row).value(column); }
    bool SetCell(int, int, const QVariant&) override { return false; }
    int AppendRow(const QVariantList& values) override
    {
        bool isNumber = false;
        values.value(1).toDouble(&isNumber);
        if (!isNumber && values.value(1).isValid() && !values.value(1).isNull())
            return -1;
        rows << values;
        return rows.size() - 1;
    }
    void ClearRows() override { rows.clear(); }

    QVector<QVariantList> rows;
};

using Arguments = QMap<QString, QString>;

RpaStatement Statement(const QString& command, const Arguments& arguments, const QString& output = QString())
{
    RpaStatement statement;
    statement.command = command;
    const RpaCommandInfo* const info = RpaCommandCatalogue::Instance()->Find(command);
    for (const RpaArgumentInfo& argument : info->arguments)
        statement.arguments.insert(argument.name, arguments.value(argument.name, argument.defaultValue));
    statement.output = output;
    return statement;
}

RpaStatement Print(const QString& expression)
{
    return Statement(QStringLiteral("log"),
                     {{QStringLiteral("text"), QStringLiteral("=repr(%1)").arg(expression)}});
}

// The command on rows that are given as Python, its result written to the log.
QVector<RpaStatement> OnRows(const QString& command, const QString& rows, Arguments arguments)
{
    arguments.insert(QStringLiteral("source"), QStringLiteral("rows"));
    arguments.insert(QStringLiteral("rows"), rows);
    return {Statement(command, arguments, QStringLiteral("结果")), Print(QStringLiteral("结果"))};
}

QString AllTexts()
{
    return EngineRunFixture::LogTexts().join(QLatin1Char('\n'));
}

Arguments Filter(const QString& column, const QString& comparison, const QString& value)
{
    return {{QStringLiteral("column"), column},
            {QStringLiteral("comparison"), comparison},
            {QStringLiteral("value"), value}};
}

Arguments Sort(const QString& columns, const QString& order)
{
    return {{QStringLiteral("columns"), columns}, {QStringLiteral("order"), order}};
}

Arguments Unique(const QString& columns, const QString& keep)
{
    return {{QStringLiteral("columns"), columns}, {QStringLiteral("keep"), keep}};
}

Arguments Group(const QString& by, const QString& function, const QString& columns)
{
    return {{QStringLiteral("by"), by},
            {QStringLiteral("function"), function},
            {QStringLiteral("columns"), columns}};
}

Arguments Join(const QString& column, const QString& others, const QString& otherColumn, const QString& kind)
{
    return {{QStringLiteral("column"), column},
            {QStringLiteral("others"), others},
            {QStringLiteral("other_column"), otherColumn},
            {QStringLiteral("kind"), kind}};
}

} // namespace

// Commands on whole tables, carried out by the real engine.
class RowCommands : public QObject
{
    Q_OBJECT

private slots:
    void givesTheRows_data();
    void givesTheRows();
    void saysWhatIsWrong_data();
    void saysWhatIsWrong();
    void worksOnTheTableOfThePage();
    void aMissingColumnOfAnEmptyPageTableIsSaid();
    void aRowThatDoesNotFitLeavesThePageTable();
    void takesAHundredThousandRows_data();
    void takesAHundredThousandRows();

private:
    static void AddFilters();
    static void AddSorts();
    static void AddUniques();
    static void AddGroups();
    static void AddJoins();
};

void RowCommands::AddFilters()
{
    const auto row = [](const char* name, const QString& cells, const QString& comparison,
                        const QString& value, const QString& expected) {
        QTest::newRow(name) << QStringLiteral("rows.filter")
                            << QStringLiteral("[{'甲': cell} for cell in %1]").arg(cells)
                            << Filter(QStringLiteral("甲"), comparison, value)
                            << QStringLiteral("[{'甲': %1}]").arg(expected);
    };
    const QString all = QStringLiteral("['007', '7.0', '8', 9, ' ', None, '张三']");
    row("equal in writing", all, QStringLiteral("equals"), QStringLiteral("007"), QStringLiteral("'007'"));
    row("equal as number", all, QStringLiteral("equals"), QStringLiteral("=7"), QStringLiteral("'7.0'"));
    row("greater: numbers as text", QStringLiteral("['100', '99', 9, 'zz', None]"), QStringLiteral("greater"),
        QStringLiteral("99"), QStringLiteral("'100'"));
    row("at least", QStringLiteral("['98', '99']"), QStringLiteral("at_least"), QStringLiteral("99"),
        QStringLiteral("'99'"));
    row("less: empty cells never", QStringLiteral("[None, '', 3, 20]"), QStringLiteral("less"),
        QStringLiteral("10"), QStringLiteral("3"));
    row("less: neither among texts", QStringLiteral("[None, ' ', 'c', 'a']"), QStringLiteral("less"),
        QStringLiteral("b"), QStringLiteral("'a'"));
    row("at most: a date", QStringLiteral("['2026年2月1日', '2026-1-31']"), QStringLiteral("at_most"),
        QStringLiteral("2026-01-31"), QStringLiteral("'2026-1-31'"));
    row("thousands and currency", QStringLiteral("['￥1,234.50', '999']"), QStringLiteral("greater"),
        QStringLiteral("1000"), QStringLiteral("'￥1,234.50'"));
    row("percent and full width", QStringLiteral("['５％', '12%']"), QStringLiteral("less"),
        QStringLiteral("10%"), QStringLiteral("'５％'"));
    row("contains", all, QStringLiteral("contains"), QStringLiteral("三"), QStringLiteral("'张三'"));
    row("lacks", QStringLiteral("['三', '四']"), QStringLiteral("lacks"), QStringLiteral("三"),
        QStringLiteral("'四'"));
    row("begins", QStringLiteral("['三四', '四三']"), QStringLiteral("begins"), QStringLiteral("三"),
        QStringLiteral("'三四'"));
    row("ends", QStringLiteral("['三四', '四三']"), QStringLiteral("ends"), QStringLiteral("三"),
        QStringLiteral("'四三'"));
    row("empty", QStringLiteral("['a', ' ', 0]"), QStringLiteral("empty"), QString(), QStringLiteral("' '"));
    row("filled", QStringLiteral("[None, '', 0]"), QStringLiteral("filled"), QString(), QStringLiteral("0"));
    row("differs", QStringLiteral("['a', 'A']"), QStringLiteral("differs"), QStringLiteral("a"),
        QStringLiteral("'A'"));
    QTest::newRow("rows that are lists keep their first one")
        << QStringLiteral("rows.filter") << QStringLiteral("[['名', '数'], ['a', 1], ['b', 2], ['c']]")
        << Filter(QStringLiteral("数"), QStringLiteral("equals"), QStringLiteral("2"))
        << QStringLiteral("[['名', '数'], ['b', 2]]");
    QTest::newRow("no rows at all") << QStringLiteral("rows.filter") << QStringLiteral("[]")
                                    << Filter(QStringLiteral("数"), QStringLiteral("equals"),
                                              QStringLiteral("2"))
                                    << QStringLiteral("[]");
}

void RowCommands::AddSorts()
{
    const auto row = [](const char* name, const QString& cells, const QString& order,
                        const QString& expected) {
        QTest::newRow(name) << QStringLiteral("rows.sort")
                            << QStringLiteral("[{'甲': cell} for cell in %1]").arg(cells)
                            << Sort(QStringLiteral("甲"), order) << QStringLiteral("[%1]").arg(expected);
    };
    row("numbers as text among numbers, empty cells last", QStringLiteral("[None, '10', 9, '08', '']"),
        QStringLiteral("ascending"),
        QStringLiteral("{'甲': '08'}, {'甲': 9}, {'甲': '10'}, {'甲': None}, {'甲': ''}"));
    row("empty cells last downwards, too", QStringLiteral("[None, 1, 2]"), QStringLiteral("descending"),
        QStringLiteral("{'甲': 2}, {'甲': 1}, {'甲': None}"));
    row("Chinese by pinyin behind Latin",
        QStringLiteral("['张', '啊', 'b', '李', 'A', '1', '2026-01-01', '鑫']"), QStringLiteral("ascending"),
        QStringLiteral("{'甲': '1'}, {'甲': '2026-01-01'}, {'甲': 'A'}, {'甲': 'b'}, {'甲': '啊'}, "
                       "{'甲': '李'}, {'甲': '鑫'}, {'甲': '张'}"));
    row("dates however they are written", QStringLiteral("['2026/10/1', '2026年9月30日', '2025-12-31']"),
        QStringLiteral("ascending"),
        QStringLiteral("{'甲': '2025-12-31'}, {'甲': '2026年9月30日'}, {'甲': '2026/10/1'}"));
    const QString people =
        QStringLiteral("[{'部': 'b', '序': 1}, {'部': 'a', '序': 2}, {'部': 'b', '序': 0}, "
                       "{'部': 'a', '序': 2, '后': 1}]");
    QTest::newRow("stable") << QStringLiteral("rows.sort") << people
                            << Sort(QStringLiteral("部"), QStringLiteral("ascending"))
                            << QStringLiteral("[{'部': 'a', '序': 2}, {'部': 'a', '序': 2, '后': 1}, "
                                              "{'部': 'b', '序': 1}, {'部': 'b', '序': 0}]");
    QTest::newRow("stable downwards")
        << QStringLiteral("rows.sort") << people << Sort(QStringLiteral("部"), QStringLiteral("descending"))
        << QStringLiteral("[{'部': 'b', '序': 1}, {'部': 'b', '序': 0}, "
                          "{'部': 'a', '序': 2}, {'部': 'a', '序': 2, '后': 1}]");
    QTest::newRow("several columns") << QStringLiteral("rows.sort") << people
                                     << Sort(QStringLiteral("部、序"), QStringLiteral("ascending"))
                                     << QStringLiteral(
                                            "[{'部': 'a', '序': 2}, {'部': 'a', '序': 2, '后': 1}, "
                                            "{'部': 'b', '序': 0}, {'部': 'b', '序': 1}]");
    QTest::newRow("a column with a comma in its name")
        << QStringLiteral("rows.sort") << QStringLiteral("[{'长,宽': 2}, {'长,宽': 1}]")
        << Sort(QStringLiteral("长,宽"), QStringLiteral("ascending"))
        << QStringLiteral("[{'长,宽': 1}, {'长,宽': 2}]");
}

void RowCommands::AddUniques()
{
    const auto row = [](const char* name, const QString& rows, const Arguments& arguments,
                        const QString& expected) {
        QTest::newRow(name) << QStringLiteral("rows.unique") << rows << arguments << expected;
    };
    const QString cells =
        QStringLiteral("[['号', '次'], ['7', 1], [7, 2], ['007', 3], ['7 ', 4], ['1.1', 5], "
                       "['1.10', 6], ['', 7], [None, 8]]");
    row("the first of equal ones", cells, Unique(QStringLiteral("号"), QStringLiteral("first")),
        QStringLiteral("[['号', '次'], ['7', 1], ['007', 3], ['1.1', 5], ['1.10', 6], ['', 7]]"));
    row("the last of equal ones", cells, Unique(QStringLiteral("号"), QStringLiteral("last")),
        QStringLiteral("[['号', '次'], ['007', 3], ['7 ', 4], ['1.1', 5], ['1.10', 6], [None, 8]]"));
    row("long numbers differ in their last digit",
        QStringLiteral("[{'证': '110101199001011234'}, {'证': '110101199001011235'}]"),
        Unique(QString(), QStringLiteral("first")),
        QStringLiteral("[{'证': '110101199001011234'}, {'证': '110101199001011235'}]"));
    row("all columns", QStringLiteral("[{'甲': 1, '乙': 2}, {'甲': 1, '乙': 3}, {'乙': 2.0, '甲': 1}]"),
        Unique(QString(), QStringLiteral("first")),
        QStringLiteral("[{'甲': 1, '乙': 2}, {'甲': 1, '乙': 3}]"));
}

void RowCommands::AddGroups()
{
    const QString rows =
        QStringLiteral("[{'部': 'b', '额': '0.1'}, {'部': 'a', '额': 5}, {'部': 'b', '额': 0.2}, "
                       "{'部': 'b', '额': None}, {'部': '', '额': '1,000'}]");
    const auto row = [&rows](const char* name, const QString& function, const QString& columns,
                             const QString& expected) {
        QTest::newRow(name) << QStringLiteral("rows.group") << rows
                            << Group(QStringLiteral("部"), function, columns)
                            << QStringLiteral("[%1]").arg(expected);
    };
    const QString amount = QStringLiteral("额");
    row("sum", QStringLiteral("sum"), amount,
        QStringLiteral("{'部': 'b', '额合计': 0.3}, {'部': 'a', '额合计': 5}, {'部': '', '额合计': 1000}"));
    row("count of cells", QStringLiteral("count"), amount,
        QStringLiteral("{'部': 'b', '额个数': 2}, {'部': 'a', '额个数': 1}, {'部': '', '额个数': 1}"));
    row("count of rows", QStringLiteral("count"), QString(),
        QStringLiteral("{'部': 'b', '个数': 3}, {'部': 'a', '个数': 1}, {'部': '', '个数': 1}"));
    row("average", QStringLiteral("average"), amount,
        QStringLiteral("{'部': 'b', '额平均': 0.15}, {'部': 'a', '额平均': 5}, {'部': '', '额平均': 1000}"));
    row("min", QStringLiteral("min"), amount,
        QStringLiteral("{'部': 'b', '额最小': 0.1}, {'部': 'a', '额最小': 5}, {'部': '', '额最小': 1000}"));
    row("max", QStringLiteral("max"), amount,
        QStringLiteral("{'部': 'b', '额最大': 0.2}, {'部': 'a', '额最大': 5}, {'部': '', '额最大': 1000}"));
    QTest::newRow("several columns of lists")
        << QStringLiteral("rows.group")
        << QStringLiteral("[['部', '组', '额', '量'], ['x', 1, 2, 3], ['x', '1', 4, 5], ['x', 2, 6, 7]]")
        << Group(QStringLiteral("部，组"), QStringLiteral("sum"), QStringLiteral("额,量"))
        << QStringLiteral("[['部', '组', '额合计', '量合计'], ['x', 1, 6, 8], ['x', 2, 6, 7]]");
    QTest::newRow("latest date") << QStringLiteral("rows.group")
                                 << QStringLiteral(
                                        "[{'部': 1, '日': '2026-9-1'}, {'部': 1, '日': '2026-10-01'}]")
                                 << Group(QStringLiteral("部"), QStringLiteral("max"), QStringLiteral("日"))
                                 << QStringLiteral("[{'部': 1, '日最大': '2026-10-01'}]");
}

void RowCommands::AddJoins()
{
    const QString left =
        QStringLiteral("[{'工号': '1', '额': 10}, {'工号': 2, '额': 20}, {'工号': '', '额': 30}, "
                       "{'工号': 9, '额': 40}]");
    const QString right =
        QStringLiteral("[['号', '名', '额'], [1, '张', 100], ['2', '李', 200], [2, '王', 300], "
                       "[None, '空', 400]]");
    const QString found = QStringLiteral("{'工号': '1', '额': 10, '名': '张', '额2': 100}, "
                                         "{'工号': 2, '额': 20, '名': '李', '额2': 200}, "
                                         "{'工号': 2, '额': 20, '名': '王', '额2': 300}");
    QTest::newRow("inner") << QStringLiteral("rows.join") << left
                           << Join(QStringLiteral("工号"), right, QStringLiteral("号"),
                                   QStringLiteral("inner"))
                           << QStringLiteral("[%1]").arg(found);
    QTest::newRow("left") << QStringLiteral("rows.join") << left
                          << Join(QStringLiteral("工号"), right, QStringLiteral("号"), QStringLiteral("left"))
                          << QStringLiteral("[%1, {'工号': '', '额': 30, '名': None, '额2': None}, "
                                            "{'工号': 9, '额': 40, '名': None, '额2': None}]")
                                 .arg(found);
    QTest::newRow("the same name on both sides, lists")
        << QStringLiteral("rows.join") << QStringLiteral("[['号', '甲'], [1, 2]]")
        << Join(QStringLiteral("号"), QStringLiteral("[{'号': '1', '乙': 3}]"), QString(),
                QStringLiteral("inner"))
        << QStringLiteral("[['号', '甲', '乙'], [1, 2, 3]]");
    QTest::newRow("two columns") << QStringLiteral("rows.join")
                                 << QStringLiteral("[{'甲': 1, '乙': 2}, {'甲': 1, '乙': 3}]")
                                 << Join(QStringLiteral("甲、乙"),
                                         QStringLiteral("[{'丙': 1, '丁': 3, '戊': 'x'}]"),
                                         QStringLiteral("丙、丁"), QStringLiteral("inner"))
                                 << QStringLiteral("[{'甲': 1, '乙': 3, '戊': 'x'}]");
    QTest::newRow("with nothing") << QStringLiteral("rows.join") << QStringLiteral("[{'甲': 1}]")
                                  << Join(QStringLiteral("甲"), QStringLiteral("[]"), QString(),
                                          QStringLiteral("left"))
                                  << QStringLiteral("[{'甲': 1}]");
}

void RowCommands::givesTheRows_data()
{
    QTest::addColumn<QString>("command");
    QTest::addColumn<QString>("rows");
    QTest::addColumn<Arguments>("arguments");
    QTest::addColumn<QString>("expected");
    AddFilters();
    AddSorts();
    AddUniques();
    AddGroups();
    AddJoins();
}

void RowCommands::givesTheRows()
{
    QFETCH(QString, command);
    QFETCH(QString, rows);
    QFETCH(Arguments, arguments);
    QFETCH(QString, expected);
    EngineRunFixture engine;

    QVERIFY(engine.RunStatements(OnRows(command, rows, arguments)));

    QVERIFY(engine.life.WaitUntilOver());
    QVERIFY2(EngineRunFixture::LogTexts().contains(expected), qPrintable(AllTexts()));
}

void RowCommands::saysWhatIsWrong_data()
{
    QTest::addColumn<QString>("command");
    QTest::addColumn<QString>("rows");
    QTest::addColumn<Arguments>("arguments");
    QTest::addColumn<QString>("expected");

    const QString rows = QStringLiteral("[{'名': 'a', '额': '12元'}]");
    QTest::newRow("missing column") << QStringLiteral("rows.sort") << rows
                                    << Sort(QStringLiteral("年龄"), QStringLiteral("ascending"))
                                    << QStringLiteral("没有名为“年龄”的列，现有的列：名、额");
    QTest::newRow("one of several is missing") << QStringLiteral("rows.unique") << rows
                                               << Unique(QStringLiteral("名、年龄"), QStringLiteral("first"))
                                               << QStringLiteral("没有名为“年龄”的列");
    QTest::newRow("no column") << QStringLiteral("rows.filter") << rows
                               << Filter(QString(), QStringLiteral("equals"), QStringLiteral("1"))
                               << QStringLiteral("请填写列名");
    QTest::newRow("nothing to compare with")
        << QStringLiteral("rows.filter") << rows
        << Filter(QStringLiteral("名"), QStringLiteral("contains"), QString())
        << QStringLiteral("请填写要比较的值");
    QTest::newRow("no number") << QStringLiteral("rows.group")
                               << QStringLiteral("[['部', '额'], ['x', 1], ['x', '12元']]")
                               << Group(QStringLiteral("部"), QStringLiteral("sum"), QStringLiteral("额"))
                               << QStringLiteral("第 3 行“额”的“12元”不是数字，不能计算");
    QTest::newRow("no list") << QStringLiteral("rows.sort") << QStringLiteral("'abc'")
                             << Sort(QStringLiteral("名"), QStringLiteral("ascending"))
                             << QStringLiteral("要处理的各行必须是列表");
    QTest::newRow("rows of two forms") << QStringLiteral("rows.sort") << QStringLiteral("[{'名': 1}, [2]]")
                                       << Sort(QStringLiteral("名"), QStringLiteral("ascending"))
                                       << QStringLiteral("第 2 行与其他行的形式不同");
    QTest::newRow("no rows given") << QStringLiteral("rows.sort") << QString()
                                   << Sort(QStringLiteral("名"), QStringLiteral("ascending"))
                                   << QStringLiteral("请填写要处理的各行");
    QTest::newRow("too many pairs") << QStringLiteral("rows.join") << QStringLiteral("[{'甲': 1}] * 2000")
                                    << Join(QStringLiteral("甲"), QStringLiteral("[{'甲': 1}] * 2000"),
                                            QString(), QStringLiteral("inner"))
                                    << QStringLiteral("结果超过 1,000,000 行");
}

void RowCommands::saysWhatIsWrong()
{
    QFETCH(QString, command);
    QFETCH(QString, rows);
    QFETCH(Arguments, arguments);
    QFETCH(QString, expected);
    EngineRunFixture engine;

    QVERIFY(engine.RunStatements(OnRows(command, rows, arguments)));

    QVERIFY(engine.life.WaitUntilOver());
    QVERIFY2(EngineRunFixture::LogHas(expected), qPrintable(AllTexts()));
    QVERIFY(EngineRunFixture::LogHas(QStringLiteral("运行失败")));
}

void RowCommands::worksOnTheTableOfThePage()
{
    EngineRunFixture engine;
    PageTable table;
    table.rows = {{QStringLiteral("王"), 3.0}, {QStringLiteral("李"), 20.0}, {QStringLiteral("张"), 100.0}};
    EngineRunFixture::Engine()->SetAppTableEngine(&table);

    QVERIFY(engine.RunStatements(
        {Statement(QStringLiteral("rows.filter"),
                   Filter(QStringLiteral("金额"), QStringLiteral("greater"), QStringLiteral("10")),
                   QStringLiteral("筛选结果")),
         Statement(QStringLiteral("rows.sort"),
                   {{QStringLiteral("source"), QStringLiteral("rows")},
                    {QStringLiteral("rows"), QStringLiteral("筛选结果")},
                    {QStringLiteral("columns"), QStringLiteral("金额")},
                    {QStringLiteral("order"), QStringLiteral("descending")}},
                   QStringLiteral("排序结果")),
         Statement(QStringLiteral("rows.show"), {{QStringLiteral("rows"), QStringLiteral("排序结果")}})}));

    QVERIFY(engine.life.WaitUntilOver());
    const QVector<QVariantList> expected{{QStringLiteral("张"), 100.0}, {QStringLiteral("李"), 20.0}};
    QVERIFY2(table.rows == expected, qPrintable(AllTexts()));
}

void RowCommands::aMissingColumnOfAnEmptyPageTableIsSaid()
{
    EngineRunFixture engine;
    PageTable table;
    EngineRunFixture::Engine()->SetAppTableEngine(&table);

    QVERIFY(engine.RunStatements(
        {Statement(QStringLiteral("rows.sort"), Sort(QStringLiteral("年龄"), QStringLiteral("ascending")),
                   QStringLiteral("排序结果"))}));

    QVERIFY(engine.life.WaitUntilOver());
    QVERIFY2(EngineRunFixture::LogHas(QStringLiteral("没有名为“年龄”的列，现有的列：姓名、金额")),
             qPrintable(AllTexts()));
}

void RowCommands::aRowThatDoesNotFitLeavesThePageTable()
{
    EngineRunFixture engine;
    PageTable table;
    table.rows = {{QStringLiteral("王"), 3.0}};
    EngineRunFixture::Engine()->SetAppTableEngine(&table);

    QVERIFY(engine.RunStatements({Statement(
        QStringLiteral("rows.show"),
        {{QStringLiteral("rows"), QStringLiteral("[['姓名', '金额'], ['李', 1], ['张', '多']]")}})}));

    QVERIFY(engine.life.WaitUntilOver());
    QVERIFY2(EngineRunFixture::LogHas(QStringLiteral("第 3 行的值与界面表格的列不符，表格没有改变")),
             qPrintable(AllTexts()));
    const QVector<QVariantList> before{{QStringLiteral("王"), 3.0}};
    QVERIFY(table.rows == before);
}

void RowCommands::takesAHundredThousandRows_data()
{
    QTest::addColumn<QString>("command");
    QTest::addColumn<Arguments>("arguments");

    QTest::newRow("filter") << QStringLiteral("rows.filter")
                            << Filter(QStringLiteral("号"), QStringLiteral("at_least"), QStringLiteral("0"));
    QTest::newRow("sort") << QStringLiteral("rows.sort")
                          << Sort(QStringLiteral("号、名"), QStringLiteral("ascending"));
    QTest::newRow("unique") << QStringLiteral("rows.unique")
                            << Unique(QStringLiteral("号、名"), QStringLiteral("first"));
    QTest::newRow("group") << QStringLiteral("rows.group")
                           << Group(QStringLiteral("号"), QStringLiteral("sum"), QStringLiteral("序"));
    QTest::newRow("join") << QStringLiteral("rows.join")
                          << Join(QStringLiteral("号"),
                                  QStringLiteral("[{'号': i, '丙': -i} for i in range(100000)]"), QString(),
                                  QStringLiteral("left"));
}

// Work that grew with the square of the rows would outlast the patience a thousandfold.
void RowCommands::takesAHundredThousandRows()
{
    QFETCH(QString, command);
    QFETCH(Arguments, arguments);
    EngineRunFixture engine;
    arguments.insert(QStringLiteral("source"), QStringLiteral("rows"));
    arguments.insert(QStringLiteral("rows"),
                     QStringLiteral("[{'号': str(i * 7919 % 100000), '名': f'员{i}', '序': i} "
                                    "for i in range(100000)]"));

    QVERIFY(engine.RunStatements({Statement(command, arguments, QStringLiteral("结果")),
                                  Print(QStringLiteral("('行数', len(结果))"))}));

    QVERIFY(engine.life.WaitUntilOver(60000));
    QVERIFY2(EngineRunFixture::LogTexts().contains(QStringLiteral("('行数', 100000)")),
             qPrintable(AllTexts()));
}

QTEST_MAIN(RowCommands)
#include "tst_rowcommands.moc"
