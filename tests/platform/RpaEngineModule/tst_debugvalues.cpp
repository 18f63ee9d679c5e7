// SPDX-License-Identifier: Apache-2.0

// What a stop shows of values, however large or hostile they are.

#include "DebugScript.h"

#include <RpaEngineCore/IAppParamEngine.h>
#include <RpaEngineCore/IAppTableEngine.h>

#include <QSignalSpy>

namespace
{

class TwoParams : public IAppParamEngine
{
public:
    QStringList GetParamNames() const override { return {QStringLiteral("数量"), QStringLiteral("口令")}; }
    QStringList GetSecretParamNames() const override { return {QStringLiteral("口令")}; }
    QVariant GetParam(const QString& name) const override
    {
        return name == QStringLiteral("数量") ? count : QStringLiteral("secret-word");
    }
    bool SetParam(const QString& name, const QVariant& value) override
    {
        count = value;
        return name == QStringLiteral("数量");
    }

    QVariant count = 3;
};

class SmallTable : public IAppTableEngine
{
public:
    QStringList GetColumnNames() const override { return {QStringLiteral("姓名"), QStringLiteral("金额")}; }
    int GetRowCount() const override { return 300; }
    QVariant GetCell(int row, int column) const override
    {
        return column ? QVariant(row) : QStringLiteral("甲");
    }
    bool SetCell(int, int, const QVariant&) override { return false; }
    int AppendRow(const QVariantList&) override { return -1; }
    void ClearRows() override {}
};

// Stops in its last line.
QString Stopping(const char* program)
{
    return QString::fromUtf8(program) + QStringLiteral("\npass\n");
}

} // namespace

class DebugValues : public QObject
{
    Q_OBJECT

private slots:
    void areShownAndChanged_data();
    void areShownAndChanged();
    void aLongTextIsReadInPieces();
    void parametersAndTableAreShown();
    void watchesAreComputedAtEachStop();
    void whatPrintsWhileItIsShownIsNotHeard();
};

void DebugValues::areShownAndChanged_data()
{
    QTest::addColumn<QString>("program");
    QTest::addColumn<QStringList>("commands");
    QTest::addColumn<QStringList>("told");
    const auto row = [](const char* name, const char* program, const Lines& commands, const Lines& told) {
        QTest::newRow(name) << Stopping(program) << commands << told;
    };
    const char* const all = "vars 全局变量";

    row("plain values", "a, b, c, d = 1, 'x', None, 1.5", {"break 2", "run", all},
        {"breakpoint 2", "a=1 b='x' c=None d=1.5"});
    row("Chinese names and texts", "名 = '值'", {"break 2", "run", all}, {"breakpoint 2", "名='值'"});
    row("modules and functions are left out", "import os\ndef f(): pass\nclass C: pass\nx = 1",
        {"break 5", "run", all}, {"breakpoint 5", "x=1"});
    row("a list, opened", "x = [1, [2, 3]]", {"break 2", "run", all, "open x"},
        {"breakpoint 2", "x=[1, [2, 3]]", "[0]=1 [1]=[2, 3]"});
    row("a page of a long list", "x = list(range(1000))", {"break 2", "run", all, "open x 500 3"},
        {"breakpoint 2", "x=[0, 1, 2, 3, 4, 5, 6, 7, …]", "[500]=500 [501]=501 [502]=502"});
    row("a dictionary, opened", "x = {'a': 1, 2: [3]}", {"break 2", "run", all, "open x"},
        {"breakpoint 2", "x={'a': 1, 2: [3]}", "'a'=1 2=[3]"});
    row("a structure in itself", "x = []\nx.append(x)", {"break 3", "run", all, "open x", "open [0]"},
        {"breakpoint 3", "x=[[[…]]]", "[0]=[[[…]]]", "[0]=[[[…]]]"});
    row("an object, opened",
        "class C:\n    def __init__(self): self.a = 1\n    def __repr__(self): return 'C!'\nx = C()",
        {"break 5", "run", all, "open x", "set a 7", "eval x.a"},
        {"breakpoint 5", "x=C!", "a=1", "a=7", "= 7"});
    row("a repr that raises", "class C:\n    def __repr__(self): raise ValueError\nx = C()",
        {"break 4", "run", all}, {"breakpoint 4", "x=<C：无法显示（ValueError）>"});
    row("a repr that never returns", "class C:\n    def __repr__(self):\n        while True: pass\nx = C()",
        {"break 5", "run", all, "continue"}, {"breakpoint 5", "x=<C：显示超时>", "end"});
    row("a repr that is no text", "class C:\n    def __repr__(self): return 5\nx = C()",
        {"break 4", "run", all}, {"breakpoint 4", "x=<C：无法显示（TypeError）>"});
    row("a repr that ends the program", "class C:\n    def __repr__(self): raise SystemExit\nx = C()",
        {"break 4", "run", all, "continue"}, {"breakpoint 4", "x=<C：无法显示（SystemExit）>", "end"});
    row("a number of a million digits", "x = 1 << 4000000", {"break 2", "run", all},
        {"breakpoint 2", "x=约 2 的 4000001 次方"});
    row("a data frame",
        "class Rows:\n    def __getitem__(self, k): return [k, k * 2]\nclass DataFrame:\n    columns = ['a', "
        "'b']\n"
        "    iloc = Rows()\n    def __len__(self): return 2\n    def __repr__(self): return 'frame'\nx = "
        "DataFrame()",
        {"break 9", "run", all, "open x"},
        {"breakpoint 9", "x=frame", "[0]={'a': 0, 'b': 0} [1]={'a': 1, 'b': 2}"});
    row("locals, set to change the outcome", "def f(n):\n    k = n\n    return k * 2\nprint(f(4))",
        {"break 3", "run", "scopes", "vars 局部变量", "set k 50", "continue", "log"},
        {"breakpoint f:3", "局部变量 全局变量", "k=4 n=4", "k=50", "end", "100"});
    row("an entry of a list and of a dictionary, set", "x = [1]\ny = {'k': 1}",
        {"break 3", "run", all, "open x", "set [0] 5", "open y", "set 'k' x", "eval (x, y)"},
        {"breakpoint 3", "x=[1] y={'k': 1}", "[0]=1", "[0]=5", "'k'=1", "'k'=[5]", "= ([5], {'k': […]})"});
    row("a value that cannot be computed is not set", "x = 1",
        {"break 2", "run", all, "set x 1 / 0", "set x y", "eval x"},
        {"breakpoint 2", "x=1", "! ZeroDivisionError: division by zero",
         "! NameError: name 'y' is not defined", "= 1"});
    row("a tuple's entry cannot be set", "x = (1,)", {"break 2", "run", all, "open x", "set [0] 2"},
        {"breakpoint 2", "x=(1)", "[0]=1", "! 这里的值不能修改"});
    row("what changed since the stop before is marked", "x = [1]\ny = 2\nx.append(3)\nz = 4",
        {"break 3", "run", all, "over", all, "over", all},
        {"breakpoint 3", "x=[1] y=2", "step 4", "x=[1, 3]* y=2", "step 5", "x=[1, 3] y=2 z=4*"});
    row("an evaluation that never returns is given up", "x = 1",
        {"break 2", "run", "eval any(k for k in iter(int, 1))", "eval x"},
        {"breakpoint 2", "! 计算时间太长，已放弃", "= 1"});
    row("an evaluation that ends the program does not", "x = 1",
        {"break 2", "run", "eval exit()", "continue"}, {"breakpoint 2", "! SystemExit: None", "end"});
    row("an evaluation calls a function that has a breakpoint", "def f():\n    return 5\nx = 1",
        {"break 2", "break 4", "run", "eval f()", "continue"}, {"breakpoint 4", "= 5", "end"});
}

void DebugValues::areShownAndChanged()
{
    QFETCH(QString, program);
    QFETCH(QStringList, commands);
    QFETCH(QStringList, told);
    DebugScript script;
    script.SetText(program);

    const QStringList heard = script.Do(commands);

    QCOMPARE(heard, told);
}

void DebugValues::aLongTextIsReadInPieces()
{
    DebugScript script;
    script.SetText(Stopping("x = 'ab' * 5000000"));
    script.Do({QStringLiteral("break 2"), QStringLiteral("run"), QStringLiteral("vars 全局变量")});
    QCOMPARE(script.answer.values.size(), 1);
    const RpaDebugValue text = script.answer.values.first();
    QCOMPARE(text.size, qint64(10000000));
    QVERIFY(text.text.size() < 300);
    QCOMPARE(text.inside, 5000);

    script.Do({QStringLiteral("open x 4999 10")});

    QCOMPARE(script.answer.values.size(), 1);
    QCOMPARE(script.answer.total, 5000);
    QCOMPARE(script.answer.values.first().name, QStringLiteral("[9998000]"));
    QCOMPARE(script.answer.values.first().text, QStringLiteral("ab").repeated(1000));
}

void DebugValues::parametersAndTableAreShown()
{
    TwoParams params;
    SmallTable table;
    DebugScript script;
    DebugScript::Engine()->SetAppParamEngine(&params);
    DebugScript::Engine()->SetAppTableEngine(&table);
    script.SetText(Stopping("x = 1"));

    const QStringList told =
        script.Do({QStringLiteral("break 2"), QStringLiteral("run"), QStringLiteral("scopes"),
                   QStringLiteral("vars 界面参数"), QStringLiteral("set 数量 8"),
                   QStringLiteral("vars 界面表格"), QStringLiteral("open [99]")});
    const QStringList logged =
        script.Do({QStringLiteral("stop"), QStringLiteral("clear 2"),
                   QStringLiteral("break 2|log {rpa.get_param('口令')} {rpa.get_param('数量')}"),
                   QStringLiteral("run"), QStringLiteral("log")});

    QCOMPARE(told.value(1), QStringLiteral("全局变量 界面参数 界面表格"));
    QCOMPARE(told.value(2), QStringLiteral("数量=3 口令=••••••"));
    QCOMPARE(params.count.toInt(), 8);
    QVERIFY(told.value(4).startsWith(QStringLiteral("[0]={'姓名': '甲', '金额': 0} ")));
    QCOMPARE(told.value(5), QStringLiteral("'姓名'='甲' '金额'=99"));
    QCOMPARE(logged.value(2), QStringLiteral("•••••• 8"));
}

void DebugValues::watchesAreComputedAtEachStop()
{
    DebugScript script;
    script.SetText(QStringLiteral("for i in range(3):\n    pass\n"));
    QSignalSpy watches(DebugScript::Session(), &RpaDebugSession::SigWatches);

    script.Do({QStringLiteral("watch i * 2"), QStringLiteral("break 2"), QStringLiteral("run")});
    QTRY_COMPARE(watches.size(), 1);
    QCOMPARE(script.watched.value(0).text, QStringLiteral("0"));
    QVERIFY(!script.watched.value(0).changed);
    script.Do({QStringLiteral("continue")});
    QTRY_COMPARE(watches.size(), 2);

    QCOMPARE(script.watched.value(0).name, QStringLiteral("i * 2"));
    QCOMPARE(script.watched.value(0).text, QStringLiteral("2"));
    QVERIFY(script.watched.value(0).changed);
    script.Do({QStringLiteral("watch nothing"), QStringLiteral("continue")});
    QTRY_COMPARE(watches.size(), 3);
    QCOMPARE(script.watched.value(0).error, QStringLiteral("NameError: name 'nothing' is not defined"));
}

void DebugValues::whatPrintsWhileItIsShownIsNotHeard()
{
    DebugScript script;
    script.SetText(
        Stopping("class C:\n    def __repr__(self):\n        print('noise')\n        return 'C!'\nx = C()"));

    const QStringList told = script.Do({QStringLiteral("break 6"), QStringLiteral("run"),
                                        QStringLiteral("eval x"), QStringLiteral("eval print('asked for')"),
                                        QStringLiteral("continue"), QStringLiteral("log")});

    QCOMPARE(told.value(1), QStringLiteral("= C!"));
    QCOMPARE(told.value(4), QStringLiteral("asked for"));
}

QTEST_MAIN(DebugValues)
#include "tst_debugvalues.moc"
