// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaAppData/RpaAppData.h>
#include <RpaProcessData/ProcessDataManager.h>
#include <RpaProcessData/RpaProcess.h>
#include <RpaProcessData/RpaStatementChange.h>

#include <QObject>
#include <QStringList>
#include <QUndoStack>
#include <QVector>

class RpaSavedState;

// Every change that the author makes to the processes of one app goes through here: it becomes one undo step,
// and the app is marked modified when the step is done, undone and redone,
// but for steps that lead back to what was saved.
class ProcessEdits : public QObject
{
    Q_OBJECT

public:
    explicit ProcessEdits(const RpaAppDataPtr& appData, QObject* parent = nullptr);
    ~ProcessEdits() override;

    QUndoStack* Stack() { return &stack; }
    ProcessDataManager* Manager() const;
    RpaAppData* App() const { return app.data(); }
    // After the content was replaced, which no step leads back from.
    void ForgetSteps();
    // Name of a captured element of the app; empty for an id that is not in its stores.
    QString ElementName(const QString& id) const;

    // Inserts before the row (-1: at the end); parent id empty: top level.
    void Insert(RpaProcess& process, const QString& parentId, int row,
                const QVector<RpaStatement>& statements, const QString& title);
    void Remove(RpaProcess& process, const QStringList& ids, const QString& title);

    // Moves statements together before the row, counted as before the move. Moving into itself does nothing.
    void Move(RpaProcess& process, const QStringList& ids, const QString& parentId, int row);

    // Puts statements in the place of others that stand side by side; they may hold those, by their ids. Says
    // why not, and gives false, where they do not fit.
    bool Replace(RpaProcess& process, const QStringList& ids, const QVector<RpaStatement>& instead,
                 const QString& title);

    // Adds a process of that name with the statements, and puts the call in the place of the ids, which stand
    // side by side.
    void Extract(RpaProcess& process, const QStringList& ids, const QVector<RpaStatement>& statements,
                 const RpaStatement& call, const QString& name);

    // Replaces the values of one statement. Steps of the same key on the same statement become one as long as
    // nothing comes between them; an empty key never joins.
    void SetValues(RpaProcess& process, const RpaStatement& values, const QString& key, const QString& title);

    // The next change starts a step of its own. When the name of a variable was typed that gets its value
    // from this statement only, and the new one stands for nothing else, whatever reads it follows, as part
    // of the same step.
    void EndTyping();

    // In all processes, in one step. Gives the number of places; 0 when the variable is used nowhere.
    int RenameVariable(const QString& from, const QString& to);

    // Other values for statements of whatever processes, in one step.
    void ChangeAll(const QVector<RpaStatementChange>& changes, const QString& title);

    void SetEnabled(RpaProcess& process, const QStringList& ids, bool enabled);

    void AddProcess(const QString& name);
    void RemoveProcess(const QString& name);
    void RenameProcess(const QString& name, const QString& newName);
    void MoveProcess(int from, int to);

    // Used by the steps: marks the app and tells what to show.
    void Report(const QString& processName, const QStringList& ids);
    int TypingSession() const { return typingSession; }

signals:
    // A step was done, undone or redone; the ids are what it touched and still exists.
    void SigTouched(const QString& processName, const QStringList& ids);
    // The uses followed a variable that was given another name.
    void SigVariableFollowed(const QString& from, const QString& to, int places);

private:
    using Change = std::function<bool(RpaStatement&)>;
    // A variable whose name is being typed where it gets its value.
    struct TypedName
    {
        QString processName;
        QString statementId;
        QString argument; // empty for the result
        QString before;
    };
    void NoteName(const QString& processName, const RpaStatement& before, const RpaStatement& after);
    void FollowName();
    void ChangeEach(RpaProcess& process, const QStringList& ids, const QString& title, const Change& change);

    RpaAppDataPtr app;
    RpaSavedState* const savedState; // the app's
    QUndoStack stack;
    bool isForgetting = false;
    int typingSession = 0;
    TypedName typedName;
};
