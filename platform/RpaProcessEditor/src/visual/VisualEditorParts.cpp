// SPDX-License-Identifier: Apache-2.0

#include "CheckPane_p.h"
#include "CommandPalette_p.h"
#include "CommandQuickPick_p.h"
#include "PaletteFolder_p.h"
#include "ProcessHead_p.h"
#include "ProcessTabs_p.h"
#include "PropertyPanel_p.h"
#include "StatementFindBar_p.h"
#include "StatementView_p.h"
#include "VisualEditorParts_p.h"

#include <OxBase/DpiFollower.h>
#include <OxBase/DpiTool.h>
#include <OxBase/OxBlocker.h>
#include <RpaEngineTool/IRpaInspector.h>
#include <RpaEngineTool/RpaEngineTool.h>
#include <RpaProcessData/RpaHtmlNodeManager.h>
#include <WbBaseUI/UIUtils.h>
#include <WbBaseUI/WbEditHistory.h>
#include <WbBaseUI/WbFocusForward.h>
#include <WbBaseUI/WbIcons.h>

#include <QAction>
#include <QMenu>
#include <QScopedValueRollback>
#include <QSignalBlocker>
#include <QSplitter>
#include <QVBoxLayout>

VisualEditorParts::VisualEditorParts(QWidget* editor)
    : host(editor), tabs(new ProcessTabs), head(new ProcessHead(tabs)), palette(new CommandPalette),
      view(new StatementView), findBar(new StatementFindBar(view)), properties(new PropertyPanel),
      checks(new CheckPane), quickPick(new CommandQuickPick(editor)), menu(new QMenu(editor))
{
    BuildLayout();
    BuildActions();
    ConnectParts();
    UpdateActions();
}

VisualEditorParts::~VisualEditorParts()
{
    // The widgets are the host's and outlive this; they must not reach for the edits any more.
    // Their window may be half gone, so nothing may be built any more either.
    const QSignalBlocker silentView(view);
    const QSignalBlocker silentTabs(tabs);
    properties->LetGo();
    view->ShowProcess(nullptr, nullptr);
    tabs->SetEdits(nullptr);
    edits.reset(); // first no longer reachable, then gone: its stack reports while it empties
}

void VisualEditorParts::BuildLayout()
{
    auto* middle = new QWidget;
    auto* middleLayout = new QVBoxLayout(middle);
    middleLayout->setContentsMargins(0, 0, 0, 0);
    middleLayout->setSpacing(0);
    middleLayout->addWidget(head);
    middleLayout->addWidget(findBar);
    middleLayout->addWidget(view, 1);

    auto* splitter = new QSplitter(Qt::Horizontal);
    splitter->setObjectName(QStringLiteral("processSplitter"));
    splitter->addWidget(palette);
    splitter->addWidget(middle);
    splitter->addWidget(properties);
    splitter->setStretchFactor(0, 0);
    splitter->setStretchFactor(1, 1);
    splitter->setStretchFactor(2, 0);
    splitter->setSizes({DpiTool::ScaleDefault(180), DpiTool::ScaleDefault(700), DpiTool::ScaleDefault(250)});
    DpiFollower::Follow(splitter, [this, middle] {
        palette->setMinimumWidth(DpiTool::ScaleDefault(150));
        properties->setMinimumWidth(DpiTool::ScaleDefault(220));
        middle->setMinimumWidth(DpiTool::ScaleDefault(320));
    });
    // The findings take the whole width: their texts are long.
    auto* vertical = new QSplitter(Qt::Vertical);
    vertical->addWidget(splitter);
    vertical->addWidget(checks);
    vertical->setStretchFactor(0, 3);
    vertical->setStretchFactor(1, 1);
    vertical->setSizes({DpiTool::ScaleDefault(400), DpiTool::ScaleDefault(150)});
    vertical->setChildrenCollapsible(false);
    auto* layout = new QHBoxLayout(host);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(vertical);
    view->setContextMenuPolicy(Qt::CustomContextMenu);
    new WbFocusForward(host, view);
}

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
    add("actionMoveUp", "上移", Qt::ALT + Qt::Key_Up, "move-up", &StatementView::MoveUp);
    add("actionMoveDown", "下移", Qt::ALT + Qt::Key_Down, "move-down", &StatementView::MoveDown);
    Separate();
    Add(QStringLiteral("actionRenameVariable"), QStringLiteral("重命名变量…"),
        {key(Qt::CTRL + Qt::SHIFT + Qt::Key_R)}, QString(), [this] { AskVariableName(); });
    Add(QStringLiteral("actionFind"), QStringLiteral("查找…"), {QKeySequence::Find}, QStringLiteral("search"),
        [this] { findBar->Open(); });
    AddFindKey(QKeySequence(Qt::Key_F3), &StatementFindBar::FindNext);
    AddFindKey(QKeySequence(Qt::SHIFT + Qt::Key_F3), &StatementFindBar::FindPrevious);
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

void VisualEditorParts::ConnectParts()
{
    connect(tabs, &ProcessTabs::SigCurrentChanged, this, &VisualEditorParts::ShowProcess);
    connect(palette, &CommandPalette::SigCommandChosen, this, &VisualEditorParts::AddCommand);
    connect(quickPick, &CommandQuickPick::SigCommandChosen, this, &VisualEditorParts::AddCommand);
    connect(view, &StatementView::SigQuickPickAsked, this, &VisualEditorParts::OpenQuickPick);
    connect(view, &StatementView::SigPropertiesAsked, properties, &PropertyPanel::FocusFirst);
    connect(view, &StatementView::SigSelectionChanged, this, [this] {
        properties->ShowStatements(view->SelectedIds());
        UpdateActions();
    });
    connect(view, &QWidget::customContextMenuRequested, this, &VisualEditorParts::ShowMenu);
    connect(&findings, &StandingFindings::SigChanged, this, &VisualEditorParts::SlotMended);
    connect(checks, &CheckPane::SigFindingChosen, this, &VisualEditorParts::ShowStatement);
}

void VisualEditorParts::SetApp(const RpaAppDataPtr& appData)
{
    if (app == appData)
        return;
    ShowFindings({});
    shownProcess.clear();
    tabs->SetEdits(nullptr);
    view->ShowProcess(nullptr, nullptr);
    properties->SetProcess(nullptr, nullptr);
    edits.reset();
    app = appData;
    findings.SetApp(app);
    RpaEngineTool::Instance()->GetHtmlInspector()->SetNodeManager(app ? app->GetHtmlNodeManager() : nullptr);
    if (app) {
        edits = std::make_unique<ProcessEdits>(app);
        WbEditHistory::Instance()->Watch(edits->Stack(), host);
        connect(edits.get(), &ProcessEdits::SigTouched, this, &VisualEditorParts::SlotTouched);
        connect(edits.get(), &ProcessEdits::SigVariableFollowed, this,
                &VisualEditorParts::SlotVariableFollowed);
        connect(edits->Stack(), &QUndoStack::canUndoChanged, this, &VisualEditorParts::UpdateActions);
        connect(edits->Stack(), &QUndoStack::canRedoChanged, this, &VisualEditorParts::UpdateActions);
        ProcessDataManager* manager = edits->Manager();
        connect(manager, &ProcessDataManager::SigAboutToReset, edits.get(), [this] {
            edits->ForgetSteps();
            view->ShowProcess(nullptr, nullptr);
            properties->SetProcess(nullptr, nullptr);
            shownProcess.clear();
        });
        connect(manager, &ProcessDataManager::SigProcessAboutToBeRemoved, edits.get(), [this](int index) {
            if (edits->Manager()->GetProcess(index) != edits->Manager()->FindProcess(shownProcess))
                return;
            view->ShowProcess(nullptr, nullptr);
            properties->SetProcess(nullptr, nullptr);
            shownProcess.clear();
        });
    }
    tabs->SetEdits(edits.get());
    if (edits) {
        // Behind the tabs' own connection: the current name may be the same while the process is another.
        connect(edits->Manager(), &ProcessDataManager::SigReset, edits.get(),
                [this] { ShowProcess(tabs->Current()); });
    }
    ShowProcess(tabs->Current());
    UpdateActions();
}

void VisualEditorParts::ShowProcess(const QString& name)
{
    RpaProcess* process = edits ? edits->Manager()->FindProcess(name) : nullptr;
    shownProcess = name;
    if (process && view->Statements()->Process() == process)
        return; // renamed or moved: selection and scroll position stay
    properties->SetProcess(edits.get(), process);
    view->ShowProcess(edits.get(), process);
    view->Statements()->SetFindings(findings.Get());
    UpdateActions();
}

void VisualEditorParts::SlotTouched(const QString& processName, const QStringList& ids)
{
    if (!processName.isEmpty() && processName != tabs->Current())
        tabs->SetCurrent(processName);
    // While the author types, the selection is what it was; otherwise what a step touched is shown.
    if (!ids.isEmpty() && ids != view->SelectedIds())
        view->Select(ids);
    UpdateActions();
}

void VisualEditorParts::UpdateActions()
{
    undo->setEnabled(edits && edits->Stack()->canUndo());
    redo->setEnabled(edits && edits->Stack()->canRedo());
    const bool selected = view->selectionModel()->hasSelection();
    for (QAction* action : qAsConst(onSelection))
        action->setEnabled(selected);
}

void VisualEditorParts::ShowMenu(const QPoint& position)
{
    if (edits)
        menu->popup(view->viewport()->mapToGlobal(position));
}

void VisualEditorParts::OpenQuickPick()
{
    if (!view->Statements()->Process())
        return;
    const QRect current = view->visualRect(view->currentIndex());
    const QPoint place = current.isValid() ? current.bottomLeft() : QPoint(20, 20);
    quickPick->Open(view->viewport()->mapToGlobal(place));
}

void VisualEditorParts::AddCommand(const QString& command)
{
    view->InsertCommand(command);
    view->setFocus();
}

void VisualEditorParts::SwitchMainPage()
{
    if (edits)
        tabs->SetCurrent(edits->Manager()->GetProcessNameFirst());
}

void VisualEditorParts::ShowFindings(const QList<RpaCheckInfo>& list)
{
    findings.Take(list);
    view->Statements()->SetFindings(findings.Get());
    checks->ShowFindings(findings.Get());
}

void VisualEditorParts::SlotMended()
{
    view->Statements()->SetFindings(findings.Get());
    checks->KeepFindings(findings.Get());
}

bool VisualEditorParts::ShowStatement(const QString& processName, const QString& statementId)
{
    const RpaProcess* process = edits ? edits->Manager()->FindProcess(processName) : nullptr;
    if (!process || !process->Find(statementId))
        return false;
    tabs->SetCurrent(processName);
    view->Select({statementId});
    view->setFocus();
    return true;
}

void VisualEditorParts::MarkRunning(const QString& statementId)
{
    view->Statements()->SetRunning(statementId);
}
