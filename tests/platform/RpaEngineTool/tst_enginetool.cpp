// SPDX-License-Identifier: Apache-2.0

#include <RpaEngineTool/IRpaInspector.h>
#include <RpaEngineTool/RpaEngineTool.h>

#include <QtTest>

#include <memory>

namespace
{
class CapturingInspector : public IRpaInspector
{
public:
    bool IsCapturing() const override { return true; }
};
} // namespace

class EngineToolTest : public QObject
{
    Q_OBJECT

private slots:
    void capturesNothingByItself() { QVERIFY(!RpaEngineTool::Instance()->GetHtmlInspector()->IsCapturing()); }

    void asksTheInspectorOfTheWorkstationWhileItLives()
    {
        auto inspector = std::make_unique<CapturingInspector>();
        RpaEngineTool::Instance()->SetHtmlInspector(inspector.get());
        QVERIFY(RpaEngineTool::Instance()->GetHtmlInspector()->IsCapturing());

        inspector.reset();

        QVERIFY(!RpaEngineTool::Instance()->GetHtmlInspector()->IsCapturing());
    }
};

QTEST_GUILESS_MAIN(EngineToolTest)
#include "tst_enginetool.moc"
