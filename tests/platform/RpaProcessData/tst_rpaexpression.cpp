// SPDX-License-Identifier: Apache-2.0

#include <RpaProcessData/RpaExpression.h>

#include <QtTest>

Q_DECLARE_METATYPE(RpaArgumentType)

class RpaExpressionTest : public QObject
{
    Q_OBJECT

private slots:
    void turnsTextsIntoPython_data();
    void turnsTextsIntoPython();
    void findsTheNamesThatAreRead_data();
    void findsTheNamesThatAreRead();
    void tellsCompleteExpressions_data();
    void tellsCompleteExpressions();
    void tellsVariableNames_data();
    void tellsVariableNames();
};

void RpaExpressionTest::turnsTextsIntoPython_data()
{
    QTest::addColumn<RpaArgumentType>("type");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("python");

    const auto row = [](const char* name, RpaArgumentType type, const char* text, const char* python) {
        QTest::newRow(name) << type << QString::fromUtf8(text) << QString::fromUtf8(python);
    };
    row("literal text", RpaArgumentType::Text, "你好", R"("你好")");
    row("empty text", RpaArgumentType::Text, "", R"("")");
    row("blanks are text", RpaArgumentType::Text, "  ", R"("  ")");
    row("quotes and backslash", RpaArgumentType::Text, R"(C:\a "b")", R"("C:\\a \"b\"")");
    row("lines", RpaArgumentType::Text, "a\nb\tc\r", R"("a\nb\tc\u000d")");
    row("a template place", RpaArgumentType::Text, "${name}", R"("${name}")");
    row("beyond the basic plane", RpaArgumentType::Text, "😀", R"("😀")");
    // NOLINTNEXTLINE(misc-misleading-bidirectional)
    row("invisible characters", RpaArgumentType::Text, "\xE2\x80\xAE", R"("\u202e")");
    row("text as expression", RpaArgumentType::Text, "=名字 + 1", "名字 + 1");
    row("text that begins with the sign", RpaArgumentType::Text, "'=1", R"("=1")");
    row("text that begins with the mark", RpaArgumentType::Text, "''=1", R"("'=1")");
    row("an ordinary quote", RpaArgumentType::Text, "'a", R"("'a")");
    row("number", RpaArgumentType::Number, " 3.50 ", "3.50");
    row("number with zeros in front", RpaArgumentType::Number, "007", "7");
    row("zero", RpaArgumentType::Number, "0", "0");
    row("negative number", RpaArgumentType::Number, "-1e3", "-1e3");
    row("a variable for a number", RpaArgumentType::Number, "次数", "次数");
    row("an expression for a number", RpaArgumentType::Number, "=次数 * 2", "次数 * 2");
    row("no number", RpaArgumentType::Number, "", "None");
    row("switch", RpaArgumentType::Switch, "True", "True");
    row("switch off", RpaArgumentType::Switch, "false", "False");
    row("choice", RpaArgumentType::Choice, "=a", R"("=a")");
    row("expression", RpaArgumentType::Expression, " a > 1 ", "a > 1");
    row("expression with the sign", RpaArgumentType::Expression, "=a", "a");
    row("expression of two lines", RpaArgumentType::Expression, "a and\nb", "(a and\nb)");
    row("no expression", RpaArgumentType::Expression, "", "None");
    row("variable", RpaArgumentType::Variable, " x ", "x");
    row("process", RpaArgumentType::Process, "主\"流程", R"("主\"流程")");
    row("path as expression", RpaArgumentType::File, "=目录 + '/a'", "目录 + '/a'");
}

void RpaExpressionTest::turnsTextsIntoPython()
{
    QFETCH(RpaArgumentType, type);
    QFETCH(QString, text);
    QFETCH(QString, python);

    QCOMPARE(RpaExpression::ToPython(type, text), python);
}

void RpaExpressionTest::findsTheNamesThatAreRead_data()
{
    QTest::addColumn<QString>("python");
    QTest::addColumn<QString>("names");

    const auto row = [](const char* name, const char* python, const char* names) {
        QTest::newRow(name) << QString::fromUtf8(python) << QString::fromUtf8(names);
    };
    row("none", "1 + 2e-5 + 0xff", "");
    row("chinese", "单价 * 数量", "单价 数量");
    row("each once", "a + b + a", "a b");
    row("no attributes", "a.b.c(d).e", "a d");
    row("no keywords", "a if b is not None else True", "a b");
    row("no built-ins", "len(a) + int(\"3\")", "a");
    row("no named arguments", "sorted(a, key=b, reverse=True)", "a b");
    row("comparison is no named argument", "f(a == b)", "f a b");
    row("comprehension", "[x * y for x in a if x > z]", "y a z");
    row("two targets", "{k: v for k, v in d.items()}", "d");
    row("lambda", "sorted(a, key=lambda x: x[b])", "a b");
    row("walrus", "(n := a) > 1 and n", "a");
    row("inside texts", R"('a b' + "c" + r'\d' + '''e''')", "");
    row("escaped quote", R"('it\'s a' + b)", "b");
    row("f-string", "f'{a} {{b}} {c!r:>10} {d[\"e\"]}'", "a c d");
    row("comparison inside a field", "f'{a != b}'", "a b");
    row("subscript", "rows[i][0]", "rows i");
    row("open text", "'abc", "");
}

void RpaExpressionTest::findsTheNamesThatAreRead()
{
    QFETCH(QString, python);
    QFETCH(QString, names);

    QCOMPARE(RpaExpression::GetVariables(python).join(QLatin1Char(' ')), names);
}

void RpaExpressionTest::tellsCompleteExpressions_data()
{
    QTest::addColumn<QString>("python");
    QTest::addColumn<bool>("complete");

    const auto row = [](const char* python, bool complete) {
        QTest::newRow(python) << QString::fromUtf8(python) << complete;
    };
    row("== 3 and a > 1", false);
    row("a > 1 and == 3", false);
    row("a == and b", false);
    row("a > 1 or and b", false);
    row("f(a ==)", false);
    row("a not in (b) and not c", true);
    row("[x for x in y if x in z or w]", true);
    row("a", true);
    row("a > 1 and (b or c[2])", true);
    row("f(x=1, y==2)", true);
    row("{'a': [1, 2]}", true);
    row("a, b", true);
    row("(n := 3)", true);
    row("lambda x=1: x", false);
    row("a <= b", true);
    row("'#'", true);
    row("", false);
    row("(a", false);
    row("a)", false);
    row("(a]", false);
    row("'a", false);
    row("a +", false);
    row("a and", false);
    row("a = 1", false);
    row("a += 1", false);
    row("a # b", false);
    row("a; b", false);
    row("a ? b", false);
    row("f(", false);
}

void RpaExpressionTest::tellsCompleteExpressions()
{
    QFETCH(QString, python);
    QFETCH(bool, complete);

    QCOMPARE(RpaExpression::IsWellFormed(python), complete);
}

void RpaExpressionTest::tellsVariableNames_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("good");

    QTest::newRow("letters") << QStringLiteral("name_1") << true;
    QTest::newRow("chinese") << QStringLiteral("变量1") << true;
    QTest::newRow("underscore") << QStringLiteral("_") << true;
    QTest::newRow("empty") << QString() << false;
    QTest::newRow("digit first") << QStringLiteral("1a") << false;
    QTest::newRow("blank inside") << QStringLiteral("a b") << false;
    QTest::newRow("keyword") << QStringLiteral("class") << false;
    QTest::newRow("attribute") << QStringLiteral("a.b") << false;
    QTest::newRow("chinese punctuation") << QStringLiteral("变量，") << false;
}

void RpaExpressionTest::tellsVariableNames()
{
    QFETCH(QString, text);
    QFETCH(bool, good);

    QCOMPARE(RpaExpression::IsVariableName(text), good);
}

QTEST_GUILESS_MAIN(RpaExpressionTest)
#include "tst_rpaexpression.moc"
