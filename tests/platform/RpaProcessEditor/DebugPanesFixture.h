// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "AppBreakpoints_p.h"
#include "DebugPanes_p.h"
#include "EditorFixture.h"
#include "ScriptedDebugSource.h"

#include <QAbstractItemView>
#include <QTabBar>
#include <QTest>

#include <memory>

// The panes of a debugged program, whose stops and answers the test makes.
class DebugPanesFixture
{
protected:
    using Scripted = ScriptedDebugSource;
    enum Tab
    {
        VariablesTab,
        WatchesTab,
        StackTab,
        BreakpointsTab
    };

    void Begin()
    {
        source = std::make_unique<Scripted>();
        focus = std::make_unique<DebugFocus>(source.get());
        panes = std::make_unique<DebugPanes>(focus.get());
        app = EditorFixture::App(EditorFixture::SomeStatements());
        breakpoints = AppBreakpoints::Of(app);
        panes->SetBreakpoints(breakpoints);
        panes->resize(900, 400);
        panes->show();
        panes->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(panes.get()));
    }
    void End()
    {
        panes.reset();
        focus.reset();
        source.reset();
        breakpoints.reset();
        app.reset();
    }

    template <typename Widget>
    Widget* Find(const char* name) const
    {
        return panes->findChild<Widget*>(QLatin1String(name));
    }
    void OpenTab(Tab tab)
    {
        auto* bar = Find<QTabBar>("tabBarPanes");
        QTest::mouseClick(bar, Qt::LeftButton, {}, bar->tabRect(tab).center());
        QCOMPARE(bar->currentIndex(), int(tab));
    }
    // In a function and in what called it.
    void Stop()
    {
        if (source->GetState() == RpaDebugSession::State::Idle)
            source->Start();
        const QString process = QStringLiteral("主流程");
        source->Stop({{QStringLiteral("add"), {process, QString(), 3}},
                      {QStringLiteral("<module>"), {process, QString(), 9}}});
    }
    // And answers with the locals of the innermost call.
    void StopWith(const QVector<RpaDebugValue>& locals, int total = -1)
    {
        Stop();
        const int count = total < 0 ? locals.size() : total;
        source->Answer(source->Asked(QStringLiteral("scopes")).request,
                       {Scripted::Heading(QStringLiteral("局部变量"), 1, count)});
        source->Answer(source->Asked(QStringLiteral("children")).request, locals, count);
    }
    static void ClickRow(const QAbstractItemView* view, const QModelIndex& index)
    {
        QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, view->visualRect(index).center());
    }

    std::unique_ptr<Scripted> source;
    std::unique_ptr<DebugFocus> focus;
    std::unique_ptr<DebugPanes> panes;
    RpaAppDataPtr app;
    QSharedPointer<AppBreakpoints> breakpoints;
};
