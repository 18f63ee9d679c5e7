// SPDX-License-Identifier: Apache-2.0

// A run that fails tells the calls and variables of that moment.

#include "SpanFixture.h"

#include <QtTest>

#include <memory>

class tst_EngineFailure : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void aFailureTellsCallsAndVariables();
    void aFailureTellsNoPassword();
    void aFailureWithHostileValuesIsToldInTime();
    void aFailureOfAVisualProcessNamesItsStatements();

private:
    bool Run(const QString& program) { return fixture->Run(program); }

    std::unique_ptr<SpanFixture> fixture;
    SpanListener* told = nullptr;
};

void tst_EngineFailure::init()
{
    fixture = std::make_unique<SpanFixture>();
    told = &fixture->told;
}

void tst_EngineFailure::cleanup()
{
    fixture.reset();
}

void tst_EngineFailure::aFailureTellsCallsAndVariables()
{
    QVERIFY(Run(QStringLiteral("城市表 = ['上海', '北京']\n"
                               "def look(number):\n"
                               "    return 城市表[number]\n"
                               "look(5)\n")));

    QCOMPARE(told->failures, 1);
    QCOMPARE(told->failure.stack.size(), 2);
    QCOMPARE(told->failure.stack.first().functionName, QStringLiteral("look"));
    QCOMPARE(told->failure.stack.first().place.line, 3);
    QCOMPARE(told->failure.stack.at(1).place.line, 4);
    const auto variable = [this](int scope, int number) {
        return told->failure.scopes.value(scope).variables.value(number);
    };
    QCOMPARE(told->failure.scopes.value(0).title, QStringLiteral("局部变量"));
    QCOMPARE(variable(0, 0).name, QStringLiteral("number"));
    QCOMPARE(variable(0, 0).text, QStringLiteral("5"));
    QCOMPARE(told->failure.scopes.value(1).title, QStringLiteral("全局变量"));
    QCOMPARE(variable(1, 0).text, QStringLiteral("['上海', '北京']"));
    QCOMPARE(variable(1, 0).type, QStringLiteral("list"));
    QCOMPARE(told->failure.scopes.value(2).title, QStringLiteral("界面参数"));
    QCOMPARE(variable(2, 1).text, QStringLiteral("'上海'"));
}

void tst_EngineFailure::aFailureTellsNoPassword()
{
    QVERIFY(Run(QStringLiteral("mine = rpa.get_param('密码')\nboth = [mine]\n1 / 0\n")));

    QVERIFY(!told->failure.scopes.isEmpty());
    int masked = 0;
    for (const RpaRunScope& scope : qAsConst(told->failure.scopes))
        for (const RpaRunVariable& variable : scope.variables) {
            QVERIFY(!variable.text.contains(QStringLiteral("hunter22")));
            masked += variable.text.contains(QStringLiteral("••••")) ? 1 : 0;
        }
    QCOMPARE(masked, 3); // two variables, and the parameter
}

void tst_EngineFailure::aFailureWithHostileValuesIsToldInTime()
{
    QVERIFY(Run(QStringLiteral("import time\n"
                               "class Slow:\n"
                               "    def __repr__(self):\n"
                               "        time.sleep(60)\n"
                               "class Broken:\n"
                               "    def __repr__(self):\n"
                               "        raise SystemExit\n"
                               "a = Broken()\n"
                               "b = Slow()\n"
                               "c = [b] * 100\n"
                               "d = 'x' * 10000000\n"
                               "e = {}\n"
                               "e['e'] = e\n"
                               "globals().update(('v%d' % n, n) for n in range(1000))\n"
                               "1 / 0\n")));

    QVERIFY(EngineRunFixture::LogHas(QStringLiteral("除数不能为零")));
    const RpaRunScope globals = told->failure.scopes.value(0);
    QCOMPARE(globals.variables.size(), 200);
    QVERIFY(globals.variables.at(0).text.contains(QStringLiteral("无法显示")));
    QVERIFY(globals.variables.at(1).text.contains(QStringLiteral("显示超时")));
    for (const RpaRunVariable& variable : globals.variables)
        QVERIFY(variable.text.size() <= 300);
}

void tst_EngineFailure::aFailureOfAVisualProcessNamesItsStatements()
{
    RpaStatement set = StatementOf("s1", "variable.set");
    set.arguments = {{QStringLiteral("name"), QStringLiteral("结果")},
                     {QStringLiteral("value"), QStringLiteral("=1 / 0")}};
    QVERIFY(fixture->run.RunStatements({set}));
    QVERIFY(fixture->run.life.WaitUntilOver());

    QCOMPARE(told->failure.stack.size(), 1);
    QCOMPARE(told->failure.stack.first().place.statementId, QStringLiteral("s1"));
}

QTEST_MAIN(tst_EngineFailure)
#include "tst_enginefailure.moc"
