// SPDX-License-Identifier: Apache-2.0

#include "BookmarkActs_p.h"
#include "CommandPalette_p.h"
#include "CommandQuickPick_p.h"
#include "DebugPanes_p.h"
#include "ProcessFindPane_p.h"
#include "ProcessHead_p.h"
#include "ProcessTabs_p.h"
#include "PropertyPanel_p.h"
#include "PythonPane_p.h"
#include "RefactorActs_p.h"
#include "RunBar_p.h"
#include "StatementFindBar_p.h"
#include "StatementView_p.h"
#include "VisualDebugMarks_p.h"
#include "VisualEditorParts_p.h"

#include <OxBase/DpiFollower.h>
#include <OxBase/DpiTool.h>
#include <RpaEngineTool/IRpaInspector.h>
#include <RpaEngineTool/RpaEngineTool.h>
#include <RpaProcessData/RpaHtmlNodeManager.h>
#include <WbBaseUI/WbEditHistory.h>
#include <WbBaseUI/WbFocusForward.h>

#include <QMenu>
#include <QSignalBlocker>
#include <QSplitter>
#include <QTimer>
#include <QVBoxLayout>

VisualEditorParts::VisualEditorParts(QWidget* editor)
    : host(editor), tabs(new ProcessTabs), head(new ProcessHead(tabs)), palette(new CommandPalette),
      view(new StatementView), findBar(new StatementFindBar(view)), properties(new PropertyPanel),
      python(new PythonPane), marks(new VisualDebugMarks(view, editor)),
      panes(new DebugPanes(DebugFocus::Instance())), quickPick(new CommandQuickPick(editor)),
      menu(new QMenu(editor)), refactor(new RefactorActs(view)), bookmarks(new BookmarkActs(view)),
      findPane(new ProcessFindPane), runPlace(view), runs(editor, runPlace)
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
    marks->SetApp(nullptr);
    panes->SetBreakpoints(nullptr);
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
    splitter->addWidget(python);
    splitter->addWidget(properties);
    splitter->setStretchFactor(0, 0);
    splitter->setStretchFactor(1, 1);
    splitter->setStretchFactor(2, 1);
    splitter->setStretchFactor(3, 0);
    splitter->setSizes({DpiTool::ScaleDefault(180), DpiTool::ScaleDefault(700), DpiTool::ScaleDefault(420),
                        DpiTool::ScaleDefault(250)});
    DpiFollower::Follow(splitter, [this, middle] {
        palette->setMinimumWidth(DpiTool::ScaleDefault(150));
        python->setMinimumWidth(DpiTool::ScaleDefault(200));
        properties->setMinimumWidth(DpiTool::ScaleDefault(220));
        middle->setMinimumWidth(DpiTool::ScaleDefault(320));
    });
    // What is found takes the whole width: its texts are long.
    auto* vertical = new QSplitter(Qt::Vertical);
    vertical->addWidget(splitter);
    vertical->addWidget(findPane);
    vertical->addWidget(panes);
    vertical->setStretchFactor(0, 3);
    vertical->setStretchFactor(1, 1);
    vertical->setStretchFactor(2, 1);
    vertical->setSizes({DpiTool::ScaleDefault(400), DpiTool::ScaleDefault(220), DpiTool::ScaleDefault(280)});
    vertical->setChildrenCollapsible(false);
    auto* layout = new QVBoxLayout(host);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(new RunBar(host));
    layout->addWidget(vertical, 1);
    view->setContextMenuPolicy(Qt::CustomContextMenu);
    new WbFocusForward(host, view);
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
        python->SetCurrent(view->SelectedIds().value(0));
        UpdateActions();
    });
    connect(python, &PythonPane::SigStatementChosen, this, &VisualEditorParts::ShowPlace);
    connect(view, &QWidget::customContextMenuRequested, this, &VisualEditorParts::ShowMenu);
    connect(&findings, &StandingFindings::SigChanged, this, &VisualEditorParts::SlotMended);
    connect(bookmarks, &BookmarkActs::SigPlaceChosen, this, &VisualEditorParts::ShowStatement);
    connect(findPane, &ProcessFindPane::SigPlaceShown, this, &VisualEditorParts::ShowPlace);
    connect(findPane, &ProcessFindPane::SigPlaceChosen, this, &VisualEditorParts::ShowStatement);
    connect(findPane, &WbFindBar::SigClosed, view, qOverload<>(&QWidget::setFocus));
    connect(&runs, &RunActions::SigRunAsked, this, &VisualEditorParts::SlotRunAsked);
    connect(&runs, &RunActions::SigStopAsked, this, &VisualEditorParts::SigStopAsked);
    connect(marks, &VisualDebugMarks::SigStopped, this, &VisualEditorParts::ShowStop);
    connect(panes, &DebugPanes::SigPlaceChosen, this,
            [this](const RpaDebugPlace& place) { ShowStatement(place.processName, place.statementId); });
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
    bookmarks->SetApp(app);
    runPlace.SetApp(app);
    runs.SetApp(app);
    python->SetApp(app);
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
    refactor->SetEdits(edits.get());
    findPane->SetEdits(edits.get());
    tabs->SetEdits(edits.get());
    if (edits) {
        // Behind the tabs' own connection: the current name may be the same while the process is another.
        connect(edits->Manager(), &ProcessDataManager::SigReset, edits.get(),
                [this] { ShowProcess(tabs->Current()); });
    }
    ShowProcess(tabs->Current());
    marks->SetApp(app);
    panes->SetBreakpoints(marks->Breakpoints());
    UpdateActions();
}

void VisualEditorParts::ShowProcess(const QString& name)
{
    RpaProcess* process = edits ? edits->Manager()->FindProcess(name) : nullptr;
    shownProcess = name;
    python->ShowProcess(name);
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
}

void VisualEditorParts::SlotMended()
{
    view->Statements()->SetFindings(findings.Get());
}

bool VisualEditorParts::ShowPlace(const QString& processName, const QString& statementId)
{
    const RpaProcess* process = edits ? edits->Manager()->FindProcess(processName) : nullptr;
    if (!process || !process->Find(statementId))
        return false;
    tabs->SetCurrent(processName);
    view->Select({statementId});
    return true;
}

bool VisualEditorParts::ShowStatement(const QString& processName, const QString& statementId)
{
    const bool shown = ShowPlace(processName, statementId);
    if (shown)
        view->setFocus();
    return shown;
}

// The author may be typing elsewhere: selection and keyboard stay where they are.
void VisualEditorParts::ShowStop(const RpaDebugPlace& place)
{
    tabs->SetCurrent(place.processName);
    view->Reveal(place.statementId);
    if (panes->OpenAtStop()) // when they have taken their place
        QTimer::singleShot(0, this, [this, id = place.statementId] { view->Reveal(id); });
}

void VisualEditorParts::MarkRunning(const QString& statementId)
{
    view->Statements()->SetRunning(statementId);
}
