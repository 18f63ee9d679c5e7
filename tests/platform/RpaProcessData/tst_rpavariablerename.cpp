// SPDX-License-Identifier: Apache-2.0

#include <RpaProcessData/ProcessDataManager.h>
#include <RpaProcessData/RpaProcess.h>
#include <RpaProcessData/RpaVariableRename.h>

#include <QtTest>

namespace
{
RpaStatement Statement(const QString& command, const QMap<QString, QString>& arguments,
                       const QString& output = QString())
{
    RpaStatement statement;
    statement.command = command;
    statement.arguments = arguments;
    statement.output = output;
    return statement;
}

RpaStatement Log(const QString& text)
{
    return Statement(QStringLiteral("log"), {{QStringLiteral("text"), text}});
}
} // namespace

class RpaVariableRenameTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void renamesWhereItIsRead_data();
    void renamesWhereItIsRead();
    void renamesInAllProcessesWhereverItStands();
    void countsSettersApart();
    void saysWhatIsWrongWithAName_data();
    void saysWhatIsWrongWithAName();
    void listsVariablesOfAllProcesses();

private:
    std::unique_ptr<ProcessDataManager> manager;
};

void RpaVariableRenameTest::init()
{
    manager = std::make_unique<ProcessDataManager>();
    manager->AddProcess(QStringLiteral("主流程"));
    manager->AddProcess(QStringLiteral("子流程"));
}

void RpaVariableRenameTest::renamesWhereItIsRead_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("renamed");
    QTest::addColumn<int>("places");

    const auto row = [](const char* name, const QString& text, const QString& renamed, int places) {
        QTest::newRow(name) << text << renamed << places;
    };
    row("expression", QStringLiteral("=金额 + 1"), QStringLiteral("=总额度 + 1"), 1);
    row("twice", QStringLiteral("= 金额*金额"), QStringLiteral("= 总额度*总额度"), 2);
    row("literal text", QStringLiteral("金额"), QStringLiteral("金额"), 0);
    row("place in a literal text", QStringLiteral("${金额}"), QStringLiteral("${金额}"), 0);
    row("string inside", QStringLiteral("=\"金额\" + 金额 + '金额'"),
        QStringLiteral("=\"金额\" + 总额度 + '金额'"), 1);
    row("field of an f-string", QStringLiteral("=f\"金额 {金额:.2f} {{金额}} {金额 + 1}\" + 金额"),
        QStringLiteral("=f\"金额 {总额度:.2f} {{金额}} {总额度 + 1}\" + 总额度"), 3);
    row("attribute", QStringLiteral("=行.金额 + 金额.金额"), QStringLiteral("=行.金额 + 总额度.金额"), 1);
    row("named argument", QStringLiteral("=f(金额=金额)"), QStringLiteral("=f(金额=总额度)"), 1);
    row("bound in the expression itself", QStringLiteral("=[金额 for 金额 in 列表]"),
        QStringLiteral("=[金额 for 金额 in 列表]"), 0);
    row("part of a longer name", QStringLiteral("=金额2 + 总金额"), QStringLiteral("=金额2 + 总金额"), 0);
    row("several lines", QStringLiteral("=(金额 +\n  金额)"), QStringLiteral("=(总额度 +\n  总额度)"), 2);
}

void RpaVariableRenameTest::renamesWhereItIsRead()
{
    QFETCH(QString, text);
    QFETCH(QString, renamed);
    manager->GetProcess(0)->SetStatements({Log(text)});

    const RpaVariableRename rename(*manager, QStringLiteral("金额"), QStringLiteral("总额度"));

    QTEST(rename.CountPlaces(), "places");
    QCOMPARE(rename.GetChanges().size(), rename.CountPlaces() > 0 ? 1 : 0);
    if (rename.CountPlaces() > 0)
        QCOMPARE(rename.GetChanges().first().after.arguments.value(QStringLiteral("text")), renamed);
}

void RpaVariableRenameTest::renamesInAllProcessesWhereverItStands()
{
    RpaStatement loop =
        Statement(QStringLiteral("loop.list"), {{QStringLiteral("list"), QStringLiteral("各行")}});
    loop.enabled = false;
    loop.children = {
        Statement(QStringLiteral("list.append"), {{QStringLiteral("list"), QStringLiteral("各行")},
                                                  {QStringLiteral("value"), QStringLiteral("=len(各行)")}})};
    manager->GetProcess(0)->SetStatements(
        {Statement(QStringLiteral("table.read"), {}, QStringLiteral("各行")), loop});
    manager->GetProcess(1)->SetStatements({Log(QStringLiteral("=各行")), Log(QStringLiteral("各行"))});

    const RpaVariableRename rename(*manager, QStringLiteral("各行"), QStringLiteral("订单"));

    QCOMPARE(rename.CountPlaces(), 5);
    QCOMPARE(rename.GetChanges().size(), 4);
    QCOMPARE(rename.GetChanges().at(0).after.output, QStringLiteral("订单"));
    QCOMPARE(rename.GetChanges().at(0).before.output, QStringLiteral("各行"));
    QCOMPARE(rename.GetChanges().at(1).after.arguments.value(QStringLiteral("list")), QStringLiteral("订单"));
    QCOMPARE(rename.GetChanges().at(1).after.enabled, false);
    QCOMPARE(rename.GetChanges().at(2).after.arguments.value(QStringLiteral("list")), QStringLiteral("订单"));
    QCOMPARE(rename.GetChanges().at(2).after.arguments.value(QStringLiteral("value")),
             QStringLiteral("=len(订单)"));
    QCOMPARE(rename.GetChanges().at(3).processName, QStringLiteral("子流程"));
}

void RpaVariableRenameTest::countsSettersApart()
{
    manager->GetProcess(0)->SetStatements(
        {Statement(QStringLiteral("variable.set"), {{QStringLiteral("name"), QStringLiteral("数")}}),
         Statement(QStringLiteral("table.read"), {}, QStringLiteral("数")),
         Statement(QStringLiteral("list.append"), {{QStringLiteral("list"), QStringLiteral("数")}}),
         Log(QStringLiteral("=数"))});

    const RpaVariableRename rename(*manager, QStringLiteral("数"), QStringLiteral("量"));

    QCOMPARE(rename.CountPlaces(), 4);
    QCOMPARE(rename.CountSetters(), 2);
}

void RpaVariableRenameTest::saysWhatIsWrongWithAName_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("problem");

    QTest::newRow("free") << QStringLiteral("新的") << QString();
    QTest::newRow("empty") << QString() << QStringLiteral("请填写变量名");
    QTest::newRow("no name") << QStringLiteral("1天")
                             << QStringLiteral("变量名只能用文字、字母、数字和下划线，不能以数字开头");
    QTest::newRow("keyword") << QStringLiteral("for")
                             << QStringLiteral("变量名只能用文字、字母、数字和下划线，不能以数字开头");
    QTest::newRow("of the system") << QStringLiteral("len") << QStringLiteral("“len”是系统使用的名称");
    QTest::newRow("set elsewhere") << QStringLiteral("已设") << QStringLiteral("“已设”已经在使用");
    QTest::newRow("read elsewhere") << QStringLiteral("已读") << QStringLiteral("“已读”已经在使用");
    QTest::newRow("bound in an expression") << QStringLiteral("逐个") << QStringLiteral("“逐个”已经在使用");
    QTest::newRow("changed elsewhere") << QStringLiteral("已改") << QStringLiteral("“已改”已经在使用");
    QTest::newRow("module of a command")
        << QStringLiteral("openpyxl") << QStringLiteral("“openpyxl”已经在使用");
    QTest::newRow("in a text only") << QStringLiteral("文中") << QString();
}

void RpaVariableRenameTest::saysWhatIsWrongWithAName()
{
    QFETCH(QString, name);
    manager->GetProcess(1)->SetStatements(
        {Statement(QStringLiteral("table.read"), {}, QStringLiteral("已设")),
         Log(QStringLiteral("=[逐个 for 逐个 in 已读] + '文中'")),
         Statement(QStringLiteral("list.append"), {{QStringLiteral("list"), QStringLiteral("已改")}}),
         Statement(QStringLiteral("excel.create"), {})});

    QTEST(RpaVariableRename::Problem(*manager, name), "problem");
}

void RpaVariableRenameTest::listsVariablesOfAllProcesses()
{
    manager->GetProcess(0)->SetStatements({Statement(QStringLiteral("table.read"), {}, QStringLiteral("b"))});
    manager->GetProcess(1)->SetStatements(
        {Statement(QStringLiteral("variable.set"), {{QStringLiteral("name"), QStringLiteral("a")}}),
         Statement(QStringLiteral("table.read"), {}, QStringLiteral("b")),
         Statement(QStringLiteral("table.clear"), {})});

    QCOMPARE(RpaVariableRename::NamesIn(*manager), (QStringList{QStringLiteral("a"), QStringLiteral("b")}));
}

QTEST_GUILESS_MAIN(RpaVariableRenameTest)
#include "tst_rpavariablerename.moc"
