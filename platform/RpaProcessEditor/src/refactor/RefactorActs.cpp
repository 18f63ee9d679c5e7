// SPDX-License-Identifier: Apache-2.0

#include "BlockEdits_p.h"
#include "CommandTexts_p.h"
#include "ProcessNameDialog_p.h"
#include "RefactorActs_p.h"
#include "StatementView_p.h"
#include "SubProcessEdits_p.h"

#include <WbBaseUI/WbToast.h>

#include <QAction>
#include <QMenu>

RefactorActs::RefactorActs(StatementView* statementView) : QObject(statementView), view(statementView)
{
    AddWrap(QStringLiteral("if"), Qt::CTRL + Qt::Key_I);
    AddWrap(QStringLiteral("loop.count"), Qt::CTRL + Qt::Key_L);
    AddWrap(QStringLiteral("loop.list"), 0);
    AddWrap(QStringLiteral("loop.while"), 0);
    AddWrap(QStringLiteral("try"), Qt::CTRL + Qt::Key_T);
    AddOnSelection(QStringLiteral("actionUnwrap"), QStringLiteral("去掉外层"), Qt::CTRL + Qt::Key_U,
                   &RefactorActs::Unwrap);
    actions.append(nullptr);
    AddOnSelection(QStringLiteral("actionExtract"), QStringLiteral("提取为子流程…"),
                   Qt::CTRL + Qt::SHIFT + Qt::Key_X, &RefactorActs::Extract);
    AddOnSelection(QStringLiteral("actionInline"), QStringLiteral("展开子流程"),
                   Qt::CTRL + Qt::SHIFT + Qt::Key_V, &RefactorActs::Inline);
    actions.append(nullptr);
    AddAct(QStringLiteral("actionFoldAll"), QStringLiteral("全部折叠"), Qt::CTRL + Qt::Key_Left,
           &RefactorActs::FoldAll);
    AddAct(QStringLiteral("actionUnfoldAll"), QStringLiteral("全部展开"), Qt::CTRL + Qt::Key_Right,
           &RefactorActs::UnfoldAll);
    Update();
}

QAction* RefactorActs::Add(const QString& name, const QString& text, int key)
{
    auto* action = new QAction(text, view);
    action->setObjectName(name);
    if (key != 0)
        action->setShortcut(QKeySequence(key));
    // In the tree only: in a field of the property panel the same keys belong to the text.
    action->setShortcutContext(Qt::WidgetShortcut);
    view->addAction(action);
    actions.append(action);
    return action;
}

QAction* RefactorActs::AddAct(const QString& name, const QString& text, int key, Act act)
{
    QAction* action = Add(name, text, key);
    connect(action, &QAction::triggered, this, act);
    return action;
}

QAction* RefactorActs::AddOnSelection(const QString& name, const QString& text, int key, Act act)
{
    QAction* action = AddAct(name, text, key, act);
    action->setProperty("whyNot", QStringLiteral("先选择语句")); // where all acts are listed
    onSelection.append(action);
    return action;
}

void RefactorActs::AddWrap(const QString& command, int key)
{
    const QString text = QStringLiteral("放进“%1”").arg(CommandTexts::Title(command));
    QAction* action = Add(QStringLiteral("actionWrap.") + command, text, key);
    connect(action, &QAction::triggered, this, [this, command] { Wrap(command); });
    action->setProperty("whyNot", QStringLiteral("先选择语句"));
    onSelection.append(action);
}

QMenu* RefactorActs::MakeMenu(QWidget* parent) const
{
    auto* menu = new QMenu(QStringLiteral("整理"), parent);
    menu->setObjectName(QStringLiteral("refactorMenu"));
    for (QAction* action : actions)
        if (action)
            menu->addAction(action);
        else
            menu->addSeparator();
    return menu;
}

void RefactorActs::Update()
{
    const bool selected = view->selectionModel()->hasSelection();
    for (QAction* action : qAsConst(onSelection))
        action->setEnabled(selected);
}

void RefactorActs::Wrap(const QString& command)
{
    RpaProcess* process = view->Statements()->Process();
    if (!process || !edits)
        return;
    QString block;
    Say(BlockEdits::Wrap(*edits, *process, view->SelectedIds(), command, block));
    if (!block.isEmpty())
        view->Select({block});
}

void RefactorActs::Unwrap()
{
    RpaProcess* process = view->Statements()->Process();
    if (process && edits)
        Say(BlockEdits::Unwrap(*edits, *process, view->SelectedIds()));
}

// The editor may go away, or show another app, while the name is chosen.
void RefactorActs::Extract()
{
    RpaProcess* process = view->Statements()->Process();
    if (!process || !edits)
        return;
    const QStringList ids = view->SelectedIds();
    const QString problem = SubProcessEdits::ExtractProblem(*process, ids);
    Say(problem);
    if (!problem.isEmpty())
        return;
    const QPointer<ProcessEdits> asked(edits);
    const QPointer<RpaProcess> from(process);
    const ProcessDataManager* manager = edits->Manager();
    const QPointer<ProcessNameDialog> dialog =
        new ProcessNameDialog(QStringLiteral("提取为子流程"), manager->MakeFreeName(QStringLiteral("子流程")),
                              manager->GetProcessNames(), view);
    const bool accepted = dialog->exec() == QDialog::Accepted;
    if (!dialog)
        return;
    const QString name = dialog->Name();
    delete dialog;
    if (accepted && asked && from && edits == asked && SubProcessEdits::ExtractProblem(*from, ids).isEmpty())
        SubProcessEdits::Extract(*asked, *from, ids, name);
}

void RefactorActs::Inline()
{
    RpaProcess* process = view->Statements()->Process();
    if (process && edits)
        Say(SubProcessEdits::Inline(*edits, *process, view->SelectedIds()));
}

// The keyboard stays where it can be seen.
void RefactorActs::FoldAll()
{
    const RpaStatementNode* top = view->Statements()->NodeOf(view->currentIndex());
    while (top && !top->IsRoot() && !top->GetParent()->IsRoot())
        top = top->GetParent();
    view->collapseAll();
    if (top && !top->IsRoot())
        view->Select({top->GetId()});
}

void RefactorActs::UnfoldAll()
{
    view->expandAll();
    view->scrollTo(view->currentIndex());
}

void RefactorActs::Say(const QString& problem)
{
    if (!problem.isEmpty())
        WbToast::Show(problem, ToastWarning);
}
