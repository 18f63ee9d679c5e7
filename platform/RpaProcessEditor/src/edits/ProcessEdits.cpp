// SPDX-License-Identifier: Apache-2.0

#include "ProcessEdits_p.h"
#include "ProcessSteps_p.h"

#include <RpaAppData/RpaSavedState.h>
#include <RpaProcessData/RpaHtmlNodeManager.h>
#include <RpaProcessData/RpaUiaNodeManager.h>
#include <WbBaseUI/WbToast.h>

#include <QScopedValueRollback>

#include <functional>

namespace
{
bool LiesInside(const RpaProcess& process, const QString& id, const QStringList& ids)
{
    for (const RpaStatementNode* node = process.Find(id); node && !node->IsRoot(); node = node->GetParent())
        if (ids.contains(node->GetId()))
            return true;
    return false;
}

// The statements stand there already, in this order.
bool IsInPlace(const RpaProcess& process, const QStringList& ids, const QString& parentId, int row)
{
    const RpaStatementNode* parent = parentId.isEmpty() ? process.GetRoot() : process.Find(parentId);
    if (!parent)
        return true;
    const int target = row < 0 ? parent->GetChildCount() : row;
    const RpaStatementNode* first = process.Find(ids.first());
    if (!first || first->GetParent() != parent)
        return false;
    const int start = first->GetRow();
    for (int i = 0; i < ids.size(); ++i) {
        const RpaStatementNode* node = parent->GetChild(start + i);
        if (!node || node->GetId() != ids.at(i))
            return false;
    }
    return target >= start && target <= start + ids.size();
}

QVector<RpaStatement> StatementsOf(const RpaProcess& process, const QStringList& ids)
{
    QVector<RpaStatement> statements;
    for (const QString& id : ids)
        if (const RpaStatementNode* node = process.Find(id))
            statements.append(node->ToStatement());
    return statements;
}

// Told here, where the author puts them: the app could be neither kept nor saved.
bool FitsOrSays(const RpaProcess& process, const QString& parentId, const QVector<RpaStatement>& statements)
{
    const bool fits = process.Fits(parentId, statements);
    if (!fits)
        WbToast::Show(
            QStringLiteral("语句最多嵌套 %1 层，没有放到这里。请放到外层，或把里层的语句移到另一个流程中")
                .arg(RpaProcess::maxDepth),
            ToastWarning);
    return fits;
}
} // namespace

ProcessEdits::ProcessEdits(const RpaAppDataPtr& appData, QObject* parent)
    : QObject(parent), app(appData), savedState(RpaSavedState::Of(appData.data()))
{
    stack.setUndoLimit(500);
    connect(savedState, &RpaSavedState::SigSaved, &stack, &QUndoStack::setClean);
    connect(&stack, &QUndoStack::indexChanged, this, [this] {
        if (stack.isClean() && !isForgetting)
            savedState->TakenBack(this);
    });
}

ProcessEdits::~ProcessEdits()
{
    stack.disconnect(this); // it empties itself, which takes nothing back
}

void ProcessEdits::ForgetSteps()
{
    const bool wasClean = stack.isClean();
    const QScopedValueRollback<bool> guard(isForgetting, true);
    stack.clear();
    if (!wasClean)
        stack.resetClean();
}

ProcessDataManager* ProcessEdits::Manager() const
{
    return app->GetProcessDataManager();
}

QString ProcessEdits::ElementName(const QString& id) const
{
    const QString name = app->GetHtmlNodeManager()->FindNode(id).name;
    return name.isEmpty() ? app->GetUiaNodeManager()->FindNode(id).name : name;
}

void ProcessEdits::Insert(RpaProcess& process, const QString& parentId, int row,
                          const QVector<RpaStatement>& statements, const QString& title)
{
    EndTyping();
    if (!statements.isEmpty() && FitsOrSays(process, parentId, statements))
        stack.push(
            new InsertStep(*this, process, parentId, row, statements, title)); // the stack owns its steps
}

void ProcessEdits::Remove(RpaProcess& process, const QStringList& ids, const QString& title)
{
    EndTyping();
    if (!ids.isEmpty())
        stack.push(new RemoveStep(*this, process, ids, title));
}

void ProcessEdits::Move(RpaProcess& process, const QStringList& ids, const QString& parentId, int row)
{
    EndTyping();
    if (ids.isEmpty() || LiesInside(process, parentId, ids) || IsInPlace(process, ids, parentId, row))
        return;
    if (FitsOrSays(process, parentId, StatementsOf(process, ids)))
        stack.push(new MoveStep(*this, process, ids, parentId, row));
}

bool ProcessEdits::Replace(RpaProcess& process, const QStringList& ids, const QVector<RpaStatement>& instead,
                           const QString& title)
{
    EndTyping();
    const RpaStatementNode* first = ids.isEmpty() ? nullptr : process.Find(ids.first());
    if (!first || !FitsOrSays(process, first->GetParent()->GetId(), instead))
        return false;
    stack.push(new ReplaceStep(*this, process, ids, instead, title));
    return true;
}

void ProcessEdits::SetValues(RpaProcess& process, const RpaStatement& values, const QString& key,
                             const QString& title)
{
    const RpaStatementNode* node = process.Find(values.id);
    if (!node || node->GetValues() == values)
        return;
    NoteName(process.GetName(), node->GetValues(), values);
    stack.push(new ValuesStep(*this, process, {{node->GetValues(), values}}, key, title));
}

void ProcessEdits::EndTyping()
{
    ++typingSession;
    if (!typedName.statementId.isEmpty())
        FollowName();
}

void ProcessEdits::ChangeEach(RpaProcess& process, const QStringList& ids, const QString& title,
                              const Change& change)
{
    EndTyping();
    QVector<ValuesStep::Change> changes;
    for (const QString& id : ids) {
        const RpaStatementNode* node = process.Find(id);
        if (!node)
            continue;
        RpaStatement after = node->GetValues();
        if (change(after))
            changes.append({node->GetValues(), after});
    }
    if (!changes.isEmpty())
        stack.push(new ValuesStep(*this, process, changes, QString(), title));
}

void ProcessEdits::ChangeAll(const QVector<RpaStatementChange>& changes, const QString& title)
{
    EndTyping();
    const auto put = [this, changes](RpaStatement RpaStatementChange::*values) {
        return [this, changes, values] {
            for (const RpaStatementChange& change : changes)
                if (RpaProcess* process = Manager()->FindProcess(change.processName))
                    process->SetValues((change.*values).id, change.*values);
            Report(QString(), {});
        };
    };
    if (!changes.isEmpty())
        stack.push(new ActStep(title, put(&RpaStatementChange::after), put(&RpaStatementChange::before)));
}

void ProcessEdits::SetEnabled(RpaProcess& process, const QStringList& ids, bool enabled)
{
    ChangeEach(process, ids, enabled ? QStringLiteral("启用语句") : QStringLiteral("注释语句"),
               [enabled](RpaStatement& statement) {
                   const bool changed = statement.enabled != enabled;
                   statement.enabled = enabled;
                   return changed;
               });
}

void ProcessEdits::AddProcess(const QString& name)
{
    EndTyping();
    stack.push(new ActStep(
        QStringLiteral("新建流程"),
        [this, name] {
            Manager()->AddProcess(name);
            Report(name, {});
        },
        [this, name] {
            Manager()->RemoveProcess(name);
            Report(QString(), {});
        }));
}

void ProcessEdits::RemoveProcess(const QString& name)
{
    EndTyping();
    const RpaProcess* process = Manager()->FindProcess(name);
    if (!process)
        return;
    const int index = Manager()->IndexOf(name);
    const QVector<RpaStatement> statements = process->GetStatements();
    const QString program = process->GetProgramText();
    stack.push(new ActStep(
        QStringLiteral("删除流程"),
        [this, name] {
            Manager()->RemoveProcess(name);
            Report(QString(), {});
        },
        [this, name, index, statements, program] {
            if (RpaProcess* restored = Manager()->AddProcess(name, index)) {
                restored->SetStatements(statements);
                restored->SetProgramText(program);
            }
            Report(name, {});
        }));
}

void ProcessEdits::MoveProcess(int from, int to)
{
    EndTyping();
    const auto move = [this](int source, int target) {
        return [this, source, target] {
            Manager()->MoveProcess(source, target);
            Report(QString(), {});
        };
    };
    stack.push(new ActStep(QStringLiteral("移动流程"), move(from, to), move(to, from)));
}

void ProcessEdits::Report(const QString& processName, const QStringList& ids)
{
    savedState->Edited(this);
    emit SigTouched(processName, ids);
}
