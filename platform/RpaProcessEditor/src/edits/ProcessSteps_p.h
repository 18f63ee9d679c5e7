// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "ProcessEdits_p.h"

#include <QUndoCommand>

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

class ProcessStep : public QUndoCommand
{
public:
    ProcessStep(ProcessEdits& owner, const QString& process, const QString& title);

protected:
    RpaProcess* Process() const { return edits.Manager()->FindProcess(processName); }
    void Report(const QStringList& ids) { edits.Report(processName, ids); }

    ProcessEdits& edits;
    const QString processName;
};

class InsertStep : public ProcessStep
{
public:
    InsertStep(ProcessEdits& owner, const RpaProcess& process, const QString& parent, int at,
               const QVector<RpaStatement>& inserted, const QString& title);
    void redo() override;
    void undo() override;

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
    void redo() override;
    void undo() override;

private:
    QStringList ids;
    QVector<PlacedStatement> taken;
};

class MoveStep : public ProcessStep
{
public:
    MoveStep(ProcessEdits& owner, const RpaProcess& process, const QStringList& moved, const QString& parent,
             int at);
    void redo() override;
    void undo() override;

private:
    QStringList ids;
    QString parentId;
    int row;
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
    void redo() override;
    void undo() override;
    int id() const override { return key.isEmpty() ? -1 : 1; }
    bool mergeWith(const QUndoCommand* other) override;

    // Whether it is what the author typed into a field of this statement.
    bool IsTypedIn(const QString& process, const QString& statementId) const
    {
        return !key.isEmpty() && process == processName && changes.first().after.id == statementId;
    }
    const RpaStatement& Before() const { return changes.first().before; }

private:
    QVector<Change> changes;
    const QString key;
    const int session;
};
