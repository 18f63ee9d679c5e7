// SPDX-License-Identifier: Apache-2.0

#include "CommandTexts_p.h"
#include "StatementModel_p.h"

#include <WbBaseUI/UIUtils.h>

#include <QMimeData>

#include <utility>

namespace
{
// Tells a drag within this tree from one of another window, whose statements are copied.
QString SourceMime()
{
    return QStringLiteral("application/x-rpa-statement-source");
}

QByteArray SourceKey(const RpaProcess* process)
{
    return QByteArray::number(quintptr(process), 16);
}
} // namespace

QString StatementModel::StatementsMime()
{
    return QStringLiteral("application/x-rpa-statements+json");
}

QString StatementModel::CommandMime()
{
    return QStringLiteral("application/x-rpa-command");
}

void StatementModel::SetProcess(ProcessEdits* processEdits, RpaProcess* shown)
{
    beginResetModel();
    if (process)
        process->disconnect(this);
    edits = processEdits;
    process = shown;
    lines.clear();
    if (process)
        ConnectProcess();
    endResetModel();
}

void StatementModel::ConnectProcess()
{
    RpaProcess* p = process;
    connect(p, &RpaProcess::SigAboutToInsert, this,
            [this](const RpaStatementNode* parent, int first, int last) {
                beginInsertRows(IndexOf(parent, GutterColumn), first, last);
            });
    connect(p, &RpaProcess::SigInserted, this, [this] {
        lines.clear();
        endInsertRows();
        ForgetLines();
    });
    connect(p, &RpaProcess::SigAboutToRemove, this,
            [this](const RpaStatementNode* parent, int first, int last) {
                lines.clear();
                beginRemoveRows(IndexOf(parent, GutterColumn), first, last);
            });
    connect(p, &RpaProcess::SigRemoved, this, [this] {
        lines.clear();
        endRemoveRows();
        ForgetLines();
    });
    connect(p, &RpaProcess::SigAboutToMove, this,
            [this](const RpaStatementNode* parent, int row, const RpaStatementNode* newParent, int newRow) {
                beginMoveRows(IndexOf(parent, GutterColumn), row, row, IndexOf(newParent, GutterColumn),
                              newRow);
            });
    connect(p, &RpaProcess::SigMoved, this, [this] {
        lines.clear();
        endMoveRows();
        ForgetLines();
    });
    connect(p, &RpaProcess::SigStatementChanged, this, [this](const RpaStatementNode* node) {
        emit dataChanged(IndexOf(node, GutterColumn), IndexOf(node, StatementColumn));
    });
    connect(p, &RpaProcess::SigAboutToReset, this, [this] { beginResetModel(); });
    connect(p, &RpaProcess::SigReset, this, [this] {
        lines.clear();
        endResetModel();
    });
    connect(p, &QObject::destroyed, this, [this] { SetProcess(nullptr, nullptr); });
}

// Numbers of all lines behind a change are others; the gutter of what is visible is painted anew.
void StatementModel::ForgetLines()
{
    if (const int rows = rowCount(); rows > 0)
        emit dataChanged(index(0, GutterColumn), index(rows - 1, GutterColumn), {LineRole});
}

void StatementModel::SetFindings(const QList<RpaCheckInfo>& findings)
{
    QHash<QString, QString> texts;
    for (const RpaCheckInfo& info : findings) {
        QString& text = texts[info.statementId];
        if (!text.isEmpty())
            text += QLatin1Char('\n');
        text += info.message;
    }
    QStringList touched = findingTexts.keys() + texts.keys();
    touched.removeDuplicates();
    findingTexts = texts;
    for (const QString& id : qAsConst(touched))
        RepaintStatement(id);
}

void StatementModel::SetRunning(const QString& id)
{
    if (runningId == id)
        return;
    const QString former = std::exchange(runningId, id);
    RepaintStatement(former);
    RepaintStatement(id);
}

void StatementModel::SetBookmarks(const QStringList& ids)
{
    const QSet<QString> former = std::exchange(bookmarks, QSet<QString>(ids.begin(), ids.end()));
    const QSet<QString> changed = (former - bookmarks) + (bookmarks - former);
    for (const QString& id : changed)
        RepaintStatement(id);
}

void StatementModel::RepaintStatement(const QString& id)
{
    const QModelIndex changed = IndexOf(id);
    if (changed.isValid())
        emit dataChanged(changed.siblingAtColumn(GutterColumn), changed);
}

const RpaStatementNode* StatementModel::NodeOf(const QModelIndex& index) const
{
    if (index.isValid())
        return static_cast<const RpaStatementNode*>(index.internalPointer());
    return process ? process->GetRoot() : nullptr;
}

QModelIndex StatementModel::IndexOf(const RpaStatementNode* node, int column) const
{
    if (!node || node->IsRoot())
        return QModelIndex();
    return createIndex(node->GetRow(), column, const_cast<RpaStatementNode*>(node));
}

QModelIndex StatementModel::IndexOf(const QString& id) const
{
    return process ? IndexOf(process->Find(id)) : QModelIndex();
}

QStringList StatementModel::TopIds(const QModelIndexList& indexes) const
{
    QSet<const RpaStatementNode*> chosen;
    for (const QModelIndex& index : indexes)
        chosen.insert(NodeOf(index));
    QVector<const RpaStatementNode*> tops;
    for (const RpaStatementNode* node : qAsConst(chosen)) {
        const RpaStatementNode* above = node->GetParent();
        while (above && !chosen.contains(above))
            above = above->GetParent();
        if (!above)
            tops.append(node);
    }
    std::sort(tops.begin(), tops.end(),
              [this](const RpaStatementNode* a, const RpaStatementNode* b) { return LineOf(a) < LineOf(b); });
    QStringList ids;
    for (const RpaStatementNode* node : qAsConst(tops))
        ids.append(node->GetId());
    return ids;
}

QModelIndex StatementModel::index(int row, int column, const QModelIndex& parent) const
{
    const RpaStatementNode* above = NodeOf(parent);
    const RpaStatementNode* node =
        above && column >= 0 && column < ColumnCount ? above->GetChild(row) : nullptr;
    if (!node || (parent.isValid() && parent.column() != GutterColumn))
        return QModelIndex();
    return createIndex(row, column, const_cast<RpaStatementNode*>(node));
}

QModelIndex StatementModel::parent(const QModelIndex& child) const
{
    return child.isValid() ? IndexOf(NodeOf(child)->GetParent(), GutterColumn) : QModelIndex();
}

int StatementModel::rowCount(const QModelIndex& parent) const
{
    const RpaStatementNode* node = NodeOf(parent);
    return node && (!parent.isValid() || parent.column() == GutterColumn) ? node->GetChildCount() : 0;
}

int StatementModel::LineOf(const RpaStatementNode* node) const
{
    if (lines.isEmpty() && process) {
        lines.reserve(process->GetStatementCount());
        int line = 0;
        process->ForEach([this, &line](const RpaStatementNode& each) { lines.insert(&each, ++line); });
    }
    return lines.value(node);
}

QVariant StatementModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid())
        return QVariant();
    const RpaStatementNode& node = *NodeOf(index);
    switch (role) {
    case IdRole:
        return node.GetId();
    case CommandRole:
        return node.GetCommand();
    case TitleRole:
        return CommandTexts::Title(node.GetCommand());
    case SummaryRole:
        return Summary(node.GetValues());
    case NoteRole:
        return node.GetValues().note;
    case LineRole:
        return LineOf(&node);
    case EnabledRole:
        return node.IsEffectivelyEnabled();
    case FindingRole:
        return findingTexts.value(node.GetId());
    case RunningRole:
        // What is stopped is told by the stop; this would lag behind.
        return stopId.isEmpty() && !runningId.isEmpty() && runningId == node.GetId();
    case BookmarkRole:
        return bookmarks.contains(node.GetId());
    case MarkRole:
        return breakpoints.contains(node.GetId()) ? QVariant::fromValue(breakpoints.value(node.GetId()))
                                                  : QVariant();
    case StopRole:
        return StopAt(node);
    default:
        return index.column() == GutterColumn ? GutterData(node, role) : StatementData(node, role);
    }
}

QString StatementModel::Summary(const RpaStatement& values) const
{
    return CommandTexts::Summary(
        values, [this](const QString& id) { return edits ? edits->ElementName(id) : QString(); });
}

QVariant StatementModel::StatementData(const RpaStatementNode& node, int role) const
{
    const RpaStatement& values = node.GetValues();
    if (role == Qt::DisplayRole)
        return CommandTexts::Title(values.command);
    if (role == Qt::ToolTipRole)
        return UIUtils::PlainToolTip(findingTexts.value(node.GetId(), values.note));
    if (role != Qt::AccessibleTextRole)
        return QVariant();
    QString text = CommandTexts::Title(values.command) + QLatin1Char(' ') + Summary(values);
    if (!node.IsEffectivelyEnabled())
        text += QStringLiteral("，已注释");
    if (StopAt(node) != NotStopped)
        text += QStringLiteral("，停在这里");
    else if (stopId.isEmpty() && !runningId.isEmpty() && runningId == node.GetId())
        text += QStringLiteral("，正在运行");
    if (bookmarks.contains(node.GetId()))
        text += QStringLiteral("，有书签");
    if (findingTexts.contains(node.GetId()))
        text += QStringLiteral("，有问题：") + findingTexts.value(node.GetId());
    return text;
}

Qt::ItemFlags StatementModel::flags(const QModelIndex& index) const
{
    if (!index.isValid())
        return Qt::ItemIsDropEnabled;
    Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsDragEnabled;
    const RpaStatementNode* node = NodeOf(index);
    if (CommandTexts::HasChildren(node->GetCommand()) || node->GetChildCount() > 0)
        flags |= Qt::ItemIsDropEnabled;
    else
        flags |= Qt::ItemNeverHasChildren;
    return flags;
}

QMimeData* StatementModel::mimeData(const QModelIndexList& indexes) const
{
    const QStringList ids = TopIds(indexes);
    if (ids.isEmpty())
        return nullptr;
    QVector<RpaStatement> statements;
    QStringList texts;
    for (const QString& id : ids) {
        statements.append(process->Find(id)->ToStatement());
        texts.append(CommandTexts::Title(statements.last().command) + QLatin1Char(' ') +
                     Summary(statements.last()));
    }
    auto* mime = new QMimeData; // the caller owns it
    mime->setData(StatementsMime(), RpaStatement::ToJson(statements));
    mime->setData(SourceMime(), SourceKey(process));
    mime->setText(texts.join(QLatin1Char('\n')));
    return mime;
}

bool StatementModel::canDropMimeData(const QMimeData* mime, Qt::DropAction action, int, int,
                                     const QModelIndex& parent) const
{
    if (!process || !edits || (action != Qt::MoveAction && action != Qt::CopyAction))
        return false;
    if (mime->hasFormat(CommandMime()))
        return true;
    if (!mime->hasFormat(StatementsMime()))
        return false;
    const QStringList dragged = action == Qt::MoveAction ? DraggedIds(*mime) : QStringList();
    for (const RpaStatementNode* node = NodeOf(parent); node && !node->IsRoot(); node = node->GetParent())
        if (dragged.contains(node->GetId()))
            return false;
    return true;
}

QStringList StatementModel::DraggedIds(const QMimeData& mime) const
{
    QStringList ids;
    if (mime.data(SourceMime()) != SourceKey(process))
        return ids;
    const QVector<RpaStatement> statements = RpaStatement::FromJson(mime.data(StatementsMime()));
    for (const RpaStatement& statement : statements)
        if (process->Find(statement.id))
            ids.append(statement.id);
    return ids;
}

bool StatementModel::dropMimeData(const QMimeData* mime, Qt::DropAction action, int row, int column,
                                  const QModelIndex& parent)
{
    if (!canDropMimeData(mime, action, row, column, parent))
        return false;
    const QString parentId = NodeOf(parent)->GetId();
    if (mime->hasFormat(CommandMime())) {
        const QString name = QString::fromUtf8(mime->data(CommandMime()));
        const RpaCommandInfo* info = RpaCommandCatalogue::Instance()->Find(name);
        if (!info)
            return false;
        edits->Insert(*process, parentId, row, {CommandTexts::NewStatement(*info, *process)},
                      QStringLiteral("添加“%1”").arg(info->title));
        return true;
    }
    const QStringList dragged = DraggedIds(*mime);
    if (action == Qt::MoveAction && !dragged.isEmpty()) {
        edits->Move(*process, dragged, parentId, row);
        return true;
    }
    const QVector<RpaStatement> statements = RpaStatement::FromJson(mime->data(StatementsMime()));
    edits->Insert(*process, parentId, row, statements, QStringLiteral("复制语句"));
    return !statements.isEmpty();
}
