// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "BreakpointMark_p.h"
#include "ProcessEdits_p.h"

#include <RpaProcessData/RpaCheckInfo.h>

#include <QAbstractItemModel>
#include <QHash>
#include <QPointer>
#include <QSet>

// The statements of one process as a tree. Column 0 is the gutter (line number), column 1 the
// statement.
class StatementModel : public QAbstractItemModel
{
    Q_OBJECT

public:
    enum Column
    {
        GutterColumn,
        StatementColumn,
        ColumnCount
    };

    enum Role
    {
        IdRole = Qt::UserRole,
        CommandRole,
        TitleRole,
        SummaryRole,
        NoteRole,
        LineRole,    // from 1, in the order shown
        EnabledRole, // itself and every block around it
        FindingRole, // text of its findings, empty for none
        RunningRole, // whether the engine is at it
        BookmarkRole,
        MarkRole, // BreakpointMark; invalid without a breakpoint
        StopRole, // a Stop
    };

    // Whether a stopped program stands at it.
    enum Stop
    {
        NotStopped,
        StoppedHere,
        StoppedInCall, // in something that it calls
    };

    explicit StatementModel(QObject* parent = nullptr) : QAbstractItemModel(parent) {}

    static QString StatementsMime(); // JSON of the statements
    static QString CommandMime();    // name of a command, UTF-8

    // Neither is owned; null shows nothing.
    void SetProcess(ProcessEdits* processEdits, RpaProcess* shown);
    RpaProcess* Process() const { return process; }

    void SetFindings(const QList<RpaCheckInfo>& findings);

    // The statement that the engine is at, in whatever process is shown; empty for none.
    void SetRunning(const QString& id);

    // Statements of whatever process that carry one.
    void SetBookmarks(const QStringList& ids);
    // By ids of statements.
    void SetBreakpoints(const QHash<QString, BreakpointMark>& marks);
    // Empty for none.
    void SetStop(const QString& id, Stop stop);

    const RpaStatementNode* NodeOf(const QModelIndex& index) const;
    QModelIndex IndexOf(const RpaStatementNode* node, int column = StatementColumn) const;
    QModelIndex IndexOf(const QString& id) const;

    // Ids in the order shown, without those inside another of them.
    QStringList TopIds(const QModelIndexList& indexes) const;

    QModelIndex index(int row, int column, const QModelIndex& parent = QModelIndex()) const override;
    QModelIndex parent(const QModelIndex& child) const override;
    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& = QModelIndex()) const override { return ColumnCount; }
    QVariant data(const QModelIndex& index, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

    Qt::DropActions supportedDropActions() const override { return Qt::MoveAction | Qt::CopyAction; }
    Qt::DropActions supportedDragActions() const override { return Qt::MoveAction | Qt::CopyAction; }
    QStringList mimeTypes() const override { return {StatementsMime(), CommandMime()}; }
    QMimeData* mimeData(const QModelIndexList& indexes) const override;
    bool canDropMimeData(const QMimeData* data, Qt::DropAction action, int row, int column,
                         const QModelIndex& parent) const override;
    bool dropMimeData(const QMimeData* data, Qt::DropAction action, int row, int column,
                      const QModelIndex& parent) override;

private:
    void ConnectProcess();
    void ForgetLines();
    void RepaintStatement(const QString& id);
    Stop StopAt(const RpaStatementNode& node) const;
    int LineOf(const RpaStatementNode* node) const;
    QString Summary(const RpaStatement& values) const;
    QVariant GutterData(const RpaStatementNode& node, int role) const;
    QVariant StatementData(const RpaStatementNode& node, int role) const;
    QStringList DraggedIds(const QMimeData& data) const;

    ProcessEdits* edits = nullptr;
    QPointer<RpaProcess> process;
    QHash<QString, QString> findingTexts;
    QString runningId;
    QSet<QString> bookmarks;
    QHash<QString, BreakpointMark> breakpoints;
    QString stopId;
    Stop stopKind = NotStopped;
    mutable QHash<const RpaStatementNode*, int> lines; // empty until asked for
};
