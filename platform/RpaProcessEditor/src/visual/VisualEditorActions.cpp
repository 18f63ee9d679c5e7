// SPDX-License-Identifier: Apache-2.0

// What the visual editor's menu, tools and keys do.
#include "BookmarkActs_p.h"
#include "CommandPalette_p.h"
#include "DebugPanes_p.h"
#include "PaletteFolder_p.h"
#include "ProcessFindPane_p.h"
#include "ProcessHead_p.h"
#include "ProcessTabs_p.h"
#include "PythonPane_p.h"
#include "RefactorActs_p.h"
#include "StatementFindBar_p.h"
#include "StatementView_p.h"
#include "VisualDebugMarks_p.h"
#include "VisualEditorParts_p.h"

#include <OxBase/OxBlocker.h>
#include <WbBaseUI/UIUtils.h>
#include <WbBaseUI/WbIcons.h>

#include <QAction>
#include <QMenu>
#include <QPointer>
#include <QScrollBar>

QAction* VisualEditorParts::Add(const QString& name, const QString& text, const QList<QKeySequence>& keys,
                                const QString& icon, const Act& act)
{
    QAction* action = Add(name, text, keys, icon);
    connect(action, &QAction::triggered, this, act);
    return action;
}

QAction* VisualEditorParts::Add(const QString& name, const QString& text, const QList<QKeySequence>& keys,
                                const QString& icon)
{
    auto* action = new QAction(text, view);
    action->setObjectName(name);
    action->setShortcuts(keys);
    // In the tree only: in a field of the property panel the same keys belong to the text.
    action->setShortcutContext(Qt::WidgetShortcut);
    view->addAction(action);
    menu->addAction(action);
    if (icon.isEmpty())
        return action;
    action->setIcon(WbIcons::Get(icon));
    action->setToolTip(UIUtils::WithKeys(text, keys.value(0)));
    head->AddTool(action);
    return action;
}

void VisualEditorParts::BuildActions()
{
    const auto key = [](int code) { return QKeySequence(code); };
    QAction* commands =
        Add(QStringLiteral("actionCommands"), QStringLiteral("指令列表"), {}, QStringLiteral("list"));
    new PaletteFolder(host, palette, commands); // the editor owns it
    Separate();
    undo = Add(QStringLiteral("actionUndo"), QStringLiteral("撤销"), {QKeySequence::Undo},
               QStringLiteral("undo"), [this] { edits->Stack()->undo(); });
    redo = Add(QStringLiteral("actionRedo"), QStringLiteral("重做"),
               {key(Qt::CTRL + Qt::Key_Y), key(Qt::CTRL + Qt::SHIFT + Qt::Key_Z)}, QStringLiteral("redo"),
               [this] { edits->Stack()->redo(); });
    Separate();
    Add(QStringLiteral("actionInsert"), QStringLiteral("添加指令…"), {key(Qt::Key_Insert)},
        QStringLiteral("add"), [this] { OpenQuickPick(); });
    Separate();
    onSelection = {
        Add(QStringLiteral("actionCut"), QStringLiteral("剪切"), {QKeySequence::Cut}, QString(),
            [this] { view->Cut(); }),
        Add(QStringLiteral("actionCopy"), QStringLiteral("复制"), {QKeySequence::Copy}, QString(),
            [this] { view->Copy(); }),
    };
    Add(QStringLiteral("actionPaste"), QStringLiteral("粘贴"), {QKeySequence::Paste}, QString(),
        [this] { view->Paste(); });
    const auto add = [this](const char* name, const char* text, int code, const char* icon,
                            void (StatementView::*act)()) {
        QAction* action =
            Add(QLatin1String(name), QString::fromUtf8(text), {QKeySequence(code)}, QLatin1String(icon));
        connect(action, &QAction::triggered, view, act);
        onSelection.append(action);
    };
    add("actionDuplicate", "复制一份", Qt::CTRL + Qt::Key_D, "", &StatementView::Duplicate);
    add("actionDelete", "删除", Qt::Key_Delete, "delete", &StatementView::Delete);
    Separate();
    add("actionToggleEnabled", "注释 / 取消注释", Qt::CTRL + Qt::Key_Slash, "comment",
        &StatementView::ToggleEnabled);
    onSelection.append(Add(QStringLiteral("actionBreakpoint"), QStringLiteral("设置 / 取消断点"),
                           {key(Qt::Key_F9)}, QString(), [this] { marks->Toggle(view->SelectedIds()); }));
    add("actionMoveUp", "上移", Qt::ALT + Qt::Key_Up, "move-up", &StatementView::MoveUp);
    add("actionMoveDown", "下移", Qt::ALT + Qt::Key_Down, "move-down", &StatementView::MoveDown);
    Separate();
    menu->addActions(runs.GetPlaceActions());
    menu->addSeparator();
    menu->addMenu(refactor->MakeMenu(menu));
    menu->addActions(bookmarks->Actions());
    menu->addSeparator();
    Add(QStringLiteral("actionRenameVariable"), QStringLiteral("重命名变量…"),
        {key(Qt::CTRL + Qt::SHIFT + Qt::Key_R)}, QString(), [this] { AskVariableName(); });
    Add(QStringLiteral("actionFind"), QStringLiteral("查找…"), {QKeySequence::Find}, QStringLiteral("search"),
        [this] { findBar->Open(); });
    Add(QStringLiteral("actionFindEverywhere"), QStringLiteral("在所有流程中查找…"),
        {key(Qt::CTRL + Qt::SHIFT + Qt::Key_F)}, QString(), [this] { findPane->OpenToFind(); });
    Add(QStringLiteral("actionReplaceEverywhere"), QStringLiteral("在所有流程中替换…"),
        {key(Qt::CTRL + Qt::Key_H)}, QString(), [this] { findPane->OpenToReplace(); });
    Add(QStringLiteral("actionPython"), QStringLiteral("显示 Python"), {key(Qt::CTRL + Qt::ALT + Qt::Key_P)},
        QStringLiteral("app-program"), [this] { python->setVisible(python->isHidden()); });
    AddFindKey(QKeySequence(Qt::Key_F3), &StatementFindBar::FindNext);
    AddFindKey(QKeySequence(Qt::SHIFT + Qt::Key_F3), &StatementFindBar::FindPrevious);
    Add(QStringLiteral("actionDebugPanes"), QStringLiteral("调试窗格"), {key(Qt::CTRL + Qt::ALT + Qt::Key_D)},
        QString(), [this] { panes->Toggle(); });
    for (QAction* action : qAsConst(onSelection))
        action->setProperty("whyNot", QStringLiteral("先选择语句")); // where all acts are listed

    auto* save = new QAction(QStringLiteral("保存"), host);
    save->setObjectName(QStringLiteral("actionSave"));
    save->setShortcut(QKeySequence::Save);
    save->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    host->addAction(save);
    connect(save, &QAction::triggered, this, [this] {
        // During a blocking save a second one would answer the wrong question.
        if (!OxBlocker::IsBlocking())
            emit SigSaveAsked();
    });
}

void VisualEditorParts::Separate()
{
    menu->addSeparator();
    head->AddGap();
}

void VisualEditorParts::AddFindKey(const QKeySequence& keys, void (StatementFindBar::*act)())
{
    auto* action = new QAction(host);
    action->setShortcut(keys);
    action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    host->addAction(action);
    connect(action, &QAction::triggered, findBar, act);
}

void VisualEditorParts::UpdateActions()
{
    undo->setEnabled(edits && edits->Stack()->canUndo());
    redo->setEnabled(edits && edits->Stack()->canRedo());
    const bool selected = view->selectionModel()->hasSelection();
    for (QAction* action : qAsConst(onSelection))
        action->setEnabled(selected);
    refactor->Update();
    bookmarks->Update();
    runs.Update();
}

void VisualEditorParts::ShowMenu(const QPoint& position)
{
    if (edits && !marks->ShowMenu(position))
        menu->popup(view->viewport()->mapToGlobal(position));
}

void VisualEditorParts::SlotRunAsked(const QString& processName)
{
    const QPointer<VisualEditorParts> self(this);
    const QStringList selected = view->SelectedIds();
    const int scrolled = view->verticalScrollBar()->value();
    emit SigRunAsked(processName);
    // The main process was shown on the way (SwitchMainPage()); the author stays with the one that she runs.
    if (!self || tabs->Current() == processName)
        return;
    tabs->SetCurrent(processName);
    view->Select(selected);
    view->verticalScrollBar()->setValue(scrolled);
}
