// SPDX-License-Identifier: Apache-2.0

#include "CodeAssist_p.h"
#include "CodeEdit_p.h"
#include "CodeFindBar_p.h"
#include "CodeFolds_p.h"
#include "CodeHighlighter_p.h"
#include "DebugPanes_p.h"
#include "ProgramDebugMarks_p.h"
#include "ProgramRunPlace_p.h"
#include "RunActions_p.h"
#include "RunBar_p.h"

#include <OxBase/OxBlocker.h>
#include <RpaAppData/RpaAppDataNotify.h>
#include <RpaEngineCore/IRpaDebugger.h>
#include <RpaEngineModule/RpaEngineModule.h>
#include <RpaProcessData/ProcessDataManager.h>
#include <RpaProcessData/RpaProcess.h>
#include <RpaProcessEditor/ProcessProgramEditorWidget.h>
#include <WbBaseUI/ElidedLabelEx.h>
#include <WbBaseUI/WbEditHistory.h>
#include <WbBaseUI/WbFocusForward.h>
#include <WbBaseUI/WbSystemDialogs.h>

#include <QAction>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QSplitter>
#include <QTimer>
#include <QVBoxLayout>

#include <algorithm>

class ProcessProgramEditorWidget::Private
{
public:
    explicit Private(ProcessProgramEditorWidget* editor)
        : q(editor), edit(new CodeEdit), findBar(new CodeFindBar(edit, editor)), failure(new ElidedLabelEx),
          position(new QLabel), marks(new ProgramDebugMarks(edit, editor)),
          panes(new DebugPanes(DebugFocus::Instance())), runPlace(edit), runs(editor, runPlace)
    {
    }

    void Layout()
    {
        failure->setObjectName(QStringLiteral("labelFailure"));
        failure->setProperty("wbRole", QStringLiteral("error"));
        position->setObjectName(QStringLiteral("labelCursorPosition"));
        position->setContentsMargins(10, 2, 10, 2);
        edit->setPlaceholderText(QStringLiteral("# 在这里写 Python 程序\n# 例如：print(\"你好\")"));
        auto* layout = new QVBoxLayout(q);
        layout->setContentsMargins(0, 0, 0, 0);
        layout->setSpacing(0);
        layout->addWidget(new RunBar(q));
        layout->addWidget(findBar);
        auto* splitter = new QSplitter(Qt::Vertical);
        splitter->addWidget(edit);
        splitter->addWidget(panes);
        splitter->setStretchFactor(0, 3);
        splitter->setStretchFactor(1, 1);
        splitter->setChildrenCollapsible(false);
        layout->addWidget(splitter, 1);
        auto* foot = new QHBoxLayout;
        foot->setContentsMargins(10, 0, 0, 0);
        foot->addWidget(failure, 1);
        foot->addWidget(position);
        layout->addLayout(foot);
        new WbFocusForward(q, edit);
    }

    template <typename Act>
    QAction* AddKey(const QString& name, const QKeySequence& keys, Act act)
    {
        auto* action = new QAction(q);
        action->setObjectName(name);
        action->setShortcut(keys);
        action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
        q->addAction(action);
        QObject::connect(action, &QAction::triggered, q, act);
        return action;
    }

    void AddFoldKeys()
    {
        AddKey(QStringLiteral("actionFold"), Qt::CTRL + Qt::Key_M, [this] {
            edit->GetFolds().ToggleAtCursor();
        })->setText(QStringLiteral("折叠 / 展开代码块"));
        AddKey(QStringLiteral("actionFoldAll"), Qt::CTRL + Qt::SHIFT + Qt::Key_M, [this] {
            edit->GetFolds().ToggleAll();
        })->setText(QStringLiteral("折叠 / 展开所有代码块"));
    }

    void AddKeys()
    {
        AddKey(QStringLiteral("actionSave"), QKeySequence::Save, [this] {
            // During a blocking save a second one would answer the wrong question.
            if (!OxBlocker::IsBlocking())
                emit q->SigSaveCode();
        });
        AddKey(QStringLiteral("actionFind"), QKeySequence::Find, [this] { findBar->OpenToFind(); });
        AddKey(QStringLiteral("actionReplace"), Qt::CTRL + Qt::Key_H, [this] { findBar->OpenToReplace(); });
        AddKey(QStringLiteral("actionFindNext"), Qt::Key_F3, [this] { findBar->FindNext(); });
        AddKey(QStringLiteral("actionFindPrevious"), Qt::SHIFT + Qt::Key_F3,
               [this] { findBar->FindPrevious(); });
        AddKey(QStringLiteral("actionGoToLine"), Qt::CTRL + Qt::Key_G, [this] { AskLine(); });
        AddKey(QStringLiteral("actionComment"), Qt::CTRL + Qt::Key_Slash, [this] { edit->ToggleComment(); });
        AddKey(QStringLiteral("actionDuplicate"), Qt::CTRL + Qt::Key_D, [this] { edit->DuplicateLines(); });
        AddKey(QStringLiteral("actionMoveUp"), Qt::ALT + Qt::Key_Up, [this] { edit->MoveLines(-1); });
        AddKey(QStringLiteral("actionMoveDown"), Qt::ALT + Qt::Key_Down, [this] { edit->MoveLines(1); });
        AddKey(QStringLiteral("actionBreakpoint"), Qt::Key_F9, [this] { marks->Toggle(); });
        AddKey(QStringLiteral("actionDebugPanes"), Qt::CTRL + Qt::ALT + Qt::Key_D,
               [this] { panes->Toggle(); });
        AddKey(QStringLiteral("actionZoomIn"), Qt::CTRL + Qt::Key_Equal, [this] { edit->Zoom(1); });
        AddKey(QStringLiteral("actionZoomInPlus"), Qt::CTRL + Qt::Key_Plus, [this] { edit->Zoom(1); });
        AddKey(QStringLiteral("actionZoomOut"), Qt::CTRL + Qt::Key_Minus, [this] { edit->Zoom(-1); });
        AddKey(QStringLiteral("actionZoomReset"), Qt::CTRL + Qt::Key_0, [this] { edit->Zoom(0); });
    }

    void ConnectParts()
    {
        WbEditHistory::Instance()->Watch(edit->document(), edit);
        assist = new CodeAssist(edit, q);
        QObject::connect(edit, &QPlainTextEdit::textChanged, q, [this] { StoreText(); });
        QObject::connect(edit, &CodeEdit::SigLinesMoved, q, [this](int first, int by) {
            if (!loading)
                marks->MoveLines(first, by);
        });
        QObject::connect(marks, &ProgramDebugMarks::SigStopped, q, [this](int line) { ShowPanes(line); });
        QObject::connect(panes, &DebugPanes::SigPlaceChosen, q,
                         [this](const RpaDebugPlace& place) { edit->GoToLine(place.line); });
        if (const IRpaDebugger* debugger = RpaEngineModule::Instance()->GetEngineDebugger())
            QObject::connect(debugger, &IRpaDebugger::SigCheckNode, q,
                             &ProcessProgramEditorWidget::ShowCheckInfos);
        QObject::connect(edit, &QPlainTextEdit::cursorPositionChanged, q, [this] { ShowPosition(); });
        QObject::connect(&runs, &RunActions::SigRunAsked, q, &ProcessProgramEditorWidget::SigRunProcess);
        QObject::connect(&runs, &RunActions::SigStopAsked, q, &ProcessProgramEditorWidget::SigStopProcess);
        edit->setContextMenuPolicy(Qt::CustomContextMenu);
        QObject::connect(edit, &QWidget::customContextMenuRequested, q,
                         [this](const QPoint& place) { ShowMenu(place); });
        ShowPosition();
    }

    void ShowMenu(const QPoint& place)
    {
        // "Here" is the line that was clicked, unless lines are selected.
        if (!edit->textCursor().hasSelection())
            edit->setTextCursor(edit->cursorForPosition(place));
        QMenu* const menu = edit->createStandardContextMenu();
        menu->setObjectName(QStringLiteral("programMenu"));
        menu->setAttribute(Qt::WA_DeleteOnClose);
        menu->addSeparator();
        menu->addActions(assist->GetNameActions());
        menu->addSeparator();
        menu->addActions(runs.GetPlaceActions());
        menu->popup(edit->viewport()->mapToGlobal(place));
    }

    void ShowPanes(int line)
    {
        if (panes->OpenAtStop()) // when they have taken their place
            QTimer::singleShot(0, edit, [edit = edit, line] { edit->RevealLine(line); });
    }

    void ShowPosition()
    {
        const QTextCursor cursor = edit->textCursor();
        position->setText(QStringLiteral("第 %1 行，第 %2 列")
                              .arg(cursor.blockNumber() + 1)
                              .arg(cursor.positionInBlock() + 1));
    }

    void AskLine()
    {
        const std::optional<int> line = WbSystemDialogs::Number(
            q, QStringLiteral("转到行"), QStringLiteral("行号（1–%1）：").arg(edit->blockCount()),
            edit->textCursor().blockNumber() + 1, 1, edit->blockCount());
        if (line)
            edit->GoToLine(*line);
    }

    RpaProcess* Process() const { return app ? app->GetProcessDataManager()->GetProcess(0) : nullptr; }

    // The model's text, in the editor's notation of line ends.
    QString ModelText() const
    {
        const RpaProcess* process = Process();
        QString text = process ? process->GetProgramText() : QString();
        return text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    }

    void ShowText()
    {
        loading = true;
        ForgetFailure();
        edit->LoadText(ModelText());
        loading = false;
        edit->setEnabled(app);
    }

    void StoreText()
    {
        if (loading || !app)
            return;
        const QString text = edit->toPlainText();
        if (text == stored)
            return; // a colour, not a letter
        RpaProcess* process = Process();
        if (!process)
            process = app->GetProcessDataManager()->AddProcess(QStringLiteral("主流程"));
        stored = text;
        ForgetFailure();
        process->SetProgramText(text);
        app->SetModified(true);
    }

    void ShowFailure(const QList<RpaCheckInfo>& list)
    {
        const RpaProcess* process = Process();
        const auto first = std::find_if(list.begin(), list.end(), [process](const RpaCheckInfo& info) {
            return process && info.line > 0 && info.processName == process->GetName();
        });
        const bool failed = first != list.end() && first->line <= edit->blockCount();
        edit->SetFailedLine(failed ? first->line : 0);
        failure->SetText(failed ? QStringLiteral("第 %1 行：%2").arg(first->line).arg(first->message)
                                : QString());
    }

    // Where it failed is another place by now, or mended.
    void ForgetFailure() { ShowFailure({}); }

    void WatchApp()
    {
        ProcessDataManager* manager = app->GetProcessDataManager();
        QObject::connect(manager, &ProcessDataManager::SigChanged, q, [this] {
            if (ModelText() == stored)
                return;
            // Somebody else wrote the text: a template, a draft.
            stored = ModelText();
            ShowText();
        });
    }

    ProcessProgramEditorWidget* const q;
    CodeEdit* const edit;
    CodeFindBar* const findBar;
    ElidedLabelEx* const failure;
    QLabel* const position;
    ProgramDebugMarks* const marks;
    DebugPanes* const panes;
    ProgramRunPlace runPlace;
    RunActions runs;
    CodeAssist* assist = nullptr;
    RpaAppDataPtr app;
    QString stored; // what editor and model agree on
    bool loading = false;
};

ProcessProgramEditorWidget::ProcessProgramEditorWidget(QWidget* parent)
    : QWidget(parent), d(std::make_unique<Private>(this))
{
    d->Layout();
    d->AddKeys();
    d->AddFoldKeys();
    d->ConnectParts();
    d->ShowText();
}

ProcessProgramEditorWidget::~ProcessProgramEditorWidget()
{
    // Child widgets live a little longer than d and would report to it.
    d->edit->disconnect(this);
}

QString ProcessProgramEditorWidget::GetHighlighterName()
{
    return HighlighterName();
}

void ProcessProgramEditorWidget::SetRpaAppData(const RpaAppDataPtr& appData)
{
    if (d->app == appData)
        return;
    if (d->app)
        d->app->GetProcessDataManager()->disconnect(this);
    d->app = appData;
    d->stored = d->ModelText();
    d->runPlace.SetApp(appData);
    d->runs.SetApp(appData);
    d->ShowText();
    d->marks->SetApp(d->app);
    d->panes->SetBreakpoints(d->marks->Breakpoints());
    if (!d->app)
        return;
    d->WatchApp();
    emit RpaAppDataNotify::Instance()->SigShown(d->app.data());
}

void ProcessProgramEditorWidget::ShowLine(int line)
{
    d->edit->GoToLine(line);
}

void ProcessProgramEditorWidget::ShowCheckInfos(const QList<RpaCheckInfo>& list)
{
    d->ShowFailure(list);
}
