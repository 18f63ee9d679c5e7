// SPDX-License-Identifier: Apache-2.0

#include "LastValues_p.h"
#include "ProgramVariables_p.h"

#include <QTest>

// What a part of a program needs from what stands before it, and which last values can be given again.
class tst_ProgramVariables : public QObject
{
    Q_OBJECT

private slots:
    void needsWhatIsSkipped_data();
    void needsWhatIsSkipped();
    void knowsWholeValues_data();
    void knowsWholeValues();
};

void tst_ProgramVariables::needsWhatIsSkipped_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("first");
    QTest::addColumn<int>("last");
    QTest::addColumn<QString>("needed");
    const auto row = [](const char* name, const char* text, int first, int last, const char* needed) {
        QTest::newRow(name) << QString::fromUtf8(text) << first << last << QString::fromUtf8(needed);
    };
    row("read", "a = 1\nb = 2\nprint(a)", 3, 0, "a");
    row("set again before it is read", "a = 1\na = 2\nprint(a)", 2, 0, "");
    row("added to", "a = 1\na += 2", 2, 0, "a");
    row("several at once", "a, 乙 = 1, 2\nprint(a + 乙)", 2, 0, "a 乙");
    row("with a type", "a: int = 1\nprint(a)", 2, 0, "a");
    row("a comparison sets nothing", "x = 1\nif x == 1:\n    y = 2\nprint(y)", 4, 0, "y");
    row("loop and file", "for a in b:\n    pass\nwith open(p) as f:\n    pass\nprint(a, f)", 5, 0, "a f");
    row("only chosen lines", "a = 1\nb = 2\nprint(a)\nprint(b)", 3, 3, "a");
    row("a function that it calls", "a = 1\ndef f():\n    c = a\n    return c\nf()", 5, 0, "a");
    row("a function that calls another",
        "a = 1\ndef f():\n    return g()\ndef g():\n    return a\nprint(f())", 6, 0, "a");
    row("a function that it does not call", "a = 1\ndef f():\n    return a\nprint(2)", 4, 0, "");
    row("parameters of a function", "a = 1\ndef f(a, *b):\n    return a\nf(2)", 4, 0, "");
    row("a class before it", "a = 1\nclass C:\n    b = a\nC()", 4, 0, "a");
    row("names of a function are its own", "def f():\n    c = 1\n    return c\nprint(c)", 4, 0, "");
    row("from inside of a statement", "a = 1\nfor i in range(a):\n    print(i)", 3, 0, "a");
    row("nothing before it", "print(a)", 1, 0, "");
    row("beyond the end", "a = 1", 9, 0, "");
}

void tst_ProgramVariables::needsWhatIsSkipped()
{
    QFETCH(QString, text);
    QFETCH(int, first);
    QFETCH(int, last);
    QTEST(ProgramVariables::FindNeeded(text, first, last).join(QLatin1Char(' ')), "needed");
}

void tst_ProgramVariables::knowsWholeValues_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("whole");
    int count = 0;
    const auto row = [&count](const char* text, bool whole) {
        QTest::addRow("value %d", ++count) << QString::fromUtf8(text) << whole;
    };
    row("1", true);
    row("-1.5e-07", true);
    row("True", true);
    row("'它说 \\'好\\' … <x>'", true);
    row("[1, 'a', {'b': None}]", true);
    row("('a',)", true);
    row("'aaa'…", false);
    row("[1, 2, …]", false);
    row("<Frame object>", false);
    row("[<Frame object>]", false);
    row("datetime.date(2026, 1, 2)", false);
    row("约 2 的 700 次方", false);
    row("••••••", false);
    row("nan", false);
    row("", false);
}

void tst_ProgramVariables::knowsWholeValues()
{
    QFETCH(QString, text);
    QTEST(LastValues::IsWhole(text), "whole");
}

QTEST_GUILESS_MAIN(tst_ProgramVariables)
#include "tst_programvariables.moc"
