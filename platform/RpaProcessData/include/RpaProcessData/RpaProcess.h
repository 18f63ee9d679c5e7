// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaProcessData/RpaProcessDataExport.h>
#include <RpaProcessData/RpaStatementNode.h>

#include <QObject>

#include <functional>
#include <memory>

class JsonReader;
class JsonWriter;

// One process of an app: a tree of statements (visual app) or a program text (program app). Every change is
// announced finely enough for an item model: rows about to come, come, about to go, gone, moved; values
// changed; all new. Statements are addressed by their ids; an empty parent id means the top level. GUI thread
// only.
class RPAPROCESSDATA_EXPORT RpaProcess : public QObject
{
    Q_OBJECT

public:
    // Levels of nested blocks; deeper ones would not pass the limits for JSON when the app is loaded again.
    static constexpr int maxDepth = 24;

    ~RpaProcess() override;

    // Unique in the app.
    QString GetName() const;

    // The invisible root whose children are the top-level statements. Never null.
    const RpaStatementNode* GetRoot() const;
    // Null when there is no such statement.
    const RpaStatementNode* Find(const QString& statementId) const;
    // All statements, at every depth.
    int GetStatementCount() const;
    // Calls for every statement in the order in which they are shown.
    void ForEach(const std::function<void(const RpaStatementNode&)>& call) const;

    // Inserts statements with their children before the row (row -1 or beyond the end: at the end). Ids that
    // are empty or taken are replaced by fresh ones. Returns the ids of the inserted top statements; empty
    // when the parent is unknown, nothing was given, or maxDepth would be exceeded.
    QStringList Insert(const QString& parentId, int row, const QVector<RpaStatement>& statements);

    // Whether the statements may stand below the parent: it is known, and maxDepth is not exceeded.
    bool Fits(const QString& parentId, const QVector<RpaStatement>& statements) const;

    // Removes a statement with everything below it and returns it; Insert() of that value restores it with
    // its ids. An empty statement (no id) when it is unknown.
    RpaStatement Take(const QString& statementId);

    // Moves a statement before the row of the new parent; the row counts as before the move (like
    // QAbstractItemModel::beginMoveRows). False when something is unknown, when the parent lies inside the
    // statement, when maxDepth would be exceeded, or when nothing would change.
    bool Move(const QString& statementId, const QString& newParentId, int row);

    // Replaces the statement's own values; its id and its children stay. False when it is unknown or nothing
    // changed.
    bool SetValues(const QString& statementId, const RpaStatement& values);
    bool SetArgument(const QString& statementId, const QString& name, const QString& text);
    bool SetEnabled(const QString& statementId, bool enabled);

    // Replaces the whole tree at once; for a few changes use the operations above.
    void SetStatements(const QVector<RpaStatement>& statements);
    QVector<RpaStatement> GetStatements() const;

    // Text of a program app.
    QString GetProgramText() const;
    void SetProgramText(const QString& text);

signals:
    // Rows first … last below parent (the root for the top level).
    void SigAboutToInsert(const RpaStatementNode* parent, int first, int last);
    void SigInserted(const RpaStatementNode* parent, int first, int last);
    void SigAboutToRemove(const RpaStatementNode* parent, int first, int last);
    void SigRemoved(const RpaStatementNode* parent, int first, int last);
    // newRow counts as before the move.
    void SigAboutToMove(const RpaStatementNode* parent, int row, const RpaStatementNode* newParent,
                        int newRow);
    void SigMoved(const RpaStatementNode* parent, int row, const RpaStatementNode* newParent, int newRow);
    void SigStatementChanged(const RpaStatementNode* statement);
    void SigAboutToReset();
    void SigReset();
    // After each of the above, and when the name or the program text is another one.
    void SigChanged();

private:
    friend class ProcessDataManager;
    RpaProcess(const QString& name, QObject* parent);
    void SetName(const QString& name);
    void WriteJson(JsonWriter& writer) const;
    void ReadJson(JsonReader& reader);

    class Private;
    const std::unique_ptr<Private> d;
};
