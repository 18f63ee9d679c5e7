// SPDX-License-Identifier: Apache-2.0

#include "ProblemRules.h"

using namespace ProblemRules;
using namespace ProblemSamples;

// Tools and parameters.
class PageProblemsTest : public QObject
{
    Q_OBJECT

private slots:
    void pages_data();
    void pages() { Compare(); }
    void fixes_data();
    void fixes() { CompareFix(); }
};

void PageProblemsTest::pages_data()
{
    AddColumns();
    Row("tool without process", WithTool(Main({}), ""), "tool-without-process");
    Row("tool of a process that is gone", WithTool(Main({}), "无"), "tool-missing-process!");
    Row("tool of a program", Program(""), "");
    Row("choice without options", With(Main({ReadParameter("p")}), "p", RpaParamType::Choice),
        "choice-without-options");
    Row("choices without options", With(Main({ReadParameter("p")}), "p", RpaParamType::Choices),
        "choice-without-options");
    Row("choice with options",
        With(Main({ReadParameter("p")}), "p", RpaParamType::Choice, {QStringLiteral("甲")}), "");
    Row("parameter nobody reads", With(Main({}), "p"), "unread-parameter?");
    Row("parameter that is read", With(Main({ReadParameter("p")}), "p"), "");
    Row("parameter read by a disabled step", With(Main({Disabled(ReadParameter("p"))}), "p"),
        "unread-parameter?");
    Row("parameter whose name is computed", With(Main({ReadParameter("=str(1)")}), "p"), "");
    Row("parameter in an expression", With(Main({Log("=rpa.get_param('税率')")}), "税率"), "");
    Row("parameter that shows progress", With(Main({}), "p", RpaParamType::Progress), "");
    Row("title of a group", With(Main({}), "p", RpaParamType::Group), "");
    Row("parameter a program reads", With(Program("x = rpa.get_param('税率')"), "税率"), "");
    Row("parameter no program reads", With(Program("x = 1"), "税率"), "unread-parameter?");
}

void PageProblemsTest::fixes_data()
{
    AddFixColumns();
    FixRow("clear the process of a tool", WithTool(Main({}), "无"), RpaProblemFix::ClearProcess, "无");
}

QTEST_GUILESS_MAIN(PageProblemsTest)
#include "tst_pageproblems.moc"
