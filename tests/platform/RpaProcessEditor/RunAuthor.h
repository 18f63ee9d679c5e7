// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "RunFixture.h"

#include <QToolButton>
#include <QTreeView>

namespace EditorFixture
{
inline const QString mainProcess = QStringLiteral("主流程");

// a: 数=1, b: twice (c: log 数, d: 数=数+1), e: run 子流程, f: log "完"; 子流程: s: log "子", t: log 数.
inline QVector<RpaStatement> Counting()
{
    return {WithId("a", DebugStatements::Set("数", "1")),
            WithId("b", DebugStatements::Loop(2, "次",
                                              {WithId("c", DebugStatements::Log("数")),
                                               WithId("d", DebugStatements::Set("数", "数 + 1"))})),
            WithId("e", DebugStatements::Call("子流程")), WithId("f", DebugStatements::Log("'完'"))};
}

// An author at the page of the processes, with the engine behind it.
struct Author
{
    explicit Author(const QVector<RpaStatement>& statements = Counting())
        : editor(statements), engine(editor.widget, editor.app, true)
    {
        editor.app->GetProcessDataManager()
            ->FindProcess(QStringLiteral("子流程"))
            ->SetStatements(
                {WithId("s", DebugStatements::Log("'子'")), WithId("t", DebugStatements::Log("数"))});
        editor.app->SetModified(false);
    }

    void Key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) { editor.Key(key, modifiers); }
    void Press(const char* name)
    {
        QTest::mouseClick(editor.Find<QToolButton>(QLatin1String(name)), Qt::LeftButton);
    }
    bool Menu(const QString& id, const QString& text)
    {
        return ChooseInMenu(editor.view->viewport(), editor.view->visualRect(editor.IndexOf(id)).center(),
                            text);
    }

    Editor editor;
    RunFixture engine;
};

inline QString Stop()
{
    return RunFixture::WaitForStop();
}
} // namespace EditorFixture
