// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "DebugStatements.h"
#include "EngineRunFixture.h"
#include "VisualEditorFixture.h"

#include <RpaAppData/RpaAppRunTimeInfo.h>
#include <RpaEngineModule/RpaDebugSession.h>

#include <QAction>
#include <QApplication>
#include <QContextMenuEvent>
#include <QMenu>
#include <QTest>
#include <QToolButton>

namespace EditorFixture
{
constexpr int runWaitMs = 60000;

inline RpaStatement WithId(const char* id, RpaStatement statement)
{
    statement.id = QLatin1String(id);
    return statement;
}

// Runs what a page of processes asks for, in the real engine and as the editor around the page would.
class RunFixture : public EngineRunFixture
{
public:
    template <typename Page>
    RunFixture(Page& page, const RpaAppDataPtr& app, bool visual)
    {
        app->GetRunTimeInfo()->SetAppId(QStringLiteral("app-1"));
        app->GetRunTimeInfo()->SetEnvironment(QStringLiteral("develop"));
        Engine()->SetProcessDataManager(app->GetProcessDataManager());
        Engine()->SetAppRunTimeInfo(app->GetRunTimeInfo());
        QObject::connect(&page, &Page::SigRunProcess, &page, [this, visual](const QString& name) {
            asked << name;
            Engine()->GetTranslator()->SetTranslateStatements(visual);
            if (!refuses)
                Engine()->Execute(name);
        });
        QObject::connect(&page, &Page::SigStopProcess, &page,
                         [](const QString& name) { Engine()->Terminate(name); });
    }
    ~RunFixture()
    {
        Engine()->Terminate(QStringLiteral("主流程"));
        Engine()->Terminate(QStringLiteral("子流程"));
        if (!WaitFor(RpaDebugSession::State::Idle))
            QTest::qFail("the run never ended", __FILE__, __LINE__);
        Engine()->SetAppRunTimeInfo(nullptr);
    }

    static RpaDebugSession* Session() { return Engine()->GetDebugSession(); }

    // What the run logged itself, in one line.
    static QString Logged()
    {
        QStringList texts;
        const QVector<RpaLogLine> lines = Source()->GetLines();
        for (const RpaLogLine& line : lines)
            if (!line.text.contains(QStringLiteral("流程“")))
                texts << line.text;
        return texts.join(QLatin1Char(' '));
    }

    static bool WaitFor(RpaDebugSession::State state)
    {
        return QTest::qWaitFor([state] { return Session()->GetState() == state; }, runWaitMs);
    }
    // The statement, or the line, at which it stands still; what the run logged when it ended instead.
    static QString WaitForStop()
    {
        if (!QTest::qWaitFor([] { return Session()->GetState() != RpaDebugSession::State::Running; },
                             runWaitMs))
            return QStringLiteral("still running");
        const RpaDebugPlace place = Session()->GetPause().GetPlace();
        if (place.line == 0)
            return QStringLiteral("end: ") + Logged();
        return place.statementId.isEmpty() ? QString::number(place.line) : place.statementId;
    }

    QStringList asked;
    bool refuses = false; // as after a check that found something
};

// Opens the menu at the place with the mouse and clicks the entry; false when that cannot be chosen.
inline bool ChooseInMenu(QWidget* viewport, const QPoint& place, const QString& text)
{
    QContextMenuEvent event(QContextMenuEvent::Mouse, place, viewport->mapToGlobal(place));
    QCoreApplication::sendEvent(viewport, &event);
    if (!QTest::qWaitFor([] { return QApplication::activePopupWidget() != nullptr; }))
        return false;
    auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    const auto actions = menu->actions();
    for (QAction* action : actions)
        if (action->text() == text && action->isEnabled()) {
            QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(action).center());
            return true;
        }
    menu->close();
    return false;
}
} // namespace EditorFixture
