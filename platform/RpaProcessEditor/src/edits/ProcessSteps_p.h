// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "ProcessEdits_p.h"

#include <QUndoCommand>

#include <functional>
#include <utility>

// The undo steps of ProcessEdits. They name processes and statements instead of pointing at them: a process
// that was removed and restored is another object. Steps run in strict order, so a name means the same
// whenever a step runs.

// A statement and the place it had.
struct PlacedStatement
{
    QString parentId;
    int row = 0;
    RpaStatement statement;
};

// What to do and what undoes it, for steps that concern more than one process.
class ActStep : public QUndoCommand
{
public:
    using Act = std::function<void()>;

    ActStep(const QString& title, Act doing, Act undoing)
        : QUndoCommand(title), forwards(std::move(doing)), backwards(std::move(undoing))
    {
    }

    void redo() override { forwards(); }
    void undo() override { backwards(); }

private:
    const Act forwards;
    const Act backwards;
};

// A step inside one process; nothing happens once that is gone.
class ProcessStep : public QUndoCommand
{
public:
    ProcessStep(ProcessEdits& owner, const QString& process, const QString& title);

    void redo() override { Run(&ProcessStep::Do); }
    void undo() override { Run(&ProcessStep::TakeBack); }

protected:
    // Both give the statements to be shown.
    virtual QStringList Do(RpaProcess& process) = 0;
    virtual QStringList TakeBack(RpaProcess& process) = 0;

    const QString processName;

private:
    void Run(QStringList (ProcessStep::*act)(RpaProcess&));

    ProcessEdits& edits;
};

class InsertStep : public ProcessStep
{
public:
    InsertStep(ProcessEdits& owner, const RpaProcess& process, const QString& parent, int at,
               const QVector<RpaStatement>& inserted, const QString& title);

protected:
    QStringList Do(RpaProcess& process) override;
    QStringList TakeBack(RpaProcess& process) override;

private:
    QString parentId;
    int row;
    QVector<RpaStatement> statements; // with their ids once they have been in the process
};

class RemoveStep : public ProcessStep
{
public:
    RemoveStep(ProcessEdits& owner, const RpaProcess& process, const QStringList& removed,
               const QString& title);

protected:
    QStringList Do(RpaProcess& process) override;
    QStringList TakeBack(RpaProcess& process) override;

private:
    QStringList ids;
    QVector<PlacedStatement> taken;
};

class MoveStep : public ProcessStep
{
public:
    MoveStep(ProcessEdits& owner, const RpaProcess& process, const QStringList& moved, const QString& parent,
             int at);

protected:
    QStringList Do(RpaProcess& process) override;
    QStringList TakeBack(RpaProcess& process) override;

private:
    QStringList ids;
    QString parentId;
    int row;
    QVector<PlacedStatement> taken;
};

// Statements in the place of others, which stand side by side; they may hold them.
class ReplaceStep : public ProcessStep
{
public:
    ReplaceStep(ProcessEdits& owner, const RpaProcess& process, const QStringList& ids,
                const QVector<RpaStatement>& instead, const QString& title);

protected:
    QStringList Do(RpaProcess& process) override;
    QStringList TakeBack(RpaProcess& process) override;

private:
    QStringList ids;
    QVector<RpaStatement> instead; // with their ids once they have been in the process
    QVector<PlacedStatement> taken;
};

class ValuesStep : public ProcessStep
{
public:
    struct Change
    {
        RpaStatement before;
        RpaStatement after;
    };

    ValuesStep(ProcessEdits& owner, const RpaProcess& process, const QVector<Change>& changed,
               const QString& key, const QString& title);
    int id() const override { return key.isEmpty() ? -1 : 1; }
    bool mergeWith(const QUndoCommand* other) override;

    // Whether it is what the author typed into a field of this statement.
    bool IsTypedIn(const QString& process, const QString& statementId) const
    {
        return !key.isEmpty() && process == processName && changes.first().after.id == statementId;
    }
    const RpaStatement& Before() const { return changes.first().before; }

protected:
    QStringList Do(RpaProcess& process) override { return Put(process, &Change::after); }
    QStringList TakeBack(RpaProcess& process) override { return Put(process, &Change::before); }

private:
    QStringList Put(RpaProcess& process, RpaStatement Change::*values) const;

    QVector<Change> changes;
    const QString key;
    const int session;
};
