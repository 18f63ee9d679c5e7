// SPDX-License-Identifier: Apache-2.0

// What runs do outside of themselves is told with start, duration, input and result; what they compute costs nothing.

#include "SpanFixture.h"

#include <RpaEngineModule/RpaDebugSession.h>

#include <QtTest>

#include <memory>

namespace
{

const QString forging =
    QStringLiteral("import __main__\n"
                   "def spans(*entries, sums=()):\n"
                   "    __main__.LINK.send({'t': 'spans', 'spans': entries, 'sums': sums})\n");

} // namespace

class tst_EngineSpans : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void aCallOfTheOutsideLeavesASpan();
    void aCallThatFailsLeavesItsError();
    void kindsAreTold_data();
    void kindsAreTold();
    void whatComputesOnlyLeavesNone_data();
    void whatComputesOnlyLeavesNone();
    void aStatementOfAVisualProcessIsNamed();
    void passwordsAreNotTold_data();
    void passwordsAreNotTold();
    void moreThanCanBeToldIsAddedUp();
    void positionsStandBetweenSpans();
    void theTraceIsThatOfTheProgram();
    void aDebuggedRunLeavesTheSameSpans();
    void aProgramThatCannotBeReadFailsAsBefore();
    void spansThatAreNoneAreLeftOut_data();
    void spansThatAreNoneAreLeftOut();
    void whatIsTooLongIsCut();

private:
    bool Run(const QString& program) { return fixture->Run(program); }

    std::unique_ptr<SpanFixture> fixture;
    SpanListener* told = nullptr;
};

void tst_EngineSpans::init()
{
    fixture = std::make_unique<SpanFixture>();
    told = &fixture->told;
}

void tst_EngineSpans::cleanup()
{
    fixture.reset();
}

void tst_EngineSpans::aCallOfTheOutsideLeavesASpan()
{
    QVERIFY(Run(QStringLiteral("import time\n"
                               "time.sleep(0.02)\n"
                               "with open('@a.txt', 'w') as file:\n"
                               "    file.write('abc')\n"
                               "print(open('@a.txt').read())\n")));

    QCOMPARE(told->Calls(), (QStringList{QStringLiteral("open"), QStringLiteral("write"),
                                         QStringLiteral("open"), QStringLiteral("read")}));
    const RpaRunSpan first = told->spans.first();
    QVERIFY(first.kind == RpaSpanKind::File);
    QCOMPARE(first.place.processName, QStringLiteral("主流程"));
    QCOMPARE(first.place.line, 3);
    QVERIFY(first.place.title.startsWith(QStringLiteral("with open('")));
    QCOMPARE(first.input, fixture->folder.filePath(QStringLiteral("a.txt")));
    QVERIFY2(first.start >= 20000, "it began after the sleep");
    QVERIFY(first.duration > 0);
    QCOMPARE(told->spans.at(3).result, QStringLiteral("abc"));
    QVERIFY(told->spans.at(3).start >= told->spans.at(2).start + told->spans.at(2).duration);
    QVERIFY(EngineRunFixture::LogHas(QStringLiteral("abc")));
}

void tst_EngineSpans::aCallThatFailsLeavesItsError()
{
    QVERIFY(Run(QStringLiteral("open('@missing.txt')\n")));

    QCOMPARE(told->spans.size(), 1);
    QVERIFY(told->spans.first().error.startsWith(QStringLiteral("FileNotFoundError: ")));
    QVERIFY(told->spans.first().result.isEmpty());
    QVERIFY(EngineRunFixture::LogHas(QStringLiteral("找不到文件")));
}

void tst_EngineSpans::kindsAreTold_data()
{
    QTest::addColumn<QString>("program");
    QTest::addColumn<int>("kind");
    QTest::addColumn<QString>("input");
    const auto add = [](const char* name, const char* program, RpaSpanKind kind, const char* input) {
        QTest::newRow(name) << QString::fromUtf8(program) << int(kind) << QString::fromUtf8(input);
    };
    add("a module's function", "import os\nos.mkdir('@d')", RpaSpanKind::File, "@d");
    add("under another name", "import shutil as s\ns.rmtree('@no', True)", RpaSpanKind::File, "@no");
    add("by itself", "from shutil import rmtree as gone\ngone('@no', True)", RpaSpanKind::File, "@no");
    add("a path", "import pathlib\npathlib.Path('@x').exists()", RpaSpanKind::File, "");
    add("a list of lines", "import csv, io\nlist(csv.reader(io.StringIO('a')))", RpaSpanKind::File, "");
    add("a program", "import subprocess, sys\nsubprocess.run([sys.executable, '-c', ''])",
        RpaSpanKind::Program, nullptr);
    add("a command", "import os\nos.system('exit 0')", RpaSpanKind::Program, "exit 0");
    add("a database", "import sqlite3\nsqlite3.connect(':memory:')", RpaSpanKind::Database, ":memory:");
    add("a web address",
        "from urllib.request import urlopen\ntry:\n    urlopen('http://127.0.0.1:1/a')\n"
        "except OSError:\n    pass",
        RpaSpanKind::Http, "http://127.0.0.1:1/a");
    add("the browser", "try:\n    rpa.browser_open('http://x.test')\nexcept Exception:\n    pass",
        RpaSpanKind::Browser, "http://x.test");
}

void tst_EngineSpans::kindsAreTold()
{
    QFETCH(QString, program);
    QFETCH(int, kind);
    QFETCH(QString, input);

    QVERIFY(Run(program));

    QCOMPARE(told->spans.size(), 1);
    QCOMPARE(int(told->spans.first().kind), kind);
    if (!input.isNull())
        QCOMPARE(told->spans.first().input,
                 input.replace(QStringLiteral("@"), fixture->folder.path() + QLatin1Char('/')));
    QVERIFY(EngineRunFixture::LogHas(QStringLiteral("运行完成")));
}

void tst_EngineSpans::whatComputesOnlyLeavesNone_data()
{
    QTest::addColumn<QString>("program");
    QTest::newRow("a loop") << "total = 0\nfor n in range(1000):\n    total += n";
    QTest::newRow("a line of many") << "class File:\n    def write(self, text):\n        assert "
                                       "sys._getframe(1).f_code.co_name == '<module>'\n"
                                       "import sys\nfile = File()\nfor n in range(3):\n    file.write('x')";
    QTest::newRow("in memory") << "import io\nio.StringIO().write('x')";
    QTest::newRow("a name of the author's") << "def open(path):\n    return path\nopen('x')";
    QTest::newRow("a method of the author's")
        << "class Book:\n    def save(self):\n        return 1\nassert Book().save() == 1";
    QTest::newRow("an object that answers to any name")
        << "class Any:\n    def __getattr__(self, name):\n        return lambda *a: name\n"
           "assert Any().execute() == 'execute'";
    QTest::newRow("text") << "'a'.replace('a', 'b')";
}

void tst_EngineSpans::whatComputesOnlyLeavesNone()
{
    QFETCH(QString, program);

    QVERIFY(Run(program));

    QVERIFY(EngineRunFixture::LogHas(QStringLiteral("运行完成")));
    QCOMPARE(told->Calls(), QStringList());
    QVERIFY(told->sums.isEmpty());
}

void tst_EngineSpans::aStatementOfAVisualProcessIsNamed()
{
    RpaStatement write = StatementOf("s7", "file.write");
    write.arguments = {{QStringLiteral("path"), fixture->folder.filePath(QStringLiteral("b.txt"))},
                       {QStringLiteral("text"), QStringLiteral("x")}};
    RpaStatement log = StatementOf("s8", "log");
    log.arguments = {{QStringLiteral("text"), QStringLiteral("x")}};
    QVERIFY(fixture->run.RunStatements({log, write}));
    QVERIFY(fixture->run.life.WaitUntilOver());

    QCOMPARE(told->Calls(), (QStringList{QStringLiteral("open"), QStringLiteral("write")}));
    for (const RpaRunSpan& span : qAsConst(told->spans)) {
        QCOMPARE(span.place.statementId, QStringLiteral("s7"));
        QCOMPARE(span.place.title, QStringLiteral("写入文本文件"));
        QCOMPARE(span.place.line, 2);
        QCOMPARE(span.place.processName, QStringLiteral("主流程"));
    }
}

void tst_EngineSpans::passwordsAreNotTold_data()
{
    QTest::addColumn<QString>("program");
    QTest::newRow("of the page") << "import pathlib\ntry:\n    open(rpa.get_param('密码'))\n"
                                    "except OSError:\n    pass";
    QTest::newRow("in an address") << "from urllib.request import urlopen\ntry:\n"
                                      "    urlopen('http://me:hunter22' + chr(64) + '127.0.0.1:1/?a=1')\n"
                                      "except Exception:\n    pass";
    QTest::newRow("as a field of an address") << "from urllib.request import urlopen\ntry:\n"
                                                 "    urlopen('http://127.0.0.1:1/?token=hunter22&b=1')\n"
                                                 "except Exception:\n    pass";
    QTest::newRow("of a command") << "import os\nos.system('exit 0 --password=hunter22')";
}

void tst_EngineSpans::passwordsAreNotTold()
{
    QFETCH(QString, program);

    QVERIFY(Run(program));

    QCOMPARE(told->spans.size(), 1);
    QVERIFY2(!told->spans.first().input.contains(QStringLiteral("hunter22")),
             qPrintable(told->spans.first().input));
    QVERIFY(told->spans.first().input.contains(QStringLiteral("••••")));
}

void tst_EngineSpans::moreThanCanBeToldIsAddedUp()
{
    QVERIFY(Run(QStringLiteral("import os\n"
                               "for number in range(30000):\n"
                               "    os.listdir('@')\n"
                               "try:\n"
                               "    for number in range(20000):\n"
                               "        os.remove('@no')\n"
                               "except OSError:\n"
                               "    pass\n")));

    qint64 count = told->spans.size();
    for (const RpaRunSpanSum& sum : qAsConst(told->sums)) {
        QCOMPARE(sum.place.line, 3);
        QVERIFY(sum.count > 0 && sum.total >= sum.longest && sum.longest > 0);
        QCOMPARE(sum.failures, qint64(0));
        count += sum.count;
    }
    QCOMPARE(count, qint64(30001));
    QVERIFY(!told->sums.isEmpty());
    QVERIFY(told->largest <= 100); // in one piece, so that the window is not held up
    QCOMPARE(told->spans.constLast().call, QStringLiteral("remove"));
}

void tst_EngineSpans::positionsStandBetweenSpans()
{
    QVERIFY(Run(QStringLiteral("import time\n"
                               "time.sleep(0.3)\n"
                               "open('@c', 'w').close()\n")));

    QVERIFY(!told->positions.isEmpty());
    QCOMPARE(told->positions.first().place.line, 2);
    QVERIFY(told->positions.first().start < told->spans.first().start);
}

void tst_EngineSpans::theTraceIsThatOfTheProgram()
{
    QVERIFY(Run(QStringLiteral("try:\n"
                               "    open('@missing')\n"
                               "except OSError as error:\n"
                               "    raise ValueError('x') from error\n")));

    const QString trace = EngineRunFixture::LogTexts().filter(QStringLiteral("Traceback")).value(0);
    QVERIFY(trace.contains(QStringLiteral("open('")));
    QVERIFY2(!trace.contains(QStringLiteral("rpa_spans")), qPrintable(trace));
}

void tst_EngineSpans::aDebuggedRunLeavesTheSameSpans()
{
    RpaBreakpoint breakpoint;
    breakpoint.place = {QStringLiteral("主流程"), {}, 2};
    breakpoint.logText = QStringLiteral("here");
    EngineRunFixture::Engine()->GetDebugSession()->SetBreakpoints({breakpoint});
    QVERIFY(Run(QStringLiteral("for n in range(2):\n"
                               "    open('@d%d' % n, 'w').close()\n")));
    EngineRunFixture::Engine()->GetDebugSession()->SetBreakpoints({});

    QVERIFY(EngineRunFixture::LogHas(QStringLiteral("here")));
    QCOMPARE(told->Calls(), (QStringList{QStringLiteral("open"), QStringLiteral("open")}));
    QCOMPARE(told->spans.first().place.line, 2);
}

void tst_EngineSpans::aProgramThatCannotBeReadFailsAsBefore()
{
    QVERIFY(Run(QStringLiteral("open('@x'\nprint(1)\n")));

    QVERIFY(EngineRunFixture::LogHas(QStringLiteral("代码无法识别：“(”没有配对的另一半（第 1 行）")));
    // What Python itself says shows the line.
    QVERIFY(!EngineRunFixture::LogTexts().filter(QStringLiteral("    open('")).isEmpty());
}

void tst_EngineSpans::spansThatAreNoneAreLeftOut_data()
{
    QTest::addColumn<QString>("frame");
    QTest::newRow("empty") << "spans([])";
    QTest::newRow("no list") << "spans(7)";
    QTest::newRow("spans that are a text") << "__main__.LINK.send({'t': 'spans', 'spans': 'abc', 'sums': 7})";
    QTest::newRow("nothing") << "__main__.LINK.send({'t': 'spans'})";
    QTest::newRow("a kind that is none") << "spans([1, 1, 1, 'other', 'open', '', '', ''])";
    QTest::newRow("a line that is none") << "spans([1, 1, 900, 'file', 'open', '', '', ''])";
    QTest::newRow("a negative line") << "spans([1, 1, -1, 'file', 'open', '', '', ''])";
    QTest::newRow("a line beyond numbers") << "spans([1, 1, 2**50, 'file', 'open', '', '', ''])";
    QTest::newRow("a line that is a text") << "spans([1, 1, '1', 'file', 'open', '', '', ''])";
    QTest::newRow("a sum of none") << "spans(sums=[[1, 'file', 0, 0, 0, 0]])";
    QTest::newRow("a sum of a kind that is none") << "spans(sums=[[1, [], 1, 1, 1, 1]])";
}

void tst_EngineSpans::spansThatAreNoneAreLeftOut()
{
    QFETCH(QString, frame);

    QVERIFY(Run(forging + frame + QLatin1Char('\n')));

    QVERIFY(EngineRunFixture::LogHas(QStringLiteral("运行完成")));
    QVERIFY(told->spans.isEmpty() && told->sums.isEmpty());
}

void tst_EngineSpans::whatIsTooLongIsCut()
{
    QVERIFY(
        Run(forging + QStringLiteral("spans([-5, 2**51, 1, 'file', 'c' * 999, 'i' * 999, ['r'], 'e' * 999])\n"
                                     "spans(*[[1, 1, 1, 'file', 'open', '', '', '']] * 5000)\n"
                                     "spans(sums=[[1, 'file', 5, 2**51, 2**51, 99]])\n")));

    const RpaRunSpan span = told->spans.first();
    QCOMPARE(span.start, qint64(0));
    QVERIFY(span.duration > 0 && span.duration <= qint64(400) * 24 * 3600 * 1000000);
    QVERIFY(span.call.size() <= 64 && span.input.size() <= 200 && span.error.size() <= 200);
    QCOMPARE(span.result, QString());
    QCOMPARE(told->spans.size(), 1001);
    QCOMPARE(told->sums.first().failures, qint64(5));
    QVERIFY(told->sums.first().total <= qint64(400) * 24 * 3600 * 1000000);
}

QTEST_MAIN(tst_EngineSpans)
#include "tst_enginespans.moc"
