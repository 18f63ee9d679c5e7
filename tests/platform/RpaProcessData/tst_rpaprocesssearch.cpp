// SPDX-License-Identifier: Apache-2.0

#include <RpaProcessData/ProcessDataManager.h>
#include <RpaProcessData/RpaCommandCatalogue.h>
#include <RpaProcessData/RpaProcess.h>
#include <RpaProcessData/RpaProcessSearch.h>

#include <QtTest>

namespace
{
RpaStatement Statement(const QString& command, const QMap<QString, QString>& arguments,
                       const QString& output = QString(), const QString& note = QString())
{
    RpaStatement statement;
    statement.command = command;
    statement.arguments = arguments;
    statement.output = output;
    statement.note = note;
    return statement;
}

RpaStatement Log(const QString& text)
{
    return Statement(QStringLiteral("log"), {{QStringLiteral("text"), text}});
}

RpaSearchOptions Options(const QString& text)
{
    RpaSearchOptions options;
    options.text = text;
    return options;
}
} // namespace

class RpaProcessSearchTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void findsNothingWithoutAText();
    void findsInTheOrderOfTheApp();
    void findsLetterByLetter_data();
    void findsLetterByLetter();
    void tellsNamesFromTexts_data();
    void tellsNamesFromTexts();
    void leavesOutWhatAuthorsDoNotRead();
    void findsInUnknownCommands();
    void replacesEveryPlaceOfAStatementInOneChange();
    void saysWhatMustNotBeReplaced_data();
    void saysWhatMustNotBeReplaced();
    void leavesOutWhatHasChangedMeanwhile();

private:
    QVector<RpaSearchPlace> Find(const QString& text) const
    {
        return RpaProcessSearch(Options(text)).Find(*manager);
    }

    std::unique_ptr<ProcessDataManager> manager;
};

void RpaProcessSearchTest::init()
{
    manager = std::make_unique<ProcessDataManager>();
    manager->AddProcess(QStringLiteral("主流程"));
    manager->AddProcess(QStringLiteral("子流程"));
}

void RpaProcessSearchTest::findsNothingWithoutAText()
{
    manager->GetProcess(0)->SetStatements({Log(QStringLiteral("a"))});

    QVERIFY(Find(QString()).isEmpty());
}

void RpaProcessSearchTest::findsInTheOrderOfTheApp()
{
    RpaStatement block =
        Statement(QStringLiteral("if"), {{QStringLiteral("condition"), QStringLiteral("订单 > 1")}});
    RpaStatement inside = Log(QStringLiteral("没有"));
    inside.enabled = false;
    inside.note = QStringLiteral("订单没有了");
    block.children = {inside};
    block.enabled = false;
    manager->GetProcess(0)->SetStatements({Log(QStringLiteral("x")), block});
    manager->GetProcess(1)->SetStatements(
        {Statement(QStringLiteral("loop.list"), {{QStringLiteral("list"), QStringLiteral("表")}},
                   QStringLiteral("订单"))});

    QStringList found;
    const QVector<RpaSearchPlace> places = Find(QStringLiteral("订单"));
    for (const RpaSearchPlace& place : places)
        found.append(QStringLiteral("%1 %2 %3 %4")
                         .arg(place.processName)
                         .arg(place.line)
                         .arg(int(place.kind))
                         .arg(place.argument));

    QCOMPARE(found, (QStringList{QStringLiteral("主流程 2 0 condition"), QStringLiteral("主流程 3 2 "),
                                 QStringLiteral("子流程 1 1 ")}));
}

void RpaProcessSearchTest::findsLetterByLetter_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("matchCase");
    QTest::addColumn<bool>("wholeWords");
    QTest::addColumn<QVector<int>>("begins");

    QTest::newRow("any case") << "Sum sum SUM" << false << false << QVector<int>{0, 4, 8};
    QTest::newRow("this case") << "Sum sum SUM" << true << false << QVector<int>{4};
    QTest::newRow("words") << "sum sums resum sum_1 (sum)" << false << true << QVector<int>{0, 22};
    QTest::newRow("none over another") << "sumsum" << false << false << QVector<int>{0, 3};
    QTest::newRow("beside Chinese letters is no word") << "总sum" << false << true << QVector<int>();
    QTest::newRow("none") << "so much" << false << false << QVector<int>();
}

void RpaProcessSearchTest::findsLetterByLetter()
{
    QFETCH(QString, text);
    QFETCH(bool, matchCase);
    QFETCH(bool, wholeWords);
    QFETCH(QVector<int>, begins);
    manager->GetProcess(0)->SetStatements({Log(text)});
    RpaSearchOptions options = Options(QStringLiteral("sum"));
    options.matchCase = matchCase;
    options.wholeWords = wholeWords;

    const QVector<RpaSearchPlace> places = RpaProcessSearch(options).Find(*manager);

    QCOMPARE(places.isEmpty() ? QVector<int>() : places.first().begins, begins);
}

void RpaProcessSearchTest::tellsNamesFromTexts_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QVector<int>>("names");
    QTest::addColumn<QVector<int>>("texts");

    QTest::newRow("literal") << "单号" << QVector<int>() << QVector<int>{0};
    QTest::newRow("expression") << "=单号 + \"单号\"" << QVector<int>{1} << QVector<int>{7};
    QTest::newRow("field of a text") << "=f\"单号{单号}\"" << QVector<int>{6} << QVector<int>{3};
    QTest::newRow("part of a name") << "=大单号2" << QVector<int>{2} << QVector<int>();
}

void RpaProcessSearchTest::tellsNamesFromTexts()
{
    QFETCH(QString, text);
    QFETCH(QVector<int>, names);
    QFETCH(QVector<int>, texts);
    manager->GetProcess(0)->SetStatements({Log(text)});
    const auto beginsIn = [this](bool inNames, bool inTexts) {
        RpaSearchOptions options = Options(QStringLiteral("单号"));
        options.inNames = inNames;
        options.inTexts = inTexts;
        const QVector<RpaSearchPlace> places = RpaProcessSearch(options).Find(*manager);
        return places.isEmpty() ? QVector<int>() : places.first().begins;
    };

    QCOMPARE(beginsIn(true, false), names);
    QCOMPARE(beginsIn(false, true), texts);
    QCOMPARE(beginsIn(true, true).size(), names.size() + texts.size());
    QCOMPARE(beginsIn(false, false), QVector<int>());
}

void RpaProcessSearchTest::leavesOutWhatAuthorsDoNotRead()
{
    manager->GetProcess(0)->SetStatements(
        {Statement(QStringLiteral("browser.click"), {{QStringLiteral("element"), QStringLiteral("info7")}}),
         Statement(QStringLiteral("log"), {{QStringLiteral("text"), QStringLiteral("x")},
                                           {QStringLiteral("level"), QStringLiteral("info")}})});
    const RpaCommandInfo* click = RpaCommandCatalogue::Instance()->Find(QStringLiteral("browser.click"));
    QVERIFY(click && click->FindArgument(QStringLiteral("element")));

    QVERIFY(Find(QStringLiteral("info")).isEmpty());
}

void RpaProcessSearchTest::findsInUnknownCommands()
{
    manager->GetProcess(0)->SetStatements(
        {Statement(QStringLiteral("of.tomorrow"), {{QStringLiteral("what"), QStringLiteral("订单")}})});

    QCOMPARE(Find(QStringLiteral("订单")).size(), 1);
}

void RpaProcessSearchTest::replacesEveryPlaceOfAStatementInOneChange()
{
    RpaStatement read =
        Statement(QStringLiteral("loop.list"), {{QStringLiteral("list"), QStringLiteral("订单[:订单数]")}},
                  QStringLiteral("订单"), QStringLiteral("订单，订单"));
    manager->GetProcess(0)->SetStatements({read, Log(QStringLiteral("订单"))});
    const RpaProcessSearch search(Options(QStringLiteral("订单")));

    const QVector<RpaStatementChange> changes =
        search.Replace(*manager, search.Find(*manager), QStringLiteral("票"));

    QCOMPARE(changes.size(), 2);
    QCOMPARE(changes.first().after.arguments.value(QStringLiteral("list")), QStringLiteral("票[:票数]"));
    QCOMPARE(changes.first().after.output, QStringLiteral("票"));
    QCOMPARE(changes.first().after.note, QStringLiteral("票，票"));
    QCOMPARE(changes.first().before.output, QStringLiteral("订单"));
    QCOMPARE(manager->GetProcess(0)->GetStatements().first().output, QStringLiteral("订单"));
}

void RpaProcessSearchTest::saysWhatMustNotBeReplaced_data()
{
    QTest::addColumn<QString>("command");
    QTest::addColumn<QString>("argument");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("with");
    QTest::addColumn<QString>("problem");

    const auto row = [](const char* name, const char* command, const char* argument, const char* text,
                        const char* with, const char* problem) {
        QTest::newRow(name) << command << argument << text << with << problem;
    };
    row("a text", "log", "text", "旧的", "新的！", "");
    row("a variable", "variable.set", "name", "旧", "新", "");
    row("no name", "variable.set", "name", "旧", "新的 值", "“新的 值”不能作为变量名");
    row("a built-in name", "variable.set", "name", "旧", "len", "“len”不能作为变量名");
    row("no name in an expression", "log", "text", "=旧值 + 1", "新 ", "“新 值”不能作为变量名");
    row("a text in an expression", "log", "text", "=\"旧值\" + 1", "新 ", "");
    row("an open text", "log", "text", "=\"旧值\" + 1", "\"", "替换后表达式不完整");
    row("an expression of a text", "log", "text", "旧a", "=", "替换后会变成表达式");
    row("a process", "process.run", "process", "旧子流程", "", "");
    row("no process", "process.run", "process", "旧的", "新", "没有流程“新的”");
}

void RpaProcessSearchTest::saysWhatMustNotBeReplaced()
{
    QFETCH(QString, command);
    QFETCH(QString, argument);
    QFETCH(QString, text);
    QFETCH(QString, with);
    QFETCH(QString, problem);
    manager->GetProcess(0)->SetStatements({Statement(command, {{argument, text}})});
    const RpaProcessSearch search(Options(QStringLiteral("旧")));
    const QVector<RpaSearchPlace> places = search.Find(*manager);
    QCOMPARE(places.size(), 1);

    QCOMPARE(search.Problem(*manager, places.first(), with), problem);
    QCOMPARE(search.Replace(*manager, places, with).size(), problem.isEmpty() ? 1 : 0);
}

void RpaProcessSearchTest::leavesOutWhatHasChangedMeanwhile()
{
    manager->GetProcess(0)->SetStatements({Log(QStringLiteral("旧")), Log(QStringLiteral("旧"))});
    const RpaProcessSearch search(Options(QStringLiteral("旧")));
    const QVector<RpaSearchPlace> places = search.Find(*manager);
    QCOMPARE(places.size(), 2);
    manager->GetProcess(0)->SetArgument(places.first().statementId, QStringLiteral("text"),
                                        QStringLiteral("换了"));

    const QVector<RpaStatementChange> changes = search.Replace(*manager, places, QStringLiteral("新"));

    QCOMPARE(changes.size(), 1);
    QCOMPARE(changes.first().before.id, places.last().statementId);
}

QTEST_GUILESS_MAIN(RpaProcessSearchTest)

#include "tst_rpaprocesssearch.moc"
