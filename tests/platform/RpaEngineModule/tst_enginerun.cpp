// SPDX-License-Identifier: Apache-2.0

#include "EngineRunFixture.h"

#include <RpaAppData/RpaAppRunTimeInfo.h>
#include <RpaEngineCore/IAppParamEngine.h>
#include <RpaEngineCore/IAppTableEngine.h>
#include <RpaEngineModule/RpaProcessRelatedUIControler.h>

#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

namespace
{

class OneParam : public IAppParamEngine
{
public:
    QStringList GetParamNames() const override { return {QStringLiteral("数量")}; }
    QVariant GetParam(const QString&) const override { return value; }
    bool SetParam(const QString& name, const QVariant& given) override
    {
        if (name != QStringLiteral("数量"))
            return false;
        value = given;
        return true;
    }

    QVariant value = 3;
};

class ListTable : public IAppTableEngine
{
public:
    QStringList GetColumnNames() const override { return {QStringLiteral("姓名"), QStringLiteral("金额")}; }
    int GetRowCount() const override { return rows.size(); }
    QVariant GetCell(int row, int column) const override { return rows.value(row).value(column); }
    bool SetCell(int row, int column, const QVariant& value) override
    {
        if (row < 0 || row >= rows.size())
            return false;
        rows[row][column] = value;
        return true;
    }
    int AppendRow(const QVariantList& values) override
    {
        rows << values;
        return rows.size() - 1;
    }
    void ClearRows() override { rows.clear(); }

    QVector<QVariantList> rows;
};

} // namespace

class EngineRun : public QObject
{
    Q_OBJECT

private slots:
    void writesNothingIntoTheFolderOfItsProgram();
    void whatAProgramPrintsReachesTheLog();
    void aRunIsToldInOrder();
    void listenersHearWhatARunBeginsWith();
    void aFailureIsReadable_data();
    void aFailureIsReadable();
    void aSecondRunWaitsForTheFirst();
    void anUnknownProcessIsNotStarted();
    void controlledWidgetsAreDisabledDuringARun();
    void aProgramReadsAndWritesParameters();
    void aProgramShowsProgressAndAPicture();
    void aProgramPassesLists();
    void aProgramFillsTheTable();
    void aRefusedCallCanBeHandledByTheProgram();
    void aDialogOfTheProgramIsAnswered_data();
    void aDialogOfTheProgramIsAnswered();
    void aCrashOfTheChildFailsTheRunOnly();
    void aProgramThatEndsEarlyHasSucceeded();
    void foreignOutputReachesTheLog();
    void theEnvironmentIsCleaned();
};

// What Python compiled there could be written while the folder is removed.
void EngineRun::writesNothingIntoTheFolderOfItsProgram()
{
    EngineRunFixture engine;
    QVERIFY(engine.RunText(QStringLiteral("import os, sys\n"
                                          "here = os.path.dirname(sys.modules['rpa_api'].__file__)\n"
                                          "print('compiled:', '__pycache__' in os.listdir(here))\n")));

    QVERIFY(engine.life.WaitUntilOver());
    QVERIFY(engine.LogTexts().contains(QStringLiteral("compiled: False")));
}

void EngineRun::whatAProgramPrintsReachesTheLog()
{
    EngineRunFixture engine;

    QVERIFY(engine.RunText(QStringLiteral("print('你好')\nimport sys\nprint('oh', file=sys.stderr)\n")));

    QVERIFY(engine.life.WaitUntilOver());
    const QVector<RpaLogLine> lines = engine.Source()->GetLines();
    const auto find = [&](const QString& text) {
        for (const RpaLogLine& line : lines)
            if (line.text == text)
                return line;
        return RpaLogLine();
    };
    QVERIFY(find(QStringLiteral("你好")).number > 0);
    QCOMPARE(find(QStringLiteral("你好")).level, RpaLogLevel::Info);
    QCOMPARE(find(QStringLiteral("oh")).level, RpaLogLevel::Error);
}

void EngineRun::aRunIsToldInOrder()
{
    EngineRunFixture engine;

    QVERIFY(engine.RunText(QStringLiteral("pass\n")));

    QVERIFY(engine.life.WaitUntilOver());
    const QStringList expected{QStringLiteral("ready"), QStringLiteral("loaded"),
                               QStringLiteral("start 主流程"), QStringLiteral("finish 主流程"),
                               QStringLiteral("release")};
    QCOMPARE(engine.life.events, expected);
    QVERIFY(EngineRunFixture::LogHas(QStringLiteral("流程“主流程”运行完成")));
}

void EngineRun::listenersHearWhatARunBeginsWith()
{
    class Params : public IAppParamEngine
    {
    public:
        QStringList GetParamNames() const override
        {
            return {QStringLiteral("部门"), QStringLiteral("口令"), QStringLiteral("只看"),
                    QStringLiteral("月份")};
        }
        QStringList GetSecretParamNames() const override { return {QStringLiteral("口令")}; }
        QVariant GetParam(const QString& name) const override { return values.value(name); }
        bool SetParam(const QString&, const QVariant&) override { return false; }

        QVariantMap values{
            {QStringLiteral("部门"), QStringLiteral("财务")},
            {QStringLiteral("口令"), QStringLiteral("geheim")},
            {QStringLiteral("只看"), true},
            {QStringLiteral("月份"), QStringList{QStringLiteral("一月"), QStringLiteral("三月")}}};
    };
    class Listener : public RecordingLifeCycle
    {
    public:
        void RunStarted(const RpaRunStart& begun) override
        {
            start = begun;
            before = events;
        }
        RpaRunStart start;
        QStringList before;
    };
    EngineRunFixture engine;
    Params params;
    Listener listener;
    RpaAppRunTimeInfo info;
    info.SetAppId(QStringLiteral("a7"));
    info.SetEnvironment(QStringLiteral("gray"));
    engine.Engine()->SetAppParamEngine(&params);
    engine.Engine()->SetAppRunTimeInfo(&info);
    QVERIFY(engine.RunText(QStringLiteral("pass\n")));
    engine.Engine()->SetAppRunTimeInfo(nullptr);
    QVERIFY(engine.life.WaitUntilOver());

    QCOMPARE(listener.start.appId, QStringLiteral("a7"));
    QCOMPARE(listener.start.environment, QStringLiteral("gray"));
    QCOMPARE(listener.start.processName, QStringLiteral("主流程"));
    QVERIFY(listener.before.isEmpty());
    QStringList shown;
    for (const RpaRunParameter& parameter : qAsConst(listener.start.parameters))
        shown.append(parameter.name + QLatin1Char('=') + parameter.text +
                     QLatin1String(parameter.isSecret ? "!" : ""));
    QCOMPARE(shown, (QStringList{QStringLiteral("部门=财务"), QStringLiteral("口令=geheim!"),
                                 QStringLiteral("只看=是"), QStringLiteral("月份=一月、三月")}));
}

void EngineRun::aFailureIsReadable_data()
{
    QTest::addColumn<QString>("program");
    QTest::addColumn<QString>("reason");

    QTest::newRow("unknown variable") << QStringLiteral("print(x)\n") << QStringLiteral("变量“x”还没有值");
    QTest::newRow("division") << QStringLiteral("1/0\n") << QStringLiteral("除数不能为零");
    QTest::newRow("missing file") << QStringLiteral("open('/没有/这个')\n")
                                  << QStringLiteral("找不到文件：/没有/这个");
    QTest::newRow("missing package") << QStringLiteral("import nosuchpackage\n")
                                     << QStringLiteral("缺少扩展包“nosuchpackage”");
    QTest::newRow("syntax") << QStringLiteral("a = 1\nif :\n")
                            << QStringLiteral("代码无法识别：写法不对（第 2 行）");
    QTest::newRow("colon") << QStringLiteral("while 1\n  pass\n")
                           << QStringLiteral("行尾少了冒号“:”（第 1 行）");
    QTest::newRow("Chinese comma") << QStringLiteral("a = b，c\n")
                                   << QStringLiteral("代码中不能使用“，”，请改用英文标点（第 1 行）");
    QTest::newRow("Chinese comma after a number")
        << QStringLiteral("a = 1，2\n") << QStringLiteral("数字后面紧跟着别的字符（第 1 行）");
    QTest::newRow("author's text") << QStringLiteral("a = 1\nb = 2\nraise ValueError('no such day')\n")
                                   << QStringLiteral("：no such day（第 3 行）");
    QTest::newRow("unknown process") << QStringLiteral("rpa.run_process('对账')\n")
                                     << QStringLiteral("：找不到流程“对账”（第 1 行）");
    QTest::newRow("number") << QStringLiteral("int('十二')\n")
                            << QStringLiteral("：“十二”不是整数（第 1 行）");
    QTest::newRow("kinds") << QStringLiteral("'a' + 1\n") << QStringLiteral("：文本不能与数字相连");
    QTest::newRow("server away")
        << QStringLiteral("import urllib.request\nurllib.request.urlopen('http://127.0.0.1:9', timeout=5)\n")
        << QStringLiteral("：服务器没有应答（连接被拒绝）（第 2 行）");
    QTest::newRow("of a library") << QStringLiteral("import base64\nbase64.b64decode('a')\n")
                                  << QStringLiteral("：值不合适（第 2 行）");
}

void EngineRun::aFailureIsReadable()
{
    QFETCH(QString, program);
    QFETCH(QString, reason);
    EngineRunFixture engine;

    QVERIFY(engine.RunText(program));

    QVERIFY(engine.life.WaitUntilOver());
    QVERIFY2(EngineRunFixture::LogHas(reason),
             qPrintable(EngineRunFixture::LogTexts().join(QLatin1Char('\n'))));
}

void EngineRun::aSecondRunWaitsForTheFirst()
{
    EngineRunFixture engine;
    QVERIFY(engine.RunText(QStringLiteral("while True: pass\n")));

    QVERIFY(!engine.RunText(QStringLiteral("pass\n")));

    QVERIFY(EngineRunFixture::LogHas(QStringLiteral("流程“主流程”正在运行")));
    QVERIFY(engine.Engine()->Terminate(QStringLiteral("主流程")));
    QVERIFY(engine.life.WaitUntilOver());
}

void EngineRun::anUnknownProcessIsNotStarted()
{
    EngineRunFixture engine;

    QVERIFY(!engine.Engine()->Execute(QStringLiteral("没有")));

    QVERIFY(EngineRunFixture::LogHas(QStringLiteral("找不到流程“没有”")));
    QVERIFY(!engine.Engine()->Terminate(QStringLiteral("没有")));
}

void EngineRun::controlledWidgetsAreDisabledDuringARun()
{
    EngineRunFixture engine;
    QPushButton button;
    RpaProcessRelatedUIControler::Instance()->AddToControl(QPointer<QWidget>(&button));

    QVERIFY(engine.RunText(QStringLiteral("pass\n")));

    QVERIFY(!button.isEnabled());
    QVERIFY(engine.life.WaitUntilOver());
    QVERIFY(button.isEnabled());
}

void EngineRun::aProgramReadsAndWritesParameters()
{
    EngineRunFixture engine;
    OneParam param;
    engine.Engine()->SetAppParamEngine(&param);

    QVERIFY(engine.RunText(QStringLiteral("rpa.set_param('数量', rpa.get_param('数量') * 2)\n")));

    QVERIFY(engine.life.WaitUntilOver());
    QCOMPARE(param.value.toInt(), 6);
}

void EngineRun::aProgramShowsProgressAndAPicture()
{
    EngineRunFixture engine;
    OneParam params;
    engine.Engine()->SetAppParamEngine(&params);
    QVERIFY(engine.RunText(
        QStringLiteral("for percent in (-5, '42.5', 250):\n"
                       "    rpa.set_progress('数量', percent)\n"
                       "    print('shown', float(rpa.get_param('数量')))\n"
                       "rpa.set_picture('数量', 'a.png')\n"
                       "import os\n"
                       "print('whole', rpa.get_param('数量') == os.path.join(os.getcwd(), 'a.png'))\n"
                       "rpa.set_picture('数量', '')\n")));

    QVERIFY(engine.life.WaitUntilOver());

    for (const char* line : {"shown 0.0", "shown 42.5", "shown 100.0", "whole True"})
        QVERIFY2(EngineRunFixture::LogHas(QLatin1String(line)), line);
    QCOMPARE(params.value, QVariant(QString()));
}

void EngineRun::aProgramPassesLists()
{
    EngineRunFixture engine;
    OneParam params;
    params.value = QStringList{QStringLiteral("甲"), QStringLiteral("乙")};
    engine.Engine()->SetAppParamEngine(&params);
    QVERIFY(engine.RunText(QStringLiteral("rpa.set_param('数量', rpa.get_param('数量')[::-1])\n")));

    QVERIFY(engine.life.WaitUntilOver());

    QCOMPARE(params.value.toStringList(), (QStringList{QStringLiteral("乙"), QStringLiteral("甲")}));
}

void EngineRun::aProgramFillsTheTable()
{
    EngineRunFixture engine;
    ListTable table;
    engine.Engine()->SetAppTableEngine(&table);

    QVERIFY(engine.RunText(
        QStringLiteral("for i in range(2500):\n    rpa.table_append({'姓名': f'n{i}', '金额': i})\n"
                       "print(sum(row['金额'] for row in rpa.table_rows()))\n")));

    QVERIFY(engine.life.WaitUntilOver());
    QCOMPARE(table.rows.size(), 2500);
    QVERIFY(EngineRunFixture::LogHas(QString::number(2499 * 2500 / 2)));
}

void EngineRun::aRefusedCallCanBeHandledByTheProgram()
{
    EngineRunFixture engine;
    OneParam param;
    engine.Engine()->SetAppParamEngine(&param);

    QVERIFY(engine.RunText(
        QStringLiteral("try:\n    rpa.get_param('别的')\nexcept Exception as e:\n    print('caught', e)\n")));

    QVERIFY(engine.life.WaitUntilOver());
    QVERIFY(EngineRunFixture::LogHas(QStringLiteral("caught 当前界面没有名为“别的”的参数")));
}

void EngineRun::aDialogOfTheProgramIsAnswered_data()
{
    QTest::addColumn<QString>("question");
    QTest::addColumn<QString>("yes");
    QTest::addColumn<QString>("no");
    QTest::addColumn<bool>("asksForText");
    QTest::addColumn<QString>("answer");

    QTest::newRow("message") << QStringLiteral("rpa.message('好了')") << QStringLiteral("确定") << QString()
                             << false << QStringLiteral("answer None");
    QTest::newRow("confirm") << QStringLiteral("rpa.confirm('继续吗？')") << QStringLiteral("是")
                             << QStringLiteral("否") << false << QStringLiteral("answer True");
    QTest::newRow("input") << QStringLiteral("rpa.ask('名字', '小明')") << QStringLiteral("确定")
                           << QStringLiteral("取消") << true << QStringLiteral("answer 小明");
}

void EngineRun::aDialogOfTheProgramIsAnswered()
{
    QFETCH(QString, question);
    QFETCH(QString, yes);
    QFETCH(QString, no);
    QFETCH(bool, asksForText);
    QFETCH(QString, answer);
    EngineRunFixture engine;
    QVERIFY(engine.RunText(QStringLiteral("print('answer', %1)\n").arg(question)));
    const auto shown = [](const char* name) {
        const auto widgets = QApplication::allWidgets();
        for (QWidget* widget : widgets)
            if (widget->objectName() == QLatin1String(name) && widget->isVisible())
                return widget;
        return static_cast<QWidget*>(nullptr);
    };
    const auto text = [](QWidget* button) {
        return button ? button->property("text").toString() : QString();
    };

    QTRY_VERIFY(shown("pushButtonRunYes"));
    QWidget* const accepting = shown("pushButtonRunYes");
    QWidget* const line = shown("lineEditRunInput");
    QCOMPARE(text(accepting), yes);
    QCOMPARE(text(shown("pushButtonRunNo")), no);
    QCOMPARE(line != nullptr, asksForText);
    QTRY_VERIFY((line ? line : accepting)->hasFocus()); // with the window, which comes to the front later
    QTest::mouseClick(accepting, Qt::LeftButton);

    QVERIFY(engine.life.WaitUntilOver());
    QVERIFY(EngineRunFixture::LogHas(answer));
}

void EngineRun::aCrashOfTheChildFailsTheRunOnly()
{
    EngineRunFixture engine;

    QVERIFY(engine.RunText(
        QStringLiteral("import os, signal\nos.kill(os.getpid(), signal.SIGSEGV)\nos.abort()\n")));

    QVERIFY(engine.life.WaitUntilOver());
    QVERIFY2(EngineRunFixture::LogHas(QStringLiteral("运行失败")),
             qPrintable(EngineRunFixture::LogTexts().join(QLatin1Char('\n'))));
    QVERIFY(engine.RunText(QStringLiteral("print('next works')\n")));
    QTRY_VERIFY(EngineRunFixture::LogHas(QStringLiteral("next works")));
}

void EngineRun::aProgramThatEndsEarlyHasSucceeded()
{
    EngineRunFixture engine;

    QVERIFY(engine.RunText(QStringLiteral("import sys\nsys.exit()\n")));

    QVERIFY(engine.life.WaitUntilOver());
    QVERIFY(EngineRunFixture::LogHas(QStringLiteral("运行完成")));
}

void EngineRun::foreignOutputReachesTheLog()
{
    EngineRunFixture engine;

    QVERIFY(engine.RunText(QStringLiteral("import subprocess\nsubprocess.run(['echo', '来自外部'])\n"
                                          "import time\nwhile True:\n    time.sleep(0.05)\n")));

    QTRY_VERIFY(EngineRunFixture::LogHas(QStringLiteral("来自外部")));
    engine.Engine()->Terminate(QStringLiteral("主流程"));
    QVERIFY(engine.life.WaitUntilOver());
}

void EngineRun::theEnvironmentIsCleaned()
{
    qputenv("PYTHONSTARTUP", "/nowhere");
    qputenv("PIP_INDEX_URL", "http://example.invalid");
    EngineRunFixture engine;

    QVERIFY(engine.RunText(QStringLiteral(
        "import os\nprint(sorted(k for k in os.environ if k.startswith(('PYTHON', 'PIP_'))))\n")));

    QVERIFY(engine.life.WaitUntilOver());
    QVERIFY(EngineRunFixture::LogHas(QStringLiteral("[]")));
}

QTEST_MAIN(EngineRun)

#include "tst_enginerun.moc"
