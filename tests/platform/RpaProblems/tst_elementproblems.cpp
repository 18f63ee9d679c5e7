// SPDX-License-Identifier: Apache-2.0

#include "ProblemRules.h"

using namespace ProblemRules;
using namespace ProblemSamples;

// Captured elements that nothing uses.
class ElementProblemsTest : public QObject
{
    Q_OBJECT

private slots:
    void elements_data();
    void elements() { Compare(); }
};

void ElementProblemsTest::elements_data()
{
    AddColumns();
    const RpaStatement click = Step("browser.click", {{QStringLiteral("element"), QStringLiteral("e1")}});
    Row("used", WithElement(Main({click}), "e1"), "");
    Row("used by a disabled step", WithElement(Main({Disabled(click)}), "e1"), "");
    Row("used inside a block", WithElement(Main({If({click})}), "e1"), "");
    Row("unused", WithElement(Main({}), "e1"), "unused-element?");
    Row("used by a program", WithElement(Program("rpa.browser_click('e1')"), "e1"), "");
    Row("unused by a program", WithElement(Program("pass"), "e1"), "unused-element?");
}

QTEST_GUILESS_MAIN(ElementProblemsTest)
#include "tst_elementproblems.moc"
