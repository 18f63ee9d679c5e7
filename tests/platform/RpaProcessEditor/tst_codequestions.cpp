// SPDX-License-Identifier: Apache-2.0

#include "CodeQuestions_p.h"
#include "CompletionItems_p.h"
#include "HelperPython.h"
#include "TestFolder.h"

#include <RpaEngineModule/RpaEngineModule.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTest>

#include <memory>

using Kind = CodeQuestion::Kind;

namespace
{
// A loaded machine may need long for a Python with jedi.
constexpr int patienceMs = 100 * 1000;

QStringList NamesOf(const QVariantMap& answer)
{
    QStringList names;
    const CompletionItems items = CompletionLists::Of(answer);
    for (const CompletionItem& item : items)
        names.append(item.name);
    return names;
}
} // namespace

// The real helper with the real jedi, and helpers that misbehave.
class tst_CodeQuestions : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void cleanupTestCase() { shared.reset(); }

    void completes_data();
    void completes();
    void completesAheadOfADot();
    void knowsWhatTheWorkstationOffers();
    void namesTheCurrentArgument();
    void findsDefinitions_data();
    void findsDefinitions();
    void findsPlacesToRename_data();
    void findsPlacesToRename();
    void findsModulesOfPackages();
    void runsNothingOfTheAuthor();
    void answersOnlyTheNewestOfAKind();
    void answersNobodyWhoHasGone();
    void refusesATextThatIsTooLong();
    void standsALongText();
    void isAskedAgainWhenTheHelperDies();
    void givesUpAQuestionThatKills();
    void endsWhoTalksNonsense_data();
    void endsWhoTalksNonsense();
    void saysWhenJediIsMissing();
    void saysWhenThereIsNoPython();

private:
    // One that starts a helper of its own, for this test function only.
    void StartAnew();
    // The cursor stands at "|".
    QVariantMap Ask(Kind kind, QString text);

    QObject asker;
    std::unique_ptr<CodeQuestions> shared;
    std::unique_ptr<CodeQuestions> own;
    CodeQuestions* questions = nullptr;
};

void tst_CodeQuestions::init()
{
    if (!shared)
        shared = std::make_unique<CodeQuestions>();
    questions = shared.get();
}

void tst_CodeQuestions::cleanup()
{
    own.reset();
    questions = nullptr;
}

void tst_CodeQuestions::StartAnew()
{
    own = std::make_unique<CodeQuestions>();
    questions = own.get();
}

QVariantMap tst_CodeQuestions::Ask(Kind kind, QString text)
{
    const int offset = text.indexOf(QLatin1Char('|'));
    text.remove(offset, 1);
    QVariantMap result;
    bool isAnswered = false;
    questions->Ask(&asker, {kind, text, offset}, [&](const QVariantMap& answer) {
        result = answer;
        isAnswered = true;
    });
    [&] { QTRY_VERIFY_WITH_TIMEOUT(isAnswered, patienceMs); }();
    return result;
}

void tst_CodeQuestions::completes_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("name");

    QTest::newRow("builtin") << QStringLiteral("|") << QStringLiteral("print");
    QTest::newRow("module") << QStringLiteral("import os\nos.|") << QStringLiteral("listdir");
    QTest::newRow("of a value") << QStringLiteral("x = 'a'\nx.|") << QStringLiteral("upper");
    QTest::newRow("names in Chinese")
        << QStringLiteral("class 订单:\n    def 合计(self): pass\n订单().|") << QStringLiteral("合计");
    QTest::newRow("behind characters of two")
        << QStringLiteral("s = '\U0001F600\U0001F600'; s.|") << QStringLiteral("upper");
    QTest::newRow("amid syntax errors")
        << QStringLiteral("def f(:\n  x = (\nimport os\nos.|\n)]}") << QStringLiteral("listdir");
    QTest::newRow("on an empty line, what is written below")
        << QStringLiteral("def a():\n    x = 1\n    |\n\ndef 后面(): pass") << QStringLiteral("后面");
    QTest::newRow("on an empty line, what is in the function")
        << QStringLiteral("def a():\n    里面 = 1\n    |\n\ndef b(): pass") << QStringLiteral("里面");
    QTest::newRow("modules") << QStringLiteral("import |") << QStringLiteral("json");
}

void tst_CodeQuestions::completes()
{
    QFETCH(QString, text);
    QFETCH(QString, name);

    const QStringList names = NamesOf(Ask(Kind::Complete, text));

    QVERIFY2(names.contains(name), qPrintable(names.join(QLatin1Char(' '))));
}

void tst_CodeQuestions::completesAheadOfADot()
{
    QVERIFY(NamesOf(Ask(Kind::CompleteAhead, QStringLiteral("import os\nos|")))
                .contains(QStringLiteral("listdir")));
    // The text itself has no dot yet.
    QVERIFY(
        !NamesOf(Ask(Kind::Complete, QStringLiteral("import os\n|os"))).contains(QStringLiteral("listdir")));
}

void tst_CodeQuestions::knowsWhatTheWorkstationOffers()
{
    QVERIFY(NamesOf(Ask(Kind::Complete, QStringLiteral("|"))).contains(QStringLiteral("rpa")));
    QVERIFY(NamesOf(Ask(Kind::Complete, QStringLiteral("rpa.|"))).contains(QStringLiteral("table_rows")));
    QVERIFY(NamesOf(Ask(Kind::Complete, QStringLiteral("rpa.table_rows()[0].|")))
                .contains(QStringLiteral("items")));

    const QVariantList names =
        Ask(Kind::Explain, QStringLiteral("rpa.table_co|unt()")).value(QStringLiteral("names")).toList();

    QCOMPARE(names.size(), 1);
    QCOMPARE(names.first().toMap().value(QStringLiteral("text")).toString(),
             QStringLiteral("页面表格的行数。"));
}

void tst_CodeQuestions::namesTheCurrentArgument()
{
    const QVariantMap signature = Ask(Kind::Signatures, QStringLiteral("\nrpa.browser_click('x', |"))
                                      .value(QStringLiteral("signatures"))
                                      .toList()
                                      .value(0)
                                      .toMap();

    QCOMPARE(signature.value(QStringLiteral("name")).toString(), QStringLiteral("browser_click"));
    QCOMPARE(signature.value(QStringLiteral("current")).toInt(), 1);
    QCOMPARE(signature.value(QStringLiteral("line")).toInt(), 2);
    QCOMPARE(signature.value(QStringLiteral("column")).toInt(), 17);
}

void tst_CodeQuestions::findsDefinitions_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("line");
    QTest::addColumn<bool>("isOwn");
    QTest::addColumn<bool>("hasFile");

    QTest::newRow("in the text") << QStringLiteral("\ndef 求和(): pass\n求|和()") << 2 << false << false;
    QTest::newRow("module of Python") << QStringLiteral("import json\njson.du|mps") << 0 << false << true;
    QTest::newRow("builtin") << QStringLiteral("pri|nt()") << 0 << false << false;
    QTest::newRow("of the workstation") << QStringLiteral("rpa.lo|g(1)") << 0 << true << false;
    QTest::newRow("the workstation") << QStringLiteral("r|pa") << 0 << true << false;
}

void tst_CodeQuestions::findsDefinitions()
{
    QFETCH(QString, text);
    QFETCH(int, line);
    QFETCH(bool, isOwn);
    QFETCH(bool, hasFile);

    const QVariantList all = Ask(Kind::Define, text).value(QStringLiteral("definitions")).toList();

    QVERIFY(!all.isEmpty());
    const QVariantMap definition = all.first().toMap();
    QCOMPARE(definition.value(QStringLiteral("line")).toInt(), line);
    QCOMPARE(definition.value(QStringLiteral("own")).toBool(), isOwn);
    QCOMPARE(!definition.value(QStringLiteral("file")).toString().isEmpty(), hasFile);
}

void tst_CodeQuestions::findsPlacesToRename_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QVariantList>("places");
    QTest::addColumn<QString>("refused");

    const auto at = [](int line, int column) { return QVariant(QVariantList{line, column}); };
    QTest::newRow("variable") << QStringLiteral("数 = 1\nprint(数|)\n# 数")
                              << QVariantList{at(1, 0), at(2, 6)} << QString();
    QTest::newRow("of one function only") << QStringLiteral("def f(x|):\n    return x\nx = 2")
                                          << QVariantList{at(1, 6), at(2, 11)} << QString();
    QTest::newRow("attribute") << QStringLiteral("class A:\n    def f(self):\n        self.n| = 1\nA().n")
                               << QVariantList{at(3, 13), at(4, 4)} << QString();
    QTest::newRow("import with another name")
        << QStringLiteral("import json as j\nj|.dumps(1)") << QVariantList{at(1, 15), at(2, 0)} << QString();
    QTest::newRow("import") << QStringLiteral("import json\njson|.dumps(1)") << QVariantList()
                            << QStringLiteral("import");
    QTest::newRow("from import") << QStringLiteral("from json import dumps\ndumps|(1)") << QVariantList()
                                 << QStringLiteral("import");
    QTest::newRow("builtin") << QStringLiteral("prin|t(1)") << QVariantList() << QStringLiteral("elsewhere");
    QTest::newRow("of the workstation")
        << QStringLiteral("rpa.lo|g(1)") << QVariantList() << QStringLiteral("elsewhere");
    QTest::newRow("the workstation") << QStringLiteral("rp|a.log(1)") << QVariantList()
                                     << QStringLiteral("elsewhere");
    QTest::newRow("keyword") << QStringLiteral("if| True: pass") << QVariantList()
                             << QStringLiteral("nothing");
    QTest::newRow("text") << QStringLiteral("'ab|c'") << QVariantList() << QStringLiteral("nothing");
}

void tst_CodeQuestions::findsPlacesToRename()
{
    QFETCH(QString, text);
    QFETCH(QVariantList, places);
    QFETCH(QString, refused);

    const QVariantMap answer = Ask(Kind::Places, text);

    QCOMPARE(answer.value(QStringLiteral("places")).toList(), places);
    QCOMPARE(answer.value(QStringLiteral("refused")).toString(), refused);
}

void tst_CodeQuestions::findsModulesOfPackages()
{
    TestFolder folder;
    QFile module(folder.filePath(QStringLiteral("发票.py")));
    QVERIFY(module.open(QIODevice::WriteOnly));
    module.write("def 读取(文件):\n    '''读一张发票'''\n");
    module.close();
    const auto complete = [this] {
        return NamesOf(Ask(Kind::Complete, QStringLiteral("import 发票\n发票.|")));
    };
    QVERIFY(!complete().contains(QStringLiteral("读取")));

    RpaEngineModule::Instance()->SetPackageFolders({folder.path()});

    QVERIFY(complete().contains(QStringLiteral("读取")));
    RpaEngineModule::Instance()->SetPackageFolders({});
}

void tst_CodeQuestions::runsNothingOfTheAuthor()
{
    TestFolder folder;
    const QString trace = folder.filePath(QStringLiteral("was-run"));
    const QByteArray leaves = "open('" + trace.toUtf8() + "', 'w').write('x')\n";
    const QStringList modules{QStringLiteral("author_module.py"), QStringLiteral("gi.py")};
    for (const QString& name : modules) {
        QFile module(folder.filePath(name));
        QVERIFY(module.open(QIODevice::WriteOnly));
        module.write(leaves + "def f(): pass\n");
    }
    RpaEngineModule::Instance()->SetPackageFolders({folder.path()});
    const QString text =
        QString::fromUtf8(leaves) + QStringLiteral("import author_module, gi\ngi.f\nauthor_module.");

    QVERIFY(NamesOf(Ask(Kind::Complete, text + QLatin1Char('|'))).contains(QStringLiteral("f")));
    Ask(Kind::Complete, QStringLiteral("import gi\ngi.|"));
    Ask(Kind::Define, text + QStringLiteral("f|"));
    Ask(Kind::Explain, text + QStringLiteral("f|"));

    QVERIFY(!QFile::exists(trace));
    RpaEngineModule::Instance()->SetPackageFolders({});
}

void tst_CodeQuestions::answersOnlyTheNewestOfAKind()
{
    StartAnew();
    QStringList answered;
    const auto note = [&answered](const QString& which) {
        return [&answered, which](const QVariantMap&) { answered.append(which); };
    };

    // The helper is not there yet: they wait.
    questions->Ask(&asker, {Kind::Complete, QStringLiteral("a."), 2}, note(QStringLiteral("old")));
    questions->Ask(&asker, {Kind::CompleteAhead, QStringLiteral("a"), 1}, note(QStringLiteral("ahead")));
    questions->Ask(&asker, {Kind::Complete, QStringLiteral("b."), 2}, note(QStringLiteral("new")));

    QTRY_COMPARE_WITH_TIMEOUT(answered.size(), 2, patienceMs);
    QCOMPARE(answered, QStringLiteral("new ahead").split(QLatin1Char(' ')));
}

void tst_CodeQuestions::answersNobodyWhoHasGone()
{
    auto gone = std::make_unique<QObject>();
    bool isAnswered = false;
    Ask(Kind::Complete, QStringLiteral("|")); // it is there: the next one is under way at once
    questions->Ask(gone.get(), {Kind::Complete, QStringLiteral("import os\nos."), 13},
                   [&](const QVariantMap&) { isAnswered = true; });
    gone.reset();

    QVERIFY(!NamesOf(Ask(Kind::Complete, QStringLiteral("|"))).isEmpty());
    QVERIFY(!isAnswered);
}

void tst_CodeQuestions::refusesATextThatIsTooLong()
{
    const QString text = QStringLiteral("x = 1\n").repeated(CodeQuestions::mostCharacters / 6 + 10);

    QCOMPARE(Ask(Kind::Complete, text + QLatin1Char('|')), QVariantMap());
}

void tst_CodeQuestions::standsALongText()
{
    const QString text = QStringLiteral("def 函数(a, b):\n    return a + b\n\n").repeated(500);

    QVERIFY(NamesOf(Ask(Kind::Complete, text + QStringLiteral("函|"))).contains(QStringLiteral("函数")));
}

void tst_CodeQuestions::isAskedAgainWhenTheHelperDies()
{
    StartAnew();
    TestFolder folder;
    const QByteArray flag = folder.filePath(QStringLiteral("died")).toUtf8();
    const HelperPython python("if [ ! -e '" + flag + "' ]; then touch '" + flag +
                              "'; echo '{\"id\":0,\"ready\":true}'; read line; exit 3; fi\n"
                              "exec /usr/bin/python3 \"$@\"");

    QVERIFY(
        NamesOf(Ask(Kind::Complete, QStringLiteral("import os\nos.|"))).contains(QStringLiteral("listdir")));
    QVERIFY(QFile::exists(QString::fromUtf8(flag)));
}

void tst_CodeQuestions::givesUpAQuestionThatKills()
{
    StartAnew();
    TestFolder folder;
    const QString starts = folder.filePath(QStringLiteral("starts"));
    const HelperPython python("echo x >> '" + starts.toUtf8() +
                              "'; echo '{\"id\":0,\"ready\":true}'; read line; exit 3");

    QCOMPARE(Ask(Kind::Complete, QStringLiteral("x|")), QVariantMap());

    QFile file(starts);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll().count('x'), 2);
    QVERIFY(!questions->IsMissing());
}

void tst_CodeQuestions::endsWhoTalksNonsense_data()
{
    QTest::addColumn<QByteArray>("nonsense");

    QTest::newRow("no JSON") << QByteArray("echo hello");
    QTest::newRow("no object") << QByteArray("echo '[1]'");
    QTest::newRow("no end of a line") << QByteArray("head -c 5000000 /dev/zero");
    QTest::newRow("bytes that are no text") << QByteArray("printf '\\377\\376\\n'");
}

void tst_CodeQuestions::endsWhoTalksNonsense()
{
    StartAnew();
    QFETCH(QByteArray, nonsense);
    TestFolder folder;
    const QByteArray flag = folder.filePath(QStringLiteral("talked")).toUtf8();
    // It would wait for ever.
    const HelperPython python("if [ ! -e '" + flag + "' ]; then touch '" + flag +
                              "'; echo '{\"id\":0,\"ready\":true}'; read line; " + nonsense +
                              "; sleep 1000; fi\nexec /usr/bin/python3 \"$@\"");

    QVERIFY(NamesOf(Ask(Kind::Complete, QStringLiteral("|"))).contains(QStringLiteral("print")));
}

void tst_CodeQuestions::saysWhenJediIsMissing()
{
    StartAnew();
    const HelperPython python(HelperPython::WithoutPackages());

    QCOMPARE(Ask(Kind::Complete, QStringLiteral("|")), QVariantMap());

    QVERIFY(questions->IsMissing());
    QVERIFY(!questions->CanAnswer());
}

void tst_CodeQuestions::saysWhenThereIsNoPython()
{
    StartAnew();
    qputenv("RPA_PYTHON", "/nowhere/python");

    QCOMPARE(Ask(Kind::Complete, QStringLiteral("|")), QVariantMap());

    QVERIFY(questions->IsMissing());
    qunsetenv("RPA_PYTHON");
}

QTEST_GUILESS_MAIN(tst_CodeQuestions)

#include "tst_codequestions.moc"
