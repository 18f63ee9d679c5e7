// SPDX-License-Identifier: Apache-2.0

#include "PageFixture.h"
#include "RunLog.h"
#include "RunPage.h"
#include "TestApp.h"

#include <RpaAppData/RpaAppData.h>
#include <RpaEngineModule/RpaDebugSession.h>
#include <RpaEngineModule/RpaEngineModule.h>
#include <RpaProcessData/ProcessDataManager.h>
#include <RpaProcessData/RpaProcess.h>

#include <QPushButton>
#include <QSignalSpy>
#include <QtTest>

// What an author wants to look into does not stop those who use the app.
class tst_RunFree : public QObject
{
    Q_OBJECT

private slots:
    void doesNotStopAtBreakpointsAndErrors();
};

void tst_RunFree::doesNotStopAtBreakpointsAndErrors()
{
    RpaDebugSession* const session = RpaEngineModule::Instance()->GetDebugSession();
    RpaBreakpoint point;
    point.place = {QStringLiteral("主流程"), QString(), 1};
    session->SetBreakpoints({point});
    session->SetErrorStop(RpaErrorStop::All);
    RpaAppData app;
    app.InitDefault();
    app.GetProcessDataManager()->GetProcess(0)->SetProgramText(QStringLiteral("print('up')\n1 / 0\n"));
    VersionServiceReleasedApp released;
    released.app.kind = 1;
    RunPage page;
    page.resize(1280, 672);
    page.show();
    QVERIFY(page.ShowApp(released, app.ToJson()));
    const QSignalSpy paused(session, &RpaDebugSession::SigPaused);
    QSignalSpy ended(session, &RpaDebugSession::SigEnded);

    QTest::mouseClick(Child<QPushButton>(page, "toolButton0"), Qt::LeftButton);

    QTRY_COMPARE_WITH_TIMEOUT(paused.size() + ended.size(), 1, 30000);
    QCOMPARE(ended.size(), 1);
    QVERIFY(RunLog().contains(QStringLiteral("up")));
    session->SetBreakpoints({});
    session->SetErrorStop(RpaErrorStop::Never);
}

RPA_TEST_MAIN(tst_RunFree)
#include "tst_runfree.moc"
